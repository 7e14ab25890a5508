#include "soak/Forest.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <set>

#include "harness/Trees.h"

namespace {

const char* const kNames[] = {"a", "a", "b", "b", "c", "#Text"};
const char* const kAttributeNames[] = {"k", "k", "m", "curPage", "numPages"};
const char* const kTexts[] = {"x",     "1",     " 1b", "&amp;lt;", "&foo;",   "a&lt;b",
                              "x & y", "&#65;", "y'",  "",         "a & b; c"};

const char* AnyText(Random& random, const ForestShape& shape) {
  return shape.missingTexts && random.OneIn(8) ? nullptr : random.OneOf(kTexts);
}

void AppendTo(IXMLDOMNode** link, IXMLDOMNode* node) {
  while (*link != nullptr) link = &(*link)->m_pNextSibling;
  *link = node;
}

/// The three links of a node that hold references.
IXMLDOMNode** LinkOf(IXMLDOMNode* node, int which) {
  if (which == 0) return &node->m_pNextSibling;
  return which == 1 ? &node->m_pFirstChild : &node->m_pFirstAttribute;
}

void CollectFrom(IXMLDOMNode* node, std::vector<IXMLDOMNode*>* found,
                 std::set<IXMLDOMNode*>* seen) {
  if (node == nullptr || !seen->insert(node).second) return;
  found->push_back(node);
  for (int which = 0; which < 3; ++which) CollectFrom(*LinkOf(node, which), found, seen);
}

bool Reaches(IXMLDOMNode* from, IXMLDOMNode* node) {
  std::vector<IXMLDOMNode*> found;
  std::set<IXMLDOMNode*> seen;
  CollectFrom(from, &found, &seen);
  return seen.count(node) != 0;
}

std::string Quoted(const char* text) { return text == nullptr ? "-" : "'" + Text(text) + "'"; }

void Replace(char*& text, const char* with) {
  std::free(text);
  text = with == nullptr ? nullptr : strdup(with);
}

}  // namespace

ForestShape AnySmallShape(Random& random) {
  ForestShape shape;
  shape.nodes = 2 + random.Below(20);
  shape.changesByHand = random.OneIn(2) ? 0 : random.Below(8);
  return shape;
}

void WitnessNode::Announce() {
  if (m_record == nullptr) return;
  *m_record += " " + std::to_string(m_number) + "/" + std::to_string(IXMLDOMDocument2::m_iObjCount);
  m_record = nullptr;
}

Forest::Forest(Random random, const ForestShape& shape) {
  AddDocument(random, shape);
  AddDocument(random, shape);
  for (int i = 0; i < shape.nodes; ++i) AddNode(random, shape);
  for (int i = 0; i < shape.changesByHand; ++i) ChangeByHand(random, shape);
}

Forest::~Forest() {
  State();
  for (Entry& entry : m_nodes) {
    if (!entry.kept) continue;
    for (int which = 0; which < 3; ++which) {
      IXMLDOMNode** link = LinkOf(entry.node, which);
      IXMLDOMNode* target = *link;
      *link = nullptr;
      if (target != nullptr) target->RealRelease();
    }
  }
  // Some calls leave nodes with references more, which nobody owns.
  for (Entry& entry : m_nodes) {
    while (entry.kept && entry.node->GetRefCount() > 1) entry.node->RealRelease();
    if (entry.kept) entry.node->RealRelease();
  }
}

void Forest::AddDocument(Random& random, const ForestShape& shape) {
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  if (shape.variesLayout && random.OneIn(2)) {
    document->m_uFlags = static_cast<unsigned int>(random.Below(2));
    document->m_nIndent = random.Below(5);
  }
  m_numbers[document] = Count();
  m_nodes.push_back(Entry{document, true});
}

void Forest::AddNode(Random& random, const ForestShape& shape) {
  const int kind = random.Below(16);
  tagDOMNodeType type = NODE_ELEMENT;
  if (kind < 3) type = NODE_ATTRIBUTE;
  if (kind >= 3 && kind < 7) type = NODE_TEXT;
  if (kind == 7) type = NODE_COMMENT;
  const char* name = type == NODE_TEXT ? "#Text" : random.OneOf(kNames);
  if (type == NODE_ATTRIBUTE) name = random.OneOf(kAttributeNames);
  const bool hasValue = type != NODE_ELEMENT || random.OneIn(8);
  const char* value = hasValue ? AnyText(random, shape) : nullptr;

  // Mostly among the latest, so that the trees grow deep as well as wide.
  const int parentNumber =
      random.OneIn(3) ? random.Below(Count()) : Count() - 1 - random.Below(std::min(Count(), 4));
  IXMLDOMNode* parent = At(parentNumber);
  if (parent->m_eNodeType != NODE_ELEMENT && !random.OneIn(8)) parent = At(random.Below(2));
  const bool isTop = random.OneIn(9);
  IXMLDOMDocument2* owner = Document(random.OneIn(6) ? 1 : 0);
  if (!isTop && parent->m_pOwnerDocument != nullptr) owner = parent->m_pOwnerDocument;

  const bool isWitness = shape.oneWitnessIn != 0 && random.OneIn(shape.oneWitnessIn);
  IXMLDOMNode* node = isWitness ? new WitnessNode(Count(), &m_record, owner, name, value, type)
                                : new IXMLDOMNode(owner, name, value, type);
  m_numbers[node] = Count();
  m_nodes.push_back(Entry{node, isTop});
  const bool keeps = shape.keepsAll || random.OneIn(6);
  if (!isTop) {
    node->m_pParent = parent;
    AppendTo(type == NODE_ATTRIBUTE ? &parent->m_pFirstAttribute : &parent->m_pFirstChild, node);
    if (keeps) Keep(Count() - 1);
  }
}

