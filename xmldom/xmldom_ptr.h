#ifndef XMLDOM_XMLDOM_PTR_H
#define XMLDOM_XMLDOM_PTR_H

/// Smart pointers, whose use is optional: owners that release a reference or free a text by
/// themselves, and ranges for loops over nodes. They are in headers only, and <xmldom/xmldom.h>
/// does not include them. The functions are in the namespace xmldom; <xmldom/xmldom_ptr_names.h>
/// gives them short names.
///
/// The owner of a VARIANT is _variant_t (<xmldom/support/variant.h>).

#include <xmldom/dom/CountedClasses.h>
#include <xmldom/dom/NodeRanges.h>
#include <xmldom/ptr/XMLPtr.h>
#include <xmldom/ptr/XMLPtrStrings.h>

#endif
