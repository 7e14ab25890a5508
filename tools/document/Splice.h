#ifndef XMLDOM_TOOLS_DOCUMENT_SPLICE_H
#define XMLDOM_TOOLS_DOCUMENT_SPLICE_H

#include <cstddef>
#include <string>
#include <vector>

namespace tool {

/// Parts of a text that are to be replaced, all at once. Places are offsets into the text as it is
/// before.
class Splices {
 public:
  /// Puts `replacement` in the place of the bytes from `begin` to `end`.
  void Replace(std::size_t begin, std::size_t end, const std::string& replacement) {
    m_splices.push_back({begin, end, replacement});
  }
  void Insert(std::size_t at, const std::string& inserted) { Replace(at, at, inserted); }
  void Remove(std::size_t begin, std::size_t end) { Replace(begin, end, std::string()); }

  /// Result: the text with all parts replaced; what is inserted at one place stands in the order in
  /// which that was asked for. Bad input: parts that overlap, or lie outside the text, throw a
  /// std::logic_error. Cost: linear in both texts; sorting the parts takes n log n.
  std::string Apply(const std::string& text);

 private:
  struct Splice {
    std::size_t begin;
    std::size_t end;
    std::string replacement;
  };

  std::vector<Splice> m_splices;
};

}  // namespace tool

#endif
