// The layout of written nodes: the walk that looks for a node without owner. Tested by
// tests/text/XMLWriter_test.cpp and tests/text/XMLWriterPaging_test.cpp.

#include <xmldom/text/NodeLayout.h>

#include <xmldom/dom/TreeWalk.h>

namespace {

/// Ends its walk at the first node without owner.
class MissingOwnerSearch : public xmldom::PreOrderVisitor {
 public:
  MissingOwnerSearch() : m_found(false) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t) {
    m_found = node->m_pOwnerDocument == nullptr;
    return node->m_pFirstChild;
  }

  bool IsDone() const { return m_found; }

 private:
  bool m_found;
};

}  // namespace

bool xmldom::MissesOwner(IXMLDOMNode* node) {
  MissingOwnerSearch search;
  WalkTree<SideTrail>(node, search);
  return search.IsDone();
}
