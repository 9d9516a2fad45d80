// Replays the corpora of the fuzz targets, so that what a fuzzer once found stays found without it.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "Paths.h"
#include "fuzz/MacroReader.h"
#include "fuzz/ModelFile.h"
#include "fuzz/ModelText.h"
#include "fuzz/PlotFile.h"
#include "fuzz/ProjectFile.h"
#include "fuzz/Spreadsheet.h"
#include "fuzz/Template.h"

namespace quorvex {
namespace {

using Target = int (*)(const std::uint8_t*, std::size_t);

const std::map<std::string, Target> kTargets = {
    {"ModelTextFuzz", FuzzModelText},     {"MacroReaderFuzz", FuzzMacroReader}, {"ModelFileFuzz", FuzzModelFile},
    {"ProjectFileFuzz", FuzzProjectFile}, {"PlotFileFuzz", FuzzPlotFile},       {"SpreadsheetFuzz", FuzzSpreadsheet},
    {"TemplateFuzz", FuzzTemplate},
};

TEST(Corpus, EveryInputKeepsWhatItsTargetRequires) {
  std::size_t folders = 0;
  for (const auto& folder : std::filesystem::directory_iterator(FuzzCorpus())) {
    const auto target = kTargets.find(folder.path().filename());
    ASSERT_NE(target, kTargets.end()) << folder.path();
    ++folders;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      std::ifstream file(entry.path(), std::ios::binary);
      const std::string bytes(std::istreambuf_iterator<char>(file), {});
      SCOPED_TRACE(entry.path());
      EXPECT_NO_THROW(target->second(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
    }
  }
  EXPECT_EQ(folders, kTargets.size());
}

}  // namespace
}  // namespace quorvex
