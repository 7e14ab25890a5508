#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>

#include "Library.h"
#include "documents/Documents.h"
#include "libraries/Expat.h"

// The plainest linked tree that can be made of Expat's events: every node, name and value is a
// block of the C heap, and every walk is the shortest that does the job. It is what a tree over
// Expat costs before it has any features.

namespace bench {

enum class Type { kElement, kAttribute, kText };

struct Node {
  Node* next;
  Node* parent;
  Node* firstChild;
  Node* lastChild;
  Node* firstAttribute;
  char* name;   // null for a text
  char* value;  // null for an element; a text's is as it was written, an attribute's decoded
  Type type;
};

bool TreesEqual(const Node* a, const Node* b);

namespace {

bool TextsEqual(const char* a, const char* b) {
  return a == nullptr || b == nullptr ? a == b : std::strcmp(a, b) == 0;
}

bool ChainsEqual(const Node* a, const Node* b) {
  for (; a != nullptr && b != nullptr; a = a->next, b = b->next) {
    if (!TreesEqual(a, b)) return false;
  }
  return a == b;
}

}  // namespace

/// Has external linkage because g++ expands its recursion less without, which makes it slower.
bool TreesEqual(const Node* a, const Node* b) {
  return a->type == b->type && TextsEqual(a->name, b->name) && TextsEqual(a->value, b->value) &&
         ChainsEqual(a->firstAttribute, b->firstAttribute) &&
         ChainsEqual(a->firstChild, b->firstChild);
}

namespace {

char* Copy(const char* text, std::size_t length) {
  char* copy = static_cast<char*>(std::malloc(length + 1));
  if (copy == nullptr) throw std::bad_alloc();
  std::memcpy(copy, text, length);
  copy[length] = '\0';
  return copy;
}

/// Makes a detached node with copies of name and value, each of which may be null.
Node* NewNode(Type type, const char* name, const char* value, std::size_t valueLength) {
  Node* node = static_cast<Node*>(std::calloc(1, sizeof(Node)));
  if (node == nullptr) throw std::bad_alloc();
  node->type = type;
  if (name != nullptr) node->name = Copy(name, std::strlen(name));
  if (value != nullptr) node->value = Copy(value, valueLength);
  return node;
}

/// Frees a node with all its siblings behind it and everything below them.
void DestroyChain(Node* node) {
  while (node != nullptr) {
    Node* next = node->next;
    DestroyChain(node->firstAttribute);
    DestroyChain(node->firstChild);
    std::free(node->name);
    std::free(node->value);
    std::free(node);
    node = next;
  }
}

void AppendChild(Node* parent, Node* child) {
  child->parent = parent;
  (parent->lastChild == nullptr ? parent->firstChild : parent->lastChild->next) = child;
  parent->lastChild = child;
}

struct Builder {
  Node* root = nullptr;
  Node* open = nullptr;  // the innermost open element
  std::string text;      // what stands in it since the last tag

  void FlushText() {
    if (text.empty()) return;
    AppendChild(open, NewNode(Type::kText, nullptr, text.data(), text.size()));
    text.clear();
  }
};

/// Whether the characters are white space alone.
bool IsBlank(const XML_Char* text, int length) {
  return std::all_of(text, text + length, [](unsigned char c) { return std::isspace(c) != 0; });
}

void OnStart(void* userData, const XML_Char* name, const XML_Char** attributes) {
  Builder& builder = *static_cast<Builder*>(userData);
  Node* element = NewNode(Type::kElement, name, nullptr, 0);
  Node** link = &element->firstAttribute;
  for (; attributes[0] != nullptr; attributes += 2) {
    *link = NewNode(Type::kAttribute, attributes[0], attributes[1], std::strlen(attributes[1]));
    (*link)->parent = element;
    link = &(*link)->next;
  }
  if (builder.open == nullptr) {
    builder.root = element;
  } else {
    builder.FlushText();
    AppendChild(builder.open, element);
  }
  builder.open = element;
}

void OnEnd(void* userData, const XML_Char*) {
  Builder& builder = *static_cast<Builder*>(userData);
  builder.FlushText();
  builder.open = builder.open->parent;
}

void OnDefault(void* userData, const XML_Char* text, int length) {
  Builder& builder = *static_cast<Builder*>(userData);
  if (builder.open == nullptr || IsBlank(text, length)) return;
  builder.text.append(text, static_cast<std::size_t>(length));
}

/// Selects with a path of one of the forms that are measured: "//name",
/// "//name[@attribute='value']" and "/a/b/c".
class Selection {
 public:
  /// Stops at `most` nodes; 0 stands for all.
  Selection(const Node* root, const std::string& path, std::size_t most) : m_most(most) {
    std::string steps = path;
    const std::size_t predicate = path.find("[@");
    if (predicate != std::string::npos) {
      steps.resize(predicate);
      const std::size_t attribute = predicate + 2;
      const std::size_t value = path.find("='") + 2;
      m_attribute = path.substr(attribute, value - 2 - attribute);
      m_value = path.substr(value, path.size() - 2 - value);
    }
    std::size_t end = 0;
    for (std::size_t begin; (begin = steps.find_first_not_of('/', end)) != std::string::npos;) {
      end = steps.find('/', begin);
      m_names.push_back(steps.substr(begin, end - begin));
    }
    path[1] == '/' ? Descend(root) : Step(root, 0);
  }

