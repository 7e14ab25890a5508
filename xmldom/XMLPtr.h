#include <xmldom/ptr/XMLPtr.h>  // This header has moved.
