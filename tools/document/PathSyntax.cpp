// Takes the paths of the tool apart. What the library does not know is split off, and the library
// checks the rest: a path of its own language, in which each byte remembers where it came from.
// Tested by tests/tool/PathSyntax_test.cpp and tests/tool/path_test.bash.

#include <tools/document/PathSyntax.h>

#include <xmldom/dom/XmlNames.h>

#include <algorithm>
#include <limits>

namespace tool {

namespace {

const char kNoAxes[] = "axes are not understood";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// Goes through a path once. Offsets are those of the path as the user gave it.
class PathReader {
 public:
  PathReader(const std::string& text, PathPurpose purpose, SearchPath& path)
      : m_text(text), m_purpose(purpose), m_path(path) {}

  xmldom::PathProblem Read() {
    m_path = {m_text, m_purpose != PathPurpose::kField, false, {}, {}};
    if (m_purpose == PathPurpose::kField && m_text == ".") return m_problem;
    std::size_t at = 0;
    while (at < m_text.size() && m_text[at] == '/') ++at;
    if (at > 0 && m_purpose == PathPurpose::kField) {
      Fail(0, "a field begins at the selected node, not with '/'");
    }
    m_path.isAnywhere = at > 1;
    Copy(0, at);
    for (;;) {
      const std::size_t end = FindStepEnd(at);
      ReadStep(at, end);
      if (end == m_text.size()) break;
      Copy(end, end + 1);
      at = end + 1;
    }
    m_origins.push_back(m_text.size());
    CheckPlain();
    return m_problem;
  }

 private:
  /// The first problem counts; others may be its consequences.
  void Fail(std::size_t offset, const std::string& reason) {
    if (m_problem && m_problem.offset <= offset) return;
    m_problem.offset = offset;
    m_problem.reason = reason;
  }

  /// Passes a part of the path on to the library.
  void Copy(std::size_t begin, std::size_t end) {
    for (; begin < end; ++begin) Stand(m_text[begin], begin);
  }

  /// Puts a character into the path for the library. It stands for the byte at `origin`.
  void Stand(char c, std::size_t origin) {
    m_plain += c;
    m_origins.push_back(origin);
  }

  /// As in the library, quotes make no difference to where a step or a predicate ends.
  std::size_t FindStepEnd(std::size_t at) const {
    bool isInBrackets = false;
    for (; at < m_text.size(); ++at) {
      if (m_text[at] == '[') isInBrackets = true;
      if (m_text[at] == ']') isInBrackets = false;
      if (m_text[at] == '/' && !isInBrackets) break;
    }
    return at;
  }

  void ReadStep(std::size_t begin, std::size_t end) {
    if (begin < end && m_text[begin] == '@') {
      ReadAttribute(begin, end);
      return;
    }
    const std::size_t nameEnd = std::min(m_text.find('[', begin), end);
    m_path.steps.push_back({m_text.substr(begin, nameEnd - begin), {}});
    const std::size_t axis = m_path.steps.back().name.find("::");
    if (axis != std::string::npos) Fail(begin + axis, kNoAxes);
    Copy(begin, nameEnd);
    std::size_t at = nameEnd;
    while (at < end) {
      const std::size_t open = std::min(m_text.find_first_not_of(' ', at), end);
      // The library takes blanks between predicates only, and one in front may have been split off.
      if (open == end) return;
      const std::size_t close = std::min(m_text.find(']', open), end);
      if (m_text[open] != '[' || close == end) {
        Copy(open, end);
        return;
      }
      ReadPredicate(open + 1, close);
      at = close + 1;
    }
  }

  void ReadAttribute(std::size_t begin, std::size_t end) {
    m_path.isPlain = false;
    const std::size_t nameEnd = std::min(m_text.find('[', begin), end);
    m_path.attribute = m_text.substr(begin + 1, nameEnd - begin - 1);
    if (end != m_text.size()) {
      Fail(end, "an attribute has nothing below it");
    } else if (nameEnd != end) {
      Fail(nameEnd, "an attribute takes no predicate");
    } else if (m_path.attribute == "*") {
      Fail(begin + 1, "'*' does not stand for attributes; give a name");
    } else if (!xmldom::IsXmlName(m_path.attribute)) {
      Fail(begin + 1, "the name of an attribute has to follow '@'");
    } else if (m_path.steps.empty() && m_path.isAnywhere) {
      m_path.steps.push_back({"*", {}});
    } else if (m_path.steps.empty() && m_purpose != PathPurpose::kField) {
      Fail(begin, "a document has no attributes; its root element is '/*'");
    }
    // Any name will do for the library, to which this has to be a step.
    Stand('*', begin);
  }

