// Reports as PDF documents, of macros and of the results window, and what the window's report says of itself.

#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextDocumentFragment>
#include <QThread>

#include "Paths.h"
#include "SolveFrame.h"
#include "batch/Program.h"
#include "report/ReportFormat.h"
#include "report/ui/ReportPdf.h"

namespace quorvex {
namespace {

constexpr const char* kHostile = "</style> \"<b>\" & {x} \\ $a$ \xC3\xA4\xC3\x9F";

// The words of a PDF document, page by page, as a reader selects them.
std::vector<QString> PagesOf(const std::string& pdf, TemporaryFolder& folder) {
  const std::string name = folder.Write("pages.pdf", pdf);
  QProcess words;
  words.start("pdftotext", {"-layout", QString::fromStdString(name), "-"});
  EXPECT_TRUE(words.waitForFinished());
  std::vector<QString> pages;
  for (const QString& page : QString::fromUtf8(words.readAllStandardOutput()).split('\f', Qt::SkipEmptyParts))
    pages.push_back(page);
  return pages;
}

QString Joined(const std::vector<QString>& pages) {
  QString all;
  for (const QString& page : pages) all += page;
  return all.simplified();
}

FitReport LongReport() {
  FitReport report{.Title = kHostile, .Verdict = "Good.", .Program = "Quorvex", .Date = "today"};
  for (int section = 1; section <= 8; ++section) {
    ReportTable table{"Caption " + std::to_string(section), {{"Name"}, {"Value", true}}, {}};
    for (int row = 1; row <= 20; ++row) table.Rows.push_back({"row " + std::to_string(row), "1.5"});
    report.Sections.push_back({"Heading " + std::to_string(section), {table}});
  }
  ReportTable wide{"Wide", {}, {{}}};
  for (int column = 0; column < 12; ++column) {
    wide.Columns.push_back({"X" + std::to_string(column), true});
    wide.Rows[0].push_back("-1.234567E-12");
  }
  report.Sections.push_back({"Formula",
                             {ReportFormula{"",
                                            "<math><mrow><mfrac><mi>a</mi><mrow><mi>b</mi><mo>+</mo><mi>x"
                                            "</mi></mrow></mfrac></mrow></math>"},
                              wide}});
  return report;
}

TEST(PdfOfReport, IsTheSameEachTimeAndKeepsWhatBelongsTogether) {
  TemporaryFolder folder;
  const std::string printed = PrintedReport(LongReport());
  const Result<std::string> pdf = PdfOfReport(printed, Settings(), {});
  ASSERT_TRUE(pdf) << pdf.error();
  QThread::msleep(1100);  // times in files go by the second
  EXPECT_TRUE(*pdf == *PdfOfReport(printed, Settings(), {}));
  const std::vector<QString> pages = PagesOf(*pdf, folder);
  ASSERT_GE(pages.size(), 4u);
  EXPECT_TRUE(pages[0].contains(QString::fromUtf8(kHostile))) << pages[0].toStdString();
  for (std::size_t page = 0; page < pages.size(); ++page) {
    EXPECT_TRUE(QString(pages[page]).remove(' ').trimmed().endsWith(QString("%1/%2").arg(page + 1).arg(pages.size())));
    // A heading and its table are on one page.
    for (int section = 1; section <= 8; ++section)
      EXPECT_EQ(pages[page].contains(QString("Heading %1").arg(section)),
                pages[page].contains(QRegularExpression(QString("Caption %1\\b[^C]*row 20\\b").arg(section))))
          << page << ' ' << section << pages[page].toStdString();
  }
  // All columns of the wide table are within the page, and so is the formula.
  EXPECT_EQ(Joined(pages).count("-1.234567E-12"), 12);
  EXPECT_TRUE(Joined(pages).remove(' ').contains("b+x")) << Joined(pages).toStdString();
}

TEST(PdfOfReport, SaysWhichPlotIsNone) {
  FitReport report = LongReport();
  report.Sections[0].Blocks.push_back(
      ReportFigure{.Title = "T", .Description = "D", .Svg = "<svg></svg>", .Plot = "no plot"});
  const Result<std::string> pdf = PdfOfReport(PrintedReport(report), Settings(), {});
  ASSERT_FALSE(pdf);
  EXPECT_NE(pdf.error(), "");
}

TEST(PdfReportOfAMacro, HasTextFormulaTablesAndPlots) {
  Program files("1 3.1\n2 5.2\n3 6.8\n4 9.1\n5 11.3\n6 12.7\n");
  ASSERT_EQ(
      files.RunMacro("B_MACRO\nDataFile = @data.txt\nOutputFile = @o.txt\nLogFile = @run.log\nReportFile = @r.pdf\n"
                     "Limits = Profile\nB_MODEL\nID = " +
                         std::string(kHostile) + "\nY = a+b*x\nE_MODEL\nE_MACRO\n",
                     "env -i QUORVEX_SETTINGS=/dev/null"),
      0)
      << files.Log();
  EXPECT_EQ(files.Log().find("Warning"), std::string::npos) << files.Log();
  const std::string pdf = files.Folder.Read("r.pdf");
  EXPECT_EQ(pdf.find("/CreationDate"), std::string::npos);
  EXPECT_EQ(pdf.find("/Subtype /Image"), std::string::npos) << "plots are lines";
  const QString words = Joined(PagesOf(pdf, files.Folder));
  for (const char* part : {kHostile, "Standard error", "Profile likelihood, lower", "Points and model.", "Input Data",
                           "Durbin", "def model(x):", "ReportFile = "})
    EXPECT_TRUE(words.contains(QString::fromUtf8(part))) << part << words.toStdString();
}

TEST(PdfReportOfAMacro, IsLeftOutWhereNobodyDraws) {
  Program files("1 3.1\n2 5.2\n3 6.8\n4 9.1\n5 11.3\n6 12.7\n");
  files.MoveAway();
  EXPECT_EQ(
      files.RunMacro("B_MACRO\nDataFile = @data.txt\nOutputFile = @o.txt\nLogFile = @run.log\nReportFile = @r.pdf\n"
                     "ReportFile = @r.md\nB_MODEL\nY = a+b*x\nE_MODEL\nE_MACRO\n"),
      0);
  EXPECT_NE(files.Log().find("Warning: The desktop program quorvex-desktop is not installed"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(files.Folder.Path("r.pdf")));
  EXPECT_NE(files.Folder.Read("r.md").find("a+b*x"), std::string::npos) << "the model's name is its formula";
}

class ReportExport : public SolveFrame {
 protected:
  std::string Export(const std::string& name) {
    dialogs.ChooseFile(folder.Path(name));
    dialogs.Press(QMessageBox::Ok);
    Click(Results(), "ReportCommand");
    return dialogs.Said.back();
  }
};

TEST_F(ReportExport, TellsWhatItWroteAndWhatItCouldNot) {
  Open(40, "m*x^n");
  SolveOne("yours");
  SolveOne("mine");
  EXPECT_EQ(Export("r.html"), "The file '" + folder.Path("r.html") + "' contains the report as HTML.");
  EXPECT_EQ(Export("r.pdf"), "The file '" + folder.Path("r.pdf") + "' contains the report as PDF.");
  EXPECT_TRUE(Joined(PagesOf(folder.Read("r.pdf"), folder)).contains("Points and model."));
  EXPECT_EQ(Export("r.odt"), UnknownReport(folder.Path("r.odt")));
}

// The macro of the window's report, run on the data that it asks for, gives that report but for where it is from.
TEST_F(ReportExport, HasAMacroThatMakesItAgain) {
  const std::string data = "1\t3.1\t.2\n2\t5.2\t.1\n3\t6.8\t.1\n4\t9.1\t.2\n5\t19.3\t.3\n6\t12.7\t.1\n7\t15.1\t.2\n";
  const std::string models =
      "B_MODEL\nID = line\nY = a+b*x\nAssign a = 1, Operator = Value, Fit = True, Minimum = 0\nE_MODEL\n"
      "B_MODEL\nID = bent\nY = c*x^d\nReport = twice = 2*c\nE_MODEL\n";
  for (const std::string how : {"Loss = Huber\nLossScale = 0.25\nSortKey = AICc\nWeighted = True\n",
                                "Weighted = True\nStandardDeviations = Absolute\nMaxIterations = 99\n",
                                "Loss = Bisquare\n", "SortKey = CV\n"}) {
    SCOPED_TRACE(how);
    std::filesystem::remove(folder.Path("r.html"));
    Program files(data);
    ASSERT_EQ(files.RunMacro("B_MACRO\nDataFile = @data.txt\nOutputFile = @out.qvx\nOutputFormat = Quorvex\n" + how +
                             models + "E_MACRO\n"),
              0);
    Start(files.Folder.Path("out.qvx"));
    session.Preferences.Set("sortindex", how.find("AICc") != std::string::npos ? "5" : "1");
    Active().findChild<QTableView*>("SolvedList")->selectRow(0);
    Trigger("mnuSolveResults");
    Export("r.html");
    const QString html = QString::fromStdString(folder.Read("r.html"));
    const qsizetype begin = html.lastIndexOf("<code>") + 6;
    const std::string macro =
        QTextDocumentFragment::fromHtml("<pre>" + html.mid(begin, html.lastIndexOf("</code>") - begin) + "</pre>")
            .toPlainText()
            .toStdString();
    QProcess again;
    again.setWorkingDirectory(QString::fromStdString(files.Folder.Path("")));
    again.start(QString::fromStdString(ConsoleProgram()),
                {"-runcfg", QString::fromStdString(files.Folder.Write("again.cfg", macro))});
    ASSERT_TRUE(again.waitForFinished());
    EXPECT_EQ(again.exitCode(), 0) << macro;
    const auto plain = [](std::string text) {
      QString report = QString::fromStdString(text);
      report.remove(QRegularExpression("20\\d\\d-[\\d-]+ [\\d:]+"));
      report.remove(QRegularExpression(" points from .*</p>"));
      report.remove(QRegularExpression("<p>Export the data .*</p>\n"));
      return report.toStdString();
    };
    const std::string first = plain(html.toStdString()), second = plain(files.Folder.Read("report.html"));
    const auto [one, other] = std::ranges::mismatch(first, second);
    EXPECT_TRUE(first == second) << std::string(one, std::min(one + 300, first.end())) << "\n---\n"
                                 << std::string(other, std::min(other + 300, second.end())) << macro;
    CloseUnsaved();
  }
}

}  // namespace
}  // namespace quorvex
