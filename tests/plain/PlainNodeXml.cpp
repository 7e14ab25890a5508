#include "plain/PlainNodeXml.h"

#include <cstddef>

namespace {

bool StandsAt(const std::string& xml, std::size_t at, const std::string& text) {
  return xml.compare(at, text.size(), text) == 0;
}

/// Where a comment, a CDATA section or an instruction ends that begins at `at`; `at` when there is
/// none.
std::size_t EndOfOther(const std::string& xml, std::size_t at) {
  static const char* const kKinds[][2] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
  for (const auto& kind : kKinds) {
    const std::string begin = kind[0];
    if (!StandsAt(xml, at, begin)) continue;
    const std::size_t end = xml.find(kind[1], at + begin.size());
    return end == std::string::npos ? xml.size() : end + std::string(kind[1]).size();
  }
  return at;
}

}  // namespace

std::string plain::LoadableXml(const std::string& xml) {
  std::string loadable;
  std::string text;  // what stands behind the last markup
  bool isInTag = false;
  char quote = '\0';
  for (std::size_t at = 0; at < xml.size();) {
    const std::size_t end = isInTag ? at : EndOfOther(xml, at);
    if (end != at) {
      loadable += text + xml.substr(at, end - at);
      text.clear();
      at = end;
      continue;
    }
    const char c = xml[at++];
    if (isInTag) {
      if (quote == '\0' && c == '>') isInTag = false;
      if (c == '"' || c == '\'') quote = quote == '\0' ? c : quote == c ? '\0' : quote;
      loadable += c == '\t'   ? "&#9;"
                  : c == '\n' ? "&#10;"
                  : c == '\r' ? "&#13;"
                              : std::string(1, c);
    } else if (c == '<') {
      loadable += text + c;
      text.clear();
      isInTag = true;
      quote = '\0';
    } else {
      const bool isEnd = c == '>' && text.size() >= 2 && StandsAt(text, text.size() - 2, "]]");
      text += isEnd ? "&gt;" : std::string(1, c);
    }
  }
  return loadable + text;
}
