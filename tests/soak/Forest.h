#ifndef XMLDOM_TESTS_SOAK_FOREST_H
#define XMLDOM_TESTS_SOAK_FOREST_H

#include <xmldom/xmldom.h>

#include <map>
#include <string>
#include <vector>

#include "soak/Random.h"

/// A node of a class of one's own, which writes down its number, and how many documents there are,
/// when it is destroyed.
class WitnessNode : public IXMLDOMNode {
 public:
  WitnessNode(int number, std::string* record, IXMLDOMDocument2* owner, const char* name,
              const char* value, tagDOMNodeType type)
      : IXMLDOMNode(owner, name, value, type), m_number(number), m_record(record) {}
  ~WitnessNode() override { Announce(); }

  /// What the destructor does first; it does so once.
  void Announce();

 private:
  int m_number;
  std::string* m_record;
};

/// How the trees of a forest are made.
struct ForestShape {
  int nodes = 14;             ///< Beside the two documents.
  bool keepsAll = true;       ///< Hold a reference to each node, else only to tops and some others.
  int changesByHand = 0;      ///< How many links, owners, parents, types and texts are changed.
  bool changesOwners = true;  ///< Whether those changes may touch owners, ...
  bool changesTypes = true;   ///< ... types, ...
  bool sharesNodes = true;    ///< ... and give a node a second place.
  bool missingTexts = true;   ///< Whether values may be missing.
  int oneWitnessIn = 0;       ///< How often a node is of a derived class; 0: never.
  bool variesLayout = false;  ///< Whether the documents get an indentation of their own.
};

/// The shape of most cases: 2 to 21 nodes, changed by hand in every other case.
ForestShape AnySmallShape(Random& random);

/// Two documents and some detached nodes, with trees below them, that follow from a random source
/// alone: two forests of equal sources are alike, and their nodes have the same numbers.
class Forest {
 public:
  Forest(Random random, const ForestShape& shape);
  /// Takes everything apart and gives it back, whatever has been done to it.
  ~Forest();

  Forest(const Forest&) = delete;
  Forest& operator=(const Forest&) = delete;

  int Count() const { return static_cast<int>(m_nodes.size()); }
  /// Node `i`, borrowed; the documents are 0 and 1.
  IXMLDOMNode* At(int i) const { return m_nodes[static_cast<std::size_t>(i)].node; }
  IXMLDOMDocument2* Document(int i) const { return static_cast<IXMLDOMDocument2*>(At(i)); }
  /// Whether the forest itself holds a reference to node `i`.
  bool Keeps(int i) const { return m_nodes[static_cast<std::size_t>(i)].kept; }
  /// Gives the forest's own reference to node `i` to the caller.
  IXMLDOMNode* HandOver(int i);

  /// Changes a link, an owner, a parent, a type or a text, as the shape allows. Result: whether a
  /// chain was cut so that its first and its last two nodes are linked as before.
  bool ChangeByHand(Random& random, const ForestShape& shape);

  /// How many links of nodes that are alive lead to a node.
  int LinksTo(const IXMLDOMNode* node) const;

  /// "#3" for node 3, "-" for null.
  std::string NameOf(const void* node) const;

  /// All fields and reference counts of the nodes that are alive, one a line, the forest's own
  /// references not counted. Nodes that are new get a number and are kept from then on.
  std::string State();

  /// What the destroyed nodes of a derived class wrote down.
  std::string Record() const { return m_record; }

 private:
  struct Entry {
    IXMLDOMNode* node;
    bool kept;
  };

  void AddDocument(Random& random, const ForestShape& shape);
  void AddNode(Random& random, const ForestShape& shape);
  bool MoveLink(Random& random, bool shares);
  void ChangeTexts(Random& random, const ForestShape& shape);
  void Keep(int i);
  int NumberOf(const void* node) const;
  std::string Describe(int i) const;

  std::vector<Entry> m_nodes;
  std::map<const void*, int> m_numbers;
  std::string m_record;
};

/// A random node of a forest, borrowed; null once in `oneNullIn` times, or never for 0.
IXMLDOMNode* AnyNode(const Forest& forest, Random& random, int oneNullIn = 0);

#endif
