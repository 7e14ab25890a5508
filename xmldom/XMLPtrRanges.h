#include <xmldom/dom/NodeRanges.h>  // This header has moved.
