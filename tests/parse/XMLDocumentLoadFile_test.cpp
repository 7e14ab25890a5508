#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <climits>
#include <string>
#include <thread>

#include "harness/CompactXml.h"
#include "harness/InputContext.h"
#include "harness/LoadOutcome.h"
#include "harness/LogCapture.h"
#include "harness/ReadCalls.h"
#include "harness/RefusingLog.h"
#include "harness/TemporaryFile.h"
#include "harness/Trees.h"

namespace {

const char* const kMissing = "/tmp/xmldom-file-that-is-not-there";

/// A file that cannot be opened leaves the document as it was.
void ExpectNotOpened(const std::string& path) {
  const Document document = Load("<a>x</a>");
  document->AddAttribute("v", "1");
  EXPECT_EQ(kNotOpened, LoadPath(document, path));
  EXPECT_EQ("<a>x</a>", CompactXml(document));
  EXPECT_NE(nullptr, document->m_pFirstAttribute);
}

/// Another user than root while it lives, since root may read everything.
class Nobody {
 public:
  Nobody() : m_user(geteuid()) {
    if (m_user == 0) {
      EXPECT_EQ(0, seteuid(65534));
    }
  }
  ~Nobody() { EXPECT_EQ(0, seteuid(m_user)); }

 private:
  uid_t m_user;
};

}  // namespace

TEST(XMLDocumentLoadFile, Is_not_loaded_without_a_flag_to_fill) {
  const Document document = NewDocument();
  document->loadXML("<a>x<b>");
  TemporaryFile file("<c/>");
  EXPECT_EQ(E_ARGUMENT, document->load(file.Path(), nullptr));
  EXPECT_EQ("<a>x<b/></a>", CompactXml(document));
  EXPECT_EQ(2, CNodeStackElt::m_iObjCount);
  EXPECT_EQ(XML_ERROR_NO_ELEMENTS, document->m_pSax->GetErrorCode());
}

// ---- Files that cannot be opened

TEST(XMLDocumentLoadFile, That_is_missing_leaves_the_tree) { ExpectNotOpened(kMissing); }

TEST(XMLDocumentLoadFile, With_an_empty_path_leaves_the_tree) { ExpectNotOpened(""); }

TEST(XMLDocumentLoadFile, With_a_null_path_leaves_the_tree) {
  const Document document = Load("<a>x</a>");
  short flag = kFlagUntouched;
  EXPECT_EQ(E_FILENOTOPENED, document->load(nullptr, &flag));
  EXPECT_EQ(VARIANT_FALSE, flag);
  EXPECT_EQ("<a>x</a>", CompactXml(document));
}

TEST(XMLDocumentLoadFile, Below_what_is_no_folder_leaves_the_tree) {
  TemporaryFile file("<b/>");
  ExpectNotOpened(std::string(file.Path()) + "/file");
}

TEST(XMLDocumentLoadFile, With_a_path_too_long_for_the_system_leaves_the_tree) {
  ExpectNotOpened("/tmp/" + std::string(100000, 'x'));
}

TEST(XMLDocumentLoadFile, That_may_not_be_read_leaves_the_tree) {
  TemporaryFile file("<b/>");
  ASSERT_EQ(0, chmod(file.Path(), 0));
  const Nobody nobody;
  ExpectNotOpened(file.Path());
}

TEST(XMLDocumentLoadFile, That_cannot_be_opened_replaces_the_builder_all_the_same) {
  const Document document = NewDocument();
  document->loadXML("<a><b>");
  LoadPath(document, kMissing);
  EXPECT_EQ(1, CXMLSax::m_iObjCount);
  EXPECT_EQ(nullptr, document->m_pSax->m_pNodeStack);
  EXPECT_EQ(0, CNodeStack::m_iObjCount);
  EXPECT_EQ(0, CNodeStackElt::m_iObjCount);
  EXPECT_EQ(XML_ERROR_NONE, document->m_pSax->GetErrorCode());
}

TEST(XMLDocumentLoadFile, That_cannot_be_opened_is_not_logged) {
  const Document document = NewDocument();
  LogCapture log;
  LoadPath(document, kMissing);
  EXPECT_TRUE(log.Events().empty());
}

// ---- Odd files

TEST(XMLDocumentLoadFile, Is_a_folder_and_reads_as_an_empty_text) {
  const Document document = Load("<a/>");
  EXPECT_EQ(kNotParsed, LoadPath(document, "/tmp"));
  EXPECT_EQ("", CompactXml(document));
}

