#include "plain/PlainNode.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace bench {

namespace {

char* Copy(const char* text, std::size_t length) {
  char* copy = static_cast<char*>(std::malloc(length + 1));
  if (copy == nullptr) throw std::bad_alloc();
  std::memcpy(copy, text, length);
  copy[length] = '\0';
  return copy;
}

void DestroyChain(PlainNode* node) {
  while (node != nullptr) {
    PlainNode* next = node->next;
    DestroyPlainNode(node);
    node = next;
  }
}

}  // namespace

PlainNode* NewPlainNode(PlainType type, const char* name, const char* value,
                        std::size_t valueLength) {
  PlainNode* node = static_cast<PlainNode*>(std::calloc(1, sizeof(PlainNode)));
  if (node == nullptr) throw std::bad_alloc();
  node->type = type;
  if (name != nullptr) node->name = Copy(name, std::strlen(name));
  if (value != nullptr) node->value = Copy(value, valueLength);
  return node;
}

void DestroyPlainNode(PlainNode* node) {
  DestroyChain(node->firstAttribute);
  DestroyChain(node->firstChild);
  std::free(node->name);
  std::free(node->value);
  std::free(node);
}

void AppendPlainChild(PlainNode* parent, PlainNode* child) {
  child->parent = parent;
  if (parent->lastChild == nullptr) {
    parent->firstChild = child;
  } else {
    parent->lastChild->next = child;
  }
  parent->lastChild = child;
}

void PrependPlainChild(PlainNode* parent, PlainNode* child) {
  child->parent = parent;
  child->next = parent->firstChild;
  parent->firstChild = child;
  if (parent->lastChild == nullptr) parent->lastChild = child;
}

PlainNode* UnlinkFirstPlainChild(PlainNode* parent) {
  PlainNode* child = parent->firstChild;
  parent->firstChild = child->next;
  if (parent->firstChild == nullptr) parent->lastChild = nullptr;
  child->next = nullptr;
  child->parent = nullptr;
  return child;
}

}  // namespace bench
