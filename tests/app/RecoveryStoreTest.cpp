#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "TemporaryFolder.h"
#include "app/RecoveryStore.h"
#include "files/ProjectFile.h"

namespace quorvex {
namespace {

// A process that keeps two projects, saves one of them, and dies.
void CrashWith(const std::string& folder, const Project& project) {
  const pid_t child = fork();
  if (child == 0) {
    RecoveryStore store(folder);
    const bool kept = store.Keep(1, project) == 0 && store.Keep(2, project) == 0 && store.Keep(2, project) == 0;
    store.Forget(1);
    _exit(kept ? 0 : 1);
  }
  int status = -1;
  waitpid(child, &status, 0);
  ASSERT_EQ(status, 0);
}

TEST(RecoveryStore, OffersOnlyWhatACrashLeftAndOnlyOnce) {
  TemporaryFolder folder;
  const std::string state = folder.Path("state/quorvex");
  Project project(1, false, {});
  project.FileName = folder.Path("work, ünits.qvx");
  project.Sheet.Cells.SetGridCellNumber(1, 1, 4.25);
  CrashWith(state, project);
  {
    RecoveryStore ended(state);
    EXPECT_EQ(ended.Keep(1, project), 0);
  }
  RecoveryStore running(state);
  EXPECT_EQ(running.Keep(1, project), 0);

  RecoveryStore store(state);
  const auto left = store.Claim();
  ASSERT_EQ(left.size(), 1u);
  EXPECT_EQ(left[0].FileName, project.FileName);
  EXPECT_EQ(ReadProject(left[0].Copy, {})->Sheet.Cells.GridCellNumber(1, 1), 4.25);
  EXPECT_TRUE(RecoveryStore(state).Claim().empty());  // another instance that starts meanwhile

  store.Discard(left[0]);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(left[0].Copy).parent_path()));
}

TEST(RecoveryStore, LivesWithoutAFolder) {
  Project project(1, false, {});
  RecoveryStore store("");
  EXPECT_NE(store.Keep(1, project), 0);
  EXPECT_TRUE(store.Claim().empty());
}

TEST(RecoveryStore, KeepsItsFolderWhereTheEnvironmentSays) {
  const TemporaryVariable home("HOME", "/home/somebody");
  const TemporaryVariable state("XDG_STATE_HOME", nullptr);
  EXPECT_EQ(StateFolder(), "/home/somebody/.local/state/quorvex");
  const TemporaryVariable elsewhere("XDG_STATE_HOME", "/state");
  EXPECT_EQ(StateFolder(), "/state/quorvex");
}

}  // namespace
}  // namespace quorvex
