#ifndef XMLDOM_XMLDOM_PTR_H
#define XMLDOM_XMLDOM_PTR_H

/// Smart pointers, whose use is optional: owners that release a reference or free a text by
/// themselves, and ranges for loops over nodes. They are in headers only, and <xmldom/xmldom.h>
/// does not include them. The functions are in the namespace xmldom; <xmldom/xmldom_ptr_names.h>
/// gives them short names.
///
/// The namespace xmldom also has the calls of everyday use, with owners and std::string as results:
/// LoadFile, LoadText, SelectOne, Select, CheckPath, Text, Attribute, Xml, SetText, SetAttribute,
/// AddElement, Save. Text that they store is escaped.
///
/// The owner of a VARIANT is _variant_t (<xmldom/support/variant.h>).

#include <xmldom/base/Characters.h>
#include <xmldom/dom/CountedClasses.h>
#include <xmldom/dom/NodeRanges.h>
#include <xmldom/parse/DocumentLoading.h>
#include <xmldom/ptr/XMLPtr.h>
#include <xmldom/ptr/XMLPtrStrings.h>
#include <xmldom/query/PathCheck.h>
#include <xmldom/query/Selecting.h>
#include <xmldom/text/DocumentSaving.h>
#include <xmldom/text/ElementAdding.h>
#include <xmldom/text/Escaping.h>
#include <xmldom/text/NodeTexts.h>
#include <xmldom/text/NodeXml.h>
#include <xmldom/text/TextStoring.h>

#endif
