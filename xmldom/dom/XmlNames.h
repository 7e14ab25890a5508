#ifndef XMLDOM_DOM_XMLNAMES_H
#define XMLDOM_DOM_XMLNAMES_H

#include <xmldom/base/Characters.h>
#include <xmldom/base/TextArgument.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/ptr/XMLPtr.h>

#include <cstddef>
#include <string>

namespace xmldom {

/// Whether a text is a name in XML. Cost: linear in the text; one that is not all ASCII is loaded
/// as the name of an element, because the parser knows which other letters there are.
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
  return document->loadXML(element.c_str()) == VARIANT_TRUE;
}

}  // namespace xmldom

#endif
