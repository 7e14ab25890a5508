#ifndef XMLDOM_DOM_NODETYPES_H
#define XMLDOM_DOM_NODETYPES_H

#include <xmldom/dom/XMLNode.h>

namespace xmldom {

/// What the nodes of a type have as a value.
enum ValueKind {
  VALUE_NONE,
  VALUE_STORED,  // the stored value
  VALUE_TEXT,    // the text below, and that only as a typed value
  VALUE_UNKNOWN  // there is no such type
};

ValueKind ValueKindOf(tagDOMNodeType type);

}  // namespace xmldom

#endif
