#include <tinyxml2.h>

#include "Library.h"

namespace bench {

namespace {

class Tinyxml2Tree : public EditedTree<Tinyxml2Tree> {
 public:
  bool Load(const std::string& text) {
    return m_document.Parse(text.data(), text.size()) == tinyxml2::XML_SUCCESS;
  }

  bool LoadFile(const std::string& path) {
    return m_document.LoadFile(path.c_str()) == tinyxml2::XML_SUCCESS;
  }

  std::size_t Write() override {
    tinyxml2::XMLPrinter printer;
    m_document.Print(&printer);
    return printer.CStrSize() > 1;
  }

  void AppendOne() { Root()->InsertEndChild(m_document.NewElement(kChildName)); }
  void InsertOne() { Root()->InsertFirstChild(m_document.NewElement(kChildName)); }
  void RemoveOne() { Root()->DeleteChild(Root()->FirstChild()); }

 private:
  tinyxml2::XMLElement* Root() { return m_document.RootElement(); }

  tinyxml2::XMLDocument m_document;
};

}  // namespace

Library Tinyxml2() {
  const std::string version = "tinyxml2 " + std::to_string(TINYXML2_MAJOR_VERSION) + "." +
                              std::to_string(TINYXML2_MINOR_VERSION) + "." +
                              std::to_string(TINYXML2_PATCH_VERSION);
  return MakeLibrary<Tinyxml2Tree>("tinyxml2", version);
}

}  // namespace bench
