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
typedef Owned<xercesc::DOMDocument> Document;

class XercesTree : public Tree {
 public:
  explicit XercesTree(Document document) : m_document(std::move(document)) {}

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

/// Throws what is an error, so that a text that is refused gives no tree.
class StrictErrors : public xercesc::ErrorHandler {
 public:
  void warning(const xercesc::SAXParseException&) override {}
  void error(const xercesc::SAXParseException& exception) override { throw exception; }
  void fatalError(const xercesc::SAXParseException& exception) override { throw exception; }
  void resetErrors() override {}
};

/// `source` is whatever the parser takes.
template <class Source>
TreePointer Parse(const Source& source) {
  xercesc::XercesDOMParser parser;
  StrictErrors errors;
  parser.setErrorHandler(&errors);
  parser.setValidationScheme(xercesc::XercesDOMParser::Val_Never);
  parser.setLoadExternalDTD(false);
  parser.setCreateEntityReferenceNodes(false);
  try {
    parser.parse(source);
  } catch (const xercesc::SAXParseException&) {
    return nullptr;
  }
  return TreePointer(new XercesTree(Document(parser.adoptDocument())));
}

TreePointer Load(const std::string& text) {
  return Parse(xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(text.data()),
                                          text.size(), "document", false));
}

TreePointer LoadFile(const std::string& path) { return Parse(path.c_str()); }

}  // namespace

Library XercesC() {
  xercesc::XMLPlatformUtils::Initialize();
  return {"xerces-c", "Xerces-C " XERCES_FULLVERSIONDOT, false, Load, LoadFile};
}

}  // namespace bench
