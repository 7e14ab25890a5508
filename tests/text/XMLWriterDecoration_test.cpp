#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "harness/Trees.h"
#include "harness/Writing.h"

// What the writer can put into start tags beside the attributes: a number, and for debugging the
// node's address and reference count.

namespace {

/// The address decoration of a node that is referred to `count` times.
std::string Decoration(const IXMLDOMNode* node, int count) {
  char text[80];
  std::snprintf(text, sizeof text, "  addr='%p'  refcount='%d'", static_cast<const void*>(node),
                count);
  return text;
}

/// Turns the address decoration on for a while.
class DispAddr {
 public:
  DispAddr() { SetDispAddr(true); }
  ~DispAddr() { SetDispAddr(false); }
};

}  // namespace

TEST(XMLWriterDecoration, A_number_is_written_before_the_attributes_with_three_digits_at_least) {
  Document document = Load("<p a='1'/>");
  const struct {
    int index;
    const char* written;
  } rows[] = {{0, "<p index='000' a='1'/>\n"},
              {7, "<p index='007' a='1'/>\n"},
              {123, "<p index='123' a='1'/>\n"},
              {1234, "<p index='1234' a='1'/>\n"},
              {-5, "<p index='-05' a='1'/>\n"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.index);
    Writing how;
    how.indexed = true;
    how.index = row.index;
    EXPECT_EQ(row.written, Write(Root(document), how));
  }
}

TEST(XMLWriterDecoration, A_number_goes_to_the_node_alone_and_not_to_a_document) {
  Document document = Load("<p><q/></p>");
  Writing how;
  how.indexed = true;
  how.index = 7;
  EXPECT_EQ("<p index='007'>\n  <q/>\n</p>\n", Write(Root(document), how));
  EXPECT_EQ("<p>\n  <q/>\n</p>\n", Write(document, how));
}

TEST(XMLWriterDecoration, The_address_decoration_stands_in_every_start_tag_before_all_else) {
  Document document = Load("<p a='1'>text<q>b</q></p>");
  Node held(document->SelectSingleNode("/p/q"));
  IXMLDOMNode* const root = Root(document);
  DispAddr on;
  Writing how;
  how.indexed = true;
  how.index = 7;
  EXPECT_EQ("<p" + Decoration(root, 1) + " index='007' a='1'>\n  text\n  <q" + Decoration(held, 2) +
                ">b</q>\n</p>\n",
            Write(root, how));
}

TEST(XMLWriterDecoration, The_address_decoration_of_a_document_is_that_of_its_first_child) {
  Document document = Load("<p/>");
  DispAddr on;
  Writing masked;
  masked.masked = true;
  EXPECT_EQ("<p" + Decoration(Root(document), 1) + "/>\n", Write(document));
  EXPECT_EQ("<p" + Decoration(Root(document), 1) + "></p>\n", Write(document, masked));
}
