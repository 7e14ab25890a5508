// The loads of the builder: the document is emptied, the text is parsed in one call, and the event
// of a text that was refused is posted when everything else is done. A file is read straight into
// Expat's buffer, which saves a copy of the text. Tested by tests/parse/XMLSax_test.cpp,
// XMLSaxMemory_test.cpp, XMLSaxEventsOfALoad_test.cpp and XMLDocumentLoadFile_test.cpp.

#include <xmldom/parse/XMLSax.h>

#include <xmldom/base/LiveCount.h>
#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/parse/EntityNesting.h>
#include <xmldom/parse/FileText.h>
#include <xmldom/parse/GrowingTree.h>
#include <xmldom/support/LogException.h>

#include <cerrno>
#include <climits>
#include <cstring>

namespace {

/// Whether Expat parses in a buffer of its own. One that was built without input context parses in
/// the caller's memory instead, and so makes no copy.
bool ParsesInBuffer() {
  const XML_Feature* feature = XML_GetFeatureList();
  while (feature->feature != XML_FEATURE_END && feature->feature != XML_FEATURE_CONTEXT_BYTES) {
    ++feature;
  }
  return feature->feature != XML_FEATURE_END && feature->value > 0;
}

}  // namespace

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
  xmldom::AddToCount(m_iObjCount, 1);
}

CXMLSax::~CXMLSax() {
  delete m_pNodeStack;
  DestroyParser();
  xmldom::AddToCount(m_iObjCount, -1);
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
  const bool parsed = ParseWhole(whole, std::strlen(whole), false);
  PostRefusal();
  return parsed;
}

HRESULT CXMLSax::LoadFromFile(const char* path) {
  HRESULT result = S_FALSE;
  int error = ENOMEM;
  try {
    result = ReadAndParse(path, &error);
  } catch (CLogException*) {
    throw;
  } catch (...) {
    // The result is that of a file that does not parse.
  }
  errno = error;
  return result;
}

/// Does what LoadFromFile does. Out: why the file could not be read, or 0; left alone when an
/// exception or a lack of memory ended the load.
HRESULT CXMLSax::ReadAndParse(const char* path, int* error) {
  bool parsed = false;
  {
    xmldom::FileText file;
    if (!file.Open(path)) {
      *error = file.Error();
      return E_FILENOTOPENED;
    }
    StartLoad();
    char* buffer = nullptr;
    const unsigned long long size = file.Size();
    if (m_p != nullptr && size > 0 && size <= INT_MAX && ParsesInBuffer()) {
      buffer = static_cast<char*>(XML_GetBuffer(m_p, static_cast<int>(size)));
      if (buffer == nullptr) {
        m_error = XML_ERROR_NONE;  // the parser has an error to tell
        return S_FALSE;
      }
    }
    file.Read(INT_MAX, buffer);
    *error = file.Error();
    file.Close();
    const bool fits = file.Size() <= INT_MAX;
    parsed = ParseWhole(file.Text(), fits ? file.Length() : file.Size(), file.Text() == buffer);
  }
  PostRefusal();
  return parsed ? S_OK : S_FALSE;
}

/// Parses a text in one call and completes the tree, also when the parse fails or throws. Does not
/// post the event of a text that it refuses. `isInBuffer`: the text stands in Expat's buffer.
/// Result: whether the text parsed.
bool CXMLSax::ParseWhole(const char* text, unsigned long long length, bool isInBuffer) {
  if (length > INT_MAX) {
    Refuse("CXMLSax - a text of %llu bytes is larger than the parser's limit of 2147483647",
           length);
    // An empty text is parsed instead, so that the parser has an error to tell.
    length = 0;
  }
  if (length == 0) {
    text = "";
    isInBuffer = false;
  }
  // Handlers that an application has installed on the parser may read the counters. A builder that
  // the document has made has none; the header says that one put into m_pSax counts like it.
  const bool countsAtOnce = m_pDocument->m_pSax != this;
  xmldom::GrowingTree tree(this, countsAtOnce);
  xmldom::EntityNesting nesting;
  m_pTree = &tree;
  if (xmldom::EntityNesting::IsPossible()) m_pEntityNesting = &nesting;
  m_textSize = length;
  m_error = XML_ERROR_NONE;
  bool parsed = false;
  try {
    const int size = static_cast<int>(length);
    parsed = isInBuffer ? ParsePiece(nullptr, size, true, true) : Parse(text, size, true);
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
