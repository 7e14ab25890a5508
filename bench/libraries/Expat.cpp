#include "libraries/Expat.h"

#include <cstdio>
#include <memory>

#include "Library.h"

// Parsing with Expat alone, which is the floor of every load over Expat.

namespace bench {

namespace {

const int kPieceSize = 65536;

struct ParserDeleter {
  void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
typedef std::unique_ptr<XML_ParserStruct, ParserDeleter> Parser;

Parser MakeParser(const ExpatHandlers& handlers, void* userData) {
  Parser parser(XML_ParserCreate(nullptr));
  XML_SetUserData(parser.get(), userData);
  XML_SetElementHandler(parser.get(), handlers.start, handlers.end);
  XML_SetDefaultHandlerExpand(parser.get(), handlers.other);
  return parser;
}

void IgnoreStart(void*, const XML_Char*, const XML_Char**) {}
void IgnoreEnd(void*, const XML_Char*) {}
void IgnoreOther(void*, const XML_Char*, int) {}

const ExpatHandlers kIgnore = {IgnoreStart, IgnoreEnd, IgnoreOther};

class NoTree : public Tree {
 public:
  bool Load(const std::string& text) { return ParseText(text, kIgnore, nullptr); }
  bool LoadFile(const std::string& path) { return ParseFile(path, kIgnore, nullptr); }
};

}  // namespace

bool ParseText(const std::string& text, const ExpatHandlers& handlers, void* userData) {
  const Parser parser = MakeParser(handlers, userData);
  const int length = static_cast<int>(text.size());
  return XML_Parse(parser.get(), text.data(), length, XML_TRUE) != XML_STATUS_ERROR;
}

bool ParseFile(const std::string& path, const ExpatHandlers& handlers, void* userData) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                             std::fclose);
  if (file == nullptr) return false;
  const Parser parser = MakeParser(handlers, userData);
  for (;;) {
    void* piece = XML_GetBuffer(parser.get(), kPieceSize);
    if (piece == nullptr) return false;
    const int length = static_cast<int>(std::fread(piece, 1, kPieceSize, file.get()));
    const bool isLast = length < kPieceSize;
    if (XML_ParseBuffer(parser.get(), length, isLast) == XML_STATUS_ERROR) return false;
    if (isLast) return std::ferror(file.get()) == 0;
  }
}

Library ExpatOnly() { return MakeLibrary<NoTree>(kExpatOnly, XML_ExpatVersion()); }

}  // namespace bench
