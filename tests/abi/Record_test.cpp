// Applications and debuggers read the fields of the library's objects where they lie, so their
// order is part of the interface.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <link.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <cstddef>
#include <string>
#include <vector>

#include "harness/Trees.h"

namespace {

std::size_t Align(std::size_t offset, std::size_t alignment) {
  return (offset + alignment - 1) / alignment * alignment;
}

/// Where the fields of an object lie, and where they would lie if each followed the one before.
class Record {
 public:
  Record(const void* object, std::size_t start)
      : m_object(static_cast<const char*>(object)), m_end(start) {}

  template <class Field>
  Record& Has(const Field& field) {
    m_expected.push_back(Align(m_end, alignof(Field)));
    m_found.push_back(static_cast<std::size_t>(reinterpret_cast<const char*>(&field) - m_object));
    m_end = m_expected.back() + sizeof(Field);
    return *this;
  }

  void ExpectInOrder() const { EXPECT_EQ(m_expected, m_found); }

  /// The size of an object that has these fields and no others.
  std::size_t Size() const { return Align(m_end, alignof(void*)); }

  std::size_t End() const { return m_end; }

 private:
  const char* m_object;
  std::size_t m_end;
  std::vector<std::size_t> m_expected;
  std::vector<std::size_t> m_found;
};

// Every reference-counted object begins with the pointer to its virtual table and its count.
const std::size_t kBaseEnd = sizeof(void*) + sizeof(int);

Record NodeRecord(const IXMLDOMNode& node) {
  Record record(&node, kBaseEnd);
  record.Has(node.m_pszNodeName)
      .Has(node.m_pszValue)
      .Has(node.m_pNextSibling)
      .Has(node.m_pFirstChild)
      .Has(node.m_pFirstAttribute)
      .Has(node.m_pParent)
      .Has(node.m_pOwnerDocument)
      .Has(node.m_eNodeType);
  return record;
}

TEST(Record, Results_have_the_numbers_of_the_platform) {
  EXPECT_EQ(4u, sizeof(HRESULT));
  EXPECT_EQ(0, S_OK);
  EXPECT_EQ(1, S_FALSE);
  EXPECT_EQ(0x80004005u, static_cast<unsigned int>(E_FAIL));
  EXPECT_EQ(0x80004006u, static_cast<unsigned int>(E_ARGUMENT));
  EXPECT_EQ(0x80030002u, static_cast<unsigned int>(E_FILENOTOPENED));
  for (HRESULT failure : {E_FAIL, E_ARGUMENT, E_FILENOTOPENED}) EXPECT_LT(failure, 0);
}

TEST(Record, Booleans_have_the_numbers_of_the_platform) {
  EXPECT_EQ(sizeof(short), sizeof(VARIANT_BOOL));
  EXPECT_EQ(-1, VARIANT_TRUE);
  EXPECT_EQ(0, VARIANT_FALSE);
}

TEST(Record, Node_types_have_the_numbers_of_the_interface) {
  const DOMNodeType types[] = {
      NODE_INVALID,       NODE_ELEMENT,          NODE_ATTRIBUTE,     NODE_TEXT,
      NODE_CDATA_SECTION, NODE_ENTITY_REFERENCE, NODE_ENTITY,        NODE_PROCESSING_INSTRUCTION,
      NODE_COMMENT,       NODE_DOCUMENT,         NODE_DOCUMENT_TYPE, NODE_DOCUMENT_FRAGMENT,
      NODE_NOTATION};
  int number = 0;
  for (DOMNodeType type : types) EXPECT_EQ(number++, type);
  EXPECT_EQ(13, number);
}

TEST(Record, The_base_is_a_virtual_table_and_a_count) {
  EXPECT_EQ(Align(kBaseEnd, alignof(void*)), sizeof(CRefCountedObject));
}

TEST(Record, Node_fields_lie_in_order) {
  const IXMLDOMNode node;
  NodeRecord(node).ExpectInOrder();
}

TEST(Record, A_node_has_no_other_fields) {
  const IXMLDOMNode node;
  EXPECT_EQ(NodeRecord(node).Size(), sizeof(IXMLDOMNode));
}

TEST(Record, A_node_type_takes_32_bits) { EXPECT_EQ(4u, sizeof(tagDOMNodeType)); }

TEST(Record, Document_fields_lie_in_order) {
  Document document = NewDocument();
  Record(document.Get(), NodeRecord(*document.Get()).End())
      .Has(document->m_uFlags)
      .Has(document->m_pSax)
      .Has(document->m_nIndent)
      .ExpectInOrder();
}

TEST(Record, List_fields_lie_in_order) {
  const IXMLDOMNodeList list;
  Record(&list, kBaseEnd)
      .Has(list.m_pHead)
      .Has(list.m_pTail)
      .Has(list.m_pCursor)
      .Has(list.m_nCount)
      .Has(list.m_nCursorIndex)
      .ExpectInOrder();
}

TEST(Record, A_map_adds_no_fields_to_a_list) {
  EXPECT_EQ(sizeof(IXMLDOMNodeList), sizeof(IXMLDOMNamedNodeMap));
}

TEST(Record, List_link_fields_lie_in_order_and_are_all) {
  Node node(new IXMLDOMNode);
  const IXMLDOMNodeListElt link(node);
  Record record(&link, 0);
  record.Has(link.m_pNode).Has(link.m_pNext).ExpectInOrder();
  EXPECT_EQ(record.Size(), sizeof link);
}

TEST(Record, Path_list_fields_lie_in_order) {
  const CXPathList list;
  Record(&list, 0)
      .Has(list.m_pszPrefix)
      .Has(list.m_pFirst)
      .Has(list.m_pLast)
      .Has(list.m_nCount)
      .Has(list.m_ppIndex)
      .Has(list.m_bDescendant)
      .Has(list.m_bAbsolute)
      .ExpectInOrder();
}

TEST(Record, Path_step_fields_lie_in_order_and_are_all) {
  const CStrListElt step("a", 1);
  Record record(&step, 0);
  record.Has(step.m_pszString).Has(step.m_pNext).ExpectInOrder();
  EXPECT_EQ(record.Size(), sizeof step);
}

TEST(Record, Parse_error_fields_lie_in_order_and_are_all) {
  const IXMLDOMParseError error;
  Record record(&error, kBaseEnd);
  record.Has(error.m_lErrorCode)
      .Has(error.m_lFilePos)
      .Has(error.m_lLine)
      .Has(error.m_lLinePos)
      .Has(error.m_bstrReason)
      .Has(error.m_bstrSrcText)
      .ExpectInOrder();
  EXPECT_EQ(record.Size(), sizeof error);
}

TEST(Record, Node_stack_has_one_field) {
  const CNodeStack stack;
  Record record(&stack, 0);
  record.Has(stack.m_pTop).ExpectInOrder();
  EXPECT_EQ(record.Size(), sizeof stack);
}

TEST(Record, Node_stack_element_fields_lie_in_order_and_are_all) {
  const CNodeStackElt element(nullptr, nullptr);
  Record record(&element, 0);
  record.Has(element.m_pNode).Has(element.m_pNext).ExpectInOrder();
  EXPECT_EQ(record.Size(), sizeof element);
}

// Expat's handle comes first: the builder is its own binding.
TEST(Record, Builder_fields_lie_in_order) {
  Document document = NewDocument();
  const CXMLSax builder(document);
  Record(&builder, 0)
      .Has(builder.m_p)
      .Has(builder.m_pNodeStack)
      .Has(builder.m_pDocument)
      .Has(builder.m_bFirstElement)
      .ExpectInOrder();
}

#ifdef __GLIBC__

/// The virtual table of a class that is reference counted.
class VirtualTable {
 public:
  /// `name`: the class, with the length of its name in front, as in symbols.
  explicit VirtualTable(const std::string& name)
      : m_name(name), m_table(static_cast<void**>(dlsym(RTLD_DEFAULT, ("_ZTV" + name).c_str()))) {}

