// The road to the program that draws, with programs of a few lines in its place.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <thread>

#include "TemporaryFolder.h"
#include "app/DesktopDrawer.h"

namespace quorvex {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLong{60'000};
const auto kGoOn = [] { return true; };

class Drawing : public testing::Test {
 protected:
  // A program that notes its process, and then does this with each ending that it reads.
  std::filesystem::path Drawer(const std::string& work) {
    const std::string name = Folder.Write("draw", "#!/bin/sh\nplot=$2 picture=$3\necho $$ \"$1\" >>" +
                                                      Folder.Path("begun") + "\nwhile read ending; do " + work +
                                                      "; done\necho over >>" + Folder.Path("begun") + '\n');
    chmod(name.c_str(), 0755);
    return name;
  }
  long Begun() const {
    const std::string text = Folder.Read("begun");
    return std::count(text.begin(), text.end(), '\n');
  }
  TemporaryFolder Folder;
  // No folder for temporary files is wanted.
  TemporaryVariable Nowhere{"TMPDIR", Folder.Path("nowhere").c_str()};
};

TEST_F(Drawing, IsDoneByOneProcess) {
  {
    DesktopDrawer drawer(Drawer("(cat $plot; echo $ending) >$picture; echo"), kLong);
    EXPECT_EQ(drawer.WhyNone(), "");
    EXPECT_EQ(Begun(), 0);
    // The later one is shorter, and has nothing of the earlier one in it.
    for (const std::string& plot : {std::string(3'000'000, 'p'), std::string("plot \0\n", 7)})
      for (const char* ending : {".svg", ".png"}) {
        const Result<std::string> picture = drawer.Draw(plot, ending, kGoOn);
        ASSERT_TRUE(picture) << picture.error();
        EXPECT_TRUE(*picture == plot + ending + '\n') << picture->size();
      }
    EXPECT_TRUE(Folder.Read("begun").ends_with(" -draw\n")) << Folder.Read("begun");
    EXPECT_EQ(Begun(), 1);
  }
}

TEST_F(Drawing, TellsWhyThereIsNoPicture) {
  const std::string kTalk = "The desktop program said what is no answer: '" + std::string(500, 'y') + "'.";
  const struct {
    const char* Work;
    milliseconds Limit;
    const char* First;
    const char* Second;
    long Begun;
  } cases[] = {
      {"echo no room.", kLong, "no room.", "no room.", 1},
      {"echo", kLong, "The desktop program says that it has drawn, but there is no picture.",
       "The desktop program says that it has drawn, but there is no picture.", 1},
      {"printf 'Usage:\\r\\n one\\n two\\n'", kLong, "The desktop program said what is no answer: 'Usage:'.",
       "The desktop program said what is no answer: 'Usage:'.", 2},
      {"yes | tr -d '\\n'", kLong, kTalk.c_str(), kTalk.c_str(), 2},
      {"exit 3", kLong, "The desktop program ended before the picture was drawn.",
       "The desktop program ended before the picture was drawn.", 2},
      {"echo half >$picture; kill -SEGV $$", kLong, "The desktop program ended before the picture was drawn.",
       "The desktop program ended before the picture was drawn.", 2},
      {"sleep 1000", milliseconds(300), "The desktop program takes too long.",
       "The desktop program took too long before and is not asked again.", 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Work);
    std::filesystem::remove(Folder.Path("begun"));
    DesktopDrawer drawer(Drawer(c.Work), c.Limit);
    for (const char* said : {c.First, c.Second}) {
      const Result<std::string> picture = drawer.Draw("plot", ".png", kGoOn);
      EXPECT_EQ(picture ? "" : picture.error(), said);
    }
    EXPECT_EQ(Begun(), c.Begun);
  }
}

TEST_F(Drawing, TakesNothingSaidLateForTheNextAnswer) {
  DesktopDrawer drawer(Drawer("echo x >$picture; echo; until [ -e " + Folder.Path("go") +
                              " ]; do sleep .01; done; echo late; echo >" + Folder.Path("said")),
                       kLong);
  EXPECT_TRUE(drawer.Draw("plot", ".png", kGoOn));
  Folder.Write("go", "");
  while (!std::filesystem::exists(Folder.Path("said"))) std::this_thread::yield();
  std::filesystem::remove(Folder.Path("go"));
  EXPECT_TRUE(drawer.Draw("plot", ".png", kGoOn));
  EXPECT_EQ(Begun(), 2);
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
}

}  // namespace
}  // namespace quorvex
