// Reads the names and values in a start tag where they stand in the text. The parser tells where a
// tag begins and ends, but not where its attributes do.
// Tested by tests/tool/SourceMap_test.cpp.

#include <tools/document/StartTag.h>

#include <tools/io/SourceText.h>

namespace tool {

StartTag::StartTag(const std::string& text, std::size_t begin)
    : m_text(text), m_name{begin + 1, EndOfName(begin + 1)}, m_at(m_name.end) {}

bool StartTag::Next(SourceRange& name, SourceRange& value) {
  name.begin = SkipSpace(m_at);
  name.end = EndOfName(name.begin);
  if (name.end == name.begin) return false;
  const std::size_t quote = SkipSpace(SkipSpace(name.end) + 1);  // behind the '='
  if (quote >= m_text.size()) return false;
  value.begin = quote + 1;
  value.end = m_text.find(m_text[quote], value.begin);
  if (value.end == std::string::npos) return false;
  m_at = value.end + 1;
  return true;
}

std::size_t StartTag::EndOfName(std::size_t begin) const {
  std::size_t at = begin;
  while (at < m_text.size() && !IsSpace(m_text[at]) && m_text[at] != '=' && m_text[at] != '/' &&
         m_text[at] != '>') {
    ++at;
  }
  return at;
}

std::size_t StartTag::SkipSpace(std::size_t at) const {
  while (at < m_text.size() && IsSpace(m_text[at])) ++at;
  return at;
}

}  // namespace tool
