#include "measure/Extremes.h"

#include <xmldom/xmldom.h>

#include <cstring>
#include <memory>
#include <stdexcept>

#include "measure/Clock.h"

namespace bench {

namespace {

std::string Repeated(const std::string& piece, std::size_t count) {
  std::string text;
  text.reserve(piece.size() * count);
  for (; count > 0; --count) text += piece;
  return text;
}

/// Does things with trees one after the other, and tells what each has taken.
class Steps {
 public:
  explicit Steps(const StepDone& done) : m_done(done) {}

  /// `work` returns whether what came of it is right.
  template <class Work>
  void Do(const std::string& step, const Work& work) const {
    const double start = ProcessorSeconds();
    const bool isRight = work();
    const double seconds = ProcessorSeconds() - start;
    if (!isRight) throw std::runtime_error(step + " does the wrong thing");
    m_done(step, seconds);
  }

 private:
  const StepDone& m_done;
};

struct ReleaseDocument {
  void operator()(IXMLDOMDocument2* document) const { document->RealRelease(); }
};
typedef std::unique_ptr<IXMLDOMDocument2, ReleaseDocument> Document;

Document NewDocument() {
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  document->m_uFlags |= IXMLDOMDocument2::FORMATTED_LAYOUT;
  return Document(document);
}

bool LoadInto(const Document& document, const std::string& xml) {
  return document->loadXML(xml.c_str()) == VARIANT_TRUE;
}

bool Selects(const Document& document, const char* path, std::size_t expected) {
  IXMLDOMNodeList* list = document->SelectNodes(path);
  const bool isRight = static_cast<std::size_t>(list->m_nCount) == expected;
  Release(list);
  return isRight;
}

bool SelectsFirst(const Document& document, const char* path, bool expected) {
  IXMLDOMNode* node = document->SelectSingleNode(path);
  const bool isFound = node != nullptr;
  Release(node);
  return isFound == expected;
}

/// Frees a text that the library handed over.
bool HasLength(BSTR text, std::size_t least) {
  const bool isRight = text != nullptr && std::strlen(text) >= least;
  SysFreeString(text);
  return isRight;
}

bool NothingIsLeft() { return IXMLDOMNode::m_iObjCount == 0 && GetNumBSTRsAllocated() == 0; }

/// `xml` has `count` elements "a", one element "b" behind or below them, and the text "x".
void ReadEverything(const std::string& xml, std::size_t count, const Steps& steps) {
  Document document = NewDocument();
  Document other = NewDocument();
  steps.Do("load", [&] { return LoadInto(document, xml); });
  if (!LoadInto(other, xml)) throw std::runtime_error("the same text does not load twice");
  steps.Do("select all", [&] { return Selects(document, "//a", count); });
  steps.Do("select all, not there", [&] { return Selects(document, "//none", 0); });
  steps.Do("select first", [&] { return SelectsFirst(document, "//b", true); });
  steps.Do("select first, not there", [&] { return SelectsFirst(document, "//none", false); });
  steps.Do("text", [&] { return HasLength(document->GetTextAsBSTR(), 1); });
  steps.Do("compare", [&] {
    CMemFile report(0);
    return CompareXMLNodes(document.get(), other.get(), report, 0) == 1;
  });
  document->m_uFlags &= ~static_cast<unsigned int>(IXMLDOMDocument2::FORMATTED_LAYOUT);
  steps.Do("write, not indented", [&] { return HasLength(document->GetXML(), xml.size() / 2); });
  other.reset();
  steps.Do("release", [&] {
    document.reset();
    return NothingIsLeft();
  });
}

void Levels(std::size_t nodes, const StepDone& done) {
  ReadEverything(Repeated("<a>", nodes) + "<b>x</b>" + Repeated("</a>", nodes), nodes, Steps(done));
}

void Siblings(std::size_t nodes, const StepDone& done) {
  ReadEverything("<list>" + Repeated("<a/>", nodes) + "<b>x</b></list>", nodes, Steps(done));
}

/// An indented text of more than 4 GiB.
void TooLongToWrite(std::size_t nodes, const StepDone& done) {
  const Steps steps(done);
  Document document = NewDocument();
  LoadInto(document, Repeated("<a>", nodes) + Repeated("</a>", nodes));
  steps.Do("write, indented: the buffer's exception", [&] {
    try {
      document->GetXML();
      return false;
    } catch (const std::length_error&) {
      return GetNumBSTRsAllocated() == 0;
    }
  });
  steps.Do("select all afterwards", [&] { return Selects(document, "//a", nodes); });
  steps.Do("release", [&] {
    document.reset();
    return NothingIsLeft();
  });
}

/// A search that fails at every level.
void NestedSearch(std::size_t nodes, const StepDone& done) {
  const Steps steps(done);
  Document document = NewDocument();
  LoadInto(document, Repeated("<a>", nodes) + Repeated("</a>", nodes));
  steps.Do("select all `//a/b`", [&] { return Selects(document, "//a/b", 0); });
  steps.Do("select first `//a/b`", [&] { return SelectsFirst(document, "//a/b", false); });
}

/// Nodes that are made first and appended then, as COM-style programs do.
void AppendedChildren(std::size_t nodes, const StepDone& done) {
  const Steps steps(done);
  Document document = NewDocument();
  LoadInto(document, "<list/>");
  IXMLDOMNode* list = document->m_pFirstChild;
  steps.Do("createNode and appendChild", [&] {
    VARIANT type;
    VariantInit(&type);
    type.vt = VT_I4;
    type.lVal = NODE_ELEMENT;
    char name[] = "item";
    for (std::size_t i = 0; i < nodes; ++i) {
      IXMLDOMNode* child = nullptr;
      document->createNode(type, name, nullptr, &child);
      if (list->appendChild(child, nullptr) != S_OK) return false;
    }
    return Selects(document, "/list/item", nodes);
  });
}

}  // namespace

const std::vector<Extreme>& AllExtremes() {
  static const std::vector<Extreme> extremes = {
      {"levels", {100000, 1000000}, Levels},
      {"siblings", {1000000, 10000000}, Siblings},
      {"too-long", {50000}, TooLongToWrite},
      {"nested-search", {100000}, NestedSearch},
      {"appended", {10000, 1000000}, AppendedChildren},
  };
  return extremes;
}

}  // namespace bench
