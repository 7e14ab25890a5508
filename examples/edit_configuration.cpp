// Edits the configuration of a device with texts as users type them, saves it as a file that is
// whole at any time, and reads it again.

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <unistd.h>

#include <cstdio>
#include <string>

#include "data_file.h"

namespace {

bool Edit(IXMLDOMDocument2* document, const std::string& banner, const std::string& location) {
  const XMLPtr<IXMLDOMNode> identity = xmldom::SelectOne(document, "/device/identity");
  const xmldom::StoreResult stored = xmldom::SetText(xmldom::SelectOne(identity, "banner"), banner);
  if (!stored) {
    std::fprintf(stderr, "banner, byte %zu: %s\n", stored.offset, stored.Reason());
    return false;
  }
  const XMLPtr<IXMLDOMNode> contact = xmldom::AddElement(identity, "contact");
  return xmldom::SetText(xmldom::SelectOne(identity, "location"), location) &&
         xmldom::SetAttribute(contact, "phone", "+41 44 <ask> \"Anna & Co\"\next. 7");
}

int Fail(const std::string& file, const std::string& reason) {
  std::fprintf(stderr, "%s: %s\n", file.c_str(), reason.c_str());
  return 1;
}

}  // namespace

int main() {
  SetDebugEntities(false);  // nothing that is read goes to standard output by itself
  const std::string original = DataFile("device.xml");
  const std::string copy = "/tmp/edit_configuration-" + std::to_string(getpid()) + ".xml";
  const xmldom::LoadResult loaded = xmldom::LoadFile(original);
  if (!loaded) return Fail(original, xmldom::OneLine(loaded.error));

  // A control character, which no XML can hold, is refused; the texts of the second call are fine.
  const bool refused = !Edit(loaded.document.Get(), "beep\a", "Lobby");
  if (!refused || !Edit(loaded.document.Get(), "Line 1\n\tline 2 < 3", "  2nd floor ")) return 1;
  const std::error_code error = xmldom::Save(loaded.document, copy, xmldom::Prolog::kDeclaration);
  if (error) return Fail(copy, error.message());

  const xmldom::LoadResult again = xmldom::LoadFile(copy);
  if (!again) return Fail(copy, xmldom::OneLine(again.error));
  const XMLPtr<IXMLDOMNode> identity = xmldom::SelectOne(again.document, "/device/identity");
  std::printf("%s", xmldom::Xml(identity).c_str());
  std::printf("[%s]\n", xmldom::Text(xmldom::SelectOne(identity, "banner")).c_str());
  std::printf("[%s]\n", xmldom::Text(xmldom::SelectOne(identity, "location")).c_str());
  for (XMLPtr<IXMLDOMNode> contact : xmldom::Select(identity, "contact")) {
    std::printf("[%s]\n", xmldom::Attribute(contact, "phone").c_str());
  }
  return std::remove(copy.c_str());
}
