#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <cstring>
#include <string>

#include "harness/InputContext.h"
#include "harness/Trees.h"

namespace {

/// A buffer that shows how much of it was written.
class Buffer {
 public:
  Buffer() { std::memset(m_bytes, '#', sizeof m_bytes); }
  char* Get() { return m_bytes; }
  /// The text in it; the byte behind its terminator must be untouched, and so must all that follow.
  std::string Take() {
    const std::size_t length = strnlen(m_bytes, sizeof m_bytes);
    for (std::size_t i = length + 1; i < sizeof m_bytes; ++i) EXPECT_EQ('#', m_bytes[i]);
    return std::string(m_bytes, length);
  }

 private:
  char m_bytes[256];
};

Document LoadAnything(const std::string& xml) {
  Document document = NewDocument();
  document->loadXML(xml.c_str());
  return document;
}

const std::string kUnwritten(256, '#');

}  // namespace

// ---- GetErrorTag

TEST(XMLSaxErrorTag, Is_cut_to_the_buffer) {
  const struct {
    int size;
    const char* tag;
  } rows[] = {{100, "</abc>"}, {7, "</abc>"}, {6, "</abc"}, {3, "</"}, {2, "<"}, {1, ""}};
  if (!HasInputContext()) GTEST_SKIP() << "the parser keeps no text";
  const Document document = LoadAnything("<a></abc>");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.size);
    Buffer buffer;
    EXPECT_EQ(buffer.Get(), document->m_pSax->GetErrorTag(buffer.Get(), row.size));
    EXPECT_EQ(row.tag, buffer.Take());
  }
}

TEST(XMLSaxErrorTag, Writes_nothing_into_a_buffer_without_room) {
  const Document document = LoadAnything("<a></abc>");
  for (int size : {0, -1}) {
    SCOPED_TRACE(size);
    Buffer buffer;
    EXPECT_EQ(buffer.Get(), document->m_pSax->GetErrorTag(buffer.Get(), size));
    EXPECT_EQ(kUnwritten, buffer.Take());
  }
}

TEST(XMLSaxErrorTag, Is_undefined_without_input) {
  const struct {
    int size;
    const char* tag;
  } rows[] = {{10, "undefined"}, {9, "undefine"}, {2, "u"}, {1, ""}};
  const Document document = LoadAnything("");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.size);
    Buffer buffer;
    EXPECT_EQ(buffer.Get(), document->m_pSax->GetErrorTag(buffer.Get(), row.size));
    EXPECT_EQ(row.tag, Text(buffer.Get()));
  }
}

TEST(XMLSaxErrorTag, Clears_the_rest_of_the_buffer_without_input) {
  const Document document = LoadAnything("");
  Buffer buffer;
  document->m_pSax->GetErrorTag(buffer.Get(), 100);
  EXPECT_EQ("undefined" + std::string(91, '\0'), std::string(buffer.Get(), 100));
  EXPECT_EQ('#', buffer.Get()[100]);
}

TEST(XMLSaxErrorTag, Writes_nothing_without_input_and_without_room) {
  const Document document = LoadAnything("");
  Buffer buffer;
  document->m_pSax->GetErrorTag(buffer.Get(), 0);
  EXPECT_EQ(kUnwritten, buffer.Take());
}

TEST(XMLSaxErrorTag, Reaches_from_the_last_opening_bracket_to_the_first_closing_one) {
  const struct {
    const char* xml;
    const char* tag;
  } rows[] = {
      {"<a/>", "<a/>"},
      {"<a>x</a> ", "</a>"},
      {"<a>x<b/>y</c>", "</c>"},
      {"<a>x > y &u; z</a>", "<a>"},
      {"<a><b v='<'/></a>", "<'/>"},
      {"<a", "<a"},
      {"x", "x"},
      {"<", "<"},
      {">", ">"},
      {">x>", ">x>"},
      {"<>", "<>"},
      {"x y<a>", "x y<a>"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.xml);
    const Document document = LoadAnything(row.xml);
    Buffer buffer;
    EXPECT_EQ(ShownTag(row.tag), Text(document->m_pSax->GetErrorTag(buffer.Get(), 100)));
  }
}

// ---- GetErrorStr

TEST(XMLSaxErrorStr, Tells_reason_tag_and_place) {
  const struct {
    const char* xml;
    std::string text;
  } rows[] = {
      {"<a>\n<b></a>",
       "Parsing error \"mismatched tag\", tag \"" + ShownTag("</a>") + "\", line 2, column 5"},
      {"", "Parsing error \"no element found\", tag \"undefined\", line 1, column 0"},
      // No error has no reason.
      {"<a/>", "Parsing error \"(null)\", tag \"" + ShownTag("<a/>") + "\", line 1, column 4"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.xml);
    const Document document = LoadAnything(row.xml);
    Buffer buffer;
    EXPECT_EQ(buffer.Get(), document->m_pSax->GetErrorStr(buffer.Get(), 256));
    EXPECT_EQ(row.text, buffer.Take());
  }
}

TEST(XMLSaxErrorStr, Holds_255_bytes_of_the_tag) {
  const std::string tag = "</" + std::string(300, 'x') + ">";
  const Document document = LoadAnything("<a>" + tag);
  char buffer[1024];
  EXPECT_EQ("Parsing error \"mismatched tag\", tag \"" + ShownTag(tag.substr(0, 255)) +
                "\", line 1, column 5",
            Text(document->m_pSax->GetErrorStr(buffer, sizeof buffer)));
}

TEST(XMLSaxErrorStr, Is_cut_to_the_buffer) {
  const std::string whole =
      "Parsing error \"mismatched tag\", tag \"" + ShownTag("</b>") + "\", line 1, column 5";
  const Document document = LoadAnything("<a></b>");
  for (std::size_t size : {whole.size() + 1, whole.size(), std::size_t(20), std::size_t(1)}) {
    SCOPED_TRACE(size);
    Buffer buffer;
    document->m_pSax->GetErrorStr(buffer.Get(), static_cast<int>(size));
    EXPECT_EQ(whole.substr(0, size - 1), buffer.Take());
  }
}

TEST(XMLSaxErrorStr, Writes_nothing_into_a_buffer_without_room) {
  const Document document = LoadAnything("<a></b>");
  for (int size : {0, -1}) {
    SCOPED_TRACE(size);
    Buffer buffer;
    EXPECT_EQ(buffer.Get(), document->m_pSax->GetErrorStr(buffer.Get(), size));
    EXPECT_EQ(kUnwritten, buffer.Take());
  }
}
