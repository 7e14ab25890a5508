// host PLUG-IN: opens a plug-in, calls it and closes it, 200 times; each time it and the libraries
// that it is linked with have to go.

#include <dlfcn.h>

#include <cstdio>

namespace {

bool IsLoaded(const char* library) {
  void* handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
  if (handle != nullptr) dlclose(handle);
  return handle != nullptr;
}

}  // namespace

int main(int, char** arguments) {
  const char* const libraries[] = {arguments[1], "libxmldom.so.1", "libxmldom-support.so.1"};
  for (int round = 1; round <= 200; ++round) {
    void* plugIn = dlopen(arguments[1], RTLD_NOW);
    if (plugIn == nullptr) {
      std::printf("%s\n", dlerror());
      return 1;
    }
    bool (*const work)() = reinterpret_cast<bool (*)()>(dlsym(plugIn, "Work"));
    const bool works = work != nullptr && work();
    for (const char* library : libraries) {
      if (works && IsLoaded(library)) continue;
      std::printf("the plug-in does not work\n");
      return 1;
    }
    dlclose(plugIn);
    for (const char* library : libraries) {
      if (!IsLoaded(library)) continue;
      std::printf("still loaded, after %d times: %s\n", round, library);
      return 1;
    }
  }
}
