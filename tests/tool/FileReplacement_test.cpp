#include <tools/io/FileReplacement.h>

#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <tools/io/FileLock.h>
#include <tools/io/Input.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <fstream>
#include <string>
#include <thread>

#include "harness/TemporaryFolder.h"

// The lock of a file that is replaced, and both ways of replacing it. What needs another file
// system or another process is in replacement_test.bash.

namespace {

using tool::FileLock;
using tool::Input;
using tool::ReadInputToReplace;
using tool::ReadWhole;
using tool::ReplaceFile;
using tool::ReplacementWay;

const ReplacementWay kByNewFile = {"", false};
const ReplacementWay kIntoFile = {"", true};

ino_t InodeOf(const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

/// Whether another open file could be locked now.
bool CanLock(const std::string& path) {
  const int other = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  const bool can = flock(other, LOCK_EX | LOCK_NB) == 0;
  close(other);
  return can;
}

/// Waits until somebody waits for the lock of a file. Result: false when nobody is seen to, for a
/// long time.
bool AwaitWaiter(ino_t inode) {
  for (int round = 0; round < 5000; ++round) {
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
      const bool isWaiting = line.find("->") != std::string::npos;
      if (isWaiting && line.find(":" + std::to_string(inode) + " ") != std::string::npos)
        return true;
    }
    usleep(1000);
  }
  return false;
}

class FileReplacement : public testing::Test {
 protected:
  void SetUp() override { m_path = m_folder.Write("a.xml", "old contents"); }

  /// Replaces the file. Result: the reason why not; empty when it has been replaced.
  std::string Replace(const std::string& to, const ReplacementWay& way) {
    Input input;
    if (!ReadInputToReplace(m_path, input)) return "not read";
    return Replace(input, to, way);
  }

  static std::string Replace(const Input& input, const std::string& to, const ReplacementWay& way) {
    std::string reason;
    return ReplaceFile(*input.lock, input.text, to, way, reason) ? "" : reason;
  }

