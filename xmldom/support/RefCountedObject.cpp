// The base class of every object that is counted by references: its virtual destructor. All else is
// inline. Tested by tests/support/RefCountedObject_test.cpp.

#include <xmldom/support/RefCountedObject.h>

// Defined here, not in the header, so that the virtual table and the type information of the class
// are emitted once, in this library.
CRefCountedObject::~CRefCountedObject() {}
