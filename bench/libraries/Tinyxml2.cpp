#include <tinyxml2.h>

#include <cstring>

#include "libraries/Libraries.h"
#include "parsing/SplitPath.h"

namespace bench {

namespace {

/// The library has no paths; this is the shortest walk for "//name[@attribute='value']".
std::size_t CountMatches(const tinyxml2::XMLElement* element, const SplitPath& path) {
  std::size_t count = 0;
  for (; element != nullptr; element = element->NextSiblingElement()) {
    if (path.names[0] == element->Name()) {
      const char* value = element->Attribute(path.attribute.c_str());
      if (value != nullptr && path.value == value) ++count;
    }
    count += CountMatches(element->FirstChildElement(), path);
  }
  return count;
}

class Tinyxml2Tree : public Tree {
 public:
  tinyxml2::XMLDocument& Document() { return m_document; }

  bool Write() override {
    tinyxml2::XMLPrinter printer;
    m_document.Print(&printer);
    return printer.CStrSize() > 1;
  }

  std::size_t SelectAll(const char* path) override {
    return CountMatches(m_document.RootElement(), SplitPath(path));
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

class Tinyxml2 : public Library {
 public:
  std::string Name() const override { return "tinyxml2"; }

  std::string Version() const override {
    return "tinyxml2 " + std::to_string(TINYXML2_MAJOR_VERSION) + "." +
           std::to_string(TINYXML2_MINOR_VERSION) + "." + std::to_string(TINYXML2_PATCH_VERSION);
  }

  bool Offers(Operation operation) const override {
    switch (operation) {
      case Operation::kText:
      case Operation::kTextReferences:
      case Operation::kSelectName:
      case Operation::kSelectPath:
      case Operation::kFirstFound:
      case Operation::kFirstAbsent:
      case Operation::kCompare:
        return false;
      default:
        return true;
    }
  }

  std::unique_ptr<Tree> Load(const std::string& text) const override {
    std::unique_ptr<Tinyxml2Tree> tree(new Tinyxml2Tree);
    const tinyxml2::XMLError error = tree->Document().Parse(text.data(), text.size());
    if (error != tinyxml2::XML_SUCCESS) return nullptr;
    return tree;
  }

  std::unique_ptr<Tree> LoadFile(const std::string& path) const override {
    std::unique_ptr<Tinyxml2Tree> tree(new Tinyxml2Tree);
    if (tree->Document().LoadFile(path.c_str()) != tinyxml2::XML_SUCCESS) return nullptr;
    return tree;
  }
};

}  // namespace

std::unique_ptr<Library> MakeTinyxml2() { return std::unique_ptr<Library>(new Tinyxml2); }

}  // namespace bench
