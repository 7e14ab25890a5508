#include <xmldom/base/FileReplacement.h>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <string>

#include "harness/TemporaryFolder.h"

namespace {

using xmldom::FileSuccessor;
using xmldom::NamedFile;
using xmldom::ReplaceFile;

mode_t ModeOf(const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

/// While it lives, no file of this process can grow beyond `size` bytes.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t size) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &m_before);
    struct rlimit limit = m_before;
    limit.rlim_cur = size;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &m_before);
    std::signal(SIGXFSZ, m_handler);
  }

 private:
  void (*m_handler)(int);
  struct rlimit m_before;
};

TEST(FileReplacement, A_file_is_made_with_the_rights_of_new_files) {
  const TemporaryFolder folder;
  const mode_t before = umask(027);
  EXPECT_FALSE(ReplaceFile(folder.Path("new"), "contents"));
  umask(before);
  EXPECT_EQ("contents", folder.Read("new"));
  EXPECT_EQ(0640u, ModeOf(folder.Path("new")));
  EXPECT_EQ("new ", folder.Names());
}

TEST(FileReplacement, A_file_is_replaced_and_keeps_its_mode) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "old");
  for (const mode_t mode : {0600u, 0664u, 0755u, 04711u}) {
    chmod(path.c_str(), mode);
    EXPECT_FALSE(ReplaceFile(path, std::string(100000, 'x')));
    EXPECT_EQ(std::string(100000, 'x'), folder.Read("a"));
    EXPECT_EQ(mode, ModeOf(path));
  }
  EXPECT_FALSE(ReplaceFile(path, ""));
  EXPECT_EQ("", folder.Read("a"));
  EXPECT_EQ("a ", folder.Names());
}

TEST(FileReplacement, Who_has_the_old_file_open_reads_the_old_contents) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "old");
  const int open = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_LE(0, open);
  EXPECT_FALSE(ReplaceFile(path, "new"));
  char contents[4] = {};
  EXPECT_EQ(3, read(open, contents, 3));
  EXPECT_STREQ("old", contents);
  close(open);
}

TEST(FileReplacement, A_symbolic_link_stays_and_its_file_is_replaced) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "old");
  ASSERT_EQ(0, symlink("a", folder.Path("link").c_str()));
  EXPECT_FALSE(ReplaceFile(folder.Path("link"), "new"));
  EXPECT_EQ("new", folder.Read("a"));
  char target[8] = {};
  EXPECT_EQ(1, readlink(folder.Path("link").c_str(), target, sizeof target - 1));
}

TEST(FileReplacement, What_cannot_be_replaced_is_an_error_and_stays) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "old");
  ASSERT_EQ(0, symlink("nowhere", folder.Path("link").c_str()));
  ASSERT_EQ(0, symlink("loop", folder.Path("loop").c_str()));
  ASSERT_EQ(0, mkfifo(folder.Path("pipe").c_str(), 0600));
  EXPECT_TRUE(ReplaceFile(folder.Path(""), "new") == std::errc::is_a_directory);
  EXPECT_TRUE(ReplaceFile(folder.Path("pipe"), "new") == std::errc::invalid_argument);
  EXPECT_TRUE(ReplaceFile(folder.Path("link"), "new") == std::errc::no_such_file_or_directory);
  EXPECT_TRUE(ReplaceFile(folder.Path("loop"), "new") == std::errc::too_many_symbolic_link_levels);
  EXPECT_TRUE(ReplaceFile(folder.Path("no/b"), "new") == std::errc::no_such_file_or_directory);
  EXPECT_TRUE(ReplaceFile(folder.Path("a/b"), "new") == std::errc::not_a_directory);
  EXPECT_TRUE(ReplaceFile("", "new") == std::errc::no_such_file_or_directory);
  EXPECT_EQ("old", folder.Read("a"));
  EXPECT_EQ("a link loop pipe ", folder.Names());
}

