// Writes documents with a range of the children of one node.

#include <tools/command/FileCommand.h>
#include <tools/command/Query.h>
#include <tools/commands/Commands.h>
#include <tools/document/DocumentLoad.h>

#include <xmldom/dom/XMLDocument.h>
#include <xmldom/dom/XMLWriter.h>
#include <xmldom/support/MemFile.h>

#include <CLI/CLI.hpp>

#include <climits>
#include <cstring>

namespace tool {

namespace {

const int kNoPage = -1;
const unsigned int kRowRoom = 256;

class PageCommand : public FileCommand {
 public:
  PageCommand() : FileCommand(kResults) {}

  void Check() const override {
    m_query.Check();
    if ((m_page == kNoPage) != (m_pages == kNoPage)) {
      throw UsageError("--page and --pages are given together");
    }
    if (m_padOption->count() > 0) CheckTemplate();
  }

 protected:
  void DescribeOptions(CLI::App& arguments) override {
    m_query.Describe(arguments);
    arguments.add_option("--first", m_first, "Position of the first child to write")
        ->check(CLI::Range(1, INT_MAX))
        ->option_text("N (1 unless given)");
    CLI::Option* count = arguments.add_option("--count", m_count, "How many positions to write")
                             ->check(CLI::Range(1, INT_MAX))
                             ->option_text("N (all unless given)");
    arguments.add_option("--page", m_page, "Number of this page, for an attribute of the node")
        ->check(CLI::Range(0, INT_MAX))
        ->option_text("N");
    arguments.add_option("--pages", m_pages, "Number of all pages, likewise")
        ->check(CLI::Range(0, INT_MAX))
        ->option_text("N");
    m_padOption =
        arguments.add_option("--pad", m_template, "XML of the rows that fill up the last page")
            ->needs(count)
            ->option_text("TEMPLATE");
  }

  ExitStatus RunOn(const Input& input, ResultWriter& results, const Session&) override {
    const Owned<IXMLDOMDocument2> document = LoadDocument(input);
    if (document == nullptr) return ExitStatus::kTrouble;
    // The library would log that, and write the whole document.
    if (m_query.Search(document.get(), [](IXMLDOMNode*) {}) == 0) return ExitStatus::kNo;
    const char* rows = m_padOption->count() > 0 ? m_template.c_str() : nullptr;
    const _bstr_t xml =
        document->GetFilteredXML(m_query.Path().c_str(), m_first, m_count, m_page, m_pages, rows);
    results.Write(xml, std::strlen(xml));
    return ExitStatus::kDone;
  }

 private:
  /// The number of a row is put in where the first tag of the template seems to end.
  void CheckTemplate() const {
    LoadProblem problem;
    if (LoadText(m_template, problem) == nullptr) {
      throw UsageError(DescribeProblem("template", m_template, problem.position, problem.reason));
    }
    CMemFile row(kRowRoom);
    Pad(row, m_template.c_str(), 0, 1);
    if (LoadText(row.GetAsStr(), problem) == nullptr) {
      throw UsageError("the first '>' of the template has to end its first tag");
    }
  }

  Query m_query{Query::kFirst};
  int m_first = 1;
  int m_count = INT_MAX;
  int m_page = kNoPage;
  int m_pages = kNoPage;
  std::string m_template;
  const CLI::Option* m_padOption = nullptr;
};

std::unique_ptr<Command> Make() { return std::make_unique<PageCommand>(); }

}  // namespace

const CommandEntry kPageCommand = {
    "page", "Write a document with a page of the children of one node",
    "Of the node that PATH selects first, only the children at the given positions are written, "
    "each\n"
    "with its position as attribute 'index'; texts have positions too. --page and --pages give "
    "the\n"
    "node the attributes 'curPage' and 'numPages'. 'xmldom select --help' explains paths.\n"
    "Exit status: 0 when written, 1 when nothing is selected, 2 for trouble.\n"
    "\n"
    "Example: xmldom page --first 11 --count 10 --page 2 --pages 3 --pad '<rule/>' /config/rules "
    "config.xml",
    Make};

}  // namespace tool
