#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlversion.h>
#include <libxml/xpath.h>

#include "libraries/Libraries.h"

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

  bool Write() override {
    xmlChar* text = nullptr;
    int length = 0;
    xmlDocDumpFormatMemory(m_document, &text, &length, 1);
    return TakeText(text);
  }

  bool Text() override { return TakeText(xmlNodeGetContent(Root())); }

  std::size_t SelectAll(const char* path) override {
    PrepareQueries();
    xmlXPathObjectPtr result = xmlXPathEvalExpression(Chars(path), m_queries);
    const int count = xmlXPathNodeSetGetLength(result->nodesetval);
    xmlXPathFreeObject(result);
    return static_cast<std::size_t>(count);
  }

  bool SelectFirst(const char* path) override {
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

class Libxml2 : public Library {
 public:
  std::string Name() const override { return "libxml2"; }
  std::string Version() const override { return "libxml2 " LIBXML_DOTTED_VERSION; }
  bool Offers(Operation operation) const override { return operation != Operation::kCompare; }
  bool ResolvesNamespaces() const override { return true; }

  std::unique_ptr<Tree> Load(const std::string& text) const override {
    const int length = static_cast<int>(text.size());
    return TreeOf(xmlReadMemory(text.data(), length, nullptr, nullptr, kOptions));
  }

  std::unique_ptr<Tree> LoadFile(const std::string& path) const override {
    return TreeOf(xmlReadFile(path.c_str(), nullptr, kOptions));
  }

 private:
  static std::unique_ptr<Tree> TreeOf(xmlDocPtr document) {
    return std::unique_ptr<Tree>(document == nullptr ? nullptr : new Libxml2Tree(document));
  }
};

}  // namespace

std::unique_ptr<Library> MakeLibxml2() { return std::unique_ptr<Library>(new Libxml2); }

}  // namespace bench
