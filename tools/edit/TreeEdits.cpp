// Makes edits in a tree. Where the library has no call, for taking attributes out and for names,
// the public links and names of the nodes are changed. Tested by tests/tool/Edit_test.cpp.

#include <tools/edit/TreeEdits.h>

#include <tools/document/DocumentLoad.h>
#include <tools/edit/EditStep.h>
#include <tools/edit/Fragment.h>

#include <xmldom/dom/XMLDocument.h>
#include <xmldom/support/MemFile.h>

#include <cassert>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <set>
#include <stdexcept>
#include <unordered_map>
#include <utility>

namespace tool {

namespace {

/// The links that lead to children of elements. The library searches the children for each of its
/// edits, which many edits of one element would make quadratic; so many are made by hand.
/// Bad input: children of one parent have to be asked for in their order.
/// Cost: all calls together are linear in the children of the parents.
class ChildLinks {
 public:
  /// Result: the link to a child of an element, in the element or in the child before it.
  IXMLDOMNode** To(const IXMLDOMNode* child) {
    IXMLDOMNode* parent = child->m_pParent;
    IXMLDOMNode**& link = m_links.emplace(parent, &parent->m_pFirstChild).first->second;
    while (*link != child) link = &(*link)->m_pNextSibling;
    return link;
  }

