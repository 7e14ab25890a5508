#ifndef XMLDOM_TESTS_HARNESS_LONGCHAINS_H
#define XMLDOM_TESTS_HARNESS_LONGCHAINS_H

#include <xmldom/xmldom.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "harness/Trees.h"
#include "harness/Worker.h"

/// Some parents with long chains of children, edited at random by members, by hand, by other
/// threads and without memory. Beside each parent stands the list of its children as it ought to
/// be, so that whatever a member remembers of a chain is compared with a list that remembers
/// nothing.
class LongChains {
 public:
  explicit LongChains(unsigned int seed);
  ~LongChains();

  LongChains(const LongChains&) = delete;
  LongChains& operator=(const LongChains&) = delete;

  /// One change of one chain, or of two. Result: what it was.
  std::string Step();

  /// The first thing that is not as it ought to be; empty when all is.
  std::string Difference();

 private:
  struct Chain {
    XMLPtr<IXMLDOMNode> parent;
    std::vector<IXMLDOMNode*> children;
  };
  typedef std::vector<IXMLDOMNode*>::iterator Place;

  int Below(std::size_t limit);
  Chain& AnyChain();
  /// Mostly the last places, or one of the first, sometimes any; the chain is not empty.
  Place AnyPlace(Chain& chain);
  IXMLDOMNode* NewChild();
  void AddNewChild(Chain& chain);
  /// The link that leads to a child, in its parent or in the child before it.
  static IXMLDOMNode*& LinkTo(Chain& chain, Place place);
  /// Takes a child out by a member. Result: the child, with the reference that its parent held.
  IXMLDOMNode* TakeOut(Chain& chain, Place place);
  void Insert(Chain& chain, Place place, IXMLDOMNode* node);
  void Expect(bool isTrue, const std::string& what);
  /// Compares what stands before a place, and what stands last, with the list.
  void Ask(Chain& chain, Place place);

  // ---- What Step does. Each returns what it was.

  std::string Append();
  std::string AppendWithoutMemory();
  std::string InsertSomewhere();
  std::string RemoveSomewhere();
  std::string RemoveFromTheEnd();
  std::string GoBackwards();
  std::string Queue();
  std::string Replace();
  std::string Move();
  std::string DestroyAll();
  std::string UnlinkByHand();
  std::string InsertByHand();
  std::string MoveTailByHand();
  std::string ReverseByHand();
  std::string CutTailOff();
  std::string TakeOutAndKeep();
  std::string PutBack();
  std::string Outlive();
  std::string UnlinkByHandAndKeep();
  std::string TakeOutByHandForAWhile();
  std::string DestroyOwn();

  std::mt19937 m_random;
  const bool m_passesOften;  // from thread to thread
  Document m_document;
  IXMLDOMDocument2* m_owner;  // of all nodes; null in every second session
  std::vector<Chain> m_chains;
  std::vector<XMLPtr<IXMLDOMNode>> m_kept;  // taken out of chains
  std::vector<XMLPtr<IXMLDOMNode>>
      m_outlived;  // whose parents are gone; some name parents that do not list them
  std::unique_ptr<Worker> m_workers[2];
  std::string m_unexpected;
};

#endif
