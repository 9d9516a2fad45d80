// Runs of macros on several threads: all that they leave is what one thread leaves, byte for byte.

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <filesystem>
#include <map>
#include <thread>

#include "TemporaryFolder.h"
#include "batch/RunMacro.h"
#include "core/DateText.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

struct NoPictures : PlotDrawer {
  std::string WhyNone() const override { return "Nobody draws."; }
  Result<std::string> Draw(const std::string&, const std::string&, const std::function<bool()>&) override {
    return Failure{WhyNone()};
  }
};

// Keeps what a waiting process reads, and may abort at a turn.
struct RecordingForm : cfgSolve {
  std::string Told;
  int Turns = 0, AbortAt = -1;
  std::string RequestWindows() override { return ""; }
  void DDEText(std::string_view text) override { Told.append(text).append("\n"); }
  void Yield() override { Aborted = Aborted || Turns++ == AbortAt; }
  void Pulse() override { Yield(); }
};

// A folder to run in, and back.
class Workplace {
 public:
  Workplace() : before_(std::filesystem::current_path()) { std::filesystem::current_path(Folder.Path("")); }
  ~Workplace() { std::filesystem::current_path(before_); }
  TemporaryFolder Folder;

 private:
  std::filesystem::path before_;
};

std::string Decay(double rate, int points) {
  std::string text;
  for (int i = 1; i <= points; ++i)
    text += GeneralNumber(i) + " " +
            GeneralNumber(5 * std::exp(-rate * i) + 1 + 0.02 * std::sin(3.0 * i) * std::cos(rate * i)) + "\n";
  return text;
}

std::string Plate() {
  std::string text = "x";
  for (int well = 0; well < 40; ++well) text += "," + std::string(well == 7 ? "A 1/2" : "w" + std::to_string(well));
  text += "\n";
  for (int i = 1; i <= 30; ++i) {
    text += std::to_string(i);
    for (int well = 0; well < 40; ++well)
      text += "," + (well == 11 && i == 5 ? "bad" : GeneralNumber(well + 4 * std::exp(-0.01 * (well + 1) * i)));
    text += "\n";
  }
  return text;
}

struct Leavings {
  MacroOutcome Outcome;
  std::string Told;
  std::map<std::string, std::string> Files;
};

struct Road {
  const char* Name;
  std::string Statements, Models;
  std::string Table = "";
  const char* Part = nullptr;
  bool Missing = false;
  std::map<std::string, std::string> Before = {};  // files that are there
};

Leavings RunRoad(const Road& road, int threads, int abortAt = -1) {
  const Workplace place;
  const std::time_t began = std::time(nullptr);
  for (int i = 1; i <= 6; ++i) place.Folder.Write("d" + std::to_string(i) + ".txt", Decay(0.05 * i, 40));
  place.Folder.Write("bad.txt", "1 2\n2 word\n3 4\n");
  place.Folder.Write("few.txt", "1 2\n2 3\n");
  place.Folder.Write("plate.csv", Plate());
  place.Folder.Write("rows.csv", road.Table);
  for (const auto& [name, text] : road.Before) place.Folder.Write(name, text);
  std::filesystem::create_directory("out");
  place.Folder.Write("macro.cfg", "B_MACRO\nHandShake = UseDDE\nLogFile = run.log\n" + road.Statements +
                                      (road.Table.empty() ? "" : "ParameterFile = rows.csv\n") + road.Models +
                                      "E_MACRO\n");
  MacroRequest request("macro.cfg");
  if (road.Part != nullptr) request.Part = road.Part;
  request.Missing = road.Missing;
  Session session;
  session.Preferences.Threads = threads;
  RecordingForm form;
  form.AbortAt = abortAt;
  NoPictures drawer;
  Leavings left;
  left.Outcome = RunMacro(request, session, form, drawer);
  left.Told = form.Told;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(".")) {
    if (!entry.is_regular_file()) continue;
    const std::string name = entry.path().string();
    std::string text = place.Folder.Read(name);
    for (std::time_t t = began; t <= std::time(nullptr); ++t) {
      const std::string date = DateText(t);
      for (std::size_t at = 0; (at = text.find(date, at)) != std::string::npos;)
        text.replace(at, date.size(), "<date>");
    }
    left.Files[name] = std::move(text);
  }
  return left;
}

