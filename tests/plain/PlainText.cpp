#include "plain/PlainText.h"

#include <stringprep.h>
#include <strings.h>
#include <xmldom/xmldom.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace plain {

namespace {

void WriteRange(CMemFile& out, const char* begin, const char* end) {
  out.Write(begin, static_cast<unsigned int>(end - begin));
}

void WriteNumeric(CMemFile& out, const char* digits) {
  char utf8[16] = {};
  const int length =
      stringprep_unichar_to_utf8(static_cast<uint32_t>(std::strtol(digits, nullptr, 10)), utf8);
  utf8[length] = '\0';
  WriteRange(out, utf8, utf8 + std::strlen(utf8));
}

/// The character that a name stands for; NUL when there is none.
char CharacterOf(const char* name, std::size_t length) {
  if (strncasecmp(name, "lt", length) == 0) return '<';
  if (strncasecmp(name, "gt", length) == 0) return '>';
  if (strncasecmp(name, "amp", length) == 0) return '&';
  if (strncasecmp(name, "quot", length) == 0) return '"';
  if (strncasecmp(name, "apos", length) == 0) return '\'';
  return '\0';
}

}  // namespace

int& Reports() {
  static int count = 0;
  return count;
}

bool& PrintsDebugLines() {
  static bool prints = true;
  return prints;
}

int TranslateEntities(const char* in, CMemFile& out) {
  if (in == nullptr) return 1;
  const char* ampersand = std::strchr(in, '&');
  const char* semicolon = ampersand == nullptr ? nullptr : std::strchr(ampersand, ';');
  if (semicolon == nullptr) {
    WriteRange(out, in, in + std::strlen(in));
    return 1;
  }
  int result = 1;
  const char* copied = in;
  while (ampersand != nullptr && semicolon != nullptr) {
    WriteRange(out, copied, ampersand);
    const char* name = ampersand + 1;
    if (*name == '#') {
      WriteNumeric(out, name + 1);
    } else {
      const char character = CharacterOf(name, static_cast<std::size_t>(semicolon - name));
      if (character != '\0') {
        out.Write(&character, 1);
      } else {
        ++Reports();
        CLogger::PostLogEventF(
            LOG_TYPE_DATA, LOG_SEVERITY_WARNING,
            "TranslateEntities FAILED to match entity at the begining of this string: '%s'",
            ampersand);
        WriteRange(out, ampersand, semicolon + 1);
        result = 0;
      }
    }
    copied = semicolon + 1;
    ampersand = std::strchr(copied, '&');
    if (ampersand != nullptr) semicolon = std::strchr(ampersand, ';');
  }
  WriteRange(out, copied, copied + std::strlen(copied));
  if (!PrintsDebugLines()) return result;
  ++Reports();
  std::printf("Translate Entities: from <%s> to <%s>\n", in, out.GetAsStr());
  return result;
}

const char* GetStrValue(const IXMLDOMNode* node) {
  if (node->m_eNodeType != NODE_ELEMENT) return node->m_pszValue;
  if (node->m_pFirstChild == nullptr) return node->m_pszValue;
  if (node->m_pFirstChild->m_eNodeType == NODE_TEXT) return node->m_pFirstChild->m_pszValue;
  return node->m_pszValue;
}

void GetTextHelper(const IXMLDOMNode* node, CMemFile& out) {
  if (node->m_pOwnerDocument == static_cast<const void*>(node)) {
    if (node->m_pFirstChild != nullptr) GetTextHelper(node->m_pFirstChild, out);
    return;
  }
  for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr; child = child->m_pNextSibling) {
    if (child->m_eNodeType != NODE_TEXT) continue;
    if (out.m_uPosition != 0) out.Write(" ", 1);
    plain::TranslateEntities(plain::GetStrValue(child), out);
  }
  for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr; child = child->m_pNextSibling) {
    if (child->m_eNodeType != NODE_TEXT) GetTextHelper(child, out);
  }
}

char* GetTextAsStr(const IXMLDOMNode* node) {
  CMemFile text(4096);
  GetTextHelper(node, text);
  if (text.m_uLength == 0) return nullptr;
  char* copy = static_cast<char*>(std::malloc(text.m_uLength + 1));
  text.m_uPosition = 0;
  copy[text.Read(copy, text.m_uLength)] = '\0';
  return copy;
}

char* GetStringValue(const IXMLDOMNode* node, char* buffer, int size) {
  CMemFile text(4096);
  GetTextHelper(node, text);
  int length = static_cast<int>(text.m_uLength);
  if (length >= size) {
    CLogger::PostLogEventF(LOG_TYPE_DOM, LOG_SEVERITY_WARNING,
                           "IXMLDOMNode::GetStringValue - buffer size overrun, string trunked, "
                           "passed size %d, required size %d",
                           size, length + 1);
    CLogger::PostBacktrace(LOG_TYPE_DOM, LOG_SEVERITY_WARNING,
                           "IXMLDOMNode::GetStringValue - Overrun was initiated from here:");
    length = size - 1;
  }
  if (length < 1) {
    buffer[0] = '\0';
    return nullptr;
  }
  text.m_uPosition = 0;
  buffer[text.Read(buffer, static_cast<unsigned int>(length))] = '\0';
  return buffer;
}

}  // namespace plain
