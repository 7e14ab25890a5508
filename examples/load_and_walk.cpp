// Loads a file and walks its tree: each element with its attributes, each text. The walk is a loop,
// so that no document is too deep for it.

#include <xmldom/xmldom.h>

#include <cstdio>
#include <string>

#include "data_file.h"

namespace {

// Values are printed as they are stored, which is as XML has them: "&lt;" stays "&lt;".
void Print(IXMLDOMNode* node, int depth) {
  std::printf("%*s", 2 * depth, "");
  DOMNodeType type = NODE_INVALID;
  if (node->get_nodeType(&type) == S_OK && type == NODE_TEXT) {
    std::printf("\"%s\"\n", node->GetStrValue());  // borrowed
    return;
  }
  BSTR name = nullptr;
  if (node->get_nodeName(&name) != S_OK) return;
  std::printf("%s", name);
  SysFreeString(name);

  IXMLDOMNode* cursor = nullptr;  // holds no reference
  const char* attribute = nullptr;
  const char* value = nullptr;
  while (node->GetNextAttribute(cursor, attribute, value) != 0) {
    std::printf(" %s=%s", attribute, value);
  }
  std::printf("\n");
}

// Lets `node` refer to `next` instead of what it refers to.
void Move(IXMLDOMNode*& node, IXMLDOMNode* next) {
  Release(node);
  node = next;
}

// Visits everything below `root` in the order of the document. Each get_... hands out a node with a
// reference of its own, so that exactly one is held at any time.
void Walk(IXMLDOMNode* root) {
  IXMLDOMNode* node = nullptr;
  if (root->get_firstChild(&node) != S_OK) return;
  int depth = 0;
  while (node != nullptr) {
    Print(node, depth);
    IXMLDOMNode* next = nullptr;
    if (node->get_firstChild(&next) == S_OK) {
      ++depth;
    } else {
      while (node->get_nextSibling(&next) != S_OK && --depth >= 0) {
        IXMLDOMNode* parent = nullptr;
        if (node->get_parentNode(&parent) != S_OK) break;
        Move(node, parent);
      }
    }
    Move(node, next);
  }
}

}  // namespace

int main() {
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  std::string path = DataFile("device.xml");
  short loaded = VARIANT_FALSE;
  const HRESULT result = document->load(&path[0], &loaded);
  if (result == S_OK) {
    Walk(document);
  } else {
    std::fprintf(stderr, "cannot load %s\n", path.c_str());
  }
  Release(document);
  return result == S_OK ? 0 : 1;
}
