#ifndef XMLDOM_TEXT_NODEXML_H
#define XMLDOM_TEXT_NODEXML_H

#include <xmldom/dom/NodeArgument.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/support/MemFile.h>
#include <xmldom/text/Escaping.h>

#include <cstddef>
#include <cstring>
#include <string>

namespace xmldom {

/// Result: where the markup ends that begins with the '<' at `at`. Out: whether it is a tag.
inline const char* EndOfMarkup(const char* at, const char* end, bool& isTag) {
  static const struct {
    const char* begin;
    const char* end;
  } kKinds[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
  const std::size_t size = static_cast<std::size_t>(end - at);
  isTag = false;
  for (const auto& kind : kKinds) {
    const std::size_t length = std::strlen(kind.begin);
    if (size < length || std::memcmp(at, kind.begin, length) != 0) continue;
    const char* found = std::strstr(at + length, kind.end);
    return found == nullptr ? end : found + std::strlen(kind.end);
  }
  isTag = true;
  char quote = '\0';
  for (; at != end; ++at) {
    if (quote == '\0' && *at == '>') break;
    if (*at != '"' && *at != '\'') continue;
    if (quote == '\0') {
      quote = *at;
    } else if (quote == *at) {
      quote = '\0';
    }
  }
  return at;
}

/// Copies written XML, with references for the tabs and line ends in its tags. A tag that the
/// library writes has them in attribute values only.
/// Bad input: `xml` has a terminator at `end`.
inline std::string KeepBreaksInTags(const char* xml, const char* end) {
  std::string kept;
  const char* copied = xml;
  const char* at =
      static_cast<const char*>(std::memchr(xml, '<', static_cast<std::size_t>(end - xml)));
  while (at != nullptr) {
    bool isTag = false;
    const char* const tagEnd = EndOfMarkup(at, end, isTag);
    for (; isTag && at != tagEnd; ++at) {
      if (*at != '\t' && *at != '\n' && *at != '\r') continue;
      kept.append(copied, at);
      kept += AttributeReference(*at);
      copied = at + 1;
    }
    at = static_cast<const char*>(std::memchr(tagEnd, '<', static_cast<std::size_t>(end - tagEnd)));
  }
  kept.append(copied, end);
  return kept;
}

/// Result: the XML of a node, as IXMLDOMNode::GetXML writes it, but with references for tabs and
/// line ends in attribute values. A load leaves these characters as they are there, and the next
/// one would read them as blanks. Empty for an attribute and for a text, which have no XML alone,
/// and for a null node.
/// Cost: that of GetXML, and linear in what is written.
inline std::string Xml(ConstNodeArgument node) {
  if (!node || node->m_eNodeType == NODE_ATTRIBUTE || node->m_eNodeType == NODE_TEXT) {
    return std::string();
  }
  CMemFile xml(16384);
  node->GetXMLHelper(xml, 0, nullptr, 0, 0, -1, -1, nullptr, false, false, 0);
  const char* begin = xml.GetAsStr();
  return KeepBreaksInTags(begin, begin + xml.m_uLength);
}

}  // namespace xmldom

#endif
