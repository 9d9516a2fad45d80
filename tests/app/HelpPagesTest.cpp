#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "Paths.h"
#include "app/HelpPages.h"
#include "core/Files.h"

namespace quorvex {
namespace {

TEST(HeadingAnchor, IsWhatLinksOfMarkdownSay) {
  const std::pair<const char*, const char*> kHeadings[] = {
      {"Exit status", "exit-status"},
      {"Starts: Assign", "starts-assign"},
      {"1. Open the file", "1-open-the-file"},
      {"Gamma, beta and error function", "gamma-beta-and-error-function"},
      {"linesetting_n_ (all)", "linesetting_n_-all"},
  };
  for (const auto& [heading, anchor] : kHeadings) EXPECT_EQ(HeadingAnchor(heading), anchor);
}

struct Sources {
  std::string Windows, All;
};

Sources ReadSources() {
  Sources sources;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(TestData("../../src"))) {
    const std::filesystem::path& path = entry.path();
    const std::string folder = path.parent_path().filename();
    WholeFile file;
    if (path.extension() != ".cpp" || path.filename() == "HelpPages.cpp" || file.Read(path) != 0) continue;
    sources.All += file.Text();
    if (folder == "ui" || folder == "desktop") sources.Windows += file.Text();
  }
  return sources;
}

TEST(HelpPages, HaveAPageForEachDialogAndNoneForWhatIsNoWindow) {
  const Sources sources = ReadSources();
  const std::regex dialog(
      "SheetDialog\\w*(?: \\w+)?\\(\\w+, \"(\\w+)\"|"
      ": (?:QDialog|ListChooser|PreferenceDialog)\\([^;]*?setObjectName\\(\"(\\w+)\"\\)");
  std::set<std::string> dialogs;
  for (std::sregex_iterator found(sources.Windows.begin(), sources.Windows.end(), dialog), end; found != end; ++found)
    dialogs.insert((*found)[1].str() + (*found)[2].str());
  EXPECT_GT(dialogs.size(), 30u);
  dialogs.erase("frmTip");  // stands over the frame, whose page is the first one
  for (const std::string& name : dialogs) EXPECT_NE(HelpPageOf(name), "") << name;
  for (const HelpPage& help : HelpPages()) {
    const std::string name = '"' + std::string(help.Window) + '"';
    EXPECT_NE(sources.All.find(name), std::string::npos) << name;
  }
}

}  // namespace
}  // namespace quorvex
