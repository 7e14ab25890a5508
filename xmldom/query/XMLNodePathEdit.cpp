// Edits whose target is named by a path: the content is parsed into a temporary document, and its
// root is put in place with the ordinary edits. Tested by tests/query/XMLNodePathEdit_test.cpp.

#include <xmldom/base/Text.h>
#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/NodeContent.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/ptr/XMLPtr.h>
#include <xmldom/support/LogException.h>

#include <memory>

namespace {

using xmldom::SameString;

/// The messages that an edit logs when it cannot use its arguments.
struct EditTexts {
  const char* noPath;
  const char* noContent;
  const char* unloadable;
};

const EditTexts l_replaceTexts = {
    "IXMLDOMNode::ReplaceChildAtXPath called with NULL pcszXPath",
    "IXMLDOMNode::ReplaceChildAtXPath called with NULL pcszContent",
    "IXMLDOMNode::ReplaceChildAtXPath - can't load replacement into DOM",
};

const EditTexts l_appendTexts = {
    "IXMLDOMNode::AppendChildAtXPath called with NULL pcszXPath",
    "IXMLDOMNode::AppendChildAtXPath called with NULL pcszContent",
    "IXMLDOMNode::AppendChildAtXPath - can't load append string into DOM",
};

const EditTexts l_insertTexts = {
    "IXMLDOMNode::InsertBeforeXPath called with NULL pcszXPath",
    "IXMLDOMNode::InsertBeforeXPath called with NULL pcszContent",
    "IXMLDOMNode::InsertBeforeXPath - can't load append string into DOM",
};

/// Logs an argument that is missing. Result: whether it is there.
bool IsGiven(const char* argument, const char* message) {
  if (argument != nullptr) return true;
  CLogger::PostLogEventF(xmldom::kLogData, xmldom::kSeverityError, "%s", message);
  return false;
}

/// Logs the first argument that is missing. Result: whether both are there.
XMLDOM_NOINLINE bool AreGiven(const char* path, const char* content, const EditTexts& texts) {
  return IsGiven(path, texts.noPath) && IsGiven(content, texts.noContent);
}

/// Logs, with the XML of a node, a path that leads to nothing to edit. Result: that of the edit.
XMLDOM_NOINLINE int LogPath(IXMLDOMNode* node, const char* format, const char* path) {
  CLogger::PostLogEventFB(xmldom::kLogDom, xmldom::kSeverityError, format, node->Getxml(), path);
  return 0;
}

/// Throws what tells that a member has failed.
[[noreturn]] XMLDOM_NOINLINE void ThrowFailed(const char* member, IXMLDOMNode* node) {
  throw Exception(member, "Call failed", node->Getxml());
}

/// The node that a path names, with a reference for the caller, or null.
IXMLDOMNode* ResolveTarget(IXMLDOMNode* node, const char* path) {
  if (!SameString(path, "/")) return node->SelectSingleNode(path);
  if (xmldom::IsOwnDocument(node)) return node->GetfirstChild();
  node->AddRef();
  return node;
}

/// Sets the owner of all attributes of the nodes it visits.
class AttributeOwnerSetter : public xmldom::PreOrderVisitor {
 public:
  explicit AttributeOwnerSetter(IXMLDOMDocument2* owner) : m_owner(owner) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t) {
    for (IXMLDOMNode* attribute = node->m_pFirstAttribute; attribute != nullptr;
         attribute = attribute->m_pNextSibling) {
      attribute->m_pOwnerDocument = m_owner;
    }
    return node->m_pFirstChild;
  }

 private:
  IXMLDOMDocument2* m_owner;
};

/// The content of an edit, parsed into a temporary document, from which the edit takes it. Edits
/// declare it before their target, so that the target is released first.
class Fragment {
 public:
  Fragment() : m_document(nullptr), m_content(nullptr) {}

  ~Fragment() {
    // An edit that threw half-way can have taken the content out without putting it in place.
    if (m_content != nullptr && m_content->m_pParent == nullptr) Release(m_content);
    Release(m_document);
  }

  Fragment(const Fragment&) = delete;
  Fragment& operator=(const Fragment&) = delete;

  /// Makes the document and parses the content, for a place below `parent`. Result: false when it
  /// does not parse, which is logged; there is no document then.
  bool Load(const char* content, const IXMLDOMNode* parent, const EditTexts& texts) {
    Create(&m_document);
    if (m_document->loadXML(content) == VARIANT_FALSE) {
      CLogger::PostLogEvent(xmldom::kLogDom, xmldom::kSeverityError, texts.unloadable, content);
      Release(m_document);
      return false;
    }
    m_content = m_document->m_pFirstChild;
    // Attributes keep the owner that they were made with, which dies with the edit.
    AttributeOwnerSetter setter(parent->m_pOwnerDocument);
    xmldom::WalkChain<xmldom::SideTrail>(m_content, setter);
    return true;
  }

  IXMLDOMDocument2* Document() const { return m_document; }

