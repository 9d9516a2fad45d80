#include <gtest/gtest.h>
#include <sys/stat.h>

#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "app/CommandLine.h"
#include "app/OpenFile.h"
#include "files/ProjectFile.h"

namespace quorvex {
namespace {

TEST(HowToOpen, GoesByWhatTheFileHolds) {
  const TemporaryFolder folder;
  const std::string project = folder.Path("a.txt"), pipe = folder.Path("pipe"), missing = folder.Path("missing.qvx");
  ASSERT_EQ(WriteProject(Project(1, false, {}), project), 0);
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const std::string plot =
      folder.Write("a.plt", "\"B_HEADER\"\r\n\"    Quorvex:  Version 9.0 Plot\"\r\n\"filetype=2d\"\r\n\"x\"\r\n");
  const std::string data = folder.Write("a.qvx", "1 2\n3 4\n");
  const std::string plain = folder.Write("a.CSV", "1 2\n3 4\n");
  const std::string old = folder.Write("a.xls", "\xD0\xCF\x11\xE0");
  const auto unknown = [](const std::string& name) {
    return "refuse: Could not obtain file description for '" + name + "'.";
  };
  const struct {
    std::string Name;
    NamedBy By;
    OpenAs Way;
    std::string Said;
  } cases[] = {
      {project, NamedBy::User, OpenAs::Project, ""},
      {project, NamedBy::CommandLine, OpenAs::Project, ""},
      {data, NamedBy::User, OpenAs::Data, ""},
      {plain, NamedBy::User, OpenAs::Data, ""},
      {plain, NamedBy::CommandLine, OpenAs::Data, ""},
      {old, NamedBy::CommandLine, OpenAs::Data, ""},
      {data, NamedBy::CommandLine, OpenAs::DataOfAKind,
       "refuse: The command line argument file name '" + data +
           "' does not have a Quorvex extension. Please specify a new project type, then the file can be imported."},
      {plot, NamedBy::User, OpenAs::Plot, ""},
      {plot, NamedBy::CommandLine, OpenAs::Plot, ""},
      {missing, NamedBy::CommandLine, OpenAs::Unknown, unknown(missing)},
      {folder.Path(""), NamedBy::User, OpenAs::Unknown, unknown(folder.Path(""))},
      {pipe, NamedBy::User, OpenAs::Unknown, unknown(pipe)},
      {"-runcfg", NamedBy::CommandLine, OpenAs::Unknown, unknown("-runcfg")},
  };
  for (const auto& c : cases) {
    RecordingPrompter user;
    EXPECT_EQ(HowToOpen(c.Name, c.By, user), c.Way) << c.Name;
    EXPECT_EQ(user.Last(), c.Said);
  }
}

TEST(StartCommands, AreTheWholeLineOrElseItsFiles) {
  const TemporaryFolder folder;
  folder.Write("a.plt", "");
  folder.Write("b.plt", "");
  folder.Write("a.plt b.plt", "");
  const std::string a = folder.Path("a.plt"), b = folder.Path("b.plt"), none = folder.Path("none.plt");
  using Words = std::vector<std::string>;
  const struct {
    Words Arguments, Commands;
  } kCases[] = {{{}, {""}},
                {{a}, {a}},
                {{none}, {none}},
                {{a, b}, {a, b}},
                {{none, b}, {none, b}},
                {{none, "c"}, {none + " c"}},
                {{a, "b.plt"}, {a + " b.plt"}}};
  for (const auto& c : kCases) EXPECT_EQ(StartCommands(c.Arguments), c.Commands) << c.Commands[0];
}

}  // namespace
}  // namespace quorvex
