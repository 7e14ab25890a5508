#include <cctype>
#include <cstring>

#include "parsing/ExpatFeed.h"
#include "plain/PlainNode.h"

namespace bench {

namespace {

struct Builder {
  PlainNode* root = nullptr;
  PlainNode* open = nullptr;  // the innermost open element
  std::string text;           // what stands in it since the last tag

  void FlushText() {
    if (text.empty()) return;
    AppendPlainChild(open, NewPlainNode(PlainType::kText, nullptr, text.data(), text.size()));
    text.clear();
  }
};

void OnStart(void* userData, const XML_Char* name, const XML_Char** attributes) {
  Builder& builder = *static_cast<Builder*>(userData);
  PlainNode* element = NewPlainNode(PlainType::kElement, name, nullptr, 0);
  PlainNode** link = &element->firstAttribute;
  for (; attributes[0] != nullptr; attributes += 2) {
    const std::size_t length = std::strlen(attributes[1]);
    *link = NewPlainNode(PlainType::kAttribute, attributes[0], attributes[1], length);
    (*link)->parent = element;
    link = &(*link)->next;
  }
  if (builder.open == nullptr) {
    builder.root = element;
  } else {
    builder.FlushText();
    AppendPlainChild(builder.open, element);
  }
  builder.open = element;
}

void OnEnd(void* userData, const XML_Char*) {
  Builder& builder = *static_cast<Builder*>(userData);
  builder.FlushText();
  builder.open = builder.open->parent;
}

bool IsBlank(const XML_Char* text, int length) {
  for (int i = 0; i < length; ++i) {
    if (!std::isspace(static_cast<unsigned char>(text[i]))) return false;
  }
  return true;
}

void OnDefault(void* userData, const XML_Char* text, int length) {
  Builder& builder = *static_cast<Builder*>(userData);
  if (builder.open == nullptr || IsBlank(text, length)) return;
  builder.text.append(text, static_cast<std::size_t>(length));
}

const ExpatHandlers kHandlers = {OnStart, OnEnd, OnDefault};

PlainNode* RootUnlessRefused(bool parsed, const Builder& builder) {
  if (parsed) return builder.root;
  if (builder.root != nullptr) DestroyPlainNode(builder.root);
  return nullptr;
}

}  // namespace

PlainNode* BuildPlainTree(const std::string& text) {
  Builder builder;
  const bool parsed = ParseText(text, kHandlers, &builder);
  return RootUnlessRefused(parsed, builder);
}

PlainNode* BuildPlainTreeOfFile(const std::string& path) {
  Builder builder;
  const bool parsed = ParseFile(path, kHandlers, &builder);
  return RootUnlessRefused(parsed, builder);
}

}  // namespace bench