  /// Leaves everything to whoever catches the exception that is about to be thrown.
  void Abandon() {
    m_document = nullptr;
    m_content = nullptr;
  }

 private:
  IXMLDOMDocument2* m_document;
  IXMLDOMNode* m_content;  // borrowed
};

}  // namespace

int IXMLDOMNode::ReplaceChildAtXPath(const char* pcszXPath, const char* pcszContent)
    XMLDOM_THROWS(CLogException*) {
  const EditTexts& texts = l_replaceTexts;
  if (!AreGiven(pcszXPath, pcszContent, texts)) return 0;
  Fragment fragment;
  const XMLPtr<IXMLDOMNode> target = xmldom::Adopt(ResolveTarget(this, pcszXPath));
  if (!target) {
    CLogger::PostLogEventF(xmldom::kLogDom, xmldom::kSeverityError,
                           "IXMLDOMNode::ReplaceChildAtXPath - can't resolve xpath %s", pcszXPath);
    return 0;
  }
  IXMLDOMNode* parent = target->m_pParent;
  if (parent == nullptr) return 0;
  if (!fragment.Load(pcszContent, parent, texts)) return 0;

  IXMLDOMNode* replaced = nullptr;
  try {
    if (parent->replaceChild(fragment.Document(), target.Get(), &replaced) < 0) {
      ThrowFailed("IXMLDOMNode::replaceChild", parent);
    }
  } catch (CLogException* thrown) {
    std::unique_ptr<CLogException> exception(thrown);
    exception->LogMessage(xmldom::kExceptionLogType, xmldom::kExceptionLogSeverity,
                          "IXMLDOMNode::ReplaceChildAtXPath");
    throw exception.release();
  }
  Release(replaced);
  return 1;
}

int IXMLDOMNode::AppendChildAtXPath(const char* pcszXPath, const char* pcszContent)
    XMLDOM_THROWS(CLogException*) {
  const EditTexts& texts = l_appendTexts;
  if (!AreGiven(pcszXPath, pcszContent, texts)) return 0;
  Fragment fragment;
  XMLPtr<IXMLDOMNode> target = xmldom::Adopt(ResolveTarget(this, pcszXPath));
  if (!target) {
    return LogPath(this, "IXMLDOMNode::AppendChildAtXPath - can't resolve xpath %s", pcszXPath);
  }
  if (!fragment.Load(pcszContent, target.Get(), texts)) return 0;

  IXMLDOMNode* appended = nullptr;
  if (target->appendChild(fragment.Document(), &appended) < 0) {
    // Deliberate: with this exception the references of the call stay taken.
    fragment.Abandon();
    ThrowFailed("IXMLDOMNode::appendChild", target.Detach());
  }
  Release(appended);
  return 1;
}

int IXMLDOMNode::InsertBeforeXPath(const char* pcszXPath, const char* pcszContent)
    XMLDOM_THROWS(CLogException*) {
  const EditTexts& texts = l_insertTexts;
  if (!AreGiven(pcszXPath, pcszContent, texts)) return 0;
  if (SameString(pcszXPath, "/") || SameString(pcszXPath, "/*")) {
    return LogPath(this,
                   "IXMLDOMNode::InsertBeforeXPath - can't insert before document node, path = %s",
                   pcszXPath);
  }
  Fragment fragment;
  XMLPtr<IXMLDOMNode> target = xmldom::Adopt(SelectSingleNode(pcszXPath));
  if (!target) {
    return LogPath(this, "IXMLDOMNode::InsertBeforeXPath - can't resolve xpath %s", pcszXPath);
  }
  IXMLDOMNode* parent = target->m_pParent;
  if (parent == nullptr) return 0;
  if (!fragment.Load(pcszContent, parent, texts)) return 0;

  if (parent->insertBefore(fragment.Document(), target.Get(), nullptr) < 0) {
    // Deliberate: with this exception the references of the call stay taken.
    fragment.Abandon();
    target.Detach();
    ThrowFailed("IXMLDOMNode::insertBefore", parent);
  }
  return 1;
}

int IXMLDOMNode::RemoveChildAtXPath(const char* pcszXPath) XMLDOM_THROWS(CLogException*) {
  if (!IsGiven(pcszXPath, "IXMLDOMNode::RemoveChildAtXPath called with NULL pcszXPath")) return 0;
  XMLPtr<IXMLDOMNode> target = xmldom::Adopt(ResolveTarget(this, pcszXPath));
  if (!target) {
    return LogPath(this, "IXMLDOMNode::RemoveChildAtXPath - can't resolve xpath %s", pcszXPath);
  }
  IXMLDOMNode* parent = target->m_pParent;
  if (parent == nullptr) return 0;

  // Deliberate: with an exception of the edit the reference of the call stays taken.
  IXMLDOMNode* child = target.Detach();
  IXMLDOMNode* removed = nullptr;
  if (parent->removeChild(child, &removed) < 0) {
    ThrowFailed("IXMLDOMNode::removeChild", parent);
  }
  Release(removed);
  Release(child);
  return 1;
}
