#ifndef XMLDOM_TEXT_XMLWRITER_H
#define XMLDOM_TEXT_XMLWRITER_H

#include <xmldom/base/Export.h>

class CMemFile;

/// Appends placeholder rows numbered `nFrom` + 1 to `nTo`, one a line: the template with an index
/// attribute in its first tag, before '>' or "/>". A null template writes nothing.
XMLDOM_API void Pad(CMemFile& out, const char* pszPadTemplate, int nFrom, int nTo);

/// Appends |n| blanks, all or none. Effects: std::length_error for INT_MIN.
XMLDOM_API void PrintSpaces(CMemFile& out, int n);

#endif
