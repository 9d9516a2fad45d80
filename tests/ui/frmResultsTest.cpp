// The results window, used as a user does.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QMimeData>
#include <QPdfWriter>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QRadioButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>
#include <set>

#include "Accessibility.h"
#include "Dialogs.h"
#include "Forms.h"
#include "TemporaryFolder.h"
#include "core/ui/MessageBoxPrompter.h"
#include "plot/ui/PlotView.h"
#include "results/SolvedProject.h"
#include "results/ui/PrintTable.h"
#include "results/ui/ResultPlot.h"
#include "results/ui/TableView.h"
#include "results/ui/WrappedText.h"
#include "results/ui/frmResults.h"

namespace quorvex {
namespace {

class Results : public testing::Test {
 protected:
  // Five points about a line, solved by these models of the catalogue.
  void Start(const std::vector<const char*>& models = {"a*x+b", "a+b/x"}) {
    for (const char* name : models) SolveModel(project, name, 1);
    Open();
  }
  void Open() {
    window = std::make_unique<frmResults>(project, settings, user);
    window->show();
    window->activateWindow();
    QTest::qWait(20);
  }

  template <typename Widget>
  Widget& Find(const char* name) {
    return In<Widget>(*window, name);
  }
  void Click(const char* name) { QTest::mouseClick(&Find<QPushButton>(name), Qt::LeftButton); }
  void Type(const char* name, const char* text) {
    Find<QLineEdit>(name).clear();
    QTest::keyClicks(&Find<QLineEdit>(name), text);
  }
  void Turn(int tab) { Find<QTabWidget>("ResultsTab").setCurrentIndex(tab); }
  QString Shown() { return Find<QComboBox>("EqList").currentText(); }
  QString Cell(const char* table, int row, int column) {
    return Find<QTableView>(table).model()->index(row, column).data().toString();
  }
  // The value behind a label of Fit Information.
  QString ValueOf(const QString& label) {
    const QAbstractItemModel& model = *Find<QTableView>("FitBook").model();
    for (int row = 0; row < model.rowCount(); ++row)
      if (Cell("FitBook", row, 0) == label) return Cell("FitBook", row, 1);
    return "-";
  }
  QString Evaluations() { return Find<QPlainTextEdit>("txtEval").toPlainText(); }

