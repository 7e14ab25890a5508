#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <string>
#include <vector>

#include "harness/CompactXml.h"
#include "harness/Encodings.h"
#include "harness/InputContext.h"
#include "harness/LoadOutcome.h"
#include "harness/ReadCalls.h"
#include "harness/TemporaryFile.h"
#include "harness/Trees.h"

// How a file comes from the system to the parser: as one piece, whatever the calls of the system
// give and whatever becomes of the file meanwhile.

namespace {

/// What a parse told: each piece of text in brackets, the tags, and the error at the end.
struct Pieces {
  std::string all;

  static void Text(void* self, const char* text, int length) {
    static_cast<Pieces*>(self)->all += "[" + std::string(text, static_cast<std::size_t>(length));
    static_cast<Pieces*>(self)->all += "]";
  }
  static void Start(void* self, const char* name, const char**) {
    static_cast<Pieces*>(self)->all += std::string("<") + name + ">";
  }
  static void End(void* self, const char* name) {
    static_cast<Pieces*>(self)->all += std::string("</") + name + ">";
  }
};

/// The pieces that the handlers of a builder get in a load.
template <class LoadCall>
std::string PiecesOf(const LoadCall& load) {
  const Document document = NewDocument();
  CXMLSax sax(document);
  sax.CreateParser();
  Pieces pieces;
  XML_SetUserData(sax.m_p, &pieces);
  XML_SetElementHandler(sax.m_p, Pieces::Start, Pieces::End);
  XML_SetDefaultHandlerExpand(sax.m_p, Pieces::Text);
  const bool parsed = load(sax);
  char error[300];
  return pieces.all + (parsed ? "parsed" : "refused") + sax.GetErrorStr(error, sizeof error) +
         std::to_string(sax.GetCurrentByteCount());
}

void ExpectPiecesOfText(const std::string& contents) {
  TemporaryFile file(contents);
  EXPECT_EQ(PiecesOf([&](CXMLSax& sax) { return sax.LoadXML(contents.c_str()); }),
            PiecesOf([&](CXMLSax& sax) { return sax.LoadFromFile(file.Path()) == S_OK; }));
}

/// Appends to a file when it is read for the first time.
class GrowingFile {
 public:
  GrowingFile(const std::string& contents, const std::string& more)
      : m_file(contents), m_calls([this, more](int file, void* memory, std::size_t size) {
          if (!m_hasGrown) std::ofstream(m_file.Path(), std::ios_base::app) << more;
          m_hasGrown = true;
          return ReadCalls::Really(file, memory, size);
        }) {}
  char* Path() { return m_file.Path(); }

 private:
  bool m_hasGrown = false;
  TemporaryFile m_file;
  ReadCalls m_calls;
};

}  // namespace

TEST(XMLDocumentLoadFileReading, Cuts_a_file_into_the_pieces_of_its_text) {
  const std::string longText = Repeat("word &amp; word\r\n", 3000);
  for (const std::string& contents : {
           std::string("<a/>"),
           std::string("<a>x\ny<b/></a>"),
           "<a>" + longText + "</a>",
           "<a>" + longText + "</b>",
           std::string("<a>"),
           std::string("abc"),
           std::string("<a/>x"),
           std::string("<!DOCTYPE a [<!ENTITY e 'x<b/>y'>]><a>&e;&e;</a>"),
       }) {
    SCOPED_TRACE(contents.substr(0, 60));
    ExpectPiecesOfText(contents);
  }
}

TEST(XMLDocumentLoadFileReading, Cuts_a_file_in_any_encoding_into_the_pieces_of_its_text) {
  for (const EncodedDocument& document : EncodedDocuments()) {
    SCOPED_TRACE(document.encoding);
    ExpectPiecesOfText(document.bytes);
  }
}

TEST(XMLDocumentLoadFileReading, Cuts_files_of_every_size_around_those_of_buffers) {
  for (int size : {1023, 1024, 1025, 4095, 4096, 4097, 65535, 65536, 65537}) {
    SCOPED_TRACE(size);
    ExpectPiecesOfText("<a>" + std::string(static_cast<std::size_t>(size) - 7, 'x') + "</a>");
  }
}

TEST(XMLDocumentLoadFileReading, Ends_the_text_at_a_NUL_byte_wherever_it_stands) {
  for (const std::string& contents :
       {std::string("\0", 1), std::string("\0<a/>", 5), std::string("<a/>\0", 5),
        std::string("<a>\0</a>", 8), std::string("<a/>") + std::string(100000, '\0')}) {
    SCOPED_TRACE(contents.size());
    ExpectPiecesOfText(contents);
  }
}

namespace {

/// Opens a file at the first element that it is told of, and keeps it open.
struct OpeningHandler {
  int descriptor = -1;

  static void Start(void* self, const char*, const char**) {
    int& descriptor = static_cast<OpeningHandler*>(self)->descriptor;
    if (descriptor < 0) descriptor = open("/dev/null", O_RDONLY);
  }
};

}  // namespace

// The file has been read by then, and its descriptor is free for the next file that is opened.
TEST(XMLDocumentLoadFileReading, Leaves_a_file_alone_that_a_handler_opens_meanwhile) {
  TemporaryFile file("<a/>");
  const Document document = NewDocument();
  CXMLSax sax(document);
  sax.CreateParser();
  OpeningHandler handler;
  XML_SetUserData(sax.m_p, &handler);
  XML_SetElementHandler(sax.m_p, OpeningHandler::Start, nullptr);
  XML_SetDefaultHandlerExpand(sax.m_p, nullptr);
  EXPECT_EQ(S_OK, sax.LoadFromFile(file.Path()));
  ASSERT_GE(handler.descriptor, 0);
  EXPECT_EQ(0, close(handler.descriptor));
}

