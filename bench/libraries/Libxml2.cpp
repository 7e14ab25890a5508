#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlversion.h>
#include <libxml/xpath.h>

#include "Library.h"

namespace bench {

namespace {

// Blank runs are dropped and entities expanded, as the others do; nothing comes from outside.
const int kOptions = XML_PARSE_NOBLANKS | XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_HUGE |
                     XML_PARSE_NOERROR | XML_PARSE_NOWARNING;

const xmlChar* Chars(const char* text) { return reinterpret_cast<const xmlChar*>(text); }

/// Whether a text that the library handed over has any characters; frees it.
bool TakeText(xmlChar* text) {
  const bool any = text != nullptr && *text != 0;
  xmlFree(text);
  return any;
}

class Libxml2Tree : public TwoWayTree<Libxml2Tree> {
 public:
  ~Libxml2Tree() override {
    if (m_queries != nullptr) xmlXPathFreeContext(m_queries);
    xmlFreeDoc(m_document);
  }

  bool Load(const std::string& text) {
    const int length = static_cast<int>(text.size());
    m_document = xmlReadMemory(text.data(), length, nullptr, nullptr, kOptions);
    return m_document != nullptr;
  }

  bool LoadFile(const std::string& path) {
    m_document = xmlReadFile(path.c_str(), nullptr, kOptions);
    return m_document != nullptr;
  }

  std::size_t Write() override {
    xmlChar* text = nullptr;
    int length = 0;
    xmlDocDumpFormatMemory(m_document, &text, &length, 1);
    return TakeText(text);
  }

  std::size_t Text() override { return TakeText(xmlNodeGetContent(Root())); }

  std::size_t SelectAll(const char* path) override {
    // A name without a prefix selects nothing in a default namespace.
    if (Root()->ns != nullptr) return kNotOffered;
    // One context serves all queries of a document, so that its own cost does not count.
    if (m_queries == nullptr) m_queries = xmlXPathNewContext(m_document);
    xmlXPathObjectPtr result = xmlXPathEvalExpression(Chars(path), m_queries);
    const int count = xmlXPathNodeSetGetLength(result->nodesetval);
    xmlXPathFreeObject(result);
    return static_cast<std::size_t>(count);
  }

  std::size_t SelectFirst(const char* path) override {
    // The form that lets the library stop at the first node.
    return SelectAll(("(" + std::string(path) + ")[1]").c_str());
  }

  void AppendOne() { xmlAddChild(Root(), NewElement()); }

  void InsertOne() {
    xmlNodePtr first = Root()->children;
    if (first == nullptr) {
      AppendOne();
    } else {
      xmlAddPrevSibling(first, NewElement());
    }
  }

  void RemoveOne() { Remove(Root()->children); }

  void InsertOneBeforeLast() { xmlAddPrevSibling(xmlGetLastChild(Root()), NewElement()); }
  void RemoveLastOne() { Remove(xmlGetLastChild(Root())); }

  std::size_t CountBackwards() override {
    std::size_t count = 0;
    for (xmlNodePtr child = xmlGetLastChild(Root()); child != nullptr; child = child->prev) ++count;
    return count;
  }

 private:
  xmlNodePtr Root() const { return xmlDocGetRootElement(m_document); }

  static void Remove(xmlNodePtr child) {
    xmlUnlinkNode(child);
    xmlFreeNode(child);
  }

  xmlNodePtr NewElement() const {
    return xmlNewDocNode(m_document, nullptr, Chars(kChildName), nullptr);
  }

  xmlDocPtr m_document = nullptr;
  xmlXPathContextPtr m_queries = nullptr;
};

}  // namespace

Library Libxml2() { return MakeLibrary<Libxml2Tree>("libxml2", "libxml2 " LIBXML_DOTTED_VERSION); }

}  // namespace bench
