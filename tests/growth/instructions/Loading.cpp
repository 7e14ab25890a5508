// Loads.

#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include "growth/instructions/Shapes.h"
#include "harness/TemporaryFile.h"
#include "harness/Trees.h"

namespace {

const char* const kByHand = "Text from a parse of your own";

void LoadCounted(const std::string& xml, short expected = VARIANT_TRUE) {
  Document document = NewDocument();
  const Counted counted;
  Require(document->loadXML(xml.c_str()) == expected);
}

std::string Name(int i) { return "e" + std::to_string(i); }

template <class Piece>
std::string Joined(int count, Piece piece) {
  std::string text;
  for (int i = 0; i < count; ++i) text += piece(i);
  return text;
}

/// A builder that takes events by hand, and its document.
struct BuilderByHand {
  BuilderByHand() : document(NewDocument()), sax(document) {
    sax.m_pNodeStack = new CNodeStack;
    sax.m_bFirstElement = 1;
  }

  Document document;
  CXMLSax sax;
};

void Parse(const std::string& xml, int size) {
  BuilderByHand builder;
  CXMLSax& sax = builder.sax;
  sax.CreateParser();
  const Counted counted;
  for (std::size_t at = 0; at < xml.size(); at += static_cast<std::size_t>(size)) {
    const int length = static_cast<int>(std::min(xml.size() - at, static_cast<std::size_t>(size)));
    Require(sax.Parse(xml.data() + at, length, false));
  }
  Require(sax.Parse("", 0, true));
}

const Growing kRows[] = {
    {"loadXML", "n records", 500,
     [](int size) { LoadCounted("<r>" + Times(size, "<a b='c'>t</a>\n") + "</r>"); }, nullptr},
    {"loadXML", "n levels", 1000, [](int size) { LoadCounted(Levels(size)); }, nullptr},
    {"loadXML", "n levels that stay open", 1000,
     [](int size) { LoadCounted(Times(size, "<a>x"), VARIANT_FALSE); }, nullptr},
    {"loadXML", "n attributes of one element", 500,
     [](int size) {
       LoadCounted("<r" + Joined(size, [](int i) { return " " + Name(i) + "='v'"; }) + "/>");
     },
     nullptr},
    {"loadXML", "n pieces of text between elements", 500,
     [](int size) { LoadCounted("<r>" + Times(size, "text\n<b/>") + "</r>"); }, nullptr},
    {"loadXML", "n lines of one text", 1000,
     [](int size) { LoadCounted("<r>" + Times(size, "line\n") + "</r>"); }, nullptr},
    {"loadXML", "n references", 1000,
     [](int size) { LoadCounted("<r>" + Times(size, "&lt;&#233;") + "</r>"); }, nullptr},
    {"loadXML", "n references to unknown entities", 500,
     [](int size) { LoadCounted("<!DOCTYPE r SYSTEM 's'><r>" + Times(size, "&none; ") + "</r>"); },
     nullptr},
    {"loadXML", "n comments, instructions and sections", 500,
     [](int size) { LoadCounted("<r>" + Times(size, "<!--c--><?i?><![CDATA[x]]>") + "</r>"); },
     nullptr},
    {"loadXML", "names and values of n bytes", 4000,
     [](int size) {
       const std::string name = "n" + Times(size, "x");
       LoadCounted("<" + name + " " + name + "='" + name + "&lt;'/>");
     },
     nullptr},
    {"loadXML", "n entities, each used once", 500,
     [](int size) {
       LoadCounted("<!DOCTYPE r [" +
                   Joined(size, [](int i) { return "<!ENTITY " + Name(i) + " 'x<b/>y'>"; }) +
                   "]><r>" + Joined(size, [](int i) { return "&" + Name(i) + ";"; }) + "</r>");
     },
     nullptr},
    {"loadXML", "n default attributes of one element", 500,
     [](int size) {
       LoadCounted("<!DOCTYPE r [<!ATTLIST r" +
                   Joined(size, [](int i) { return " " + Name(i) + " CDATA 'v'"; }) + ">]><r/>");
     },
     nullptr},
    {"loadXML", "n elements with a default attribute", 500,
     [](int size) {
       LoadCounted("<!DOCTYPE r [<!ATTLIST a b CDATA 'v'>]><r>" + Times(size, "<a/>") + "</r>");
     },
     nullptr},
    {"loadXML", "n elements with n declared attributes", 500,
     [](int size) {
       LoadCounted("<!DOCTYPE r [<!ATTLIST a" +
                   Joined(size, [](int i) { return " " + Name(i) + " CDATA #IMPLIED"; }) +
                   ">]><r>" + Times(size, "<a/>") + "</r>");
     },
     "Declared attributes"},
    {"loadXML", "a former tree of n", 1000,
     [](int size) {
       Document document = Load("<r>" + Times(size, "<a/>") + "</r>");
       const Counted counted;
       Require(document->loadXML("<b/>") == VARIANT_TRUE);
     },
     nullptr},
    {"load", "a file of n records", 500,
     [](int size) {
       TemporaryFile file("<r>" + Times(size, "<a b='c'>t</a>\n") + "</r>");
       Document document = NewDocument();
       short isLoaded = VARIANT_FALSE;
       const Counted counted;
       Require(document->load(file.Path(), &isLoaded) == S_OK && isLoaded == VARIANT_TRUE);
     },
     nullptr},
    {"CXMLSax::Parse", "n records, 16 bytes at a time", 300,
     [](int size) { Parse("<r>" + Times(size, "<a b='c'>t</a>\n") + "</r>", 16); }, nullptr},
    {"CXMLSax::Parse", "a text of n bytes, 16 at a time", 10000,
     [](int size) { Parse("<r>" + Times(size, "x") + "</r>", 16); }, kByHand},
    {"CXMLSax::OnStartElement, OnEndElement", "n levels by hand", 1000,
     [](int size) {
       BuilderByHand builder;
       CXMLSax& sax = builder.sax;
       const Counted counted;
       for (int i = 0; i < size; ++i) sax.OnStartElement("a", nullptr);
       for (int i = 0; i < size; ++i) sax.OnEndElement("a");
     },
     nullptr},
    {"CXMLSax::OnStartElement", "n attributes by hand", 300,
     [](int size) {
       std::vector<std::string> names;
       for (int i = 0; i < size; ++i) names.push_back(NameOf(i));
       std::vector<const char*> attributes;
       for (const std::string& name : names) {
         attributes.push_back(name.c_str());
         attributes.push_back("v");
       }
       attributes.push_back(nullptr);
       BuilderByHand builder;
       CXMLSax& sax = builder.sax;
       const Counted counted;
       sax.OnStartElement("a", attributes.data());
     },
     kLookups},
    {"CXMLSax::OnDefault", "one text of n pieces by hand", 500,
     [](int size) {
       BuilderByHand builder;
       CXMLSax& sax = builder.sax;
       sax.OnStartElement("a", nullptr);
       const Counted counted;
       for (int i = 0; i < size; ++i) sax.OnDefault("0123456789", 10);
     },
     kByHand},
    {"CXMLSax::OnDefault", "n pieces behind n elements by hand", 300,
     [](int size) {
       BuilderByHand builder;
       CXMLSax& sax = builder.sax;
       sax.OnStartElement("r", nullptr);
       for (int i = 0; i < size; ++i) {
         sax.OnStartElement("a", nullptr);
         sax.OnEndElement("a");
       }
       const Counted counted;
       for (int i = 0; i < size; ++i) sax.OnDefault("x", 1);
     },
     kByHand},
    {"get_parseError, ReleaseParser", "an error behind n records", 500,
     [](int size) {
       Document document = NewDocument();
       document->loadXML(("<r>" + Times(size, "<a/>\n")).c_str());
       const Counted counted;
       Ref<IXMLDOMParseError> error;
       document->get_parseError(error.Out());
       document->ReleaseParser();
     },
     nullptr},
    {"CXMLSax::LoadXML, CXMLSax::LoadFromFile", "n records", 500,
     [](int size) {
       const std::string xml = Records(size);
       TemporaryFile file(xml);
       Document document = NewDocument();
       CXMLSax sax(document);
       sax.CreateParser();
       CXMLSax other(document);
       other.CreateParser();
       const Counted counted;
       Require(sax.LoadXML(xml.c_str()));
       Require(other.LoadFromFile(file.Path()) == S_OK);
     },
     nullptr},
    {"CXMLSax::GetErrorTag, CXMLSax::GetErrorStr", "a tag of n bytes behind n lines", 20000,
     [](int size) {
       const std::string tag = "<a k='" + Times(size, "x") + "' <";
       std::vector<char> buffer(2 * tag.size());
       Document document = NewDocument();
       CXMLSax sax(document);
       sax.CreateParser();
       Require(!sax.LoadXML(("<r>" + Times(size, "\n") + tag).c_str()));
       const Counted counted;
       sax.GetErrorTag(buffer.data(), static_cast<int>(buffer.size()));
       sax.GetErrorStr(buffer.data(), static_cast<int>(buffer.size()));
     },
     nullptr},
    {"IXMLDOMParseError::get_reason, get_srcText, get_errormessage", "texts of n bytes by hand",
     20000,
     [](int size) {
       const std::string text = Times(size, "x");
       const Ref<IXMLDOMParseError> error(new IXMLDOMParseError);
       const Ref<IXMLDOMParseError> copy(new IXMLDOMParseError);
       error->m_lErrorCode = 1;
       error->m_bstrReason = SysAllocString(text.c_str());
       error->m_bstrSrcText = SysAllocString(text.c_str());
       const Counted counted;
       *copy = *error;
       XMLBstr reason, tag, message;
       Require(copy->get_reason(reason.Out()) == S_OK);
       Require(copy->get_srcText(tag.Out()) == S_OK);
       Require(copy->get_errormessage(message.Out()) == S_OK);
     },
     nullptr},
    {"CNodeStack::Push, CNodeStack::Pop", "n elements", 1000,
     [](int size) {
       const Document document = NewDocument();
       const Counted counted;
       CNodeStack stack;
       for (int i = 0; i < 2 * size; ++i) stack.Push(document);
       for (int i = 0; i < size; ++i) stack.Pop();
     },
     nullptr},
    {"xmldom::LoadFile, xmldom::OneLine", "an error in a tag of n bytes behind n records", 500,
     [](int size) {
       TemporaryFile file("<r>" + Times(size, "<a b='c'>t</a>\n") + "<a k='" + Times(size, "x") +
                          "' <");
       const Counted counted;
       const xmldom::LoadResult result = xmldom::LoadFile(file.Path());
       Require(result.error.line == size + 1);
       Require(!xmldom::OneLine(result.error).empty());
     },
     nullptr},
    {"xmldom::LoadText, xmldom::LoadFile", "n records", 500,
     [](int size) {
       const std::string xml = "<r>" + Times(size, "<a b='c'>t</a>\n") + "</r>";
       TemporaryFile file(xml);
       const Counted counted;
       Require(bool(xmldom::LoadText(xml)));
       Require(bool(xmldom::LoadFile(file.Path())));
     },
     nullptr},
    {"xmldom::LoadText", "a NUL byte behind n lines", 1000,
     [](int size) {
       const std::string xml = Times(size, "<a/>\n") + std::string(1, '\0');
       const Counted counted;
       Require(xmldom::LoadText(xml).error.line == size + 1);
     },
     nullptr},
};

}  // namespace

std::vector<Growing> LoadingRows() {
  return std::vector<Growing>(std::begin(kRows), std::end(kRows));
}
