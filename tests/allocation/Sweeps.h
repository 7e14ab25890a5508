#ifndef XMLDOM_TESTS_ALLOCATION_SWEEPS_H
#define XMLDOM_TESTS_ALLOCATION_SWEEPS_H

#include <xmldom/xmldom.h>

#include "harness/FailingCall.h"

// What the tables of this program share. Each row is an operation of the library; memory fails at
// each of its allocations, once with all that follow it and once alone.

/// What an operation works on.
enum class On {
  TREES,  ///< A small tree and a realistic one, in turn.
  NO_TREE
};

/// Runs an operation with memory that fails, and adds it to the table that is printed at the end
/// of the program. At how many points of each kind is said in the environment: XMLDOM_POINTS, 6
/// unless said, and 0 for all. `reach` says whose memory it is.
void FailEverywhere(const char* room, const FailingCall& call, FailingCall::Guarantee guarantee,
                    On on = On::TREES,
                    AllocationFailure::Reach reach = AllocationFailure::ALL_BUT_NEW_PARSERS);

// Giving back what an operation has handed out, after noting it.

void NoteAndFree(BSTR text);
void NoteAndDrop(IXMLDOMNode* node);
void NoteAndDrop(IXMLDOMNodeList* list);

/// Drops a reference; null is left alone.
void Drop(CRefCountedObject* object);

#endif
