#ifndef XMLDOM_TESTS_HARNESS_PARENTOFMANY_H
#define XMLDOM_TESTS_HARNESS_PARENTOFMANY_H

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/CompactXml.h"
#include "harness/Trees.h"

/// An element p that already has kMany children x, because the ends of long chains alone are
/// cached. A case adds others and looks at these.
class ParentOfMany : public testing::Test {
 protected:
  ParentOfMany() : m_document(Load("<p/>")), m_parent(Root(m_document)) {
    for (int i = 0; i < kMany; ++i) Add("x");
  }

  void Add(const char* name) { Node(m_parent->AddChild(name, nullptr)); }

  /// The child at a position behind the first ones.
  IXMLDOMNode* Child(int position) { return At(m_parent, {kMany + position}); }

  /// The XML of a node, without the many first children.
  static std::string Xml(IXMLDOMNode* node) {
    std::string xml = CompactXml(node);
    const std::string first = Repeat("<x/>", kMany);
    const std::size_t place = xml.find(first);
    if (place != std::string::npos) xml.erase(place, first.size());
    return xml;
  }

  static const int kMany = 20;

  Document m_document;
  IXMLDOMNode* m_parent;
};

#endif
