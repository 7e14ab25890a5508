#ifndef XMLDOM_TESTS_HARNESS_EDITINGSESSION_H
#define XMLDOM_TESTS_HARNESS_EDITINGSESSION_H

#include <xmldom/xmldom.h>

#include <map>
#include <string>
#include <vector>

#include "harness/LogCapture.h"
#include "harness/RandomTrees.h"
#include "harness/TreeModel.h"

/// Runs random calls that build and edit, none of which knows what came before, on the library and
/// on the model side by side, with two documents and many nodes that hang nowhere.
class EditingSession {
 public:
  typedef TreeModel::Id Id;
  typedef TreeModel::Result Result;

  explicit EditingSession(unsigned int seed);

  /// One call, whatever it is. Result: what it was; empty when there was nothing to call.
  std::string Step();

  /// The first thing that is not as the model says; empty when all is.
  std::string Difference();

  /// How many edits had this result.
  int Seen(Result result) const { return m_seen.count(result) == 0 ? 0 : m_seen.at(result); }

  /// Gives back all references that the session has.
  void Finish();

 private:
  static const Id kNone = TreeModel::kNone;

  // ---- Choice (EditingSession.cpp)

  std::vector<Id> Held() const;
  bool IsAliveOrNone(Id node) const { return node == kNone || m_model.IsAlive(node); }
  /// Whether the links of a node that hold no reference still lead somewhere.
  bool IsSound(Id node) const;
  /// Whether a node and all below it are sound, so that they can be written.
  bool IsSoundBelow(Id node) const;
  /// A node that is alive and sound. The documents always are.
  Id AnyNode();
  /// A node to be put somewhere, sometimes none. One that a chain without parent holds cannot be
  /// taken out of there, and so must not be moved.
  Id AnyNewChild();
  /// Mostly a child of the node, sometimes any other node or none.
  Id AnyChildOf(Id node);
  std::string AnyName();
  TreeModel::Value AnyValue();

  // ---- The two sides (EditingSession.cpp)

  IXMLDOMNode* Real(Id node) const;
  IXMLDOMDocument2* RealDocument(Id document) const;
  bool IsKnown(Id node) const;
  void Know(Id node, IXMLDOMNode* real);
  static std::string Show(Id node);
  Id MakeDocument();
  void DropOne(Id node);
  void Expect(bool isTrue, const std::string& what);
  void ExpectThrown(bool isExpected, const std::string& thrown);
  /// Compares one node, and adds what it links to.
  std::string DifferenceAt(Id node, std::vector<Id>* linked);

  // ---- Calls (EditingSessionCalls.cpp). Each returns what it was.

  std::string MakeNode();
  std::string AddChild();
  std::string AddSibling();
  std::string AddText();
  std::string AddAttribute();
  std::string AppendText();
  std::string SetValue();
  std::string Append();
  std::string Insert();
  std::string Replace();
  std::string Remove();
  std::string TakeOut();
  /// Runs an edit of the library whose result and out-pointer the model has predicted.
  template <class Call>
  void RunEdit(Result expected, Id expectedOut, Call call);

  std::string EditAtPath();
  /// The content of the edits at a path, ready for a place that has this owner; held once.
  Id MakeContent(Id owner);
  /// What an edit at a path gives: 1, 0, or kThrown.
  int PredictReplace(Id target);
  int PredictAppend(Id target);
  int PredictInsert(Id target);
  int PredictRemove(Id target);

  std::string LookUp();
  std::string DropAny();
  std::string Clear();
  /// Gives back all references to one document and to most other nodes.
  std::string Renew();

  RandomTrees m_random;
  TreeModel m_model;
  std::vector<IXMLDOMNode*> m_real;  // by Id, also those of records that are gone
  Id m_documents[2];
  LogCapture m_log;
  std::vector<std::string> m_events;  // the titles that the call should log
  std::string m_unexpected;
  std::map<Result, int> m_seen;
  int m_nodesBefore;
  int m_documentsBefore;
  int m_error;
};

#endif
