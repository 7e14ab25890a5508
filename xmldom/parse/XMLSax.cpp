// The loads of the builder: the document is emptied, the text is parsed in one call, and the event
// of a text that was refused is posted when everything else is done. Tested by
// tests/parse/XMLSax_test.cpp, XMLSaxMemory_test.cpp and XMLSaxEventsOfALoad_test.cpp.

#include <xmldom/parse/XMLSax.h>

#include <xmldom/base/LiveCount.h>
#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/parse/EntityNesting.h>
#include <xmldom/parse/FileText.h>
#include <xmldom/parse/GrowingTree.h>
#include <xmldom/support/LogException.h>

#include <climits>
#include <cstring>

int CXMLSax::m_iObjCount = 0;

CXMLSax::CXMLSax(IXMLDOMDocument2* document)
    : m_pNodeStack(nullptr),
      m_pDocument(document),
      m_bFirstElement(false),
      m_errorBeforeParse(XML_ERROR_NONE),
      m_pTree(nullptr),
      m_pEntityNesting(nullptr) {
  xmldom::AddToCount(m_iObjCount, 1);
}

CXMLSax::~CXMLSax() {
  delete m_pNodeStack;
  DestroyParser();
  xmldom::AddToCount(m_iObjCount, -1);
}

/// Empties the document and makes an empty stack.
void CXMLSax::StartLoad() {
  m_errorBeforeParse = XML_ERROR_NO_MEMORY;
  delete m_pNodeStack;
  m_pNodeStack = nullptr;
  m_bFirstElement = true;
  m_pDocument->ClearNode(false);
  m_pNodeStack = new CNodeStack;
}

bool CXMLSax::LoadXML(const char* text) {
  StartLoad();
  const char* whole = text == nullptr ? "" : text;
  const Outcome outcome = ParseWhole(whole, std::strlen(whole));
  Post(outcome);
  return outcome.parsed;
}

HRESULT CXMLSax::LoadFromFile(const char* path) {
  Outcome outcome = {false, false, 0};
  try {
    xmldom::FileText file;
    if (!file.Open(path)) return E_FILENOTOPENED;
    StartLoad();
    file.Read(INT_MAX);
    file.Close();
    const bool fits = file.Size() <= INT_MAX;
    outcome = ParseWhole(file.Text(), fits ? std::strlen(file.Text()) : file.Size());
  } catch (CLogException*) {
    throw;
  } catch (...) {
    return S_FALSE;
  }
  try {
    Post(outcome);
  } catch (CLogException*) {
    throw;
  } catch (...) {
    return S_FALSE;
  }
  return outcome.parsed ? S_OK : S_FALSE;
}

/// Parses a text in one call and completes the tree, also when the parse fails or throws. Does not
/// post the event of a text that it refuses.
CXMLSax::Outcome CXMLSax::ParseWhole(const char* text, unsigned long long length) {
  Outcome outcome = {false, false, 0};
  if (length > INT_MAX) {
    outcome.excess = length;
    // An empty text is parsed instead, so that the parser has an error to tell.
    text = "";
    length = 0;
  }
  // Nobody but the library has installed handlers on the parser of a builder that the document has
  // made. On any other, there may be some of an application, which can read the counters.
  const bool countsAtOnce = m_pDocument->m_pSax != this;
  xmldom::GrowingTree tree(m_pDocument, m_pNodeStack, countsAtOnce);
  xmldom::EntityNesting nesting;
  m_pTree = &tree;
  if (xmldom::EntityNesting::IsPossible()) m_pEntityNesting = &nesting;
  m_errorBeforeParse = XML_ERROR_NONE;
  try {
    outcome.parsed = Parse(text, static_cast<int>(length), true);
  } catch (...) {
    EndParse();
    try {
      tree.Finish();
    } catch (...) {
      // The first exception is the one that the caller gets.
    }
    throw;
  }
  EndParse();
  tree.Finish();
  outcome.nestsTooDeep = nesting.IsTooDeep();
  return outcome;
}

void CXMLSax::EndParse() {
  m_pTree = nullptr;
  m_pEntityNesting = nullptr;
}

/// Posts the event of a text that was refused. The log function may load into the document again or
/// release it, and so destroy this builder: after this call nothing of either may be used.
void CXMLSax::Post(const Outcome& outcome) {
  if (outcome.excess > 0) {
    CLogger::PostLogEventF(xmldom::kLogDom, xmldom::kSeverityError,
                           "CXMLSax - a text of %llu bytes is larger than the parser's limit of %d",
                           outcome.excess, INT_MAX);
  }
  if (outcome.nestsTooDeep) {
    CLogger::PostLogEventF(xmldom::kLogDom, xmldom::kSeverityError,
                           "CXMLSax - more than %d entities refer to each other in a chain",
                           xmldom::EntityChains::kMost);
  }
}
