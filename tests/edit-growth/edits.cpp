#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <cstdlib>
#include <string>
#include <vector>

// Edits of a list of children, each done with two numbers of children. Callgrind counts the
// instructions of the functions Count...AtN and Count...At4N.

namespace {

const int kN = 1000;

typedef XMLPtr<IXMLDOMNode> Node;

/// A run that did something else would be counted for nothing.
void Require(bool condition) {
  if (!condition) std::abort();
}

IXMLDOMNode* NewElement() { return new IXMLDOMNode(nullptr, "n", nullptr, NODE_ELEMENT); }

Node NewList(int children) {
  Node list = xmldom::Adopt(NewElement());
  for (int i = 0; i < children; ++i) list->AddChild(NewElement());
  // The C library joins the blocks of earlier lists when a large one is asked for, whose work would
  // count for the edit that happens to do so.
  std::free(std::malloc(100000));
  return list;
}

void RemoveFirst(IXMLDOMNode* list) {
  Node removed;
  Require(list->removeChild(list->m_pFirstChild, removed.Out()) == S_OK);
}

void InsertOneBeforeLast(IXMLDOMNode* list) {
  Node last;
  Require(list->get_lastChild(last.Out()) == S_OK);
  Require(list->insertBefore(NewElement(), last.Get(), nullptr) == S_OK);
}

// ---- What is done. `list` has `count` children.

void AddChild(IXMLDOMNode* list, int count) {
  for (int i = 0; i < count; ++i) xmldom::Adopt(list->AddChild("n", nullptr));
}

void AddTextChild(IXMLDOMNode* list, int count) {
  for (int i = 0; i < count; ++i) list->AddTextChild("t");
}

void AppendChild(IXMLDOMNode* list, int count) {
  for (int i = 0; i < count; ++i) list->appendChild(NewElement(), nullptr);
}

void AddSibling(IXMLDOMNode* list, int count) {
  for (int i = 0; i < count; ++i) xmldom::Adopt(list->m_pFirstChild->AddSibling("n", nullptr));
}

/// Each record has chains of its own, which must not take the place of the long one.
void AddRecords(IXMLDOMNode* list, int count) {
  for (int i = 0; i < count; ++i) {
    const Node record = xmldom::Adopt(list->AddChild("record", nullptr));
    for (const char* name : {"a", "b", "c"}) {
      record->AddAttribute(name, "1");
      xmldom::Adopt(record->AddChild(name, nullptr))->AddTextChild("t");
    }
  }
}

void AddWhileOthersGo(IXMLDOMNode* list, int count) {
  for (int i = 0; i < count; ++i) {
    xmldom::Adopt(list->AddChild("n", nullptr));
    NewList(3);
  }
}

void InsertBeforeLast(IXMLDOMNode* list, int count) {
  for (int i = 0; i < count; ++i) InsertOneBeforeLast(list);
}

void InsertBeforeLastAndAdd(IXMLDOMNode* list, int count) {
  for (int i = 0; i < count; ++i) {
    InsertOneBeforeLast(list);
    list->AddTextChild("t");
  }
}

void RemoveLast(IXMLDOMNode* list, int count) {
  for (int i = 0; i < count; ++i) {
    Node last;
    Node removed;
    Require(list->get_lastChild(last.Out()) == S_OK);
    Require(list->removeChild(last.Get(), removed.Out()) == S_OK);
  }
}

void RemoveInReverse(IXMLDOMNode* list, int count) {
  std::vector<IXMLDOMNode*> children;
  for (IXMLDOMNode* n = list->m_pFirstChild; n != nullptr; n = n->m_pNextSibling) {
    children.push_back(n);
  }
  Require(children.size() == static_cast<std::size_t>(count));
  for (; !children.empty(); children.pop_back()) {
    Node removed;
    Require(list->removeChild(children.back(), removed.Out()) == S_OK);
  }
}

/// The children have children of their own, which are destroyed with them.
void RemoveRecordsInReverse(IXMLDOMNode* list, int count) {
  for (IXMLDOMNode* n = list->m_pFirstChild; n != nullptr; n = n->m_pNextSibling) {
    n->AddTextChild("t");
  }
  RemoveInReverse(list, count);
}

void Backwards(IXMLDOMNode* list, int count) {
  Node child;
  Require(list->get_lastChild(child.Out()) == S_OK);
  for (; count > 1; --count) Require(child->get_previousSibling(child.Out()) == S_OK);
  Require(child->get_previousSibling(child.Out()) == S_FALSE);
}

void Queue(IXMLDOMNode* list, int count) {
  for (int i = 0; i < count; ++i) {
    xmldom::Adopt(list->AddChild("n", nullptr));
    RemoveFirst(list);
  }
}

void QueueOfRecords(IXMLDOMNode* list, int count) {
  for (int i = 0; i < count; ++i) {
    xmldom::Adopt(list->AddChild("n", nullptr))->AddTextChild("t");
    RemoveFirst(list);
  }
}

void ReplaceLast(IXMLDOMNode* list, int count) {
  for (int i = 0; i < count; ++i) {
    Node last;
    Node replaced;
    Require(list->get_lastChild(last.Out()) == S_OK);
    Require(list->replaceChild(NewElement(), last.Get(), replaced.Out()) == S_OK);
  }
}

// ---- Attributes, whose names are compared with each other, are quadratic either way.

std::string NameOf(int i) { return char('A' + i % 26) + std::to_string(i); }

void AddAttributes(IXMLDOMNode* element, int count) {
  for (int i = 0; i < count; ++i) element->AddAttribute(NameOf(i).c_str(), "1");
}

void LookUpAttributes(IXMLDOMNode* element, int count) {
  for (int i = 0; i < count; ++i) {
    Require(xmldom::Adopt(element->GetAttribute(NameOf(count + i).c_str())) == nullptr);
  }
}

}  // namespace

