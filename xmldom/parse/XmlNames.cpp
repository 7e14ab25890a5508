// What only the parser knows of names. Tested by tests/dom/XmlNames_test.cpp.

#include <xmldom/dom/XmlNames.h>

#include <expat.h>

#include <climits>
#include <cstddef>
#include <new>

bool xmldom::ParserTakesName(const char* text, std::size_t size) {
  if (size > INT_MAX) return false;
  const XML_Parser parser = XML_ParserCreate(nullptr);
  if (parser == nullptr) throw std::bad_alloc();
  const bool isName = XML_Parse(parser, "<", 1, XML_FALSE) == XML_STATUS_OK &&
                      XML_Parse(parser, text, static_cast<int>(size), XML_FALSE) == XML_STATUS_OK &&
                      XML_Parse(parser, "/>", 2, XML_TRUE) == XML_STATUS_OK;
  const XML_Error error = XML_GetErrorCode(parser);
  XML_ParserFree(parser);
  // That the parser has no memory says nothing about the name.
  if (error == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
  return isName;
}
