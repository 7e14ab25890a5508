#include "plain/PlainNode.h"

namespace bench {

namespace {

class Selection {
 public:
  Selection(const SplitPath& path, std::size_t most) : m_path(path), m_most(most) {}

  /// Selects at a node and at all below it. Result: whether there are enough.
  bool Descend(const PlainNode* node) {
    if (Step(node, 0)) return true;
    for (const PlainNode* child = node->firstChild; child != nullptr; child = child->next) {
      if (child->type == PlainType::kElement && Descend(child)) return true;
    }
    return false;
  }

  /// Selects with the steps from `step` on at a node. Result: whether there are enough.
  bool Step(const PlainNode* node, std::size_t step) {
    if (node->type != PlainType::kElement || m_path.names[step] != node->name) return false;
    if (step + 1 == m_path.names.size()) {
      if (!HasAttribute(node)) return false;
      m_found.push_back(node);
      return m_found.size() == m_most;
    }
    for (const PlainNode* child = node->firstChild; child != nullptr; child = child->next) {
      if (Step(child, step + 1)) return true;
    }
    return false;
  }

  const std::vector<const PlainNode*>& Found() const { return m_found; }

 private:
  bool HasAttribute(const PlainNode* node) const {
    if (m_path.attribute.empty()) return true;
    for (const PlainNode* attribute = node->firstAttribute; attribute != nullptr;
         attribute = attribute->next) {
      if (m_path.attribute == attribute->name) return m_path.value == attribute->value;
    }
    return false;
  }

  const SplitPath& m_path;
  const std::size_t m_most;
  std::vector<const PlainNode*> m_found;
};

}  // namespace

std::vector<const PlainNode*> SelectPlainNodes(const PlainNode* root, const SplitPath& path,
                                               std::size_t most) {
  Selection selection(path, most);
  if (path.isDescendant) {
    selection.Descend(root);
  } else {
    selection.Step(root, 0);
  }
  return selection.Found();
}

}  // namespace bench
