#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/util/XercesVersion.hpp>

#include <cstring>

#include "Library.h"

namespace bench {

namespace {

/// A text in the library's own encoding.
class WideText {
 public:
  explicit WideText(const char* text) : m_text(xercesc::XMLString::transcode(text)) {}
  ~WideText() { xercesc::XMLString::release(&m_text); }

  WideText(const WideText&) = delete;
  WideText& operator=(const WideText&) = delete;

  const XMLCh* Get() const { return m_text; }

 private:
  XMLCh* m_text;
};

struct Releaser {
  template <class T>
  void operator()(T* object) const {
    object->release();
  }
};
template <class T>
using Owned = std::unique_ptr<T, Releaser>;

/// Throws what is an error, so that a text that is refused gives no tree.
class StrictErrors : public xercesc::ErrorHandler {
 public:
  void warning(const xercesc::SAXParseException&) override {}
  void error(const xercesc::SAXParseException& exception) override { throw exception; }
  void fatalError(const xercesc::SAXParseException& exception) override { throw exception; }
  void resetErrors() override {}
};

class XercesTree : public TwoWayTree<XercesTree> {
 public:
  bool Load(const std::string& text) {
    const XMLByte* bytes = reinterpret_cast<const XMLByte*>(text.data());
    return Parse(xercesc::MemBufInputSource(bytes, text.size(), "document", false));
  }

  bool LoadFile(const std::string& path) { return Parse(path.c_str()); }

  std::size_t Write() override {
    const XMLCh features[] = {xercesc::chLatin_L, xercesc::chLatin_S, xercesc::chNull};
    xercesc::DOMImplementation* implementation =
        xercesc::DOMImplementationRegistry::getDOMImplementation(features);
    const Owned<xercesc::DOMLSSerializer> serializer(implementation->createLSSerializer());
    serializer->getDomConfig()->setParameter(xercesc::XMLUni::fgDOMWRTFormatPrettyPrint, true);
    const Owned<xercesc::DOMLSOutput> output(implementation->createLSOutput());
    xercesc::MemBufFormatTarget target;
    output->setByteStream(&target);
    serializer->write(m_document.get(), output.get());
    return target.getLen() != 0;
  }

  std::size_t Text() override {
    const XMLCh* text = Root()->getTextContent();
    return text != nullptr && *text != 0;
  }

  std::size_t SelectAll(const char* path) override {
    if (std::strchr(path, '[') != nullptr) return kNotOffered;
    const WideText widePath(path);
    const Owned<xercesc::DOMXPathResult> result(
        m_document->evaluate(widePath.Get(), Root(), nullptr,
                             xercesc::DOMXPathResult::ORDERED_NODE_SNAPSHOT_TYPE, nullptr));
    return result->getSnapshotLength();
  }

  std::size_t Equals(Tree& other) override {
    return Root()->isEqualNode(static_cast<XercesTree&>(other).Root());
  }

  void AppendOne() { Root()->appendChild(NewElement()); }
  void InsertOne() { Root()->insertBefore(NewElement(), Root()->getFirstChild()); }
  void RemoveOne() { Root()->removeChild(Root()->getFirstChild())->release(); }
  void InsertOneBeforeLast() { Root()->insertBefore(NewElement(), Root()->getLastChild()); }
  void RemoveLastOne() { Root()->removeChild(Root()->getLastChild())->release(); }

  std::size_t CountBackwards() override {
    std::size_t count = 0;
    for (xercesc::DOMNode* child = Root()->getLastChild(); child != nullptr;
         child = child->getPreviousSibling()) {
      ++count;
    }
    return count;
  }

 private:
  /// `source` is whatever the parser takes. Result: whether it has accepted that.
  template <class Source>
  bool Parse(const Source& source) {
    xercesc::XercesDOMParser parser;
    StrictErrors errors;
    parser.setErrorHandler(&errors);
    parser.setValidationScheme(xercesc::XercesDOMParser::Val_Never);
    parser.setLoadExternalDTD(false);
    parser.setCreateEntityReferenceNodes(false);
    try {
      parser.parse(source);
    } catch (const xercesc::SAXParseException&) {
      return false;
    }
    m_document.reset(parser.adoptDocument());
    return true;
  }

  xercesc::DOMElement* Root() const { return m_document->getDocumentElement(); }

  xercesc::DOMElement* NewElement() const { return m_document->createElement(m_childName.Get()); }

  Owned<xercesc::DOMDocument> m_document;
  const WideText m_childName{kChildName};
};

}  // namespace

Library XercesC() {
  xercesc::XMLPlatformUtils::Initialize();
  return MakeLibrary<XercesTree>("xerces-c", "Xerces-C " XERCES_FULLVERSIONDOT);
}

}  // namespace bench
