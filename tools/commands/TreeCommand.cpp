// The command `tree`: shows the shape of a document to a person.
// DocumentShape merges elements of one name; this draws the merged elements, one on a line.
// Tested by tests/tool/tree_test.bash.

#include <tools/command/Arguments.h>
#include <tools/command/FileCommand.h>
#include <tools/commands/Commands.h>
#include <tools/document/DocumentLoad.h>
#include <tools/document/DocumentShape.h>

#include <xmldom/dom/XMLDocument.h>

#include <cstdlib>
#include <cstring>

namespace tool {

namespace {

// Documents are rarely deeper, and a drawing with so many levels can still be read.
const int kDefaultDepth = 32;

// The first two stand directly before an element: one that has later siblings, and the last one.
// The other two stand below these, before everything that hangs below such an element.
const char kBranch[] = "├── ";
const char kLastBranch[] = "└── ";
const char kPassing[] = "│   ";
const char kNothing[] = "    ";

// Control sequences that set the color of a terminal.
const char kNameColor[] = "\033[1;34m";
const char kCountColor[] = "\033[33m";
const char kAttributeColor[] = "\033[36m";
const char kTextColor[] = "\033[32m";
const char kHiddenColor[] = "\033[2m";
const char kPlain[] = "\033[0m";

/// Draws merged elements, one on a line, behind the branches that lead to it. It walks the elements
/// by their links, so that the stack does not grow with the depth of the document.
class ShapeDrawing {
 public:
  ShapeDrawing(const DocumentShape& shape, ResultWriter& results, bool colored)
      : m_elements(shape.Elements()), m_results(results), m_colored(colored) {}

  void Draw() {
    std::size_t at = 0;
    for (;;) {
      const Element& element = m_elements[at];
      DrawElement(element);
      DrawHiddenLevels(element);
      if (element.firstChild != DocumentShape::kNone) {
        m_indents.push_back(m_indent.size());
        m_indent += Indent(element);
        at = element.firstChild;
        continue;
      }
      while (at != 0 && m_elements[at].nextSibling == DocumentShape::kNone) {
        at = m_elements[at].parent;
        m_indent.resize(m_indents.back());
        m_indents.pop_back();
      }
      if (at == 0) return;
      at = m_elements[at].nextSibling;
    }
  }

 private:
  typedef DocumentShape::Element Element;

  static bool IsRoot(const Element& element) { return element.parent == DocumentShape::kNone; }
  static bool IsLast(const Element& element) { return element.nextSibling == DocumentShape::kNone; }

  /// What each line below an element has at the level of that element.
  static const char* Indent(const Element& element) {
    if (IsRoot(element)) return "";
    return IsLast(element) ? kNothing : kPassing;
  }

  void DrawElement(const Element& element) {
    std::string line = m_indent;
    if (!IsRoot(element)) line += IsLast(element) ? kLastBranch : kBranch;
    line += Colored(element.name, kNameColor);
    if (element.count > 1) line += " × " + Colored(std::to_string(element.count), kCountColor);
    for (const char* attribute : element.attributes) {
      line += " " + Colored(std::string("@") + attribute, kAttributeColor);
    }
    if (element.hasText) line += " " + Colored("#text", kTextColor);
    if (element.hasComment) line += " " + Colored("#comment", kTextColor);
    if (element.hasInstruction) line += " " + Colored("#instruction", kTextColor);
    DrawLine(line);
  }

  /// Draws a line that tells how many levels below an element are not shown, if there are any.
  void DrawHiddenLevels(const Element& element) {
    if (element.hiddenLevels == 0) return;
    const std::string count = std::to_string(element.hiddenLevels);
    const char* what = element.hiddenLevels == 1 ? " more level" : " more levels";
    DrawLine(m_indent + Indent(element) + kLastBranch + Colored("… " + count + what, kHiddenColor));
  }

  std::string Colored(const std::string& text, const char* color) const {
    return m_colored ? color + text + kPlain : text;
  }

  void DrawLine(const std::string& line) {
    m_results.WriteHarmless(line);  // no name in XML holds what a terminal obeys
    m_results.EndLine();
  }

  const std::vector<Element>& m_elements;
  ResultWriter& m_results;
  const bool m_colored;
  std::string m_indent;
  std::vector<std::size_t> m_indents;  // the lengths of m_indent at the levels above
};

/// Whether an environment variable is set and not empty.
bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

class TreeCommand : public FileCommand {
 public:
  TreeCommand() : FileCommand(kResults) {}

 protected:
  void DeclareOptions(Arguments& arguments) override {
    arguments.AddNumber("--depth", "N (" + std::to_string(kDefaultDepth) + " unless given)", 1,
                        m_depth, "Levels to show");
    arguments.AddChoice("--color", {"auto", "always", "never"}, m_color,
                        "When to use colors; auto is for a terminal");
  }

  ExitStatus RunOn(const Input& input, ResultWriter& results, const Session&) override {
    const XMLPtr<IXMLDOMDocument2> document = LoadDocument(input);
    if (document == nullptr) return ExitStatus::kTrouble;
    const DocumentShape shape(document->m_pFirstChild, static_cast<std::size_t>(m_depth));
    ShapeDrawing(shape, results, UsesColor(results)).Draw();
    return ExitStatus::kDone;
  }

 private:
  bool UsesColor(const ResultWriter& results) const {
    if (m_color != "auto") return m_color == "always";
    const char* terminal = std::getenv("TERM");
    const bool isDumb = terminal == nullptr || std::strcmp(terminal, "dumb") == 0;
    return results.IsTerminal() && !isDumb && !IsSet("NO_COLOR");
  }

  int m_depth = kDefaultDepth;
  std::string m_color = "auto";
};

std::unique_ptr<Command> Make() { return std::make_unique<TreeCommand>(); }

}  // namespace

const CommandEntry kTreeCommand = {
    "tree", "Show the shape of a document",
    "Elements of one name below the same parents are one line: '× 3' tells that there are three "
    "in\n"
    "all, '@id' that some have such an attribute, '#text' that some hold text, '#comment' and\n"
    "'#instruction' that some hold comments and processing instructions.\n"
    "Exit status: 0 when shown, 2 for trouble.\n"
    "\n"
    "Example: xmldom tree --depth 3 config.xml",
    Make};

}  // namespace tool
