#include "batch/RunCode.h"

#include <string>
#include <vector>

#include "code/CodeLanguage.h"
#include "engine/RankModels.h"

namespace quorvex {

int RunCode::Write(const MacroSetup& setup, const ModelCollection& models) {
  const std::vector<ModelClass*> ranked = RankModels(models, setup.SortKey);
  if (ranked.empty()) {
    log_.Line("Warning: There is no solved model to be written as code.");
    return 0;
  }
  return writer_.Write(setup, [&](const std::string& name) { return CodeForFile(*ranked.front(), name); });
}

}  // namespace quorvex