// A service may have closed its standard input.
TEST(XMLDocumentLoadFileReading, Reads_a_file_with_the_descriptor_0_like_any_other) {
  TemporaryFile file("<a>x</a>");
  const int input = dup(STDIN_FILENO);
  close(STDIN_FILENO);
  std::vector<int> descriptors;
  std::string asked;
  const Document document = NewDocument();
  LoadOutcome outcome = kParsed;
  {
    const ReadCalls calls([&](int descriptor, void* memory, std::size_t size) {
      descriptors.push_back(descriptor);
      asked += std::to_string(size) + " ";
      return ReadCalls::Really(descriptor, memory, size);
    });
    outcome = LoadPath(document, file.Path());
  }
  const bool isClosed = fcntl(STDIN_FILENO, F_GETFD) == -1;
  if (input >= 0) {
    dup2(input, STDIN_FILENO);
    close(input);
  }
  EXPECT_EQ(kParsed, outcome);
  EXPECT_EQ((std::vector<int>{0, 0}), descriptors);
  EXPECT_EQ("8 1 ", asked);
  EXPECT_TRUE(isClosed);
}

// A file that is read to its end needs no more memory than its size, unless it grows.
TEST(XMLDocumentLoadFileReading, Looks_for_the_end_with_a_byte_of_its_own) {
  if (!HasInputContext()) GTEST_SKIP() << "the parser has no memory of its own";
  TemporaryFile file("<a>x</a>");
  std::vector<std::size_t> sizes;
  const ReadCalls calls([&sizes](int descriptor, void* memory, std::size_t size) {
    sizes.push_back(size);
    return ReadCalls::Really(descriptor, memory, size);
  });
  const Document document = NewDocument();
  EXPECT_EQ(kParsed, LoadPath(document, file.Path()));
  EXPECT_EQ((std::vector<std::size_t>{8, 1}), sizes);
}

TEST(XMLDocumentLoadFileReading, Takes_an_empty_file_for_an_empty_text) { ExpectPiecesOfText(""); }

TEST(XMLDocumentLoadFileReading, Has_the_system_read_into_the_memory_that_is_parsed) {
  if (!HasInputContext()) GTEST_SKIP() << "the parser has no memory of its own";
  TemporaryFile file("<a>x</a>");
  const void* readInto = nullptr;
  const ReadCalls calls([&readInto](int descriptor, void* memory, std::size_t size) {
    if (readInto == nullptr) readInto = memory;
    return ReadCalls::Really(descriptor, memory, size);
  });
  const Document document = NewDocument();
  EXPECT_EQ(kParsed, LoadPath(document, file.Path()));
  int offset = 0;
  int size = 0;
  EXPECT_EQ(document->m_pSax->GetInputContext(&offset, &size), readInto);
  EXPECT_EQ(8, size);
}

TEST(XMLDocumentLoadFileReading, Puts_together_what_the_system_gives_in_parts) {
  const std::string xml = "<a>" + std::string(300, 'x') + "</a>";
  TemporaryFile file(xml);
  bool isInterrupted = false;
  const ReadCalls calls([&](int descriptor, void* memory, std::size_t size) -> ssize_t {
    isInterrupted = !isInterrupted;
    if (isInterrupted) {
      errno = EINTR;
      return -1;
    }
    return ReadCalls::Really(descriptor, memory, std::min<std::size_t>(size, 7));
  });
  const Document document = NewDocument();
  EXPECT_EQ(kParsed, LoadPath(document, file.Path()));
  EXPECT_EQ(xml, CompactXml(document));
}

TEST(XMLDocumentLoadFileReading, Reads_a_file_to_its_end_that_grows_meanwhile) {
  for (int more : {1, 10, 5000, 1000000}) {
    SCOPED_TRACE(more);
    const std::string text(static_cast<std::size_t>(more), 'y');
    GrowingFile file("<a>x", text + "</a>");
    const Document document = NewDocument();
    EXPECT_EQ(kParsed, LoadPath(document, file.Path()));
    EXPECT_EQ("<a>x" + text + "</a>", CompactXml(document));
  }
}

TEST(XMLDocumentLoadFileReading, Reads_an_empty_file_that_grows_meanwhile) {
  GrowingFile file("", "<a>x</a>");
  const Document document = NewDocument();
  EXPECT_EQ(kParsed, LoadPath(document, file.Path()));
  EXPECT_EQ("<a>x</a>", CompactXml(document));
}

TEST(XMLDocumentLoadFileReading, Parses_what_is_left_of_a_file_that_shrinks_meanwhile) {
  const Document document = NewDocument();
  for (int left : {0, 3, 11}) {
    SCOPED_TRACE(left);
    TemporaryFile file("<a>x<b/></a>    <!-- the rest -->");
    const ReadCalls calls([&](int descriptor, void* memory, std::size_t size) {
      EXPECT_EQ(0, truncate(file.Path(), left));
      return ReadCalls::Really(descriptor, memory, size);
    });
    EXPECT_EQ(kNotParsed, LoadPath(document, file.Path()));
  }
  EXPECT_EQ("<a>x<b/></a>", CompactXml(document));
}
