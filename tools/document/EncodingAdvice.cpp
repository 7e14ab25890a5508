// What messages say about encodings that the tool cannot read.
// Tested by tests/tool/check_test.bash.

#include <tools/document/EncodingAdvice.h>

#include <algorithm>

namespace tool {

namespace {

// How far into a text the XML declaration is looked for.
const std::size_t kDeclarationLimit = 1024;

std::string Conversion(const std::string& from, const std::string& declared) {
  return "iconv -f " + from + " -t UTF-8 FILE | sed '1s/" + declared + "/UTF-8/I' > NEW";
}

bool IsNameByte(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' ||
         c == '_' || c == '-';
}

/// The encoding that the XML declaration names. Result: empty without such a name.
std::string DeclaredEncoding(const std::string& text) {
  const std::string declaration = text.substr(0, std::min(text.find("?>"), kDeclarationLimit));
  const std::size_t key = declaration.find("encoding");
  const std::size_t quote = key == std::string::npos ? key : declaration.find_first_of("'\"", key);
  if (quote == std::string::npos) return std::string();
  const auto begin = declaration.begin() + static_cast<std::ptrdiff_t>(quote) + 1;
  return std::string(begin, std::find_if_not(begin, declaration.end(), IsNameByte));
}

}  // namespace

std::string DescribeUtf16(const std::string& text) {
  const std::string from = text[0] == '<' ? "UTF-16LE" : text[0] == '\0' ? "UTF-16BE" : "UTF-16";
  return "the text looks like UTF-16, which has to be converted to UTF-8 first: " +
         Conversion(from, "utf-16");
}

std::string DescribeUnknownEncoding(const std::string& text) {
  const std::string name = DeclaredEncoding(text);
  const std::string known = "; UTF-8, ISO-8859-1 and US-ASCII are known";
  if (name.empty()) return "unknown encoding" + known;
  return "unknown encoding " + name + known + "; to convert: " + Conversion(name, name);
}

}  // namespace tool
