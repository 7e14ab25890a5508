#include <xmldom/dom/XMLError.h>  // This header has moved.
