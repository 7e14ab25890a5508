#ifndef XMLDOM_XMLDOM_PTR_NAMES_H
#define XMLDOM_XMLDOM_PTR_NAMES_H

/// The functions of <xmldom/xmldom_ptr.h> under their short names, for sources that have no other
/// use for these: `Children(node)` is xmldom::Children(node). Do not include this in a header,
/// because whoever includes that would get the names too.

#include <xmldom/xmldom_ptr.h>

using xmldom::AddElement;
using xmldom::Adopt;
using xmldom::AdoptBstr;
using xmldom::AdoptHeapStr;
using xmldom::Attribute;
using xmldom::Attributes;
using xmldom::CheckPath;
using xmldom::Children;
using xmldom::HasAttribute;
using xmldom::Listed;
using xmldom::LoadFile;
using xmldom::LoadText;
using xmldom::OneLine;
using xmldom::Save;
using xmldom::Select;
using xmldom::Selected;
using xmldom::SelectOne;
using xmldom::SetAttribute;
using xmldom::SetText;
using xmldom::Share;
using xmldom::Text;
using xmldom::Xml;

#endif
