// Collecting the text of a node: one walk in document order, or, from some text on, in the order
// that the texts have in the result. Tested by tests/text/XMLNodeText_test.cpp and, beside a plain
// implementation, by tests/soak/Text_test.cpp.

#include <xmldom/text/TextCollector.h>

#include <xmldom/base/Export.h>
#include <xmldom/base/Text.h>
#include <xmldom/dom/NodeContent.h>
#include <xmldom/text/EntityTranslation.h>
#include <xmldom/text/SilentTranslation.h>
#include <xmldom/text/TextOutput.h>

#include <climits>
#include <cstdlib>
#include <cstring>

namespace xmldom {

TextCollector::TextCollector(CMemFile* file)
    : m_ownFile(4096),
      m_file(file != nullptr ? *file : m_ownFile),
      m_isPlain(false),
      m_text(m_inlineText),
      m_length(0),
      m_capacity(kInlineSize),
      m_groupEnd(0),
      m_moved(0) {}

TextCollector::TextCollector(const IXMLDOMNode* node, CMemFile* file) : TextCollector(file) {
  const IXMLDOMNode* content = ContentOf(node);
  if (content != nullptr) CollectBelow(content);
}

TextCollector::~TextCollector() {
  if (m_text != m_inlineText) std::free(m_text);
}

inline void TextCollector::CollectBelow(const IXMLDOMNode* top) {
  IXMLDOMNode* node = top->m_pFirstChild;
  for (;;) {
    if (node == nullptr) {
      if (m_levels.IsEmpty()) break;
      const Level level = m_levels.Pop();
      m_groupEnd = level.groupEnd;
      node = level.node;
    } else if (node->m_eNodeType == NODE_TEXT) {
      if (!m_isPlain && !Append(node->m_pszValue)) GoOnPlainly(node);
    } else if (node->m_pFirstChild != nullptr) {
      m_levels.Push(Level{node, m_groupEnd});
      m_groupEnd = m_length;
      node = node->m_pFirstChild;
      if (m_isPlain) AppendTexts(node, m_file);
      continue;
    }
    node = node->m_pNextSibling;
  }
  if (m_length > UINT_MAX) ThrowTextTooLong();
}

/// Makes room for `size` bytes behind the texts.
inline void TextCollector::Reserve(std::size_t size) {
  if (size > m_capacity - m_length) Grow(size);
}

XMLDOM_NOINLINE void TextCollector::Grow(std::size_t size) {
  if (m_length > UINT_MAX) ThrowTextTooLong();
  while (size > m_capacity - m_length) {
    m_text = static_cast<char*>(GrowStack(m_text, m_inlineText, &m_capacity, 1));
  }
}

/// Puts a text in its place in the buffer. Result: false when the walk has to go on plainly, with
/// this text.
inline bool TextCollector::Append(const char* value) {
  if (value == nullptr || *value == '\0') return false;
  const char* ampersand = strchrnul(value, '&');
  std::size_t length = static_cast<std::size_t>(ampersand - value);
  if (*ampersand != '\0') length += std::strlen(ampersand);
  Reserve(MostDecoded(length) + 1);
  char* begin = m_text + m_length;
  char* end = begin + length;
  if (*ampersand == '\0') {
    std::memcpy(begin, value, length);
  } else {
    end = TranslateSilently(value, ampersand, begin);
    if (end == nullptr || end == begin) return false;
  }
  *end++ = ' ';
  length = static_cast<std::size_t>(end - begin);
  if (m_groupEnd != m_length && !MoveToGroup(length)) return false;
  m_groupEnd += length;
  m_length += length;
  return true;
}

/// Moves the last text, which is not part of the contents yet, to the end of its group. `length`
/// is that of the text with its blank. Result: false when too much has been moved.
XMLDOM_NOINLINE bool TextCollector::MoveToGroup(std::size_t length) {
  if (m_moved > kMostMoves * m_length) return false;
  const std::size_t others = m_length - m_groupEnd;
  m_moved += others;
  Reserve(2 * length);
  char* const group = m_text + m_groupEnd;
  std::memcpy(group + others + length, group + others, length);
  std::memmove(group + length, group, others);
  std::memcpy(group, group + others + length, length);
  return true;
}

/// Goes on plainly at a text of the innermost chain: copies the buffer to the file, with the texts
/// of the open chains that the walk has not come to.
XMLDOM_COLD XMLDOM_NOINLINE void TextCollector::GoOnPlainly(IXMLDOMNode* text) {
  m_isPlain = true;
  std::size_t written = 0;
  for (const Level* level = m_levels.Items(); level != m_levels.Items() + m_levels.Size();
       ++level) {
    WriteBuffer(&written, level->groupEnd);
    AppendTexts(level->node->m_pNextSibling, m_file);
  }
  WriteBuffer(&written, m_groupEnd);
  AppendTexts(text, m_file);
  WriteBuffer(&written, m_length);
}

/// Writes the texts in the buffer from `*begin` up to `end` to the file. Out: `*begin` is `end`.
XMLDOM_COLD void TextCollector::WriteBuffer(std::size_t* begin, std::size_t end) {
  if (*begin == end) return;
  if (m_file.m_uPosition != 0) WriteLiteral(m_file, " ");
  WriteBytes(m_file, m_text + *begin, end - 1 - *begin);
  *begin = end;
}

XMLDOM_COLD std::size_t AppendTexts(const IXMLDOMNode* node, CMemFile& out) {
  std::size_t first = kNoText;
  for (; node != nullptr; node = node->m_pNextSibling) {
    if (node->m_eNodeType != NODE_TEXT) continue;
    if (out.m_uPosition != 0) WriteLiteral(out, " ");
    const std::size_t begin = out.m_uLength;
    TranslateEntities(node->m_pszValue, out);
    if (first == kNoText && out.m_uLength != begin) first = begin;
  }
  return first;
}

void TextCollector::Flush() {
  std::size_t written = 0;
  if (!m_isPlain) WriteBuffer(&written, m_length);
}

char* TextCollector::Data() {
  if (m_isPlain) return const_cast<char*>(m_file.GetAsStr());
  m_text[Length()] = '\0';
  return m_text;
}

std::size_t TextCollector::Length() const {
  if (m_isPlain) return m_file.m_uLength;
  return m_length == 0 ? 0 : m_length - 1;
}

char* TextCollector::TakeText() {
  const std::size_t length = Length();
  if (length == 0) return nullptr;
  char* text = Data();
  if (text == m_inlineText || m_isPlain) return CopyString(text, length);
  m_text = m_inlineText;
  // It stays as long as it is when it cannot be made shorter.
  void* cut = std::realloc(text, length + 1);
  return cut == nullptr ? text : static_cast<char*>(cut);
}

}  // namespace xmldom
