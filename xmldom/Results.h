#include <xmldom/dom/Results.h>  // This header has moved.
