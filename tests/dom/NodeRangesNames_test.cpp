#include <gtest/gtest.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <string>

// An application's own functions, with the parameters that those of <xmldom/xmldom_ptr.h> have. The
// arguments are of global classes, so that every unqualified call in a header would find them too.

const char* Adopt(IXMLDOMNode* /*node*/) { return "own Adopt"; }
const char* Share(IXMLDOMNode* /*node*/) { return "own Share"; }
const char* Children(const IXMLDOMNode* /*node*/) { return "own Children"; }
const char* Attributes(const IXMLDOMNode* /*node*/) { return "own Attributes"; }
const char* Listed(IXMLDOMNodeList* /*list*/) { return "own Listed"; }
const char* Selected(IXMLDOMNode* /*node*/, const char* /*path*/) { return "own Selected"; }
template <class T>
const char* Adopt(T* /*object*/) {
  return "own Adopt of all";
}
template <class T>
const char* Share(T* /*object*/) {
  return "own Share of all";
}
template <class T>
const char* Children(const XMLPtr<T>& /*node*/) {
  return "own Children of pointers";
}
template <class T>
const char* Attributes(const XMLPtr<T>& /*node*/) {
  return "own Attributes of pointers";
}
const char* Listed(const XMLPtr<IXMLDOMNodeList>& /*list*/) { return "own Listed of pointers"; }
template <class T>
const char* Selected(const XMLPtr<T>& /*node*/, const char* /*path*/) {
  return "own Selected of pointers";
}

namespace {

template <class Range>
std::string Names(Range&& range) {
  std::string names;
  for (XMLPtr<IXMLDOMNode> node : range) names += std::string(node->m_pszNodeName) + " ";
  return names;
}

TEST(NodeRangesNames, leave_an_application_its_own) {
  XMLPtr<IXMLDOMDocument2> document;
  Create(document.Out());
  document->loadXML("<a x='1'><b/><c/></a>");
  const XMLPtr<IXMLDOMNode> root = xmldom::Adopt(document->GetfirstChild());
  XMLPtr<IXMLDOMNodeList> list;
  root->get_childNodes(list.Out());

  EXPECT_EQ("b c ", Names(xmldom::Children(root)));
  EXPECT_EQ("x ", Names(xmldom::Attributes(root)));
  EXPECT_EQ("b c ", Names(xmldom::Listed(list)));
  EXPECT_EQ("b ", Names(xmldom::Selected(root, "b")));
  EXPECT_EQ(3, xmldom::Share(root.Get())->GetRefCount());

  EXPECT_STREQ("own Adopt", Adopt(root.Get()));
  EXPECT_STREQ("own Adopt of all", Adopt(document.Get()));
  EXPECT_STREQ("own Share", Share(root.Get()));
  EXPECT_STREQ("own Share of all", Share(list.Get()));
  EXPECT_STREQ("own Children", Children(root.Get()));
  EXPECT_STREQ("own Children of pointers", Children(root));
  EXPECT_STREQ("own Attributes", Attributes(root.Get()));
  EXPECT_STREQ("own Attributes of pointers", Attributes(document));
  EXPECT_STREQ("own Listed", Listed(list.Get()));
  EXPECT_STREQ("own Listed of pointers", Listed(list));
  EXPECT_STREQ("own Selected", Selected(root.Get(), "b"));
  EXPECT_STREQ("own Selected of pointers", Selected(document, "b"));
}

}  // namespace
