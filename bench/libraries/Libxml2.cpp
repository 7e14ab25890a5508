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

class Libxml2Tree : public Tree {
 public:
  explicit Libxml2Tree(xmlDocPtr document) : m_document(document), m_queries(nullptr) {}

  ~Libxml2Tree() override {
    if (m_queries != nullptr) xmlXPathFreeContext(m_queries);
    xmlFreeDoc(m_document);
  }

  std::size_t Write() override {
    xmlChar* text = nullptr;
    int length = 0;
    xmlDocDumpFormatMemory(m_document, &text, &length, 1);
    return TakeText(text);
  }

  std::size_t Text() override { return TakeText(xmlNodeGetContent(Root())); }

  std::size_t SelectAll(const char* path) override {
    PrepareQueries();
    xmlXPathObjectPtr result = xmlXPathEvalExpression(Chars(path), m_queries);
    const int count = xmlXPathNodeSetGetLength(result->nodesetval);
    xmlXPathFreeObject(result);
    return static_cast<std::size_t>(count);
  }

  std::size_t SelectFirst(const char* path) override {
    // The form that lets the library stop at the first node.
    return SelectAll(("(" + std::string(path) + ")[1]").c_str()) != 0;
  }

  void Append(const char* name, std::size_t count) override {
    xmlNodePtr root = Root();
    for (; count > 0; --count) xmlAddChild(root, NewElement(name));
  }

  void InsertFirst(const char* name, std::size_t count) override {
    xmlNodePtr root = Root();
    for (; count > 0; --count) {
      if (root->children == nullptr) {
        xmlAddChild(root, NewElement(name));
      } else {
        xmlAddPrevSibling(root->children, NewElement(name));
      }
    }
  }

  void RemoveFirst(std::size_t count) override {
    xmlNodePtr root = Root();
    for (; count > 0; --count) {
      xmlNodePtr child = root->children;
      xmlUnlinkNode(child);
      xmlFreeNode(child);
    }
  }

 private:
  xmlNodePtr Root() const { return xmlDocGetRootElement(m_document); }

  xmlNodePtr NewElement(const char* name) const {
    return xmlNewDocNode(m_document, nullptr, Chars(name), nullptr);
  }

  /// A context serves all queries of a document, so that its own cost does not count.
  void PrepareQueries() {
    if (m_queries == nullptr) m_queries = xmlXPathNewContext(m_document);
  }

  xmlDocPtr m_document;
  xmlXPathContextPtr m_queries;
};

TreePointer TreeOf(xmlDocPtr document) {
  return TreePointer(document == nullptr ? nullptr : new Libxml2Tree(document));
}

TreePointer Load(const std::string& text) {
  const int length = static_cast<int>(text.size());
  return TreeOf(xmlReadMemory(text.data(), length, nullptr, nullptr, kOptions));
}

TreePointer LoadFile(const std::string& path) {
  return TreeOf(xmlReadFile(path.c_str(), nullptr, kOptions));
}

}  // namespace

Library Libxml2() { return {"libxml2", "libxml2 " LIBXML_DOTTED_VERSION, true, Load, LoadFile}; }

}  // namespace bench
