#include "Library.h"
#include "plain/ExpatFeed.h"

namespace bench {

namespace {

void OnStart(void*, const XML_Char*, const XML_Char**) {}
void OnEnd(void*, const XML_Char*) {}
void OnDefault(void*, const XML_Char*, int) {}

const ExpatHandlers kHandlers = {OnStart, OnEnd, OnDefault};

TreePointer Load(const std::string& text) {
  return TreePointer(ParseText(text, kHandlers, nullptr) ? new Tree : nullptr);
}

TreePointer LoadFile(const std::string& path) {
  return TreePointer(ParseFile(path, kHandlers, nullptr) ? new Tree : nullptr);
}

}  // namespace

/// Expat with handlers that do nothing: the floor of every load, since Expat parses.
Library ExpatOnly() { return {kExpatOnly, XML_ExpatVersion(), false, Load, LoadFile}; }

}  // namespace bench