#define XMLDOM_COUNTED(name)                                                       \
  extern "C" __attribute__((noinline)) void Count##name##AtN(IXMLDOMNode* list) {  \
    name(list, kN);                                                                \
  }                                                                                \
  extern "C" __attribute__((noinline)) void Count##name##At4N(IXMLDOMNode* list) { \
    name(list, 4 * kN);                                                            \
  }                                                                                \
  static void Run##name() {                                                        \
    Count##name##AtN(NewList(kN).Get());                                           \
    Count##name##At4N(NewList(4 * kN).Get());                                      \
  }

XMLDOM_COUNTED(AddChild)
XMLDOM_COUNTED(AddTextChild)
XMLDOM_COUNTED(AppendChild)
XMLDOM_COUNTED(AddSibling)
XMLDOM_COUNTED(AddRecords)
XMLDOM_COUNTED(AddWhileOthersGo)
XMLDOM_COUNTED(InsertBeforeLast)
XMLDOM_COUNTED(InsertBeforeLastAndAdd)
XMLDOM_COUNTED(RemoveLast)
XMLDOM_COUNTED(RemoveInReverse)
XMLDOM_COUNTED(RemoveRecordsInReverse)
XMLDOM_COUNTED(Backwards)
XMLDOM_COUNTED(Queue)
XMLDOM_COUNTED(QueueOfRecords)
XMLDOM_COUNTED(ReplaceLast)

extern "C" __attribute__((noinline)) void CountAddAttributes(IXMLDOMNode* element) {
  AddAttributes(element, kN);
}

extern "C" __attribute__((noinline)) void CountLookUpAttributes(IXMLDOMNode* element) {
  LookUpAttributes(element, kN);
}

int main() {
  for (void (*run)() : {RunAddChild, RunAddTextChild, RunAppendChild, RunAddSibling, RunAddRecords,
                        RunAddWhileOthersGo, RunInsertBeforeLast, RunInsertBeforeLastAndAdd,
                        RunRemoveLast, RunRemoveInReverse, RunRemoveRecordsInReverse, RunBackwards,
                        RunQueue, RunQueueOfRecords, RunReplaceLast}) {
    run();
  }
  const Node element = NewList(0);
  CountAddAttributes(element.Get());
  CountLookUpAttributes(element.Get());
  return 0;
}
