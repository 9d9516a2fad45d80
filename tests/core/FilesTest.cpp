#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <thread>
#include <utility>

#include "TemporaryFolder.h"
#include "core/Files.h"
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
  folder.Write("Data/Run One/Steam.TXT", "");
  folder.Write("Data/same.txt", "");
  folder.Write("Data/Same.txt", "");
  const std::string steam = folder.Path("Data/Run One/Steam.TXT");

  EXPECT_EQ(ResolvePath(steam), steam);
  EXPECT_EQ(ResolvePath(folder.Path("data/run one/steam.txt")), steam);
  EXPECT_EQ(ResolvePath(folder.Path("DATA\\RUN ONE\\STEAM.txt")), steam);
  EXPECT_EQ(ResolvePath(folder.Path("data/../DATA/run one/./steam.txt")),
            folder.Path("Data/../Data/Run One/./Steam.TXT"));
  EXPECT_EQ(ResolvePath(folder.Path("data/SAME.TXT")), folder.Path("Data/Same.txt"));  // the first by name
  EXPECT_EQ(ResolvePath(folder.Path("data/run one/New.Out")), folder.Path("Data/Run One/New.Out"));
  EXPECT_EQ(ResolvePath(folder.Path("data\\None\\New.Out")), folder.Path("Data/None/New.Out"));
  EXPECT_EQ(ResolvePath("no-such-folder/Some.File"), "no-such-folder/Some.File");
  EXPECT_EQ(ResolvePath(""), "");
}

TEST(MappedFile, HoldsTheWholeFile) {
  const TemporaryFolder folder;
  const std::string content("line\r\n\0more", 11);
  MappedFile file;
  ASSERT_EQ(file.Open(folder.Write("Some.dat", content)), 0);
  EXPECT_EQ(file.Text(), content);
  MappedFile moved = std::move(file);
  EXPECT_EQ(moved.Text(), content);
  EXPECT_EQ(moved.Open(folder.Path("SOME.DAT")), 0);
  EXPECT_EQ(moved.Text(), content);
  EXPECT_EQ(moved.Open(folder.Write("empty", "")), 0);
  EXPECT_EQ(moved.Text(), "");
}

TEST(MappedFile, ReadsAPipe) {
  const TemporaryFolder folder;
  const std::string pipe = folder.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const std::string content(200000, 'x');
  std::thread writer([&] { folder.Write("pipe", content); });
  MappedFile file;
  EXPECT_EQ(file.Open(pipe), 0);
  writer.join();
  EXPECT_EQ(file.Text(), content);
}

TEST(MappedFile, TellsWhyItCannotOpen) {
  const TemporaryFolder folder;
  folder.Write("file", "x");
  MappedFile file;
  EXPECT_EQ(file.Open(folder.Path("missing")), 53);
  EXPECT_EQ(file.Open("missing-here"), 53);
  EXPECT_EQ(file.Open(folder.Path("none/missing")), 76);
  EXPECT_EQ(file.Open(folder.Path("file/missing")), 76);
  EXPECT_EQ(file.Open(folder.Path("")), 75);
  EXPECT_EQ(file.Open(""), 52);
  EXPECT_EQ(file.Open(std::string("a\0b", 3)), 52);
  EXPECT_EQ(file.Open(folder.Path(std::string(300, 'n'))), 52);
  EXPECT_EQ(file.Text(), "");
}

TEST(DecodeText, TakesUtf8AndOtherwiseWindows1252) {
  constexpr std::pair<const char*, const char*> kTexts[] = {
      {"plain", "plain"},
      {"\xEF\xBB\xBFmark", "mark"},
      {"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"},  // well formed, 2 to 4 bytes
      {"\xE4\x80\x9F\xA7", "\xC3\xA4\xE2\x82\xAC\xC5\xB8\xC2\xA7"},  // a-umlaut, euro, Y-diaeresis, section
      {"\xC0\xAF", "\xC3\x80\xC2\xAF"},                              // overlong form
      {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xE2\x82\xAC"},              // surrogate
      {"caf\xE9", "caf\xC3\xA9"},                                    // cut short at the end
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
  ASSERT_EQ(file.Create(folder.Path("out.TXT")), 0);
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
}

TEST(SaveFile, KeepsWhatWasThereAndItsPermissions) {
  const TemporaryFolder folder;
  const std::string name = folder.Path("Some.dat");
  EXPECT_EQ(SaveFile(name, "one"), 0);
  EXPECT_EQ(folder.Read("Some.dat"), "one");
  EXPECT_EQ(chmod(name.c_str(), 0640), 0);
  EXPECT_EQ(SaveFile(folder.Path("SOME.DAT"), "two"), 0);
  EXPECT_EQ(folder.Read("Some.dat"), "two");
  EXPECT_EQ(folder.Read("Some.dat~"), "one");
  EXPECT_EQ(SaveFile(name, ""), 0);
  EXPECT_EQ(folder.Read("Some.dat~"), "two");
  struct stat info {};
  EXPECT_EQ(stat(name.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0640u);

  std::filesystem::create_symlink("Some.dat", folder.Path("link"));
  EXPECT_EQ(SaveFile(folder.Path("link"), "three"), 0);
  EXPECT_EQ(folder.Read("Some.dat"), "three");
  EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path("")), {}), 3);  // nothing else is left
}

TEST(SaveFile, LosesNothingWhenItFails) {
  const TemporaryFolder folder;
  const std::string name = folder.Write("Some.dat", "old");
  EXPECT_EQ(SaveFile(folder.Path("none/Some.dat"), "new"), 76);
  EXPECT_EQ(SaveFile(folder.Path(""), "new"), 75);
  EXPECT_EQ(SaveFile("", "new"), 52);
  std::filesystem::create_directory(name + "~");  // where the old file is to be kept
  EXPECT_NE(SaveFile(name, "new"), 0);
  EXPECT_EQ(folder.Read("Some.dat"), "old");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path("")), {}), 2);
  EXPECT_EQ(SaveFile("/dev/full", "new"), 61);
}

}  // namespace
}  // namespace quorvex
