#include <tinyxml2.h>

#include "Library.h"

namespace bench {

namespace {

class Tinyxml2Tree : public Tree {
 public:
  tinyxml2::XMLDocument& Document() { return m_document; }

  std::size_t Write() override {
    tinyxml2::XMLPrinter printer;
    m_document.Print(&printer);
    return printer.CStrSize() > 1;
  }

  void Append(const char* name, std::size_t count) override {
    tinyxml2::XMLElement* root = m_document.RootElement();
    for (; count > 0; --count) root->InsertEndChild(m_document.NewElement(name));
  }

  void InsertFirst(const char* name, std::size_t count) override {
    tinyxml2::XMLElement* root = m_document.RootElement();
    for (; count > 0; --count) root->InsertFirstChild(m_document.NewElement(name));
  }

  void RemoveFirst(std::size_t count) override {
    tinyxml2::XMLElement* root = m_document.RootElement();
    for (; count > 0; --count) root->DeleteChild(root->FirstChild());
  }

 private:
  tinyxml2::XMLDocument m_document;
};

TreePointer Load(const std::string& text) {
  std::unique_ptr<Tinyxml2Tree> tree(new Tinyxml2Tree);
  const tinyxml2::XMLError error = tree->Document().Parse(text.data(), text.size());
  if (error != tinyxml2::XML_SUCCESS) return nullptr;
  return tree;
}

TreePointer LoadFile(const std::string& path) {
  std::unique_ptr<Tinyxml2Tree> tree(new Tinyxml2Tree);
  if (tree->Document().LoadFile(path.c_str()) != tinyxml2::XML_SUCCESS) return nullptr;
  return tree;
}

}  // namespace

Library Tinyxml2() {
  const std::string version = "tinyxml2 " + std::to_string(TINYXML2_MAJOR_VERSION) + "." +
                              std::to_string(TINYXML2_MINOR_VERSION) + "." +
                              std::to_string(TINYXML2_PATCH_VERSION);
  return {"tinyxml2", version, false, Load, LoadFile};
}

}  // namespace bench
