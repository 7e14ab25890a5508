#ifndef XMLDOM_PARSE_XMLNAMES_H
#define XMLDOM_PARSE_XMLNAMES_H

#include <xmldom/base/Characters.h>
#include <xmldom/base/TextArgument.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/parse/ParseError.h>
#include <xmldom/ptr/XMLPtr.h>

#include <cstddef>
#include <exception>
#include <new>
#include <string>

namespace xmldom {

/// IXMLDOMParseError::m_lErrorCode of a load for which the parser had no memory. The value is that
/// of XML_ERROR_NO_MEMORY, whose header an application need not have.
const long kNoMemory = 1;

/// Ends a call for which there was no memory: with std::bad_alloc, or with the program where it is
/// compiled without exceptions, since any exception of the library ends it there.
[[noreturn]] inline void FailWithoutMemory() {
#ifdef __cpp_exceptions
  throw std::bad_alloc();
#else
  std::terminate();
#endif
}

/// Whether a text is a name in XML. Effects: std::bad_alloc when memory is out. Cost: linear in the
/// text; one that is not all ASCII is loaded as the name of an element, because the parser knows
/// which other letters there are.
inline bool IsXmlName(TextArgument text) {
  bool isAscii = true;
  for (std::size_t i = 0; i < text.Size(); ++i) {
    const char c = text.Data()[i];
    if (!(i == 0 ? IsNameStartByte(c) : IsNameByte(c))) return false;
    isAscii = isAscii && static_cast<unsigned char>(c) < 0x80;
  }
  if (isAscii || text.Size() == 0) return text.Size() != 0;
  XMLPtr<IXMLDOMDocument2> document;
  Create(document.Out());
  const std::string element = "<" + std::string(text.Data(), text.Size()) + "/>";
  if (document->loadXML(element.c_str()) == VARIANT_TRUE) return true;
  XMLPtr<IXMLDOMParseError> error;
  document->get_parseError(error.Out());
  // That the parser has no memory says nothing about the name.
  if (error->m_lErrorCode == kNoMemory) FailWithoutMemory();
  return false;
}

}  // namespace xmldom

#endif
