#ifndef XMLDOM_TESTS_HARNESS_FAILINGCALL_H
#define XMLDOM_TESTS_HARNESS_FAILINGCALL_H

#include <climits>
#include <ostream>
#include <string>

#include "harness/AllocationFailure.h"

class IXMLDOMDocument2;

/// Texts, values, entities, and more levels than a walk keeps on the call stack.
extern const std::string kDeepXml;

/// A call on a document that holds kDeepXml. What it is handed it gives back.
struct FailingCall {
  enum Guarantee {
    KEEPS_TREE,   ///< What fails has changed nothing.
    CHANGES_TREE  ///< It may have changed something.
  };

  const char* name;
  void (*run)(IXMLDOMDocument2* document);
};

std::ostream& operator<<(std::ostream& out, const FailingCall& call);

/// For a call: notes what it has handed out. Whenever it gets through, although an allocation has
/// failed, that has to be the same. Allocates nothing.
void Note(const char* text);
void Note(long number);

/// For a call: says that it failed and told so, other than by an exception.
void NoteFailure();

/// For a call: says what is wrong, which fails the case.
void NoteFault(const char* fault);

/// How the allocations of a call are made to fail.
struct Failing {
  FailingCall::Guarantee guarantee = FailingCall::KEEPS_TREE;
  AllocationFailure::Extent extent = AllocationFailure::FROM_THERE_ON;
  const std::string* xml = &kDeepXml;  ///< What the document holds; begins as that does.
  int mostPoints = INT_MAX;            ///< When there are more, some in even distances.
  AllocationFailure::Reach reach = AllocationFailure::ALL_BUT_NEW_PARSERS;
};

/// Makes each allocation of a call fail, one after the other, until the call gets through. The case
/// fails when there is a time after which the tree is not whole or another one than is guaranteed,
/// cannot be written or released, or something is left behind, and when a call that did not fail
/// has handed out something else than with enough memory. Result: how often one failed.
int ExpectWholeTreeAfterEachFailure(const FailingCall& call, const Failing& how);

#endif
