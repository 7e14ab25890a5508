#include <pugixml.hpp>

#include "Library.h"

namespace bench {

namespace {

class StringWriter : public pugi::xml_writer {
 public:
  void write(const void* data, std::size_t size) override {
    m_text.append(static_cast<const char*>(data), size);
  }

  bool HasText() const { return !m_text.empty(); }

 private:
  std::string m_text;
};

/// The library has no such operation for more than one node; this is the shortest walk.
void CollectText(const pugi::xml_node& node, std::string& out) {
  for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
    if (child.type() == pugi::node_element) {
      CollectText(child, out);
    } else {
      if (!out.empty()) out += ' ';
      out += child.value();
    }
  }
}

class PugixmlTree : public Tree {
 public:
  pugi::xml_document& Document() { return m_document; }

  std::size_t Write() override {
    StringWriter writer;
    m_document.save(writer, "  ");
    return writer.HasText();
  }

  std::size_t Text() override {
    std::string out;
    CollectText(m_document.document_element(), out);
    return !out.empty();
  }

  std::size_t SelectAll(const char* path) override { return m_document.select_nodes(path).size(); }

  std::size_t SelectFirst(const char* path) override {
    return m_document.select_node(path) ? 1 : 0;
  }

  void Append(const char* name, std::size_t count) override {
    pugi::xml_node root = m_document.document_element();
    for (; count > 0; --count) root.append_child(name);
  }

  void InsertFirst(const char* name, std::size_t count) override {
    pugi::xml_node root = m_document.document_element();
    for (; count > 0; --count) root.prepend_child(name);
  }

  void RemoveFirst(std::size_t count) override {
    pugi::xml_node root = m_document.document_element();
    for (; count > 0; --count) root.remove_child(root.first_child());
  }

 private:
  pugi::xml_document m_document;
};

TreePointer Load(const std::string& text) {
  std::unique_ptr<PugixmlTree> tree(new PugixmlTree);
  if (!tree->Document().load_buffer(text.data(), text.size())) return nullptr;
  return tree;
}

TreePointer LoadFile(const std::string& path) {
  std::unique_ptr<PugixmlTree> tree(new PugixmlTree);
  if (!tree->Document().load_file(path.c_str())) return nullptr;
  return tree;
}

}  // namespace

Library Pugixml() {
  const std::string version = "pugixml " + std::to_string(PUGIXML_VERSION / 1000) + "." +
                              std::to_string(PUGIXML_VERSION % 1000 / 10);
  return {"pugixml", version, false, Load, LoadFile};
}

}  // namespace bench
