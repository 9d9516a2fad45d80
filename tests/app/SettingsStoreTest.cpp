#include <gtest/gtest.h>
#include <sys/stat.h>

#include "TemporaryFolder.h"
#include "app/SettingsStore.h"
#include "core/RecentFiles.h"

namespace quorvex {
namespace {

// A store of its own for each test.
class SettingsStore : public testing::Test {
 protected:
  Settings Load(const std::string& content) {
    folder_.Write("quorvex.ini", content);
    return LoadSettings();
  }
  std::string Saved() { return folder_.Read("quorvex.ini"); }

  TemporaryFolder folder_;
  TemporaryVariable name_{"QUORVEX_SETTINGS", folder_.Path("quorvex.ini").c_str()};
};

TEST_F(SettingsStore, GivesTheDefaultsWhereNothingOrNonsenseIsStored) {
  const std::string garbage(
      "\x7F"
      "ELF\0\xFF\xFE[=\n=\n]x[\nstartup]\n[startup\ntolerance=5",
      40);
  const std::string noNumbers =
      "[startup]\ntolerance=\nmaxiterations=many\ndiviterations=1e99\nundolevels=1.5.2\npointsperplot=nan\nderivative="
      "x\n";
  for (const std::string& content : {std::string(), garbage, noNumbers}) {
    const Settings settings = Load(content);
    EXPECT_EQ(settings.ResidualTolerance, 1e-10);
    EXPECT_EQ(settings.MaxIterations, 250);
    EXPECT_EQ(settings.DivIterations, 10);
    EXPECT_EQ(settings.DerivativeMethod, DerivativeKind::Richardson);
    EXPECT_EQ(settings.Number("tolerance"), 1e-10);
    EXPECT_EQ(settings.Integer("undolevels"), 15);
    EXPECT_EQ(settings.Integer("pointsperplot"), 100);
  }
  ASSERT_EQ(mkfifo(folder_.Path("pipe").c_str(), 0600), 0);
  std::filesystem::resize_file(folder_.Write("long", ""), 1ull << 40);
  for (const std::string& name :
       {folder_.Path(""), folder_.Path("pipe"), folder_.Path("long"), std::string("/dev/zero")}) {
    const TemporaryVariable noStore("QUORVEX_SETTINGS", name.c_str());
    EXPECT_EQ(LoadSettings().MaxIterations, 250);
    constexpr std::string_view kKeys[] = {"listmodel"};
    EXPECT_EQ(SaveSettings(Settings(), "startup", kKeys), 75) << name;
  }
}

TEST_F(SettingsStore, KnowsTheDefaultOfEachStyle) {
  const Settings settings = Load("");
  constexpr struct {
    const char *key, *section, *text;
  } kDefaults[] = {{"sortindex", "startup", "1"},
                   {"autoresults", "startup", "3"},
                   {"promptforsetup", "startup", "true"},
                   {"template2d", "startup", ""},
                   {"Show Tips at Startup", "startup", "1"},
                   {"xlabelstring", "startup", "0.00"},
                   {"tickpenlength", "startup", "0.125"},
                   {"discreetmarkersize", "startup", "5"},
                   {"shade3dmeshbyvalue", "startup", "true"},
                   {"mleft", "printsetup", "0.25"},
                   {"munits", "printsetup", "inches"},
                   {"plotorientation", "printsetup", "2"},
                   {"footnotefontbold", "startup", "0"},
                   {"zaxistitlecolor3d", "startup", "0"},
                   {"footnotecolor3d", "startup", ""},  // 3D plots have no footnote of their own
                   {"RecentFile1", "Project Files", ""}};
  for (const auto& c : kDefaults) EXPECT_EQ(settings.Text(c.key, c.section), c.text) << c.key;
  EXPECT_TRUE(settings.Flag("promptforsetup"));
  EXPECT_FALSE(settings.Flag("swapaxis"));
  EXPECT_FALSE(settings.Flag("default_showsdev"));
}

TEST_F(SettingsStore, ReadsWhatIsStored) {
  const Settings settings = Load(
      "\xEF\xBB\xBF; mine\r\n[StartUp]\r\n Tolerance = 1e-6 \r\nmaxiterations=0\r\ndiviterations=25\r\nDERIVATIVE=1\r\n"
      "diviterations=99\r\nswapaxis=yes\r\nuseaxisscale=false\r\n\r\n[printsetup]\r\nmleft=-1\r\nmright=0\r\n"
      "[Plot Files]\r\nrecentfile1=/home/a=b.plt\r\n");
  EXPECT_EQ(settings.ResidualTolerance, 1e-6);
  EXPECT_EQ(settings.MaxIterations, 250);  // a stored 0 is no choice
  EXPECT_EQ(settings.DivIterations, 25);   // the first of two
  EXPECT_EQ(settings.DerivativeMethod, DerivativeKind::Central);
  EXPECT_TRUE(settings.Flag("swapaxis"));
  EXPECT_FALSE(settings.Flag("useaxisscale"));
  EXPECT_EQ(settings.Number("mleft", "printsetup"), 0.25);
  EXPECT_EQ(settings.Number("mright", "printsetup"), 0);
  EXPECT_EQ(settings.Text("RecentFile1", "Plot Files"), "/home/a=b.plt");
}

TEST_F(SettingsStore, TakesOddChoicesAsTheProgramDoes) {
  EXPECT_EQ(Load("[startup]\nderivative=2\n").DerivativeMethod, DerivativeKind::Exact);
  EXPECT_EQ(Load("[startup]\nderivative=-1\n").DerivativeMethod, DerivativeKind::Richardson);
  EXPECT_EQ(Load("[startup]\nderivative=3\n").DerivativeMethod, DerivativeKind::Richardson);
  EXPECT_EQ(Load("[startup]\ntolerance=1,5\n").ResidualTolerance, 1e-10);  // "." whatever the locale
  EXPECT_FALSE(Load("[startup]\npromptforsetup=no\n").Flag("promptforsetup"));
}

TEST_F(SettingsStore, SavesWithoutTouchingTheRest) {
  Settings settings = Load(
      "# note\n[other]\nmaxiterations=1\n\n[startup]\nunknown=kept\nMaxIterations=7\n; end\n\n[printsetup]\nmleft=1\n");
  settings.Set("maxiterations", "500");
  EXPECT_EQ(settings.MaxIterations, 500);
  settings.SetNumber("tolerance", 0.5e-8);
  settings.Set("xlabelstring", "two\r\nlines");
  constexpr std::string_view kKeys[] = {"maxiterations", "tolerance", "xlabelstring"};
  ASSERT_EQ(SaveSettings(settings, "startup", kKeys), 0);
  EXPECT_EQ(Saved(),
            "# note\r\n[other]\r\nmaxiterations=1\r\n\r\n[startup]\r\nunknown=kept\r\nmaxiterations=500\r\n; end\r\n"
            "tolerance=5E-09\r\nxlabelstring=two  lines\r\n\r\n[printsetup]\r\nmleft=1\r\n");
  EXPECT_EQ(LoadSettings().ResidualTolerance, 5e-9);
}

TEST_F(SettingsStore, StoresTheFrameAndTheSolveChoicesAtTheEnd) {
  const TemporaryVariable deeper("QUORVEX_SETTINGS", folder_.Path("new/folder/q.ini").c_str());
  Settings settings = LoadSettings();
  EXPECT_EQ(settings.Folder("projectdir"), "");
  settings.Set("projectdir", "/home/me");
  EXPECT_EQ(settings.Folder("projectdir"), "/home/me");
  settings.SetFlag("promptforsetup", false);
  ASSERT_EQ(SaveStartupSettings(settings, {-60, 1234.56789, 12000, 1e-7 / 3}), 0);
  EXPECT_EQ(folder_.Read("new/folder/q.ini"),
            "[startup]\r\ndefault_x=-60\r\ndefault_y=1234.568\r\nscreenheight=12000\r\nscreenwidth=3.333333E-08\r\n"
            "projectdir=/home/me\r\npromptforsetup=false\r\ndefaultsolvesetup=0\r\ndefaultsolver=0\r\n");
  EXPECT_FALSE(LoadSettings().Flag("promptforsetup"));
}

TEST_F(SettingsStore, SavesWhatWasChangedSinceItWasLoaded) {
  Settings settings = Load("[startup]\nsortindex=2\nlistmodel=4\n");
  folder_.Write("quorvex.ini", "[startup]\nsortindex=1\nlistmodel=4\n");  // by another instance
  settings.Set("listmodel", "4");
  settings.Set("UserDefined", "1", "groupsolve");
  ASSERT_EQ(SaveChanges(settings), 0);
  const std::string stored = "[startup]\r\nsortindex=1\r\nlistmodel=4\r\n\r\n[groupsolve]\r\nUserDefined=1\r\n";
  EXPECT_EQ(Saved(), stored);
  std::filesystem::remove(folder_.Path("quorvex.ini"));
  std::filesystem::create_directory(folder_.Path("quorvex.ini"));
  settings.Set("listmodel", "5");
  EXPECT_EQ(SaveChanges(settings), 75);
  std::filesystem::remove(folder_.Path("quorvex.ini"));
  ASSERT_EQ(SaveChanges(settings), 0);  // what failed waits
  EXPECT_EQ(Saved(), "[startup]\r\nlistmodel=5\r\n");
}

TEST_F(SettingsStore, KeepsALinkAndLeavesNothingBeside) {
  folder_.Write("real/file.ini", "[startup]\nlistmodel=4\n");
  std::filesystem::create_symlink("real/file.ini", folder_.Path("quorvex.ini"));
  Settings settings = LoadSettings();
  EXPECT_EQ(settings.Integer("listmodel"), 4);
  settings.Set("listmodel", "5");
  constexpr std::string_view kKeys[] = {"listmodel"};
  ASSERT_EQ(SaveSettings(settings, "startup", kKeys), 0);
  EXPECT_TRUE(std::filesystem::is_symlink(folder_.Path("quorvex.ini")));
  EXPECT_EQ(folder_.Read("real/file.ini"), "[startup]\r\nlistmodel=5\r\n");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path("real")), {}), 1);
}