  void ReadPredicate(std::size_t begin, std::size_t end) {
    PathStep& step = m_path.steps.back();
    const std::size_t equals = std::min(m_text.find('=', begin), end);
    if (equals < end || begin == end) {
      if (HasOnlyNames(begin, equals)) Copy(begin - 1, end + 1);
      step.predicates.push_back(
          {PathPredicate::kComparison, m_text.substr(begin, end - begin), {}, 0});
      return;
    }
    m_path.isPlain = false;
    // Blanks mean nothing around what is not compared.
    while (begin < end && m_text[begin] == ' ') ++begin;
    while (begin < end && m_text[end - 1] == ' ') --end;
    if (begin == end) {
      Fail(begin, "empty predicate");
    } else if (m_text.compare(begin, end - begin, "last()") == 0) {
      step.predicates.push_back({PathPredicate::kLast, {}, {}, 0});
    } else if (IsDigit(m_text[begin]) || m_text[begin] == '-' || m_text[begin] == '+') {
      ReadPosition(begin, end);
    } else if (HasOnlyNames(begin, end)) {
      ReadNames(begin, end);
    }
  }

  /// Whether a part of a predicate holds nothing that is more XPath than is understood.
  bool HasOnlyNames(std::size_t begin, std::size_t end) {
    static const struct {
      const char* sign;
      const char* reason;
    } kSigns[] = {{"(", "no function is understood but last(), alone in its brackets"},
                  {"::", kNoAxes},
                  {"!", "only '=' compares"},
                  {"<", "only '=' compares"},
                  {">", "only '=' compares"},
                  {"|", "'|' is not understood"},
                  {" and ", "'and' is written as two predicates: [a][b]"},
                  {" or ", "'or' is not understood"}};
    const std::string part = m_text.substr(begin, end - begin);
    bool isFound = false;
    for (const auto& known : kSigns) {
      const std::size_t at = part.find(known.sign);
      if (at == std::string::npos) continue;
      Fail(begin + at + (*known.sign == ' ' ? 1 : 0), known.reason);
      isFound = true;
    }
    return !isFound;
  }

  void ReadPosition(std::size_t begin, std::size_t end) {
    const std::size_t most = std::numeric_limits<std::size_t>::max();
    std::size_t position = 0;
    for (std::size_t at = begin; at < end; ++at) {
      if (!IsDigit(m_text[at])) {
        Fail(at, "a position is a whole number, or last()");
        return;
      }
      const std::size_t digit = static_cast<std::size_t>(m_text[at] - '0');
      // No document has so many nodes that it matters which of the largest numbers this is.
      position = position > (most - digit) / 10 ? most : 10 * position + digit;
    }
    if (position == 0) Fail(begin, "positions count from 1");
    m_path.steps.back().predicates.push_back({PathPredicate::kPosition, {}, {}, position});
  }

  void ReadNames(std::size_t begin, std::size_t end) {
    PathPredicate predicate = {PathPredicate::kExistence, {}, {}, 0};
    for (std::size_t at = begin;;) {
      const std::size_t slash = std::min(m_text.find('/', at), end);
      predicate.names.push_back(m_text.substr(at, slash - at));
      if (slash == end) break;
      at = slash + 1;
    }
    const std::string& last = predicate.names.back();
    if (last.empty() || last == "@") {
      Fail(end, "a name is missing at the end of the predicate");
      return;
    }
    // The library checks the names, in a comparison.
    Stand('[', begin);
    Copy(begin, end);
    if (last == "*" || last == "@*") m_plain.back() = 'x';
    for (const char c : {'=', '\'', '\'', ']'}) Stand(c, end);
    m_path.steps.back().predicates.push_back(predicate);
  }

  void CheckPlain() {
    const bool isField = m_purpose == PathPurpose::kField;
    const bool isSingle = m_purpose != PathPurpose::kAll;
    // Users get a message also where the library would ignore a part of the path.
    const xmldom::PathRules rules = {
        isSingle ? xmldom::PathUse::kSelectOne : xmldom::PathUse::kSelect, true, !isField,
        "with --first"};
    const xmldom::PathProblem problem = xmldom::CheckPathBy(m_plain, rules);
    if (problem) Fail(m_origins[problem.offset], problem.reason);
  }

  const std::string& m_text;
  const PathPurpose m_purpose;
  SearchPath& m_path;
  xmldom::PathProblem m_problem;
  std::string m_plain;                 // the path for the library
  std::vector<std::size_t> m_origins;  // of each byte of m_plain, and of its end
};

}  // namespace

xmldom::PathProblem ReadPath(const std::string& text, PathPurpose purpose, SearchPath& path) {
  return PathReader(text, purpose, path).Read();
}

}  // namespace tool