 private:
  std::unordered_map<const IXMLDOMNode*, IXMLDOMNode**>
      m_links;  // where each parent's are searched
};

/// Takes a node out of its chain. Result: the node, whose reference is the caller's.
XMLPtr<IXMLDOMNode> TakeOut(IXMLDOMNode** link) {
  IXMLDOMNode* node = *link;
  *link = node->m_pNextSibling;
  node->m_pNextSibling = nullptr;
  return xmldom::Adopt(node);
}

/// Puts a node that hangs nowhere before the one that a link leads to.
void PutIn(IXMLDOMNode** link, XMLPtr<IXMLDOMNode> node, IXMLDOMNode* parent) {
  node->m_pParent = nullptr;
  node->RecurseSetDocument(parent->m_pOwnerDocument);
  node->m_pParent = parent;
  node->m_pNextSibling = *link;
  *link = node.Detach();
}

/// Calls `place` with each target and a copy of the fragment for it.
void PlaceCopies(EditStep& step,
                 const std::function<void(IXMLDOMNode* copy, IXMLDOMNode* target)>& place) {
  LoadCopies(step);
  IXMLDOMNode* copies = step.copies->m_pFirstChild;
  for (const EditTarget& target : step.targets) place(copies->m_pFirstChild, target.node.Get());
}

/// Does the same where there are many targets: calls `place` with the copy, which hangs nowhere,
/// and with the link to the target.
void LinkCopies(EditStep& step,
                const std::function<void(XMLPtr<IXMLDOMNode> copy, IXMLDOMNode** link)>& place) {
  LoadCopies(step);
  IXMLDOMNode* copies = step.copies->m_pFirstChild;
  ChildLinks links;
  for (const EditTarget& target : step.targets) {
    place(TakeOut(&copies->m_pFirstChild), links.To(target.node.Get()));
  }
}

bool AreMany(const EditStep& step) { return step.targets.size() > 1; }

/// Throws when a text could not be stored, which the checks of operands have left no reason for.
void Require(const xmldom::StoreResult& result) {
  if (!result) throw std::logic_error(result.Reason());
}

/// The link in the chain of attributes that leads to the one of this name, or that ends the chain.
IXMLDOMNode** LinkTo(IXMLDOMNode* element, const std::string& name) {
  IXMLDOMNode** link = &element->m_pFirstAttribute;
  while (*link != nullptr && name != (*link)->m_pszNodeName) link = &(*link)->m_pNextSibling;
  return link;
}

/// Whether an attribute stands in the tag of its element.
bool IsWritten(const EditStep& step, const IXMLDOMNode* attribute) {
  const SourcePlace* place = step.PlaceOf(attribute);
  return place != nullptr && place->IsWritten();
}

/// Moves an attribute that is new in the tag of its element behind the others that stand there, and
/// so before the default attributes, where a load puts it.
void MoveBehindWritten(const EditStep& step, IXMLDOMNode* element, const std::string& name) {
  XMLPtr<IXMLDOMNode> attribute = TakeOut(LinkTo(element, name));
  IXMLDOMNode** link = &element->m_pFirstAttribute;
  while (*link != nullptr && IsWritten(step, *link)) link = &(*link)->m_pNextSibling;
  attribute->m_pNextSibling = *link;
  *link = attribute.Detach();
}

/// Loads an element without attributes of its own, which so has all those that the document type
/// supplies for its name. It is the child of the root element.
XMLPtr<IXMLDOMDocument2> SampleOf(const EditStep& step, const std::string& name) {
  LoadProblem problem;
  XMLPtr<IXMLDOMDocument2> sample =
      LoadText(step.DocumentType() + "<x><" + name + "/></x>", problem);
  if (sample == nullptr) throw std::logic_error(problem.reason);
  return sample;
}

/// Gives an element an attribute whose value has the form in which a load stores it.
void StoreAttribute(IXMLDOMNode* element, const std::string& name, const char* loaded) {
  Require(xmldom::SetAttribute(element, name.c_str(), std::string()));
  IXMLDOMNode* const attribute = *LinkTo(element, name);
  assert(attribute != nullptr);
  xmldom::ReplaceValue(attribute, loaded);
}

/// Gives an element those attributes of a sample that it lacks, behind its own. They are linked by
/// hand, because the library searches all attributes for each that it adds.
void AddDefaults(IXMLDOMNode* element, const IXMLDOMNode* sample) {
  if (sample->m_pFirstAttribute == nullptr) return;
  std::set<std::string> names;
  IXMLDOMNode** end = &element->m_pFirstAttribute;
  for (; *end != nullptr; end = &(*end)->m_pNextSibling) names.insert((*end)->m_pszNodeName);
  for (const IXMLDOMNode* supplied = sample->m_pFirstAttribute; supplied != nullptr;
       supplied = supplied->m_pNextSibling) {
    if (names.count(supplied->m_pszNodeName) != 0) continue;
    *end = new IXMLDOMNode(element->m_pOwnerDocument, supplied->m_pszNodeName, supplied->m_pszValue,
                           NODE_ATTRIBUTE);
    (*end)->m_pParent = element;
    end = &(*end)->m_pNextSibling;
  }
}

/// The form in which a load stores the value of an attribute.
std::string LoadedForm(const std::string& value) {
  CMemFile form(static_cast<unsigned int>(value.size()) + 64);
  form.WriteStrEntities(value.c_str());
  return std::string(form.GetAsStr(), form.m_uLength);
}

}  // namespace

void ChangeAppend(EditStep& step) {
  PlaceCopies(step,
              [](IXMLDOMNode* copy, IXMLDOMNode* target) { target->appendChild(copy, nullptr); });
}

void ChangeInsertBefore(EditStep& step) {
  if (AreMany(step)) {
    LinkCopies(step, [](XMLPtr<IXMLDOMNode> copy, IXMLDOMNode** link) {
      PutIn(link, std::move(copy), (*link)->m_pParent);
    });
    return;
  }
  PlaceCopies(step, [](IXMLDOMNode* copy, IXMLDOMNode* target) {
    target->m_pParent->insertBefore(copy, target, nullptr);
  });
}

void ChangeInsertAfter(EditStep& step) {
  if (AreMany(step)) {
    LinkCopies(step, [](XMLPtr<IXMLDOMNode> copy, IXMLDOMNode** link) {
      PutIn(&(*link)->m_pNextSibling, std::move(copy), (*link)->m_pParent);
    });
    return;
  }
  PlaceCopies(step, [](IXMLDOMNode* copy, IXMLDOMNode* target) {
    IXMLDOMNode* parent = target->m_pParent;
    if (target->m_pNextSibling != nullptr) {
      parent->insertBefore(copy, target->m_pNextSibling, nullptr);
    } else {
      parent->appendChild(copy, nullptr);
    }
  });
}

void ChangeReplace(EditStep& step) {
  if (AreMany(step)) {
    LinkCopies(step, [](XMLPtr<IXMLDOMNode> copy, IXMLDOMNode** link) {
      IXMLDOMNode* parent = (*link)->m_pParent;
      TakeOut(link);
      PutIn(link, std::move(copy), parent);
    });
    return;
  }
  PlaceCopies(step, [](IXMLDOMNode* copy, IXMLDOMNode* target) {
    XMLPtr<IXMLDOMNode> replaced;
    target->m_pParent->replaceChild(copy, target, replaced.Out());
  });
}

void ChangeRemove(EditStep& step) {
  if (AreMany(step)) {
    ChildLinks links;
    for (const EditTarget& target : step.targets) TakeOut(links.To(target.node.Get()));
    return;
  }
  const EditTarget& target = step.targets.front();
  XMLPtr<IXMLDOMNode> removed;
  target.node->m_pParent->removeChild(target.node.Get(), removed.Out());
}

void ChangeSetText(EditStep& step) {
  for (const EditTarget& target : step.targets) {
    Require(xmldom::SetText(target.node, step.edit.operands[1]));
    if (step.encoding.FindForeign(step.edit.operands[1]) == std::string::npos) continue;
    target.node->SetValue(step.encoding.Escape(step.edit.operands[1]).c_str());
  }
}

void ChangeSetAttribute(EditStep& step) {
  const std::string& name = step.edit.operands[1];
  const std::string value = LoadedForm(step.edit.operands[2]);
  for (const EditTarget& target : step.targets) {
    const IXMLDOMNode* present = *LinkTo(target.node.Get(), name);
    const bool isNew = present == nullptr || !IsWritten(step, present);
    StoreAttribute(target.node.Get(), name, value.c_str());
    if (isNew) MoveBehindWritten(step, target.node.Get(), name);
  }
}

void ChangeRemoveAttribute(EditStep& step) {
  for (const EditTarget& target : step.targets) {
    TakeOut(LinkTo(target.node.Get(), step.edit.operands[1]));
  }
}

void ChangeRename(EditStep& step) {
  const XMLPtr<IXMLDOMDocument2> sample = SampleOf(step, step.edit.operands[1]);
  for (const EditTarget& target : step.targets) {
    char* name = strdup(step.edit.operands[1].c_str());
    if (name == nullptr) throw std::bad_alloc();
    std::free(target.node->m_pszNodeName);
    target.node->m_pszNodeName = name;
    for (IXMLDOMNode** link = &target.node->m_pFirstAttribute; *link != nullptr;) {
      if (IsWritten(step, *link)) {
        link = &(*link)->m_pNextSibling;
      } else {
        TakeOut(link);
      }
    }
    AddDefaults(target.node.Get(), sample->m_pFirstChild->m_pFirstChild);
  }
}

}  // namespace tool