TEST_F(SettingsStore, TellsWhyItCannotSave) {
  folder_.Write("file", "");
  constexpr std::string_view kKeys[] = {"listmodel"};
  const TemporaryVariable below("QUORVEX_SETTINGS", folder_.Path("file/q.ini").c_str());
  EXPECT_EQ(SaveSettings(Settings(), "startup", kKeys), 76);
  const TemporaryVariable folder("QUORVEX_SETTINGS", folder_.Path("").c_str());
  EXPECT_EQ(SaveSettings(Settings(), "startup", kKeys), 75);
  // Who names it wants nothing kept, and no message about that.
  const TemporaryVariable nowhere("QUORVEX_SETTINGS", "/dev/null");
  EXPECT_EQ(SaveSettings(Settings(), "startup", kKeys), 0);
}

TEST(SettingsFileName, FollowsTheEnvironment) {
  constexpr struct {
    const char *own, *config, *home, *name;
  } kCases[] = {{"/s.ini", "/c", "/h", "/s.ini"},
                {nullptr, "/c", "/h", "/c/quorvex/quorvex.ini"},
                {"", "", "/h", "/h/.config/quorvex/quorvex.ini"},
                {nullptr, "relative", "/h", "/h/.config/quorvex/quorvex.ini"},
                {nullptr, nullptr, nullptr, ""}};
  for (const auto& c : kCases) {
    const TemporaryVariable own("QUORVEX_SETTINGS", c.own), config("XDG_CONFIG_HOME", c.config), home("HOME", c.home);
    EXPECT_EQ(SettingsFileName(), c.name);
  }
}

