#include <other/layer.h>
