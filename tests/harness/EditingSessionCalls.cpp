#include "harness/EditingSession.h"
#include "harness/Thrown.h"

namespace {

const char kContent[] = "<n v='1'>t<m w='2'/></n>";
const int kThrown = -1;

HRESULT ResultOf(TreeModel::Result result) {
  if (result == TreeModel::REFUSED) return E_ARGUMENT;
  return result == TreeModel::NOT_FOUND ? S_FALSE : S_OK;
}

const char* TextOf(const TreeModel::Value& value) {
  return value.isThere ? value.text.c_str() : nullptr;
}

}  // namespace

// ---- Building

std::string EditingSession::MakeNode() {
  const Id owner = m_random.Below(3) == 0 ? kNone : m_documents[m_random.Below(2)];
  const int type = 1 + m_random.Below(3);
  const std::string name = AnyName();
  const TreeModel::Value value = AnyValue();
  const Id node = m_model.NewNode(type, name, value, owner);
  Know(node, new IXMLDOMNode(owner == kNone ? nullptr : RealDocument(owner), name.c_str(),
                             TextOf(value), static_cast<DOMNodeType>(type)));
  return "new node";
}

std::string EditingSession::AddChild() {
  const Id node = AnyNode();
  const std::string name = AnyName();
  const TreeModel::Value value = AnyValue();
  Know(m_model.AddChild(node, name, value), Real(node)->AddChild(name.c_str(), TextOf(value)));
  return "AddChild to " + Show(node);
}

std::string EditingSession::AddSibling() {
  const Id node = AnyNode();
  const TreeModel::Record& record = m_model.At(node);
  if (record.parent == kNone || record.type == TreeModel::ATTRIBUTE) return "";
  const std::string name = AnyName();
  const TreeModel::Value value = AnyValue();
  Know(m_model.AddSibling(node, name, value), Real(node)->AddSibling(name.c_str(), TextOf(value)));
  return "AddSibling of " + Show(node);
}

std::string EditingSession::AddText() {
  const Id node = AnyNode();
  const TreeModel::Value value = AnyValue();
  m_model.AddText(node, value);
  Expect(Real(node)->AddTextChild(TextOf(value)) == 1, "result");
  return "AddTextChild to " + Show(node);
}

std::string EditingSession::AddAttribute() {
  const Id node = AnyNode();
  const std::string name = AnyName();
  const TreeModel::Value value = AnyValue();
  const bool isNew = m_model.FindAttribute(node, name) == kNone;
  if (m_random.Below(2) == 0) {
    const bool added = m_model.AddAttribute(node, name, value);
    Expect(Real(node)->AddAttribute(name.c_str(), TextOf(value)) == (added ? 1 : 0), "result");
    m_error = isNew ? 0 : 1;
    return "AddAttribute to " + Show(node);
  }
  m_model.SetAttribute(node, name, value);
  Expect(Real(node)->SetAttribute(name.c_str(), TextOf(value)) == 1, "result");
  if (isNew) m_error = 0;
  return "SetAttribute of " + Show(node);
}

std::string EditingSession::AppendText() {
  const Id node = AnyNode();
  if (m_model.At(node).value.text.size() > 100) return "";
  const int length = m_random.Below(6) - 1;
  m_model.AppendValue(node, std::string("xyz").substr(0, length < 0 ? 0u : std::size_t(length)));
  Real(node)->AppendValue("xyz", length);
  return "AppendValue to " + Show(node);
}

std::string EditingSession::SetValue() {
  const Id node = AnyNode();
  if (!IsSoundBelow(node)) return "";
  const TreeModel::Value value = AnyValue();
  if (!m_model.SetValue(node, value)) {
    m_events.push_back("IXMLDOMNode::SetValue - SetValue called on non-leaf node");
  }
  Real(node)->SetValue(TextOf(value));
  return "SetValue of " + Show(node);
}

// ---- Editing

