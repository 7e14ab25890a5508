// Builds a document from values, in both styles, and writes it as XML.

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <cstdio>

namespace {

struct Lease {
  const char* address;
  const char* host;
  int seconds;
};

const Lease kLeases[] = {
    {"192.168.10.20", "printer", 86400},
    {"192.168.10.21", "R&D <lab>", 3600},
};

// The tree stores texts as they are written. What may hold '&', '<' or a line end is escaped first.
void AddLease(IXMLDOMNode* leases, const Lease& lease) {
  const xmldom::EscapedText host = xmldom::EscapeText(lease.host);
  CMemFile seconds(16);
  seconds.WriteF("%d", lease.seconds);

  IXMLDOMNode* element =
      leases->AddChild("lease", nullptr);  // one reference for us, one the tree's
  element->AddAttribute("address", lease.address);
  element->AddAttribute("seconds", seconds.GetAsStr());
  element->AddTextChild(host.text.c_str());
  Release(element);
}

// The COM style: a detached node is made first. Linking it hands our reference to the tree.
HRESULT AddNote(IXMLDOMDocument2* document, IXMLDOMNode* parent, const char* text) {
  VARIANT type;
  VariantInit(&type);
  type.vt = VT_I4;
  type.lVal = NODE_ELEMENT;
  char name[] = "note";
  IXMLDOMNode* note = nullptr;
  const HRESULT result = document->createNode(type, name, nullptr, &note);
  if (result != S_OK) return result;
  note->AddTextChild(text);
  parent->AddChild(note);
  return S_OK;
}

}  // namespace

int main() {
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  IXMLDOMNode* leases = document->AddChild("leases", nullptr);
  if (leases->AddAttribute("interface", "lan") == 0) std::fprintf(stderr, "there already\n");
  for (const Lease& lease : kLeases) AddLease(leases, lease);
  const HRESULT noted = AddNote(document, leases, "renewed at noon");

  BSTR xml = nullptr;
  const HRESULT written = document->get_xml(&xml);
  if (written == S_OK) std::printf("%s", xml);
  SysFreeString(xml);
  Release(leases);
  Release(document);
  return noted == S_OK && written == S_OK ? 0 : 1;
}
