// What calls say when something is wrong: results, the parse error, the error code of lookups,
// exceptions, and the log.

#include <xmldom/xmldom.h>

#include <cstdio>
#include <string>

#include "data_file.h"

namespace {

// Sees every log event; without it they go to standard error. The event lives as long as the call.
void Show(const CLogEvent& event, void*) {
  std::printf("log: type %d, severity %d: %s\n", event.type, event.severity, event.title);
}

void Load(IXMLDOMDocument2* document, const char* name) {
  std::string path = DataFile(name);
  short loaded = VARIANT_FALSE;
  const HRESULT result = document->load(&path[0], &loaded);
  if (result == E_FILENOTOPENED) std::printf("%s: cannot be opened\n", name);
  if (result != S_FALSE) return;

  IXMLDOMParseError* error = nullptr;
  if (document->get_parseError(&error) != S_OK) return;
  long line = 0;
  long column = 0;
  BSTR reason = nullptr;
  BSTR tag = nullptr;
  if (error->get_line(&line) == S_OK && error->get_linepos(&column) == S_OK &&
      error->get_reason(&reason) == S_OK && error->get_srcText(&tag) == S_OK) {
    std::printf("%s:%ld:%ld: %s, near %s\n", name, line, column + 1, reason, tag);
  }
  SysFreeString(reason);
  SysFreeString(tag);
  Release(error);
}

void LookUp(IXMLDOMNode* device) {
  CXML::ClearXMLError();  // lookups that succeed leave the code alone
  device->GetStrAttribute("model");
  std::printf("model: error code %d\n", CXML::GetXMLError());
  const char* serial = device->GetStrAttribute("serial");
  std::printf("serial: %s, no such attribute: %d\n", serial == nullptr ? "none" : serial,
              CXML::GetXMLError() == CXML::NO_SUCH_ATTRIBUTE);
}

// An attribute stands beside no children, so that asking for the sibling before it is a fault of
// the program, and such faults are exceptions. Whoever catches one deletes it.
void Misuse(IXMLDOMNode* device) {
  IXMLDOMNode* model = device->GetAttribute("model");
  if (model == nullptr) return;
  IXMLDOMNode* previous = nullptr;
  try {
    if (model->get_previousSibling(&previous) == S_OK) Release(previous);
  } catch (CLogException* exception) {
    std::printf("exception: %s: %s\n", exception->GetWhere(), exception->GetMessage());
    delete exception;
  }
  Release(model);
}

}  // namespace

int main() {
  CLogger::SetSink(Show, nullptr);
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  Load(document, "missing.xml");
  Load(document, "broken.xml");

  // What stands before the error has been built.
  IXMLDOMNode* device = nullptr;
  if (document->get_documentElement(&device) == S_OK) {
    LookUp(device);
    Misuse(device);
    std::printf("null pointer refused: %d\n", device->get_parentNode(nullptr) == E_ARGUMENT);
    std::printf("removed: %d\n", document->RemoveChildAtXPath("/device/none"));
    Release(device);
  }
  Release(document);
}
