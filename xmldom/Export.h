#include <xmldom/base/Export.h>  // This header has moved.
