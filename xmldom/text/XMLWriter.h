#ifndef XMLDOM_TEXT_XMLWRITER_H
#define XMLDOM_TEXT_XMLWRITER_H

#include <xmldom/base/Export.h>

class CMemFile;

/// Appends the placeholder rows that fill up a page, numbered `nFrom` + 1 to `nTo`, one in each
/// line. A row is the template with the attribute `index` added to its first tag, before the '>' or
/// "/>" that ends it. Nothing is written for a null template, or when `nTo` is not above `nFrom`.
XMLDOM_API void Pad(CMemFile& out, const char* pszPadTemplate, int nFrom, int nTo);

/// Appends as many blanks as the absolute value of `n`, all of them or none. Effects:
/// std::length_error for INT_MIN; std::bad_alloc when memory is out.
XMLDOM_API void PrintSpaces(CMemFile& out, int n);

#endif
