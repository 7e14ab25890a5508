#include <xmldom/ptr/XMLPtrStrings.h>  // This header has moved.
