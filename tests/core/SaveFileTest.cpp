#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <thread>

#include "TemporaryFolder.h"
#include "core/FileCalls.h"
#include "core/SaveFile.h"

namespace quorvex {
namespace {

std::size_t FilesIn(const TemporaryFolder& folder) {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder.Path("")), {}));
}

unsigned ModeOf(const std::string& name) {
  struct stat info {};
  EXPECT_EQ(stat(name.c_str(), &info), 0) << name;
  return info.st_mode & 07777;
}

// What `task` returns in a process of its own; minus the signal that ended it.
template <class Task>
int Apart(Task task) {
  const pid_t child = fork();
  if (child == 0) _exit(task());
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

// The same without the rights of root, to whom no file is closed.
template <class Task>
int AsUser(Task task) {
  constexpr uid_t kNobody = 65534;
  return Apart([&] { return (geteuid() != 0 || (setgid(kNobody) == 0 && setuid(kNobody) == 0)) ? task() : 255; });
}

TEST(SaveFile, KeepsWhatWasThereAndItsPermissions) {
  const TemporaryFolder folder;
  const std::string name = folder.Path("Some.dat");
  EXPECT_EQ(SaveFile(name, "one"), 0);
  EXPECT_EQ(folder.Read("Some.dat"), "one");
  const mode_t mask = umask(0);
  umask(mask);
  EXPECT_EQ(ModeOf(name), 0666 & ~mask);
  EXPECT_EQ(FilesIn(folder), 1u);
  EXPECT_EQ(chmod(name.c_str(), 0640), 0);
  for (const char* old : {"one", "two", "three"}) {  // the old one of the second save and the third replaces another
    const std::string content = std::string(old) == "one" ? "two" : std::string(old) == "two" ? "three" : "";
    EXPECT_EQ(SaveFile(name, content), 0);
    EXPECT_EQ(folder.Read("Some.dat"), content);
    EXPECT_EQ(folder.Read("Some.dat~"), old);
    EXPECT_EQ(ModeOf(name), 0640u);
  }
  EXPECT_EQ(SaveFile(name, "answer", FileCare::Answer), 0);
  EXPECT_EQ(folder.Read("Some.dat~"), "three");
  EXPECT_EQ(SaveFile(folder.Path("SOME.DAT"), "another"), 0);
  EXPECT_EQ(folder.Read("Some.dat"), "answer");
  EXPECT_EQ(FilesIn(folder), 3u);
}

TEST(SaveFile, FollowsLinksToFilesAndToNowhere) {
  const TemporaryFolder folder;
  folder.Write("real/Some.dat", "old");
  std::filesystem::create_symlink("real/Some.dat", folder.Path("link"));
  std::filesystem::create_symlink(folder.Path("link"), folder.Path("second"));
  std::filesystem::create_symlink("real/new.dat", folder.Path("nowhere"));
  std::filesystem::create_symlink("ring", folder.Path("ring"));
  EXPECT_EQ(SaveFile(folder.Path("second"), "new"), 0);
  EXPECT_EQ(folder.Read("real/Some.dat"), "new");
  EXPECT_EQ(folder.Read("real/Some.dat~"), "old");
  EXPECT_EQ(SaveFile(folder.Path("nowhere"), "first"), 0);
  EXPECT_EQ(folder.Read("real/new.dat"), "first");
  EXPECT_EQ(SaveFile(folder.Path("ring"), "lost"), -ELOOP);
  for (const char* link : {"link", "second", "nowhere"})
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path(link))) << link;
}

TEST(SaveFile, TakesNamesAsLongAsTheyMayBe) {
  for (const std::string& name : {std::string(255, 'n'), std::string(252, 'n') + "\xE2\x82\xAC"}) {
    const TemporaryFolder folder;
    EXPECT_EQ(SaveFile(folder.Path(name), "old"), 0);
    EXPECT_EQ(SaveFile(folder.Path(name), "new"), 0);
    EXPECT_EQ(folder.Read(name), "new");
    EXPECT_EQ(folder.Read(name.substr(0, name.back() == 'n' ? 254 : 252) + "~"), "old");
  }
  const TemporaryFolder folder;
  EXPECT_EQ(SaveFile(folder.Path(std::string(256, 'n')), "lost"), 52);
  EXPECT_EQ(SaveFile(folder.Path("none/Some.dat"), "lost"), 76);
  EXPECT_EQ(SaveFile(folder.Path(""), "lost"), 75);
  EXPECT_EQ(SaveFile("", "lost"), 52);
  EXPECT_EQ(SaveFile("/dev/full", "lost"), 61);
  EXPECT_EQ(FilesIn(folder), 0u);
  std::filesystem::create_directory(folder.Path("Some.dat~"));
  folder.Write("Some.dat", "old");
  EXPECT_EQ(SaveFile(folder.Path("Some.dat"), "new"), 0);  // where the old one has no place
  EXPECT_EQ(folder.Read("Some.dat"), "new");
  EXPECT_EQ(FilesIn(folder), 2u);
}

