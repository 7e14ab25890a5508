#include <xmldom/text/EntityTranslation.h>  // This header has moved.
