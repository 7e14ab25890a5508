// Whatever copies a text throws std::bad_alloc when memory is out, and changes nothing.

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <climits>
#include <new>
#include <string>

#include "harness/CompactXml.h"
#include "harness/LongText.h"
#include "harness/Trees.h"

namespace {

struct Copying {
  const char* name;
  void (*call)(IXMLDOMNode* node, const char* text);
};

const Copying kCopying[] = {
    {"name of a new node",
     [](IXMLDOMNode*, const char* text) { Node(new IXMLDOMNode(nullptr, text, "v", NODE_TEXT)); }},
    {"value of a new node",
     [](IXMLDOMNode*, const char* text) { Node(new IXMLDOMNode(nullptr, "n", text, NODE_TEXT)); }},
    {"AddChild", [](IXMLDOMNode* node, const char* text) { Node(node->AddChild("n", text)); }},
    {"AddSibling",
     [](IXMLDOMNode* node, const char* text) { Node(node->m_pFirstChild->AddSibling("n", text)); }},
    {"AddTextChild", [](IXMLDOMNode* node, const char* text) { node->AddTextChild(text); }},
    {"AddAttribute", [](IXMLDOMNode* node, const char* text) { node->AddAttribute("n", text); }},
    {"AddAttribute, name",
     [](IXMLDOMNode* node, const char* text) { node->AddAttribute(text, ""); }},
    {"SetAttribute, new",
     [](IXMLDOMNode* node, const char* text) { node->SetAttribute("n", text); }},
    {"SetAttribute, existing",
     [](IXMLDOMNode* node, const char* text) { node->SetAttribute("x", text); }},
    {"AppendValue",
     [](IXMLDOMNode* node, const char* text) { node->m_pFirstChild->AppendValue(text, INT_MAX); }},
    {"AppendValue, new",
     [](IXMLDOMNode* node, const char* text) { node->AppendValue(text, INT_MAX); }},
    {"SetValue", [](IXMLDOMNode* node, const char* text) { node->SetValue(text); }},
    {"SysAllocString", [](IXMLDOMNode*, const char* text) { SysAllocString(text); }},
    {"SysAllocStringLen",
     [](IXMLDOMNode*, const char* text) { SysAllocStringLen(text, LongText().size()); }},
    {"_bstr_t", [](IXMLDOMNode*, const char* text) { _bstr_t copy(text); }},
};

TEST(FailureLongText, That_cannot_be_copied_is_out_of_memory_and_the_tree_unchanged) {
  if (!NoMoreMemory::IsPossible()) GTEST_SKIP() << "memory cannot be limited here";
  for (const Copying& row : kCopying) {
    SCOPED_TRACE(row.name);
    Document document = Load("<a x='1'>text<b/></a>");
    const long strings = GetNumBSTRsAllocated();
    const int nodes = IXMLDOMNode::m_iObjCount;
    EXPECT_THROW(
        {
          NoMoreMemory noMoreMemory;
          row.call(Root(document), LongText().c_str());
        },
        std::bad_alloc);
    EXPECT_EQ("<a x='1'>text<b/></a>", CompactXml(document));
    EXPECT_EQ(strings, GetNumBSTRsAllocated());
    EXPECT_EQ(nodes, IXMLDOMNode::m_iObjCount);
  }
}

TEST(FailureLongText, That_does_not_fit_a_buffer_leaves_its_contents) {
  if (!NoMoreMemory::IsPossible()) GTEST_SKIP() << "memory cannot be limited here";
  const struct {
    const char* name;
    void (*write)(CMemFile& file, const std::string& text);
  } rows[] = {
      {"Write",
       [](CMemFile& file, const std::string& text) {
         file.Write(text.data(), static_cast<unsigned int>(text.size()));
       }},
      {"WriteF",
       [](CMemFile& file, const std::string& text) {
         file.WriteF("%*s", static_cast<int>(text.size()), "x");
       }},
      {"WriteStrEntities",
       [](CMemFile& file, const std::string& text) { file.WriteStrEntities(text.c_str()); }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    CMemFile file(16);
    file.WriteStrEntities("abc");
    EXPECT_THROW(
        {
          NoMoreMemory noMoreMemory;
          row.write(file, LongText());
        },
        std::bad_alloc);
    EXPECT_STREQ("abc", file.GetAsStr());
    EXPECT_EQ(3u, file.m_uLength);
  }
}

TEST(FailureLongText, That_cannot_be_copied_leaves_a_variant_unchanged) {
  if (!NoMoreMemory::IsPossible()) GTEST_SKIP() << "memory cannot be limited here";
  VARIANT source;
  source.vt = VT_BSTR;
  source.bstrVal = SysAllocString(LongText().c_str());
  VARIANT target;
  target.vt = VT_I4;
  target.lVal = 5;
  EXPECT_THROW(
      {
        NoMoreMemory noMoreMemory;
        VariantCopy(&target, &source);
      },
      std::bad_alloc);
  EXPECT_EQ(VT_I4, target.vt);
  EXPECT_EQ(5, target.lVal);
  VariantClear(&source);
}

}  // namespace
