#include "plain/PlainPathEdit.h"

#include <xmldom/support/LogException.h>
#include <xmldom/xmldom.h>

#include <cstring>
#include <string>

namespace plain {

namespace {

bool IsDocument(const IXMLDOMNode* node) {
  return node->m_pOwnerDocument == static_cast<const void*>(node);
}

bool IsMissing(const char* argument, const std::string& member, const char* name) {
  if (argument != nullptr) return false;
  CLogger::PostLogEventF(LOG_TYPE_DATA, LOG_SEVERITY_ERROR, "IXMLDOMNode::%s called with NULL %s",
                         member.c_str(), name);
  return true;
}

/// With a reference; "/" stands for this node, and at a document for its first child.
IXMLDOMNode* Resolve(IXMLDOMNode* node, const char* path) {
  if (std::strcmp(path, "/") != 0) return node->SelectSingleNode(path);
  if (IsDocument(node)) return node->GetfirstChild();
  node->AddRef();
  return node;
}

/// Posts that a path names nothing, with the XML of the node.
void ReportUnresolved(IXMLDOMNode* node, const std::string& member, const char* path) {
  const std::string title = "IXMLDOMNode::" + member + " - can't resolve xpath " + path;
  CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, title.c_str(),
                        static_cast<const char*>(static_cast<char*>(node->Getxml())));
}

void SetAttributeOwners(IXMLDOMNode* node, IXMLDOMDocument2* owner) {
  for (; node != nullptr; node = node->m_pNextSibling) {
    for (IXMLDOMNode* attribute = node->m_pFirstAttribute; attribute != nullptr;
         attribute = attribute->m_pNextSibling) {
      attribute->m_pOwnerDocument = owner;
    }
    SetAttributeOwners(node->m_pFirstChild, owner);
  }
}

/// A temporary document with the content, whose attributes name `owner`; null when it does not
/// parse.
IXMLDOMDocument2* LoadContent(const char* content, IXMLDOMDocument2* owner, const char* message) {
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  if (document->loadXML(content) == VARIANT_FALSE) {
    CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, message, content);
    document->RealRelease();
    return nullptr;
  }
  SetAttributeOwners(document->m_pFirstChild, owner);
  return document;
}

}  // namespace

int ReplaceChildAtXPath(IXMLDOMNode* node, const char* path, const char* content) {
  if (IsMissing(path, "ReplaceChildAtXPath", "pcszXPath")) return 0;
  if (IsMissing(content, "ReplaceChildAtXPath", "pcszContent")) return 0;
  IXMLDOMNode* target = Resolve(node, path);
  if (target == nullptr) {
    CLogger::PostLogEventF(LOG_TYPE_DOM, LOG_SEVERITY_ERROR,
                           "IXMLDOMNode::ReplaceChildAtXPath - can't resolve xpath %s", path);
    return 0;
  }
  IXMLDOMNode* parent = target->m_pParent;
  IXMLDOMDocument2* document = nullptr;
  if (parent != nullptr) {
    document = LoadContent(content, parent->m_pOwnerDocument,
                           "IXMLDOMNode::ReplaceChildAtXPath - can't load replacement into DOM");
  }
  if (document == nullptr) {
    target->RealRelease();
    return 0;
  }
  IXMLDOMNode* root = document->m_pFirstChild;
  IXMLDOMNode* replaced = nullptr;
  try {
    parent->replaceChild(document, target, &replaced);
  } catch (CLogException* thrown) {
    thrown->LogMessage(25, 1, "IXMLDOMNode::ReplaceChildAtXPath");
    target->RealRelease();
    // The root has been taken out of its document, and stands nowhere.
    if (root->m_pParent == nullptr) root->RealRelease();
    document->RealRelease();
    throw;
  }
  replaced->RealRelease();
  target->RealRelease();
  document->RealRelease();
  return 1;
}

int AppendChildAtXPath(IXMLDOMNode* node, const char* path, const char* content) {
  if (IsMissing(path, "AppendChildAtXPath", "pcszXPath")) return 0;
  if (IsMissing(content, "AppendChildAtXPath", "pcszContent")) return 0;
  IXMLDOMNode* target = Resolve(node, path);
  if (target == nullptr) {
    ReportUnresolved(node, "AppendChildAtXPath", path);
    return 0;
  }
  IXMLDOMDocument2* document =
      LoadContent(content, target->m_pOwnerDocument,
                  "IXMLDOMNode::AppendChildAtXPath - can't load append string into DOM");
  if (document == nullptr) {
    target->RealRelease();
    return 0;
  }
  IXMLDOMNode* appended = nullptr;
  target->appendChild(document, &appended);
  appended->RealRelease();
  target->RealRelease();
  document->RealRelease();
  return 1;
}

int InsertBeforeXPath(IXMLDOMNode* node, const char* path, const char* content) {
  if (IsMissing(path, "InsertBeforeXPath", "pcszXPath")) return 0;
  if (IsMissing(content, "InsertBeforeXPath", "pcszContent")) return 0;
  if (std::strcmp(path, "/") == 0 || std::strcmp(path, "/*") == 0) {
    CLogger::PostLogEventFB(
        LOG_TYPE_DOM, LOG_SEVERITY_ERROR,
        "IXMLDOMNode::InsertBeforeXPath - can't insert before document node, path = %s",
        node->Getxml(), path);
    return 0;
  }
  IXMLDOMNode* target = node->SelectSingleNode(path);
  if (target == nullptr) {
    ReportUnresolved(node, "InsertBeforeXPath", path);
    return 0;
  }
  IXMLDOMNode* parent = target->m_pParent;
  IXMLDOMDocument2* document = nullptr;
  if (parent != nullptr) {
    document = LoadContent(content, parent->m_pOwnerDocument,
                           "IXMLDOMNode::InsertBeforeXPath - can't load append string into DOM");
  }
  if (document == nullptr) {
    target->RealRelease();
    return 0;
  }
  parent->insertBefore(document, target, nullptr);
  target->RealRelease();
  document->RealRelease();
  return 1;
}

int RemoveChildAtXPath(IXMLDOMNode* node, const char* path) {
  if (IsMissing(path, "RemoveChildAtXPath", "pcszXPath")) return 0;
  IXMLDOMNode* target = Resolve(node, path);
  if (target == nullptr) {
    ReportUnresolved(node, "RemoveChildAtXPath", path);
    return 0;
  }
  if (target->m_pParent == nullptr) {
    target->RealRelease();
    return 0;
  }
  IXMLDOMNode* removed = nullptr;
  // An exception keeps the reference to the target.
  target->m_pParent->removeChild(target, &removed);
  removed->RealRelease();
  target->RealRelease();
  return 1;
}

}  // namespace plain
