// The road to the program that draws, with programs of a few lines in its place.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "TemporaryFolder.h"
#include "app/DesktopDrawer.h"

namespace quorvex {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLong{60'000};
const auto kGoOn = [] { return true; };

class Drawing : public testing::Test {
 protected:
  // A program that notes its process and the folder it is given, and then does this with each ending that it reads.
  std::filesystem::path Drawer(const std::string& work) {
    const std::string name = Folder.Write("draw", "#!/bin/sh\ncd \"$2\" || exit\necho $$ \"$1\" >>" +
                                                      Folder.Path("begun") + "\nwhile read ending; do " + work +
                                                      "; done\necho over >>" + Folder.Path("begun") + '\n');
    chmod(name.c_str(), 0755);
    return name;
  }
  long Begun() const {
    const std::string text = Folder.Read("begun");
    return std::count(text.begin(), text.end(), '\n');
  }
  // What the drawers share with their programs, in the place for temporary files.
  long Shared() const { return std::distance(std::filesystem::directory_iterator(Folder.Path("tmp")), {}); }

  TemporaryFolder Folder;
  std::filesystem::path Temporary = Folder.Write("tmp/none", "");
  TemporaryVariable Place{"TMPDIR", Temporary.parent_path().c_str()};
};

TEST_F(Drawing, IsDoneByOneProcess) {
  {
    DesktopDrawer drawer(Drawer("(cat plot.plt; echo $ending) >picture$ending; echo"), kLong);
    EXPECT_EQ(drawer.WhyNone(), "");
    EXPECT_EQ(Begun(), 0);
    for (const char* ending : {".svg", ".png"}) {
      const Result<std::string> picture = drawer.Draw(std::string("plot \0\n", 7), ending, kGoOn);
      ASSERT_TRUE(picture) << picture.error();
      EXPECT_EQ(*picture, std::string("plot \0\n", 7) + ending + '\n');
    }
    EXPECT_TRUE(Folder.Read("begun").ends_with(" -draw\n")) << Folder.Read("begun");
    EXPECT_EQ(Begun(), 1);
    EXPECT_EQ(Shared(), 2);
  }
  EXPECT_EQ(Shared(), 1);
}

TEST_F(Drawing, TellsWhyThereIsNoPicture) {
  const struct {
    const char* Work;
    milliseconds Limit;
    const char* First;
    const char* Second;
    long Begun;
  } cases[] = {
      {"echo no room.", kLong, "no room.", "no room.", 1},
      {"echo", kLong, "There is no picture. The file does not exist.", "There is no picture. The file does not exist.",
       1},
      {"exit 3", kLong, "The desktop program ended before the picture was drawn.",
       "The desktop program ended before the picture was drawn.", 2},
      {"echo half >picture$ending; kill -SEGV $$", kLong, "The desktop program ended before the picture was drawn.",
       "The desktop program ended before the picture was drawn.", 2},
      {"sleep 1000", milliseconds(300), "The desktop program takes too long.",
       "The desktop program took too long before and is not asked again.", 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Work);
    std::filesystem::remove(Folder.Path("begun"));
    DesktopDrawer drawer(Drawer(c.Work), c.Limit);
    EXPECT_EQ(drawer.Draw("plot", ".png", kGoOn).error(), c.First);
    EXPECT_EQ(drawer.Draw("plot", ".png", kGoOn).error(), c.Second);
    EXPECT_EQ(Begun(), c.Begun);
  }
  EXPECT_EQ(Shared(), 1);
}

TEST_F(Drawing, EndsWhenItIsCalledOff) {
  int asked = 0;
  DesktopDrawer drawer(Drawer("sleep 1000"), kLong);
  EXPECT_EQ(drawer.Draw("plot", ".png", [&] { return ++asked < 3; }).error(), "The run was aborted.");
  EXPECT_EQ(drawer.Draw("plot", ".png", [] { return false; }).error(), "The run was aborted.");
}

TEST_F(Drawing, WantsAProgram) {
  DesktopDrawer drawer(Folder.Path("none"), kLong);
  EXPECT_EQ(drawer.WhyNone(),
            "The desktop program quorvex-desktop is not installed, so no pictures are drawn, only plot files (.plt) "
            "are written.");
  EXPECT_EQ(drawer.Draw("plot", ".png", kGoOn).error(), "The desktop program ended before the picture was drawn.");
  const TemporaryVariable nowhere("TMPDIR", Folder.Path("nowhere").c_str());
  EXPECT_EQ(DesktopDrawer(Drawer("echo"), kLong).Draw("plot", ".png", kGoOn).error(),
            "The folder for temporary files cannot be written.");
}

}  // namespace
}  // namespace quorvex