  std::size_t Count() const { return m_found.size(); }

 private:
  /// Selects at a node and at all below it. Result: whether there are enough.
  bool Descend(const Node* node) {
    if (Step(node, 0)) return true;
    for (const Node* child = node->firstChild; child != nullptr; child = child->next) {
      if (child->type == Type::kElement && Descend(child)) return true;
    }
    return false;
  }

  /// Selects with the steps from `step` on at a node. Result: whether there are enough.
  bool Step(const Node* node, std::size_t step) {
    if (node->type != Type::kElement || m_names[step] != node->name) return false;
    if (step + 1 == m_names.size()) {
      if (!HasAttribute(node)) return false;
      m_found.push_back(node);
      return m_found.size() == m_most;
    }
    for (const Node* child = node->firstChild; child != nullptr; child = child->next) {
      if (Step(child, step + 1)) return true;
    }
    return false;
  }

  bool HasAttribute(const Node* node) const {
    if (m_attribute.empty()) return true;
    for (const Node* attribute = node->firstAttribute; attribute != nullptr;
         attribute = attribute->next) {
      if (m_attribute == attribute->name) return m_value == attribute->value;
    }
    return false;
  }

  const std::size_t m_most;
  std::vector<std::string> m_names;  // of the steps
  std::string m_attribute;           // empty when the last step has no predicate
  std::string m_value;
  std::vector<const Node*> m_found;
};

/// Counts the nodes of a chain with everything below them.
void CountChain(const Node* node, Sample& sample) {
  for (; node != nullptr; node = node->next) {
    ++sample.nodes;
    if (node->type == Type::kText) {
      sample.hasText = true;
      if (std::strchr(node->value, '&') != nullptr) sample.hasReferences = true;
    }
    CountChain(node->firstAttribute, sample);
    CountChain(node->firstChild, sample);
  }
}

const ExpatHandlers kHandlers = {OnStart, OnEnd, OnDefault};

class LinkedTree : public EditedTree<LinkedTree> {
 public:
  ~LinkedTree() override { DestroyChain(m_root); }

  bool Load(const std::string& text) { return Build(ParseText, text); }
  bool LoadFile(const std::string& path) { return Build(ParseFile, path); }

  std::size_t SelectAll(const char* path) override { return Selection(m_root, path, 0).Count(); }
  std::size_t SelectFirst(const char* path) override { return Selection(m_root, path, 1).Count(); }

  std::size_t Equals(Tree& other) override {
    return TreesEqual(m_root, static_cast<LinkedTree&>(other).m_root);
  }

  void AppendOne() { AppendChild(m_root, NewNode(Type::kElement, kChildName, nullptr, 0)); }

  void InsertOne() {
    Node* child = NewNode(Type::kElement, kChildName, nullptr, 0);
    child->parent = m_root;
    child->next = m_root->firstChild;
    m_root->firstChild = child;
    if (m_root->lastChild == nullptr) m_root->lastChild = child;
  }

  void RemoveOne() {
    Node* child = m_root->firstChild;
    m_root->firstChild = child->next;
    if (m_root->firstChild == nullptr) m_root->lastChild = nullptr;
    child->next = nullptr;
    DestroyChain(child);
  }

  void CountNodes(Sample& sample) const { CountChain(m_root, sample); }

 private:
  template <class Parse>
  bool Build(Parse parse, const std::string& source) {
    Builder builder;
    const bool isParsed = parse(source, kHandlers, &builder);
    m_root = builder.root;
    return isParsed;
  }

  Node* m_root = nullptr;
};

}  // namespace

void CountNodes(Sample& sample) {
  LinkedTree tree;
  if (!tree.Load(sample.text)) throw std::runtime_error("a document is not well-formed");
  tree.CountNodes(sample);
}

Library PlainTree() { return MakeLibrary<LinkedTree>("plain", "plain linked tree over Expat"); }

}  // namespace bench
