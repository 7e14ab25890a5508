#include <xmldom/ptr/XMLOwner.h>  // This header has moved.
