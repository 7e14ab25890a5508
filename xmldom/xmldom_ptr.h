#ifndef XMLDOM_XMLDOM_PTR_H
#define XMLDOM_XMLDOM_PTR_H

/// Smart pointers for those who want them: references and texts that release themselves, and loops
/// over nodes. It is all in headers and no part of <xmldom/xmldom.h>.
///
/// A VARIANT has _variant_t (<xmldom/support/variant.h>) already.

#include <xmldom/dom/NodeRanges.h>
#include <xmldom/ptr/XMLPtr.h>
#include <xmldom/ptr/XMLPtrStrings.h>

#endif
