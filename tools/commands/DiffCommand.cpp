// The command `diff`: compares two documents and tells where they differ, in both files.
// The trees are compared; only when they differ, the places of their nodes are looked up in the
// texts. Tested by tests/tool/diff_test.bash.

#include <tools/command/Arguments.h>
#include <tools/command/Trouble.h>
#include <tools/commands/Commands.h>
#include <tools/document/Differences.h>
#include <tools/document/DocumentLoad.h>
#include <tools/document/ExactPaths.h>
#include <tools/document/SourceMap.h>
#include <tools/io/Input.h>
#include <tools/io/Output.h>
#include <tools/io/ResultWriter.h>

#include <xmldom/dom/XMLDocument.h>

namespace tool {

namespace {

/// One of the two documents.
struct Side {
  Input input;
  XMLPtr<IXMLDOMDocument2> document;
};

/// Reads and loads a file. Result: whether that was possible; a message says why not.
bool Load(const std::string& file, Side& side) {
  if (!ReadInput(file, side.input) || !DecodeUtf16(side.input)) return false;
  side.document = LoadDocument(side.input);
  return side.document != nullptr;
}

/// Makes the lines of one side of the differences, one after the other, so that no more than one is
/// kept: a path is as long as its node is deep, and there may be many of them.
class SideLines {
 public:
  /// `which` tells which node of each difference is described; the others are borrowed.
  SideLines(const Side& side, const std::vector<Difference>& differences,
            DifferentNode Difference::*which)
      : m_side(side), m_differences(differences), m_which(which) {
    const SourceMap map(side.input.text, *side.document);
    std::vector<std::size_t> offsets;
    for (const Difference& difference : differences) {
      const SourcePlace* place = map.Find((difference.*which).node);
      offsets.push_back(place == nullptr ? 0 : place->begin);
    }
    m_positions = PositionsOf(side.input.text, offsets);
  }

  /// The line for difference `i`: "FILE:LINE:COLUMN: PATH: DESCRIPTION". Cost: that of the path.
  std::string At(std::size_t i) {
    const DifferentNode& different = m_differences[i].*m_which;
    // A text has no path of its own.
    const IXMLDOMNode* node = different.node;
    if (node->m_eNodeType == NODE_TEXT) node = node->m_pParent;
    return m_side.input.name + ":" + std::to_string(m_positions[i].line) + ":" +
           std::to_string(m_positions[i].column) + ": " + m_paths.PathTo(node) + ": " +
           different.description + "\n";
  }

 private:
  const Side& m_side;
  const std::vector<Difference>& m_differences;
  DifferentNode Difference::*const m_which;
  std::vector<SourcePosition> m_positions;
  ExactPaths m_paths;
};

class DiffCommand : public Command {
 public:
  void DeclareArguments(Arguments& arguments) override {
    arguments.AddOperand("A", m_first, "An XML file, or - for standard input");
    arguments.AddOperand("B", m_second, "Another");
    arguments.AddFlag("--all", m_all, "Tell all differences, not the first alone");
  }

  ExitStatus Run(const Session& session) override {
    return SayTrouble(DisplayName(m_first) + ", " + DisplayName(m_second), [&] {
      Side first;
      Side second;
      // What is wrong with the second one is told even if something is wrong with the first.
      const bool isFirstLoaded = Load(m_first, first);
      const bool isSecondLoaded = Load(m_second, second);
      if (!isFirstLoaded || !isSecondLoaded) return ExitStatus::kTrouble;
      const std::vector<Difference> differences =
          FindDifferences(*first.document, *second.document, m_all);
      if (differences.empty()) return ExitStatus::kDone;
      Write(first, second, differences, session.output);
      return ExitStatus::kNo;
    });
  }

 private:
  static void Write(const Side& first, const Side& second,
                    const std::vector<Difference>& differences, Output& output) {
    SideLines firstLines(first, differences, &Difference::first);
    SideLines secondLines(second, differences, &Difference::second);
    ResultWriter results(output, "");
    for (std::size_t i = 0; i < differences.size(); ++i) {
      results.Write(firstLines.At(i));
      results.Write(secondLines.At(i));
    }
  }

  std::string m_first;
  std::string m_second;
  bool m_all = false;
};

std::unique_ptr<Command> Make() { return std::make_unique<DiffCommand>(); }

}  // namespace

const CommandEntry kDiffCommand = {
    "diff", "Compare two documents",
    "Compares elements, attributes and texts in their order; layout makes no difference. For the\n"
    "first difference, or with --all for each, there is a line for A and one for B: where it is, "
    "as\n"
    "FILE:LINE:COLUMN, the path of the element or attribute, and what is there. All lines "
    "together\n"
    "grow with the number of differences times their depth.\n"
    "Exit status: 0 when they are equal, 1 when they differ, 2 for trouble.\n"
    "\n"
    "Example: xmldom diff config.xml config.xml.old",
    Make};

}  // namespace tool
