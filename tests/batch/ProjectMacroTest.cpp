// Answers written as a project file by the real program, and read back.

#include <gtest/gtest.h>

#include "batch/Program.h"
#include "files/ProjectFile.h"

namespace quorvex {
namespace {

constexpr const char* kMacro =
    "B_MACRO\nDataFile = @data.txt\nOutputFile = @%s\nLogFile = @run.log\nOutputFormat = %s\nComment = a note\n"
    "Comment = of two lines\nWeighted = True\nMaxIterations = 77\nIndependentVariables = 1\n"
    "B_MODEL\nY = a+b*x^0.5\nE_MODEL\nB_MODEL\nID=own\nF1 = exp(-b*x)\nY = a*F1+c\nE_MODEL\nE_MACRO\n";

std::string Filled(const char* file, const char* format) {
  char text[1000];
  std::snprintf(text, sizeof text, kMacro, file, format);
  return text;
}

// The numbers of a project are the very ones of the fit: they print as the structured layout prints them, and a file
// read and written again is the same file.
TEST(ProjectMacro, WritesWhatReadsBackEqual) {
  const std::string data = "3 2.9 0.1\n1 7.1 0.2\n2 4.4 0.1\n5 2.1 0.3\n4 2.2 0.1\n0.1 11.5 0\n";
  std::string inC;
  for (const std::string environment : {"LC_ALL=C", "LC_ALL=de_DE.UTF-8"}) {
    Program program(data);
    std::string macro = Filled("out.qvx", "quorvex");
    if (environment != "LC_ALL=C") macro.replace(macro.find("0.5"), 3, "0,5");
    ASSERT_EQ(program.RunMacro(macro, environment), 0) << program.Folder.Read("run.log");
    const std::string file = program.Folder.Read("out.qvx");
    EXPECT_TRUE(file.starts_with("\"B_HEADER\"\r\n")) << file.substr(0, 100);
    if (inC.empty()) inC = file;
    EXPECT_EQ(file, inC) << "a project does not depend on the locale it was made in";

    const LocaleText german{',', ';', '.', '.', ':'};
    for (const LocaleText& locale : {LocaleText(), german}) {
      const Result<Project> project = ReadProject(program.Folder.Path("out.qvx"), locale);
      ASSERT_TRUE(project) << project.error();
      EXPECT_EQ(ProjectText(*project), file);
      EXPECT_EQ(project->Notes, "a note\r\n        of two lines");
      EXPECT_EQ(project->Limits.MaxIterations, 77);
      EXPECT_EQ(project->Sheet.Cells.GridCellNumber(1, 1), 3);  // the order of the file
      EXPECT_EQ(project->Sheet.Cells.GridCellNumber(6, 2), 11.5);

      program.RunMacro(Filled("out.txt", "structured"));
      const std::vector<ModelAnswer> answers = ReadAnswers(program.Folder.Read("out.txt"));
      ASSERT_EQ(answers.size(), 2u);
      for (const ModelAnswer& answer : answers) {
        const ModelClass* model = project->Models.Find(answer.ID);
        ASSERT_NE(model, nullptr) << answer.ID;
        EXPECT_TRUE(model->Solved);
        EXPECT_EQ(GeneralNumber(model->RSS), answer.Values.at("Residual_Sum_of_Squares_(Absolute)")[0]);
        EXPECT_EQ(GeneralNumber(model->Durbin), answer.Values.at("Durbin-Watson_statistic")[0]);
        for (int i = 1; i <= model->NumDependentVar(); ++i) {
          EXPECT_EQ(GeneralNumber(model->Values(i)), answer.Values.at(model->Variables(i))[0]);
          EXPECT_EQ(GeneralNumber(model->StandardError(i)), answer.Values.at(model->Variables(i))[1]);
        }
      }
    }
  }
}

TEST(ProjectMacro, KeepsTheFileThatWasThere) {
  Program program("1 2 1\n2 3 1\n3 3 1\n4 5 1\n5 5 1\n");
  program.Folder.Write("out.qvx", "precious");
  ASSERT_EQ(program.RunMacro(Filled("out.qvx", "Quorvex")), 0);
  EXPECT_EQ(program.Folder.Read("out.qvx~"), "precious");
  EXPECT_EQ(program.RunMacro(Filled("none/out.qvx", "Quorvex")), 200);
}

}  // namespace
}  // namespace quorvex
