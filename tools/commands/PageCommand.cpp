// The command `page`: writes documents with a range of the children of one node.
// The library selects and writes the range; this checks what the library would only log.
// Tested by tests/tool/page_test.bash.

#include <tools/command/Arguments.h>
#include <tools/command/FileCommand.h>
#include <tools/command/Query.h>
#include <tools/command/ResultNotice.h>
#include <tools/commands/Commands.h>
#include <tools/document/DocumentLoad.h>
#include <tools/document/SourceEncoding.h>
#include <tools/io/Diagnostics.h>
#include <tools/io/SourceExcerpt.h>

#include <xmldom/dom/XMLDocument.h>
#include <xmldom/support/MemFile.h>
#include <xmldom/text/XMLWriter.h>

#include <climits>
#include <cstring>

namespace tool {

namespace {

// The number that tells the library to write no page attributes.
const int kNoPage = -1;
const unsigned int kRowRoom = 256;
const unsigned int kXmlRoom = 16384;
// How many rows a page is filled up with unless the user says that more are meant.
const long long kMostRows = 100000;

class PageCommand : public FileCommand {
 public:
  PageCommand() : FileCommand(kResults) {}

  void Check() const override {
    m_query.Check();
    if ((m_page == kNoPage) != (m_pages == kNoPage)) {
      throw UsageError("--page and --pages are given together");
    }
    if (m_mayPadMore && !m_pad.isGiven) throw UsageError("--yes-pad is for --pad");
    if (m_pad.isGiven) CheckTemplate();
  }

 protected:
  void DeclareOptions(Arguments& arguments) override {
    m_query.DeclareArguments(arguments);
    arguments.AddNumber("--from", "N (1 unless given)", 1, m_first,
                        "Position of the first child to write");
    arguments.AddNumber("--rows", "N (all unless given)", 1, m_count,
                        "How many positions to write");
    arguments.AddNumber("--page", "N", 0, m_page,
                        "Number of this page, for an attribute of the node");
    arguments.AddNumber("--pages", "N", 0, m_pages,
                        "How many pages there are, for another attribute of it");
    arguments.AddText("--pad", "TEMPLATE", m_pad, "XML of the rows that fill up the last page");
    arguments.Require("--pad", "--rows");
    arguments.AddRenamed("--first", "--from");
    arguments.AddRenamed("--count", "--rows");
    arguments.AddFlag("--yes-pad", m_mayPadMore, "Fill up with more than 100000 rows, too");
  }

  ExitStatus RunOn(const Input& input, ResultWriter& results, const Session&) override {
    const XMLPtr<IXMLDOMDocument2> document = LoadDocument(input);
    if (document == nullptr) return ExitStatus::kTrouble;
    const std::vector<IXMLDOMNode*> selected = m_query.Select(document.Get());
    if (selected.empty()) return ExitStatus::kNo;
    IXMLDOMNode* const paged = selected.front();
    const long long rowCount = CountRows(paged);
    if (m_pad.isGiven && !m_mayPadMore && rowCount > kMostRows) {
      ComplainAbout(input.name, "the page would be filled up with " + std::to_string(rowCount) +
                                    " rows; more than " + std::to_string(kMostRows) +
                                    " need --yes-pad");
      return ExitStatus::kTrouble;
    }
    if (const IXMLDOMNode* attribute = FindNumbered(paged)) {
      ComplainAtNode(*attribute,
                     "the number of a row is written as an attribute 'index', so that the"
                     " row must not have one",
                     input, *document);
      return ExitStatus::kTrouble;
    }
    const char* rows = m_pad.isGiven ? m_pad.text.c_str() : nullptr;
    CMemFile xml(kXmlRoom);
    document->GetXMLHelper(xml, 0, paged, m_first, m_count, m_page, m_pages, rows, false, false, 0);
    if (NeedsResultCheck(SourceEncoding(input.text), xml.GetAsStr(), ResultKind::kFragment)) {
      // Where the whole document can be written, a page of it can.
      const _bstr_t whole = document->Getxml();
      const ResultProblem problem =
          FindResultProblem(whole, *document->m_pFirstChild, ResultKind::kFragment);
      if (ComplainOfResult(problem, input, *document)) return ExitStatus::kTrouble;
    }
    results.Write(xml.GetAsStr(), xml.m_uLength);
    return ExitStatus::kDone;
  }

 private:
  /// Checks that the template is well-formed, as it is given and as a row. The library writes the
  /// index of a row before the first '>' of the template, which can also stand in a value.
  void CheckTemplate() const {
    LoadProblem problem;
    if (LoadText(m_pad.text, problem) == nullptr) {
      throw UsageError(DescribeProblem("template", m_pad.text, problem.position, problem.reason));
    }
    CMemFile row(kRowRoom);
    Pad(row, m_pad.text.c_str(), 0, 1);
    if (LoadText(row.GetAsStr(), problem) == nullptr) {
      throw UsageError("the first '>' of the template has to end its first tag");
    }
  }

  /// Finds an attribute, of an element of the page, that has the name of the attribute which the
  /// library adds: no element may have two of one name. Result: null when there is none.
  const IXMLDOMNode* FindNumbered(const IXMLDOMNode* paged) const {
    if (paged->m_eNodeType == NODE_DOCUMENT) return nullptr;
    const long long end = static_cast<long long>(m_first) + m_count;
    long long position = 0;
    for (const IXMLDOMNode* child = paged->m_pFirstChild; child != nullptr;
         child = child->m_pNextSibling) {
      if (++position < m_first || position >= end) continue;
      for (const IXMLDOMNode* attribute = child->m_pFirstAttribute; attribute != nullptr;
           attribute = attribute->m_pNextSibling) {
        if (std::strcmp(attribute->m_pszNodeName, "index") == 0) return attribute;
      }
    }
    return nullptr;
  }

  /// With how many rows the library fills up the page of a node. A page with a number far behind
  /// the last child begins with those of all pages before it.
  long long CountRows(const IXMLDOMNode* node) const {
    if (node->m_eNodeType == NODE_DOCUMENT) return 0;
    long long children = 0;
    bool hasOnlyTexts = true;
    for (const IXMLDOMNode* child = node->m_pFirstChild; child != nullptr;
         child = child->m_pNextSibling) {
      ++children;
      if (child->m_eNodeType != NODE_TEXT) hasOnlyTexts = false;
    }
    return hasOnlyTexts ? m_count : m_first - 1LL + m_count - children;
  }

  Query m_query{Query::kFirstElement};
  int m_first = 1;
  int m_count = INT_MAX;
  int m_page = kNoPage;
  int m_pages = kNoPage;
  OptionalText m_pad;
  bool m_mayPadMore = false;
};

std::unique_ptr<Command> Make() { return std::make_unique<PageCommand>(); }

}  // namespace

const CommandEntry kPageCommand = {
    "page", "Write a document with a page of the children of one node",
    "Writes the whole document. Of the first node that PATH selects, only the children at the "
    "given\n"
    "positions are written; texts are children too and have positions. Each of them gets an\n"
    "attribute 'index' with its position, so that none may have one already. The node itself gets\n"
    "'curPage' and 'numPages' from --page and --pages. 'xmldom select --help' explains paths. The\n"
    "rows of --pad are written for all positions from the last child to the end of the page, also\n"
    "for those of pages between.\n"
    "\n"
    "Exit status: 0 when the document was written; 1 when PATH selects nothing; 2 when something\n"
    "went wrong.\n"
    "\n"
    "Example: xmldom page --from 11 --rows 10 --page 2 --pages 3 --pad '<rule/>' /config/rules "
    "config.xml",
    Make};

}  // namespace tool