// What others may do with a file is theirs to say, and not the folder's.
TEST(SaveFile, ObeysThePermissionsOfTheFile) {
  const TemporaryFolder folder;
  const std::string closed = folder.Write("closed", "old"), open = folder.Write("open", "much older");
  const auto protect = [&](const char* name, mode_t mode) { EXPECT_EQ(chmod(folder.Path(name).c_str(), mode), 0); };
  protect("closed", 0444);
  protect("open", 0666);
  protect("", 0777);
  EXPECT_EQ(AsUser([&] { return SaveFile(closed, "new"); }), 75);
  protect("", 0555);
  EXPECT_EQ(AsUser([&] { return SaveFile(open, "new"); }), 0);
  EXPECT_EQ(folder.Read("open"), "new");
  EXPECT_EQ(AsUser([&] { return SaveFile(folder.Path("third"), "new"); }), 75);
  // A disk that is full in the middle leaves the old content.
  for (const auto& [call, at] : {std::pair{"write", 4}, {"ftruncate", 2}, {"fsync", 1}}) {
    int count = 0;
    const auto save = [&] {
      const FileCalls calls([&](std::string_view made) { return made == call && ++count == at ? ENOSPC : 0; });
      return SaveFile(open, std::string(1500, 'n'), FileCare::Answer);
    };
    EXPECT_EQ(AsUser(save), 61) << call;
    EXPECT_EQ(folder.Read("open"), "new") << call;
  }
  protect("", 01777);  // as /tmp: nobody takes a name from somebody else's file
  EXPECT_EQ(AsUser([&] { return SaveFile(open, "shared"); }), 0);
  EXPECT_EQ(folder.Read("open"), "shared");
  protect("", 0700);
  EXPECT_EQ(folder.Read("closed"), "old");
  EXPECT_EQ(FilesIn(folder), 2u);
}

// Each file call of a save fails once, with and without second names for files: old or new content stands whole, the
// number tells which, and nothing is left behind. Then each is the program's end, and the next save cleans up.
TEST(SaveFile, LosesNothingWhereverItFails) {
  const std::string old(3000, 'o'), content(5000, 'n');
  const struct {
    FileCare Care;
    bool Links, Killed;
  } cases[] = {{FileCare::Document, true, false}, {FileCare::Document, false, false}, {FileCare::Answer, true, false},
               {FileCare::Document, true, true},  {FileCare::Document, false, true},  {FileCare::Settings, true, true}};
  for (const auto& c : cases) {
    bool reached = true;
    int failed = 0;
    for (int at = 1; reached; ++at) {
      const TemporaryFolder folder;
      const std::string name = folder.Write("Some.dat", old);
      EXPECT_EQ(chmod(name.c_str(), 0640), 0);
      folder.Write("Some.dat~", "older");
      int count = 0;
      std::string call;
      const auto save = [&] {
        const FileCalls calls([&](std::string_view made) {
          if (made == "link" && !c.Links) return EPERM;
          if (++count != at) return 0;
          call = made;
          if (c.Killed) raise(SIGKILL);
          return EIO;
        });
        return SaveFile(name, content, c.Care);
      };
      const int error = c.Killed ? Apart(save) : save();
      reached = c.Killed ? error != 0 : !call.empty();
      const std::string where = std::to_string(at) + ' ' + call;
      const std::string now = folder.Read("Some.dat"), kept = folder.Read("Some.dat~");
      EXPECT_TRUE(now == old || now == content) << where;
      EXPECT_TRUE(kept == "older" || kept == old) << where;
      EXPECT_TRUE(c.Killed || (now == content) == (error == 0)) << where;
      EXPECT_TRUE(call == "fchmod" || ModeOf(name) == 0640) << where;
      if (error != 0) ++failed;
      for (const auto& entry : std::filesystem::directory_iterator(folder.Path("")))  // open to nobody in between
        EXPECT_TRUE(entry.path().filename().native()[0] != '.' || (ModeOf(entry.path()) & ~0640u) == 0) << where;
      EXPECT_TRUE(error == 0 || error == 57 || error == -SIGKILL) << where;
      EXPECT_TRUE(c.Killed || call == "unlink" || FilesIn(folder) == 2) << where;
      EXPECT_TRUE(error != 0 || call == "rename" || c.Care != FileCare::Document || kept == old) << where;
      EXPECT_EQ(SaveFile(name, "next"), 0) << where;
      EXPECT_EQ(FilesIn(folder), 2u) << where;
    }
    EXPECT_GT(failed, 5);
  }
}

