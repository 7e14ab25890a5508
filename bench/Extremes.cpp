#include "Extremes.h"

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <cstring>
#include <stdexcept>
#include <string>

#include "Child.h"
#include "Operation.h"
#include "harness/SmallStack.h"

namespace bench {

namespace {

std::string Repeated(const std::string& piece, std::size_t count) {
  std::string text;
  text.reserve(piece.size() * count);
  for (; count > 0; --count) text += piece;
  return text;
}

/// A tree, and the lines for what is done with it.
class Extreme {
 public:
  Extreme(const char* name, std::size_t nodes, std::ostream& results)
      : m_name(name), m_nodes(nodes), m_results(results) {
    Create(m_document.Out());
    m_document->m_uFlags |= IXMLDOMDocument2::FORMATTED_LAYOUT;
  }

  IXMLDOMDocument2* Document() const { return m_document.Get(); }

  /// `work` returns whether what came of it is right.
  template <class Work>
  void Do(const std::string& step, const Work& work) const {
    const double start = ProcessorSeconds();
    const bool isRight = work();
    const double seconds = ProcessorSeconds() - start;
    if (!isRight) throw std::runtime_error(step + " does the wrong thing");
    m_results << m_name << '\t' << m_nodes << '\t' << step << '\t' << seconds * 1e9 << std::endl;
  }

  bool Loads(const std::string& xml) const {
    return m_document->loadXML(xml.c_str()) == VARIANT_TRUE;
  }

  bool Selects(const char* path, std::size_t expected) const {
    const XMLPtr<IXMLDOMNodeList> list = xmldom::Adopt(m_document->SelectNodes(path));
    return static_cast<std::size_t>(list->m_nCount) == expected;
  }

  bool SelectsFirst(const char* path) const {
    return static_cast<bool>(xmldom::Adopt(m_document->SelectSingleNode(path)));
  }

  void DoRelease() {
    Do("release", [this] {
      m_document.Reset();
      return IXMLDOMNode::m_iObjCount == 0 && GetNumBSTRsAllocated() == 0;
    });
  }

 private:
  const char* m_name;
  const std::size_t m_nodes;
  std::ostream& m_results;
  XMLPtr<IXMLDOMDocument2> m_document;
};

/// `xml` has `count` elements "a", one element "b" behind or below them, and the text "x".
void ReadEverything(Extreme& tree, const std::string& xml, std::size_t count) {
  XMLPtr<IXMLDOMDocument2> other;
  Create(other.Out());
  other->m_uFlags |= IXMLDOMDocument2::FORMATTED_LAYOUT;
  tree.Do("load", [&] { return tree.Loads(xml); });
  if (other->loadXML(xml.c_str()) != VARIANT_TRUE) throw std::runtime_error("no second load");
  tree.Do("select all", [&] { return tree.Selects("//a", count); });
  tree.Do("select all, not there", [&] { return tree.Selects("//none", 0); });
  tree.Do("select first", [&] { return tree.SelectsFirst("//b"); });
  tree.Do("select first, not there", [&] { return !tree.SelectsFirst("//none"); });
  tree.Do("text", [&] {
    return std::strcmp(xmldom::AdoptBstr(tree.Document()->GetTextAsBSTR()).c_str(), "x") == 0;
  });
  tree.Do("compare", [&] {
    CMemFile report(0);
    return CompareXMLNodes(tree.Document(), other.Get(), report, 0) == 1;
  });
  tree.Document()->m_uFlags &= ~static_cast<unsigned int>(IXMLDOMDocument2::FORMATTED_LAYOUT);
  tree.Do("write, not indented", [&] {
    return std::strlen(xmldom::AdoptBstr(tree.Document()->GetXML()).c_str()) >= xml.size() / 2;
  });
  other.Reset();
  tree.DoRelease();
}

void Levels(Extreme& tree, std::size_t nodes) {
  ReadEverything(tree, Repeated("<a>", nodes) + "<b>x</b>" + Repeated("</a>", nodes), nodes);
}

void Siblings(Extreme& tree, std::size_t nodes) {
  ReadEverything(tree, "<list>" + Repeated("<a/>", nodes) + "<b>x</b></list>", nodes);
}

/// The indented text would have more than 4 GiB.
void TooLongToWrite(Extreme& tree, std::size_t nodes) {
  tree.Loads(Repeated("<a>", nodes) + Repeated("</a>", nodes));
  tree.Do("write, indented: the buffer's exception", [&] {
    try {
      tree.Document()->GetXML();
      return false;
    } catch (const std::length_error&) {
      return GetNumBSTRsAllocated() == 0;
    }
  });
  tree.Do("select all afterwards", [&] { return tree.Selects("//a", nodes); });
  tree.DoRelease();
}

/// A search that fails at every level.
void NestedSearch(Extreme& tree, std::size_t nodes) {
  tree.Loads(Repeated("<a>", nodes) + Repeated("</a>", nodes));
  tree.Do("select all `//a/b`", [&] { return tree.Selects("//a/b", 0); });
  tree.Do("select first `//a/b`", [&] { return !tree.SelectsFirst("//a/b"); });
}

/// Nodes that are made first and appended then, as COM-style programs do.
void AppendedChildren(Extreme& tree, std::size_t nodes) {
  tree.Loads("<list/>");
  IXMLDOMNode* list = tree.Document()->m_pFirstChild;
  tree.Do("createNode and appendChild", [&] {
    VARIANT type;
    VariantInit(&type);
    type.vt = VT_I4;
    type.lVal = NODE_ELEMENT;
    char name[] = "item";
    for (std::size_t i = 0; i < nodes; ++i) {
      IXMLDOMNode* child = nullptr;
      tree.Document()->createNode(type, name, nullptr, &child);
      if (list->appendChild(child, nullptr) != S_OK) return false;
    }
    return tree.Selects("/list/item", nodes);
  });
}

struct Kind {
  const char* name;
  std::size_t nodes;
  void (*run)(Extreme& tree, std::size_t nodes);
};

const Kind kKinds[] = {
    {"levels", 100000, Levels},
    {"levels", 1000000, Levels},
    {"siblings", 1000000, Siblings},
    {"siblings", 10000000, Siblings},
    {"too-long", 50000, TooLongToWrite},
    {"nested-search", 100000, NestedSearch},
    {"appended", 10000, AppendedChildren},
    {"appended", 1000000, AppendedChildren},
};

}  // namespace

void MeasureExtremes(std::ostream& results) {
  for (const Kind& kind : kKinds) {
    // Nobody catches what the thread throws, so that it ends the process.
    const auto run = [&] {
      Extreme tree(kind.name, kind.nodes, results);
      kind.run(tree, kind.nodes);
    };
    try {
      ResultOfChild([&] { return OnSmallStack(run); });
    } catch (const std::runtime_error&) {
      results << kind.name << '\t' << kind.nodes << "\tNOT DONE\t0" << std::endl;
    }
  }
}

}  // namespace bench
