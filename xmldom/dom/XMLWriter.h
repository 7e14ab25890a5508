#include <xmldom/text/XMLWriter.h>  // This header has moved.
