#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <deque>
#include <memory>
#include <mutex>
#include <random>
#include <string>
#include <vector>

#include "harness/NodeFacts.h"
#include "harness/Trees.h"
#include "threads/Threads.h"

// Documents that pass from thread to thread by a queue. Each is appended to by all of them, and
// nodes that one thread has cached are destroyed by another.

namespace {

/// A document beside the names that the children and the attributes of its root element ought to
/// have.
class PassedDocument {
 public:
  PassedDocument() : m_document(Load("<r/>")), m_number(0) {}

  void Change(std::mt19937& random) {
    IXMLDOMNode* const root = Root(m_document);
    const std::size_t place = m_names.empty() ? 0 : random() % m_names.size();
    switch (m_names.size() > 60 ? 0 : random() % 22) {
      case 0:
        Reload();
        break;
      case 1:
        root->ClearNode(false);
        m_names.clear();
        m_attributes.clear();
        break;
      case 2:
      case 3:
        Insert(root);
        break;
      case 4:
      case 5:
      case 6:
        Remove(root, m_names.empty() ? 0 : m_names.size() - 1 - place / 4);
        break;
      case 7:
        Cut(root, place);
        break;
      case 8:
        Nest(root, place);
        break;
      case 9:
        Disown(root, place);
        break;
      case 10:
        AppendSibling(root, place);
        break;
      case 11:
        AppendAttributes(root);
        break;
      case 12:
        GoBackwards(root);
        break;
      default:
        for (int i = 0; i < 3; ++i) Append(root);
    }
  }

  /// Whether the children and the attributes of the root element are those that it ought to have.
  void Check() const {
    ASSERT_EQ(m_names, NamesOf(Root(m_document)->m_pFirstChild));
    ASSERT_EQ(m_attributes, NamesOf(Root(m_document)->m_pFirstAttribute));
  }

 private:
  static std::vector<std::string> NamesOf(const IXMLDOMNode* node) {
    std::vector<std::string> names;
    for (; node != nullptr; node = node->m_pNextSibling) names.push_back(node->m_pszNodeName);
    return names;
  }

  std::string NewName() { return "n" + std::to_string(++m_number); }

  void Append(IXMLDOMNode* root) {
    m_names.push_back(NewName());
    const Node added(root->AddChild(m_names.back().c_str(), nullptr));
  }

  void Insert(IXMLDOMNode* root) {
    if (m_names.empty()) return;
    m_names.insert(m_names.begin(), NewName());
    IXMLDOMNode* node = NewElement(nullptr, m_names.front().c_str()).Detach();
    EXPECT_EQ(S_OK, root->insertBefore(node, root->m_pFirstChild, nullptr));
    EXPECT_EQ("", NotOwnedBy(m_document, root));
  }

  /// Takes the owner document from a child, from those that follow it and from all below them. The
  /// next insertion before them gives it back.
  void Disown(IXMLDOMNode* root, std::size_t place) {
    if (!m_names.empty()) At(root, {static_cast<int>(place)})->RecurseSetDocument(nullptr);
  }

  void AppendSibling(IXMLDOMNode* root, std::size_t place) {
    if (m_names.empty()) return;
    m_names.push_back(NewName());
    const Node added(
        At(root, {static_cast<int>(place)})->AddSibling(m_names.back().c_str(), nullptr));
  }

  void AppendAttributes(IXMLDOMNode* root) {
    for (int i = 0; i < 3; ++i) {
      m_attributes.push_back(NewName());
      EXPECT_EQ(1, root->AddAttribute(m_attributes.back().c_str(), "v"));
    }
  }

  void Remove(IXMLDOMNode* root, std::size_t place) {
    if (m_names.empty()) return;
    Node removed;
    EXPECT_EQ(S_OK, root->removeChild(At(root, {static_cast<int>(place)}), removed.Out()));
    m_names.erase(m_names.begin() + static_cast<std::ptrdiff_t>(place));
  }

  /// Ends the chain behind a node. What was behind it outlives that for a moment.
  void Cut(IXMLDOMNode* root, std::size_t place) {
    if (m_names.empty()) return;
    IXMLDOMNode* const node = At(root, {static_cast<int>(place)});
    const Node last = Keep(At(root, {static_cast<int>(m_names.size() - 1)}));
    node->ClearNode(false);
    m_names.resize(place + 1);
  }

  /// Appends below a child, whose chain then competes for the cache.
  void Nest(IXMLDOMNode* root, std::size_t place) {
    if (m_names.empty()) return;
    IXMLDOMNode* const node = At(root, {static_cast<int>(place)});
    const int before = node->CountChildNodes();
    for (int i = 0; i < 3; ++i) Node(node->AddChild("t", nullptr));
    EXPECT_EQ(before + 3, node->CountChildNodes());
  }

  void GoBackwards(IXMLDOMNode* root) {
    Node node;
    root->get_lastChild(node.Out());
    for (auto name = m_names.rbegin(); name != m_names.rend(); ++name) {
      ASSERT_TRUE(node);
      EXPECT_EQ(*name, node->m_pszNodeName);
      node->get_previousSibling(node.Out());
    }
    EXPECT_FALSE(node);
  }

  void Reload() {
    m_names.assign(3, "a");
    m_attributes.clear();
    EXPECT_EQ(VARIANT_TRUE, m_document->loadXML("<r><a/><a x='1'>t</a><a/></r>"));
  }

  Document m_document;
  std::vector<std::string> m_names;
  std::vector<std::string> m_attributes;
  int m_number;
};

/// The documents that no thread has at the moment.
class Queue {
 public:
  void Put(std::unique_ptr<PassedDocument> document) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_documents.push_back(std::move(document));
  }

  std::unique_ptr<PassedDocument> Take() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::unique_ptr<PassedDocument> document = std::move(m_documents.front());
    m_documents.pop_front();
    return document;
  }

 private:
  std::mutex m_mutex;
  std::deque<std::unique_ptr<PassedDocument>> m_documents;
};

TEST(PassedDocuments, Are_changed_by_one_thread_after_another) {
  Queue queue;
  for (int i = 0; i < 6; ++i) queue.Put(std::unique_ptr<PassedDocument>(new PassedDocument));
  std::vector<std::mt19937> random;
  for (unsigned i = 0; i < 4; ++i) random.emplace_back(i);
  InFourThreads([&](int thread) {
    std::mt19937& ownRandom = random[static_cast<std::size_t>(thread)];
    std::unique_ptr<PassedDocument> document = queue.Take();
    if (ownRandom() % 50 == 0) document.reset(new PassedDocument);
    for (unsigned i = ownRandom() % 4 + 1; i > 0; --i) {
      document->Change(ownRandom);
      document->Check();
    }
    queue.Put(std::move(document));
  });
}

}  // namespace
