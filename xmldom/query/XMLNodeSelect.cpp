// Selecting nodes with a path. SelectNodes walks the steps from one context or, below "//", from
// every element; SelectSingleNode is SingleNodeSearch. Tested by tests/query/XMLNodeSelect_test.cpp
// and, beside a plain implementation, by tests/soak/Selection_test.cpp.

#include <xmldom/base/Text.h>
#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/dom/XMLNodeList.h>
#include <xmldom/query/SingleNodeSearch.h>
#include <xmldom/query/StepWalk.h>
#include <xmldom/query/XPathList.h>

namespace {

using xmldom::SideTrail;
using xmldom::WalkChain;
using xmldom::XPathSteps;

/// Whether path debugging was asked for; nothing reads it.
bool l_bDebugXPATH = false;

/// Adds the nodes that the steps from `step` on select below a node. When there are no such steps,
/// that is the node itself.
void Collect(IXMLDOMNode* node, const XPathSteps& steps, IXMLDOMNodeList* result, int step) {
  if (step == steps.Count()) {
    result->Add(node);
  } else {
    xmldom::WalkSteps(node->m_pFirstChild, steps, step, result);
  }
}

/// Takes every element it visits for a context: collects what the steps select below it.
class ContextVisitor : public xmldom::PreOrderVisitor {
 public:
  ContextVisitor(const XPathSteps& steps, IXMLDOMNodeList* result)
      : m_steps(steps), m_result(result) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t) {
    if (node->m_eNodeType != NODE_ELEMENT) return nullptr;
    Collect(node, m_steps, m_result, 0);
    return node->m_pFirstChild;
  }

 private:
  const XPathSteps& m_steps;
  IXMLDOMNodeList* m_result;
};

/// Collects below a node and below each element under it. All steps go down one level, so that a
/// node is selected from one of these at most.
void CollectEverywhere(IXMLDOMNode* node, const XPathSteps& steps, IXMLDOMNodeList* result) {
  if (steps.Count() == 1 && !steps.At(0).MayReport()) {
    xmldom::WalkEverywhere(node->m_pFirstChild, steps.At(0), result);
    return;
  }
  Collect(node, steps, result, 0);
  ContextVisitor visitor(steps, result);
  WalkChain<SideTrail>(node->m_pFirstChild, visitor);
}

/// Where a path starts; null for an absolute path when the node has no owner.
IXMLDOMNode* StartOf(IXMLDOMNode* node, const CXPathList& list) {
  return list.m_bAbsolute ? node->m_pOwnerDocument : node;
}

IXMLDOMNode* WithReference(IXMLDOMNode* node) {
  if (node != nullptr) node->AddRef();
  return node;
}

IXMLDOMNode* SearchFirst(IXMLDOMNode* node, CXPathList& list, int step) {
  const XPathSteps steps(list);
  return WithReference(xmldom::SingleNodeSearch(steps, list.m_bDescendant).Run(node, step));
}

IXMLDOMNodeList* SelectAll(IXMLDOMNode* node, const char* path) {
  CXPathList list;
  list.ParsePath(path);
  IXMLDOMNodeList* result = new IXMLDOMNodeList;
  try {
    IXMLDOMNode* start = StartOf(node, list);
    const XPathSteps steps(list);
    if (start == nullptr) {
      // The list stays empty.
    } else if (list.m_bDescendant) {
      CollectEverywhere(start, steps, result);
    } else {
      Collect(start, steps, result, 0);
    }
  } catch (...) {
    Release(result);
    throw;
  }
  return result;
}

IXMLDOMNode* SelectFirst(IXMLDOMNode* node, const char* path) {
  CXPathList list;
  list.ParsePath(path);
  if (path != nullptr && xmldom::SameString(path, "/")) return WithReference(node);
  IXMLDOMNode* start = StartOf(node, list);
  return start == nullptr ? nullptr : SearchFirst(start, list, -1);
}

}  // namespace

IXMLDOMNodeList* IXMLDOMNode::SelectNodes(const char* path) { return SelectAll(this, path); }

IXMLDOMNodeList* IXMLDOMNode::SelectNodes(_bstr_t path) { return SelectAll(this, path); }

HRESULT IXMLDOMNode::selectNodes2(char* path, IXMLDOMNodeList** out) {
  if (out == nullptr) return E_ARGUMENT;
  *out = SelectNodes(_bstr_t(path));
  return S_OK;
}

IXMLDOMNode* IXMLDOMNode::SelectSingleNode(const char* path) { return SelectFirst(this, path); }

IXMLDOMNode* IXMLDOMNode::SelectSingleNode(_bstr_t path) { return SelectFirst(this, path); }

HRESULT IXMLDOMNode::selectSingleNode2(const char* path, IXMLDOMNode** out) {
  if (out == nullptr) return E_ARGUMENT;
  *out = SelectSingleNode(_bstr_t(path));
  return *out != nullptr ? S_OK : S_FALSE;
}

void IXMLDOMNode::SelectNodesHelper(IXMLDOMNode* node, CXPathList& list, IXMLDOMNodeList* result,
                                    int step) {
  if (node == nullptr || result == nullptr) return;
  Collect(node, XPathSteps(list), result, step);
}

void IXMLDOMNode::SelectNodesTraverse(IXMLDOMNode* node, CXPathList& list,
                                      IXMLDOMNodeList* result) {
  if (node == nullptr || result == nullptr) return;
  CollectEverywhere(node, XPathSteps(list), result);
}

IXMLDOMNode* IXMLDOMNode::SelectSingleNodeHelper(IXMLDOMNode* node, CXPathList& list, int step) {
  return node == nullptr ? nullptr : SearchFirst(node, list, step);
}

void SetDebugXPATH(bool on) {
  CLogger::PostLogEventF(xmldom::kLogDom, xmldom::kSeverityDebug,
                         "XPathDebug has been %s, but DOM was built without DBG_XPATH",
                         on ? "enabled" : "disabled");
  __atomic_store_n(&l_bDebugXPATH, on, __ATOMIC_RELAXED);
}