  bool IsExported() const { return m_table != nullptr; }

  std::size_t CountFunctions() const {
    Dl_info info;
    void* extra = nullptr;
    if (dladdr1(m_table, &info, &extra, RTLD_DL_SYMENT) == 0 || extra == nullptr) return 0;
    const ElfW(Sym)* symbol = static_cast<const ElfW(Sym)*>(extra);
    return symbol->st_size / sizeof(void*) - kFirstFunction;
  }

  void* Function(std::size_t index) const { return m_table[kFirstFunction + index]; }

  void* Destructor(const char* form) const {
    return dlsym(RTLD_DEFAULT, ("_ZN" + m_name + form + "Ev").c_str());
  }

 private:
  static const std::size_t kFirstFunction = 2;  // behind the offset to the top and the type

  std::string m_name;
  void** m_table;
};

TEST(Record, Virtual_tables_hold_the_destructor_alone) {
  const char* const names[] = {
      "17CRefCountedObject", "11IXMLDOMNode",         "16IXMLDOMDocument2",
      "15IXMLDOMNodeList",   "19IXMLDOMNamedNodeMap", "17IXMLDOMParseError",
  };
  for (const char* name : names) {
    SCOPED_TRACE(name);
    const VirtualTable table(name);
    if (!table.IsExported()) GTEST_SKIP() << "a static build exports no tables";
    ASSERT_EQ(2u, table.CountFunctions());
    EXPECT_EQ(table.Destructor("D1"), table.Function(0));
    EXPECT_EQ(table.Destructor("D0"), table.Function(1));
  }
}

#endif

}  // namespace
