#ifndef XMLDOM_TEXT_ENTITYTRANSLATION_H
#define XMLDOM_TEXT_ENTITYTRANSLATION_H

#include <xmldom/base/Export.h>

class CMemFile;

/// Appends `pszIn` to `out`, with its references replaced by the characters that they stand for. A
/// null text counts as empty.
///
/// A reference is everything from an '&' to the next ';'. Two kinds are known: decimal references
/// to characters, such as "&#233;", and the five predefined entities, by any prefix of their names
/// and in upper or lower case. A hexadecimal reference is replaced by nothing.
///
/// Result: 1; 0 when at least one reference was unknown. Effects: an unknown reference is copied as
/// it stands and logged (type 11, severity 4). A text that holds a reference prints a debug line to
/// standard output, with everything that `out` holds, unless SetDebugEntities(false) was called.
/// Cost: linear in the text, and in the bytes that are printed and logged.
XMLDOM_API int TranslateEntities(const char* pszIn, CMemFile& out);

#endif
