#include <xmldom/parse/EntityNesting.h>

#include <cstring>

namespace xmldom {

namespace {

/// Whether the '&' at `p` can begin a reference to an entity. It does not when it begins a
/// reference to a character, but for the '&' itself, which is one only once the value has been
/// read. One that the piece cuts off counts, since Expat may cut a long literal anywhere.
bool CanReferToEntity(const char* p, const char* end) {
  ++p;
  if (p == end || *p != '#') return true;
  ++p;
  const bool isHexadecimal = p != end && *p == 'x';
  if (isHexadecimal) ++p;
  const char* ampersand = isHexadecimal ? "26" : "38";
  while (p != end && *p == '0') ++p;
  for (; *ampersand != '\0' && p != end; ++p, ++ampersand) {
    if (*p != *ampersand) return false;
  }
  return p == end || *p == ';';
}

/// Whether a piece of markup holds a reference to an entity.
bool RefersToEntity(const char* text, int length) {
  const char* end = text + length;
  for (const char* p = text; p != end; ++p) {
    if (*p == '&' && CanReferToEntity(p, end)) return true;
  }
  return false;
}

bool Is(const char* text, int length, const char* token) {
  return length == static_cast<int>(std::strlen(token)) &&
         std::strncmp(text, token, static_cast<std::size_t>(length)) == 0;
}

}  // namespace

bool EntityNesting::Allows(const char* text, int length) {
  if (Is(text, length, "<!ENTITY")) {
    m_insideDeclaration = true;
    m_refers = false;
  } else if (Is(text, length, ">")) {
    m_insideDeclaration = false;
  } else if (m_insideDeclaration && !m_refers && RefersToEntity(text, length)) {
    m_refers = true;
    ++m_count;
  }
  return m_count <= kMost;
}

}  // namespace xmldom
