// The loads of the builder: the document is emptied, the text is parsed in one call, and the event
// of a text that was refused is posted when everything else is done. Tested by
// tests/parse/XMLSax_test.cpp, XMLSaxMemory_test.cpp and XMLSaxEventsOfALoad_test.cpp.

#include <xmldom/parse/XMLSax.h>

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
      m_error(XML_ERROR_NONE),
      m_pTree(nullptr),
      m_pEntityNesting(nullptr),
      m_refusal(nullptr),
      m_refusalNumber(0),
      m_textSize(0),
      m_defaultsSize(0) {
  ++m_iObjCount;
}

CXMLSax::~CXMLSax() {
  delete m_pNodeStack;
  DestroyParser();
  --m_iObjCount;
}

/// Empties the document and makes an empty stack.
void CXMLSax::StartLoad() {
  m_error = XML_ERROR_NO_MEMORY;
  m_refusal = nullptr;
  m_defaultsSize = 0;
  delete m_pNodeStack;
  m_pNodeStack = nullptr;
  m_bFirstElement = true;
  m_pDocument->ClearNode(false);
  m_pNodeStack = new CNodeStack;
}

bool CXMLSax::LoadXML(const char* text) {
  StartLoad();
  const char* whole = text == nullptr ? "" : text;
  const bool parsed = ParseWhole(whole, std::strlen(whole));
  PostRefusal();
  return parsed;
}

HRESULT CXMLSax::LoadFromFile(const char* path) {
  bool parsed = false;
  try {
    {
      xmldom::FileText file;
      if (!file.Open(path)) return E_FILENOTOPENED;
      StartLoad();
      file.Read(INT_MAX);
      file.Close();
      const bool fits = file.Size() <= INT_MAX;
      parsed = ParseWhole(file.Text(), fits ? std::strlen(file.Text()) : file.Size());
    }
    PostRefusal();
  } catch (CLogException*) {
    throw;
  } catch (...) {
    return S_FALSE;
  }
  return parsed ? S_OK : S_FALSE;
}

/// Parses a text in one call and completes the tree, also when the parse fails or throws. Does not
/// post the event of a text that it refuses. Result: whether the text parsed.
bool CXMLSax::ParseWhole(const char* text, unsigned long long length) {
  if (length > INT_MAX) {
    Refuse("CXMLSax - a text of %llu bytes is larger than the parser's limit of 2147483647",
           length);
    // An empty text is parsed instead, so that the parser has an error to tell.
    text = "";
    length = 0;
  }
  xmldom::GrowingTree tree(this);
  xmldom::EntityNesting nesting;
  m_pTree = &tree;
  if (xmldom::EntityNesting::IsPossible()) m_pEntityNesting = &nesting;
  m_textSize = length;
  m_error = XML_ERROR_NONE;
  bool parsed = false;
  try {
    parsed = Parse(text, static_cast<int>(length), true);
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
  return parsed;
}

void CXMLSax::EndParse() {
  m_pTree = nullptr;
  m_pEntityNesting = nullptr;
}

/// Notes the event of a text that is refused, for the end of the load.
void CXMLSax::Refuse(const char* format, unsigned long long number) {
  m_refusal = format;
  m_refusalNumber = number;
}

/// Posts the event of a text that was refused. The log function may load into the document again or
/// release it, and so destroy this builder: after this call nothing of either may be used.
void CXMLSax::PostRefusal() const {
  if (m_refusal == nullptr) return;
  CLogger::PostLogEventF(xmldom::kLogDom, xmldom::kSeverityError, m_refusal, m_refusalNumber);
}
