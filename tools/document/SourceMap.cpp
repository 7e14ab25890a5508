// Finds the places of the nodes of a tree in its text: the parser reports each tag and each piece
// of text with its offset, and a walk over the tree goes along to the node that the library has
// made of it. Tested by tests/tool/SourceMap_test.cpp.

#include <tools/document/SourceMap.h>

#include <tools/document/DocumentOrder.h>
#include <tools/document/SpaceAttribute.h>
#include <tools/document/StartTag.h>

#include <xmldom/base/WrapAround.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/parse/ExpatImpl.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstring>
#include <new>

namespace tool {

namespace {

/// How many nodes a tree has, with its document and all attributes.
std::size_t CountNodes(const IXMLDOMNode* document) {
  std::size_t count = 0;
  for (const IXMLDOMNode* node = document; node != nullptr; node = NextNode(node, document)) {
    ++count;
    for (const IXMLDOMNode* attribute = node->m_pFirstAttribute; attribute != nullptr;
         attribute = attribute->m_pNextSibling) {
      ++count;
    }
  }
  return count;
}

std::uint32_t ToOffset(std::size_t offset) { return static_cast<std::uint32_t>(offset); }

/// Whether a piece of text is white space alone, as the library finds that out.
bool IsBlank(const char* text, int length) {
  return std::all_of(text, text + length,
                     [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; });
}

}  // namespace

/// Fills a map. Its parser expands entities as that of the library does, so that it gets the same
/// events.
///
/// Invariant: m_open is the node of the innermost open element, or the document, and m_last the
/// last of its children that the parser has come to, or null. What the parser comes to next has to
/// be the child behind m_last.
class SourceMapBuilder : public CExpatImpl<SourceMapBuilder> {
 public:
  SourceMapBuilder(SourceMap& map, const std::string& text, IXMLDOMDocument2& document)
      : m_map(map),
        m_text(text),
        m_dropsBlanks((document.m_uFlags & IXMLDOMDocument2::FORMATTED_LAYOUT) != 0),
        m_open(&document),
        m_last(nullptr),
        m_openNumber(0),
        m_pieces() {
    if (!CreateParser()) throw std::bad_alloc();
    EnableMarkupHandlers();
    const std::uint32_t size = ToOffset(m_text.size());
    Add(m_open, {0, size, 0, size, SourcePlace::kWritten, false, false});
  }
  ~SourceMapBuilder() { DestroyParser(); }

  SourceMapBuilder(const SourceMapBuilder&) = delete;
  SourceMapBuilder& operator=(const SourceMapBuilder&) = delete;