TEST(XMLDocumentLoadFile, Ends_at_a_NUL_byte) {
  const struct {
    std::string contents;
    LoadOutcome outcome;
    const char* tree;
  } rows[] = {
      {std::string("<a>x</a>\0</b>", 13), kParsed, "<a>x</a>"},
      {std::string("<a>x\0y</a>", 10), kNotParsed, "<a>x</a>"},
      {std::string("\0<a/>", 5), kNotParsed, ""},
      {std::string(100000, '\0'), kNotParsed, ""},
  };
  const Document document = NewDocument();
  for (const auto& row : rows) {
    SCOPED_TRACE(row.contents.size());
    EXPECT_EQ(row.outcome, LoadFile(document, row.contents));
    EXPECT_EQ(row.tree, CompactXml(document));
  }
}

TEST(XMLDocumentLoadFile, May_be_a_pipe) {
  const std::string path = "/tmp/xmldom-pipe-" + std::to_string(getpid());
  ASSERT_EQ(0, mkfifo(path.c_str(), 0600));
  std::thread writer([&path] {
    const int pipe = open(path.c_str(), O_WRONLY);
    EXPECT_EQ(3, write(pipe, "<a>", 3));
    EXPECT_EQ(5, write(pipe, "x</a>", 5));
    close(pipe);
  });
  const Document document = NewDocument();
  const LoadOutcome outcome = LoadPath(document, path);
  // Lets the writer go when the load has not read the pipe at all.
  close(open(path.c_str(), O_RDONLY | O_NONBLOCK));
  writer.join();
  unlink(path.c_str());
  EXPECT_EQ(kParsed, outcome);
  EXPECT_EQ("<a>x</a>", CompactXml(document));
}

TEST(XMLDocumentLoadFile, May_be_in_any_encoding_that_holds_no_NUL) {
  const char* const rows[] = {
      "<a>\xc3\xa9</a>",
      "\xef\xbb\xbf<a>\xc3\xa9</a>",
      "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xe9</a>",
  };
  const Document document = NewDocument();
  for (const char* row : rows) {
    SCOPED_TRACE(row);
    EXPECT_EQ(kParsed, LoadFile(document, row));
    EXPECT_EQ("<a>\xc3\xa9</a>", CompactXml(document));
  }
}

// ---- Files larger than the parser takes

namespace {

const char* const kTooLarge =
    "CXMLSax - a text of 2147483648 bytes is larger than the parser's limit of 2147483647";

/// A file larger than INT_MAX that takes no room, since all but its start is a hole.
class HugeFile {
 public:
  explicit HugeFile(off_t size = static_cast<off_t>(INT_MAX) + 1) : m_file("<b/>") {
    EXPECT_EQ(0, truncate(m_file.Path(), size));
  }
  char* Path() { return m_file.Path(); }

 private:
  TemporaryFile m_file;
};

}  // namespace

TEST(XMLDocumentLoadFile, That_is_too_large_empties_the_document_and_does_not_parse) {
  const Document document = Load("<a/>");
  HugeFile file;
  const LogCapture log;
  EXPECT_EQ(kNotParsed, LoadPath(document, file.Path()));
  EXPECT_EQ("", CompactXml(document));
}

TEST(XMLDocumentLoadFile, That_is_too_large_is_logged_with_its_size_and_the_limit) {
  const Document document = NewDocument();
  HugeFile file;
  const LogCapture log;
  LoadPath(document, file.Path());
  ASSERT_EQ(1u, log.Events().size());
  EXPECT_EQ(Event(18, 3, kTooLarge), log.Events()[0]);
}

// The parser has no room for such a text in its buffer, and says so.
TEST(XMLDocumentLoadFile, Of_the_largest_size_is_left_to_the_parser) {
  const Document document = NewDocument();
  HugeFile file(INT_MAX);
  const ReadCalls calls([&file](int descriptor, void* memory, std::size_t size) {
    EXPECT_EQ(0, truncate(file.Path(), 4));
    return ReadCalls::Really(descriptor, memory, size);
  });
  const LogCapture log;
  const LoadOutcome outcome = LoadPath(document, file.Path());
  EXPECT_EQ(std::vector<LoggedEvent>{}, log.Events());
  if (HasInputContext()) {
    EXPECT_EQ(kNotParsed, outcome);
    EXPECT_EQ(XML_ERROR_NO_MEMORY, document->m_pSax->GetErrorCode());
  } else {
    EXPECT_EQ(kParsed, outcome);
  }
}

TEST(XMLDocumentLoadFile, Lets_a_log_exception_through) {
  const Document document = NewDocument();
  HugeFile file;
  const RefusingLog log;
  EXPECT_EQ(kTooLarge, ThrownMessage([&] { LoadPath(document, file.Path()); }));
}

TEST(XMLDocumentLoadFile, Ends_with_a_failure_for_any_other_exception) {
  const Document document = NewDocument();
  HugeFile file;
  CLogger::SetSink([](const CLogEvent&, void*) { throw 5; }, nullptr);
  EXPECT_EQ(kNotParsed, LoadPath(document, file.Path()));
  CLogger::SetSink(nullptr, nullptr);
}
