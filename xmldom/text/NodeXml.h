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

/// Result: where the markup ends that begins with the '<' at `at`: at the '>' of a tag, behind the
/// last character of a comment, a CDATA section or an instruction; at `end` when it does not end.
/// Out: whether it is a tag. Bad input: the text has a terminator at `end`.
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

/// Copies written XML, with references for the tabs and line ends in its tags, which the library
/// writes in attribute values only, and for the '>' of a "]]>" between them, which XML does not
/// allow there. A load makes such a text of "]]", something that it drops, and ">".
/// Bad input: `xml` has a terminator at `end`.
inline std::string LoadableXml(const char* xml, const char* end) {
  std::string loadable;
  const char* copied = xml;
  for (const char* at = xml; at != end;) {
    const void* const found = std::memchr(at, '<', static_cast<std::size_t>(end - at));
    const char* const markup = found == nullptr ? end : static_cast<const char*>(found);
    for (const char* text = at; text != markup; ++text) {
      const void* const close = std::memchr(text, '>', static_cast<std::size_t>(markup - text));
      if (close == nullptr) break;
      text = static_cast<const char*>(close);
      if (text - at < 2 || text[-1] != ']' || text[-2] != ']') continue;
      loadable.append(copied, text);
      loadable += "&gt;";
      copied = text + 1;
    }
    if (markup == end) break;
    bool isTag = false;
    const char* const markupEnd = EndOfMarkup(markup, end, isTag);
    for (at = markup; isTag && at != markupEnd; ++at) {
      if (*at != '\t' && *at != '\n' && *at != '\r') continue;
      loadable.append(copied, at);
      loadable += AttributeReference(*at);
      copied = at + 1;
    }
    at = markupEnd;
  }
  loadable.append(copied, end);
  return loadable;
}

/// Result: the XML of a node, as IXMLDOMNode::GetXML writes it, but with references for tabs and
/// line ends in attribute values, and for the '>' of "]]>" in texts. A load makes tabs and line
/// ends of such references; if they were written as they are, the next load would read blanks. A
/// text with "]]>" would not load. Empty for an attribute and for a text, which have no XML alone,
/// and for a null node. Cost: that of GetXML, and linear in what is written.
inline std::string Xml(ConstNodeArgument node) {
  if (!node || node->m_eNodeType == NODE_ATTRIBUTE || node->m_eNodeType == NODE_TEXT) {
    return std::string();
  }
  CMemFile xml(16384);
  node->GetXMLHelper(xml, 0, nullptr, 0, 0, -1, -1, nullptr, false, false, 0);
  const char* begin = xml.GetAsStr();
  return LoadableXml(begin, begin + xml.m_uLength);
}

}  // namespace xmldom

#endif