TEST_F(SettingsStore, FitsTheStoredPlaceToTheScreen) {
  Settings settings = Load("[startup]\ndefault_x=-150\ndefault_y=30.5\nscreenwidth=2000\nscreenheight=900\n");
  const FrameGeometry fitted = StartupGeometry(settings, 1000, 1600);
  EXPECT_EQ(fitted.Left, -150);
  EXPECT_EQ(fitted.Top, 30.5);
  EXPECT_EQ(fitted.Width, 1600);
  EXPECT_EQ(fitted.Height, 900);
  EXPECT_EQ(settings.Text("screenwidth"), "2000");
  const FrameGeometry first = StartupGeometry(Load(""), 1000, 1600);
  EXPECT_EQ(first.Width, 1200);
  EXPECT_EQ(first.Height, 750);
}

TEST_F(SettingsStore, ListsTheFilesUsedLast) {
  Settings settings = Load("[Project Files]\nRecentFile1=/a\nRecentFile2=/b\n");
  AddRecentFile(settings, kRecentProjects, "/b");
  EXPECT_EQ(RecentFiles(settings, kRecentProjects), (std::vector<std::string>{"/b", "/a"}));
  for (int i = 0; i < 20; ++i) AddRecentFile(settings, kRecentProjects, "/" + std::to_string(i));
  RemoveRecentFile(settings, kRecentProjects, "/19");
  EXPECT_EQ(SaveChanges(settings), 0);
  const std::vector<std::string> stored = RecentFiles(LoadSettings(), kRecentProjects);
  EXPECT_EQ(stored, RecentFiles(settings, kRecentProjects));
  EXPECT_EQ(stored.front(), "/18");
  EXPECT_EQ(stored.size(), 7u);
  EXPECT_TRUE(RecentFiles(settings, "Plot Files").empty());
}

}  // namespace
}  // namespace quorvex
