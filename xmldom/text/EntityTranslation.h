#ifndef XMLDOM_TEXT_ENTITYTRANSLATION_H
#define XMLDOM_TEXT_ENTITYTRANSLATION_H

#include <xmldom/base/Export.h>

class CMemFile;

/// Appends `pszIn` to `out` with its references replaced by what they stand for; null counts as
/// empty. A reference runs from '&' to the next ';'. Known are decimal character references, and
/// the five predefined entities by any prefix of their names in any case; hexadecimal references
/// yield nothing. Result: 1; 0 when a reference was unknown. It is then copied as it stands and
/// logged (type 11, severity 4). Effects: a text that holds a reference prints a debug line to
/// standard output, with the whole of `out`, unless SetDebugEntities(false) was called. Cost:
/// linear in the text, and in the printed and logged bytes.
XMLDOM_API int TranslateEntities(const char* pszIn, CMemFile& out);

#endif
