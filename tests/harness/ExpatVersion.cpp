#include "harness/ExpatVersion.h"

#include <dlfcn.h>
#include <expat.h>

namespace {

bool l_bIsReplaced = false;
XML_Expat_Version l_version = {0, 0, 0};

}  // namespace

ExpatVersion::ExpatVersion(int major, int minor, int micro) {
  l_version.major = major;
  l_version.minor = minor;
  l_version.micro = micro;
  l_bIsReplaced = true;
}

ExpatVersion::~ExpatVersion() { l_bIsReplaced = false; }

/// Stands in front of Expat's own in every library of the process.
extern "C" __attribute__((visibility("default"))) XML_Expat_Version XMLCALL XML_ExpatVersionInfo() {
  if (l_bIsReplaced) return l_version;
  typedef XML_Expat_Version (*Function)();
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, "XML_ExpatVersionInfo"))();
}

/// So does this, for the codes that an older version does not have.
extern "C" __attribute__((visibility("default"))) const XML_LChar* XMLCALL
XML_ErrorString(enum XML_Error code) {
  const int kAmplification = 43;
  const bool isBefore24 = l_version.major == 2 && l_version.minor < 4;
  if (l_bIsReplaced && isBefore24 && code >= kAmplification) return nullptr;
  typedef const XML_LChar* (*Function)(enum XML_Error);
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, "XML_ErrorString"))(code);
}
