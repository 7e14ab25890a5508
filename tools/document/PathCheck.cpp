// Checks a path before the library reads it, because the library accepts every text as a path.
// Reads step by step with the library's own rules, and throws the first problem as a PathProblem.
// Tested by tests/tool/path_test.bash.

#include <tools/document/PathCheck.h>

#include <tools/io/SourceText.h>

#include <algorithm>
#include <cctype>
#include <cstring>

namespace tool {

namespace {

const std::size_t kNowhere = std::string::npos;

bool IsDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

bool IsNameByte(char c) {
  const unsigned char byte = static_cast<unsigned char>(c);
  return byte >= 0x80 || std::isalnum(byte) != 0 ||
         (c != '\0' && std::strchr("_:-.", c) != nullptr);
}

/// Goes through a path, step by step. Each member checks one part of it, given as offsets, and
/// throws a PathProblem for the first problem.
class Checker {
 public:
  Checker(const std::string& path, bool single)
      : m_path(path), m_single(single), m_isSearch(false), m_depth(0) {}

  void CheckPath() {
    if (m_path.empty()) Fail(0, "the path is empty");
    std::size_t at = std::min(m_path.find_first_not_of('/'), m_path.size());
    m_isSearch = at > 1;
    for (;;) {
      const std::size_t end = FindStepEnd(at);
      CheckStep(at, end);
      if (end == m_path.size()) return;
      at = end + 1;
    }
  }

 private:
  [[noreturn]] static void Fail(std::size_t offset, const std::string& reason) {
    throw PathProblem{offset, reason};
  }

  /// The character at `offset`, for a message.
  std::string Quoted(std::size_t offset) const {
    const char* text = &m_path[offset];
    return "'" + Visible(text, CharacterLength(text, m_path.size() - offset)).text + "'";
  }

  /// Where the step at `at` ends: at the next '/' outside brackets. Quotes make no difference,
  /// because for the library a bracket in quotes is a bracket too.
  std::size_t FindStepEnd(std::size_t at) const {
    bool isInBrackets = false;
    for (; at < m_path.size(); ++at) {
      if (m_path[at] == '[') isInBrackets = true;
      if (m_path[at] == ']') isInBrackets = false;
      if (m_path[at] == '/' && !isInBrackets) break;
    }
    return at;
  }

  void CheckStep(std::size_t begin, std::size_t end) {
    if (begin == end) {
      Fail(begin, end == m_path.size() ? "a name is missing at the end"
                                       : "empty step; '//' can stand only at the beginning");
    }
    const std::size_t nameEnd = std::min(m_path.find_first_of("[]", begin), end);
    const std::string name = m_path.substr(begin, nameEnd - begin);
    if (name == "." || name == "..") {
      CheckDots(name, begin, end);
    } else {
      if (m_path[begin] == '@') {
        Fail(begin, "an attribute cannot be selected, only tested in brackets");
      }
      if (name != "*") CheckName(begin, nameEnd);
      ++m_depth;
    }
    CheckPredicates(nameEnd, end);
  }

  void CheckDots(const std::string& name, std::size_t begin, std::size_t end) {
    const std::string quoted = "'" + name + "'";
    if (!m_single) Fail(begin, quoted + " is understood only with --first");
    if (end != begin + name.size()) Fail(begin + name.size(), quoted + " stands alone in its step");
    if (m_isSearch && m_depth == 0) Fail(begin, quoted + " cannot begin a search at every depth");
    if (end == m_path.size()) Fail(begin, "a path cannot end in " + quoted);
    if (name == "." || m_isSearch) return;
    if (m_depth == 0) Fail(begin, "'..' leads out of the document");
    --m_depth;
  }

  void CheckName(std::size_t begin, std::size_t end) const {
    if (begin == end) Fail(begin, "a name is missing before " + Quoted(begin));
    for (std::size_t at = begin; at < end; ++at) {
      if (!IsNameByte(m_path[at])) {
        Fail(at, m_path[at] == ' ' ? "a blank cannot stand in a name"
                                   : Quoted(at) + " cannot stand in a name");
      }
    }
    if (IsDigit(m_path[begin]) || m_path[begin] == '-' || m_path[begin] == '.') {
      Fail(begin, "a name cannot begin with " + Quoted(begin));
    }
  }

  void CheckPredicates(std::size_t at, std::size_t end) const {
    for (;;) {
      while (at < end && m_path[at] == ' ') ++at;
      if (at == end) return;
      if (m_path[at] == ']') Fail(at, "']' without '['");
      if (m_path[at] != '[') Fail(at, Quoted(at) + " where only '[', '/' or the end can follow");
      const std::size_t close = m_path.find(']', at);
      if (close == kNowhere) Fail(at, "'[' without ']'");
      if (close == at + 1) Fail(close, "empty predicate");
      CheckPredicate(at + 1, close);
      at = close + 1;
    }
  }

  void CheckPredicate(std::size_t at, std::size_t end) const {
    for (;;) {
      const std::size_t slash = FindUnquotedSlash(at, end);
      if (slash == kNowhere) break;
      if (m_path[at] == '@') Fail(slash, "an attribute has nothing below it");
      // For the library, a segment that begins with '*' matches every name.
      if (m_path[at] != '*') CheckName(at, slash);
      at = slash + 1;
    }
    const std::size_t equals = m_path.find('=', at);
    if (equals >= end) {
      Fail(end, "no '=' in the predicate; it has to compare, as in [name='text']");
    }
    if (at < equals && m_path[at] == '@') ++at;
    if (m_path[at] == '*') Fail(at, "'*' cannot be compared, it stands only before a '/'");
    CheckName(at, equals);
    CheckLiteral(equals + 1, end);
  }

  std::size_t FindUnquotedSlash(std::size_t at, std::size_t end) const {
    bool isInSingle = false;
    bool isInDouble = false;
    for (; at < end; ++at) {
      if (m_path[at] == '\'') isInSingle = !isInSingle;
      if (m_path[at] == '"') isInDouble = !isInDouble;
      if (m_path[at] == '/' && !isInSingle && !isInDouble) return at;
    }
    return kNowhere;
  }

  void CheckLiteral(std::size_t at, std::size_t end) const {
    const std::size_t begin = at;
    if (at < end && (m_path[at] == '\'' || m_path[at] == '"')) {
      at = m_path.find(m_path[at], at + 1);
      if (at >= end)
        Fail(begin, "unclosed quote; a predicate ends at the first ']', even in quotes");
      ++at;
    } else {
      while (at < end && m_path[at] == ' ') ++at;
      if (at < end && (m_path[at] == '-' || m_path[at] == '+')) ++at;
      if (at == end || !IsDigit(m_path[at]))
        Fail(begin, "a number or a quoted text has to follow '='");
      while (at < end && IsDigit(m_path[at])) ++at;
    }
    while (at < end && m_path[at] == ' ') ++at;
    if (at < end) Fail(at, Quoted(at) + " follows what is compared, and would be ignored");
  }

  const std::string& m_path;
  const bool m_single;
  bool m_isSearch;      // whether the path begins with "//"
  std::size_t m_depth;  // the level, below the document, that the steps so far lead to
};

}  // namespace

PathProblem FindPathProblem(const std::string& path, bool single) {
  try {
    Checker(path, single).CheckPath();
  } catch (const PathProblem& problem) {
    return problem;
  }
  return {0, std::string()};
}

}  // namespace tool
