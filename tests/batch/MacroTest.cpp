// Macros as a user runs them: the real program, real files, and its status, log and output.

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <new>
#include <random>
#include <utility>

#include "Golden.h"
#include "Paths.h"
#include "TableFile.h"
#include "app/DesktopDrawer.h"
#include "batch/Program.h"
#include "batch/RunMacro.h"

namespace quorvex {
namespace {

// The output less the line with the time.
std::string OutputOf(const Program& program) {
  std::string text = program.Folder.Read("out.txt");
  const std::size_t at = text.find(" evaluated on ");
  return at == std::string::npos ? text : text.erase(at, text.find('\r', at) - at);
}

const std::string kHead = "B_MACRO\nDataFile = @data.txt\nOutputFile = @out.txt\nLogFile = @run.log\n";
constexpr const char* kTail = "B_MODEL\nY = a+b*x\nE_MODEL\nE_MACRO\n";
constexpr const char* kData = "1 5.1\n2 6.9\n3 9.2\n4 10.8\n5 13.1\n";
const std::string kRunOfTheLine = kHead + kTail;

// The run with more statements.
std::string With(const std::string& statements) { return kHead + statements + kTail; }

TEST(Macro, KeepsALogOfTheWholeRun) {
  Program program(kData);
  EXPECT_EQ(program.RunMacro(std::string("Free text in front.\n") + kHead + "Comment = first\n\tComment=\t second\n" +
                             "Bogus = 1\nE_MODEL\n\n  regressiontolerance = 0.001\nMAXITERATIONS = 20\n" + kTail),
            0);
  EXPECT_EQ(program.Out + program.Err, "");
  std::string log = program.Log();
  const std::size_t at = log.find("Final Merit Function");
  log.erase(at, log.find("Writing solution") - at);
  ExpectGolden("MacroLog.txt", log);
  EXPECT_NE(OutputOf(program).find("    B_COMMENTS\r\n        first\r\n        second\r\n    E_COMMENTS\r\n"),
            std::string::npos);
}

// Files that a case finds in its folder: "data.txt" always, "folder/" a folder, "loop" a link to itself, "secret.txt" a
// file that nobody may read.
struct Case {
  const char* Name;
  std::string Macro;
  int Status;
  const char* LogHas;
};

const std::string kBinary = std::string(
                                "\x7f"
                                "ELF\0\xff\r\x00\xfe\n\0=\t",
                                13) +
                            std::string(5000, '\xd8');

const Case kCases[] = {
    {"empty file", "", 20, ""},
    {"no B_MACRO", "Y = a*x\nE_MACRO\n", 20, ""},
    {"B_MACRO alone", "text\nB_MACRO", 20, ""},
    {"B_MACRO in the last line", "text\nB_MACRO\n", 20, ""},
    {"binary", kBinary, 20, ""},
    {"no model", kHead + "E_MACRO\n", 400,
     "Solving models\n\nLog Summary:\nRun Failed\n***************************************\nAbnormal termination\n"
     "Exit Status 400\n"},
    {"last line not acted on",
     "B_MACRO\nDataFile = @data.txt\nLogFile = @run.log\nB_MODEL\nY = a+b*x\nE_MODEL\n"
     "OutputFile = @out.txt",
     200, "Write failed, OutputFile not specified\nFile Output Error: 200\n"},
    {"block on the last lines", kHead + "B_MODEL\nY = a+b*x\nE_MODEL", 0, "Solution Complete"},
    {"block not ended", kHead + "B_MODEL\nY = a+b*x\n", 400, "Error creating model 1\n"},
    {"E_MACRO in a block", With("B_MODEL\nY = a+b*x\nE_MACRO\n"), 0,
     "Found E_MACRO before E_MODEL command\nError creating model 1\nSetting"},
    {"B_MODEL in a block", kHead + "B_MODEL\nB_MODEL\nY = a+b*x\nE_MODEL\nE_MACRO\n", 0,
     "Missing E_MODEL command, model ignored\nSetting"},
    {"stray line in a block", kHead + "B_MODEL\n  stray  line \n" + (kTail + 8), 0,
     "Error parsing model, the stray  linecommand not valid between B_MODEL and E_MODEL pairs\nSetting"},
    {"invalid models",
     kHead +
         "B_MODEL\nY = a+\nE_MODEL\nB_MODEL\nY = 2*x\nE_MODEL\nB_MODEL\nY=F1*a*x\n"
         "F1=F1\nE_MODEL\n" +
         kTail,
     0,
     "Warning: block 1 does not compile: Expected end of model, at character 3 of 'a+'\nError creating model 1\n"
     "Warning: block 2 does not compile: it has no coefficients.\nError creating model 2\n"
     "Warning: block 3 does not compile: a function refers back to itself.\nError creating model 3\nSetting"},
    {"invalid support function", With("B_MODEL\nID = B\nY = f1 * A*x\nF1 = 2 * (b + )\nE_MODEL\n"), 0,
     "Warning: block 1 ('B') does not compile, in F1: Unexpected token ')', at character 6 of '2*(b+)'\nError"},
    {"what the language swallows",
     kHead + "B_MODEL\nY = Y = a*x + 1.5.2 + 1.5.2 + b*,2\nE_MODEL\nB_MODEL\nY=if(x=1,a,b)+1e-400\n" + (kTail + 18), 0,
     "Warning: block 1: '=' compares: it gives -1 where both sides are equal and 0 elsewhere.\n"
     "Warning: block 1: '1.5.2' is not a number and counts as 0.\n"
     "Warning: block 1: A ',' in front of a value is skipped.\nSetting"},
    {"blocks of one formula",
     kHead +
         "B_MODEL\nID = one\nY = a+b*x\nE_MODEL\nB_MODEL\nID=c\nF1=b*x\nY=a+F1\nE_MODEL\n"
         "B_MODEL\nID = two\nY = A + b*x\n" +
         (kTail + 18),
     0,
     "Warning: blocks 1 ('one') and 3 ('two') have the same formula and become one model, which keeps what the later "
     "one says\nSetting"},
    {"lines that are no Assign",
     kHead +
         "ColumnOrder = x; y\nColumnOrder=x,y\nB_MODEL\nY=a+b*x\nAssign a = 1, Fit=True\n"
         "  Assign a = 1; Operator = Value; Fit = True\nAssign q=1,Operator=Value,Fit=True\n" +
         (kTail + 18),
     0,
     "Warning: 'ColumnOrder = x; y' names one column: lists are separated by ',' here\n"
     "Warning: 'Assign a = 1, Fit=True' is ignored: it is no Assign statement\n"
     "Warning: 'Assign a = 1; Operator = Value; Fit = True' is ignored: lists are separated by ',' here\n"
     "Warning: 'Assign q=1,Operator=Value,Fit=True' is ignored: the model has no coefficient 'q'\nSetting"},
    {"integers out of range", With("MaxIterations = -40000\nUnchangedIterations = 32768\n"), 0,
     "Setting maximum number of iterations to 250\nSetting number of unchanged iterations to 10\n"},
    {"joined words", With("B_MODEL\nY = a+b*x mod 4\nE_MODEL\n"), 0,
     "Warning: the model line 'Y = a+b*x mod 4' is read without its blanks, which joins two words; put word operators "
     "in parentheses, as in (a) mod (b)\n"},
    {"words in parentheses", kHead + "B_MODEL\nY = a+b*((x) mod (4))\nE_MODEL\nE_MACRO\n", 0,
     "Parsing Quorvex Macro file\nSetting"},
    {"no data file named", "B_MACRO\nLogFile = @run.log\n" + std::string(kTail), 110,
     "Reading the input data file failed, DataFile not specified\nError reading the input data file\n"},
    {"missing data file", With("DataFile = @none.txt\n"), 110,
     "Reading the input data file '@none.txt'\nError reading the input data file\n"
     "***************************************\nLog Summary:\nRun Failed\n***************************************\n"
     "Abnormal termination\nExit Status 110\n"},
    {"data in a missing folder", With("DataFile = @none/data.txt\n"), 110, "Exit Status 110"},
    {"data is a folder", With("DataFile = @folder\n"), 130, "Exit Status 130"},
    {"data may not be read", With("DataFile = @secret.txt\n"), 130, "Exit Status 130"},
    {"data cannot be read on", With("DataFile = /proc/self/mem\n"), 120, "Exit Status 120"},
    {"data is no device", With("DataFile = @socket\n"), 140, "Exit Status 140"},
    {"data is a loop", With("DataFile = @loop\n"), 150, "Exit Status 150"},
    {"data is a device without end", With("DataFile = /dev/zero\n"), 140, "The device is not available.\n"},
    {"data is empty", With("DataFile = @folder/inside.txt\n"), 150, "The file is empty.\n"},
    {"first line beyond the end", With("DataFirstLine = 6\n"), 150, "The file has no data from line 6 on.\n"},
    {"text among the data", With("DataFile = @text.txt\n"), 150, "Line 3: 'x7' is not a number.\n"},
    {"too few columns named", With("ColumnOrder = y\n"), 150, "Exit Status 150"},
    {"too many variables", With("IndependentVariables = 21\n"), 150, "IndependentVariables must be 1 to 20, not 21.\n"},
    {"not enough points", With("DataFirstLine = 3.5\n"), 0, "Solution failed: not enough data points\n"},
    {"output in a missing folder", With("OutputFile = @none/out.txt\n"), 200,
     "File Output Error: 200\n***************************************\nLog Summary:\nRun Failed\n"},
    {"output is a folder", With("OutputFile = @folder\n"), 220, "File Output Error: 220"},
    {"output cannot be written on", With("OutputFile = /proc/self/mem\n"), 210, "File Output Error: 210"},
    {"output is no device", With("OutputFile = @socket\n"), 240, "File Output Error: 240"},
    {"output is a loop", With("OutputFile = @loop\n"), 250, "File Output Error: 250"},
    {"output on a full disk", With("OutputFile = /dev/full\n"), 230, "File Output Error: 230"},
    {"output is the data", With("OutputFile = @link\n"), 220,
     "The output '@link' is the data file of this macro and is not overwritten.\nFile Output Error: 220\n"},
    {"output would be kept as the data", With("OutputFile = @copy\nOutputFormat = Quorvex\n"), 220,
     "The output '@copy~' is the data file of this macro and is not overwritten.\nFile Output Error: 220\n"},
    {"output is the macro", With("OutputFile = @macro.cfg\n"), 220,
     "The output '@macro.cfg' is the macro file of this macro and is not overwritten.\nFile Output Error: 220\n"},
    {"output is the log", With("OutputFile = @run.log\n"), 220,
     "The output '@run.log' is the log of this macro and is not overwritten.\nFile Output Error: 220\n"},
    {"output has too long a name", kHead + "OutputFile = @" + std::string(300, 'n') + "\n" + kTail, 200,
     "File Output Error: 200"},
};

// A name in the file system that nothing can open: the other end of a connection without a listener.
void MakeSocket(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  ASSERT_LT(path.size(), sizeof address.sun_path);
  std::memcpy(address.sun_path, path.data(), path.size());
  const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
  EXPECT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  chmod(path.c_str(), 0777);
  close(descriptor);
}

TEST(Macro, EndsInTheStatusOfWhatWentWrong) {
  for (const Case& c : kCases) {
    Program program(kData);
    program.Folder.Write("text.txt", "1 2\n2 3\nx7 4\n5 6\n");
    program.Folder.Write("folder/inside.txt", "");
    std::filesystem::create_symlink("loop", program.Folder.Path("loop"));
    std::filesystem::create_symlink("data.txt", program.Folder.Path("link"));
    std::filesystem::create_hard_link(program.Folder.Path("data.txt"), program.Folder.Path("copy~"));
    chmod(program.Folder.Write("secret.txt", kData).c_str(), 0);
    MakeSocket(program.Folder.Path("socket"));
    const int status = program.RunMacroAsUser(c.Macro);
    EXPECT_EQ(status, c.Status % 256) << c.Name << "\n" << program.Log();
    const std::string told = c.Status == 20
                                 ? "The file '@macro.cfg' is no macro: no line of it reads B_MACRO, or nothing "
                                   "follows.\n"
                                 : "";
    EXPECT_EQ(program.WithoutFolder(program.Err),
              c.Status == 0 ? "" : told + "Exit Status " + std::to_string(c.Status) + "\n")
        << c.Name;
    EXPECT_EQ(program.Out, "") << c.Name;
    const std::string log = program.Log();
    EXPECT_NE(log.find(c.LogHas), std::string::npos) << c.Name << "\n" << log;
    EXPECT_EQ(program.Folder.Read("data.txt"), kData) << c.Name;
  }
}

// The line through days 46054 to 46058 and their ordinal; what a date is not certain to be ends the run as any text.
TEST(Macro, ReadsDatesWhoseOrderIsCertain) {
  const struct {
    const char* data;
    const char* logHas;
  } kDates[] = {
      {"2026-02-01\t1\n2026-02-02\t2\n2026-02-03T00:00:00Z\t3\n2026-02-04\t4\n", "Final Merit Function"},
      {"01.02.2026\t1\n02.02.2026\t2\n03.02.2026\t3\n28.02.2026\t28\n", "Final Merit Function"},
      {"10:30\t1\n11:30\t2\n12:30\t3\n36:00\t26.5\n", "Final Merit Function"},
      {"01/02/2026\t1\n02/02/2026\t2\n03/02/2026\t3\n04/02/2026\t4\n", "Line 1: '01/02/2026' is not a number."},
      {"13/02/2026\t1\n02/13/2026\t2\n03/02/2026\t3\n", "Line 1: '13/02/2026' is not a number."},
      {"2026-02-01\t1\n2026-02-30\t2\n2026-02-03\t3\n", "Line 2: '2026-02-30' is not a number."},
      {"24:61\t1\n2\t2\n3\t3\n", "Line 1: '24:61' is not a number."},
  };
  for (const auto& c : kDates) {
    Program program(c.data);
    program.RunMacro(With("InputDelimit = Tab\n"));
    const std::string log = program.Log();
    EXPECT_NE(log.find(c.logHas), std::string::npos) << c.data << log;
  }
}

TEST(Macro, EndsInTheStatusOfItsOwnFile) {
  Program program;
  program.Folder.Write("folder/inside.txt", "");
  std::filesystem::create_symlink("loop", program.Folder.Path("loop"));
  MakeSocket(program.Folder.Path("socket"));
  const std::pair<std::string, int> files[] = {{"none.cfg", 30}, {"none/none.cfg", 30}, {"/proc/self/mem", 40},
                                               {"folder", 50},   {"socket", 60},        {"loop", 70}};
  for (const auto& [name, status] : files) {
    EXPECT_EQ(program.Run("-runcfg " + (name[0] == '/' ? name : program.Folder.Path(name))), status) << name;
    EXPECT_TRUE(program.WithoutFolder(program.Err)
                    .starts_with("The macro file '" + (name[0] == '/' ? name : "@" + name) + "' cannot be read. "))
        << program.Err;
    EXPECT_TRUE(program.Err.ends_with(".\nExit Status " + std::to_string(status) + "\n")) << program.Err;
  }
}

TEST(Macro, GoesOnWithoutALogThatFails) {
  const std::pair<const char*, int> logs[] = {{"@none/run.log", 300}, {"/proc/self/mem", 310}, {"@folder", 320},
                                              {"/dev/full", 330},     {"@socket", 340},        {"@loop", 350}};
  for (const auto& [name, status] : logs) {
    Program program(kData);
    program.Folder.Write("folder/inside.txt", "");
    std::filesystem::create_symlink("loop", program.Folder.Path("loop"));
    MakeSocket(program.Folder.Path("socket"));
    EXPECT_EQ(program.RunMacro(kHead + "LogFile = " + name + "\n" + kTail), status % 256) << name;
    const std::string told = program.WithoutFolder(program.Err);
    EXPECT_TRUE(told.starts_with(std::string("The log '") + name + "' cannot be written. ")) << told;
    EXPECT_TRUE(told.ends_with(".\nExit Status " + std::to_string(status) + "\n")) << told;
    EXPECT_NE(OutputOf(program).find("Model_ID = 1UserModel"), std::string::npos);
  }
}

// No input is lost to an output or a log, the one of another run of the table neither.
TEST(Macro, NeverWritesToItsInputs) {
  constexpr const char* kTable = "file\nfirst.txt\nSECOND.TXT\nout.txt\nstart.csv\n";
  for (const std::string log : {"macro.cfg", "start.csv", "second.txt", "run.log"}) {
    Program program;
    const std::string macro = "B_MACRO\nDataFile = @%file%\nOutputFile = @%file%\nLogFile = @" + log +
                              "\nParameterFile = @start.csv\n" + kTail;
    for (const char* name : {"first.txt", "second.txt"}) program.Folder.Write(name, kData);
    program.Folder.Write("start.csv", kTable);
    EXPECT_NE(program.RunMacro(macro), 0);
    const std::string left = program.Folder.Read("macro.cfg");
    EXPECT_TRUE(left.starts_with("B_MACRO\nDataFile") && left.ends_with(kTail)) << log;
    EXPECT_EQ(program.Folder.Read("start.csv"), kTable) << log;
    EXPECT_EQ(program.Folder.Read("first.txt"), kData) << log;
    EXPECT_EQ(program.Folder.Read("second.txt"), kData) << log;
    const std::string role = log == "macro.cfg" ? "macro" : log == "start.csv" ? "parameter" : "data";
    const bool refused = program.Err.find("/" + log + "' is the " + role +
                                          " file of this macro and is not overwritten.\n") != std::string::npos;
    EXPECT_EQ(refused, log != "run.log") << program.Err;
  }
}

// Names that count in lower case are found as they were typed, also where nobody may look for them.
TEST(Macro, FindsTypedNamesBelowAFolderThatCannotBeListed) {
  Program program(kData);
  program.Folder.Write("Shut/Deep/Rows.csv", "n\n1\n");
  chmod(program.Folder.Path("Shut/Deep").c_str(), 0777);
  chmod(program.Folder.Path("Shut").c_str(), 0311);
  EXPECT_EQ(program.RunMacroAsUser("B_MACRO\nDataFile = @data.txt\nParameterFile = @Shut/Deep/Rows.csv\n"
                                   "OutputFile = @Shut/Deep/Out%n%.txt\nLogFile = @Shut/Deep/Run.log\n" +
                                   std::string(kTail)),
            0)
      << program.Err;
  for (const char* name : {"Out1.txt", "run.log"})
    EXPECT_NE(program.Folder.Read("Shut/Deep/" + std::string(name)), "") << name;
  chmod(program.Folder.Path("Shut").c_str(), 0755);
}

// A form that fails in the middle of the first run, as any part may that runs out of memory.
struct FailingForm : cfgSolve {
  bool Failed = false;

