// Edits, and then a document in any encoding: its bytes are decoded and encoded again, the source
// map says where the nodes of its tree stand, and edits in the bytes change what they should alone.

#include <tools/command/Command.h>
#include <tools/document/DocumentLoad.h>
#include <tools/document/SourceEncoding.h>
#include <tools/document/SourceMap.h>
#include <tools/edit/Edit.h>
#include <tools/edit/EditStep.h>
#include <tools/edit/EditedText.h>

#include <algorithm>
#include <codecvt>
#include <cstdint>
#include <locale>
#include <set>
#include <stdexcept>

#include "fuzz/Check.h"
#include "fuzz/EditedEvents.h"
#include "fuzz/Input.h"
#include "fuzz/ParserEvents.h"
#include "fuzz/Trees.h"

using fuzz::Event;
using fuzz::Input;
using tool::Edit;
using tool::SourceEncoding;
using tool::SourcePlace;

namespace {

const unsigned int kMostEdits = 3;

const char* const kPaths[] = {"/", "//a", "//b", "/*/*", "/a/b", "//c/*", "//*", "//b[@y='1']"};
const char* const kNames[] = {"y", "z", "b", "n:d", "\xc3\xa9", "xml:space"};
const char* const kFragments[] = {"<n/>", "<n y='1'>x</n>", " <n>\n  <m/>\n</n>\n",
                                  "<b>\xc3\xa9</b>", "<b>&lt;<![CDATA[ x ]]></b>"};
const char* const kTexts[] = {"",      "v", " x\r\n\ty ", "<&>\"'", "]]>", "\xe2\x82\xac",
                              "&#10;", "\n"};

struct RequestedEdit {
  Edit edit;
  bool all;
};

RequestedEdit ReadEdit(Input& input) {
  const std::vector<tool::EditKind>& kinds = tool::EditKinds();
  const unsigned int choice = input.Byte();
  const tool::EditKind& kind = kinds[choice % kinds.size()];
  Edit edit = {&kind, {input.OneOfOrAny(kPaths)}};
  const std::string operands = kind.operands;
  if (operands.find("NAME") != operands.npos) edit.operands.push_back(input.OneOfOrAny(kNames));
  if (operands.find("XML") != operands.npos) {
    edit.operands.push_back(input.OneOfOrAny(kFragments));
  } else if (operands.find("TEXT") != operands.npos || operands.find("VALUE") != operands.npos) {
    edit.operands.push_back(input.OneOfOrAny(kTexts));
  }
  // No argument of a command line holds a NUL.
  for (std::string& operand : edit.operands) operand = operand.c_str();
  return {edit, choice >= 128};
}

std::string InUtf16(const std::string& text, bool isBigEndian) {
  std::wstring_convert<std::codecvt_utf8_utf16<char16_t>, char16_t> convert;
  std::u16string units;
  try {
    units = convert.from_bytes(text);
  } catch (const std::range_error&) {
    return text;
  }
  std::string bytes;
  for (const char16_t unit : u"\xFEFF" + units) {
    const char high = static_cast<char>(unit >> 8);
    const char low = static_cast<char>(unit & 0xFF);
    bytes += isBigEndian ? high : low;
    bytes += isBigEndian ? low : high;
  }
  return bytes;
}

/// The bytes of a document: what is left of the input, as it is or in another encoding.
std::string ReadBytes(Input& input) {
  const unsigned int choice = input.Byte();
  const std::string text = input.Rest();
  switch (choice % 8) {
    case 4:
      return InUtf16(text, false);
    case 5:
      return InUtf16(text, true);
    case 6:
      return "<?xml version='1.0' encoding='ISO-8859-1'?>" + text;
    case 7:
      return "<?xml version='1.0' encoding='us-ascii' ?>" + text;
    default:
      return text;
  }
}

/// Whether a text holds a letter that Expat takes in names of a text in ISO-8859-1 alone.
bool HasLetterOfLatin1(const std::string& text) {
  for (const char* letter : {"\xC2\xAA", "\xC2\xB5", "\xC2\xBA"}) {
    if (text.find(letter) != text.npos) return true;
  }
  return false;
}

/// Bytes are encoded as they were decoded, and the parser reads the same from them and from the
/// text. Result: whether both can be parsed.
bool CheckDecoding(const std::string& bytes, const SourceEncoding& encoding, std::string& text) {
  std::string reason;
  std::vector<Event> ofBytes;
  std::vector<Event> ofText;
  const bool bytesParsed = fuzz::ParseEvents(bytes, ofBytes);
  const bool isDecoded = encoding.Decode(bytes, text, reason);
  if (!isDecoded) {
    FUZZ_CHECK(!bytesParsed && !reason.empty());
    return false;
  }
  FUZZ_CHECK(encoding.Encode(text) == bytes);
  const bool textParsed = fuzz::ParseEvents(text, ofText);
  if (bytesParsed && !textParsed && HasLetterOfLatin1(text)) return false;
  FUZZ_CHECK(bytesParsed == textParsed);
  if (bytesParsed) FUZZ_CHECK(ofBytes == ofText);
  return bytesParsed;
}

bool Stands(const std::string& text, std::size_t at, const std::string& part) {
  return at <= text.size() && text.compare(at, part.size(), part) == 0;
}

/// A node that is written stands where the map says: its tags, or its name and its quotes.
void CheckWritten(const std::string& text, const IXMLDOMNode* node, const SourcePlace& place) {
  const std::string name = node->m_pszNodeName;
  if (node->m_eNodeType == NODE_ELEMENT) {
    FUZZ_CHECK(Stands(text, place.begin, "<" + name));
    FUZZ_CHECK(text[place.end - 1] == '>');
    if (place.IsEmptyTag()) {
      FUZZ_CHECK(text[place.end - 2] == '/');
    } else {
      FUZZ_CHECK(text[place.innerBegin - 1] == '>');
      FUZZ_CHECK(Stands(text, place.innerEnd, "</" + name));
    }
  } else if (node->m_eNodeType == NODE_ATTRIBUTE) {
    FUZZ_CHECK(Stands(text, place.begin, name));
    const char quote = text[place.innerEnd];
    FUZZ_CHECK(quote == '"' || quote == '\'');
    FUZZ_CHECK(text[place.innerBegin - 1] == quote && place.end == place.innerEnd + 1);
    const std::string value = text.substr(place.innerBegin, place.innerEnd - place.innerBegin);
    FUZZ_CHECK(value.find(quote) == value.npos);
  }
}

/// The bytes of an element make the same element.
void CheckAlone(const std::string& text, IXMLDOMNode* element, const SourcePlace& place) {
  tool::LoadProblem problem;
  const std::string bytes = text.substr(place.begin, place.end - place.begin);
  const XMLPtr<IXMLDOMDocument2> alone = tool::LoadText(bytes, problem);
  FUZZ_CHECK(alone != nullptr);
  FUZZ_CHECK(std::string(element->m_pszNodeName) == alone->m_pFirstChild->m_pszNodeName);
  FUZZ_CHECK(fuzz::Equal(element, alone->m_pFirstChild));
}

/// Every node has a place, inside of the text and of that of its parent, and behind the element
/// before it.
void CheckMap(const std::string& text, IXMLDOMDocument2* document) {
  const tool::SourceMap map(text, *document);
  const tool::SourceRange type = map.DocumentType();
  const bool isPlain = type.begin == type.end;
  FUZZ_CHECK(isPlain || (Stands(text, type.begin, "<!DOCTYPE") && text[type.end - 1] == '>'));
  for (IXMLDOMNode* node : fuzz::NodesOf(document)) {
    const SourcePlace* place = map.Find(node);
    FUZZ_CHECK(place != nullptr);
    FUZZ_CHECK(place->begin <= place->innerBegin && place->innerBegin <= place->innerEnd);
    FUZZ_CHECK(place->innerEnd <= place->end && place->end <= text.size());
    if (node == document) continue;
    const SourcePlace& parent = *map.Find(node->m_pParent);
    FUZZ_CHECK(parent.IsWritten() || !place->IsWritten());
    if (!place->IsWritten()) continue;
    const bool isAttribute = node->m_eNodeType == NODE_ATTRIBUTE;
    FUZZ_CHECK(place->begin >= (isAttribute ? parent.begin : parent.innerBegin));
    FUZZ_CHECK(place->end <= (isAttribute ? parent.innerBegin : parent.innerEnd));
    CheckWritten(text, node, *place);
    if (node->m_eNodeType != NODE_ELEMENT) continue;
    if (isPlain) CheckAlone(text, node, *place);
    const IXMLDOMNode* next = node->m_pNextSibling;
    if (next == nullptr || next->m_eNodeType != NODE_ELEMENT) continue;
    FUZZ_CHECK(map.Find(next)->begin >= place->end);
  }
}

/// Where the elements stand at which an edit is made, in the order of the text.
std::vector<tool::SourceRange> TargetsOf(const std::string& text, const RequestedEdit& requested,
                                         const SourceEncoding& encoding) {
  tool::LoadProblem problem;
  const XMLPtr<IXMLDOMDocument2> tree = tool::LoadText(text, problem);
  tool::EditStep step(requested.edit, text, *tree, encoding);
  step.SelectTargets(requested.all);
  std::vector<tool::SourceRange> targets;
  for (const tool::EditTarget& target : step.targets) {
    targets.push_back({target.place->begin, target.place->end});
  }
  return targets;
}

/// What stands on other lines than the elements that are edited is not changed.
void CheckOtherLines(const std::string& before, const std::string& after,
                     const std::vector<tool::SourceRange>& targets) {
  std::size_t begin = before.size();
  std::size_t end = 0;
  for (const tool::SourceRange& target : targets) {
    begin = std::min(begin, target.begin);
    end = std::max(end, target.end);
  }
  while (begin > 0 && before[begin - 1] != '\n' && before[begin - 1] != '\r') --begin;
  end = std::min(before.find_first_of("\r\n", end), before.size());
  end = std::min(end + (before.compare(end, 2, "\r\n") == 0 ? 2 : 1), before.size());
  FUZZ_CHECK(after.compare(0, begin, before, 0, begin) == 0);
  const std::size_t rest = before.size() - end;
  FUZZ_CHECK(after.size() >= rest);
  FUZZ_CHECK(after.compare(after.size() - rest, rest, before, end, rest) == 0);
}

/// A parser tells of the edited text what it told before, but for the edit. With a document type
/// it tells of more than what stands there.
void CheckEvents(const std::string& before, const std::string& after,
                 const RequestedEdit& requested, const std::vector<tool::SourceRange>& targets) {
  std::vector<Event> ofBefore;
  std::vector<Event> ofAfter;
  std::vector<Event> fragment;
  FUZZ_CHECK(fuzz::ParseEvents(before, ofBefore));
  FUZZ_CHECK(fuzz::ParseEvents(after, ofAfter));
  if (before.find("<!DOCTYPE") != before.npos) return;
  const bool hasXml = std::string(requested.edit.kind->operands) == "PATH XML";
  if (hasXml) {
    const std::string& xml = requested.edit.operands[1];
    FUZZ_CHECK(fuzz::ParseEvents(xml.substr(xml.find('<')), fragment));
  }
  std::set<std::size_t> offsets;
  for (const tool::SourceRange& target : targets) offsets.insert(target.begin);
  const std::vector<Event> expected =
      fuzz::EditedEvents(ofBefore, requested.edit, offsets, fragment);
  // Layout comes and goes with elements.
  const bool changesLayout = hasXml || requested.edit.kind->joinsTexts;
  FUZZ_CHECK(changesLayout ? fuzz::WithoutSpace(ofAfter) == fuzz::WithoutSpace(expected)
                           : ofAfter == expected);
}

void CheckEdit(tool::EditedText& edited, const RequestedEdit& requested,
               const SourceEncoding& encoding) {
  const std::string before = edited.Text();
  try {
    tool::CheckEdit(requested.edit, requested.all);
    const tool::EditOutcome outcome = edited.Apply(requested.edit, requested.all);
    FUZZ_CHECK(outcome.changed <= outcome.selected);
    if (outcome.changed == 0) {
      FUZZ_CHECK(edited.Text() == before);
      return;
    }
  } catch (const tool::UsageError&) {
    FUZZ_CHECK(edited.Text() == before);
    return;
  } catch (const tool::EditRefusal& refusal) {
    FUZZ_CHECK(edited.Text() == before && refusal.Offset() <= before.size());
    return;
  }
  const std::vector<tool::SourceRange> targets = TargetsOf(before, requested, encoding);
  CheckOtherLines(before, edited.Text(), targets);
  CheckEvents(before, edited.Text(), requested, targets);
  std::string text;
  FUZZ_CHECK(CheckDecoding(edited.Bytes(), encoding, text));
  FUZZ_CHECK(text == edited.Text());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Hush();
  const fuzz::BalanceCheck balance;
  Input input(data, size);
  std::vector<RequestedEdit> edits;
  for (unsigned int i = input.Byte() % (kMostEdits + 1); i > 0; --i) {
    edits.push_back(ReadEdit(input));
  }
  const std::string bytes = ReadBytes(input);
  const SourceEncoding encoding(bytes);
  std::string text;
  if (!CheckDecoding(bytes, encoding, text)) return 0;
  tool::LoadProblem problem;
  const XMLPtr<IXMLDOMDocument2> tree = tool::LoadText(text, problem);
  if (tree == nullptr) return 0;
  CheckMap(text, tree.Get());
  tool::EditedText edited(text, tree, encoding);
  for (const RequestedEdit& requested : edits) CheckEdit(edited, requested, encoding);
  return 0;
}
