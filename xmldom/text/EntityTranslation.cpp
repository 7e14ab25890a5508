// Replacing references in a text by the characters that they stand for, in one pass from '&' to
// ';'. Tested by tests/text/EntityTranslation_test.cpp.

#include <xmldom/text/EntityTranslation.h>

#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/ReportCount.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/text/TextOutput.h>

#include <stringprep.h>
#include <strings.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

/// Whether translating a text with references prints a debug line.
bool l_bDebugEntities = true;

struct PredefinedEntity {
  const char* name;
  char character;
};

// A reference means the first entity here whose name begins with its own: "&a;" is "&amp;", and
// "&;" is "&lt;".
const PredefinedEntity l_aPredefinedEntities[] = {
    {"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''},
};

/// A reference in a text: from the '&' to the first ';' behind it.
struct Reference {
  const char* begin;  // at the '&', null when there is no reference
  const char* end;    // at the ';'
};

Reference FindReference(const char* text) {
  Reference reference = {std::strchr(text, '&'), nullptr};
  if (reference.begin != nullptr) reference.end = std::strchr(reference.begin + 1, ';');
  if (reference.end == nullptr) reference.begin = nullptr;
  return reference;
}

/// Writes the character whose decimal code point stands behind "&#". Code point 0 writes nothing,
/// and strtol gives it where there are no decimal digits, as in a hexadecimal reference.
void WriteCharacter(const char* digits, CMemFile& out) {
  const uint32_t codePoint = static_cast<uint32_t>(std::strtol(digits, nullptr, 10));
  char utf8[8] = {};  // The encoder takes any value, surrogates too; its longest form has 6 bytes.
  const int length = stringprep_unichar_to_utf8(codePoint, utf8);
  if (length < 0 || length >= static_cast<int>(sizeof utf8)) return;
  utf8[length] = '\0';
  xmldom::WriteText(out, utf8);
}

/// Writes the character of a predefined entity. Result: false when no entity has such a name, which
/// writes nothing.
bool WritePredefined(const Reference& reference, CMemFile& out) {
  const char* name = reference.begin + 1;
  const std::size_t length = static_cast<std::size_t>(reference.end - name);
  for (const PredefinedEntity& entity : l_aPredefinedEntities) {
    if (strncasecmp(name, entity.name, length) == 0) {
      out.Write(&entity.character, 1);
      return true;
    }
  }
  return false;
}

}  // namespace

int TranslateEntities(const char* pszIn, CMemFile& out) {
  if (pszIn == nullptr) return 1;
  Reference reference = FindReference(pszIn);
  if (reference.begin == nullptr) {
    xmldom::WriteText(out, pszIn);
    return 1;
  }

  int result = 1;
  const char* rest = pszIn;
  for (; reference.begin != nullptr; reference = FindReference(rest)) {
    xmldom::WriteBytes(out, rest, static_cast<std::size_t>(reference.begin - rest));
    if (reference.begin[1] == '#') {
      WriteCharacter(reference.begin + 2, out);
    } else if (!WritePredefined(reference, out)) {
      xmldom::ReportCount::Add();
      CLogger::PostLogEventF(
          xmldom::kLogData, xmldom::kSeverityWarning,
          "TranslateEntities FAILED to match entity at the begining of this string: '%s'",
          reference.begin);
      xmldom::WriteBytes(out, reference.begin,
                         static_cast<std::size_t>(reference.end + 1 - reference.begin));
      result = 0;
    }
    rest = reference.end + 1;
  }
  xmldom::WriteText(out, rest);

  if (!__atomic_load_n(&l_bDebugEntities, __ATOMIC_RELAXED)) return result;
  xmldom::ReportCount::Add();
  std::printf("Translate Entities: from <%s> to <%s>\n", pszIn, out.GetAsStr());
  return result;
}

void SetDebugEntities(bool on) {
  CLogger::PostLogEventF(xmldom::kLogDom, xmldom::kSeverityDebug, "EntityDebug has been %s",
                         on ? "enabled" : "disabled");
  __atomic_store_n(&l_bDebugEntities, on, __ATOMIC_RELAXED);
}
