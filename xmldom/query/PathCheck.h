#ifndef XMLDOM_QUERY_PATHCHECK_H
#define XMLDOM_QUERY_PATHCHECK_H

#include <xmldom/base/Characters.h>
#include <xmldom/base/Export.h>
#include <xmldom/base/TextArgument.h>

#include <cstddef>
#include <cstring>
#include <string>

// Checks of a path before it is used, because the library accepts every text as a path: one that
// makes no sense selects nothing, and so does one that is fine where there is no such element.

namespace xmldom {

/// A problem of a path. It converts to true when there is one.
struct PathProblem {
  std::size_t offset = 0;  ///< The byte of the path where it is.
  std::string reason;      ///< What it is, in words; empty when nothing is wrong.

  /// Whether there is a problem.
  explicit operator bool() const noexcept { return !reason.empty(); }
};

/// What a path is for.
enum class PathUse {
  kSelect,    ///< Select, SelectNodes and selectNodes2.
  kSelectOne  ///< SelectOne, SelectSingleNode and selectSingleNode2, which know "." and "..".
};

/// What is a problem of a path.
struct PathRules {
  PathUse use;  ///< What the path is for.
  /// Whether it is also a problem when a part of the path is ignored, or is not read as it looks:
  /// text behind a comparison, a word without quotes (which counts as 0), more than dots in a step
  /// that moves; and when the path is empty or "/".
  bool isStrict;
  bool startsAtDocument;     ///< Whether the search starts at a document, whatever the path.
  const char* whoKnowsDots;  ///< For a message: where "." and ".." are understood.
};

/// Goes through a path, step by step, by the rules with which the library reads it. Each member
/// checks one part of it, given as offsets, and ends at the first problem. Result: whether there is
/// none.
class PathChecker {
 public:
  /// Takes copies of both.
  PathChecker(const std::string& path, const PathRules& rules)
      : m_path(path), m_rules(rules), m_isAbsolute(false), m_isSearch(false), m_depth(0) {}

  /// Result: the first problem of the path.
  PathProblem Check() {
    if (m_path.empty()) {
      if (m_rules.isStrict) Fail(0, "the path is empty");
      return m_problem;
    }
    if (!m_rules.isStrict && IsSingle() && m_path == "/") return m_problem;
    std::size_t at = 0;
    while (at < m_path.size() && m_path[at] == '/') ++at;
    m_isAbsolute = at > 0;
    m_isSearch = at > 1;
    for (std::size_t end = FindStepEnd(at); CheckStep(at, end); end = FindStepEnd(at)) {
      if (end == m_path.size()) break;
      at = end + 1;
    }
    return m_problem;
  }

 private:
  bool IsSingle() const { return m_rules.use == PathUse::kSelectOne; }

  bool Fail(std::size_t offset, const std::string& reason) {
    m_problem.offset = offset;
    m_problem.reason = reason;
    return false;
  }