TEST(FileReplacement, A_file_that_is_read_only_stays) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "old");
  chmod(path.c_str(), 0444);
  // Root may write to every file.
  const uid_t user = geteuid();
  if (user == 0) {
    ASSERT_EQ(0, chown(folder.Path("").c_str(), 65534, 0));
    ASSERT_EQ(0, seteuid(65534));
  }
  const std::error_code error = ReplaceFile(path, "new");
  if (user == 0) {
    ASSERT_EQ(0, seteuid(user));
  }
  EXPECT_TRUE(error == std::errc::permission_denied) << error.message();
  EXPECT_EQ("old", folder.Read("a"));
  EXPECT_EQ("a ", folder.Names());
}

TEST(FileReplacement, A_disk_that_takes_only_a_part_leaves_the_old_file_alone) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "old");
  {
    const FileSizeLimit limit(1000);
    EXPECT_TRUE(ReplaceFile(path, std::string(5000, 'x')) == std::errc::file_too_large);
    EXPECT_TRUE(ReplaceFile(folder.Path("new"), std::string(5000, 'x')) ==
                std::errc::file_too_large);
  }
  EXPECT_EQ("old", folder.Read("a"));
  EXPECT_EQ("a ", folder.Names());
}

TEST(FileReplacement, A_successor_is_removed_unless_it_takes_the_place) {
  const TemporaryFolder folder;
  for (const char* name : {"a", "new"}) {
    NamedFile file;
    folder.Write("a", "old");
    ASSERT_FALSE(xmldom::FindFile(folder.Path(name), file));
    {
      FileSuccessor successor;
      ASSERT_FALSE(successor.Create(file));
      FileSuccessor other;
      ASSERT_FALSE(other.Create(file));
      ASSERT_FALSE(other.Write("new"));
      ASSERT_FALSE(other.Finish());
    }
    EXPECT_EQ("a ", folder.Names());
    EXPECT_EQ("old", folder.Read("a"));
  }
}

TEST(FileReplacement, The_successor_of_a_file_that_does_not_exist_has_a_name) {
  const TemporaryFolder folder;
  NamedFile file;
  ASSERT_FALSE(xmldom::FindFile(folder.Path("new"), file));
  EXPECT_FALSE(file.exists);
  FileSuccessor successor;
  ASSERT_FALSE(successor.Create(file));
  EXPECT_EQ(0u, folder.Names().find(".xmldom-"));
}

TEST(FileReplacement, The_successor_of_a_file_is_for_its_owner_and_has_no_name) {
  const TemporaryFolder folder;
  NamedFile file;
  ASSERT_FALSE(xmldom::FindFile(folder.Write("a", "old"), file));
  EXPECT_TRUE(file.exists);
  FileSuccessor successor;
  ASSERT_FALSE(successor.Create(file));
  struct stat status;
  ASSERT_EQ(0, fstat(successor.Descriptor(), &status));
  EXPECT_EQ(0600u, status.st_mode & 07777);
  if (status.st_nlink > 0) GTEST_SKIP() << "this file system has no files without names";
  EXPECT_EQ("a ", folder.Names());
  ASSERT_FALSE(successor.Write("new"));
  ASSERT_FALSE(successor.Finish());
  EXPECT_EQ("a ", folder.Names());
  ASSERT_FALSE(successor.TakePlace(file.path));
  EXPECT_EQ("a ", folder.Names());
  EXPECT_EQ("new", folder.Read("a"));
}

TEST(FileReplacement, A_file_in_the_current_folder_needs_no_slash) {
  const TemporaryFolder folder;
  char before[4096];
  ASSERT_NE(nullptr, getcwd(before, sizeof before));
  ASSERT_EQ(0, chdir(folder.Path("").c_str()));
  EXPECT_FALSE(ReplaceFile("a", "new"));
  EXPECT_EQ(0, chdir(before));
  EXPECT_EQ("new", folder.Read("a"));
}

}  // namespace
