// Writes documents the way the library does.

#include "Commands.h"
#include "DocumentLoad.h"
#include "FileCommand.h"

#include <xmldom/dom/XMLDocument.h>

#include <CLI/CLI.hpp>

#include <cstring>

namespace tool {

namespace {

class FormatCommand : public FileCommand {
 public:
  FormatCommand() : FileCommand(kResults) {}

 protected:
  void DescribeOptions(CLI::App& arguments) override {
    arguments.add_flag("--indent-off", m_indentOff, "Begin every line at the first column");
  }

  ExitStatus RunOn(const Input& input, ResultWriter& results, const Session&) override {
    const Owned<IXMLDOMDocument2> document = LoadDocument(input);
    if (document == nullptr) return ExitStatus::kTrouble;
    // Only now: while loading, the flag lets the white space between elements go.
    if (m_indentOff) document->m_uFlags &= ~static_cast<unsigned>(document->FORMATTED_LAYOUT);
    const _bstr_t xml = document->Getxml();
    results.Write(xml, std::strlen(xml));
    return ExitStatus::kDone;
  }

 private:
  bool m_indentOff = false;
};

std::unique_ptr<Command> Make() { return std::make_unique<FormatCommand>(); }

}  // namespace

const CommandEntry kFormatCommand = {
    "format", "Write a document with an element a line, indented",
    "What stands outside the root element is left out, and so is white space between elements.\n"
    "The text of an element stands before its other children.\n"
    "Exit status: 0 when written, 2 for trouble.\n"
    "\n"
    "Example: xmldom format config.xml",
    Make};

}  // namespace tool
