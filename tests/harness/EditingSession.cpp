#include "harness/EditingSession.h"

#include <iterator>

#include "harness/Trees.h"

namespace {

const std::size_t kMostNodes = 60;

/// A stored text, to compare with what is expected.
bool Matches(const TreeModel::Value& expected, const char* text) {
  return expected.isThere ? text != nullptr && expected.text == text : text == nullptr;
}

}  // namespace

EditingSession::EditingSession(unsigned int seed)
    : m_random(seed),
      m_nodesBefore(IXMLDOMNode::m_iObjCount),
      m_documentsBefore(IXMLDOMDocument2::m_iObjCount),
      m_error(CXML::GetXMLError()) {
  for (Id& document : m_documents) document = MakeDocument();
}

void EditingSession::Finish() {
  while (!Held().empty()) DropOne(Held().front());
}

std::string EditingSession::Step() {
  m_log.Clear();
  m_events.clear();
  if (m_model.All().size() > kMostNodes) return Renew();
  typedef std::string (EditingSession::*Call)();
  const Call calls[] = {
      &EditingSession::MakeNode,   &EditingSession::AddChild,   &EditingSession::AddChild,
      &EditingSession::AddSibling, &EditingSession::AddText,    &EditingSession::AddAttribute,
      &EditingSession::AppendText, &EditingSession::SetValue,   &EditingSession::Append,
      &EditingSession::Append,     &EditingSession::Insert,     &EditingSession::Insert,
      &EditingSession::Replace,    &EditingSession::Replace,    &EditingSession::Remove,
      &EditingSession::TakeOut,    &EditingSession::EditAtPath, &EditingSession::EditAtPath,
      &EditingSession::LookUp,     &EditingSession::DropAny,    &EditingSession::DropAny,
      &EditingSession::DropAny,    &EditingSession::Clear,      &EditingSession::Renew,
  };
  const int count = static_cast<int>(sizeof calls / sizeof calls[0]);
  // The last two take much away, and so come seldom.
  const int most = m_random.Below(8) == 0 ? count : count - 2;
  return (this->*calls[m_random.Below(most)])();
}

// ---- Choice

std::vector<EditingSession::Id> EditingSession::Held() const {
  std::vector<Id> held;
  for (const auto& entry : m_model.All()) {
    if (entry.second.held > 0) held.push_back(entry.first);
  }
  return held;
}

bool EditingSession::IsSound(Id node) const {
  return node == kNone ||
         (IsAliveOrNone(m_model.At(node).parent) && IsAliveOrNone(m_model.At(node).owner));
}

bool EditingSession::IsSoundBelow(Id node) const {
  if (!IsSound(node)) return false;
  for (Id child = m_model.At(node).firstChild; child != kNone; child = m_model.At(child).next) {
    if (!IsSoundBelow(child)) return false;
  }
  return true;
}

EditingSession::Id EditingSession::AnyNode() {
  for (;;) {
    TreeModel::Records::const_iterator entry = m_model.All().begin();
    std::advance(entry, m_random.Below(static_cast<int>(m_model.All().size())));
    if (IsSound(entry->first)) return entry->first;
  }
}

EditingSession::Id EditingSession::AnyNewChild() {
  if (m_random.Below(20) == 0) return kNone;
  for (;;) {
    const Id node = AnyNode();
    const Id content = m_model.Content(node);
    const bool isFree = content == kNone || m_model.At(content).parent != kNone ||
                        m_model.At(content).type == TreeModel::DOCUMENT ||
                        !m_model.IsLinked(content);
    if (IsSound(content) && isFree) return node;
  }
}

EditingSession::Id EditingSession::AnyChildOf(Id node) {
  if (m_random.Below(10) == 0) return m_random.Below(3) == 0 ? kNone : AnyNode();
  const TreeModel::Record& record = m_model.At(node);
  Id child = m_random.Below(12) == 0 ? record.firstAttribute : record.firstChild;
  for (int steps = m_random.Below(4); steps > 0 && child != kNone; --steps) {
    const Id next = m_model.At(child).next;
    if (next == kNone) break;
    child = next;
  }
  return IsSound(child) ? child : kNone;
}

std::string EditingSession::AnyName() {
  return std::string(1, static_cast<char>('a' + m_random.Below(3)));
}

