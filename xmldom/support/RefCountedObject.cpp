// The base of every object that is handed out by reference. Tested by
// tests/support/RefCountedObject_test.cpp.

#include <xmldom/support/RefCountedObject.h>

// Out of line, so that the virtual table and the type information of the family are in one place.
CRefCountedObject::~CRefCountedObject() {}
