#ifndef XMLDOM_BENCH_LIBRARY_H
#define XMLDOM_BENCH_LIBRARY_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "Operation.h"

namespace bench {

/// A document that one library has loaded. A member may be called only when the library offers the
/// operation.
class Tree {
 public:
  Tree() = default;
  virtual ~Tree() = default;

  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;

  /// Writes the whole document as indented text into memory. Result: whether there was any.
  virtual bool Write();

  /// Collects the text below the root element. Result: whether there was any.
  virtual bool Text();

  /// Result: how many nodes the path selects.
  virtual std::size_t SelectAll(const char* path);

  /// Result: whether the path selects any node.
  virtual bool SelectFirst(const char* path);

  /// Compares with a tree of the same library.
  virtual bool Equals(Tree& other);

  /// Adds an element of that name behind the last child of the root element, `count` times.
  virtual void Append(const char* name, std::size_t count);

  /// Adds an element of that name before the first child of the root element, `count` times.
  virtual void InsertFirst(const char* name, std::size_t count);

  /// Takes the first child of the root element out and destroys it, `count` times.
  virtual void RemoveFirst(std::size_t count);

  /// Result: the heap bytes of the nodes, their names and their values alone; 0 from a library that
  /// does not show them.
  virtual std::size_t RecordBytes() const { return 0; }
};

/// One library, as far as it is measured here.
class Library {
 public:
  Library() = default;
  virtual ~Library() = default;

  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  virtual std::string Name() const = 0;     ///< In results and on the command line.
  virtual std::string Version() const = 0;  ///< Name and version for readers.

  virtual bool Offers(Operation operation) const = 0;

  /// Whether a name in a path has to tell its namespace, which the paths here do not.
  virtual bool ResolvesNamespaces() const { return false; }

  /// Loads a text that stays where it is. Result: null when the library refuses it.
  virtual std::unique_ptr<Tree> Load(const std::string& text) const = 0;

  /// Loads a file in the library's own way. Result: null when the library refuses it.
  virtual std::unique_ptr<Tree> LoadFile(const std::string& path) const = 0;
};

/// All libraries, xmldom first.
const std::vector<std::unique_ptr<Library>>& AllLibraries();

/// The library of that name; null when there is none.
const Library* FindLibrary(const std::string& name);

}  // namespace bench

#endif
