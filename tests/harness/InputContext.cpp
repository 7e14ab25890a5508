#include "harness/InputContext.h"

#include <expat.h>

bool HasInputContext() {
  for (const XML_Feature* feature = XML_GetFeatureList(); feature->feature != XML_FEATURE_END;
       ++feature) {
    if (feature->feature == XML_FEATURE_CONTEXT_BYTES) return feature->value > 0;
  }
  return false;
}

std::string ShownTag(const std::string& tag) { return HasInputContext() ? tag : "undefined"; }
