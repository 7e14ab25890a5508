// The command `diff`: compares two documents and tells the first difference.
// The library compares the trees; the names of the root elements are compared here.
// Tested by tests/tool/diff_test.bash.

#include <tools/command/Arguments.h>
#include <tools/command/Trouble.h>
#include <tools/commands/Commands.h>
#include <tools/document/DocumentLoad.h>
#include <tools/io/Input.h>
#include <tools/io/Output.h>

#include <xmldom/diag/Compare.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/support/MemFile.h>

namespace tool {

namespace {

const unsigned int kReportRoom = 4096;

XMLPtr<IXMLDOMDocument2> LoadFile(const std::string& file) {
  Input input;
  return ReadInput(file, input) ? LoadDocument(input) : nullptr;
}

class DiffCommand : public Command {
 public:
  void DeclareArguments(Arguments& arguments) override {
    arguments.AddOperand("A", m_first, "An XML file, or - for standard input");
    arguments.AddOperand("B", m_second, "Another");
  }

  ExitStatus Run(const Session& session) override {
    return SayTrouble(DisplayName(m_first) + ", " + DisplayName(m_second), [&] {
      const XMLPtr<IXMLDOMDocument2> first = LoadFile(m_first);
      const XMLPtr<IXMLDOMDocument2> second = LoadFile(m_second);
      if (first == nullptr || second == nullptr) return ExitStatus::kTrouble;
      return Compare(*first, *second, session.output);
    });
  }

 private:
  static ExitStatus Compare(IXMLDOMDocument2& first, IXMLDOMDocument2& second, Output& output) {
    // CompareXMLNodes does not compare the names of the two nodes that it is given, only what is
    // below them.
    const std::string firstRoot = first.m_pFirstChild->m_pszNodeName;
    const std::string secondRoot = second.m_pFirstChild->m_pszNodeName;
    if (firstRoot != secondRoot) {
      output.Write("The root elements have different names: " + firstRoot + " and " + secondRoot +
                   "\n");
      return ExitStatus::kNo;
    }
    CMemFile report(kReportRoom);
    const bool isEqual = CompareXMLNodes(&first, &second, report, 0) != 0;
    output.Write(report.GetAsStr(), report.m_uLength);
    return isEqual ? ExitStatus::kDone : ExitStatus::kNo;
  }

  std::string m_first;
  std::string m_second;
};

std::unique_ptr<Command> Make() { return std::make_unique<DiffCommand>(); }

}  // namespace

const CommandEntry kDiffCommand = {
    "diff", "Compare two documents",
    "Compares elements, attributes and texts in their order; layout makes no difference. Tells "
    "the\n"
    "first difference, how many levels below the root it is, and the two nodes.\n"
    "Exit status: 0 when they are equal, 1 when they differ, 2 for trouble.\n"
    "\n"
    "Example: xmldom diff config.xml config.xml.old",
    Make};

}  // namespace tool