  TemporaryFolder m_folder;
  std::string m_path;
};

TEST_F(FileReplacement, Lock_lasts_from_reading_to_replacing) {
  {
    Input input;
    ASSERT_TRUE(ReadInputToReplace(m_path, input));
    EXPECT_EQ("old contents", input.text);
    EXPECT_FALSE(CanLock(m_path));
  }
  EXPECT_TRUE(CanLock(m_path));
}

TEST_F(FileReplacement, Who_waited_for_a_file_that_has_been_replaced_locks_the_new_one) {
  Input first;
  ASSERT_TRUE(ReadInputToReplace(m_path, first));
  Input second;
  std::thread waiting([&] { ReadInputToReplace(m_path, second); });
  const bool isWaiting = AwaitWaiter(InodeOf(m_path));
  EXPECT_EQ("", Replace(first, "new", kByNewFile));
  first = Input();
  waiting.join();
  EXPECT_EQ("new", second.text);
  EXPECT_FALSE(CanLock(m_path));
  EXPECT_EQ("", Replace(second, "newer", kByNewFile));
  EXPECT_EQ("newer", m_folder.Read("a.xml"));
  if (!isWaiting) GTEST_SKIP() << "the system does not tell who waits for a lock";
}

TEST_F(FileReplacement, Changes_by_several_processes_are_all_kept) {
  const int changes = 25;
  m_folder.Write("a.xml", "");
  for (const char* sign : {"a", "b"}) {
    if (fork() != 0) continue;
    int failures = 0;
    for (int i = 0; i < changes; ++i) {
      Input input;
      if (!ReadInputToReplace(m_path, input)) _exit(2);
      const std::string reason = Replace(input, input.text + sign, i % 2 ? kIntoFile : kByNewFile);
      if (!reason.empty()) ++failures;
    }
    _exit(failures != 0);
  }
  for (int child = 0; child < 2; ++child) {
    int status = -1;
    wait(&status);
    EXPECT_EQ(0, status);
  }
  EXPECT_EQ(2u * changes, m_folder.Read("a.xml").size());
  EXPECT_EQ("a.xml ", m_folder.Names());
}

TEST_F(FileReplacement, New_file_takes_the_place_of_the_old_one) {
  const ino_t before = InodeOf(m_path);
  EXPECT_EQ("", Replace("new", kByNewFile));
  EXPECT_EQ("new", m_folder.Read("a.xml"));
  EXPECT_NE(before, InodeOf(m_path));
}

TEST_F(FileReplacement, Writing_into_the_file_leaves_it_the_same_file) {
  const ino_t before = InodeOf(m_path);
  for (const char* to : {"new", "contents that are longer than the old ones", "", "x"}) {
    EXPECT_EQ("", Replace(to, kIntoFile));
    EXPECT_EQ(to, m_folder.Read("a.xml"));
  }
  EXPECT_EQ(before, InodeOf(m_path));
  EXPECT_EQ("a.xml ", m_folder.Names());
}

TEST_F(FileReplacement, Suffix_keeps_the_old_contents_in_both_ways) {
  EXPECT_EQ("", Replace("new", {".1", false}));
  EXPECT_EQ("", Replace("newer", {".2", true}));
  EXPECT_EQ("a.xml a.xml.1 a.xml.2 ", m_folder.Names());
  EXPECT_EQ("newer", m_folder.Read("a.xml"));
  EXPECT_EQ("old contents", m_folder.Read("a.xml.1"));
  EXPECT_EQ("new", m_folder.Read("a.xml.2"));
}

TEST_F(FileReplacement, File_with_several_names_is_only_written_into) {
  const std::string other = m_folder.Path("b.xml");
  ASSERT_EQ(0, link(m_path.c_str(), other.c_str()));
  EXPECT_EQ("", Replace("old contents", kByNewFile));
  EXPECT_EQ(
      "it has 2 names (hard links), of which the others would keep the old contents; "
      "--in-place=write writes into the file itself",
      Replace("new", kByNewFile));
  EXPECT_EQ("old contents", m_folder.Read("a.xml"));
  EXPECT_EQ("", Replace("new", kIntoFile));
  EXPECT_EQ("new", m_folder.Read("b.xml"));
}

TEST_F(FileReplacement, What_somebody_without_a_lock_has_changed_is_left_alone) {
  for (const ReplacementWay& way : {kByNewFile, kIntoFile}) {
    m_folder.Write("a.xml", "old contents");
    Input input;
    ASSERT_TRUE(ReadInputToReplace(m_path, input));
    m_folder.Write("a.xml", "mine");
    EXPECT_EQ("changed by somebody else in the meantime", Replace(input, "new", way));
    EXPECT_EQ("mine", m_folder.Read("a.xml"));
    ASSERT_EQ(0, rename(m_folder.Write("b.xml", "old contents").c_str(), m_path.c_str()));
    EXPECT_EQ("changed by somebody else in the meantime", Replace(input, "new", way));
    EXPECT_EQ("old contents", m_folder.Read("a.xml"));
    EXPECT_EQ("a.xml ", m_folder.Names());
  }
}

TEST_F(FileReplacement, What_has_grown_or_shrunk_is_left_alone) {
  const std::string large(200000, 'x');
  for (const std::string& now : {large + "x", large.substr(1), std::string()}) {
    m_folder.Write("a.xml", large);
    Input input;
    ASSERT_TRUE(ReadInputToReplace(m_path, input));
    m_folder.Write("a.xml", now);
    EXPECT_EQ("changed by somebody else in the meantime", Replace(input, "new", kIntoFile));
    EXPECT_EQ(now, m_folder.Read("a.xml"));
  }
}

TEST_F(FileReplacement, Pipe_in_the_place_of_the_file_is_never_opened) {
  Input input;
  ASSERT_TRUE(ReadInputToReplace(m_path, input));
  // Nothing is ever replaced, because the file does not hold this.
  input.text += "x";
  const std::string file = m_folder.Path("file");
  const std::string pipe = m_folder.Path("pipe");
  const std::string next = m_folder.Path("next");
  ASSERT_EQ(0, link(m_path.c_str(), file.c_str()));
  ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600));
  std::atomic<bool> isEnough{false};
  std::atomic<bool> hasEnded{false};
  std::thread replacing([&] {
    while (!isEnough) Replace(input, "new", kIntoFile);
    hasEnded = true;
  });
  int opened = 0;
  for (int round = 0; !hasEnded; ++round) {
    if (round == 4000) isEnough = true;
    for (const std::string& other : {pipe, file}) {
      if (link(other.c_str(), next.c_str()) != 0 || rename(next.c_str(), m_path.c_str()) != 0) {
        ADD_FAILURE() << "cannot put " << other << " there";
      }
      // Possible only while somebody reads from the pipe or waits for it, who then goes on.
      const int writer = open(pipe.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
      if (writer < 0) continue;
      ++opened;
      close(writer);
    }
  }
  replacing.join();
  EXPECT_EQ(0, opened);
  EXPECT_EQ("old contents", m_folder.Read("file"));
}

