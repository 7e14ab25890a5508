// Replacing references in a text by the characters that they stand for, in one pass from '&' to
// ';'. Tested by tests/text/EntityTranslation_test.cpp.

#include <xmldom/text/EntityTranslation.h>

#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/ReportCount.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/text/SilentTranslation.h>
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
  char name[5];
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

/// The reference at the first '&' of a text. `ampersand` may be null.
Reference ReferenceAt(const char* ampersand) {
  Reference reference = {ampersand, nullptr};
  if (ampersand != nullptr) reference.end = std::strchr(ampersand + 1, ';');
  if (reference.end == nullptr) reference.begin = nullptr;
  return reference;
}

Reference FindReference(const char* text) { return ReferenceAt(std::strchr(text, '&')); }

const int kMostDecodedBytes = 6;  // of the longest form that the encoder knows

/// Writes the character whose decimal code point stands behind "&#". Code point 0 writes nothing,
/// and strtol gives it where there are no decimal digits, as in a hexadecimal reference.
/// Result: how many bytes it has.
int DecodeNumber(const char* digits, char* to) {
  const uint32_t codePoint = static_cast<uint32_t>(std::strtol(digits, nullptr, 10));
  if (codePoint < 0x80) {
    *to = static_cast<char>(codePoint);
    return codePoint != 0;
  }
  return stringprep_unichar_to_utf8(codePoint, to);  // any value, surrogates too
}

/// Writes the characters that a reference stands for to `to`, which has room for kMostDecodedBytes.
/// Result: how many bytes they have; -1 when no entity has such a name.
int Decode(const Reference& reference, char* to) {
  const char* name = reference.begin + 1;
  if (*name == '#') return DecodeNumber(name + 1, to);
  const std::size_t length = static_cast<std::size_t>(reference.end - name);
  for (const PredefinedEntity& entity : l_aPredefinedEntities) {
    if (strncasecmp(name, entity.name, length) == 0) {
      *to = entity.character;
      return 1;
    }
  }
  return -1;
}

bool PrintsDebugLines() { return __atomic_load_n(&l_bDebugEntities, __ATOMIC_RELAXED); }

}  // namespace

char* xmldom::TranslateSilently(const char* text, const char* ampersand, char* to) {
  Reference reference = ReferenceAt(ampersand);
  if (reference.begin != nullptr && PrintsDebugLines()) return nullptr;
  for (; reference.begin != nullptr; reference = FindReference(text)) {
    const std::size_t before = static_cast<std::size_t>(reference.begin - text);
    std::memcpy(to, text, before);
    to += before;
    const int length = Decode(reference, to);
    if (length < 0) return nullptr;
    to += length;
    text = reference.end + 1;
  }
  return stpcpy(to, text);
}

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
    char decoded[kMostDecodedBytes];
    const int length = Decode(reference, decoded);
    if (length >= 0) {
      out.Write(decoded, static_cast<unsigned int>(length));
    } else {
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

  if (!PrintsDebugLines()) return result;
  xmldom::ReportCount::Add();
  std::printf("Translate Entities: from <%s> to <%s>\n", pszIn, out.GetAsStr());
  return result;
}

void SetDebugEntities(bool on) {
  CLogger::PostLogEventF(xmldom::kLogDom, xmldom::kSeverityDebug, "EntityDebug has been %s",
                         on ? "enabled" : "disabled");
  __atomic_store_n(&l_bDebugEntities, on, __ATOMIC_RELAXED);
}
