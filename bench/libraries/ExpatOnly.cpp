#include "libraries/Libraries.h"
#include "parsing/ExpatFeed.h"

namespace bench {

namespace {

void OnStart(void*, const XML_Char*, const XML_Char**) {}
void OnEnd(void*, const XML_Char*) {}
void OnDefault(void*, const XML_Char*, int) {}

const ExpatHandlers kHandlers = {OnStart, OnEnd, OnDefault};

/// Expat with handlers that do nothing: the floor of every load, since Expat parses.
class ExpatOnly : public Library {
 public:
  std::string Name() const override { return "expat"; }
  std::string Version() const override { return XML_ExpatVersion(); }
  bool Offers(Operation operation) const override { return operation == Operation::kLoad; }

  std::unique_ptr<Tree> Load(const std::string& text) const override {
    return NothingUnless(ParseText(text, kHandlers, nullptr));
  }

  std::unique_ptr<Tree> LoadFile(const std::string& path) const override {
    return NothingUnless(ParseFile(path, kHandlers, nullptr));
  }

 private:
  static std::unique_ptr<Tree> NothingUnless(bool parsed) {
    return std::unique_ptr<Tree>(parsed ? new Tree : nullptr);
  }
};

}  // namespace

std::unique_ptr<Library> MakeExpatOnly() { return std::unique_ptr<Library>(new ExpatOnly); }

}  // namespace bench
