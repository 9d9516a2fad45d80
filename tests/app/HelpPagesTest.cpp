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

// What a page prints in bold are entries and controls, one behind the other, as in "Data, Smooth".
TEST(HelpPages, NameNoEntryOrControlThatIsNotThere) {
  std::string sources = ReadSources().All;
  std::erase_if(sources, [](char c) { return c == '&' || c == '\\'; });
  const std::set<std::string> kComposed{"Undo Import", "Skip them", "Add F1",
                                        "44 cells are text: NA. Read them as missing?"};
  std::size_t names = 0;
  for (const auto& entry : std::filesystem::directory_iterator(TestData("../../docs/manual"))) {
    WholeFile file;
    if (entry.path().extension() != ".html" || file.Read(entry.path()) != 0) continue;
    const std::string page(file.Text());
    const std::regex bold("<b>([^<]*)</b>");
    for (std::sregex_iterator found(page.begin(), page.end(), bold), end; found != end; ++found) {
      std::string text = std::regex_replace((*found)[1].str(), std::regex("\\s+"), " ");
      const auto isThere = [&](const std::string& name) {
        return kComposed.contains(name) || sources.find('"' + name) != std::string::npos;
      };
      if (isThere(text)) continue;
      for (std::size_t comma = 0; comma != std::string::npos;) {
        comma = text.find(", ");
        std::string name = text.substr(0, comma);
        while (name.ends_with('.') || name.ends_with(':') || name.ends_with(' ')) name.pop_back();
        EXPECT_TRUE(isThere(name)) << entry.path().filename() << ": " << name;
        ++names;
        if (comma != std::string::npos) text.erase(0, comma + 2);
      }
    }
    names += 1;
  }
  EXPECT_GT(names, 50u);
}

}  // namespace
}  // namespace quorvex
