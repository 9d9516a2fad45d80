#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "app/OfferRecovery.h"
#include "core/DateText.h"
#include "files/ProjectFile.h"
#include "plot/Plots.h"

namespace quorvex {
namespace {

// No file may grow beyond that many bytes, as on a full disk.
class SmallFiles {
 public:
  explicit SmallFiles(rlim_t bytes) : handler_(signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &limit_);
    const rlimit small{bytes, limit_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallFiles() {
    setrlimit(RLIMIT_FSIZE, &limit_);
    signal(SIGXFSZ, handler_);
  }

 private:
  rlimit limit_{};
  sighandler_t handler_;
};

// A process that keeps something twice, saves one of them, and dies.
template <typename Document>
void CrashWith(const std::string& folder, const Document& document) {
  const pid_t child = fork();
  if (child == 0) {
    RecoveryStore store(folder);
    const bool kept = store.Keep(1, document) == 0 && store.Keep(2, document) == 0 && store.Keep(2, document) == 0;
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
  const std::time_t now = std::time(nullptr);
  EXPECT_TRUE(left[0].Made > DateText(now - 60) && left[0].Made <= DateText(now)) << left[0].Made;
  const Result<Project> read = RecoveryStore::Read(left[0], {});
  EXPECT_EQ(read->Sheet.Cells.GridCellNumber(1, 1), 4.25);
  EXPECT_EQ(read->FileName, project.FileName);
  EXPECT_TRUE(read->HasFile && read->Changed);
  EXPECT_TRUE(RecoveryStore(state).Claim().empty());  // another instance that starts meanwhile

  store.Discard(left[0]);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(left[0].Copy).parent_path()));
}

TEST(RecoveryStore, KeepsAPlotAsItWasUnderItsName) {
  const TemporaryFolder folder;
  Settings settings;
  RecordingPrompter user;
  const struct {
    std::string FileName, Project;
    double Max;  // with the last one nothing can be drawn
    bool Created;
  } cases[] = {{"Plot 3", "a.qvx", 4, true}, {folder.Path("a,\nü.plt"), "", 4, true}, {"Plot 1", "", 1e308, false}};
  for (const auto& c : cases) {
    auto plot = std::make_unique<PlotClass>(settings);
    plot->PlotData.push_back(PointSeries({1, 2, 3}, {2, 4, 8}, "Input Data"));
    ASSERT_TRUE(plot->CreateGraph({.Auto = true}, user));
    PlotDocument document(std::move(plot), settings, user);
    document.FileName = c.FileName;
    document.HasFile = c.FileName.starts_with('/');
    document.Project = c.Project;
    static_cast<PlotClass&>(document.Plot()).X.Min = -c.Max;
    static_cast<PlotClass&>(document.Plot()).X.Max = c.Max;
    document.Plot().CreateGraph({}, user);
    CrashWith(folder.Path("state"), document);

    RecoveryStore store(folder.Path("state"));
    const auto left = store.Claim();
    ASSERT_EQ(left.size(), 1u);
    EXPECT_TRUE(left[0].IsPlot());
    Result<PlotDocument> read = RecoveryStore::ReadPlot(left[0], settings, {}, user);
    ASSERT_TRUE(read) << read.error();
    EXPECT_EQ(read->FileName, c.FileName);
    EXPECT_EQ(read->HasFile, document.HasFile);
    EXPECT_EQ(read->Project, c.Project);
    EXPECT_EQ(read->Plot().PlotCreated, c.Created);
    EXPECT_EQ(read->Plot().Axes()[0]->Max, c.Max);
    EXPECT_EQ(read->Plot().PlotData[0].Style().LegendText, "Input Data");
    EXPECT_TRUE(read->Changed());
    read->Record("A change");
    read->Undo();
    EXPECT_TRUE(read->Changed()) << "what it began with is not saved either";
    store.Discard(left[0]);
  }
}

TEST(RecoveryStore, OffersACopyWhoseNameIsLost) {
  using Write = void (*)(const std::string& name);
  for (const Write damage : {Write([](const std::string& name) { std::filesystem::remove(name); }),
                             Write([](const std::string& name) { std::filesystem::resize_file(name, 0); }),
                             Write([](const std::string& name) {
                               std::filesystem::remove(name);
                               std::filesystem::create_directory(name);
                             })}) {
    TemporaryFolder folder;
    CrashWith(folder.Path("state"), Project(1, false, {}));
    for (const auto& file : std::filesystem::recursive_directory_iterator(folder.Path("state")))
      if (file.path().extension() == ".name") damage(file.path());
    const auto left = RecoveryStore(folder.Path("state")).Claim();
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(left[0].FileName, "Recovered");
    EXPECT_FALSE(RecoveryStore::Read(left[0], {})->HasFile);
  }
}

TEST(RecoveryStore, KeepsACopyUntilTheNextIsSafelyWritten) {
  TemporaryFolder folder;
  const std::string state = folder.Path("state");
  Project project(1, false, {});
  CrashWith(state, project);
  const auto claim = [](RecoveryStore& store) {
    const auto left = store.Claim();
    EXPECT_EQ(left.size(), 1u);
    if (!left.empty()) store.Adopt(7, left[0]);
  };
  {
    RecoveryStore store(state);
    claim(store);
    const SmallFiles disk(200);  // bytes of room
    EXPECT_EQ(store.Keep(7, project), 61);
  }
  {
    RecoveryStore store(state);
    claim(store);
    EXPECT_EQ(store.Keep(7, project), 0);
  }
  EXPECT_TRUE(RecoveryStore(state).Claim().empty());
  CrashWith(state, project);
  {
    RecoveryStore store(state);
    claim(store);
    store.Forget(7);
  }
  EXPECT_TRUE(RecoveryStore(state).Claim().empty());
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

TEST(OfferRecovery, DeletesOnlyWhereTheUserSaysSoTwice) {
  const TemporaryFolder folder;
  Project project(1, false, {});
  project.FileName = "Untitled 2";
  project.Sheet.Cells.SetGridCellNumber(1, 1, 42);
  CrashWith(folder.Path("state"), project);
  // Answers each question in turn.
  struct : RecordingPrompter {
    std::vector<bool> Answers;
    bool Ask(const std::string& text) override {
      Answer = Answers[Said.size()];
      return RecordingPrompter::Ask(text);
    }
  } user;
  const auto offer = [&](std::vector<bool> answers) {
    user.Said.clear();
    user.Answers = std::move(answers);
    RecoveryStore store(folder.Path("state"));
    const auto left = store.Claim();
    return left.empty() ? std::nullopt : OfferRecovery(store, left[0], {}, user);
  };
  const auto restored = offer({true});
  ASSERT_TRUE(restored);
  EXPECT_EQ(restored->Sheet.Cells.GridCellNumber(1, 1), 42);
  EXPECT_EQ(user.Last(),
            "ask: Quorvex ended unexpectedly while changes to the project 'Untitled 2' were not saved. Do you want to "
            "restore them?");
  EXPECT_FALSE(offer({false, false}));
  EXPECT_TRUE(user.Last().starts_with("ask: The changes to the project 'Untitled 2' were kept on 20")) << user.Last();
  EXPECT_FALSE(offer({false, true}));
  EXPECT_EQ(user.Said.size(), 2u);
  EXPECT_FALSE(offer({}));
  EXPECT_TRUE(user.Said.empty()) << "nothing is left to be offered";

  Settings settings;
  PlotDocument plot(std::make_unique<PlotClass>(settings), settings, user);
  plot.FileName = "Plot 1";
  plot.Project = "Untitled";
  CrashWith(folder.Path("state"), plot);
  RecoveryStore store(folder.Path("state"));
  user.Answers = {false, true};
  EXPECT_FALSE(OfferPlotRecovery(store, store.Claim()[0], settings, {}, user));
  EXPECT_TRUE(
      user.Last().starts_with("ask: The changes to the plot 'Plot 1' of the project 'Untitled' were kept on 20"))
      << user.Last();
}

}  // namespace
}  // namespace quorvex
