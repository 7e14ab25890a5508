#include <dlfcn.h>

#include <cstdio>
#include <thread>

// A program that does not link the library, but opens it while it runs, and then uses it in two
// threads. The variables that the library has for each thread need a place in both of them.

class IXMLDOMDocument2;

int main(int, char** arguments) {
  void* const library = dlopen(arguments[1], RTLD_NOW);
  if (library == nullptr) {
    std::fprintf(stderr, "%s\n", dlerror());
    return 1;
  }
  typedef bool (*CreateFunction)(IXMLDOMDocument2**);
  typedef void (*SetCodeFunction)(int);
  typedef int (*GetCodeFunction)();
  const auto create =
      reinterpret_cast<CreateFunction>(dlsym(library, "_Z6CreatePP16IXMLDOMDocument2"));
  const auto setCode = reinterpret_cast<SetCodeFunction>(dlsym(library, "_ZN4CXML11SetXMLErrorEi"));
  const auto getCode = reinterpret_cast<GetCodeFunction>(dlsym(library, "_ZN4CXML11GetXMLErrorEv"));
  if (create == nullptr || setCode == nullptr || getCode == nullptr) return 1;
  IXMLDOMDocument2* document = nullptr;
  create(&document);
  setCode(5);
  int other = -1;
  std::thread([&] { other = getCode(); }).join();
  std::printf("made %d, code %d here and %d in another thread\n", document != nullptr, getCode(),
              other);
  return document != nullptr && getCode() == 5 && other == 0 ? 0 : 1;
}
