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

#include "libraries/Libraries.h"

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

struct ReleaseDocument {
  void operator()(xercesc::DOMDocument* document) const { document->release(); }
};
typedef std::unique_ptr<xercesc::DOMDocument, ReleaseDocument> Document;

struct ReleaseSerializer {
  void operator()(xercesc::DOMLSSerializer* serializer) const { serializer->release(); }
};

struct ReleaseOutput {
  void operator()(xercesc::DOMLSOutput* output) const { output->release(); }
};

struct ReleaseResult {
  void operator()(xercesc::DOMXPathResult* result) const { result->release(); }
};

class XercesTree : public Tree {
 public:
  explicit XercesTree(Document document) : m_document(std::move(document)) {}

  bool Write() override {
    const XMLCh features[] = {xercesc::chLatin_L, xercesc::chLatin_S, xercesc::chNull};
    xercesc::DOMImplementation* implementation =
        xercesc::DOMImplementationRegistry::getDOMImplementation(features);
    const std::unique_ptr<xercesc::DOMLSSerializer, ReleaseSerializer> serializer(
        implementation->createLSSerializer());
    serializer->getDomConfig()->setParameter(xercesc::XMLUni::fgDOMWRTFormatPrettyPrint, true);
    const std::unique_ptr<xercesc::DOMLSOutput, ReleaseOutput> output(
        implementation->createLSOutput());
    xercesc::MemBufFormatTarget target;
    output->setByteStream(&target);
    serializer->write(m_document.get(), output.get());
    return target.getLen() != 0;
  }

  bool Text() override {
    const XMLCh* text = Root()->getTextContent();
    return text != nullptr && *text != 0;
  }

  std::size_t SelectAll(const char* path) override {
    const WideText widePath(path);
    const std::unique_ptr<xercesc::DOMXPathResult, ReleaseResult> result(
        m_document->evaluate(widePath.Get(), Root(), nullptr,
                             xercesc::DOMXPathResult::ORDERED_NODE_SNAPSHOT_TYPE, nullptr));
    return result->getSnapshotLength();
  }

  bool Equals(Tree& other) override {
    return Root()->isEqualNode(static_cast<XercesTree&>(other).Root());
  }

  void Append(const char* name, std::size_t count) override {
    const WideText wideName(name);
    for (; count > 0; --count) {
      Root()->appendChild(m_document->createElement(wideName.Get()));
    }
  }

  void InsertFirst(const char* name, std::size_t count) override {
    const WideText wideName(name);
    for (; count > 0; --count) {
      Root()->insertBefore(m_document->createElement(wideName.Get()), Root()->getFirstChild());
    }
  }

  void RemoveFirst(std::size_t count) override {
    for (; count > 0; --count) Root()->removeChild(Root()->getFirstChild())->release();
  }

 private:
  xercesc::DOMElement* Root() const { return m_document->getDocumentElement(); }

  Document m_document;
};

class XercesC : public Library {
 public:
  XercesC() { xercesc::XMLPlatformUtils::Initialize(); }
  ~XercesC() override { xercesc::XMLPlatformUtils::Terminate(); }

  std::string Name() const override { return "xerces-c"; }
  std::string Version() const override { return "Xerces-C " XERCES_FULLVERSIONDOT; }

  bool Offers(Operation operation) const override {
    switch (operation) {
      case Operation::kSelectAttribute:
      case Operation::kFirstFound:
      case Operation::kFirstAbsent:
        return false;
      default:
        return true;
    }
  }

  std::unique_ptr<Tree> Load(const std::string& text) const override {
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()),
                                            text.size(), "document", false);
    return Parse([&source](xercesc::XercesDOMParser& parser) { parser.parse(source); });
  }

  std::unique_ptr<Tree> LoadFile(const std::string& path) const override {
    return Parse([&path](xercesc::XercesDOMParser& parser) { parser.parse(path.c_str()); });
  }

 private:
  /// Throws what is an error, so that a text that is refused gives no tree.
  class StrictErrors : public xercesc::ErrorHandler {
   public:
    void warning(const xercesc::SAXParseException&) override {}
    void error(const xercesc::SAXParseException& exception) override { throw exception; }
    void fatalError(const xercesc::SAXParseException& exception) override { throw exception; }
    void resetErrors() override {}
  };

  template <class Start>
  static std::unique_ptr<Tree> Parse(const Start& start) {
    xercesc::XercesDOMParser parser;
    StrictErrors errors;
    parser.setErrorHandler(&errors);
    parser.setValidationScheme(xercesc::XercesDOMParser::Val_Never);
    parser.setLoadExternalDTD(false);
    parser.setCreateEntityReferenceNodes(false);
    try {
      start(parser);
    } catch (const xercesc::SAXParseException&) {
      return nullptr;
    }
    return std::unique_ptr<Tree>(new XercesTree(Document(parser.adoptDocument())));
  }
};

}  // namespace

std::unique_ptr<Library> MakeXercesC() { return std::unique_ptr<Library>(new XercesC); }

}  // namespace bench
