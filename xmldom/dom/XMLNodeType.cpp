// The names of node types, and which kind of value the nodes of each type have: one table, indexed
// by the type. Tested by tests/dom/XMLNodeType_test.cpp.

#include <xmldom/dom/NodeContent.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/support/LogException.h>

namespace {

using xmldom::VALUE_NONE;
using xmldom::VALUE_STORED;
using xmldom::VALUE_TEXT;
using xmldom::ValueKind;

struct TypeEntry {
  const char* name;
  ValueKind value;
};

// The entries stand in the order of tagDOMNodeType.
const TypeEntry l_aTypes[] = {
    {"invalid", VALUE_NONE},
    {"element", VALUE_TEXT},
    {"attribute", VALUE_STORED},
    {"text", VALUE_STORED},
    {"cdatasection", VALUE_NONE},  // Deliberate: unlike a text, it yields no value.
    {"entityreference", VALUE_NONE},
    {"entity", VALUE_NONE},
    {"processinginstruction", VALUE_STORED},
    {"comment", VALUE_STORED},
    {"document", VALUE_NONE},
    {"documenttype", VALUE_NONE},
    {"documentfragment", VALUE_NONE},
    {"notation", VALUE_NONE},
};

/// The entry of a type, which may be any number; null when there is none.
const TypeEntry* EntryOf(tagDOMNodeType type) {
  const unsigned int index = static_cast<unsigned int>(type);
  return index < sizeof l_aTypes / sizeof l_aTypes[0] ? &l_aTypes[index] : nullptr;
}

}  // namespace

xmldom::ValueKind xmldom::ValueKindOf(tagDOMNodeType type) {
  const TypeEntry* entry = EntryOf(type);
  return entry == nullptr ? VALUE_UNKNOWN : entry->value;
}

BSTR IXMLDOMNode::GetNodeTypeString() const {
  const TypeEntry* entry = EntryOf(m_eNodeType);
  if (entry == nullptr) {
    throw ExceptionF("IXMLDOMNode::GetNodeTypeString", "Call failed, invalid node type %d",
                     static_cast<int>(m_eNodeType));
  }
  return SysAllocString(entry->name);
}

HRESULT IXMLDOMNode::get_nodeTypeString(BSTR* pType) {
  if (pType == nullptr) return E_ARGUMENT;
  *pType = GetNodeTypeString();
  return S_OK;
}