template <class Call>
void EditingSession::RunEdit(Result expected, Id expectedOut, Call call) {
  ++m_seen[expected];
  IXMLDOMNode* out = nullptr;
  IXMLDOMNode** wanted = m_random.Below(3) == 0 ? nullptr : &out;
  HRESULT result = S_OK;
  const std::string thrown = Thrown([&] { result = call(wanted); });
  ExpectThrown(expected == TreeModel::THROWN, thrown);
  Expect(result == ResultOf(expected), "result " + std::to_string(result));
  const bool isHandedOut = expected == TreeModel::DONE && wanted != nullptr;
  Expect(out == (isHandedOut ? Real(expectedOut) : nullptr), "out-pointer");
}

std::string EditingSession::Append() {
  const Id parent = AnyNode();
  const Id node = AnyNewChild();
  const Id content = m_model.Content(node);
  RunEdit(m_model.Append(parent, node), content,
          [&](IXMLDOMNode** out) { return Real(parent)->appendChild(Real(node), out); });
  return "appendChild of " + Show(node) + " to " + Show(parent);
}

std::string EditingSession::Insert() {
  const Id parent = AnyNode();
  const Id node = AnyNewChild();
  const Id reference = AnyChildOf(parent);
  const Id content = m_model.Content(node);
  const Result expected = m_model.InsertBefore(parent, node, reference);
  // The parent goes with the siblings that followed the new child, when they alone have kept it.
  RunEdit(expected, m_model.IsAlive(parent) ? content : kNone, [&](IXMLDOMNode** out) {
    return Real(parent)->insertBefore(Real(node), Real(reference), out);
  });
  return "insertBefore of " + Show(node) + " to " + Show(parent) + " before " + Show(reference);
}

std::string EditingSession::Replace() {
  const Id parent = AnyNode();
  const Id node = AnyNewChild();
  const Id old = AnyChildOf(parent);
  RunEdit(m_model.Replace(parent, node, old), old, [&](IXMLDOMNode** out) {
    return Real(parent)->replaceChild(Real(node), Real(old), out);
  });
  return "replaceChild of " + Show(old) + " in " + Show(parent) + " by " + Show(node);
}

std::string EditingSession::Remove() {
  const Id parent = AnyNode();
  const Id old = AnyChildOf(parent);
  RunEdit(m_model.Remove(parent, old), old,
          [&](IXMLDOMNode** out) { return Real(parent)->removeChild(Real(old), out); });
  return "removeChild of " + Show(old) + " in " + Show(parent);
}

std::string EditingSession::TakeOut() {
  const Id node = AnyNode();
  const Result expected = m_model.TakeOut(node);
  ++m_seen[expected];
  const std::string thrown = Thrown([&] { Real(node)->RemoveNodeFromTree(); });
  ExpectThrown(expected == TreeModel::THROWN, thrown);
  return "RemoveNodeFromTree of " + Show(node);
}

// ---- Editing at a path

EditingSession::Id EditingSession::MakeContent(Id owner) {
  const Id node = m_model.NewNode(TreeModel::ELEMENT, "n", TreeModel::Value{false, ""}, owner);
  m_model.AddAttribute(node, "v", TreeModel::Value{true, "1"});
  m_model.AddText(node, TreeModel::Value{true, "t"});
  const Id child = m_model.AddChild(node, "m", TreeModel::Value{false, ""});
  m_model.AddAttribute(child, "w", TreeModel::Value{true, "2"});
  m_model.Drop(child);
  m_model.Adopt(node, owner);
  m_error = 0;
  return node;
}

int EditingSession::PredictReplace(Id target) {
  const Id parent = m_model.At(target).parent;
  if (parent == kNone) return 0;
  const Id content = MakeContent(m_model.At(parent).owner);
  if (m_model.Replace(parent, content, target) == TreeModel::THROWN) {
    m_model.Drop(content);
    m_events.push_back("IXMLDOMNode::ReplaceChildAtXPath");
    return kThrown;
  }
  m_model.Drop(target);
  return 1;
}

int EditingSession::PredictAppend(Id target) {
  m_model.Append(target, MakeContent(m_model.At(target).owner));
  return 1;
}

