#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <xmldom/base/FileReplacement.h>

#include <cerrno>
#include <cstdint>
#include <string>

#include "harness/TemporaryFolder.h"

// Access control lists of files that are replaced.

namespace {

const char kList[] = "system.posix_acl_access";

bool l_bFailsToSet = false;

/// A list by which user 1234 and the group may do nothing, although the mode shows what the mask
/// grants: "-rw-rw----".
std::string List() {
  const struct {
    std::uint16_t tag;
    std::uint16_t rights;
    std::uint32_t id;
  } kEntries[] = {{0x01, 6, 0xFFFFFFFF},   // the owner
                  {0x02, 0, 1234},         // a user
                  {0x04, 0, 0xFFFFFFFF},   // the group
                  {0x10, 6, 0xFFFFFFFF},   // the mask
                  {0x20, 0, 0xFFFFFFFF}};  // all others
  const std::uint32_t version = 2;
  return std::string(reinterpret_cast<const char*>(&version), sizeof version) +
         std::string(reinterpret_cast<const char*>(kEntries), sizeof kEntries);
}

std::string ListOf(const std::string& path) {
  char list[200];
  const ssize_t size = getxattr(path.c_str(), kList, list, sizeof list);
  return size < 0 ? std::string() : std::string(list, static_cast<std::size_t>(size));
}

class FileReplacementRights : public testing::Test {
 protected:
  void SetUp() override {
    m_path = m_folder.Write("a", "old");
    const std::string list = List();
    const int result = setxattr(m_path.c_str(), kList, list.data(), list.size(), 0);
    if (result != 0) GTEST_SKIP() << "this file system has no such lists in this byte order";
  }

  const TemporaryFolder m_folder;
  std::string m_path;
};

TEST_F(FileReplacementRights, Of_a_list_stay) {
  EXPECT_FALSE(xmldom::ReplaceFile(m_path, "new"));
  EXPECT_EQ("new", m_folder.Read("a"));
  EXPECT_EQ(List(), ListOf(m_path));
}

// A new file gets the list that its folder hands on.
TEST_F(FileReplacementRights, Of_a_file_without_a_list_are_those_of_its_mode) {
  const std::string path = m_folder.Write("b", "old");
  ASSERT_EQ(0, chmod(path.c_str(), 0664));
  const std::string list = List();
  ASSERT_EQ(0, setxattr(m_folder.Path("").c_str(), "system.posix_acl_default", list.data(),
                        list.size(), 0));
  EXPECT_FALSE(xmldom::ReplaceFile(path, "new"));
  EXPECT_EQ("new", m_folder.Read("b"));
  EXPECT_EQ("", ListOf(path));
  struct stat status;
  ASSERT_EQ(0, stat(path.c_str(), &status));
  EXPECT_EQ(0664u, status.st_mode & 07777);
}

// The mode alone would let the group write.
TEST_F(FileReplacementRights, That_cannot_be_kept_leave_the_old_file) {
  l_bFailsToSet = true;
  const std::error_code error = xmldom::ReplaceFile(m_path, "new");
  l_bFailsToSet = false;
  EXPECT_EQ(std::errc::no_space_on_device, error);
  EXPECT_EQ("old", m_folder.Read("a"));
  EXPECT_EQ(List(), ListOf(m_path));
  EXPECT_EQ("a ", m_folder.Names());
}

}  // namespace

/// In place of that of the C library, for the functions that this program has inlined.
extern "C" int fsetxattr(int file, const char* name, const void* value, std::size_t size,
                         int flags) noexcept {
  if (l_bFailsToSet && std::string(name) == kList) {
    errno = ENOSPC;
    return -1;
  }
  return static_cast<int>(syscall(SYS_fsetxattr, file, name, value, size, flags));
}