  std::string RequestWindows() override { return "No windows here."; }
  void SetStatusLabel(const std::string&) override {
    if (!std::exchange(Failed, true)) throw std::bad_alloc();
  }
};

TEST(Macro, EndsInAStatusOfItsOwnWhereMemoryRunsOut) {
  for (const bool table : {false, true}) {
    Program program(kData);
    program.Folder.Write("p.csv", "n\n1\n2\n");
    std::string macro = "B_MACRO\nDataFile = @data.txt\nOutputFile = @out%n%.txt\nLogFile = @run.log\n";
    macro += (table ? "ParameterFile = @p.csv\n" : "") + std::string(kTail);
    Session session;
    FailingForm form;
    DesktopDrawer drawer;
    const MacroOutcome outcome =
        RunMacro(program.Folder.Write("macro.cfg", program.InFolder(macro)), session, form, drawer);
    EXPECT_EQ(outcome.Normal, table);
    EXPECT_EQ(outcome.Status, 500);
    const std::string log = program.Log();
    EXPECT_TRUE(log.ends_with(table ? "Normal termination\n" : "Abnormal termination\nExit Status 500\n")) << log;
    if (!table) continue;
    EXPECT_NE(log.find("Out of memory: there is not enough of it for this run.\n"), std::string::npos) << log;
    EXPECT_NE(log.find("1: Run Failed: Out of memory\n2: Run Successful\n"), std::string::npos) << log;
    EXPECT_NE(program.Folder.Read("out2.txt").find("Model_ID"), std::string::npos);
  }
}

TEST(Macro, EndsInOrderByASignal) {
  for (const char* signal : {"TERM", "INT", "HUP"}) {
    Program program(kData);
    std::string table = "n\n";
    for (int run = 0; run < 100'000; ++run) table += std::to_string(run % 10) + '\n';
    program.Folder.Write("p.csv", table);
    // The signal comes once the log is there, and so is the program's readiness for it. Tests may run where signals are
    // ignored, as behind an "&".
    const std::string command = "bash -c 'set -m; env --default-signal \"$0\" \"$@\" & until [ -s " +
                                program.Folder.Path("run.log") + " ]; do :; done; kill -" + signal + " $!; wait $!'";
    const std::string macro =
        "B_MACRO\nDataFile = @data.txt\nOutputFile = @out%n%.txt\nLogFile = @run.log\n"
        "ParameterFile = @p.csv\n";
    EXPECT_EQ(program.RunMacro(macro + kTail, command), 450 % 256) << signal;
    EXPECT_TRUE(program.Err.starts_with("Exit Status 450\n")) << program.Err;
    EXPECT_TRUE(program.Log().ends_with("Abnormal termination\nExit Status 450\n")) << signal;
  }
}

// A run without standard output tells its texts to nobody, one whose listener went away goes on, and one whose files
// may not grow says so.
TEST(Macro, OutlivesItsListenerAndItsQuota) {
  const std::pair<const char*, int> cases[] = {
      {"bash -c '\"$0\" \"$@\" >&-'", 0},
      {"bash -c '\"$0\" \"$@\" > >(exec true)'", 0},
      {"bash -c 'ulimit -f 0; exec \"$0\" \"$@\" >/dev/null 2>/dev/null'", 230},
  };
  for (const auto& [shell, status] : cases) {
    Program program(kData);
    const std::string macro = kHead + (status == 230 ? "LogFile = /dev/null\n" : "") + "HandShake = UseDDE\n" + kTail;
    EXPECT_EQ(program.RunMacro(macro, shell), status) << shell;
    if (status != 0) continue;
    const std::string log = program.Log();
    EXPECT_TRUE(log.starts_with("Opening Quorvex Macro file") && log.ends_with("Normal termination\n")) << log;
    EXPECT_EQ(log.find("Reading data file"), std::string::npos) << log;
  }
}

// A form that asks for the end of the run while its second model is solved.
struct AbortingForm : cfgSolve {
  std::string RequestWindows() override { return "No windows here."; }
  void SetStatusLabel(const std::string& text) override { Aborted |= text == "Solving Model 2UserModel"; }
};

TEST(Macro, EndsAllRunsWhereItIsAborted) {
  Program program(kData);
  program.Folder.Write("p.csv", "start\n1\n2\n");
  const std::string macro = kHead + "ParameterFile = @p.csv\nMissingData = %start%NA\nB_MODEL\nY = a+b*x\nE_MODEL\n" +
                            "B_MODEL\nY = a+b*x^2\nE_MODEL\nB_MODEL\nY = a+b*x^3\nE_MODEL\nE_MACRO\n";
  Session session;
  AbortingForm form;
  DesktopDrawer drawer;
  const MacroOutcome outcome =
      RunMacro(program.Folder.Write("macro.cfg", program.InFolder(macro)), session, form, drawer);
  EXPECT_FALSE(outcome.Normal);
  EXPECT_EQ(outcome.Status, 450);
  const std::string log = program.Log();
  EXPECT_EQ(log.find("3UserModel"), std::string::npos) << log;
  EXPECT_EQ(log.find("Beginning Run: 2"), std::string::npos) << log;
  EXPECT_NE(log.find("\nSOLUTION PROCESS ABORTED BY USER.\nLog Summary:\n"), std::string::npos) << log;
  EXPECT_TRUE(log.ends_with("Abnormal termination\nExit Status 450\n")) << log;
  EXPECT_EQ(program.Folder.Read("out.txt"), "");
}

TEST(Macro, KeepsOnlyTheSummaryWhenAsked) {
  Program program(kData);
  program.RunMacro(With("LogSummaryOnly = True\n"));
  EXPECT_EQ(program.Log(),
            "Log Summary:\nRun Successful\n***************************************\n"
            "Normal termination\n");
  program.RunMacro(With("LogSummaryOnly = True\nDataFile = @none\n"));
  EXPECT_EQ(program.Log(),
            "Log Summary:\nRun Failed\n***************************************\n"
            "Abnormal termination\nExit Status 110\n");
}

TEST(Macro, TellsItsStatusToAWaitingProcess) {
  Program program(kData);
  program.RunMacro(With("HandShake = ShowProgress\nHandShake = UseDDE\n"));
  const std::string folder = program.Folder.Path("");
  std::string lower = folder;
  std::transform(lower.begin(), lower.end(), lower.begin(), ::tolower);
  EXPECT_EQ(program.Out,
            "Reading Quorvex Macro file '" + lower + "macro.cfg '\nReading data file '" + folder +
                "data.txt'\nBeginning solution process\nSolving Model 1UserModel\nWriting solution file '" + folder +
                "out.txt '\nSolution process complete\nNormal termination\n");
  EXPECT_NE(program.Log().find("There is no display, so the run goes on without progress form and message boxes.\n"),
            std::string::npos);
}

// One line of 100 MB, as a statement and as a model, ends like any other nonsense.
TEST(Macro, SurvivesALineOfAHundredMegabytes) {
  Program program(kData);
  EXPECT_EQ(program.RunMacro(std::string(100'000'000, 'x')), 20);
  EXPECT_EQ(program.RunMacro("B_MACRO\nDataFile = @data.txt\nB_MODEL\nY = " + std::string(100'000'000, '(') +
                             "\nE_MODEL\nE_MACRO\n"),
            400 % 256);
}

TEST(Macro, RanksByItsSortKey) {
  const std::string models =
      "B_MODEL\nID = constant\nY = a+0*x\nE_MODEL\nB_MODEL\nID = line\nY = a+b*x\nE_MODEL\n"
      "B_MODEL\nID = Twin Line\nY = c+d*x\nE_MODEL\nE_MACRO\n";
  for (const std::string key : {"RSS", "R^2", "ra^2", "StdErr", "AICc", "BIC", "CV", "bogus"}) {
    Program program(kData);
    ASSERT_EQ(program.RunMacro(kHead + "SortKey = " + key + "\n" + models), 0);
    const std::vector<ModelAnswer> answers = ReadAnswers(program.Folder.Read("out.txt"));
    ASSERT_EQ(answers.size(), 3u);
    EXPECT_EQ(answers[0].ID + ", " + answers[1].ID + ", " + answers[2].ID, "line, Twin Line, constant") << key;
    const std::string shown = key == "ra^2" ? "Ra^2" : key == "bogus" ? "RSS" : key;
    EXPECT_NE(OutputOf(program).find("Rank(sorted_by_" + shown + ") = 1\r\n"), std::string::npos);
  }
}

TEST(Macro, WritesTheTablesItIsAskedFor) {
  Program program("3;9;2\n1;5;1\n3;11;2\n2;6;1\n5;14;1\n");
  ASSERT_EQ(program.RunMacro(
                kHead + "Weighted = true\nInputDelimit = Semicolon\nOutputDelimit = Comma\nOutputFitInfo = no\n"
                        "TableOutput = DataFile, CalcData, ErrorData, MinMaxError\nB_MODEL\nID=held\nY=a+b*x\n"
                        "Assign a = 2, Operator = value, Fit = False\nAssign b = 2, Operator = value, Fit = False\n"
                        "E_MODEL\nE_MACRO\n"),
            0);
  ExpectGolden("MacroTables.txt", program.WithoutFolder(OutputOf(program)));
}

// R 4, predict() of lm(), but for the fifth digit of the quantile; where nothing tells the errors there are no limits.
TEST(Macro, WritesTheLimitsOfItsTable) {
  const std::string line = "1 3\n2 5\n3 8\n4 9\n5 11\n";
  const struct {
    std::string Data, Statements, Before;
    std::vector<double> Row;  // that follows; empty: "N/A" throughout
  } kTables[] = {{line,
                  "TableOutput = CalcData, Confidence, Prediction\n",
                  "B_DATATABLE\n",
                  {3.2, 1.927021, 4.472979, 1.121235, 5.278765}},
                 {line,
                  "TableOutput = Prediction\nOutputFormat = delimited\n",
                  "95%_Prediction_Lower\t95%_Prediction_Upper\n",
                  {1.121235, 5.278765}},
                 {line, "TableOutput = Confidence\nB_MODEL\nY=a*x+b*x+c\nE_MODEL\n", "B_DATATABLE\n", {}}};
  for (const auto& c : kTables) {
    Program program(c.Data);
    ASSERT_EQ(
        program.RunMacro(kHead + c.Statements + (c.Row.empty() ? "E_MACRO\n" : "B_MODEL\nY=a*x+b\nE_MODEL\nE_MACRO\n")),
        0)
        << c.Statements;
    const std::string text = program.WithoutFolder(OutputOf(program));
    const std::size_t at = text.find(c.Before);
    ASSERT_NE(at, std::string::npos) << text;
    const std::string row(Trim(Split(text.substr(at + c.Before.size()), '\n')[0]));
    const std::vector<std::string> cells = Split(row, '\t');
    if (c.Row.empty()) {
      EXPECT_EQ(row, "N/A\tN/A");
      continue;
    }
    ASSERT_EQ(cells.size(), c.Row.size()) << row;
    for (std::size_t i = 0; i < cells.size(); ++i) EXPECT_NEAR(*NumericText(cells[i]), c.Row[i], 5e-5) << row;
  }
}

TEST(Macro, ReadsItsColumnsAndMarkersAsTold) {
  Program program("id y junk x\n1 7 - 2\n2 -999 - 3\n3 9 - 3\n4  11 - 4 \n5 - - -\n6 13 - 5\n");
  ASSERT_EQ(program.RunMacro(kHead +
                             "DataFirstLine = 2\nColumnOrder = drop, Y, none, X\nMissingData = -999\n"
                             "TableOutput = DataFile\n" +
                             kTail),
            150);
  EXPECT_NE(program.Log().find("Line 6: '-' is not a number."), std::string::npos);
  ASSERT_EQ(program.RunMacro(kHead +
                             "DataFirstLine = 2\nColumnOrder = drop, Y, none, X\nMissingData = -\n"
                             "TableOutput = DataFile\n" +
                             kTail),
            0);
  std::string text = OutputOf(program);
  EXPECT_NE(text.find("DataPoints = 5\r\n        2\t7\r\n        3\t-999\r\n        3\t9\r\n        4\t11\r\n"),
            std::string::npos)
      << text;
}

TEST(Macro, FitsSeveralVariablesWithGaps) {
  // y = 2 + 3*x1 - x3; x2 is noise that the second model leaves out.
  std::string rows;
  for (int i = 0; i < 12; ++i) {
    const int x1 = i % 4, x2 = i * 7 % 5, x3 = i * i % 7;
    rows += std::to_string(x1) + "\t" + std::to_string(x2) + "\t" + std::to_string(x3) + "\t" +
            std::to_string(2 + 3 * x1 - x3) + "." + std::to_string(i % 3) + "\n";
  }
  Program program(rows);
  ASSERT_EQ(program.RunMacro(kHead + "IndependentVariables = 3\nB_MODEL\nID=all\nY=a+b*x1+c*x2+d*x3\nE_MODEL\n"
                                     "B_MODEL\nID=gap\nY=a+b*x1+d*x03\nE_MODEL\nB_MODEL\nID=too many\nY=a*x4\nE_MODEL\n"
                                     "E_MACRO\n"),
            0);
  const std::vector<ModelAnswer> answers = ReadAnswers(program.Folder.Read("out.txt"));
  ASSERT_EQ(answers.size(), 2u);
  EXPECT_EQ(answers[0].ID, "all");
  for (const ModelAnswer& answer : answers) {
    EXPECT_NEAR(answer.Number("b"), 3, 0.1);
    EXPECT_NEAR(answer.Number("d"), -1, 0.1);
  }
}

// Sums depend on the order of points in their last digits, and the Durbin-Watson statistic by what it is; one variable
// without repeats is sorted, so there nothing moves at all.
TEST(Macro, DoesNotDependOnTheOrderOfRows) {
  const struct {
    const char *File, *Setup;
    bool ToTheBit;
  } kSets[] = {
      {"dnase_sd.txt", "DataFirstLine = 2\nWeighted = True\nB_MODEL\nY=a/(1+exp((b-ln(x))/c))\nE_MODEL\n", true},
      {"puromycin_treated.txt",
       "DataFirstLine = 2\nB_MODEL\nY=vm*x/(k+x)\nAssign vm=200,Operator=value,Fit=true\n"
       "Assign k=0.1,Operator=value,Fit=true\nE_MODEL\n",
       false},
      {"plant_uptake_sd.txt",
       "DataFirstLine = 2\nIndependentVariables = 2\nWeighted = True\nB_MODEL\n"
       "Y=(a-d*x2)*x1/(x1+b)\nAssign a=40,Operator=value,Fit=true\nAssign b=100,Operator=value,Fit=true\nE_MODEL\n",
       false},
  };
  std::mt19937 random(7);
  for (const auto& set : kSets) {
    std::vector<std::string> lines;
    std::ifstream file(TestData(set.File));
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    std::vector<ModelAnswer> first;
    std::string text;
    for (int round = 0; round < 4; ++round) {
      Program program;
      std::string content;
      for (const std::string& line : lines) content += line + "\n";
      program.Folder.Write("data.txt", content);
      ASSERT_EQ(program.RunMacro(kHead + set.Setup + "E_MACRO\n"), 0);
      const std::vector<ModelAnswer> answers = ReadAnswers(program.Folder.Read("out.txt"));
      ASSERT_EQ(answers.size(), 1u) << set.File << program.Log();
      std::string output = OutputOf(program);
      output.erase(0, output.find("E_HEADER"));
      if (round == 0) first = answers, text = output;
      if (set.ToTheBit) {
        EXPECT_EQ(output, text);
      }
      for (const auto& [name, fields] : answers[0].Values) {
        if (name.starts_with("Durbin") || name.starts_with("Sum_of") || name.starts_with("Average") ||
            name.starts_with("Number_of_nonlinear") || fields[0].empty() || !isdigit(fields[0].back()))
          continue;
        const double a = std::stod(fields[0]), b = first[0].Number(name);
        EXPECT_NEAR(a, b, 1e-7 * std::abs(b)) << set.File << " " << name;
      }
      std::shuffle(lines.begin() + 1, lines.end(), random);
    }
  }
}

TEST(Macro, GivesTheSameNumbersInEveryLocale) {
  const std::string german = "LC_ALL=de_DE.UTF-8";
  const std::string data = "1\t5.1\n2\t6.9\n3\t9.2\n4\t10.8\n5\t13.1\n";
  // The same file: "." in the data is read whatever the locale says, the delimiters being what they are by default.
  // Then the locale's own spelling of the same macro and data.
  const std::string plain = kHead + "TableOutput=DataFile,CalcData\nB_MODEL\nY=a+b*x^c\nE_MODEL\nE_MACRO\n";
  const std::string own =
      kHead +
      "OverrideDecimal = False\nInputDelimit = Tab\nColumnOrder = x; y\nRegressionTolerance = 0,001\n"
      "TableOutput=DataFile,CalcData\nB_MODEL\nY=max(a;0,5)+b*x^1,5\nAssign a = 1,25; Operator = value; Fit = true\n"
      "Assign b = 0,5; Operator = * YMin; Fit = true\nE_MODEL\nE_MACRO\n";
  const auto swapped = [](std::string text, const char* from, const char* to) {
    for (char& c : text)
      if (const char* at = std::strchr(from, c); at != nullptr && c != '\0') c = to[at - from];
    return text;
  };
  const struct {
    std::string InC, InGerman, DataInGerman;
  } kPairs[] = {{plain, plain, data}, {swapped(own, ",;", ".,"), own, swapped(data, ".", ",")}};
  for (const auto& pair : kPairs) {
    Program inC, inGerman;
    inC.Folder.Write("data.txt", data);
    inGerman.Folder.Write("data.txt", pair.DataInGerman);
    ASSERT_EQ(inC.RunMacro(pair.InC), 0) << inC.Log();
    ASSERT_EQ(inGerman.RunMacro(pair.InGerman, german), 0) << inGerman.Log();
    const std::string a = OutputOf(inC), b = OutputOf(inGerman);
    EXPECT_EQ(a.substr(a.find("B_INPUTDATA"), a.find("B_DEFINITION") - a.find("B_INPUTDATA")),
              b.substr(b.find("B_INPUTDATA"), b.find("B_DEFINITION") - b.find("B_INPUTDATA")));
    EXPECT_EQ(a.substr(a.find("B_COEFFICIENTS")), b.substr(b.find("B_COEFFICIENTS")));
    EXPECT_NE(a.find("B_COEFFICIENTS"), std::string::npos);
  }
}

TEST(Macro, ReadsItsFilesInUtf16) {
  const auto utf16 = [](const std::string& ascii) {
    std::string text = "\xFF\xFE";
    for (const char c : ascii) (text += c) += '\0';
    return text;
  };
  Program program(utf16(kData));
  program.Folder.Write("p.csv", utf16("name\r\nout\r\n"));
  std::string macro = kRunOfTheLine;
  macro.insert(macro.find("B_MODEL"), "OutputFile = @%name%.txt\nParameterFile = @p.csv\n");
  program.Folder.Write("macro.cfg", utf16(program.InFolder(macro)));
  EXPECT_EQ(program.Run("-runcfg " + program.Folder.Path("macro.cfg")), 0) << program.Err << program.Log();
  EXPECT_EQ(ReadAnswers(program.Folder.Read("out.txt")).size(), 1u);
}

TEST(Macro, TakesItsNameWithoutRegardToCase) {
  Program program(kData);
  program.Folder.Write("My Macro.CFG", program.InFolder(kRunOfTheLine));
  for (const std::string& arguments : {"-RunCfg '\"" + program.Folder.Path("MY MACRO.cfg") + "\"'",
                                       "-runcfg" + program.Folder.Path("My") + " Macro.CFG"})
    EXPECT_EQ(program.Run(arguments), 0) << arguments << program.Err;
}

TEST(Program, AnswersAboutItselfAndNeedsTheDesktopForTheRest) {
  Program program;
  program.MoveAway();
  EXPECT_EQ(program.Run("--version"), 0);
  EXPECT_EQ(program.Out, "Quorvex 9.0.0\n");
  EXPECT_EQ(program.Run("--help"), 0);
  EXPECT_TRUE(program.Out.starts_with("Usage: quorvex -runcfg FILE"));
  for (const char* option : {"--runcfg", "-v", "-"}) {
    EXPECT_EQ(program.Run(option), 1);
    EXPECT_TRUE(program.Err.starts_with("There is no option '" + std::string(option) +
                                        "', and no file of that name.\nUsage: quorvex -runcfg FILE"))
        << program.Err;
    EXPECT_EQ(program.Out, "");
  }
  for (const char* arguments : {"", "-runcfg", "-runcfg '\"'", "project.qvx"}) {
    EXPECT_EQ(program.Run(arguments), 1) << arguments;
    EXPECT_EQ(program.Out, "");
    EXPECT_EQ(program.Err,
              "The desktop program quorvex-desktop is not installed; quorvex -runcfg FILE runs a macro "
              "without it.\n");
  }
}

}  // namespace
}  // namespace quorvex
