#include <malloc.h>
#include <xmldom/xmldom.h>

#include "libraries/Libraries.h"

namespace bench {

namespace {

/// Whether a text that the library handed over has any characters; frees it.
bool TakeText(BSTR text) {
  const bool any = text != nullptr && *text != '\0';
  SysFreeString(text);
  return any;
}

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
  XmldomTree() : m_document(nullptr) { Create(&m_document); }
  ~XmldomTree() override { Release(m_document); }

  IXMLDOMDocument2* Document() { return m_document; }

  bool Write() override { return TakeText(m_document->GetXML()); }

  bool Text() override { return TakeText(m_document->GetTextAsBSTR()); }

  std::size_t SelectAll(const char* path) override {
    IXMLDOMNodeList* list = m_document->SelectNodes(path);
    const int count = list->m_nCount;
    Release(list);
    return static_cast<std::size_t>(count);
  }

  bool SelectFirst(const char* path) override {
    IXMLDOMNode* node = m_document->SelectSingleNode(path);
    const bool found = node != nullptr;
    Release(node);
    return found;
  }

  bool Equals(Tree& other) override {
    CMemFile report(0);
    IXMLDOMDocument2* document = static_cast<XmldomTree&>(other).m_document;
    return CompareXMLNodes(m_document, document, report, 0) != 0;
  }

  void Append(const char* name, std::size_t count) override {
    IXMLDOMNode* root = m_document->m_pFirstChild;
    for (; count > 0; --count) {
      IXMLDOMNode* child = root->AddChild(name, nullptr);
      Release(child);
    }
  }

  void InsertFirst(const char* name, std::size_t count) override {
    IXMLDOMNode* root = m_document->m_pFirstChild;
    for (; count > 0; --count) {
      IXMLDOMNode* child = new IXMLDOMNode(m_document, name, nullptr, NODE_ELEMENT);
      IXMLDOMNode* first = root->m_pFirstChild;
      if (first == nullptr) {
        root->appendChild(child, nullptr);
      } else {
        root->insertBefore(child, first, nullptr);
      }
    }
  }

  void RemoveFirst(std::size_t count) override {
    IXMLDOMNode* root = m_document->m_pFirstChild;
    for (; count > 0; --count) {
      IXMLDOMNode* child = nullptr;
      root->removeChild(root->m_pFirstChild, &child);
      Release(child);
    }
  }

  std::size_t RecordBytes() const override { return ChainBytes(m_document->m_pFirstChild); }

 private:
  IXMLDOMDocument2* m_document;
};

class Xmldom : public Library {
 public:
  std::string Name() const override { return "xmldom"; }
  std::string Version() const override { return "xmldom " XMLDOM_BENCH_XMLDOM_VERSION; }
  bool Offers(Operation) const override { return true; }

  std::unique_ptr<Tree> Load(const std::string& text) const override {
    std::unique_ptr<XmldomTree> tree(new XmldomTree);
    if (tree->Document()->loadXML(text.c_str()) != VARIANT_TRUE) return nullptr;
    return tree;
  }

  std::unique_ptr<Tree> LoadFile(const std::string& path) const override {
    std::unique_ptr<XmldomTree> tree(new XmldomTree);
    short loaded = VARIANT_FALSE;
    tree->Document()->load(const_cast<char*>(path.c_str()), &loaded);
    if (loaded != VARIANT_TRUE) return nullptr;
    return tree;
  }
};

}  // namespace

std::unique_ptr<Library> MakeXmldom() { return std::unique_ptr<Library>(new Xmldom); }

}  // namespace bench
