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

class PugixmlTree : public TwoWayTree<PugixmlTree> {
 public:
  bool Load(const std::string& text) {
    return FindRoot(m_document.load_buffer(text.data(), text.size()));
  }

  bool LoadFile(const std::string& path) { return FindRoot(m_document.load_file(path.c_str())); }

  std::size_t Write() override {
    StringWriter writer;
    m_document.save(writer, "  ");
    return writer.HasText();
  }

  std::size_t Text() override {
    std::string out;
    CollectText(m_root, out);
    return !out.empty();
  }

  std::size_t SelectAll(const char* path) override { return m_document.select_nodes(path).size(); }

  std::size_t SelectFirst(const char* path) override {
    return m_document.select_node(path) ? 1 : 0;
  }

  void AppendOne() { m_root.append_child(kChildName); }
  void InsertOne() { m_root.prepend_child(kChildName); }
  void RemoveOne() { m_root.remove_child(m_root.first_child()); }
  void InsertOneBeforeLast() { m_root.insert_child_before(kChildName, m_root.last_child()); }
  void RemoveLastOne() { m_root.remove_child(m_root.last_child()); }

  std::size_t CountBackwards() override {
    std::size_t count = 0;
    for (pugi::xml_node child = m_root.last_child(); child; child = child.previous_sibling()) {
      ++count;
    }
    return count;
  }

 private:
  bool FindRoot(bool isLoaded) {
    m_root = m_document.document_element();
    return isLoaded;
  }

  pugi::xml_document m_document;
  pugi::xml_node m_root;
};

}  // namespace

Library Pugixml() {
  const std::string version = "pugixml " + std::to_string(PUGIXML_VERSION / 1000) + "." +
                              std::to_string(PUGIXML_VERSION % 1000 / 10);
  return MakeLibrary<PugixmlTree>("pugixml", version);
}

}  // namespace bench
