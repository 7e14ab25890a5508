#include <gtest/gtest.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <algorithm>
#include <string>
#include <vector>

#include "harness/Trees.h"
#include "soak/Cases.h"

// Walks over children whose loop takes nodes out and moves them. What has to be visited follows
// from the edits alone: each node that nobody has touched, once, and in the order of the chain.

namespace {

/// One walk, and what its loop has done.
class Walk {
 public:
  explicit Walk(Random random)
      : m_random(random),
        m_count(3 + m_random.Below(6)),
        m_moves(0),
        m_document(Load(TextOf(m_count).c_str())) {
    for (const XMLPtr<IXMLDOMNode>& child : xmldom::Children(Root(m_document))) {
      const std::string name = child->m_pszNodeName;
      m_visited.push_back(name);
      m_log += name + ": ";
      for (int edits = m_random.Below(3); edits > 0; --edits) Edit(child.Get());
    }
  }

  /// What is wrong; empty when nothing is.
  std::string Fault() const {
    if (m_visited.size() > static_cast<std::size_t>(m_count)) return "visits too many: " + m_log;
    std::vector<std::string> untouched;
    int mayBeLeftOut = m_moves;  // a node moved to the end may take the turn of the last one
    for (int i = 0; i < m_count; ++i) {
      const std::string name = NameOf(i);
      if (IsIn(m_touched, name)) continue;
      if (IsIn(m_visited, name)) {
        untouched.push_back(name);
      } else if (mayBeLeftOut-- == 0) {
        return "leaves out " + name + ": " + m_log;
      }
    }
    std::vector<std::string> met;
    for (const std::string& name : m_visited) {
      if (!IsIn(m_touched, name)) met.push_back(name);
    }
    return met == untouched ? "" : "visits in another order or twice: " + m_log;
  }

 private:
  static std::string NameOf(int i) { return "n" + std::to_string(i); }

  /// A document with that many children.
  static std::string TextOf(int count) {
    std::string text = "<p>";
    for (int i = 0; i < count; ++i) text += "<" + NameOf(i) + "/>";
    return text + "</p>";
  }

  static bool IsIn(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
  }

  /// Takes out a node whose turn has not come, or moves one whose turn is over.
  void Edit(IXMLDOMNode* present) {
    IXMLDOMNode* const root = Root(m_document);
    IXMLDOMNode* const node = At(root, {m_random.Below(root->CountChildNodes())});
    const std::string name = node->m_pszNodeName;
    // Moving the next node before the present one makes the same chain as moving the present one
    // behind it, and so the walk goes on with both.
    if (node == present || (node == present->m_pNextSibling && IsIn(m_visited, name))) return;
    m_touched.push_back(name);
    if (!IsIn(m_visited, name)) {
      m_log += "removes " + name + " ";
      XMLPtr<IXMLDOMNode> removed;
      EXPECT_EQ(S_OK, root->removeChild(node, removed.Out()));
    } else if (m_random.OneIn(3)) {
      m_log += "moves " + name + " to the end ";
      ++m_moves;
      EXPECT_EQ(S_OK, root->appendChild(node, nullptr));
    } else {
      m_log += "moves " + name + " before the present one ";
      EXPECT_EQ(S_OK, root->insertBefore(node, present, nullptr));
    }
  }

  Random m_random;
  const int m_count;
  int m_moves;
  Document m_document;
  std::vector<std::string> m_visited;
  std::vector<std::string> m_touched;
  std::string m_log;
};

TEST(SoakNodeRanges, A_walk_visits_each_untouched_child_once_and_in_order) {
  RunCases("walks", [](Random random, Observer&) { return Walk(random).Fault(); });
}

}  // namespace