TreeModel::Value EditingSession::AnyValue() {
  const char* const texts[] = {nullptr, "", "1", "x y"};
  const char* text = texts[m_random.Below(4)];
  return TreeModel::Value{text != nullptr, text == nullptr ? "" : text};
}

// ---- The two sides

IXMLDOMNode* EditingSession::Real(Id node) const {
  return node == kNone ? nullptr : m_real[static_cast<std::size_t>(node)];
}

IXMLDOMDocument2* EditingSession::RealDocument(Id document) const {
  return static_cast<IXMLDOMDocument2*>(Real(document));
}

bool EditingSession::IsKnown(Id node) const {
  return static_cast<std::size_t>(node) < m_real.size() && Real(node) != nullptr;
}

void EditingSession::Know(Id node, IXMLDOMNode* real) {
  const std::size_t index = static_cast<std::size_t>(node);
  if (index >= m_real.size()) m_real.resize(index + 1);
  m_real[index] = real;
}

std::string EditingSession::Show(Id node) { return node == kNone ? "null" : std::to_string(node); }

EditingSession::Id EditingSession::MakeDocument() {
  const Id document = m_model.NewDocument();
  Know(document, ::NewDocument().Detach());
  return document;
}

void EditingSession::DropOne(Id node) {
  IXMLDOMNode* real = Real(node);
  m_model.Drop(node);
  real->RealRelease();
}

void EditingSession::Expect(bool isTrue, const std::string& what) {
  if (!isTrue) m_unexpected += what + "\n";
}

void EditingSession::ExpectThrown(bool isExpected, const std::string& thrown) {
  const char notListed[] = "IXMLDOMNode::get_previousSibling: Call failed, no previous sibling";
  Expect(thrown == (isExpected ? notListed : ""), "thrown: " + thrown);
}

std::string EditingSession::DifferenceAt(Id id, std::vector<Id>* linked) {
  const TreeModel::Record& expected = m_model.At(id);
  const IXMLDOMNode* node = Real(id);
  const struct {
    Id expected;
    IXMLDOMNode* link;
  } links[] = {{expected.next, node->m_pNextSibling},
               {expected.firstChild, node->m_pFirstChild},
               {expected.firstAttribute, node->m_pFirstAttribute}};
  for (const auto& link : links) {
    if ((link.expected == kNone) != (link.link == nullptr)) return "a link";
    if (link.expected == kNone) continue;
    // What a call has made on the way becomes known by its place.
    if (!IsKnown(link.expected)) Know(link.expected, link.link);
    if (Real(link.expected) != link.link) return "a link";
    linked->push_back(link.expected);
  }
  if (node->m_eNodeType != expected.type) return "type";
  if (Text(node->m_pszNodeName) != expected.name) return "name";
  if (!Matches(expected.value, node->m_pszValue)) return "value";
  if (node->m_pParent != Real(expected.parent)) return "parent";
  if (node->m_pOwnerDocument != Real(expected.owner)) return "owner";
  if (node->GetRefCount() != expected.references) return "references";
  return "";
}

std::string EditingSession::Difference() {
  if (!m_unexpected.empty()) return m_unexpected;
  std::vector<std::string> titles;
  for (const LoggedEvent& event : m_log.Events()) titles.push_back(event.title);
  if (titles != m_events) return "log events";
  if (CXML::GetXMLError() != m_error) return "error code";
  std::vector<Id> known = Held();
  std::size_t count = 0;
  std::vector<bool> seen(static_cast<std::size_t>(m_model.NextId()));
  while (!known.empty()) {
    const Id node = known.back();
    known.pop_back();
    const std::size_t index = static_cast<std::size_t>(node);
    if (seen[index]) continue;
    seen[index] = true;
    ++count;
    const std::string difference = DifferenceAt(node, &known);
    if (!difference.empty()) return difference + " of node " + Show(node);
  }
  if (count != m_model.All().size()) return "the model has lost nodes";
  const int nodes = IXMLDOMNode::m_iObjCount - m_nodesBefore;
  if (nodes != static_cast<int>(count)) return "live nodes: " + std::to_string(nodes);
  int documents = 0;
  for (const auto& entry : m_model.All()) documents += entry.second.type == TreeModel::DOCUMENT;
  if (IXMLDOMDocument2::m_iObjCount - m_documentsBefore != documents) return "live documents";
  return "";
}