TEST_F(FileReplacement, Copy_is_kept_in_the_folder_of_the_file_wherever_the_path_leads_then) {
  const std::string folder = m_folder.Path("folder");
  const std::string moved = m_folder.Path("moved");
  const std::string elsewhere = m_folder.Path("elsewhere");
  ASSERT_EQ(0, mkdir(folder.c_str(), 0700));
  ASSERT_EQ(0, mkdir(elsewhere.c_str(), 0700));
  m_path = m_folder.Write("folder/a.xml", "old contents");
  {
    Input input;
    ASSERT_TRUE(ReadInputToReplace(m_path, input));
    ASSERT_EQ(0, rename(folder.c_str(), moved.c_str()));
    ASSERT_EQ(0, symlink("elsewhere", folder.c_str()));
    // The path names the same file as before, although in another folder.
    ASSERT_EQ(0, link((moved + "/a.xml").c_str(), m_path.c_str()));
    EXPECT_EQ("", Replace(input, "new", {".old", true}));
  }
  EXPECT_EQ("new", m_folder.Read("moved/a.xml"));
  EXPECT_EQ("old contents", m_folder.Read("moved/a.xml.old"));
  for (const char* name : {"elsewhere/a.xml", "moved/a.xml", "moved/a.xml.old"}) {
    EXPECT_EQ(0, unlink(m_folder.Path(name).c_str()));
  }
}

TEST_F(FileReplacement, Link_that_takes_the_place_of_the_folder_leads_nothing_elsewhere) {
  const std::string folder = m_folder.Path("folder");
  const std::string moved = m_folder.Path("moved");
  const std::string elsewhere = m_folder.Path("elsewhere");
  ASSERT_EQ(0, mkdir(folder.c_str(), 0700));
  ASSERT_EQ(0, mkdir(elsewhere.c_str(), 0700));
  m_path = m_folder.Write("folder/a.xml", "");
  std::atomic<bool> isEnough{false};
  int replaced = 0;
  std::thread replacing([&] {
    while (!isEnough || replaced == 0) {
      FileLock lock;
      std::string text;
      std::string reason;
      if (!lock.Lock(m_path, reason) || !ReadWhole(m_path, text, reason)) continue;
      const std::string to = text.empty() ? "new" : "";
      if (ReplaceFile(lock, text, to, {".old", false}, reason)) ++replaced;
    }
  });
  for (int round = 0; round < 3000; ++round) {
    EXPECT_EQ(0, rename(folder.c_str(), moved.c_str()));
    EXPECT_EQ(0, symlink("elsewhere", folder.c_str()));
    EXPECT_EQ(0, unlink(folder.c_str()));
    EXPECT_EQ(0, rename(moved.c_str(), folder.c_str()));
    usleep(100);
  }
  isEnough = true;
  replacing.join();
  EXPECT_LT(0, replaced);
  // Only an empty folder can be removed.
  EXPECT_EQ(0, rmdir(elsewhere.c_str()));
  unlink(m_path.c_str());
  unlink((m_path + ".old").c_str());
}

