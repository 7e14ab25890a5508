#include <xmldom/xmldom_ptr.h>

#include <iterator>

// What the concepts of C++20 ask of the ranges and pointers. This only has to compile.

// clang++ before 16 does not compile the views of GNU's standard library.
#if defined(__cpp_lib_ranges) && defined(__cpp_lib_concepts) && \
    (!defined(__clang_major__) || __clang_major__ >= 16)
#include <algorithm>
#include <concepts>
#include <ranges>

static_assert(std::ranges::forward_range<XMLNodeChain>);
static_assert(std::ranges::forward_range<const XMLNodeChain>);
static_assert(std::ranges::forward_range<XMLNodes>);
static_assert(std::ranges::forward_range<const XMLNodes>);
static_assert(std::totally_ordered<XMLPtr<IXMLDOMNode>>);
static_assert(std::equality_comparable<XMLPtr<const IXMLDOMNode>>);

long CountElements(IXMLDOMNode* node) {
  const auto isElement = [](const XMLPtr<IXMLDOMNode>& child) {
    return child->m_eNodeType == NODE_ELEMENT;
  };
  return std::ranges::count_if(xmldom::Children(node), isElement) +
         std::ranges::distance(xmldom::Attributes(node) | std::views::take(1));
}
#endif
