// Reads the character data of elements with a pass of Expat over the text of the document.
// The parser meets start tags in the order in which the tree has its elements, and so tells which
// element it is in. An element that holds another one shares the text of that.
// Tested by tests/tool/CharacterData_test.cpp.

#include <tools/document/CharacterData.h>

#include <tools/document/DocumentOrder.h>

#include <xmldom/parse/ExpatImpl.h>

#include <climits>
#include <new>
#include <stdexcept>

namespace tool {

class CharacterData::Reader : public CExpatImpl<CharacterData::Reader> {
 public:
  Reader(CharacterData& data, IXMLDOMNode* document)
      : m_data(data), m_next(NextElement(document)), m_wanted(0), m_isMemoryOut(false) {
    if (!CreateParser()) throw std::bad_alloc();
    EnableDefaultHandler(false, true);
    XML_SetCharacterDataHandler(m_p, [](void* self, const char* piece, int size) {
      // The user data is null when an exception waits for the parser to return.
      if (self != nullptr) static_cast<Reader*>(self)->OnCharacters(piece, size);
    });
  }
  ~Reader() { DestroyParser(); }

  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  void Read(const std::string& text) {
    const bool isRead =
        text.size() <= INT_MAX && Parse(text.data(), static_cast<int>(text.size()), true);
    if (m_isMemoryOut || GetErrorCode() == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
    if (!isRead) throw std::runtime_error(XML_ErrorString(GetErrorCode()));
  }

  // Called by CExpatImpl.

  void OnStartElement(const char*, const char**) {
    if (m_next == nullptr) throw std::runtime_error("the text is not that of the tree");
    const auto range = m_data.m_ranges.find(m_next);
    Range* const wanted = range == m_data.m_ranges.end() ? nullptr : &range->second;
    m_open.push_back(wanted);
    m_next = NextElement(m_next);
    if (wanted == nullptr) return;
    wanted->begin = m_data.m_text.size();
    ++m_wanted;
  }

  void OnEndElement(const char*) {
    Range* const wanted = m_open.back();
    m_open.pop_back();
    if (wanted == nullptr) return;
    wanted->end = m_data.m_text.size();
    --m_wanted;
  }

  void OnDefault(const char*, int) {}

 private:
  /// No exception may pass through the parser.
  void OnCharacters(const char* piece, int size) {
    if (m_wanted == 0 || m_isMemoryOut) return;
    try {
      m_data.m_text.append(piece, static_cast<std::size_t>(size));
    } catch (const std::exception&) {
      m_isMemoryOut = true;
      XML_StopParser(m_p, XML_FALSE);
    }
  }

  CharacterData& m_data;
  IXMLDOMNode* m_next;         // the element of the next start tag
  std::vector<Range*> m_open;  // for each open element; null for one that is not asked for
  std::size_t m_wanted;        // how many of these are asked for
  bool m_isMemoryOut;
};

CharacterData::CharacterData(const std::string& text, IXMLDOMNode* document,
                             const std::vector<IXMLDOMNode*>& elements) {
  m_ranges.reserve(elements.size());
  for (const IXMLDOMNode* element : elements) m_ranges[element] = {0, 0};
  if (!elements.empty()) Reader(*this, document).Read(text);
}

std::string CharacterData::Of(const IXMLDOMNode* element) const {
  const Range& range = m_ranges.at(element);
  return m_text.substr(range.begin, range.end - range.begin);
}

}  // namespace tool
