#include <tinyxml2.h>

#include "Library.h"

namespace bench {

namespace {

class Tinyxml2Tree : public TwoWayTree<Tinyxml2Tree> {
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
  void RemoveLastOne() { Root()->DeleteChild(Root()->LastChild()); }

  /// The library inserts behind a node only.
  void InsertOneBeforeLast() {
    tinyxml2::XMLNode* before = Root()->LastChild()->PreviousSibling();
    tinyxml2::XMLNode* child = m_document.NewElement(kChildName);
    before == nullptr ? Root()->InsertFirstChild(child) : Root()->InsertAfterChild(before, child);
  }

  std::size_t CountBackwards() override {
    std::size_t count = 0;
    for (tinyxml2::XMLNode* child = Root()->LastChild(); child != nullptr;
         child = child->PreviousSibling()) {
      ++count;
    }
    return count;
  }

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
