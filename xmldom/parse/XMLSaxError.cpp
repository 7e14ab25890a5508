// What the builder tells of an error: the code, the tag at the parser's position, and both in one
// text. The tag is cut out of the input that Expat keeps. Tested by
// tests/parse/XMLSaxError_test.cpp.

#include <xmldom/parse/LoadReport.h>
#include <xmldom/parse/XMLSax.h>

#include <cstdio>
#include <cstring>

namespace {

/// Finds the tag around a position: from the last '<' at or before it, or else from the first byte,
/// to the next '>', or else to the end. `context` has `size` bytes. Out: where the tag begins.
/// Result: its length.
int FindTag(const char* context, int offset, int size, int* begin) {
  int start = offset < size ? offset : size;
  if (start > 0 && (start == size || context[start] != '<')) {
    do {
      --start;
    } while (start > 0 && context[start] != '<');
  }
  *begin = start;
  for (int i = start + 1; i < size; ++i) {
    if (context[i] == '>') return i + 1 - start;
    if (context[i] == '\0') return i - start;
  }
  return size - start;
}

}  // namespace

/// The code of the error that ended the load.
XML_Error CXMLSax::LoadError() { return m_error == XML_ERROR_NONE ? GetErrorCode() : m_error; }

/// Fills a report, whose tag is stored in `tag`, a buffer of kReportedTagSize bytes.
void CXMLSax::FillReport(xmldom::LoadReport* report, char* tag) {
  report->errorCode = LoadError();
  report->filePos = GetCurrentByteCount();
  report->line = GetCurrentLineNumber();
  report->linePos = GetCurrentColumnNumber();
  report->tag = GetErrorTag(tag, xmldom::kReportedTagSize);
}

char* CXMLSax::GetErrorTag(char* buffer, int size) {
  if (buffer == nullptr || size < 1) return buffer;
  int offset = 0;
  int contextSize = 0;
  const char* context = GetInputContext(&offset, &contextSize);
  // For an empty text, some versions of Expat have no input and some an empty one.
  if (context == nullptr || contextSize == 0) {
    std::strncpy(buffer, "undefined", static_cast<std::size_t>(size));
    buffer[size - 1] = '\0';
    return buffer;
  }
  int begin = 0;
  int length = FindTag(context, offset, contextSize, &begin);
  if (length >= size) length = size - 1;
  std::memcpy(buffer, context + begin, static_cast<std::size_t>(length));
  buffer[length] = '\0';
  return buffer;
}

char* CXMLSax::GetErrorStr(char* buffer, int size) {
  if (buffer == nullptr || size < 1) return buffer;
  char tag[256];
  const char* reason = XML_ErrorString(LoadError());
  std::snprintf(buffer, static_cast<std::size_t>(size),
                "Parsing error \"%s\", tag \"%s\", line %d, column %d",
                reason == nullptr ? "(null)" : reason, GetErrorTag(tag, sizeof tag),
                GetCurrentLineNumber(), GetCurrentColumnNumber());
  return buffer;
}
