#ifndef XMLDOM_BENCH_LIBRARY_H
#define XMLDOM_BENCH_LIBRARY_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace bench {

/// The result of an operation that a library does not offer.
const std::size_t kNotOffered = static_cast<std::size_t>(-1);

/// A document that one library has loaded. Each member is an operation; a library overrides those
/// that it offers.
class Tree {
 public:
  Tree() = default;
  virtual ~Tree() = default;

  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;

  /// Writes the whole document as indented text into memory. Result: 1, or 0 for an empty text.
  virtual std::size_t Write() { return kNotOffered; }

  /// The same without indentation.
  virtual std::size_t WriteCompact() { return kNotOffered; }

  /// Collects the text below the root element. Result: 1, or 0 for an empty text.
  virtual std::size_t Text() { return kNotOffered; }

  /// Result: how many nodes the path selects.
  virtual std::size_t SelectAll(const char* /*path*/) { return kNotOffered; }

  /// Result: 1 when the path selects a node, 0 when it selects none.
  virtual std::size_t SelectFirst(const char* /*path*/) { return kNotOffered; }

  /// Compares with a tree of the same library. Result: 1 when they are equal, 0 when not.
  virtual std::size_t Equals(Tree& /*other*/) { return kNotOffered; }

  /// Adds an element behind the last child of the root element, `count` times. Result: 1.
  virtual std::size_t Append(std::size_t /*count*/) { return kNotOffered; }

  /// Adds an element before the first child of the root element, `count` times. Result: 1.
  virtual std::size_t InsertFirst(std::size_t /*count*/) { return kNotOffered; }

  /// Takes the first child of the root element out and destroys it, `count` times. Result: 1.
  virtual std::size_t RemoveFirst(std::size_t /*count*/) { return kNotOffered; }

  /// Adds an element behind the last child of the root element and takes the first one out, `count`
  /// times. Result: 1.
  virtual std::size_t Queue(std::size_t /*count*/) { return kNotOffered; }

  /// Looks for the last child of the root element and adds an element before it, `count` times.
  /// Result: 1.
  virtual std::size_t InsertBeforeLast(std::size_t /*count*/) { return kNotOffered; }

  /// Looks for the last child of the root element, takes it out and destroys it, `count` times.
  /// Result: 1.
  virtual std::size_t RemoveLast(std::size_t /*count*/) { return kNotOffered; }

  /// Goes from the last child of the root element back to the first. Result: how many there are.
  virtual std::size_t CountBackwards() { return kNotOffered; }

  /// Result: the heap bytes of the nodes, their names and their values alone; 0 from a library
  /// whose nodes do not show them.
  virtual std::size_t RecordBytes() const { return 0; }
};

typedef std::unique_ptr<Tree> TreePointer;

/// The name of all elements that are added.
const char* const kChildName = "item";

/// The edits of a library whose `Adapter` derives from this and says what is done with one child:
/// AppendOne(), InsertOne() and RemoveOne(). None of these calls is virtual, which would take as
/// long as what some libraries do.
template <class Adapter>
class EditedTree : public Tree {
 public:
  std::size_t Append(std::size_t count) override {
    for (; count > 0; --count) static_cast<Adapter*>(this)->AppendOne();
    return 1;
  }

  std::size_t InsertFirst(std::size_t count) override {
    for (; count > 0; --count) static_cast<Adapter*>(this)->InsertOne();
    return 1;
  }

  std::size_t RemoveFirst(std::size_t count) override {
    for (; count > 0; --count) static_cast<Adapter*>(this)->RemoveOne();
    return 1;
  }

  std::size_t Queue(std::size_t count) override {
    for (; count > 0; --count) {
      static_cast<Adapter*>(this)->AppendOne();
      static_cast<Adapter*>(this)->RemoveOne();
    }
    return 1;
  }
};

/// The edits of a library that also finds the last child and the one before another. In addition
/// its `Adapter` has InsertOneBeforeLast(), for a root element that has children, RemoveLastOne()
/// and CountBackwards().
template <class Adapter>
class TwoWayTree : public EditedTree<Adapter> {
 public:
  std::size_t InsertBeforeLast(std::size_t count) override {
    static_cast<Adapter*>(this)->AppendOne();
    for (; count > 1; --count) static_cast<Adapter*>(this)->InsertOneBeforeLast();
    return 1;
  }

  std::size_t RemoveLast(std::size_t count) override {
    for (; count > 0; --count) static_cast<Adapter*>(this)->RemoveLastOne();
    return 1;
  }
};

/// One of the libraries that are measured.
struct Library {
  std::string name;     // in the results
  std::string version;  // name and version for readers
  /// Loads a text that outlives the tree. Result: null when the library refuses it.
  TreePointer (*load)(const std::string& text);
  /// Loads a file in the library's own way. Result: null when the library refuses it.
  TreePointer (*loadFile)(const std::string& path);
};

/// A library whose `Adapter` is a Tree with two more members, which load an empty one and return
/// whether the library has accepted the document: Load(text) and LoadFile(path).
template <class Adapter>
Library MakeLibrary(const std::string& name, const std::string& version) {
  return {name, version,
          [](const std::string& text) {
            std::unique_ptr<Adapter> tree(new Adapter);
            return TreePointer(tree->Load(text) ? tree.release() : nullptr);
          },
          [](const std::string& path) {
            std::unique_ptr<Adapter> tree(new Adapter);
            return TreePointer(tree->LoadFile(path) ? tree.release() : nullptr);
          }};
}

// Each is defined in libraries/, in the file of its name.
Library Xmldom();
Library PlainTree();
Library ExpatOnly();
Library Pugixml();
Library Libxml2();
Library Tinyxml2();
Library XercesC();

/// The name of the library that parses and keeps nothing: it offers no operation but "load".
const char* const kExpatOnly = "expat";

}  // namespace bench

#endif
