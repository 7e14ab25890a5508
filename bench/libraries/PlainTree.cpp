#include "libraries/Libraries.h"
#include "plain/PlainNode.h"

namespace bench {

namespace {

class PlainTree : public Tree {
 public:
  explicit PlainTree(PlainNode* root) : m_root(root) {}
  ~PlainTree() override { DestroyPlainNode(m_root); }

  bool Write() override {
    std::string out;
    WritePlainNode(m_root, 0, out);
    return !out.empty();
  }

  bool Text() override {
    std::string out;
    CollectPlainText(m_root, out);
    return !out.empty();
  }

  std::size_t SelectAll(const char* path) override {
    return SelectPlainNodes(m_root, SplitPath(path), 0).size();
  }

  bool SelectFirst(const char* path) override {
    return !SelectPlainNodes(m_root, SplitPath(path), 1).empty();
  }

  bool Equals(Tree& other) override {
    return SamePlainTree(m_root, static_cast<PlainTree&>(other).m_root);
  }

  void Append(const char* name, std::size_t count) override {
    for (; count > 0; --count) AppendPlainChild(m_root, NewElement(name));
  }

  void InsertFirst(const char* name, std::size_t count) override {
    for (; count > 0; --count) PrependPlainChild(m_root, NewElement(name));
  }

  void RemoveFirst(std::size_t count) override {
    for (; count > 0; --count) DestroyPlainNode(UnlinkFirstPlainChild(m_root));
  }

 private:
  static PlainNode* NewElement(const char* name) {
    return NewPlainNode(PlainType::kElement, name, nullptr, 0);
  }

  PlainNode* m_root;
};

class Plain : public Library {
 public:
  std::string Name() const override { return "plain"; }
  std::string Version() const override { return "plain linked tree over Expat"; }
  bool Offers(Operation) const override { return true; }

  std::unique_ptr<Tree> Load(const std::string& text) const override {
    return TreeOf(BuildPlainTree(text));
  }

  std::unique_ptr<Tree> LoadFile(const std::string& path) const override {
    return TreeOf(BuildPlainTreeOfFile(path));
  }

 private:
  static std::unique_ptr<Tree> TreeOf(PlainNode* root) {
    return std::unique_ptr<Tree>(root == nullptr ? nullptr : new PlainTree(root));
  }
};

}  // namespace

std::unique_ptr<Library> MakePlainTree() { return std::unique_ptr<Library>(new Plain); }

}  // namespace bench
