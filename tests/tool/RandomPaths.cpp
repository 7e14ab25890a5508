#include "tool/RandomPaths.h"

#include <vector>

std::string RandomPaths::Document(int elements) {
  std::string text;
  std::vector<std::string> open;
  for (int i = 0; i < elements; ++i) {
    const std::string name = Name();
    text += '<' + name + " n='" + std::to_string(++m_number) + '\'';
    if (Below(2) == 0) text += " x='" + std::to_string(Below(3)) + '\'';
    if (Below(3) == 0) text += " y=''";
    text += '>';
    // An element with text has nothing below it, because the library puts the texts of several
    // elements together in another way than XPath.
    if (Below(4) == 0 && i > 0) {
      text += std::string(1, "uvw"[Below(3)]) + "</" + name + '>';
    } else {
      open.push_back(name);
    }
    while (open.size() > 1 && Below(3) == 0) {
      text += "</" + open.back() + '>';
      open.pop_back();
    }
  }
  for (; !open.empty(); open.pop_back()) text += "</" + open.back() + '>';
  return text;
}

std::string RandomPaths::Path(Kind kind) {
  static const char* const kPrefixes[] = {"/", "//", "//"};
  std::string path = kPrefixes[Below(3)];
  // Below the root, whose name is any of these, the path goes on as often as it begins anywhere.
  if (path == "/" && Below(4) != 0) path += "*/";
  const int steps = 1 + Below(3);
  for (int i = 0; i < steps; ++i) {
    if (i > 0) path += '/';
    if (kind == kWithDots && i > 0 && Below(3) == 0) path += Below(2) == 0 ? "./" : "../";
    path += Below(4) == 0 ? "*" : Name();
    while (Below(3) == 0) path += Predicate(kind);
  }
  return path;
}

std::string RandomPaths::Predicate(Kind kind) {
  const std::string name = Name();
  switch (Below(kind == kAny ? 8 : 3)) {
    case 0:
      return "[@x='" + std::to_string(Below(3)) + "']";
    case 1:
      return "[" + name + "='" + "uvw"[Below(3)] + "']";
    case 2:
      return "[" + name + "/@x='" + std::to_string(Below(3)) + "']";
    case 3:
      return "[@y]";
    case 4:
      return "[" + name + "]";
    case 5:
      return "[" + name + "/" + (Below(2) == 0 ? "*" : "@x") + "]";
    case 6:
      return "[last()]";
    default:
      return "[" + std::to_string(1 + Below(3)) + "]";
  }
}
