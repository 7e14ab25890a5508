// Checks a text with the parser alone: no handler is installed and no tree is made.
// The last pieces are kept, so that a message can show the place of an error. A place that is
// further back than that, such as the beginning of a long comment that never ends, is only told by
// its line. Tested by tests/tool/FormCheck_test.cpp and tests/tool/check_test.bash.

#include <tools/document/FormCheck.h>

#include <tools/document/EncodingAdvice.h>
#include <tools/document/SourceEncoding.h>
#include <tools/io/SourceExcerpt.h>

#include <algorithm>
#include <climits>
#include <new>

namespace tool {

namespace {

// How much of the text is kept in front of the last piece, and how much behind an error is shown.
const std::size_t kKept = 65536;
const std::size_t kBehind = 512;

/// The tag around a place: from the last '<' at or before it to the next '>'.
/// Result: empty when there is none.
std::string TagAround(const std::string& text, std::size_t at) {
  if (text.empty()) return std::string();
  const std::size_t begin = text.rfind('<', std::min(at, text.size() - 1));
  if (begin == std::string::npos) return std::string();
  const std::size_t end = text.find('>', begin);
  return text.substr(begin, end == std::string::npos ? end : end - begin + 1);
}

/// Where the line that holds a place begins, as far as it is there.
std::size_t LineBegin(const std::string& text, std::size_t at) {
  const std::size_t before = at == 0 ? std::string::npos : text.find_last_of("\r\n", at - 1);
  return before == std::string::npos ? 0 : before + 1;
}

}  // namespace

FormCheck::FormCheck()
    : m_parser(XML_ParserCreate(nullptr), &XML_ParserFree),
      m_isWellFormed(true),
      m_isWide(false),
      m_keptAt(0) {
  if (m_parser == nullptr) throw std::bad_alloc();
}

bool FormCheck::Take(const char* piece, std::size_t size) {
  Keep(piece, size);
  if (m_isWellFormed) m_isWellFormed = Parse(piece, size, false);
  std::size_t at = 0;
  return m_isWellFormed || (FindPlace(at) && m_kept.size() - at < kBehind);
}

bool FormCheck::Finish(FormProblem& problem) {
  if (m_isWellFormed) m_isWellFormed = Parse("", 0, true);
  if (m_isWellFormed) return true;
  const XML_Error code = XML_GetErrorCode(m_parser.get());
  problem.position = {XML_GetCurrentLineNumber(m_parser.get()),
                      XML_GetCurrentColumnNumber(m_parser.get()) + 1};
  problem.reason = XML_ErrorString(code);
  if (code == XML_ERROR_UNKNOWN_ENCODING && m_keptAt == 0) {
    problem.reason = DescribeUnknownEncoding(m_kept);
    problem.excerpt = SourceExcerpt(m_kept, problem.position);
    return false;
  }
  std::size_t at = 0;
  if (m_isWide || !FindPlace(at)) return false;
  const bool isNul = at < m_kept.size() && m_kept[at] == '\0';
  const std::string tag = isNul ? std::string() : TagAround(m_kept, at);
  if (isNul) problem.reason = "NUL byte";
  if (!tag.empty()) problem.reason += NearTag(tag);
  // The part of a long line that is not there any more is as good as cut off.
  const std::size_t begin = LineBegin(m_kept, at);
  const std::string line = m_kept.substr(begin);
  problem.excerpt = SourceExcerpt(line, PositionOf(line, at - begin));
  return false;
}

bool FormCheck::Parse(const char* piece, std::size_t size, bool isLast) {
  // Expat takes an int. Its own copy of a piece is smaller when pieces are.
  const std::size_t most = INT_MAX / 2;
  for (; size > most; piece += most, size -= most) {
    if (!Parse(piece, most, false)) return false;
  }
  const int length = static_cast<int>(size);
  if (XML_Parse(m_parser.get(), piece, length, isLast) == XML_STATUS_OK) return true;
  if (XML_GetErrorCode(m_parser.get()) == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
  return false;
}

void FormCheck::Keep(const char* piece, std::size_t size) {
  const bool isBeginning = m_keptAt == 0 && m_kept.size() < 2;
  const std::size_t old = m_kept.size() > kKept ? m_kept.size() - kKept : 0;
  m_kept.erase(0, old);
  m_keptAt += old;
  m_kept.append(piece, size);
  if (isBeginning) m_isWide = SourceEncoding(m_kept).IsUtf16();
}

/// Out: where in m_kept the error is. Result: false when that is not there any more.
bool FormCheck::FindPlace(std::size_t& at) const {
  const XML_Index index = XML_GetCurrentByteIndex(m_parser.get());
  const std::size_t place = static_cast<std::size_t>(index);
  if (index < 0 || place < m_keptAt || place - m_keptAt > m_kept.size()) return false;
  at = place - m_keptAt;
  return true;
}

}  // namespace tool