TEST(SaveFile, GoesOnWhereASignalInterrupts) {
  for (const char* call : {"read", "write", "fsync"}) {
    const TemporaryFolder folder;
    const std::string name = folder.Write("Some.dat", "old");
    int count = 0;
    const FileCalls calls([&](std::string_view made) {
      if (made == "link") return EPERM;
      return made == call && ++count <= 3 ? EINTR : 0;
    });
    EXPECT_EQ(SaveFile(name, "new"), 0) << call;
    EXPECT_GT(count, 3) << call;
    WholeFile file;
    count = 0;
    EXPECT_EQ(file.Read(name), 0);
    EXPECT_EQ(file.Text(), "new");
    EXPECT_EQ(file.Read(name + "~"), 0);
    EXPECT_EQ(file.Text(), "old");
  }
}

// Two threads of one program are two writers as two programs are: each file that is open has its own lock.
TEST(SaveFile, NeverFailsByAnotherOneOfTheSameFile) {
  const TemporaryFolder folder;
  const std::string name = folder.Path("Some.dat");
  std::atomic<int> failures = 0;
  const auto save = [&](char letter) {
    for (int i = 0; i < 200; ++i)
      if (SaveFile(name, std::string(2000, letter), FileCare::Document) != 0) ++failures;
  };
  std::thread one(save, 'a'), two(save, 'b'), three(save, 'c');
  for (std::thread* thread : {&one, &two, &three}) thread->join();
  EXPECT_EQ(failures, 0);
  const std::string content = folder.Read("Some.dat");
  EXPECT_EQ(content, std::string(2000, content[0]));
  EXPECT_EQ(FilesIn(folder), 2u);
}

TEST(ReplacementFile, StandsUnderItsNameWhenItIsComplete) {
  const TemporaryFolder folder;
  const std::string name = folder.Write("out.txt", "old");
  EXPECT_EQ(chmod(name.c_str(), 0600), 0);
  // A run that is killed leaves the earlier answer and a file that the next one removes; those of others stay.
  folder.Write(".quorvex-notes~", "mine");
  const std::string link = folder.Path(".quorvex-0123456789abcdef~");
  std::filesystem::create_symlink(name, link);
  EXPECT_EQ(Apart([&] {
              ReplacementFile file(FileCare::Answer);
              if (file.Create(name) != 0) return 1;
              file.Text().Write(std::string(100000, 'x'));
              return raise(SIGKILL);
            }),
            -SIGKILL);
  EXPECT_EQ(folder.Read("out.txt"), "old");
  EXPECT_EQ(FilesIn(folder), 4u);
  for (const auto& entry : std::filesystem::directory_iterator(folder.Path("")))
    EXPECT_TRUE(entry.path().filename() == ".quorvex-notes~" || ModeOf(entry.path()) == 0600);  // from its first byte
  ReplacementFile file(FileCare::Answer);
  EXPECT_EQ(file.Create(name), 0);
  EXPECT_EQ(FilesIn(folder), 4u);
  file.Text().WriteLine("forgotten");
  EXPECT_EQ(file.Create(folder.Path("none/out.txt")), 76);
  EXPECT_EQ(file.Commit(), 76);
  EXPECT_EQ(file.Create(name), 0);
  file.Text().WriteLine("new");
  EXPECT_EQ(folder.Read("out.txt"), "old");
  EXPECT_EQ(file.Commit(), 0);
  EXPECT_EQ(folder.Read("out.txt"), "new\r\n");
  EXPECT_EQ(FilesIn(folder), 3u);
}

TEST(WholeFile, TellsThatItWasShortenedMeanwhile) {
  const TemporaryFolder folder;
  const std::string name = folder.Write("data.txt", std::string(100000, '1'));
  for (const std::size_t left : {50000, 0, 150000}) {  // what is added behind its end makes no difference
    bool done = false;
    const FileCalls calls([&](std::string_view made) {
      if (made == "read" && !done) std::filesystem::resize_file(name, left);
      done = done || made == "read";
      return 0;
    });
    WholeFile file;
    EXPECT_EQ(file.Read(name), left < 100000 ? 62 : 0) << left;
    EXPECT_EQ(file.Text().size(), left < 100000 ? 0 : 100000);
    std::filesystem::resize_file(name, 100000);
  }
  EXPECT_EQ(FileErrorText(62), "The file became shorter while it was read.");
}

}  // namespace
}  // namespace quorvex
