#ifndef XMLDOM_DOM_XMLNAMES_H
#define XMLDOM_DOM_XMLNAMES_H

#include <xmldom/base/Characters.h>
#include <xmldom/base/Export.h>
#include <xmldom/base/TextArgument.h>

#include <cstddef>

namespace xmldom {

/// Whether the parser takes a text, made of bytes that names may have, for the name of an element.
/// False for one of more than INT_MAX bytes. Effects: std::bad_alloc when memory is out. Cost:
/// linear in the text, and a parser is made.
XMLDOM_API bool ParserTakesName(const char* text, std::size_t size);

/// Whether a text is a name in XML. Effects: std::bad_alloc when memory is out. Cost: linear in the
/// text; for one that is not all ASCII a parser is asked, because it knows which other letters
/// there are.
inline bool IsXmlName(TextArgument text) {
  bool isAscii = true;
  for (std::size_t i = 0; i < text.Size(); ++i) {
    const char c = text.Data()[i];
    if (!(i == 0 ? IsNameStartByte(c) : IsNameByte(c))) return false;
    isAscii = isAscii && static_cast<unsigned char>(c) < 0x80;
  }
  if (isAscii || text.Size() == 0) return text.Size() != 0;
  return xmldom::ParserTakesName(text.Data(), text.Size());
}

}  // namespace xmldom

#endif
