#include <malloc.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include "Library.h"

namespace bench {

namespace {

/// Whether a text that the library handed over has any characters; frees it.
std::size_t HasText(BSTR text) { return *xmldom::AdoptBstr(text).c_str() != '\0'; }

/// A block of the heap, its header included.
std::size_t BlockBytes(void* block) {
  return block == nullptr ? 0 : malloc_usable_size(block) + sizeof(std::size_t);
}

std::size_t ChainBytes(IXMLDOMNode* node) {
  std::size_t bytes = 0;
  for (; node != nullptr; node = node->m_pNextSibling) {
    bytes += BlockBytes(node) + BlockBytes(node->m_pszNodeName) + BlockBytes(node->m_pszValue) +
             ChainBytes(node->m_pFirstAttribute) + ChainBytes(node->m_pFirstChild);
  }
  return bytes;
}

class XmldomTree : public Tree {
 public:
  XmldomTree() { Create(m_document.Out()); }

  IXMLDOMDocument2* Document() { return m_document.Get(); }

  std::size_t Write() override { return HasText(m_document->GetXML()); }

  std::size_t Text() override { return HasText(m_document->GetTextAsBSTR()); }

  std::size_t SelectAll(const char* path) override {
    return static_cast<std::size_t>(xmldom::Adopt(m_document->SelectNodes(path))->m_nCount);
  }

  std::size_t SelectFirst(const char* path) override {
    return xmldom::Adopt(m_document->SelectSingleNode(path)) ? 1 : 0;
  }

  std::size_t Equals(Tree& other) override {
    CMemFile report(0);
    IXMLDOMDocument2* document = static_cast<XmldomTree&>(other).Document();
    return CompareXMLNodes(Document(), document, report, 0) != 0;
  }

  void Append(const char* name, std::size_t count) override {
    for (; count > 0; --count) xmldom::Adopt(Root()->AddChild(name, nullptr));
  }

  void InsertFirst(const char* name, std::size_t count) override {
    IXMLDOMNode* root = Root();
    for (; count > 0; --count) {
      IXMLDOMNode* child = new IXMLDOMNode(Document(), name, nullptr, NODE_ELEMENT);
      if (root->m_pFirstChild == nullptr) {
        root->appendChild(child, nullptr);
      } else {
        root->insertBefore(child, root->m_pFirstChild, nullptr);
      }
    }
  }

  void RemoveFirst(std::size_t count) override {
    IXMLDOMNode* root = Root();
    XMLPtr<IXMLDOMNode> child;
    for (; count > 0; --count) root->removeChild(root->m_pFirstChild, child.Out());
  }

  std::size_t RecordBytes() const override { return ChainBytes(Root()); }

 private:
  IXMLDOMNode* Root() const { return m_document->m_pFirstChild; }

  XMLPtr<IXMLDOMDocument2> m_document;
};

TreePointer Load(const std::string& text) {
  std::unique_ptr<XmldomTree> tree(new XmldomTree);
  if (tree->Document()->loadXML(text.c_str()) != VARIANT_TRUE) return nullptr;
  return tree;
}

TreePointer LoadFile(const std::string& path) {
  std::unique_ptr<XmldomTree> tree(new XmldomTree);
  short loaded = VARIANT_FALSE;
  tree->Document()->load(const_cast<char*>(path.c_str()), &loaded);
  if (loaded != VARIANT_TRUE) return nullptr;
  return tree;
}

}  // namespace

Library Xmldom() { return {"xmldom", "xmldom " XMLDOM_BENCH_VERSION, false, Load, LoadFile}; }

}  // namespace bench
