#include <malloc.h>
#include <xmldom/support/Logger.h>
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

class XmldomTree : public TwoWayTree<XmldomTree> {
 public:
  XmldomTree() { Create(m_document.Out()); }

  bool Load(const std::string& text) { return m_document->loadXML(text.c_str()) == VARIANT_TRUE; }

  bool LoadFile(const std::string& path) {
    short loaded = VARIANT_FALSE;
    m_document->load(const_cast<char*>(path.c_str()), &loaded);
    m_document->ReleaseParser();
    return loaded == VARIANT_TRUE;
  }

  std::size_t Write() override { return HasText(m_document->GetXML()); }

  std::size_t WriteCompact() override {
    const unsigned int flags = m_document->m_uFlags;
    m_document->m_uFlags = flags & ~static_cast<unsigned int>(IXMLDOMDocument2::FORMATTED_LAYOUT);
    const std::size_t result = Write();
    m_document->m_uFlags = flags;
    return result;
  }

  std::size_t Text() override { return HasText(m_document->GetTextAsBSTR()); }

  std::size_t SelectAll(const char* path) override {
    return static_cast<std::size_t>(xmldom::Adopt(m_document->SelectNodes(path))->m_nCount);
  }

  std::size_t SelectFirst(const char* path) override {
    return xmldom::Adopt(m_document->SelectSingleNode(path)) ? 1 : 0;
  }

  std::size_t Equals(Tree& other) override {
    CMemFile report(0);
    IXMLDOMDocument2* document = static_cast<XmldomTree&>(other).m_document.Get();
    return CompareXMLNodes(m_document.Get(), document, report, 0) != 0;
  }

  void AppendOne() { xmldom::Adopt(Root()->AddChild(kChildName, nullptr)); }

  void InsertOne() {
    IXMLDOMNode* child = NewChild();
    if (Root()->m_pFirstChild == nullptr) {
      Root()->appendChild(child, nullptr);
    } else {
      Root()->insertBefore(child, Root()->m_pFirstChild, nullptr);
    }
  }

  void RemoveOne() {
    XMLPtr<IXMLDOMNode> child;
    Root()->removeChild(Root()->m_pFirstChild, child.Out());
  }

  void InsertOneBeforeLast() {
    XMLPtr<IXMLDOMNode> last;
    Root()->get_lastChild(last.Out());
    Root()->insertBefore(NewChild(), last.Get(), nullptr);
  }

  void RemoveLastOne() {
    XMLPtr<IXMLDOMNode> last;
    XMLPtr<IXMLDOMNode> child;
    Root()->get_lastChild(last.Out());
    Root()->removeChild(last.Get(), child.Out());
  }

  std::size_t CountBackwards() override {
    std::size_t count = 0;
    XMLPtr<IXMLDOMNode> child;
    for (Root()->get_lastChild(child.Out()); child; child->get_previousSibling(child.Out())) {
      ++count;
    }
    return count;
  }

  std::size_t RecordBytes() const override { return ChainBytes(Root()); }

 private:
  IXMLDOMNode* Root() const { return m_document->m_pFirstChild; }

  IXMLDOMNode* NewChild() const {
    return new IXMLDOMNode(m_document.Get(), kChildName, nullptr, NODE_ELEMENT);
  }

  XMLPtr<IXMLDOMDocument2> m_document;
};

}  // namespace

Library Xmldom() {
  // Reading texts with references would print debug lines, and this setting is a log event.
  CLogger::SetSink([](const CLogEvent&, void*) {}, nullptr);
  SetDebugEntities(false);
  return MakeLibrary<XmldomTree>("xmldom", "xmldom " XMLDOM_BENCH_VERSION);
}

}  // namespace bench