  TemporaryFolder folder;
  Dialogs dialogs;
  Settings settings;
  MessageBoxPrompter user{nullptr};
  Project project = LineProject();
  std::unique_ptr<frmResults> window;
};

TEST_F(Results, StepsThroughTheSolvedList) {
  Start();
  EXPECT_EQ(window->windowTitle(), "Regression Results");
  const char* tips[] = {"View next model", "View previous model", "Vew best fit model"};
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(Find<QPushButton>(("cmdUpDown" + std::to_string(i)).c_str()).toolTip(), tips[i]);
  const auto enabled = [&] {
    return std::vector<bool>{Find<QPushButton>("cmdUpDown0").isEnabled(), Find<QPushButton>("cmdUpDown1").isEnabled(),
                             Find<QPushButton>("cmdUpDown2").isEnabled()};
  };
  EXPECT_EQ(Shown(), "a*x+b");
  EXPECT_EQ(ValueOf("Y = "), "a*x+b");
  EXPECT_EQ(enabled(), (std::vector<bool>{true, false, false}));
  Click("cmdUpDown0");
  EXPECT_EQ(Shown(), "a+b/x");
  EXPECT_EQ(ValueOf("Y = "), "a+b/x");
  EXPECT_EQ(enabled(), (std::vector<bool>{false, true, true}));
  Click("cmdUpDown1");
  EXPECT_EQ(Shown(), "a*x+b");
  window->Show({project.Models.Find("a+b/x"), nullptr});
  EXPECT_EQ(Shown(), "a+b/x");
  Click("cmdUpDown2");
  EXPECT_EQ(Shown(), "a*x+b");
}

// By R, predict() of lm(): see the tests of bands.
TEST_F(Results, ShowsLimitsWhereTheyAreChosen) {
  Start();
  auto& limits = Find<QComboBox>("cmboLimits");
  auto& why = Find<QLabel>("whyNoLimits");
  EXPECT_FALSE(limits.isVisible());
  Turn(1);
  EXPECT_TRUE(limits.isVisible());
  EXPECT_EQ(Find<QTableView>("DataBook").model()->columnCount(), 6);
  limits.setCurrentIndex(1);
  EXPECT_EQ(Find<QTableView>("DataBook").model()->columnCount(), 8);
  EXPECT_TRUE(Cell("DataBook", 0, 6).startsWith("1.927"));
  limits.setCurrentIndex(3);
  EXPECT_EQ(Find<QTableView>("DataBook").model()->columnCount(), 10);
  const auto bands = [&] {
    Turn(2);
    QTest::qWait(20);  // a plot is drawn once it has its place
    return static_cast<ResultPlot&>(Find<QWidget>("pctModel")).View()->accessibleDescription().count("95%");
  };
  EXPECT_EQ(bands(), 2);
  Click("cmdUpDown0");
  EXPECT_EQ(bands(), 2) << "the next model has them, too";
  EXPECT_FALSE(why.isVisible());
  Click("evaluation");
  Type("XVal_text1", "3");
  Click("EvalCommand");
  EXPECT_TRUE(Evaluations().contains("95% prediction limits: "));
  Click("evaluation");
  limits.setCurrentIndex(0);
  EXPECT_EQ(bands(), 0);
  Turn(3);
  EXPECT_FALSE(limits.isVisible());
}

TEST_F(Results, MakesATabWhenItIsLookedAt) {
  Start();
  EXPECT_EQ(Find<QTableView>("DataBook").model()->rowCount(), 0);
  Turn(1);
  EXPECT_EQ(Cell("DataBook", 2, 4), "8.0e-1");
  Click("cmdUpDown0");
  EXPECT_NE(Cell("DataBook", 2, 4), "8.0e-1");
  EXPECT_EQ(ValueOf("Y = "), "a*x+b") << "not looked at yet";
  Turn(0);
  EXPECT_EQ(ValueOf("Y = "), "a+b/x");
}

TEST_F(Results, FollowsTheProject) {
  Start();
  Turn(1);
  SolveModel(project, "a+b*x+c/x", 1);
  window->Refresh();
  EXPECT_EQ(Shown(), "a*x+b");
  EXPECT_EQ(Find<QComboBox>("EqList").count(), 3);
  project.Models.Find("a*x+b")->Solved = false;
  project.Sheet.Cells.ClearCell(5, 2);
  window->Refresh();
  EXPECT_EQ(Shown(), "a+b*x+c/x") << "the best that is left";
  EXPECT_EQ(Find<QTableView>("DataBook").model()->rowCount(), 4);
  Turn(0);
  EXPECT_EQ(ValueOf("Number of missing observations = "), "1");
  EXPECT_EQ(ValueOf("Nonlinear iteration limit = "), "-");

  SolveModel(project, "a+b/x", 0);
  window->SetLimits({1e-10, 250, 10});
  window->Refresh();
  window->Show({project.Models.Find("a+b/x"), nullptr});
  EXPECT_EQ(ValueOf("Nonlinear iteration limit = "), "250");

  for (const auto& model : project.Models) model->Solved = false;
  window->Refresh();
  EXPECT_EQ(Find<QTableView>("FitBook").model()->rowCount(), 0);
  for (const char* name : {"cmdUpDown0", "SaveCommand", "FormatCommand", "PrintCommand", "CopyCommand"})
    EXPECT_FALSE(Find<QPushButton>(name).isEnabled()) << name;
}

// Whoever solves is asked about it; here it is one that is missing.
TEST_F(Results, CountsARowWithATextAsMissing) {
  Start();
  project.Sheet.Cells.SetGridCellText(2, 2, "five");
  window->Refresh();
  EXPECT_EQ(dialogs.Said, Said());
  EXPECT_EQ(ValueOf("Number of missing observations = "), "1");
  Turn(1);
  EXPECT_EQ(Find<QTableView>("DataBook").model()->rowCount(), 4);
}

TEST_F(Results, EvaluatesAndKeepsTheAnswers) {
  Start();
  Click("evaluation");
  EXPECT_EQ(Find<QLineEdit>("XVal_text1").window()->focusWidget(), &Find<QLineEdit>("XVal_text1"));
  Type("XVal_text1", "10\r");
  const QString value = "Evaluation of equation: a*x+b\nX = 10\nY = 2.120000000000E+01";
  EXPECT_EQ(Evaluations(), value);
  EXPECT_FALSE(Find<QLineEdit>("YVal_text").isEnabled());

  QTest::mouseClick(&Find<QRadioButton>("optnAction1"), Qt::LeftButton, {}, {8, 8});
  EXPECT_FALSE(Find<QLineEdit>("XVal_text1").isEnabled());
  EXPECT_FALSE(Find<QComboBox>("cmboRoot").isVisible());
  EXPECT_EQ(Find<QLineEdit>("txtSearchMax").text(), "5");
  Type("YVal_text", "4.2");
  Type("txtSearchMax", "1");
  dialogs.Press(QMessageBox::Ok);
  Click("EvalCommand");
  EXPECT_EQ(dialogs.Said.back(), "The values entered for search minimum and maximum cannot be equal.");
  Click("cmdDefaults");
  QTest::mouseClick(&Find<QCheckBox>("ckDyDX"), Qt::LeftButton, {}, {8, 8});
  Click("EvalCommand");
  EXPECT_TRUE(Evaluations().startsWith(value + "\n___________________________________\nRoot search of equation: a*x+b\n"
                                               "X at Y = 4.2\n1.5000000000"))
      << Evaluations().toStdString();
  EXPECT_TRUE(Evaluations().contains("\ndY/dX = "));

  dialogs.ChooseFile(folder.Path("Eval.txt"));
  Click("SaveCommand");
  EXPECT_EQ(folder.Read("Eval.txt"), Evaluations().replace("\n", "\r\n").toStdString());
  Click("CopyCommand");
  EXPECT_EQ(QApplication::clipboard()->text(), Evaluations());
  Click("ClearCommand");
  EXPECT_EQ(Evaluations(), "");
}

TEST_F(Results, EvaluatesSeveralVariables) {
  project = ProjectOf({{1, 2, 4, 5}, {2, 1, 5, 3}, {4, 4, 14, 11}});
  Start({project.Models.begin()->get()->id.c_str()});
  Click("evaluation");
  EXPECT_EQ(Find<QLabel>("XLabel2").text(), "X2:");
  Type("XVal_text1", "4");
  Type("XVal_text2", "3");
  Click("EvalCommand");
  EXPECT_TRUE(Evaluations().contains("\nX1 = 4\nX2 = 3\nY = ")) << Evaluations().toStdString();
  QTest::mouseClick(&Find<QRadioButton>("optnAction1"), Qt::LeftButton, {}, {8, 8});
  auto& which = Find<QComboBox>("cmboRoot");
  EXPECT_TRUE(which.isVisible());
  QTest::keyClick(&which, Qt::Key_Down);
  EXPECT_TRUE(Find<QLineEdit>("XVal_text1").isEnabled());
  EXPECT_FALSE(Find<QLineEdit>("XVal_text2").isEnabled());
  EXPECT_EQ(Find<QLineEdit>("txtSearchMin").text(), "1");
  EXPECT_EQ(Find<QLineEdit>("txtSearchMax").text(), "5");
  // The root along the second variable, which is where a value was asked for.
  Type("YVal_text", qPrintable(Evaluations().section("= ", -1)));
  Click("EvalCommand");
  EXPECT_TRUE(Evaluations().contains("\nX1 = 4\nX2 at Y = ")) << Evaluations().toStdString();
  EXPECT_NEAR(Evaluations().section('\n', -1).toDouble(), 3, 1e-8);
}

TEST_F(Results, CopiesAndSavesTables) {
  Start();
  Click("CopyCommand");
  const QMimeData* copied = QApplication::clipboard()->mimeData();
  EXPECT_TRUE(copied->text().contains("Durbin-Watson statistic = \t2.5"));
  EXPECT_TRUE(copied->html().contains("<th align=\"left\" colspan=\"6\">Variance Analysis</th>"));
  dialogs.ChooseFile(folder.Path("fit.html"));
  Click("SaveCommand");
  EXPECT_TRUE(folder.Read("fit.html").starts_with("<!DOCTYPE html>"));

  Turn(1);
  auto& table = Find<QTableView>("DataBook");
  table.selectionModel()->select(QItemSelection(table.model()->index(0, 1), table.model()->index(1, 2)),
                                 QItemSelectionModel::ClearAndSelect);
  table.setFocus();
  QTest::keySequence(&table, QKeySequence::Copy);
  EXPECT_EQ(QApplication::clipboard()->text(), "1\t3\r\n2\t5\r\n");
  dialogs.ChooseFile(folder.Path("data"));
  Click("SaveCommand");
  EXPECT_TRUE(folder.Read("data.txt").starts_with("Row\tX\tY\tCalc Y\tResidual\tAbs Residual\r\n1\t1\t3\t"));
}

TEST_F(Results, ShowsFewDigitsAndHandsOutAllOfThem) {
  Start();
  const QString label = "Standard Error of the Estimate = ";
  const QString few = ValueOf(qPrintable(label));
  EXPECT_EQ(few, "0.5163978");  // the square root of 4/15
  const auto all = QString::number(project.Models.Find("a*x+b")->StdErr, 'g', 15);
  Click("CopyCommand");
  EXPECT_TRUE(QApplication::clipboard()->text().contains(label + '\t' + all + "\r\n"));
  dialogs.ChooseFile(folder.Path("fit.txt"));
  Click("SaveCommand");
  EXPECT_NE(folder.Read("fit.txt").find(all.toStdString()), std::string::npos);
  Find<QTableView>("FitBook").findChild<QAction*>("copyMarkdown")->trigger();
  EXPECT_TRUE(QApplication::clipboard()->text().contains("| Error | 3 |"));
  dialogs.Do([](QDialog& form) {
    auto* allDigits = form.findChild<QCheckBox*>("allDigits");
    EXPECT_FALSE(allDigits->isChecked());
    EXPECT_EQ(form.findChild<QLabel*>("sample")->text(), "-1234.568    -1.2e+3");
    allDigits->setChecked(true);
    EXPECT_EQ(form.findChild<QLabel*>("sample")->text(), "-1234.56789012345    -1234.56789012345");
    form.accept();
  });
  Click("FormatCommand");
  EXPECT_EQ(ValueOf(qPrintable(label)), all);
}

TEST_F(Results, WritesNumbersAsAskedForWithTheCommaOfTheUser) {
  project.Locale.DecimalSeparator = ',';
  Start();
  Turn(1);
  dialogs.Do([](QDialog& form) {
    EXPECT_EQ(form.windowTitle(), "Format");
    form.findChild<QComboBox*>("values")->setCurrentText("0.00");
    form.findChild<QComboBox*>("residuals")->setCurrentText("0.0000");
    EXPECT_EQ(form.findChild<QLabel*>("sample")->text(), "-1234,57    -1234,5679");
    QTest::keyClick(&form, Qt::Key_Return);
  });
  Click("FormatCommand");
  EXPECT_EQ(Cell("DataBook", 2, 3), "7,20");
  EXPECT_EQ(Cell("DataBook", 2, 4), "0,8000");
  Turn(0);
  EXPECT_EQ(ValueOf("Durbin-Watson statistic = "), "2,50");
}

TEST_F(Results, ShowsALongTableToItsEnd) {
  std::vector<std::vector<double>> columns(2);
  for (int i = 1; i <= 65'536; ++i) {
    columns[0].push_back(i);
    columns[1].push_back(2.0 * i + (i % 3));
  }
  project = ProjectOf(columns);
  Start({"a*x+b"});
  Turn(1);
  auto& table = Find<QTableView>("DataBook");
  for (int step = 0; step <= 100; ++step) {
    table.verticalScrollBar()->setValue(table.verticalScrollBar()->maximum() / 100 * step);
    QApplication::processEvents();
  }
  EXPECT_EQ(Cell("DataBook", 65'535, 1), "65536");
}

// The pages of the PDF file that the report is printed to, which holds an object for each.
std::size_t PagesOf(const Report& report) {
  const TemporaryFolder folder;
  {
    QPdfWriter writer(QString::fromStdString(folder.Path("table.pdf")));
    writer.setPageSize(QPageSize(QPageSize::A4));
    EXPECT_TRUE(PrintTable(report, "Title", QFont("Liberation Sans", 10), writer));
  }
  const std::string pdf = folder.Read("table.pdf");
  std::size_t pages = 0;
  for (std::size_t at = 0; (at = pdf.find("/Type /Page\n", at)) != std::string::npos; ++at) ++pages;
  return pages;
}

TEST(PrintTable, TakesAsManyPagesAsItNeeds) {
  const struct { std::size_t rows, columns, pages; } kCases[] = {{10, 3, 1}, {200, 3, 4}, {10, 30, 4}, {200, 30, 16}};
  for (const auto& c : kCases) {
    Report report;
    report.Add(RowKind::Heading, {"Table"});
    for (std::size_t r = 0; r < c.rows; ++r)
      report.Add(RowKind::Values, std::vector<std::string>(c.columns, "0.12345678"));
    EXPECT_EQ(PagesOf(report), c.pages) << c.rows << " rows, " << c.columns << " columns";
  }
}

// Fit Information's labels are wider than its columns; all of these stay on one page.
TEST(PrintTable, KeepsAReportOfFewCoefficientsOnOnePage) {
  Report report;
  report.Add(RowKind::Line, {"Adjusted coefficient of multiple determination (Ra^2) = ", "0.12345678"});
  report.Add(RowKind::Line, {"Y = ", std::string(1000, 'a')});
  report.Add(RowKind::ColumnHeadings, {"Variable", "Value", "95% (+/-)", "Lower Limit", "Upper Limit", "Prob(F)"});
  report.Add(RowKind::Values, std::vector<std::string>(6, "-1.23456789012345E-10"));
  EXPECT_EQ(PagesOf(report), 1U);
}

TEST_F(Results, SaysWhyNothingIsPrinted) {
  Start();
  const auto print = [&](const std::string& file) {
    dialogs.Said.clear();
    dialogs.Do([&](QDialog& form) {
      QPrinter& printer = *dynamic_cast<QPrintDialog&>(form).printer();
      printer.setOutputFormat(QPrinter::PdfFormat);
      printer.setOutputFileName(QString::fromStdString(folder.Path(file)));
      static_cast<QDialog&>(form).done(QDialog::Accepted);
    });
    dialogs.Press(QMessageBox::Ok);
    Click("PrintCommand");
    return dialogs.Said;
  };
  EXPECT_EQ(print("missing/table.pdf"),
            Said{"The following error occurred: Error number 76 - The folder does not exist."});
  settings.Set("mtop", "11.2", "printsetup");
  EXPECT_EQ(print("table.pdf"), Said{"The top and bottom margins specified are incorrect for the page height. Please "
                                     "check the margin settings in the Page Setup Dialog."});
  EXPECT_FALSE(QFile::exists(QString::fromStdString(folder.Path("table.pdf"))));
}

// A long equation takes several lines of the window and is copied and told whole. Lines have the width of the window,
// end between words, and leave no height behind for the rows of the next report.
TEST_F(Results, WrapsLongLinesOfFitInformation) {
  SolveModel(project, "a*x+b", 1);
  Start();
  auto& book = Find<QTableView>("FitBook");
  int row = 0;
  while (book.model()->index(row, 0).data().toString() != "Y = ") ++row;
  const int before = book.rowHeight(row);
  auto report = std::make_unique<Report>();
  const std::string equation(600, 'a');
  report->Add(RowKind::Line, {"Y = ", equation});
  report->Add(RowKind::Line, {"Search ended:", "at the iteration limit, before it converged"});
  static_cast<TableView&>(book).SetTable(std::move(report));
  EXPECT_GE(book.rowHeight(0), 4 * book.rowHeight(1));
  EXPECT_EQ(book.rowHeight(1), before);
  EXPECT_EQ(book.columnViewportPosition(1) + book.columnWidth(1), book.viewport()->width());
  EXPECT_EQ(book.model()->index(0, 0).data(Qt::ToolTipRole).toString().remove('\n').toStdString(), equation);
  QTest::mouseClick(book.viewport(), Qt::LeftButton, {}, book.visualRect(book.model()->index(0, 0)).center());
  QTest::keyClick(&book, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "Y = " + equation);
  EXPECT_GT(std::unique_ptr<QMimeData>(static_cast<TableView&>(book).Copied())->text().size(), 620);

  auto next = std::make_unique<Report>();
  next->Add(RowKind::ColumnHeadings, {"Variable", "Value", "Standard Error"});
  next->Add(RowKind::Line, {"Search ended:", "at the iteration limit, before it converged"});
  static_cast<TableView&>(book).SetTable(std::move(next));
  EXPECT_EQ(book.rowHeight(0), before);
  EXPECT_EQ(book.rowHeight(1), before) << "wraps at the columns and not at the window";
  const std::string words = "at the iteration limit, before it converged";
  const double word = QFontMetricsF(book.font()).horizontalAdvance("converged");
  EXPECT_DOUBLE_EQ(WrappedText(words, book.font(), word * 1.01).Height() /
                       WrappedText("converged", book.font(), word * 1.01).Height(),
                   5)
      << "breaks within a word";
}

TEST_F(Results, PrintsWithTheMarginsOfPageSetup) {
  Start();
  // Behind the answer, since the box that opens is to be answered in turn.
  const auto enter = [](QDialog& form) {
    QTimer::singleShot(0, &form, [&form] { QTest::keyClick(&form, Qt::Key_Return); });
  };
  dialogs.Do([=](QDialog& form) {
    EXPECT_EQ(form.windowTitle(), "Page Setup");
    EXPECT_EQ(form.findChild<QLineEdit*>("left")->text(), "0.25");
    form.findChild<QLineEdit*>("top")->setText("");
    enter(form);
  });
  dialogs.Press(QMessageBox::Ok);
  dialogs.Do([=](QDialog& form) {
    form.findChild<QLineEdit*>("top")->setText("20");
    form.findChild<QComboBox*>("units")->setCurrentText("mm");
    enter(form);
  });
  Click("PageSetupCommand");
  EXPECT_EQ(dialogs.Said, Said{"Please enter a valid number for the Top Margin"});
  EXPECT_EQ(settings.Number("mtop", "printsetup"), 20);
  EXPECT_EQ(settings.Text("munits", "printsetup"), "mm");
  dialogs.Do([](QDialog& form) {
    auto* dialog = qobject_cast<QPrintDialog*>(&form);
    ASSERT_NE(dialog, nullptr);
    EXPECT_NEAR(dialog->printer()->pageLayout().margins(QPageLayout::Millimeter).top(), 20, 0.1);
    form.reject();
  });
  Click("PrintCommand");
}

TEST_F(Results, PlotsTheModelAndItsResiduals) {
  Start();
  const char* names[] = {"pctModel", "pctResidual", "pctNormal"};
  for (int i = 0; i < 3; ++i) {
    Turn(2 + i);
    QTest::qWait(20);
    auto* view = Find<QWidget>(names[i]).findChild<PlotView*>();
    ASSERT_NE(view, nullptr) << names[i];
    int blue = 0;  // of the markers' lines, which are smoothed
    for (int x = 0; x < view->Picture().width(); ++x)
      for (int y = 0; y < view->Picture().height(); ++y) {
        const QRgb pixel = view->Picture().pixel(x, y);
        if (qBlue(pixel) > qRed(pixel) + 100) ++blue;
      }
    EXPECT_GT(blue, 50) << names[i];
    EXPECT_FALSE(Find<QPushButton>("FormatCommand").isEnabled());
    dialogs.ChooseFile(folder.Path(names[i]));
    dialogs.Type("96");
    dialogs.Press(QMessageBox::Ok);
    Click("SaveCommand");
    EXPECT_TRUE(folder.Read(std::string(names[i]) + ".png").starts_with("\x89PNG"));
    Click("CopyCommand");
    EXPECT_EQ(QApplication::clipboard()->image().size(), view->Picture().size());
  }
  const QPointer<PlotView> before = Find<QWidget>("pctNormal").findChild<PlotView*>();
  Click("cmdUpDown0");
  EXPECT_TRUE(before.isNull()) << "the plot of the other model";
}

TEST_F(Results, KeepsASurfaceTurnedFromModelToModel) {
  project = PlaneProject();
  Start({"a+b*x1+c*x2", "a+b*x1+c/x2"});
  Turn(2);
  const auto view = [&] { return Find<QWidget>("pctModel").findChild<PlotView*>(); };
  ASSERT_NE(view(), nullptr);
  ASSERT_TRUE(view()->Angles());
  view()->setFocus();
  for (const auto key : {Qt::Key_Right, Qt::Key_Down}) QTest::keyClick(view(), key);
  EXPECT_EQ(Find<QTabWidget>("ResultsTab").currentIndex(), 2) << "the arrows are the plot's";
  EXPECT_EQ(*view()->Angles(), (ViewAngles{145, 35}));
  Click("cmdUpDown0");
  EXPECT_EQ(*view()->Angles(), (ViewAngles{145, 35}));
  EXPECT_EQ(Find<QSpinBox>("ZAngle").value(), 35);
  // A model without a surface in between changes nothing.
  Find<QSpinBox>("XYAngle").setValue(20);
  project.Sheet.Cells.GridClearRange({2, 1, 5, 3});
  window->Refresh();
  EXPECT_EQ(view(), nullptr);
  for (std::size_t row = 2; row <= 5; ++row)
    for (std::size_t col = 1; col <= 3; ++col)
      project.Sheet.Cells.SetGridCellNumber(row, col, static_cast<double>(row * row + col));
  window->Refresh();
  EXPECT_EQ(*view()->Angles(), (ViewAngles{20, 35}));
  ExpectMnemonicsDoNotMeet(*window);
  const AccessibilityWalk walk(*window);
  for (const char* name : {"X1-X2 view angle", "X1-Y view angle", "Model Plot"}) EXPECT_TRUE(walk.Names.contains(name));
  Turn(3);
  EXPECT_FALSE(Find<QWidget>("pctResidual").findChild<PlotView*>()->Angles());
}

TEST_F(Results, SaysWhyThereIsNoPlot) {
  std::string log;
  ASSERT_TRUE(project.Interpolations[0].Fit(GatherData(project.Sheet).Points, log));
  Open();
  EXPECT_EQ(Shown(), "Cubic Spline");
  Turn(2);
  EXPECT_NE(Find<QWidget>("pctModel").findChild<PlotView*>(), nullptr);
  Turn(3);
  EXPECT_EQ(Find<QWidget>("pctResidual").findChild<PlotView*>(), nullptr);
  EXPECT_TRUE(Find<QWidget>("pctResidual").findChild<QLabel*>("reason")->text().startsWith("An interpolation"));
  EXPECT_FALSE(Find<QPushButton>("SaveCommand").isEnabled());
  project.Interpolations[0].Solved = false;
  window->Refresh();
  EXPECT_EQ(Find<QWidget>("pctModel").findChild<PlotView*>(), nullptr);
  Click("evaluation");
  EXPECT_FALSE(Find<QPushButton>("EvalCommand").isEnabled());
}

TEST_F(Results, TellsInThePlaceOfAPlotThatItCannotBeCreated) {
  auto wide = std::make_unique<PlotClass>(settings);
  DataClass data;
  data.GenerateTable({{-1e308, 1e308}}, {1, 2});
  wide->PlotData.emplace_back(std::move(data), SeriesStyle{});
  ResultPlot plot("pctModel", "Model Plot", user, settings, nullptr);
  plot.SetPlot(std::unique_ptr<PlotPage>(std::move(wide)));
  EXPECT_EQ(plot.View(), nullptr);
  EXPECT_EQ(plot.findChild<QLabel*>("reason")->text(), kPlotFailure);
}

// In each state of the window; a hidden control answers to no key.
TEST_F(Results, HasMnemonicsThatDoNotMeet) {
  Start();
  ExpectMnemonicsDoNotMeet(*window);
  Click("evaluation");
  ExpectMnemonicsDoNotMeet(*window);
}

TEST_F(Results, NamesWhatAScreenReaderMeets) {
  Start();
  std::set<std::string> met;
  const auto walkWindow = [&] { met.merge(AccessibilityWalk(*window).Names); };
  for (int tab = 0; tab < Find<QTabWidget>("ResultsTab").count(); ++tab) {
    Turn(tab);
    walkWindow();
  }
  Click("evaluation");
  walkWindow();
  for (const char* name : {"Equation:", "Next", "Back", "Best", "Save...", "Copy", "Fit Information", "Data Table", "X",
                           "Given Y:", "DY/DXn", "Minimum:", "History:"})
    EXPECT_TRUE(met.contains(name)) << name;
  // A box is called by its text; what it is for, its label says.
  for (auto* box : window->findChildren<QComboBox*>())
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(box)->relations(QAccessible::Label).empty())
        << box->objectName().toStdString();
  Click("evaluation");
  Turn(0);
  auto& book = Find<QTableView>("FitBook");
  EXPECT_TRUE(book.currentIndex().isValid());
  QAccessibleTableInterface* table = QAccessible::queryAccessibleInterface(&book)->tableInterface();
  EXPECT_EQ(table->cellAt(0, 0)->text(QAccessible::Name), "Quorvex version 9.0.0");
  for (const auto& model : project.Models) model->Solved = false;
  window->Refresh();
  walkWindow();  // with nothing to show
}

}  // namespace
}  // namespace quorvex
