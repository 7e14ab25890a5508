#include "plain/PlainBuilder.h"

#include <xmldom/xmldom.h>

#include <cctype>
#include <cstring>

#include "harness/Trees.h"
#include "plain/PlainBuilding.h"
#include "plain/PlainLifetime.h"

namespace plain {

Builder::Builder(IXMLDOMDocument2* document)
    : m_parser(XML_ParserCreate_MM(nullptr, nullptr, nullptr)),
      m_document(document),
      m_isFirstElement(true) {
  XML_SetUserData(m_parser, this);
  XML_SetElementHandler(m_parser, OnStartElement, OnEndElement);
  XML_SetDefaultHandlerExpand(m_parser, OnDefault);
}

Builder::~Builder() { XML_ParserFree(m_parser); }

bool Builder::Load(const std::string& text) {
  plain::ClearNode(m_document, false);
  return Parse(text.c_str(), true);
}

bool Builder::Parse(const std::string& piece, bool final) {
  return XML_Parse(m_parser, piece.data(), static_cast<int>(piece.size()), final) !=
         XML_STATUS_ERROR;
}

void Builder::OnStartElement(void* self, const char* name, const char** attributes) {
  Builder& builder = *static_cast<Builder*>(self);
  IXMLDOMNode* element = new IXMLDOMNode(builder.m_document, name, nullptr, NODE_ELEMENT);
  CMemFile value(1024);
  for (; *attributes != nullptr; attributes += 2) {
    value.m_uPosition = 0;
    value.m_uLength = 0;
    value.WriteStrEntities(attributes[1]);
    plain::AddAttribute(element, attributes[0], value.GetAsStr());
  }
  IXMLDOMNode* parent = builder.m_document;
  if (!builder.m_isFirstElement) parent = builder.m_open.back();
  builder.m_isFirstElement = false;
  plain::AddChild(parent, element);
  builder.m_open.push_back(element);
}

void Builder::OnEndElement(void* self, const char*) {
  Builder& builder = *static_cast<Builder*>(self);
  if (!builder.m_open.empty()) builder.m_open.pop_back();
}

void Builder::OnDefault(void* self, const char* text, int length) {
  Builder& builder = *static_cast<Builder*>(self);
  if (builder.m_open.empty()) return;
  if ((builder.m_document->m_uFlags & IXMLDOMDocument2::FORMATTED_LAYOUT) != 0) {
    int blanks = 0;
    while (blanks < length && std::isspace(static_cast<unsigned char>(text[blanks]))) ++blanks;
    if (blanks == length) return;
  }
  builder.AppendText(text, length);
}

void Builder::AppendText(const char* text, int length) {
  IXMLDOMNode* child = m_open.back()->m_pFirstChild;
  while (child != nullptr && std::strcmp(child->m_pszNodeName, "#Text") != 0) {
    child = child->m_pNextSibling;
  }
  if (child != nullptr) {
    plain::AppendValue(child, text, length);
    return;
  }
  IXMLDOMNode* created = new IXMLDOMNode(m_document, "#Text", nullptr, NODE_TEXT);
  plain::AppendValue(created, text, length);
  plain::AddChild(m_open.back(), created);
}

std::string Builder::DescribeError() const {
  const XML_Error code = XML_GetErrorCode(m_parser);
  return std::to_string(code) + ", " + std::to_string(XML_GetCurrentByteCount(m_parser)) + ", " +
         std::to_string(XML_GetCurrentLineNumber(m_parser)) + ", " +
         std::to_string(XML_GetCurrentColumnNumber(m_parser)) + ", " + Text(XML_ErrorString(code)) +
         ", <" + ErrorTag() + ">\n";
}

std::string Builder::ErrorTag() const {
  int offset = 0;
  int size = 0;
  const char* context = XML_GetInputContext(m_parser, &offset, &size);
  if (context == nullptr || size == 0) return "undefined";
  const std::string input(context, static_cast<std::size_t>(size));
  std::size_t start = static_cast<std::size_t>(offset);
  if (start > input.size()) start = input.size();
  const bool atTag = start < input.size() && input[start] == '<';
  if (start > 0 && !atTag) {
    do {
      --start;
    } while (start > 0 && input[start] != '<');
  }
  std::size_t end = start + 1;
  while (end < input.size() && input[end] != '>' && input[end] != '\0') ++end;
  if (end < input.size() && input[end] == '>') ++end;
  const std::string tag = input.substr(start, end - start);
  return tag.substr(0, 511).c_str();
}

}  // namespace plain
