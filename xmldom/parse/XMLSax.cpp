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
      m_pTree(nullptr),
      m_pEntityNesting(nullptr) {
  ++m_iObjCount;
}

CXMLSax::~CXMLSax() {
  delete m_pNodeStack;
  DestroyParser();
  --m_iObjCount;
}

void CXMLSax::StartLoad() {
  delete m_pNodeStack;
  m_pNodeStack = nullptr;
  m_bFirstElement = true;
  m_pDocument->ClearNode(false);
  m_pNodeStack = new CNodeStack;
}

bool CXMLSax::LoadXML(const char* text) {
  StartLoad();
  const char* whole = text == nullptr ? "" : text;
  return ParseWhole(whole, std::strlen(whole));
}

HRESULT CXMLSax::LoadFromFile(const char* path) {
  xmldom::FileText file;
  if (!file.Open(path)) return E_FILENOTOPENED;
  try {
    StartLoad();
    file.Read(INT_MAX);
    file.Close();
    const bool fits = file.Size() <= INT_MAX;
    return ParseWhole(file.Text(), fits ? std::strlen(file.Text()) : file.Size()) ? S_OK : S_FALSE;
  } catch (CLogException*) {
    throw;
  } catch (...) {
    return S_FALSE;
  }
}

bool CXMLSax::ParseWhole(const char* text, unsigned long long length) {
  if (length > INT_MAX) {
    CLogger::PostLogEventF(xmldom::kLogDom, xmldom::kSeverityError,
                           "CXMLSax - a text of %llu bytes is larger than the parser's limit of %d",
                           length, INT_MAX);
    // An empty text gives the parser an error to tell.
    text = "";
    length = 0;
  }
  xmldom::GrowingTree tree(m_pDocument, m_pNodeStack);
  xmldom::EntityNesting nesting;
  m_pTree = &tree;
  m_pEntityNesting = &nesting;
  bool parsed = false;
  try {
    parsed = Parse(text, static_cast<int>(length), true);
  } catch (...) {
    EndParse();
    try {
      tree.Finish();
    } catch (...) {
      // What was thrown first is what the caller has to know.
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
