// What is installed beside the program, against the program.

#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "Paths.h"
#include "batch/Program.h"
#include "core/Files.h"
#include "equation/IntrinsicFunctions.h"
#include "macro/MacroStatements.h"

namespace quorvex {
namespace {

std::string InCheckout(const std::string& name) {
  WholeFile file;
  EXPECT_EQ(file.Read(TestData("../../" + name)), 0) << name;
  return std::string(file.Text());
}

std::set<std::string> Matches(const std::string& text, const char* pattern) {
  std::set<std::string> matches;
  const std::regex each(pattern);
  for (std::sregex_iterator found(text.begin(), text.end(), each), end; found != end; ++found)
    matches.insert((*found)[1]);
  return matches;
}

TEST(Packaging, TellsEachOptionOfTheProgram) {
  Program program;
  ASSERT_EQ(program.Run("--help"), 0);
  const std::set<std::string> options = Matches(program.Out, "[ |](--?[a-z][a-z-]+)");
  EXPECT_TRUE(options.contains("-runcfg") && options.contains("--version"));
  for (const std::string& name : options) {
    const std::string bare = name.substr(name.find_first_not_of('-'));
    std::string roff;
    for (const char c : name) roff += c == '-' ? "\\-" : std::string(1, c);
    EXPECT_NE(InCheckout("packaging/completions/quorvex.bash").find(name), std::string::npos) << name;
    EXPECT_NE(InCheckout("packaging/completions/_quorvex").find("'" + name + ":"), std::string::npos) << name;
    EXPECT_NE(InCheckout("packaging/completions/quorvex.fish").find((name[1] == '-' ? " -l " : " -o ") + bare + ' '),
              std::string::npos)
        << name;
    for (const char* page : {"docs/quorvex.1", "docs/quorvex-desktop.1"})
      EXPECT_NE(InCheckout(page).find(roff), std::string::npos) << page << ' ' << name;
  }
}

// The man page is the short form of the manual.
TEST(Packaging, TellsTheSameStatusesStatementsAndFunctionsInTheManPage) {
  const std::string page = InCheckout("docs/quorvex.1"), macros = InCheckout("docs/macros.md");
  const std::set<std::string> statuses = Matches(page, "\n(\\d+\t\\d+)\t");
  std::set<std::string> told;
  for (std::string row : Matches(macros, "\n\\| (\\d+ \\| \\d+) \\|")) {
    row.replace(row.find(" | "), 3, "\t");
    told.insert(row);
  }
  EXPECT_EQ(statuses, told);
  EXPECT_GT(statuses.size(), 20u);
  const std::string functions =
      page.substr(page.find("\nFunctions:"), page.find("\nMind:") - page.find("\nFunctions:"));
  std::set<std::string> words = Matches(functions, "\\b([a-z][a-z0-9]*)(?:\\(|[ \\n])");
  for (const IntrinsicFunction& function : IntrinsicFunctions())
    if (function.Word != WrittenIn::NoModel) {
      EXPECT_TRUE(words.contains(std::string(function.Name))) << function.Name;
    }
  for (const MacroStatement& statement : MacroStatements())
    EXPECT_NE(page.find("\n" + std::string(statement.Keyword) + "\t"), std::string::npos) << statement.Keyword;
}

TEST(Packaging, HasAnIconOfEachSizeForTheProgramAndEachOfItsFileTypes) {
  const std::string types = InCheckout("packaging/quorvex-mime.xml");
  std::vector<std::string> icons{"apps/quorvex"};
  for (const std::string& name : Matches(types, "<icon name=\"([^\"]+)\"")) icons.push_back("mimetypes/" + name);
  EXPECT_EQ(icons.size(), 3u);
  for (const std::string& name : icons) {
    const std::string folder = "packaging/icons/hicolor/";
    EXPECT_NE(InCheckout(folder + "scalable/" + name + ".svg").find("<svg"), std::string::npos);
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
      const std::string each = std::to_string(size);
      const std::string picture = InCheckout(folder + each + "x" + each + "/" + name + ".png");
      ASSERT_GT(picture.size(), 24u);
      const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(picture[at]); };
      EXPECT_EQ(byte(18) * 256 + byte(19), size) << name;  // width and height of the PNG header
      EXPECT_EQ(byte(22) * 256 + byte(23), size) << name;
    }
  }
}

TEST(Packaging, OffersTheProgramForTablesTextsAndItsOwnFiles) {
  const std::string entry = InCheckout("packaging/quorvex.desktop");
  for (const char* type : {"application/x-quorvex-project", "application/x-quorvex-plot", "text/csv", "text/plain",
                           "application/vnd.oasis.opendocument.spreadsheet",
                           "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"})
    EXPECT_TRUE(Matches(entry, "[=;]([a-z]+/[a-z.-]+)(?=;)").contains(type)) << type;
}

}  // namespace
}  // namespace quorvex
