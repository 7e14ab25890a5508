#ifndef XMLDOM_DOM_DOMNODETYPE_H
#define XMLDOM_DOM_DOMNODETYPE_H

/// The type of a node. The library itself makes elements, attributes, texts and documents only;
/// IXMLDOMDocument2::createNode stores any number that it is given. The value that is meant below
/// is the one that get_nodeValue hands out.
typedef enum tagDOMNodeType : int {
  NODE_INVALID = 0,                 ///< A node made without arguments; has no value.
  NODE_ELEMENT = 1,                 ///< Has no value; get_nodeTypedValue gives its text.
  NODE_ATTRIBUTE = 2,               ///< Has a value.
  NODE_TEXT = 3,                    ///< Has a value; its name is "#Text".
  NODE_CDATA_SECTION = 4,           ///< Has no value.
  NODE_ENTITY_REFERENCE = 5,        ///< Has no value.
  NODE_ENTITY = 6,                  ///< Has no value.
  NODE_PROCESSING_INSTRUCTION = 7,  ///< Has a value.
  NODE_COMMENT = 8,                 ///< Has a value.
  NODE_DOCUMENT = 9,                ///< An IXMLDOMDocument2; has no value.
  NODE_DOCUMENT_TYPE = 10,          ///< Has no value.
  NODE_DOCUMENT_FRAGMENT = 11,      ///< Has no value.
  NODE_NOTATION = 12                ///< Has no value.
} DOMNodeType;

#endif
