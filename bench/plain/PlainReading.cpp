#include <cstdlib>
#include <cstring>

#include "plain/PlainNode.h"

namespace bench {

namespace {

void AppendEscaped(const char* value, std::string& out) {
  for (;;) {
    const std::size_t plain = std::strcspn(value, "&<>\"'");
    out.append(value, plain);
    value += plain;
    switch (*value) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\'':
        out += "&apos;";
        break;
      default:
        return;
    }
    ++value;
  }
}

void AppendUtf8(unsigned long codePoint, std::string& out) {
  if (codePoint < 0x80) {
    out += static_cast<char>(codePoint);
    return;
  }
  const int following = codePoint < 0x800 ? 1 : codePoint < 0x10000 ? 2 : 3;
  const unsigned long lead = following == 1 ? 0xC0 : following == 2 ? 0xE0 : 0xF0;
  out += static_cast<char>(lead | (codePoint >> (6 * following)));
  for (int i = following - 1; i >= 0; --i) {
    out += static_cast<char>(0x80 | ((codePoint >> (6 * i)) & 0x3F));
  }
}

/// Appends what the reference between '&' and ';' stands for.
void AppendReference(const std::string& name, std::string& out) {
  if (name == "amp") {
    out += '&';
  } else if (name == "lt") {
    out += '<';
  } else if (name == "gt") {
    out += '>';
  } else if (name == "quot") {
    out += '"';
  } else if (name == "apos") {
    out += '\'';
  } else if (name.compare(0, 2, "#x") == 0) {
    AppendUtf8(std::strtoul(name.c_str() + 2, nullptr, 16), out);
  } else if (name.compare(0, 1, "#") == 0) {
    AppendUtf8(std::strtoul(name.c_str() + 1, nullptr, 10), out);
  } else {
    out += '&' + name + ';';
  }
}

void AppendDecoded(const char* value, std::string& out) {
  for (;;) {
    const char* reference = std::strchr(value, '&');
    const char* end = reference == nullptr ? nullptr : std::strchr(reference, ';');
    if (end == nullptr) {
      out += value;
      return;
    }
    out.append(value, reference);
    AppendReference(std::string(reference + 1, end), out);
    value = end + 1;
  }
}

bool SameText(const char* a, const char* b) {
  return a == nullptr || b == nullptr ? a == b : std::strcmp(a, b) == 0;
}

bool SameChain(const PlainNode* a, const PlainNode* b) {
  for (; a != nullptr && b != nullptr; a = a->next, b = b->next) {
    if (!SamePlainTree(a, b)) return false;
  }
  return a == b;
}

}  // namespace

void WritePlainNode(const PlainNode* node, std::size_t depth, std::string& out) {
  if (node->type == PlainType::kText) {
    out += node->value;
    return;
  }
  out += '<';
  out += node->name;
  for (const PlainNode* attribute = node->firstAttribute; attribute != nullptr;
       attribute = attribute->next) {
    out += ' ';
    out += attribute->name;
    out += "=\"";
    AppendEscaped(attribute->value, out);
    out += '"';
  }
  if (node->firstChild == nullptr) {
    out += "/>";
    return;
  }
  out += '>';
  bool afterElement = false;
  for (const PlainNode* child = node->firstChild; child != nullptr; child = child->next) {
    afterElement = child->type == PlainType::kElement;
    if (afterElement) {
      out += '\n';
      out.append(2 * (depth + 1), ' ');
    }
    WritePlainNode(child, depth + 1, out);
  }
  if (afterElement) {
    out += '\n';
    out.append(2 * depth, ' ');
  }
  out += "</";
  out += node->name;
  out += '>';
}

void CollectPlainText(const PlainNode* node, std::string& out) {
  for (const PlainNode* child = node->firstChild; child != nullptr; child = child->next) {
    if (child->type == PlainType::kElement) {
      CollectPlainText(child, out);
    } else {
      if (!out.empty()) out += ' ';
      AppendDecoded(child->value, out);
    }
  }
}

bool SamePlainTree(const PlainNode* a, const PlainNode* b) {
  return a->type == b->type && SameText(a->name, b->name) && SameText(a->value, b->value) &&
         SameChain(a->firstAttribute, b->firstAttribute) && SameChain(a->firstChild, b->firstChild);
}

}  // namespace bench