  void Build() {
    if (!Parse(m_text.data(), static_cast<int>(m_text.size()), true)) {
      if (GetErrorCode() == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
      Refuse(XML_ErrorString(GetErrorCode()));
    }
    if (NextChild() != nullptr) Refuse("the tree holds more than the text");
  }

  // Called by CExpatImpl for the tags of elements, and for texts and references (OnDefault).

  void OnStartElement(const char* name, const char** attributes) {
    StoreText();
    const IXMLDOMNode* node = NextChild();
    if (!Is(node, NODE_ELEMENT, name)) Refuse(std::string("the tree lacks an element ") + name);
    const SourcePlace::Origin origin =
        IsMarkup() ? SourcePlace::kWritten : SourcePlace::kFromEntity;
    const std::uint32_t begin = origin == SourcePlace::kWritten ? EventBegin() : ReferenceBegin();
    const bool keepsAround = m_openNumber != 0 && PlaceOf(m_openNumber).keepsSpace;
    // Until the element ends, `end` holds the number of the element around it, and `innerEnd` that
    // of its text, so that nothing else has to be kept for each open element.
    const std::uint32_t number = Add(node, {begin, m_openNumber, EventEnd(), 0, origin, false,
                                            KeepsSpace(attributes, keepsAround)});
    m_openNumber = number;
    m_open = node;
    m_last = nullptr;
    AddAttributes(attributes);
  }

  void OnEndElement(const char*) {
    StoreText();
    if (NextChild() != nullptr) Refuse("the tree holds more in the element");
    SourcePlace& place = PlaceOf(m_openNumber);
    m_openNumber = place.end;
    if (place.IsWritten()) {
      // That of an empty-element tag is reported behind the tag.
      place.innerEnd = EventBegin();
      place.end = EventEnd();
    } else {
      place.end = place.innerEnd = place.innerBegin;
      place.innerBegin = place.begin;
    }
    m_last = m_open;
    m_open = m_open->m_pParent;
  }

  void OnDefault(const char* text, int length) {
    if (m_openNumber == 0) {
      static const char kDocumentType[] = "<!DOCTYPE";
      const bool begins = length == sizeof kDocumentType - 1 &&
                          std::memcmp(text, kDocumentType, sizeof kDocumentType - 1) == 0;
      if (begins) m_map.m_documentType = {EventBegin(), EventEnd()};
      return;
    }
    const bool isBlank = IsBlank(text, length);
    if (isBlank && m_dropsBlanks) return;
    const bool isWritten = EventEnd() > EventBegin() && m_text[EventBegin()] != '&';
    const bool isReference = m_text.compare(EventBegin(), EventEnd() - EventBegin(), text,
                                            static_cast<std::size_t>(length)) == 0;
    AddPiece(!isBlank, isWritten || isReference ? SourcePlace::kWritten : SourcePlace::kFromEntity);
  }

 private:
  /// The pieces of text since the last tag that are in the tree.
  struct Pieces {
    bool areThere;
    bool holdCharacters;
    std::uint32_t begin;
    std::uint32_t end;
    SourcePlace::Origin origin;  ///< Of the first of them.
  };

  /// Markup is part of the texts of the tree, but the default handler could not tell it from other
  /// text: what is converted from another encoding comes in pieces. Expat calls these handlers
  /// itself, so they must not throw; behind a handler that has thrown they get a null pointer.
  void EnableMarkupHandlers() {
    XML_SetCommentHandler(m_p, [](void* self, const char*) { OnMarkup(self, false); });
    XML_SetProcessingInstructionHandler(
        m_p, [](void* self, const char*, const char*) { OnMarkup(self, false); });
    XML_SetCdataSectionHandler(
        m_p, [](void* self) { OnMarkup(self, true); }, [](void* self) { OnMarkup(self, true); });
    XML_SetEndDoctypeDeclHandler(m_p, [](void* self) {
      SourceMapBuilder* builder = static_cast<SourceMapBuilder*>(self);
      if (builder != nullptr) builder->m_map.m_documentType.end = builder->EventEnd();
    });
  }

  static void OnMarkup(void* self, bool isCharacters) {
    SourceMapBuilder* builder = static_cast<SourceMapBuilder*>(self);
    if (builder == nullptr || builder->m_openNumber == 0) return;
    builder->AddPiece(isCharacters,
                      builder->IsMarkup() ? SourcePlace::kWritten : SourcePlace::kFromEntity);
  }

  void AddPiece(bool isCharacters, SourcePlace::Origin origin) {
    if (!m_pieces.areThere) {
      m_pieces.begin = origin == SourcePlace::kWritten ? EventBegin() : ReferenceBegin();
      m_pieces.origin = origin;
    }
    m_pieces.areThere = true;
    m_pieces.end = EventEnd();
    if (isCharacters) m_pieces.holdCharacters = true;
  }

  /// Goes to the text that the library has made of the pieces since the last tag. The first pieces
  /// of an element make a new child, and those behind its child elements are added to that.
  void StoreText() {
    if (!m_pieces.areThere) return;
    if (PlaceOf(m_openNumber).innerEnd == 0) {
      const IXMLDOMNode* node = NextChild();
      if (!Is(node, NODE_TEXT, "#Text")) Refuse("the tree lacks a text");
      const std::uint32_t number = Add(node, {m_pieces.begin, m_pieces.end, m_pieces.begin,
                                              m_pieces.end, m_pieces.origin, false, false});
      PlaceOf(m_openNumber).innerEnd = number;
      m_last = node;
    } else {
      SourcePlace& text = PlaceOf(PlaceOf(m_openNumber).innerEnd);
      text.end = text.innerEnd = m_pieces.end;
    }
    if (m_pieces.holdCharacters) PlaceOf(m_openNumber).holdsCharacters = true;
    m_pieces = Pieces();
  }

  /// Adds the attributes of the element that has just been opened. The parser gives those in the
  /// tag in their order, and behind them the default attributes.
  void AddAttributes(const char** attributes) {
    const SourcePlace element = PlaceOf(m_openNumber);
    StartTag tag(m_text, element.begin);
    int written = XML_GetSpecifiedAttributeCount(m_p) / 2;
    const IXMLDOMNode* node = m_open->m_pFirstAttribute;
    for (; *attributes != nullptr; attributes += 2, node = node->m_pNextSibling, --written) {
      if (!Is(node, NODE_ATTRIBUTE, *attributes)) {
        Refuse(std::string("the tree lacks an attribute ") + *attributes);
      }
      SourcePlace place = {element.begin,  element.innerBegin,
                           element.begin,  element.innerBegin,
                           element.origin, false,
                           false};
      if (element.IsWritten() && written <= 0) place.origin = SourcePlace::kFromDocumentType;
      if (place.IsWritten()) place = NextIn(tag);
      Add(node, place);
    }
    if (node != nullptr) Refuse("the tree holds more attributes");
  }

  SourcePlace NextIn(StartTag& tag) {
    SourceRange name = {0, 0};
    SourceRange value = {0, 0};
    if (!tag.Next(name, value)) Refuse("an attribute is not found in its tag");
    return {ToOffset(name.begin),
            ToOffset(value.end + 1),
            ToOffset(value.begin),
            ToOffset(value.end),
            SourcePlace::kWritten,
            false,
            false};
  }

  static bool Is(const IXMLDOMNode* node, DOMNodeType type, const char* name) {
    return node != nullptr && node->m_eNodeType == type &&
           std::strcmp(node->m_pszNodeName, name) == 0;
  }

  const IXMLDOMNode* NextChild() const {
    return m_last == nullptr ? m_open->m_pFirstChild : m_last->m_pNextSibling;
  }

  /// Adds a place. Result: its number.
  std::uint32_t Add(const IXMLDOMNode* node, const SourcePlace& place) {
    std::vector<SourceMap::Entry>& entries = m_map.m_entries;
    if (entries.size() == entries.capacity()) Refuse("the text holds more than the tree");
    entries.push_back({node, place});
    const std::uint32_t number = ToOffset(entries.size());
    m_map.m_slots[m_map.SlotOf(node)] = number;
    return number;
  }

  SourcePlace& PlaceOf(std::uint32_t number) { return m_map.m_entries[number - 1].place; }

  [[noreturn]] void Refuse(const std::string& reason) const {
    throw SourceMapError(std::min<std::size_t>(EventBegin(), m_text.size()), reason);
  }

  std::uint32_t EventBegin() const {
    return static_cast<std::uint32_t>(XML_GetCurrentByteIndex(m_p));
  }

  std::uint32_t EventEnd() const {
    return EventBegin() + static_cast<std::uint32_t>(XML_GetCurrentByteCount(m_p));
  }

  /// Whether the event is markup that stands in the text. What an entity brings has the place of
  /// the reference, or, with an Expat that goes on behind it first, an empty one there.
  bool IsMarkup() const { return EventEnd() > EventBegin() && m_text[EventBegin()] == '<'; }

  /// Where the reference begins that brings the event.
  std::uint32_t ReferenceBegin() const {
    const std::size_t at = m_text.rfind('&', EventBegin());
    return at == std::string::npos ? EventBegin() : ToOffset(at);
  }

  SourceMap& m_map;
  const std::string& m_text;
  const bool m_dropsBlanks;
  const IXMLDOMNode* m_open;
  const IXMLDOMNode* m_last;
  std::uint32_t m_openNumber;  // the number of the place of m_open; 0 for the document
  Pieces m_pieces;
};

SourceMap::SourceMap(const std::string& text, IXMLDOMDocument2& document) : m_documentType{0, 0} {
  if (text.size() > INT_MAX) throw std::length_error("larger than the parser can take");
  const std::size_t count = CountNodes(&document);
  m_entries.reserve(count);
  std::size_t slots = 4;
  while (slots / 4 * 3 < count) slots *= 2;
  m_slots.resize(slots);
  SourceMapBuilder(*this, text, document).Build();
}

const SourcePlace* SourceMap::Find(const IXMLDOMNode* node) const {
  const std::uint32_t number = m_slots[SlotOf(node)];
  return number == 0 ? nullptr : &m_entries[number - 1].place;
}

/// The slot that holds the number of the entry of `node`, or the free one where it belongs.
XMLDOM_WRAPS_AROUND std::size_t SourceMap::SlotOf(const IXMLDOMNode* node) const {
  // The high bits of the product depend on all bits of the address.
  const std::uint64_t product =
      static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(node)) * 0x9E3779B97F4A7C15u;
  std::size_t slot = static_cast<std::size_t>(product >> 32) & (m_slots.size() - 1);
  while (m_slots[slot] != 0 && m_entries[m_slots[slot] - 1].node != node) {
    slot = (slot + 1) & (m_slots.size() - 1);
  }
  return slot;
}

std::size_t SourceMap::Size() const {
  return m_entries.capacity() * sizeof(Entry) + m_slots.capacity() * sizeof m_slots[0];
}

}  // namespace tool
