#ifndef XMLDOM_TESTS_HARNESS_RANDOMTREES_H
#define XMLDOM_TESTS_HARNESS_RANDOMTREES_H

#include <random>
#include <string>
#include <vector>

#include "harness/Trees.h"

/// Small trees and paths that have much to do with each other, the same ones in every run.
class RandomTrees {
 public:
  explicit RandomTrees(unsigned int seed) : m_engine(seed) {}

  /// A tree of up to 12 elements named a, b and c, with texts, comments, references and attributes
  /// in between; some documents have two roots.
  Document Tree();

  /// A path of up to 4 steps, some with dots, some with predicates, malformed ones among them.
  std::string Path();

  /// One that begins with "//" and has many steps up: searches come back to where they were.
  std::string ClimbingPath();

  /// A node of a tree, of any kind; borrowed.
  IXMLDOMNode* AnyNode(IXMLDOMNode* tree);

  /// A number from 0 to `limit` - 1.
  int Below(int limit);

 private:
  template <std::size_t N>
  const char* OneOf(const char* const (&texts)[N]) {
    return texts[Below(static_cast<int>(N))];
  }

  template <std::size_t N>
  std::string Steps(const char* const (&steps)[N]);

  std::mt19937 m_engine;
};

#endif
