// What is installed beside the program, against the program.

#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "Paths.h"
#include "batch/Program.h"
#include "core/Files.h"

namespace quorvex {
namespace {

std::string InCheckout(const std::string& name) {
  WholeFile file;
  EXPECT_EQ(file.Read(TestData("../../" + name)), 0) << name;
  return std::string(file.Text());
}

TEST(Packaging, TellsEachOptionOfTheProgram) {
  Program program;
  ASSERT_EQ(program.Run("--help"), 0);
  std::set<std::string> options;
  const std::regex option("[ |](--?[a-z][a-z-]+)");
  for (std::sregex_iterator found(program.Out.begin(), program.Out.end(), option), end; found != end; ++found)
    options.insert((*found)[1]);
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

TEST(Packaging, HasAnIconOfEachSizeForTheProgramAndEachOfItsFileTypes) {
  const std::string types = InCheckout("packaging/quorvex-mime.xml");
  std::vector<std::string> icons{"apps/quorvex"};
  const std::regex icon("<icon name=\"([^\"]+)\"");
  for (std::sregex_iterator found(types.begin(), types.end(), icon), end; found != end; ++found)
    icons.push_back("mimetypes/" + (*found)[1].str());
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

}  // namespace
}  // namespace quorvex
