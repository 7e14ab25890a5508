// Replaces parts of a text in one pass over it, in the order in which they stand.
// Tested by tests/tool/Splice_test.cpp.

#include <tools/document/Splice.h>

#include <algorithm>
#include <stdexcept>

namespace tool {

std::string Splices::Apply(const std::string& text) {
  std::stable_sort(m_splices.begin(), m_splices.end(),
                   [](const Splice& a, const Splice& b) { return a.begin < b.begin; });
  std::string result;
  std::size_t done = 0;
  for (const Splice& splice : m_splices) {
    if (splice.begin < done || splice.end < splice.begin || splice.end > text.size()) {
      throw std::logic_error("parts to be replaced overlap");
    }
    result.append(text, done, splice.begin - done);
    result += splice.replacement;
    done = splice.end;
  }
  return result.append(text, done, std::string::npos);
}

}  // namespace tool