int EditingSession::PredictInsert(Id target) {
  const Id parent = m_model.At(target).parent;
  if (parent == kNone) return 0;
  const Id content = MakeContent(m_model.At(parent).owner);
  if (m_model.InsertBefore(parent, content, target) != TreeModel::DONE) m_model.Drop(content);
  return 1;
}

int EditingSession::PredictRemove(Id target) {
  const Id parent = m_model.At(target).parent;
  if (parent == kNone) return 0;
  if (m_model.Remove(parent, target) == TreeModel::THROWN) {
    m_model.Hold(target);  // the exception leaves with the reference of the call
    return kThrown;
  }
  m_model.Drop(target);
  return 1;
}

std::string EditingSession::EditAtPath() {
  const struct {
    const char* name;
    int (EditingSession::*predict)(Id target);
    int (*run)(IXMLDOMNode* node, const char* path);
  } edits[] = {
      {"ReplaceChildAtXPath", &EditingSession::PredictReplace,
       [](IXMLDOMNode* node, const char* path) {
         return node->ReplaceChildAtXPath(path, kContent);
       }},
      {"AppendChildAtXPath", &EditingSession::PredictAppend,
       [](IXMLDOMNode* node, const char* path) {
         return node->AppendChildAtXPath(path, kContent);
       }},
      {"RemoveChildAtXPath", &EditingSession::PredictRemove,
       [](IXMLDOMNode* node, const char* path) { return node->RemoveChildAtXPath(path); }},
      {"InsertBeforeXPath", &EditingSession::PredictInsert,
       [](IXMLDOMNode* node, const char* path) { return node->InsertBeforeXPath(path, kContent); }},
  };
  const int kind = m_random.Below(4);
  // An empty path names the node itself; "/" does so too, but for documents and insertions.
  const bool isSlash = kind != 3 && m_random.Below(2) == 0;
  const char* path = isSlash ? "/" : "";
  const Id node = AnyNode();
  const Id target = isSlash ? m_model.Content(node) : node;
  if (!IsSound(target) || !IsSoundBelow(node)) return "";
  const std::string name = edits[kind].name;
  IXMLDOMNode* real = Real(node);
  int expected = 0;
  if (target == kNone) {
    m_events.push_back("IXMLDOMNode::" + name + " - can't resolve xpath /");
  } else {
    expected = (this->*edits[kind].predict)(target);
  }
  int result = kThrown;
  const std::string thrown = Thrown([&] { result = edits[kind].run(real, path); });
  Expect(result == expected, "result " + std::to_string(result));
  ExpectThrown(expected == kThrown, thrown);
  return name + "(\"" + path + "\") of " + Show(node);
}

// ---- References

std::string EditingSession::LookUp() {
  const Id node = AnyNode();
  const Id first = m_model.At(node).firstChild;
  if (first != kNone) m_model.Hold(first);
  Expect(Real(node)->GetfirstChild() == Real(first), "first child");
  return "GetfirstChild of " + Show(node);
}

std::string EditingSession::DropAny() {
  const std::vector<Id> held = Held();
  const Id node = held[static_cast<std::size_t>(m_random.Below(static_cast<int>(held.size())))];
  const bool isDocument = node == m_documents[0] || node == m_documents[1];
  if (isDocument && m_model.At(node).held == 1) return "";
  DropOne(node);
  return "release of " + Show(node);
}

std::string EditingSession::Clear() {
  const Id node = AnyNode();
  m_model.Clear(node);
  Real(node)->ClearNode(false);
  return "ClearNode of " + Show(node);
}

std::string EditingSession::Renew() {
  Id& document = m_documents[m_random.Below(2)];
  const Id old = document;
  document = MakeDocument();
  for (Id node : Held()) {
    const bool isKept =
        node == m_documents[0] || node == m_documents[1] || (node != old && m_random.Below(4) == 0);
    while (!isKept && m_model.IsAlive(node) && m_model.At(node).held > 0) DropOne(node);
  }
  return "release of document " + Show(old) + " and others";
}
