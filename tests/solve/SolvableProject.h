#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "RecordingPrompter.h"
#include "engine/UserModel.h"
#include "solve/ProjectSolver.h"

namespace quorvex {

// A progress window that writes down what it is told, and presses a button at a given turn of the event loop.
struct ScriptedProgress : SolveProgress {
  explicit ScriptedProgress(std::vector<std::string>& said) : Said(said) {}
  std::vector<std::string>& Said;
  std::function<void(ScriptedProgress& form)> AtTurn = [](ScriptedProgress&) {};

  void Show(bool visible) override { Said.push_back(visible ? "show" : "hide"); }
  void SetProgress(int done, int of) override {
    Said.push_back(std::to_string(done) + "/" + std::to_string(of));
    Yield();
  }
  void SetStatusLabel(const std::string& text) override { Said.push_back(text); }
  void SetParameterCount(int count) override { Said.push_back(std::to_string(count) + " parameters"); }
  void Yield() override { AtTurn(*this); }
};

// The dialogs of a solve as a test answers them. A dialog without an answer is cancelled.
class ScriptedWindows : public SolveWindows {
 public:
  explicit ScriptedWindows(RecordingPrompter& user) : user_(user) {}

  std::vector<std::string> Shown;  // the dialogs, in order; what the progress window shows in Progress
  std::vector<std::string> Progress;
  std::vector<CellPlace> Gone;  // to which cells
  std::optional<SolveChoice> Setup;
  std::string Model;  // chosen in Regress
  bool Specify = false;
  std::optional<SeriesData> Series;
  std::optional<SeriesAnswers> Answers;
  std::function<void(GroupPick&)> Pick;
  std::vector<int> Kinds;  // of interpolations
  std::function<void(FitClearing&)> Clear;
  std::function<void(ScriptedProgress&)> AtTurn = [](ScriptedProgress&) {};
  std::optional<std::vector<std::string>> GroupFile;
  bool GroupFileFails = false;
  std::vector<std::function<WayOn(FailedSolve&)>> WaysOn;  // taken one after the other; then Close
  std::function<bool(ModelClass&)> Estimate;
  std::string Left;  // what the box of a failed solve listed last

  bool SolveSetup(SolveChoice& choice) override {
    Shown.push_back("SolveSetup");
    if (Setup) choice = *Setup;
    return Setup.has_value();
  }
  bool Regress(ModelPick& pick) override {
    Shown.push_back("Regress");
    ModelClass* chosen = nullptr;
    for (ModelClass* model : pick.Listed(ModelKind::All))
      if (model->id == Model) chosen = model;
    return pick.Accept(chosen, Specify, user_);
  }
  bool Groups(GroupPick& pick) override {
    Shown.push_back("Groups");
    if (Pick) Pick(pick);
    return Pick && pick.Accept(user_);
  }
  std::vector<InterpClass*> Interp(std::vector<InterpClass>& curves) override {
    Shown.push_back("Interp");
    std::vector<InterpClass*> chosen;
    for (const int kind : Kinds) chosen.push_back(&curves[static_cast<std::size_t>(kind)]);
    return chosen;
  }
  bool ClearFits(FitClearing& clearing) override {
    Shown.push_back("ClearFits");
    if (Clear) Clear(clearing);
    return Clear && clearing.Accept(user_);
  }
  void SolveLog(const std::string& log, std::size_t from) override { Shown.push_back("SolveLog: " + log.substr(from)); }
  WayOn SolveFailed(FailedSolve& failed) override {
    user_.Inform(failed.Message());
    Left.clear();
    for (std::size_t i = 0; i < failed.Fits().size(); ++i) Left += (i == 0 ? "" : ", ") + failed.Name(i);
    if (WaysOn.empty()) return WayOn::Close;
    const auto way = WaysOn.front();
    WaysOn.erase(WaysOn.begin());
    return way(failed);
  }
  bool InitialEstimates(ModelClass& model) override {
    Shown.push_back("InitialEstimates: " + model.id);
    return Estimate && Estimate(model);
  }
  void RunEnded() override {}
  std::optional<SeriesData> ChooseSeries(std::size_t) override { return Series; }
  void ShowSeries(SeriesAnswers answers) override { Answers = std::move(answers); }
  void GoTo(const CellPlace& cell) override { Gone.push_back(cell); }
  std::unique_ptr<SolveProgress> OpenProgress() override {
    auto progress = std::make_unique<ScriptedProgress>(Progress);
    progress->AtTurn = AtTurn;
    return progress;
  }
  std::unique_ptr<GroupStore> OpenGroupStore(std::size_t) override {
    struct Store : GroupStore {
      explicit Store(ScriptedWindows& windows) : Windows(windows) {}
      std::string Path() const override { return "/home/user1.grp"; }
      std::optional<std::vector<std::string>> Read() const override { return Windows.GroupFile; }
      bool Write(const std::vector<std::string>& ids) override {
        if (!Windows.GroupFileFails) Windows.GroupFile = ids;
        return !Windows.GroupFileFails;
      }
      ScriptedWindows& Windows;
    };
    return std::make_unique<Store>(*this);
  }

 private:
  RecordingPrompter& user_;
};

// A project with data and two models of the user's own, and all that solves it. The data are near the line 2x + 1.
struct SolvableProject {
  Settings Preferences;
  RecordingPrompter User;
  ScriptedWindows Windows{User};
  Project Document;
  ProjectEditor Editor;
  ProjectSolver Solver;

  explicit SolvableProject(std::size_t variables = 1, bool weighted = false)
      : Document(NewProject(variables, weighted, LocaleText())),
        Editor(Document, Preferences, User),
        Solver(Document, Editor, Preferences, User, Windows) {
    if (variables == 1) {
      const double y[] = {3.1, 4.9, 7.2, 8.8, 11.1, 12.9, 15.2, 16.9};
      for (std::size_t i = 0; i < std::size(y); ++i) {
        Document.Sheet.Cells.SetGridCellNumber(i + 1, 1, static_cast<double>(i) + 1);
        Document.Sheet.Cells.SetGridCellNumber(i + 1, 2, y[i]);
      }
      AddUserModel("my line", "m*x+n");
      AddUserModel("my power", "m*x^n");
    }
  }

  ModelClass& AddUserModel(const std::string& id, const std::string& text) {
    auto model = NewModelFor(Document.Sheet.IndependentVariables, LocaleText());
    model->SetID(id, {text});
    model->UserType = true;
    return *Document.Models.Add(id, std::move(model));
  }
  ModelClass& Model(const std::string& id) { return *Document.Models.Find(id); }

  // Solves that model, without the setup being asked for.
  void SolveOne(const std::string& id, int solveType = 0) {
    Windows.Setup = SolveChoice{solveType, ModelSelection::SingleModel, false};
    Windows.Model = id;
    Solver.SolveRegression();
  }

  // "my line, a*x+b" for what is solved, in the order of the list.
  std::string SolvedNames() {
    std::string names;
    for (const SolvedItem& item : SolvedItems(Document, Preferences.Integer("sortindex")))
      names += (names.empty() ? "" : ", ") + item.Name();
    return names;
  }
  std::vector<std::string> History() { return Editor.UndoHistory(); }
};

}  // namespace quorvex
