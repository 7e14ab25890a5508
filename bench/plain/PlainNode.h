#ifndef XMLDOM_BENCH_PLAIN_PLAINNODE_H
#define XMLDOM_BENCH_PLAIN_PLAINNODE_H

#include <cstddef>
#include <string>
#include <vector>

#include "parsing/SplitPath.h"

// The plainest linked tree that can be made of Expat's events: every node, name and value is a
// block of the C heap, and every walk is the shortest that does the job. It is what a tree over
// Expat costs before it has any features.

namespace bench {

enum class PlainType { kElement, kAttribute, kText };

struct PlainNode {
  PlainNode* next;
  PlainNode* parent;
  PlainNode* firstChild;
  PlainNode* lastChild;
  PlainNode* firstAttribute;
  char* name;   // null for a text
  char* value;  // null for an element; a text's is as it was written, an attribute's decoded
  PlainType type;
};

/// Makes a detached node with copies of name and value, each of which may be null.
PlainNode* NewPlainNode(PlainType type, const char* name, const char* value,
                        std::size_t valueLength);

/// Frees a detached node and all below it.
void DestroyPlainNode(PlainNode* node);

void AppendPlainChild(PlainNode* parent, PlainNode* child);
void PrependPlainChild(PlainNode* parent, PlainNode* child);

/// Takes the first child out; there must be one.
PlainNode* UnlinkFirstPlainChild(PlainNode* parent);

/// Builds the tree of a text or of a file; blank runs of text are dropped.
/// Result: the root element, the caller's; null when the text is not well-formed.
PlainNode* BuildPlainTree(const std::string& text);
PlainNode* BuildPlainTreeOfFile(const std::string& path);

/// Appends the XML of a node, indented by two blanks a level.
void WritePlainNode(const PlainNode* node, std::size_t depth, std::string& out);

/// Appends the decoded text of all texts below, joined by one blank.
void CollectPlainText(const PlainNode* node, std::string& out);

/// Whether two trees have the same types, names and values in the same order.
bool SamePlainTree(const PlainNode* a, const PlainNode* b);

/// Result: the nodes that a path selects, in document order; at most `most` of them, 0 for all.
std::vector<const PlainNode*> SelectPlainNodes(const PlainNode* root, const SplitPath& path,
                                               std::size_t most);

}  // namespace bench

#endif
