#include "documents/Sample.h"

#include <cstring>
#include <stdexcept>

#include "plain/PlainNode.h"

namespace bench {

namespace {

const std::size_t kMostDebugBytes = 32 << 20;

struct Counts {
  std::size_t nodes = 0;
  std::size_t textBytes = 0;
  std::size_t debugBytes = 0;
};

void Count(const PlainNode* chain, Counts& counts) {
  for (const PlainNode* node = chain; node != nullptr; node = node->next) {
    ++counts.nodes;
    if (node->type == PlainType::kText) {
      const std::size_t length = std::strlen(node->value);
      counts.textBytes += length + 1;
      // The debug line of a text shows it, and all that has been collected so far.
      if (std::strchr(node->value, '&') != nullptr) counts.debugBytes += length + counts.textBytes;
    }
    Count(node->firstAttribute, counts);
    Count(node->firstChild, counts);
  }
}

}  // namespace

void CountNodes(Sample& sample) {
  PlainNode* root = BuildPlainTree(sample.text);
  if (root == nullptr) throw std::runtime_error(sample.name + " is not well-formed");
  Counts counts;
  Count(root, counts);
  DestroyPlainNode(root);
  sample.nodes = counts.nodes;
  sample.textBytes = counts.textBytes;
  sample.debugBytes = counts.debugBytes;
}

Sample Children(const std::string& set, std::size_t count) {
  Sample sample;
  sample.name = "children";
  sample.set = set;
  sample.nodes = count;
  return sample;
}

bool Suits(Operation operation, const Sample& sample) {
  if (IsEdit(operation) || sample.text.empty()) return IsEdit(operation) == sample.text.empty();
  switch (operation) {
    case Operation::kText:
      return sample.textBytes > 0 && sample.debugBytes == 0;
    case Operation::kTextReferences:
      return sample.debugBytes > 0 && sample.debugBytes <= kMostDebugBytes;
    default:
      return true;
  }
}

const std::string& PathFor(Operation operation, const Paths& paths) {
  static const std::string none;
  switch (operation) {
    case Operation::kSelectName:
      return paths.name;
    case Operation::kSelectAttribute:
      return paths.attribute;
    case Operation::kSelectPath:
      return paths.steps;
    case Operation::kFirstFound:
      return paths.found;
    case Operation::kFirstAbsent:
      return paths.absent;
    default:
      return none;
  }
}

}  // namespace bench