  /// The character at `offset`, for a message.
  std::string Quoted(std::size_t offset) const {
    return "'" + VisibleCharacter(m_path.substr(offset)) + "'";
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

  bool CheckStep(std::size_t begin, std::size_t end) {
    if (begin == end) {
      return Fail(begin, end == m_path.size() ? "a name is missing at the end"
                                              : "empty step; '//' can stand only at the beginning");
    }
    if (!m_rules.isStrict && IsSingle() && m_path[begin] == '.') return CheckMove(begin, end);
    std::size_t nameEnd = begin;
    while (nameEnd != end && m_path[nameEnd] != '[' && m_path[nameEnd] != ']') ++nameEnd;
    const std::string name = m_path.substr(begin, nameEnd - begin);
    if (name == "." || name == "..") {
      if (!CheckDots(name, begin, end)) return false;
    } else {
      if (m_path[begin] == '@') {
        return Fail(begin, "an attribute cannot be selected, only tested in brackets");
      }
      if (name != "*" && !CheckName(begin, nameEnd)) return false;
      ++m_depth;
    }
    return CheckPredicates(nameEnd, end);
  }

  /// Checks a step of the single search that begins with a dot, of which the library looks at the
  /// dots alone.
  bool CheckMove(std::size_t begin, std::size_t end) {
    const bool isUp = end - begin > 1 && m_path[begin + 1] == '.';
    if (end == m_path.size()) {
      return Fail(begin, std::string("a path cannot end in ") + (isUp ? "'..'" : "'.'"));
    }
    return !isUp || GoUp(begin);
  }

  bool CheckDots(const std::string& name, std::size_t begin, std::size_t end) {
    const std::string quoted = "'" + name + "'";
    if (!IsSingle()) {
      return Fail(begin, quoted + " is understood only " + m_rules.whoKnowsDots);
    }
    if (end != begin + name.size()) {
      return Fail(begin + name.size(), quoted + " stands alone in its step");
    }
    if (m_isSearch && m_depth == 0) {
      return Fail(begin, quoted + " cannot begin a search at every depth");
    }
    if (end == m_path.size()) return Fail(begin, "a path cannot end in " + quoted);
    return name == "." || GoUp(begin);
  }

  /// A search at every depth may have found the last step at any depth.
  bool GoUp(std::size_t begin) {
    const bool isKnown = m_isAbsolute || m_rules.startsAtDocument;
    if (!isKnown || (m_isSearch && m_depth > 0)) return true;
    if (m_depth == 0) return Fail(begin, "'..' leads out of the document");
    --m_depth;
    return true;
  }

  static bool IsDigit(char c) { return c >= '0' && c <= '9'; }

  bool CheckName(std::size_t begin, std::size_t end) {
    if (begin == end) return Fail(begin, "a name is missing before " + Quoted(begin));
    for (std::size_t at = begin; at < end; ++at) {
      if (IsNameByte(m_path[at])) continue;
      return Fail(at, m_path[at] == ' ' ? "a blank cannot stand in a name"
                                        : Quoted(at) + " cannot stand in a name");
    }
    if (!IsNameStartByte(m_path[begin])) {
      return Fail(begin, "a name cannot begin with " + Quoted(begin));
    }
    return true;
  }

  bool CheckPredicates(std::size_t at, std::size_t end) {
    for (;;) {
      while (at < end && m_path[at] == ' ') ++at;
      if (at == end) return true;
      if (m_path[at] == ']') return Fail(at, "']' without '['");
      if (m_path[at] != '[') {
        return Fail(at, Quoted(at) + " where only '[', '/' or the end can follow");
      }
      const std::size_t close = m_path.find(']', at);
      if (close == std::string::npos) return Fail(at, "'[' without ']'");
      if (close == at + 1) return Fail(close, "empty predicate");
      if (!CheckPredicate(at + 1, close)) return false;
      at = close + 1;
    }
  }

  bool CheckPredicate(std::size_t at, std::size_t end) {
    for (std::size_t slash = FindUnquotedSlash(at, end); slash < end;
         slash = FindUnquotedSlash(at, end)) {
      if (m_path[at] == '@') return Fail(slash, "an attribute has nothing below it");
      // For the library, a segment that begins with '*' matches every name.
      if (m_path[at] != '*' && !CheckName(at, slash)) return false;
      at = slash + 1;
    }
    const std::size_t equals = m_path.find('=', at);
    if (equals >= end) {
      return Fail(end, "no '=' in the predicate; it has to compare, as in [name='text']");
    }
    if (at < equals && m_path[at] == '@') ++at;
    if (m_path[at] == '*') {
      return Fail(at, "'*' cannot be compared, it stands only before a '/'");
    }
    return CheckName(at, equals) && CheckLiteral(equals + 1, end);
  }

  /// Result: `end` when there is none.
  std::size_t FindUnquotedSlash(std::size_t at, std::size_t end) const {
    bool isInSingle = false;
    bool isInDouble = false;
    for (; at < end; ++at) {
      if (m_path[at] == '\'') isInSingle = !isInSingle;
      if (m_path[at] == '"') isInDouble = !isInDouble;
      if (m_path[at] == '/' && !isInSingle && !isInDouble) break;
    }
    return at;
  }

  bool CheckLiteral(std::size_t at, std::size_t end) {
    const std::size_t begin = at;
    if (at < end && (m_path[at] == '\'' || m_path[at] == '"')) {
      at = m_path.find(m_path[at], at + 1);
      if (at >= end) {
        return Fail(begin, "unclosed quote; a predicate ends at the first ']', even in quotes");
      }
      ++at;
    } else {
      while (at < end && m_path[at] == ' ') ++at;
      if (at < end && (m_path[at] == '-' || m_path[at] == '+')) ++at;
      const std::size_t digits = at;
      while (at < end && IsDigit(m_path[at])) ++at;
      if (m_rules.isStrict && at == digits) {
        return Fail(begin, "a number or a quoted text has to follow '='");
      }
    }
    while (at < end && m_path[at] == ' ') ++at;
    if (!m_rules.isStrict || at == end) return true;
    return Fail(at, Quoted(at) + " follows what is compared, and would be ignored");
  }

  const std::string m_path;
  const PathRules m_rules;
  PathProblem m_problem;
  bool m_isAbsolute;    // whether the path begins with '/'
  bool m_isSearch;      // whether it begins with "//"
  std::size_t m_depth;  // how many levels the steps so far lead down
};

/// Checks a path by rules that suit the caller. A NUL byte ends the path, as it does for a search.
/// Result: the first problem. Cost: linear in the path; no tree is touched.
XMLDOM_NODISCARD inline PathProblem CheckPathBy(TextArgument path, const PathRules& rules) {
  const std::string text(path.Data(), path.Size());
  return PathChecker(text.c_str(), rules).Check();
}

/// Tells a path that can never select anything from one that merely selects nothing in some tree:
/// `if (xmldom::PathProblem problem = xmldom::CheckPath(path)) ...`. Elements and attributes are
/// taken to have names that XML allows, as all have that were loaded.
/// Result: the first reason why the path cannot select, such as a position, a predicate that does
/// not compare or a missing bracket, with its offset; none when it can.
/// Cost: linear in the path; no tree is touched.
XMLDOM_NODISCARD inline PathProblem CheckPath(TextArgument path, PathUse use = PathUse::kSelect) {
  return CheckPathBy(path, PathRules{use, false, false, "when one node is searched for"});
}

}  // namespace xmldom

#endif