bool Forest::ChangeByHand(Random& random, const ForestShape& shape) {
  IXMLDOMNode* node = At(2 + random.Below(Count() - 2));
  switch (random.Below(6)) {
    case 0:
      node->m_pParent = random.OneIn(3) ? nullptr : At(random.Below(Count()));
      break;
    case 1:
      if (shape.changesOwners) {
        node->m_pOwnerDocument = random.OneIn(2) ? nullptr : Document(random.Below(2));
      }
      break;
    case 2:
      if (shape.changesTypes && random.OneIn(2)) {
        node->m_eNodeType = static_cast<tagDOMNodeType>(random.Below(14));
      }
      break;
    case 3:
      ChangeTexts(random, shape);
      break;
    default:
      return MoveLink(random, shape.sharesNodes && random.OneIn(4));
  }
  return false;
}

void Forest::ChangeTexts(Random& random, const ForestShape& shape) {
  IXMLDOMNode* node = At(2 + random.Below(Count() - 2));
  if (random.OneIn(2)) {
    Replace(node->m_pszNodeName, random.OneOf(kNames));
  } else {
    Replace(node->m_pszValue, AnyText(random, shape));
  }
}

/// Takes the node behind some link, with all that hangs behind it, out of its place, or leaves it
/// there if it `shares`, and lets it stand alone or hangs it up elsewhere. Makes no cycle. Result:
/// whether a chain was cut so that its first and its last two nodes are linked as before.
bool Forest::MoveLink(Random& random, bool shares) {
  const int whichLink = random.Below(3);
  IXMLDOMNode** link = LinkOf(At(random.Below(Count())), whichLink);
  IXMLDOMNode* target = *link;
  if (target == nullptr) return false;
  const bool cutsMiddle = whichLink == 0 && target->m_pNextSibling != nullptr && !shares;
  if (shares) {
    target->AddRef();
  } else {
    *link = nullptr;
  }
  // The end of a chain that begins at a random place.
  IXMLDOMNode* holder = At(random.Below(Count()));
  int which = random.Below(3);
  while (*LinkOf(holder, which) != nullptr) {
    holder = *LinkOf(holder, which);
    which = 0;
  }
  if (!random.OneIn(4) && !Reaches(target, holder)) {
    *LinkOf(holder, which) = target;
    return cutsMiddle;
  }
  Entry& entry = m_nodes[static_cast<std::size_t>(NumberOf(target))];
  if (entry.kept) {
    target->RealRelease();
  } else {
    entry.kept = true;  // with the reference of the link
  }
  return cutsMiddle;
}

void Forest::Keep(int i) {
  Entry& entry = m_nodes[static_cast<std::size_t>(i)];
  if (entry.kept) return;
  entry.kept = true;
  entry.node->AddRef();
}

IXMLDOMNode* Forest::HandOver(int i) {
  m_nodes[static_cast<std::size_t>(i)].kept = false;
  return At(i);
}

int Forest::LinksTo(const IXMLDOMNode* node) const {
  int links = 0;
  for (const Entry& entry : m_nodes) {
    for (int which = 0; which < 3; ++which) {
      if (*LinkOf(entry.node, which) == node) ++links;
    }
  }
  return links;
}

int Forest::NumberOf(const void* node) const {
  const auto found = m_numbers.find(node);
  return found == m_numbers.end() ? -1 : found->second;
}

std::string Forest::NameOf(const void* node) const {
  if (node == nullptr) return "-";
  const int number = NumberOf(node);
  return number < 0 ? "?" : "#" + std::to_string(number);
}

std::string Forest::State() {
  std::vector<IXMLDOMNode*> alive;
  std::set<IXMLDOMNode*> seen;
  for (std::size_t i = 0; i < m_nodes.size(); ++i) {
    if (m_nodes[i].kept) CollectFrom(m_nodes[i].node, &alive, &seen);
  }
  std::string state;
  for (IXMLDOMNode* node : alive) {
    if (NumberOf(node) >= 0) continue;
    m_numbers[node] = Count();
    m_nodes.push_back(Entry{node, false});
    Keep(Count() - 1);
  }
  for (int i = 0; i < Count(); ++i) {
    if (seen.count(At(i)) != 0) state += Describe(i);
  }
  return state;
}

std::string Forest::Describe(int i) const {
  const IXMLDOMNode* node = At(i);
  return "#" + std::to_string(i) + " type " + std::to_string(node->m_eNodeType) + " " +
         Quoted(node->m_pszNodeName) + " " + Quoted(node->m_pszValue) + " next " +
         NameOf(node->m_pNextSibling) + " child " + NameOf(node->m_pFirstChild) + " attribute " +
         NameOf(node->m_pFirstAttribute) + " parent " + NameOf(node->m_pParent) + " owner " +
         NameOf(node->m_pOwnerDocument) + " references " +
         std::to_string(node->GetRefCount() - (Keeps(i) ? 1 : 0)) + "\n";
}

IXMLDOMNode* AnyNode(const Forest& forest, Random& random, int oneNullIn) {
  if (oneNullIn != 0 && random.OneIn(oneNullIn)) return nullptr;
  return forest.At(random.Below(forest.Count()));
}
