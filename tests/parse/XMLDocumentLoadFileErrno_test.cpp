#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <cerrno>
#include <climits>
#include <cstring>
#include <string>

#include "harness/AllocationFailure.h"
#include "harness/CompactXml.h"
#include "harness/LoadOutcome.h"
#include "harness/ReadCalls.h"
#include "harness/TemporaryFile.h"
#include "harness/Trees.h"

// What errno says after the load of a file.

namespace {

const int kErrnoBefore = EDOM;

/// What errno is after a load of `path`, which has to end with `outcome`.
int ErrnoAfter(const std::string& path, const LoadOutcome& outcome) {
  const Document document = NewDocument();
  errno = kErrnoBefore;
  const LoadOutcome found = LoadPath(document, path);
  const int number = errno;
  EXPECT_EQ(outcome, found);
  return number;
}

/// Gives the first `given` bytes of a file and fails then.
class FailingFile {
 public:
  FailingFile(const std::string& contents, std::size_t given, int error)
      : m_file(contents), m_calls([given, error](int file, void* memory, std::size_t size) mutable {
          if (given == 0) {
            errno = error;
            return static_cast<ssize_t>(-1);
          }
          const ssize_t count = ReadCalls::Really(file, memory, size < given ? size : given);
          given -= static_cast<std::size_t>(count);
          return count;
        }) {}
  char* Path() { return m_file.Path(); }

 private:
  TemporaryFile m_file;
  ReadCalls m_calls;
};

}  // namespace

TEST(XMLDocumentLoadFileErrno, Is_0_when_all_of_the_file_was_read) {
  TemporaryFile whole("<a/>");
  EXPECT_EQ(0, ErrnoAfter(whole.Path(), kParsed));
  TemporaryFile broken("<a>");
  EXPECT_EQ(0, ErrnoAfter(broken.Path(), kNotParsed));
  TemporaryFile empty("");
  EXPECT_EQ(0, ErrnoAfter(empty.Path(), kNotParsed));
  TemporaryFile ended(std::string("<a/>\0<", 6));
  EXPECT_EQ(0, ErrnoAfter(ended.Path(), kParsed));
  EXPECT_EQ(0, ErrnoAfter("/dev/null", kNotParsed));
}

TEST(XMLDocumentLoadFileErrno, Tells_why_the_file_could_not_be_opened) {
  TemporaryFile file("<a/>");
  EXPECT_EQ(ENOENT, ErrnoAfter("/tmp/xmldom-file-that-is-not-there", kNotOpened));
  EXPECT_EQ(ENOENT, ErrnoAfter("", kNotOpened));
  EXPECT_EQ(ENOTDIR, ErrnoAfter(std::string(file.Path()) + "/file", kNotOpened));
  EXPECT_EQ(ENAMETOOLONG, ErrnoAfter("/tmp/" + std::string(100000, 'x'), kNotOpened));
}

TEST(XMLDocumentLoadFileErrno, Tells_that_the_file_may_not_be_read) {
  TemporaryFile file("<a/>");
  ASSERT_EQ(0, chmod(file.Path(), 0));
  // Root may read everything.
  const uid_t user = geteuid();
  if (user == 0) {
    ASSERT_EQ(0, seteuid(65534));
  }
  const int number = ErrnoAfter(file.Path(), kNotOpened);
  if (user == 0) {
    ASSERT_EQ(0, seteuid(user));
  }
  EXPECT_EQ(EACCES, number);
}

TEST(XMLDocumentLoadFileErrno, Tells_that_there_was_no_path) {
  const Document document = NewDocument();
  short flag = kFlagUntouched;
  errno = kErrnoBefore;
  EXPECT_EQ(E_FILENOTOPENED, document->load(nullptr, &flag));
  EXPECT_EQ(EINVAL, errno);
}

TEST(XMLDocumentLoadFileErrno, Is_left_alone_without_a_flag_to_fill) {
  const Document document = NewDocument();
  TemporaryFile file("<a/>");
  errno = kErrnoBefore;
  EXPECT_EQ(E_ARGUMENT, document->load(file.Path(), nullptr));
  EXPECT_EQ(kErrnoBefore, errno);
}

TEST(XMLDocumentLoadFileErrno, Tells_that_it_was_a_folder) {
  EXPECT_EQ(EISDIR, ErrnoAfter("/tmp", kNotParsed));
}

TEST(XMLDocumentLoadFileErrno, Tells_an_error_of_reading_whatever_came_of_the_text) {
  for (std::size_t given : {0u, 3u, 7u}) {
    SCOPED_TRACE(given);
    FailingFile file("<a>x</a>", given, EIO);
    EXPECT_EQ(EIO, ErrnoAfter(file.Path(), kNotParsed));
  }
  FailingFile file("<a>x</a>", 8, ESTALE);
  EXPECT_EQ(ESTALE, ErrnoAfter(file.Path(), kParsed));
}

TEST(XMLDocumentLoadFileErrno, Tells_that_the_file_is_too_large_whatever_the_log_function_does) {
  TemporaryFile file("<b/>");
  ASSERT_EQ(0, truncate(file.Path(), static_cast<off_t>(INT_MAX) + 1));
  CLogger::SetSink([](const CLogEvent&, void*) { errno = EDOM; }, nullptr);
  EXPECT_EQ(EFBIG, ErrnoAfter(file.Path(), kNotParsed));
  CLogger::SetSink([](const CLogEvent&, void*) { throw 5; }, nullptr);
  EXPECT_EQ(EFBIG, ErrnoAfter(file.Path(), kNotParsed));
  CLogger::SetSink(nullptr, nullptr);
}

TEST(XMLDocumentLoadFileErrno, Tells_that_memory_was_out_before_the_file_was_read) {
  TemporaryFile file("<a><b/></a>");
  bool wasOut = false;
  for (int allowed = 0;; ++allowed) {
    SCOPED_TRACE(allowed);
    const Document document = NewDocument();
    CXMLSax sax(document);
    sax.CreateParser();
    HRESULT result = S_FALSE;
    int number = kErrnoBefore;
    {
      const AllocationFailure limit(allowed);
      result = sax.LoadFromFile(file.Path());
      number = errno;
    }
    EXPECT_TRUE(number == 0 || (number == ENOMEM && result == S_FALSE)) << number;
    wasOut = wasOut || number == ENOMEM;
    if (result == S_OK) {
      EXPECT_EQ(0, number);
      break;
    }
  }
  EXPECT_TRUE(wasOut);
}
