#include <xmldom/xmldom.h>

#include <cstdlib>

#include "documents/Documents.h"

// A little of everything that the library is measured for, always the same. Callgrind counts the
// instructions of CountedWorkload alone.

namespace {

const std::size_t kNodes = 600;
const int kChildren = 200;

/// A run that did something else would be counted for nothing.
void Require(bool condition) {
  if (!condition) std::abort();
}

void RequireText(BSTR text) {
  Require(text != nullptr && *text != '\0');
  SysFreeString(text);
}

IXMLDOMDocument2* Load(const std::string& text) {
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  Require(document->loadXML(text.c_str()) == VARIANT_TRUE);
  return document;
}

void SelectAll(IXMLDOMDocument2* document, const std::string& path) {
  IXMLDOMNodeList* list = document->SelectNodes(path.c_str());
  Require(list->m_nCount > 0);
  Release(list);
}

void SelectFirst(IXMLDOMDocument2* document, const std::string& path, bool isThere) {
  IXMLDOMNode* node = document->SelectSingleNode(path.c_str());
  Require((node != nullptr) == isThere);
  Release(node);
}

void Read(const bench::Sample& sample) {
  IXMLDOMDocument2* document = Load(sample.text);
  IXMLDOMDocument2* other = Load(sample.text);
  RequireText(document->GetXML());
  RequireText(document->GetTextAsBSTR());
  SelectAll(document, sample.paths.name);
  SelectAll(document, sample.paths.attribute);
  SelectAll(document, sample.paths.steps);
  SelectFirst(document, sample.paths.found, true);
  SelectFirst(document, sample.paths.absent, false);
  CMemFile report(0);
  Require(CompareXMLNodes(document, other, report, 0) == 1);
  Release(other);
  Release(document);
}

void Edit() {
  IXMLDOMDocument2* document = Load("<list><item/></list>");
  IXMLDOMNode* list = document->m_pFirstChild;
  for (int i = 0; i < kChildren; ++i) {
    IXMLDOMNode* appended = list->AddChild("item", "text");
    Release(appended);
    IXMLDOMNode* inserted = new IXMLDOMNode(document, "item", nullptr, NODE_ELEMENT);
    Require(list->insertBefore(inserted, list->m_pFirstChild, nullptr) == S_OK);
  }
  for (int i = 0; i < kChildren; ++i) {
    IXMLDOMNode* removed = nullptr;
    Require(list->removeChild(list->m_pFirstChild, &removed) == S_OK);
    Release(removed);
  }
  Release(document);
}

}  // namespace

extern "C" __attribute__((noinline)) void CountedWorkload(
    const std::vector<bench::Sample>& samples) {
  for (const bench::Sample& sample : samples) Read(sample);
  Edit();
}

int main() {
  std::vector<bench::Sample> samples;
  for (const bench::Shape& shape : bench::AllShapes()) {
    bench::Sample sample;
    shape.generate(kNodes, sample);
    samples.push_back(sample);
  }
  CountedWorkload(samples);
  return 0;
}
