// A reader of the text before the root element, one character at a time, which finds the entity
// declarations and what their values refer to; EntityChains keeps these. The state between two
// characters is in the object, so that a piece of text may end anywhere. Tested by
// tests/parse/EntityNesting_test.cpp, and by tests/growth/Prologs_test.cpp for its cost.

#include <xmldom/parse/EntityNesting.h>

#include <expat.h>
#include <stringprep.h>

namespace xmldom {

namespace {

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

bool IsQuote(char c) { return c == '"' || c == '\''; }

/// Whether this is the kind and the name of one of the five entities that mean the same in every
/// document, whatever it declares.
bool IsPredefined(const std::string& word) {
  for (const char* name : {"&lt", "&gt", "&amp", "&quot", "&apos"}) {
    if (word == name) return true;
  }
  return false;
}

/// The value of a decimal or hexadecimal digit.
int DigitOf(char c) { return c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10; }

}  // namespace

EntityNesting::EntityNesting()
    : m_place(OUTSIDE),
      m_quote('\0'),
      m_run(0),
      m_kind('&'),
      m_isReference(false),
      m_hasAmpersand(false),
      m_base(0),
      m_number(0) {}

bool EntityNesting::IsPossible() {
  const XML_Expat_Version version = XML_ExpatVersionInfo();
  return version.major < 2 || (version.major == 2 && version.minor < 7);
}

bool EntityNesting::Observe(const char* text, int length) {
  for (const char* const end = text + length; text != end && !IsTooDeep(); ++text) Read(*text);
  return !IsTooDeep();
}

void EntityNesting::Read(char c) {
  switch (m_place) {
    case OUTSIDE:
      if (c == '<') m_place = MARKUP;
      break;
    case MARKUP:
      m_place = c == '?' ? INSTRUCTION : c == '!' ? KEYWORD : OUTSIDE;
      m_run = 0;
      m_word.clear();
      break;
    case INSTRUCTION:
      if (c == '>' && m_run > 0) m_place = OUTSIDE;
      m_run = c == '?';
      break;
    case COMMENT:
      if (c == '>' && m_run > 1) m_place = OUTSIDE;
      m_run = c == '-' ? m_run + 1 : 0;
      break;
    case KEYWORD:
      ReadKeyword(c);
      break;
    case NAME:
      ReadName(c);
      break;
    case BEFORE_VALUE:
    case REST:
      ReadRest(c);
      break;
    case VALUE:
      ReadValue(c);
      break;
  }
}

void EntityNesting::ReadKeyword(char c) {
  if (c == '-' || (c >= 'A' && c <= 'Z')) {
    m_word += c;
    if (m_word == "--") m_place = COMMENT;
    return;
  }
  m_place = m_word == "ENTITY" ? NAME : REST;
  m_kind = '&';
  m_word.clear();
  if (m_place == REST) ReadRest(c);
}

void EntityNesting::ReadName(char c) {
  if (!IsSpace(c)) {
    if (c == '%' && m_word.empty()) {
      m_kind = c;
    } else {
      if (m_word.empty()) m_word = m_kind;
      m_word += c;
    }
  } else if (!m_word.empty()) {
    // Expat ignores declarations of the predefined entities.
    m_place = IsPredefined(m_word) ? REST : BEFORE_VALUE;
    if (m_place == BEFORE_VALUE) m_chains.Declare(m_word.data(), m_word.size());
  }
}

/// Reads on to the end of a declaration, or to the '[' before the declarations of a document type.
/// A literal that directly follows the name of an entity is its value; any other literal is
/// skipped, so that a '>' in it does not end the declaration.
void EntityNesting::ReadRest(char c) {
  if (m_quote != '\0') {
    if (c == m_quote) m_quote = '\0';
  } else if (IsQuote(c)) {
    m_quote = c;
    if (m_place == BEFORE_VALUE) m_place = VALUE;
    m_isReference = m_hasAmpersand = false;
  } else if (c == '>' || c == '[') {
    m_place = OUTSIDE;
  } else if (!IsSpace(c)) {
    m_place = REST;
  }
}

/// Expat replaces character references when it reads a declaration, so that "&#38;e;" in a value is
/// a reference to the entity e in the replacement text. What follows from that text itself is not
/// replaced once more: "&#38;#38;" ends up as a character reference, not as an ampersand.
void EntityNesting::ReadValue(char c) {
  if (m_base != 0) {
    ReadCharacterReference(c);
    return;
  }
  if (m_hasAmpersand) {
    m_hasAmpersand = false;
    if (c == '#') {
      m_base = 10;
      m_number = 0;
      return;
    }
    ReadReplacementText('&');
  }
  if (c == '&') {
    m_hasAmpersand = true;
  } else if (c == m_quote) {
    m_quote = '\0';
    m_place = REST;
  } else {
    ReadReplacementText(c);
  }
}

/// Reads the inside of a character reference, and at its end the character for which it stands.
void EntityNesting::ReadCharacterReference(char c) {
  if (c == 'x') {
    m_base = 16;
  } else if (c != ';') {
    m_number = m_number * static_cast<unsigned>(m_base) + static_cast<unsigned>(DigitOf(c));
  } else {
    char bytes[8];
    const int count = stringprep_unichar_to_utf8(static_cast<uint32_t>(m_number), bytes);
    for (int i = 0; i < count; ++i) ReadReplacementText(bytes[i]);
    m_base = 0;
  }
}

/// Reads the text of a value with its character references replaced, and notes each reference to an
/// entity of the declared kind.
void EntityNesting::ReadReplacementText(char c) {
  if (c == m_kind) {
    m_word = c;
    m_isReference = true;
  } else if (m_isReference && c == ';') {
    m_chains.Refer(m_word.data(), m_word.size());
    m_isReference = false;
  } else if (m_isReference && c != '\0') {
    m_word += c;
  }
}

}  // namespace xmldom