const char* const kDecay =
    "B_MODEL\nID = decay %N%\nY = a*exp(-b*x)+c\nAssign a = 4, Operator = Value, Fit = True\n"
    "Assign b = %B%, Operator = Value, Fit = True\nAssign c = 1, Operator = * YMin, Fit = True\n"
    "Report half = ln(2)/b\nE_MODEL\n";
const char* const kLine = "B_MODEL\nY = a+b*x\nE_MODEL\nB_MODEL\nY = a*x^b\nE_MODEL\n";

// Rows of every fate: solved, of a file that is missing, of one that holds a word, with too few points, and ones that
// change nothing.
std::string Rows(int count) {
  std::string rows = "N,D,B,O,F\n";
  for (int i = 1; i <= count; ++i) {
    const char* const odd = i % 11 == 3 ? "none" : i % 11 == 5 ? "bad" : i % 11 == 8 ? "few" : nullptr;
    rows += std::to_string(i) + "," + (odd ? odd : "d" + std::to_string(i / 3 % 6 + 1)) + "," +
            (i == 10 ? "word" : "0.1") + ",out/" + std::to_string(i) + ".txt," +
            (i % 4 == 0 ? "Spreadsheet" : "Structured") + "\n";
  }
  return rows;
}

const std::string kPerRow = "DataFile = %D%.txt\nOutputFile = %O%\nOutputFormat = %F%\n";

std::vector<Road> Roads() {
  return {
      {"models", "DataFile = d1.txt\nIndependentVariables = 1\nOutputFile = all.txt\nResultFile = all.jsonl\n",
       "B_MODEL\nY = a*exp(-b*x)+c+rnd(1)*1e-9\nE_MODEL\n"},
      {"rows", kPerRow + "ResultFile = all.jsonl\n", kDecay, Rows(60)},
      {"each row anew", kPerRow + "SolveEachRun = True\nLogSummaryOnly = True\n", kDecay, Rows(60)},
      {"several models, strict", kPerRow + "StrictStatus = True\nRequireSolution = True\n", std::string(kDecay) + kLine,
       Rows(60)},
      {"rnd", kPerRow + "SolveEachRun = True\n", "B_MODEL\nY = a*exp(-b*x)+c+rnd(1)*1e-3\nE_MODEL\n", Rows(60)},
      {"one file of all", "DataFile = %D%.txt\nOutputFile = one.qvx\nOutputFormat = Quorvex\nResultFile = a.jsonl\n",
       kLine, Rows(30)},
      {"everything written",
       "DataFile = %D%.txt\nOutputFile = out/%N%.txt\nCodeFile = out/%N%.py\nPlotFile = out/%N%.plt\n"
       "PlotFile = out/%N%.svg\nReportFile = out/%N%.html\nReportFile = out/%N%.md\nDiagnostics = True\nBootstrap = "
       "20\n"
       "ResultFile = all.jsonl\n",
       kDecay, Rows(14)},
      {"outputs that are read", "DataFile = %D%\nOutputFile = %O%\nOutputFormat = Spreadsheet\nSolveEachRun = True\n",
       kLine,
       "D,O\nd1.txt,a.txt\na.txt,b.txt\nd2.txt,a.txt\na.txt,c.txt\nd3.txt,d1.txt\nD4.TXT,D4.TXT\nD4.TXT,e.txt\n" +
           [] {
             std::string more;
             for (int i = 0; i < 30; ++i) more += "d3.txt,out/" + std::to_string(i) + ".txt\n";
             return more;
           }()},
      {"series",
       "DataFile = plate.csv\nDataFirstLine = 2\nDataSeries = True\nOutputFile = out/%SERIES%.txt\n"
       "ResultFile = all.jsonl\n",
       kLine},
      {"a part", kPerRow + "ResultFile = all.jsonl\n", kDecay, Rows(90), "2/2"},
      {"missing ones",
       kPerRow,
       kDecay,
       Rows(60),
       nullptr,
       true,
       {{"out/7.txt", "there"}, {"out/20.txt", "there"}, {"out/21.txt", "there"}}},
      {"refused outputs", "DataFile = d1.txt\nOutputFile = %O%\nSolveEachRun = True\n", kLine,
       [] {
         std::string rows = "O\n";
         for (int i = 0; i < 40; ++i) rows += i % 5 == 4 ? "nowhere/x.txt\n" : i % 5 == 2 ? "d2.txt\n" : "out/x.txt\n";
         return rows;
       }()},
  };
}

