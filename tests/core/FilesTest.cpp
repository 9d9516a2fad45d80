#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <thread>
#include <utility>

#include "TemporaryFolder.h"
#include "core/FileCalls.h"
#include "core/Files.h"
#include "core/SaveFile.h"
#include "core/TextEncoding.h"

namespace quorvex {
namespace {

TEST(FileErrorNumber, NamesTheErrorsThatMessagesTell) {
  constexpr std::pair<int, int> kNumbers[] = {{0, 0},       {ENOENT, 53},     {ENOTDIR, 76}, {EACCES, 75},
                                              {EISDIR, 75}, {EROFS, 75},      {EPERM, 75},   {ENAMETOOLONG, 52},
                                              {ENOSPC, 61}, {EDQUOT, 61},     {EIO, 57},     {ENODEV, 68},
                                              {ENXIO, 68},  {EMFILE, -EMFILE}};
  for (const auto& [code, number] : kNumbers) EXPECT_EQ(FileErrorNumber(code), number) << code;
}

TEST(ResolvePath, FindsNamesOfAnotherCaseOrSystem) {
  const TemporaryFolder folder;
  for (const char* name :
       {"Data/Run One/Steam.TXT", "Data/same.txt", "Data/Same.txt", "Data/sAme.txt", "one/only.cfg", "ONE/Other.cfg"})
    folder.Write(name, "");
  for (const char* name : {"ring", "RING"}) std::filesystem::create_directory_symlink(".", folder.Path(name));
  std::string deep;
  for (int i = 0; i < 100; ++i) deep += "Ring/";
  constexpr const char* kNone = nullptr;
  const struct {
    std::string Name, Found;
    const char* New = kNone;  // what a writer is led to, where it isn't the name itself
  } cases[] = {
      {"Data/Run One/Steam.TXT", "Data/Run One/Steam.TXT"},
      {"data/run one/steam.txt", "Data/Run One/Steam.TXT", "Data/Run One/steam.txt"},
      {"DATA\\RUN ONE\\STEAM.txt", "Data/Run One/Steam.TXT", "Data/Run One/STEAM.txt"},
      {"data/../DATA/run one/./steam.txt", "Data/../Data/Run One/./Steam.TXT", "Data/../Data/Run One/./steam.txt"},
      {"data/SAME.TXT", "Data/Same.txt", "Data/SAME.TXT"},  // the first by name
      {"data/run one/New.Out", "Data/Run One/New.Out", "Data/Run One/New.Out"},
      {"data\\None\\New.Out", "Data/None/New.Out", "Data/None/New.Out"},
      {"one/other.CFG", "ONE/Other.cfg"},  // in whatever folder it is
      {"One/only.cfg", "one/only.cfg", "ONE/only.cfg"},
      {"Ring/ring/RING/one/ONLY.cfg", "RING/ring/RING/one/only.cfg", "RING/ring/RING/one/ONLY.cfg"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ResolvePath(folder.Path(c.Name)), folder.Path(c.Found)) << c.Name;
    EXPECT_EQ(ResolveNewPath(folder.Path(c.Name)), folder.Path(c.New != kNone ? c.New : c.Name)) << c.Name;
  }
  // A name that is used in lower case means the file as it was typed, if there is one.
  EXPECT_EQ(ResolveFoldedPath(folder.Path("Data/Same.txt")), folder.Path("Data/Same.txt"));
  EXPECT_EQ(ResolveFoldedPath(folder.Path("DATA/SAME.TXT")), folder.Path("Data/same.txt"));
  EXPECT_EQ(ResolveNewFoldedPath(folder.Path("Data/Same.txt")), folder.Path("Data/same.txt"));
  EXPECT_EQ(ResolveNewFoldedPath(folder.Path("DATA/New.Log")), folder.Path("Data/new.log"));
  std::filesystem::create_symlink("nowhere", folder.Path("a\\link"));
  EXPECT_EQ(ResolveNewPath(folder.Path("a\\link")), folder.Path("a\\link"));
  EXPECT_TRUE(ResolvePath(folder.Path(deep + "none")).ends_with("/none"));  // after 100 looks and not 2^100
  for (const char* name : {"", "no-such-folder/Some.File"}) {
    EXPECT_EQ(ResolvePath(name), name);
    EXPECT_EQ(ResolveNewPath(name), name);
  }
}

TEST(WholeFile, HoldsTheFileOrItsBeginning) {
  const TemporaryFolder folder;
  const std::string content("line\r\n\0more", 11);
  WholeFile file;
  ASSERT_EQ(file.Read(folder.Write("Some.dat", content)), 0);
  EXPECT_EQ(file.Text(), content);
  EXPECT_EQ(file.Read(folder.Path("SOME.DAT"), 5), 0);
  EXPECT_EQ(file.Text(), content.substr(0, 5));
  EXPECT_EQ(file.Read("/proc/self/status", 5), 0);  // tells no size
  EXPECT_EQ(file.Text(), "Name:");
  EXPECT_EQ(file.Read("/sys/kernel/mm/transparent_hugepage/enabled"), 0);  // tells more than it has
  EXPECT_EQ(file.Read(folder.Write("empty", "")), 0);
  EXPECT_EQ(file.Text(), "");
}

TEST(WholeFile, ReadsAPipe) {
  const TemporaryFolder folder;
  const std::string pipe = folder.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const std::string content(200000, 'x');
  std::thread writer([&] { folder.Write("pipe", content); });
  WholeFile file;
  EXPECT_EQ(file.Read(pipe), 0);
  writer.join();
  EXPECT_EQ(file.Text(), content);
}

// The pieces of a file one behind the other, each but the last with a line's end behind; the error's number where there
// is one.
std::string Joined(const std::string& name, std::size_t piece, bool told = true) {
  FileLines file(piece);
  if (const int error = file.Open(name); error != 0) return std::to_string(error);
  std::string text;
  std::string_view lines;
  std::size_t behind = SIZE_MAX;
  while (true) {
    if (const int error = file.Next(lines); error != 0) return std::to_string(error);
    if (lines.empty()) break;
    EXPECT_TRUE(text.empty() || text.ends_with('\n') || (text.ends_with('\r') && lines[0] != '\n')) << piece;
    text += lines;
    if (told) {
      EXPECT_LT(file.BytesBehind(), behind) << piece;
      behind = file.BytesBehind();
    }
  }
  EXPECT_EQ(file.BytesBehind(), 0u) << piece;
  EXPECT_EQ(file.IsEmpty(), text.empty()) << piece;
  return text;
}

TEST(FileLines, GivesTheTextOfTheWholeFileInPiecesOfAnySize) {
  const TemporaryFolder folder;
  const std::string texts[] = {"",
                               "1",
                               "\n",
                               "\r",
                               "\r\n",
                               "\r\r\n\n",
                               "1\t2\n3\t4\n",
                               "1\t2\r\n3\t4",
                               "1\r2\r\r3\r",
                               "\xEF\xBB\xBF"
                               "1\n2",
                               std::string("a\0b\n\0", 5),
                               "\n\n" + std::string(1000, 'x') + "\r\n" + std::string(300, ' ') + "1\r\n",
                               std::string("\xFF\xFE", 2),
                               std::string("\xFF\xFE"
                                           "1\0\n\0\x3C\xD8\x55\xDF\r\0\n\0"
                                           "2\0",
                                           16),
                               std::string("\xFE\xFF\0"
                                           "1\0\r\0\n\0"
                                           "2\0",
                                           11),
                               "\xFF"};
  for (const std::string& text : texts) {
    const std::string name = folder.Write("text", text);
    WholeFile whole;
    ASSERT_EQ(whole.Read(name), 0);
    for (const std::size_t piece : {1, 2, 3, 4, 5, 7, 64, 1 << 16})
      EXPECT_EQ(Joined(name, piece), whole.Text()) << piece;
  }
  EXPECT_EQ(Joined(folder.Path("none"), 64), "53");
  EXPECT_EQ(Joined("/dev/zero", 64), "68");
  WholeFile choices;  // of which the system tells more bytes than there are
  ASSERT_EQ(choices.Read("/sys/kernel/mm/transparent_hugepage/enabled"), 0);
  EXPECT_EQ(Joined("/sys/kernel/mm/transparent_hugepage/enabled", 7, false), choices.Text());
}

TEST(FileLines, ReadsAPipe) {
  const TemporaryFolder folder;
  const std::string pipe = folder.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  std::string content;
  for (int i = 0; i < 50000; ++i) content += std::to_string(i) + (i % 3 == 0 ? "\r\n" : "\n");
  std::thread writer([&] { folder.Write("pipe", content); });
  EXPECT_EQ(Joined(pipe, 1000, false), content);
  writer.join();
}

TEST(FileLines, KnowsOfAFileThatChangesMeanwhile) {
  const TemporaryFolder folder;
  for (const std::size_t size : {0, 150, 200, 400}) {
    std::string content;
    for (int i = 0; i < 100; ++i) content += "1\n";
    FileLines file(20);
    ASSERT_EQ(file.Open(folder.Write("text", content)), 0);
    std::string_view lines;
    ASSERT_EQ(file.Next(lines), 0);
    std::filesystem::resize_file(folder.Path("text"), size);
    std::size_t read = 0;
    int error = 0;
    while (error == 0 && !lines.empty()) {
      read += lines.size();
      error = file.Next(lines);
    }
    EXPECT_EQ(error, size < content.size() ? 62 : 0) << size;
    EXPECT_EQ(read, error == 0 ? content.size() : std::max<std::size_t>(size / 20 * 20, 20)) << size;
  }
}

TEST(FileLines, TellsOfEachReadThatFails) {
  const TemporaryFolder folder;
  const std::string name = folder.Write("text", std::string(90, '\n'));
  for (int failing = 1; failing <= 5; ++failing) {
    int made = 0;
    const FileCalls calls([&](std::string_view call) { return call == "read" && ++made == failing ? EIO : 0; });
    EXPECT_EQ(Joined(name, 30), failing <= 3 ? "57" : std::string(90, '\n')) << failing;
  }
}

TEST(WholeFile, TellsWhyItCannotOpen) {
  const TemporaryFolder folder;
  folder.Write("file", "x");
  WholeFile file;
  EXPECT_EQ(file.Read(folder.Path("missing")), 53);
  EXPECT_EQ(file.Read("missing-here"), 53);
  EXPECT_EQ(file.Read(folder.Path("none/missing")), 76);
  EXPECT_EQ(file.Read(folder.Path("file/missing")), 76);
  EXPECT_EQ(file.Read(folder.Path("")), 75);
  EXPECT_EQ(file.Read(""), 52);
  EXPECT_EQ(file.Read(std::string("a\0b", 3)), 52);
  EXPECT_EQ(file.Read("/dev/zero"), 68);
  EXPECT_EQ(file.Read(folder.Path(std::string(300, 'n'))), 52);
  EXPECT_EQ(file.Text(), "");
}

TEST(DecodeText, TakesUtf8AndOtherwiseWindows1252) {
  constexpr std::pair<const char*, const char*> kTexts[] = {
      {"plain", "plain"},
      {"\xEF\xBB\xBFmark", "mark"},
      {"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"},  // well formed, 2 to 4 bytes
      {"\xE4\x80\x9F\xA7", "\xC3\xA4\xE2\x82\xAC\xC5\xB8\xC2\xA7"},  // a-umlaut, euro, Y-diaeresis, section
      {"\xC0\xAF", "\xC3\x80\xC2\xAF"},                              // overlong form
      {"\xE0\x80\xAF\xF0\x80\x80\xAF", "\xC3\xA0\xE2\x82\xAC\xC2\xAF\xC3\xB0\xE2\x82\xAC\xE2\x82\xAC\xC2\xAF"},
      {"\xE0\x80\xAF", "\xC3\xA0\xE2\x82\xAC\xC2\xAF"},
      {"\xF4\x90\x80\x80", "\xC3\xB4\xC2\x90\xE2\x82\xAC\xE2\x82\xAC"},  // above all characters
      {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xE2\x82\xAC"},                  // surrogate
      {"caf\xE9", "caf\xC3\xA9"},                                        // cut short at the end
  };
  for (const auto& [bytes, text] : kTexts) EXPECT_EQ(DecodeText(bytes), text);
}

TEST(DecodeUtf16, TakesBothByteOrders) {
  using namespace std::string_view_literals;
  constexpr std::pair<std::string_view, std::string_view> kTexts[] = {
      {"\xFF\xFE\x31\0\xE4\0\xAC\x20\x3D\xD8\0\xDE"sv, "1\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"sv},
      {"\xFE\xFF\0\x31\0\xE4\x20\xAC\xD8\x3D\xDE\0"sv, "1\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"sv},
      {"\xFF\xFE"sv, ""sv},
      {"\xFF\xFE\x3D\xD8\x31\0\0\xDE\x31"sv, "\xEF\xBF\xBD\x31\xEF\xBF\xBD\xEF\xBF\xBD"sv},  // halves alone
      {"\xFE\xFF\xD8\x3D"sv, "\xEF\xBF\xBD"sv}};
  for (const auto& [bytes, text] : kTexts) EXPECT_EQ(DecodeUtf16(bytes), text);
  EXPECT_FALSE(DecodeUtf16("1 2"));
}

TEST(TextFile, WritesLinesAndReplacesWhatWasThere) {
  const TemporaryFolder folder;
  const std::string name = folder.Write("Out.txt", std::string(1000, 'o'));
  TextFile file;
  ASSERT_EQ(file.Create(name), 0);
  file.Write("a");
  file.WriteLine("b");
  EXPECT_EQ(file.Flush(), 0);
  EXPECT_EQ(folder.Read("Out.txt"), "ab\r\n");
  const std::string big(300000, 'c');
  file.WriteLine(big);
  EXPECT_EQ(file.Close(), 0);
  EXPECT_FALSE(file.IsOpen());
  EXPECT_EQ(folder.Read("Out.txt"), "ab\r\n" + big + "\r\n");
}

TEST(TextFile, KeepsTheFirstError) {
  const TemporaryFolder folder;
  TextFile file;
  EXPECT_EQ(file.Create(folder.Path("none/out.txt")), 76);
  EXPECT_FALSE(file.IsOpen());
  file.Write("lost");
  EXPECT_EQ(file.Close(), 76);
  EXPECT_EQ(file.Create(folder.Path("")), 75);

  ASSERT_EQ(file.Create("/dev/full"), 0);  // takes the open and refuses every byte
  file.Write("text");
  EXPECT_EQ(file.Flush(), 61);
  EXPECT_EQ(file.Close(), 61);
  EXPECT_EQ(file.Create(folder.Path("fine")), 0);
  EXPECT_EQ(file.Close(), 0);
  EXPECT_EQ(file.Create(folder.Path("late")), 0);  // as a network disk tells that it is full
  const FileCalls calls([](std::string_view made) { return made == "close" ? EDQUOT : 0; });
  EXPECT_EQ(file.Close(), 61);
}

// What a shell wrote to its output in front of a run, or appends behind it, is not the run's to lose.
TEST(TextFile, GoesOnWhereTheOutputOfTheProgramStands) {
  const TemporaryFolder folder;
  folder.Write("out.txt", "precious\n");
  const int before = dup(STDOUT_FILENO), descriptor = open(folder.Path("out.txt").c_str(), O_WRONLY | O_APPEND);
  dup2(descriptor, STDOUT_FILENO);
  int errors = 0;
  for (const std::string name : {"/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"}) {
    TextFile file;
    errors += file.Create(name);
    file.Write("a\n");
    errors += file.Close() + file.Continue(name, 0) + file.Append("b\n") + file.Close();
    ReplacementFile answer(FileCare::Answer);
    errors += answer.Create(name);
    answer.Text().Write("c\n");
    errors += answer.Commit();
  }
  dup2(before, STDOUT_FILENO);
  close(descriptor);
  close(before);
  EXPECT_EQ(errors, 0);
  EXPECT_EQ(folder.Read("out.txt"), "precious\na\nb\nc\na\nb\nc\na\nb\nc\n");
}

TEST(TextFile, GoesOnAlone) {
  const TemporaryFolder folder;
  TextFile first, second;
  ASSERT_EQ(first.Continue(folder.Path("all.jsonl"), 0), 0);
  EXPECT_EQ(first.Append("1\n"), 0);
  EXPECT_EQ(second.Continue(folder.Path("all.jsonl"), 0), 55);
  EXPECT_FALSE(second.IsOpen());
  EXPECT_EQ(folder.Read("all.jsonl"), "1\n");
  EXPECT_EQ(first.Close(), 0);
  EXPECT_EQ(second.Continue(folder.Path("all.jsonl")), 0);
  EXPECT_EQ(second.Append("2\n"), 0);
  EXPECT_EQ(folder.Read("all.jsonl"), "1\n2\n");
}

}  // namespace
}  // namespace quorvex
