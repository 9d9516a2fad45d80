#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <thread>

#include "TemporaryFolder.h"
#include "batch/ReadMacroDataFile.h"
#include "core/FileCalls.h"

namespace quorvex {
namespace {

// All that a file means, be it points or a message, comes out of it piece by piece as in one.
TEST(ReadMacroDataFile, ReadsTheSameWhateverTheSizeOfThePieces) {
  const TemporaryFolder folder;
  std::string many;
  for (int i = 0; i < 3000; ++i) many += std::to_string(i) + "\t" + std::to_string(i % 7) + ".25\t1e-3\r\n";
  const struct {
    std::string Text;
    const char *FirstLine, *Order, *Message;
    std::size_t Points;
  } cases[] = {
      {many, "1", "default", "", 3000},
      {many, "2990", "default", "", 11},
      {many, "3001", "default", "The file has no data from line 3001 on.", 0},
      {many + "3000\tx 1\t1\r\n", "1", "default", "Line 3001: 'x' is not a number.", 0},
      {many + "3000\tNA\t1\r\n", "1", "default", "", 3000},
      {"t\tA\n" + many, "2", "x,y", "", 3000},
      {"t\tA\n" + many, "1", "y,x", "Line 1: 'A' is not a number.", 0},
      {many, "1", "y", "", 0},
      {"", "1", "default", "The file is empty.", 0},
      {"\xFF\xFE", "1", "default", "The file is empty.", 0},
      {"\xEF\xBB\xBF", "1", "default", "The file has no data from line 1 on.", 0},
      {"\n\n", "1", "default", "", 0},
  };
  for (const auto& c : cases) {
    MacroSetup setup;
    setup.DataFile = folder.Write("data.txt", c.Text);
    setup.DataFirstLine = c.FirstLine;
    setup.ColumnOrder = c.Order;
    setup.MissingData = "NA";
    const DataReading whole = ReadMacroDataFile(setup, LocaleText());
    for (const std::size_t piece : {1, 2, 3, 7, 64, 1000}) {
      const DataReading reading = ReadMacroDataFile(setup, LocaleText(), piece < 64 ? 1 : 3, piece);
      EXPECT_EQ(reading.Message, c.Message) << c.Order;
      EXPECT_EQ(reading.Data.N(), c.Points) << c.Order << ' ' << piece;
      EXPECT_EQ(reading.Ok, whole.Ok);
      EXPECT_EQ(reading.ErrorNumber, 0);
      EXPECT_EQ(reading.Data.X, whole.Data.X);
      EXPECT_EQ(reading.Data.Y, whole.Data.Y);
      EXPECT_EQ(reading.Data.Row, whole.Data.Row);
    }
  }
}

// Be it at any piece of a file, or where a pipe is waited for that nobody writes to.
TEST(ReadMacroDataFile, EndsWhereItIsTold) {
  const TemporaryFolder folder;
  MacroSetup setup;
  std::string text;
  for (int i = 0; i < 100; ++i) text += "1\t2\n";
  const std::string file = folder.Write("data.txt", text), pipe = folder.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const std::string& name : {file, pipe}) {
    setup.DataFile = name;
    for (int last = 0; last < 5; ++last) {
      int asked = 0;
      const DataReading reading = ReadMacroDataFile(setup, LocaleText(), 1, 100, [&] { return asked++ < last; });
      EXPECT_FALSE(reading.Ok) << name << last;
      EXPECT_EQ(reading.Data.N(), 0u);
      EXPECT_EQ(asked, last + 1);
    }
  }
  std::thread writer([&] { std::ofstream(pipe) << text << std::flush << text; });
  EXPECT_EQ(ReadMacroDataFile(setup, LocaleText(), 1, 100, [] { return true; }).Data.N(), 200u);
  writer.join();
}

TEST(ReadMacroDataFile, GivesNoPointsOfAFileThatFailsOnTheWay) {
  const TemporaryFolder folder;
  MacroSetup setup;
  std::string text;
  for (int i = 0; i < 100; ++i) text += "1\t2\n";
  setup.DataFile = folder.Write("data.txt", text);
  for (int failing = 1; failing <= 4; ++failing) {
    int made = 0;
    const FileCalls calls([&](std::string_view call) { return call == "read" && ++made == failing ? EIO : 0; });
    const DataReading reading = ReadMacroDataFile(setup, LocaleText(), 1, 100);
    EXPECT_FALSE(reading.Ok);
    EXPECT_EQ(reading.ErrorNumber, 57);
    EXPECT_EQ(reading.Message, "The device reports an error.");
    EXPECT_EQ(reading.Data.N(), 0u);
  }
  bool done = false;
  const FileCalls calls([&](std::string_view call) {
    if (call == "read" && !done) std::filesystem::resize_file(setup.DataFile, 200);
    done = done || call == "read";
    return 0;
  });
  EXPECT_EQ(ReadMacroDataFile(setup, LocaleText(), 1, 100).Message, "The file became shorter while it was read.");
}

}  // namespace
}  // namespace quorvex
