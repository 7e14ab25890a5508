// What an application sees of the DOM library on another platform's support layer. Fails by exit
// status, and says which lines did.

#include <other/layer.h>
#include <xmldom/xmldom.h>

#include <cstdio>
#include <memory>
#include <string>

namespace {

int l_failures = 0;

void Expect(const std::string& expected, const std::string& found, int line) {
  if (expected == found) return;
  std::printf("line %d: expected\n%s\nfound\n%s\n", line, expected.c_str(), found.c_str());
  ++l_failures;
}

#define EXPECT(expected, found) Expect(expected, found, __LINE__)

std::string Number(long number) { return std::to_string(number); }

std::string Xml(IXMLDOMNode* node) { return static_cast<char*>(node->Getxml()); }

/// What a call throws, as the platform's exceptions tell it.
template <class Call>
std::string Thrown(Call call) {
  try {
    call();
  } catch (CLogException* thrown) {
    return std::unique_ptr<CLogException>(thrown)->text;
  }
  return "nothing";
}

void Load(IXMLDOMDocument2* document) {
  EXPECT(Number(VARIANT_FALSE), Number(document->loadXML("<a><b></a>")));
  IXMLDOMParseError* error = nullptr;
  EXPECT(Number(S_OK), Number(document->get_parseError(&error)));
  BSTR reason = nullptr;
  EXPECT(Number(S_OK), Number(error->get_reason(&reason)));
  EXPECT("mismatched tag", reason);
  SysFreeString(reason);
  Release(error);

  EXPECT(Number(VARIANT_TRUE),
         Number(document->loadXML("<a x='1 &amp; &quot;2&quot;' y=''><b>one</b><b>two</b></a>")));
  EXPECT(
      "<a x='1 &amp; &quot;2&quot;' y=''>\n"
      "  <b>one</b>\n"
      "  <b>two</b>\n"
      "</a>\n",
      Xml(document));
}

void Query(IXMLDOMDocument2* document) {
  IXMLDOMNodeList* list = document->SelectNodes(_bstr_t("//b"));
  EXPECT("2", Number(list->m_nCount));
  Release(list);

  IXMLDOMNode* node = document->SelectSingleNode("/a[b='two']/b");
  EXPECT("2", Number(node->GetRefCount()));
  VARIANT value;
  VariantInit(&value);
  EXPECT(Number(S_OK), Number(node->get_nodeTypedValue(&value)));
  EXPECT("one", value.bstrVal);
  EXPECT(Number(S_OK), Number(node->get_nodeValue(&value)));
  EXPECT(Number(VT_EMPTY), Number(value.vt));
  VariantClear(&value);
  Release(node);

  value.vt = VT_I4;
  value.lVal = NODE_COMMENT;
  char name[] = "note";
  EXPECT(Number(S_OK), Number(document->createNode(value, name, nullptr, &node)));
  BSTR type = node->GetNodeTypeString();
  EXPECT("comment", type);
  SysFreeString(type);
  Release(node);
}

void Edit(IXMLDOMDocument2* document) {
  EXPECT("1", Number(document->ReplaceChildAtXPath("/a/b", "<c z='>'/>")));
  EXPECT("1", Number(document->InsertBeforeXPath("/a/b", "<d>&lt;</d>")));
  EXPECT("1", Number(document->RemoveChildAtXPath("/a/b")));
  EXPECT(
      "<a x='1 &amp; &quot;2&quot;' y=''>\n"
      "  <c z='&gt;'/>\n"
      "  <d>&lt;</d>\n"
      "</a>\n",
      Xml(document));

  SetDispAddr(true);
  IXMLDOMNode* node = document->SelectSingleNode("/a/c");
  EXPECT("true", Xml(node).find("refcount='2'") != std::string::npos ? "true" : Xml(node));
  Release(node);
  SetDispAddr(false);
}

void Log(IXMLDOMDocument2* document) {
  TakeJournal();
  EXPECT("0", Number(document->AppendChildAtXPath(nullptr, "")));
  EXPECT("0", Number(document->ReplaceChildAtXPath("/none", "")));
  EXPECT("0", Number(document->ReplaceChildAtXPath("/a/c", "<")));
  document->SetValue("v");
  SetDebugXPATH(false);
  SetDebugEntities(true);
  char none[1];
  EXPECT("null", document->GetStringValue(none, 0) == nullptr ? "null" : none);
  EXPECT(
      "11/3 IXMLDOMNode::AppendChildAtXPath called with NULL pcszXPath|\n"
      "18/3 IXMLDOMNode::ReplaceChildAtXPath - can't resolve xpath /none|\n"
      "18/3 IXMLDOMNode::ReplaceChildAtXPath - can't load replacement into DOM|<\n"
      "18/3 IXMLDOMNode::SetValue - SetValue called on non-leaf node|a node\n"
      "18/7 XPathDebug has been disabled, but DOM was built without DBG_XPATH|\n"
      "18/7 EntityDebug has been enabled|\n"
      "18/4 IXMLDOMNode::GetStringValue - buffer size overrun, string trunked, passed size 0, "
      "required size 2|\n"
      "18/4 IXMLDOMNode::GetStringValue - Overrun was initiated from here:|no call stack\n",
      TakeJournal());

  CXML::CheckLeaks("there");
  const std::string leaks = TakeJournal();
  EXPECT("26/7 CXML::CheckLeaks - there|", leaks.substr(0, leaks.find('\n')));
}

void Throw(IXMLDOMDocument2* document) {
  IXMLDOMNode* node = document->SelectSingleNode("/a");
  IXMLDOMNode* attribute = node->GetAttribute("y");
  IXMLDOMNode* previous = nullptr;
  const std::string met = "IXMLDOMNode::get_previousSibling/Call failed, no previous sibling/";
  EXPECT(met, Thrown([&] { attribute->get_previousSibling(&previous); }));

  // The edit logs what it meets, and passes it on.
  TakeJournal();
  EXPECT(met, Thrown([&] { attribute->ReplaceChildAtXPath("/", "<e/>"); }));
  EXPECT("25/1 IXMLDOMNode::ReplaceChildAtXPath|" + met + "\n", TakeJournal());

  attribute->m_eNodeType = static_cast<tagDOMNodeType>(13);
  EXPECT("IXMLDOMNode::GetNodeTypeString/Call failed, invalid node type 13/",
         Thrown([&] { attribute->GetNodeTypeString(); }));
  Release(attribute);
  Release(node);
}

}  // namespace

int main() {
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  Load(document);
  Query(document);
  Edit(document);
  Log(document);
  Throw(document);
  Release(document);
  EXPECT("0", Number(CXML::CheckLeaks("the end")));
  EXPECT("0", Number(IXMLDOMNode::m_iObjCount));
  EXPECT("26/7 CXML::CheckLeaks - the end|\nCheckLeaks - the end:\n\n", TakeJournal());
  return l_failures == 0 ? 0 : 1;
}
