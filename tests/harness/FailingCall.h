#ifndef XMLDOM_TESTS_HARNESS_FAILINGCALL_H
#define XMLDOM_TESTS_HARNESS_FAILINGCALL_H

#include <ostream>
#include <string>

class IXMLDOMDocument2;

/// Texts, values, entities, and more levels than a walk keeps on the call stack.
extern const std::string kDeepXml;

/// A call on a document that holds kDeepXml. What it is handed it gives back.
struct FailingCall {
  enum Guarantee {
    KEEPS_TREE,   ///< What ends in an exception has changed nothing.
    CHANGES_TREE  ///< It may have changed something.
  };

  const char* name;
  void (*run)(IXMLDOMDocument2* document);
};

std::ostream& operator<<(std::ostream& out, const FailingCall& call);

/// Makes each allocation of a call fail, one after the other, until the call gets through. The case
/// fails when there is a time after which the tree is not whole, cannot be written or released, or
/// something is left behind.
void ExpectWholeTreeAfterEachFailure(const FailingCall& call, FailingCall::Guarantee guarantee);

#endif
