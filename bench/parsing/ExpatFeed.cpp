#include "parsing/ExpatFeed.h"

#include <cstdio>
#include <memory>
#include <type_traits>

namespace bench {

namespace {

struct ParserDeleter {
  void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
typedef std::unique_ptr<std::remove_pointer<XML_Parser>::type, ParserDeleter> Parser;

const int kPieceSize = 65536;

Parser MakeParser(const ExpatHandlers& handlers, void* userData) {
  Parser parser(XML_ParserCreate(nullptr));
  XML_SetUserData(parser.get(), userData);
  XML_SetElementHandler(parser.get(), handlers.start, handlers.end);
  XML_SetDefaultHandlerExpand(parser.get(), handlers.other);
  return parser;
}

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
    const std::size_t length = std::fread(piece, 1, kPieceSize, file.get());
    const bool isLast = length < static_cast<std::size_t>(kPieceSize);
    if (XML_ParseBuffer(parser.get(), static_cast<int>(length), isLast) == XML_STATUS_ERROR) {
      return false;
    }
    if (isLast) return std::ferror(file.get()) == 0;
  }
}

}  // namespace bench