std::string NamesIn(const std::map<std::string, std::string>& files) {
  std::string names;
  for (const auto& [name, text] : files) names += name + " ";
  return names;
}

TEST(ParallelRows, LeaveWhatOneThreadLeaves) {
  for (const Road& road : Roads()) {
    const Leavings alone = RunRoad(road, 1);
    EXPECT_GT(alone.Told.size(), 100u) << road.Name;
    for (const int threads : {2, 3, 16}) {
      const Leavings left = RunRoad(road, threads);
      EXPECT_EQ(left.Outcome.Status, alone.Outcome.Status) << road.Name << " on " << threads;
      EXPECT_EQ(left.Outcome.Normal, alone.Outcome.Normal) << road.Name << " on " << threads;
      EXPECT_EQ(left.Outcome.Message, alone.Outcome.Message) << road.Name << " on " << threads;
      EXPECT_EQ(left.Told, alone.Told) << road.Name << " on " << threads;
      EXPECT_EQ(NamesIn(left.Files), NamesIn(alone.Files)) << road.Name << " on " << threads;
      for (const auto& [name, text] : alone.Files)
        EXPECT_EQ(left.Files.contains(name) ? left.Files.at(name) : "", text) << road.Name << ": " << name;
    }
  }
}

// Everything that is told or written ends with the same run.
TEST(ParallelRows, LeaveAtAnAbortNothingOfRunsAhead) {
  const Road road{"rows", "DataFile = d1.txt\nOutputFile = out/%N%.txt\nResultFile = all.jsonl\nSolveEachRun = True\n",
                  kDecay, Rows(2000)};
  const std::string whole = RunRoad(road, 1).Told;
  for (const int threads : {2, 16}) {
    const Leavings left = RunRoad(road, threads, 120);
    EXPECT_EQ(left.Outcome.Status, 450) << left.Outcome.Message;
    std::size_t outputs = 0;
    for (const auto& [name, text] : left.Files) outputs += name.starts_with("./out/") ? 1u : 0u;
    EXPECT_GT(outputs, 0u);
    EXPECT_LT(outputs, 2000u);
    for (std::size_t i = 1; i <= outputs; ++i) EXPECT_TRUE(left.Files.contains("./out/" + std::to_string(i) + ".txt"));
    const std::string& lines = left.Files.at("./all.jsonl");
    EXPECT_EQ(static_cast<std::size_t>(std::count(lines.begin(), lines.end(), '\n')), outputs);
    const std::string& log = left.Files.at("./run.log");
    EXPECT_EQ(log.find("Beginning Run: " + std::to_string(outputs + 1)), std::string::npos);
    EXPECT_NE(log.find("SOLUTION PROCESS ABORTED BY USER."), std::string::npos);
    const std::string told = left.Told.substr(0, left.Told.find("Abnormal termination"));
    EXPECT_TRUE(whole.starts_with(told));
  }
}

}  // namespace
}  // namespace quorvex
