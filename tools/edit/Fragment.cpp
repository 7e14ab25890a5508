// Checks the XML of an edit and makes it fit a document. To be loaded, it is put behind the
// document type of the document, whose entities and default attributes it so has. Tested by
// tests/tool/EditRefusal_test.cpp.

#include <tools/edit/Fragment.h>

#include <tools/command/Command.h>
#include <tools/document/DocumentLoad.h>
#include <tools/document/Indentation.h>
#include <tools/document/SourceMap.h>
#include <tools/edit/EditStep.h>
#include <tools/io/SourceExcerpt.h>
#include <tools/io/SourceText.h>

#include <xmldom/base/Characters.h>
#include <xmldom/dom/XMLDocument.h>

#include <algorithm>

namespace tool {

namespace {

// With a document type that refers to a file, an entity that is not declared is no error.
const char kOpenType[] = "<!DOCTYPE x SYSTEM ''>";

std::string Describe(const std::string& xml, SourcePosition position, const std::string& reason) {
  return DescribeProblem("XML", xml, position, reason);
}

std::string Describe(const std::string& xml, std::size_t offset, const std::string& reason) {
  return Describe(xml, PositionOf(xml, offset), reason);
}

/// Loads a fragment behind a document type. Out: what is wrong, with the place in the fragment.
XMLPtr<IXMLDOMDocument2> LoadBehind(const std::string& documentType, const std::string& xml,
                                    LoadProblem& problem) {
  const std::string prefix = documentType + "\n";
  XMLPtr<IXMLDOMDocument2> document = LoadText(prefix + xml, problem);
  if (document != nullptr) return document;
  const std::size_t before = PositionOf(prefix, prefix.size()).line - 1;
  problem.position.line -= std::min(before, problem.position.line - 1);
  // A tag that is named as near may be that of the document type.
  problem.reason.erase(std::min(problem.reason.find(", near <!"), problem.reason.size()));
  return nullptr;
}

/// Finds the one element of a well-formed fragment.
SourceRange ElementOf(const std::string& xml) {
  LoadProblem problem;
  const std::string prefix = std::string(kOpenType) + "\n";
  const std::string text = prefix + xml;
  const XMLPtr<IXMLDOMDocument2> document = LoadText(text, problem);
  const SourceMap map(text, *document);
  const SourcePlace& place = *map.Find(document->m_pFirstChild);
  return {place.begin - prefix.size(), place.end - prefix.size()};
}

/// Goes through a well-formed element and tells where a reference may stand: in texts and in the
/// values of attributes, but not in names, comments, processing instructions and CDATA sections.
class ReferenceScan {
 public:
  explicit ReferenceScan(const std::string& xml) : m_xml(xml) {}

  /// Whether a reference may stand at `at`, which is not less than at the last call.
  /// Cost: linear in the text passed.
  bool Allows(std::size_t at) {
    while (m_end <= at) GoOn();
    return m_allows;
  }

 private:
  /// Goes to the next piece in all of which references are allowed, or in none of which they are.
  void GoOn() {
    if (m_quote != 0) {
      Take(true, m_xml.find(m_quote, m_end));
      m_quote = 0;
      ++m_end;
    } else if (m_isInTag) {
      Take(false, m_xml.find_first_of("\"'>", m_end));
      m_isInTag = m_xml[m_end] != '>';
      if (m_isInTag) m_quote = m_xml[m_end];
      ++m_end;
    } else if (m_xml[m_end] != '<') {
      Take(true, m_xml.find('<', m_end));
    } else if (!Passes("<!--", "-->") && !Passes("<![CDATA[", "]]>") && !Passes("<?", "?>")) {
      Take(false, m_end + 1);
      m_isInTag = true;
    }
  }

  /// Takes the piece up to `end`; the last one ends with the text.
  void Take(bool allows, std::size_t end) {
    m_allows = allows;
    m_end = std::min(end, m_xml.size());
  }

  bool Passes(const std::string& beginning, const std::string& end) {
    if (m_xml.compare(m_end, beginning.size(), beginning) != 0) return false;
    Take(false, m_xml.find(end, m_end + beginning.size()) + end.size());
    return true;
  }

  const std::string& m_xml;
  std::size_t m_end = 0;  // where the piece ends that was passed last
  bool m_allows = false;  // whether references are allowed in it
  bool m_isInTag = false;
  char m_quote = 0;  // which one has opened the value at m_end; 0 for none
};

}  // namespace

void CheckFragment(const std::string& xml) {
  LoadProblem problem;
  if (LoadBehind(kOpenType, xml, problem) == nullptr) {
    throw UsageError(Describe(xml, problem.position, problem.reason));
  }
  const SourceRange element = ElementOf(xml);
  std::size_t at = 0;
  while (at < element.begin && IsSpace(xml[at])) ++at;
  if (at == element.begin) {
    for (at = element.end; at < xml.size() && IsSpace(xml[at]);) ++at;
  }
  if (at < xml.size()) {
    throw UsageError(Describe(xml, at, "nothing but one element can be put into a document"));
  }
}

void PrepareFragment(EditStep& step) {
  const std::string& xml = step.edit.operands[1];
  const std::size_t place = step.targets.front().place->begin;
  LoadProblem problem;
  if (LoadBehind(step.DocumentType(), xml, problem) == nullptr) {
    throw EditRefusal(place, Describe(xml, problem.position, problem.reason));
  }
  const SourceEncoding& encoding = step.encoding;
  const SourceRange element = ElementOf(xml);
  const std::string alone = xml.substr(element.begin, element.end - element.begin);
  ReferenceScan scan(alone);
  std::size_t at = 0;
  while ((at = encoding.FindForeign(alone, at)) != std::string::npos) {
    if (!scan.Allows(at)) {
      throw EditRefusal(place, Describe(xml, element.begin + at, encoding.Refusal()));
    }
    at += CharacterLength(&alone[at], alone.size() - at);
  }
  // What is foreign stands where references may, as the scan has found.
  step.fragment = WithLineEnds(encoding.WithReferences(alone), LineEndBefore(step.text, place));
}

void LoadCopies(EditStep& step) {
  std::string text = step.DocumentType() + "<x>";
  for (std::size_t i = 0; i < step.targets.size(); ++i) text += step.fragment;
  LoadProblem problem;
  step.copies = LoadText(text + "</x>", problem);
  if (step.copies == nullptr) throw EditRefusal(step.targets.front().place->begin, problem.reason);
}

}  // namespace tool
