#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include "harness/Trees.h"

// The order in which edits at a path give back what they hold: what the edit returned, the target,
// the temporary document. A target tells how many nodes are alive when it goes.

namespace {

/// A node of an application that notes how many nodes are alive when it is destroyed.
class Target : public IXMLDOMNode {
 public:
  Target(IXMLDOMDocument2* document, int* alive)
      : IXMLDOMNode(document, "target", nullptr, NODE_ELEMENT), m_alive(alive) {}
  ~Target() override { *m_alive = m_iObjCount; }

 private:
  int* m_alive;
};

class XMLNodePathEditReleases : public testing::Test {
 protected:
  XMLNodePathEditReleases() : m_document(Load("<r/>")), m_aliveAtTheEnd(0) {
    Root(m_document)->AddChild(new Target(m_document, &m_aliveAtTheEnd));
  }

  Document m_document;
  int m_aliveAtTheEnd;
};

// The target itself, the content and the temporary document are alive.
TEST_F(XMLNodePathEditReleases, Replacing_gives_the_target_back_before_the_document) {
  EXPECT_EQ(1, m_document->ReplaceChildAtXPath("/r/target", "<n/>"));
  EXPECT_EQ(IXMLDOMNode::m_iObjCount + 2, m_aliveAtTheEnd);
}

// The sink drops the reference of its own, so that the call has the last one.
TEST_F(XMLNodePathEditReleases, Content_that_does_not_parse_goes_before_the_target) {
  struct Holder {
    static void Drop(const CLogEvent&, void* target) {
      static_cast<IXMLDOMNode*>(target)->RealRelease();
    }
  };
  IXMLDOMNode* target = new Target(m_document, &m_aliveAtTheEnd);
  CLogger::SetSink(Holder::Drop, target);
  const int done = target->AppendChildAtXPath("/", "<n>");
  CLogger::SetSink(nullptr, nullptr);
  EXPECT_EQ(0, done);
  EXPECT_EQ(IXMLDOMNode::m_iObjCount + 1, m_aliveAtTheEnd);
}

TEST_F(XMLNodePathEditReleases, Removing_gives_back_what_it_removed_and_the_target) {
  EXPECT_EQ(1, m_document->RemoveChildAtXPath("/r/target"));
  EXPECT_EQ(IXMLDOMNode::m_iObjCount + 1, m_aliveAtTheEnd);
}

TEST_F(XMLNodePathEditReleases, Each_edit_gives_back_all_that_it_holds) {
  IXMLDOMNode* target = At(m_document, {0, 0});
  const int before = IXMLDOMNode::m_iObjCount;
  EXPECT_EQ(1, m_document->AppendChildAtXPath("/r/target", "<n/>"));
  EXPECT_EQ(1, m_document->InsertBeforeXPath("/r/target", "<n/>"));
  EXPECT_EQ(1, target->GetRefCount());
  EXPECT_EQ(1, target->m_pFirstChild->GetRefCount());
  EXPECT_EQ(1, Root(m_document)->m_pFirstChild->GetRefCount());
  EXPECT_EQ(before + 2, IXMLDOMNode::m_iObjCount);
}

}  // namespace