TEST_F(FileReplacement, File_that_cannot_grow_keeps_the_old_contents_in_both_ways) {
  const std::string old(1500, 'x');
  m_folder.Write("a.xml", old);
  void (*const handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
  struct rlimit before;
  getrlimit(RLIMIT_FSIZE, &before);
  for (const ReplacementWay& way : {kByNewFile, kIntoFile}) {
    // Beyond the first limit nothing can be written, below the second the end of the new contents.
    for (const rlim_t size : {1000, 2000}) {
      struct rlimit limit = before;
      limit.rlim_cur = size;
      setrlimit(RLIMIT_FSIZE, &limit);
      const std::string reason = Replace(std::string(5000, 'y'), way);
      setrlimit(RLIMIT_FSIZE, &before);
      EXPECT_EQ(0u, reason.find("write error: File too large")) << reason;
      EXPECT_EQ(old, m_folder.Read("a.xml"));
      EXPECT_EQ("a.xml ", m_folder.Names());
    }
  }
  std::signal(SIGXFSZ, handler);
}

TEST_F(FileReplacement, Signal_that_ends_the_process_waits_until_the_file_is_replaced) {
  for (const ReplacementWay& way : {kByNewFile, kIntoFile}) {
    for (const int number : {SIGTERM, SIGHUP, SIGPIPE, SIGUSR1, SIGXCPU}) {
      m_folder.Write("a.xml", "old contents");
      Input input;
      ASSERT_TRUE(ReadInputToReplace(m_path, input));
      // Sent while the process is at any step, because the contents are large.
      const std::string to(1 << 20, 'y');
      int ready[2];
      ASSERT_EQ(0, pipe(ready));
      const pid_t child = fork();
      if (child == 0) {
        std::signal(number, SIG_DFL);  // Whoever began the tests may ignore it.
        if (write(ready[1], "", 1) != 1) _exit(1);
        for (;;) Replace(input, to, way);
      }
      char byte;
      EXPECT_EQ(1, read(ready[0], &byte, 1));
      usleep(500);
      kill(child, number);
      int status = 0;
      waitpid(child, &status, 0);
      close(ready[0]);
      close(ready[1]);
      EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == number) << status;
      const std::string contents = m_folder.Read("a.xml");
      EXPECT_TRUE(contents == "old contents" || contents == to) << contents.size();
      EXPECT_EQ("a.xml ", m_folder.Names());
    }
  }
}

TEST_F(FileReplacement, Kill_leaves_the_old_contents_or_the_new_ones) {
  const std::string versions[] = {std::string(1 << 18, 'x'), std::string(1 << 18, 'y')};
  m_folder.Write("a.xml", versions[0]);
  unsigned int pause = 1;
  for (int round = 0; round < 60; ++round) {
    const pid_t child = fork();
    if (child == 0) {
      for (int i = 0;; ++i) Replace(versions[i % 2], kByNewFile);
    }
    pause = pause * 37 % 4999;
    usleep(pause);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    const std::string contents = m_folder.Read("a.xml");
    ASSERT_TRUE(contents == versions[0] || contents == versions[1]) << contents.size();
    // A new file that already had a name, or on some file systems any new file, is left behind.
    const std::string names = m_folder.Names();
    const std::size_t left = names.find(".xmldom-");
    if (left != std::string::npos) {
      unlink(m_folder.Path(names.substr(left, names.find(' ', left) - left)).c_str());
    }
    ASSERT_EQ("a.xml ", m_folder.Names());
  }
}

TEST_F(FileReplacement, Only_regular_files_are_locked) {
  FileLock lock;
  std::string reason;
  EXPECT_FALSE(lock.Lock(m_folder.Path(""), reason));
  EXPECT_EQ("not a regular file", reason);
  ASSERT_EQ(0, mkfifo(m_folder.Path("pipe").c_str(), 0600));
  EXPECT_FALSE(lock.Lock(m_folder.Path("pipe"), reason));
  EXPECT_EQ("not a regular file", reason);
  EXPECT_FALSE(lock.Lock(m_folder.Path("none"), reason));
  EXPECT_EQ("No such file or directory", reason);
}

}  // namespace
