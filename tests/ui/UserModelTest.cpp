// User-defined models and the export of models, used as a user does: by menus, keys and dialogs.

#include <QCheckBox>
#include <QClipboard>
#include <QPlainTextEdit>
#include <QRadioButton>

#include "Accessibility.h"
#include "Frame.h"
#include "engine/UserModel.h"
#include "files/ui/usereq.h"
#include "results/ui/frmEquationText.h"
#include "results/ui/frmExcelRef.h"
#include "results/ui/frmModelCode.h"
#include "usermodels/UserModels.h"
#include "usermodels/ui/frmChooseModel.h"
#include "usermodels/ui/frmCopyModel.h"
#include "usermodels/ui/frmEqEdit.h"
#include "usermodels/ui/frmFunc.h"
#include "usermodels/ui/frmPartial.h"
#include "usermodels/ui/frmRules.h"

namespace quorvex {
namespace {

// What a dialog opens is answered in turn while the click on its button lasts.
class UserModelWindows : public Frame {
 protected:
  void Then(const char* form, std::function<void(QDialog&)> action) {
    dialogs.Do([=](QDialog& dialog) {
      ASSERT_EQ(dialog.objectName(), form);
      action(dialog);
    });
  }
  static void Choose(QDialog& form, const char* list, int row) {
    List(form, list).setCurrentRow(row);
    QApplication::processEvents();
  }
  static void Close(QDialog& form) { QTest::keyClick(&form, Qt::Key_Escape); }

  static QString Status(QDialog& form) { return Text(form, "lblStatus"); }

  ModelClass& Add(const std::string& id, const std::vector<std::string>& lines) {
    ModelCheck check = CheckUserModel({id, "", lines, {}}, Document(), nullptr);
    EXPECT_NE(check.Model, nullptr) << check.Message;
    ModelClass& model = StoreUserModel(Document(), std::move(check.Model), nullptr);
    Document().Changed = false;
    return model;
  }
  Said Ids() {
    Said ids;
    for (const ModelClass* model : UserModels(Document())) ids.push_back(model->id);
    return ids;
  }
};

TEST_F(UserModelWindows, AddAModelAfterItIsRight) {
  Start();
  Then("usereq", [](QDialog& form) {
    Click(form, "cmdAdd");
    ASSERT_EQ(List(form, "lstModels").count(), 1);
    EXPECT_TRUE(In<QPlainTextEdit>(form, "txtModel").toPlainText().contains("Y = a*exp(-b*x)+f1\nF1 = c"));
    Close(form);
  });
  Then("frmEqEdit", [](QDialog& form) {
    EXPECT_EQ(form.windowTitle(), "Add User Model");
    EXPECT_EQ(form.focusWidget(), &LineBox(form, "TxtID"));
    EXPECT_FALSE(LineBox(form, "TxtFn1").isVisible());
    EXPECT_EQ(Status(form), "For example a*exp(-b*x)");
    QTest::keyClicks(&LineBox(form, "TxtID"), "Decay");
    QTest::keyClicks(&LineBox(form, "TxtFn0"), "a*exp(-b*x+)");
    EXPECT_EQ(Status(form), "Not a model yet: Unexpected token ')'.");
    Click(form, "cmdOK");
    EXPECT_EQ(form.focusWidget(), &LineBox(form, "TxtFn0"));
    EXPECT_EQ(LineBox(form, "TxtFn0").selectedText(), ")");
    EXPECT_EQ(LineBox(form, "TxtFn0").selectionStart(), 11);

    LineBox(form, "TxtFn0").setText("a*exp(-b*x)+f1");
    auto* add = form.findChild<QPushButton*>("cmdAdd");
    auto* remove = form.findChild<QPushButton*>("cmdRemove");
    EXPECT_FALSE(remove->isEnabled());
    for (int n = 1; n <= 9; ++n) {
      EXPECT_EQ(add->text().remove('&'), "Add F" + QString::number(n));
      Click(form, "cmdAdd");
      EXPECT_EQ(form.focusWidget(), &LineBox(form, ("TxtFn" + std::to_string(n)).c_str()));
    }
    EXPECT_FALSE(add->isEnabled());
    for (int n = 9; n >= 2; --n) {
      EXPECT_EQ(remove->text().remove('&'), "Remove F" + QString::number(n));
      Click(form, "cmdRemove");
    }
    EXPECT_TRUE(LineBox(form, "TxtFn1").isVisible());
    EXPECT_FALSE(LineBox(form, "TxtFn2").isVisible());
    Click(form, "cmdOK");
    EXPECT_EQ(form.focusWidget(), &LineBox(form, "TxtFn1"));

    LineBox(form, "TxtFn1").setText(QString::fromUtf8("c+\xC3\xA4*\xC3\xB6"));
    Click(form, "cmdOK");
    EXPECT_EQ(LineBox(form, "TxtFn1").selectedText(), QString::fromUtf8("\xC3\xA4"));
    LineBox(form, "TxtFn1").setText("c");
    In<QPlainTextEdit>(form, "TxtDesc").setPlainText("two\nlines");
    EXPECT_EQ(Status(form), "Compiles. Coefficients: a, b, c.");
    QTest::keyClick(&LineBox(form, "TxtFn1"), Qt::Key_Return);
  });
  for (int i = 0; i < 3; ++i) dialogs.Press(QMessageBox::Ok);
  Trigger("mnuModelsUser");
  EXPECT_EQ(
      dialogs.Said,
      (Said{"The model you entered is not valid.\nUnexpected token ')'. Please check the equation syntax.",
            "The supporting function F1 must have a valid entry. If you intend not to use this function, you can "
            "remove it by clicking on the 'Remove F1' button.",
            "The model you entered is not valid.\nUnexpected token '\xC3\xA4'. Please check the equation syntax."}));
  ASSERT_EQ(Ids(), Said{"Decay"});
  EXPECT_EQ(Document().Models.Find("decay")->Description, "two\r\nlines");
  EXPECT_TRUE(Active().isWindowModified());
}

TEST_F(UserModelWindows, EditAModelAndThenItsRules) {
  Start();
  Add("Decay", {"a*exp(-b*x)"}).SetRule(1, "* YMax");
  Then("usereq", [](QDialog& form) {
    QTest::keyClick(&List(form, "lstModels"), Qt::Key_Return);
    EXPECT_TRUE(form.isVisible());
    Close(form);
  });
  Then("frmEqEdit", [](QDialog& form) {
    EXPECT_EQ(form.windowTitle(), "Edit User Model");
    LineBox(form, "TxtFn0").setText("a*exp(-k*x)");
    Click(form, "cmdOK");
  });
  dialogs.Press(QMessageBox::Yes);
  Then("frmRules", [](QDialog& form) {
    EXPECT_EQ(form.windowTitle(), "User Defined Model Rules");
    EXPECT_EQ(Text(form, "lblModel"), "Model: Decay");
    EXPECT_EQ(List(form, "lstVars").item(0)->text(), "a: 1 * YMax");
    EXPECT_EQ(List(form, "lstOperation").currentItem()->text(), "* YMax");
    LineBox(form, "txtValue").setText("ten");
    Choose(form, "lstVars", 1);
    EXPECT_EQ(List(form, "lstVars").currentRow(), 0);
    EXPECT_EQ(form.focusWidget(), &LineBox(form, "txtValue"));
    QTest::keyClicks(&LineBox(form, "txtValue"), "0.5");  // over what is selected
    Click(form, "cmdAssign");
    EXPECT_EQ(List(form, "lstVars").item(0)->text(), "a: 0.5 * YMax");
    Choose(form, "lstVars", 1);
    EXPECT_EQ(List(form, "lstOperation").currentItem()->text(), "Value");
    List(form, "lstOperation").setCurrentRow(2);
    form.accept();
  });
  dialogs.Press(QMessageBox::Yes);  // commit?
  dialogs.Press(QMessageBox::Ok);   // no number
  dialogs.Press(QMessageBox::No);
  Trigger("mnuModelsUser");
  EXPECT_EQ(
      dialogs.Said,
      (Said{"After modifying a user defined model, you should check to make sure the rules for the initial estimates "
            "are still valid. Would you like to examine the rules now?",
            "Commit changes to variable 'a'?", "Please enter a valid rule value for variable 'a'",
            "Commit changes to variable 'k' before closing?"}));
  const ModelClass& model = *Document().Models.Find("Decay");
  EXPECT_EQ(model.FunctionList(0), "a*exp(-k*x)");
  EXPECT_EQ(model.Rules(1) + model.RuleConstant(1) + model.Rules(2), "* YMax0.5Value");

  // Rules by the menu, which has one model to offer.
  Then("frmRules", [](QDialog& form) {
    Click(form, "cmdDefaults");
    form.accept();
  });
  dialogs.Press(QMessageBox::Yes);
  Trigger("mnuModelsRules");
  EXPECT_EQ(model.Rules(1) + model.RuleConstant(1), "Value1");
}

TEST_F(UserModelWindows, CopyAndRemoveModels) {
  Start();
  Add("P", {"a*x^2"});
  Add("Q", {"b*x^3"});
  Then("usereq", [](QDialog& form) {
    Choose(form, "lstModels", 1);
    Click(form, "cmdCopy");
    EXPECT_EQ(List(form, "lstModels").currentItem()->text(), "Copy of Q");
    Choose(form, "lstModels", 0);
    Click(form, "cmdEdit");
    Click(form, "cmdRemove");
    EXPECT_EQ(List(form, "lstModels").currentItem()->text(), "Q");
    Click(form, "cmdRemoveAll");
    EXPECT_EQ(List(form, "lstModels").count(), 2);
    Click(form, "cmdRemoveAll");
    EXPECT_EQ(List(form, "lstModels").count(), 0);
    EXPECT_FALSE(In<QPushButton>(form, "cmdEdit").isEnabled());
    EXPECT_TRUE(In<QPushButton>(form, "cmdLoad").isEnabled());
    AccessibilityWalk{form};
    Close(form);
  });
  Then("frmEqEdit", [](QDialog& form) {
    EXPECT_EQ(LineBox(form, "TxtID").text(), "Copy of Q");
    Click(form, "cmdOK");
  });
  Then("frmEqEdit", [](QDialog& form) {
    Click(form, "cmdCopyModel");
    EXPECT_EQ(LineBox(form, "TxtID").text(), "Copy of a*x+b");
    EXPECT_EQ(LineBox(form, "TxtFn0").text(), "a*x+b");
    Close(form);
  });
  dialogs.Press(QMessageBox::Ok);
  Then("frmCopyModel", [](QDialog& form) {
    EXPECT_EQ(List(form, "lstRows").count(), 301);
    QTest::keyClicks(&LineBox(form, "txtFind"), "no such model");
    QTest::keyClick(&LineBox(form, "txtFind"), Qt::Key_Return);
    EXPECT_TRUE(form.isVisible());
    LineBox(form, "txtFind").clear();
    QTest::keyClicks(&LineBox(form, "txtFind"), "a*X+b ");
    EXPECT_TRUE(List(form, "lstRows").currentItem()->text().startsWith("a*x+b "));
    QTest::keyClick(&LineBox(form, "txtFind"), Qt::Key_Return);
  });
  for (const auto answer : {QMessageBox::Yes, QMessageBox::No, QMessageBox::Yes}) dialogs.Press(answer);
  Trigger("mnuModelsUser");
  EXPECT_EQ(dialogs.Said.front(),
            "You are EDITING an existing equation (not ADDING a new equation). Copying another equation will overwrite "
            "this equation unless the changes are Cancelled in this window.");
  EXPECT_EQ(Ids(), Said{});
}

TEST_F(UserModelWindows, InsertFunctionsAndTypeDerivatives) {
  Start();
  Then("usereq", [](QDialog& form) {
    Click(form, "cmdAdd");
    Close(form);
  });
  Then("frmEqEdit", [](QDialog& form) {
    LineBox(form, "TxtID").setText("m");
    LineBox(form, "TxtFn0").setFocus();
    QTest::keyClicks(&LineBox(form, "TxtFn0"), "a*");
    Click(form, "cmdTemplate");
    EXPECT_EQ(form.focusWidget(), &LineBox(form, "TxtFn0"));
    QTest::keyClicks(form.focusWidget(), "-b*x");
    EXPECT_EQ(LineBox(form, "TxtFn0").text(), "a*exp(-b*x)");
    Click(form, "cmdPartial");
    Click(form, "cmdOK");
  });
  Then("frmFunc", [](QDialog& form) {
    EXPECT_EQ(form.windowTitle(), "Model Functions");
    QTest::keyClicks(&LineBox(form, "txtFind"), "exp(");
    QTest::keyClick(&LineBox(form, "txtFind"), Qt::Key_Return);
  });
  Then("frmPartial", [](QDialog& form) {
    EXPECT_EQ(Text(form, "lblPartial").remove('&'), "Partial derivative of 'a'");
    LineBox(form, "txtPartial").setText("exp(-k*x)");
    Choose(form, "lstVars", 1);
    EXPECT_EQ(List(form, "lstVars").currentRow(), 0);
    LineBox(form, "txtPartial").setText("exp(-b*x)");
    Choose(form, "lstVars", 1);
    EXPECT_EQ(LineBox(form, "txtPartial").text(), "Numerical");
    LineBox(form, "txtPartial").setText("-a*x*exp(-b*x)");
    form.accept();
  });
  for (const auto answer : {QMessageBox::Yes, QMessageBox::Ok, QMessageBox::Yes, QMessageBox::Yes})
    dialogs.Press(answer);
  Trigger("mnuModelsUser");
  EXPECT_EQ(dialogs.Said,
            (Said{"Commit changes to variable 'a'?",
                  "The derivative entered for variable 'a' contains the variable 'k' which does not appear "
                  "in the original equation. ",
                  "Commit changes to variable 'a'?", "Commit changes to variable 'b' before closing?"}));
  const ModelClass& model = *Document().Models.Find("m");
  EXPECT_EQ(model.Derivatives(1), "exp(-b*x)");
  EXPECT_EQ(model.Derivatives(2), "-a*x*exp(-b*x)");
}

TEST_F(UserModelWindows, TravelByFiles) {
  Start();
  Add("P", {"a*x^2"});
  Add("Q", {"b*x^3"});
  dialogs.ChooseFile(folder.Path("models"));
  Trigger("mnuModelsSave");
  ASSERT_TRUE(QFile::exists(QString::fromStdString(folder.Path("models.equ"))));

  Trigger("mnuFileNew");
  const std::string file = folder.Path("models.equ");
  Add("p", {"a*x^4"});
  dialogs.ChooseFile(file);
  Then("frmChooseModel", [](QDialog& form) {
    EXPECT_TRUE(In<QPlainTextEdit>(form, "txtExisting").toPlainText().contains("Y = a*x^4"));
    EXPECT_TRUE(In<QPlainTextEdit>(form, "txtImported").toPlainText().contains("Y = a*x^2"));
    Click(form, "cmdImported");
  });
  EXPECT_EQ(SaidBy("mnuModelsImport"), "2 user defined models have been imported from '" + file + "'.");
  EXPECT_EQ(Ids(), (Said{"P", "Q"}));
  EXPECT_EQ(Document().Models.Find("P")->FunctionList(0), "a*x^2");
  EXPECT_TRUE(Active().isWindowModified());

  Add("R", {"c*x"});
  dialogs.Press(QMessageBox::Yes);
  dialogs.ChooseFile(file);
  EXPECT_EQ(SaidBy("mnuModelsLoad"), "2 user defined models have been read from '" + file + "'.");
  EXPECT_EQ(Ids(), (Said{"P", "Q"}));
}

TEST_F(UserModelWindows, ExportTheModelThatIsChosen) {
  Start();
  Add("P", {"a*x^2"}).SetValue(1, 1.5);
  Add("Q", {"b*x"}).SetValue(1, 2.5);

  const auto choose = [this](int row) {
    Then("frmCopyModel", [row](QDialog& form) {
      List(form, "lstRows").setCurrentRow(row);
      form.accept();
    });
  };
  choose(1);
  dialogs.ChooseFile(folder.Path("fit"));
  Trigger("mnuModelsC");
  EXPECT_NE(folder.Read("fit.c").find("double fit(double x)"), std::string::npos);
  ModelClass& solved = *Document().Models.Find("P");
  solved.Solved = true;  // the only one, so there is nothing to choose
  dialogs.ChooseFile(folder.Path("fit"));
  Trigger("mnuModelsBasic");
  EXPECT_NE(folder.Read("fit.bas").find("const a as double = 1.5"), std::string::npos);

  Then("frmEquationText", [](QDialog& form) {
    EXPECT_EQ(In<QPlainTextEdit>(form, "txtEquation").toPlainText(), "Y = 1.5*x^2");
    Click(form, "optNames");
    Click(form, "chkAppend");
    Click(form, "cmdCopy");
    Close(form);
  });
  Trigger("mnuModelsText");
  EXPECT_EQ(QApplication::clipboard()->text().remove('\r'), "Y = a*x^2\n\na = 1.5");
  EXPECT_EQ(session.Preferences.Text("ReplaceOption", "TextExport"), "1");

  Then("frmModelCode", [this](QDialog& form) {
    EXPECT_TRUE(In<QPlainTextEdit>(form, "txtCode").toPlainText().contains("def model(x):"));
    In<QComboBox>(form, "cmbLanguage").setCurrentText("R");
    Click(form, "cmdCopy");
    dialogs.ChooseFile(folder.Path("fit"));
    Click(form, "cmdSave");
    Close(form);
  });
  Trigger("mnuModelsCode");
  EXPECT_TRUE(QApplication::clipboard()->text().contains("model <- function(x) {\n    a <- 1.5\n"));
  EXPECT_NE(folder.Read("fit.r").find("fit <- function(x) {"), std::string::npos);
  EXPECT_EQ(session.Preferences.Text("CodeFile", "TextExport"), "model.r");

  Then("frmExcelRef", [](QDialog& form) {
    LineBox(form, "txtColumn").setText("XFD");
    form.accept();
    EXPECT_TRUE(form.isVisible());
    LineBox(form, "txtColumn").setText("c");
    LineBox(form, "txtRow").setText("7");
    form.accept();
  });
  for (int i = 0; i < 2; ++i) dialogs.Press(QMessageBox::Ok);
  Trigger("mnuModelsFormula");
  EXPECT_EQ(dialogs.Said[0], "Please enter an Excel worksheet column from 'A' to 'IV'.");
  EXPECT_TRUE(QApplication::clipboard()->text().contains("C7"));
}

// Each of the dialogs for the keyboard and for a screen reader.
TEST_F(UserModelWindows, CanBeHeardAndReachedByKeys) {
  Project project = NewProject(2, false, {});
  ModelClass& plane = StoreUserModel(
      project, CheckUserModel({"Plane", "", {"a*x1+b*x2+f1", "c"}, {}}, project, nullptr).Model, nullptr);
  usereq list(nullptr, project, session.Preferences);
  frmEqEdit editor(nullptr, project, DraftOf(plane), &plane);
  frmRules rules(nullptr, plane, {});
  frmPartial partials(nullptr, plane);
  frmFunc functions(nullptr, 2);
  frmCopyModel copy(nullptr, "Copy Model", UserModels(project));
  frmChooseModel choose(nullptr, plane, plane);
  frmEquationText text(nullptr, plane, session.Preferences);
  frmExcelRef formula(nullptr, plane);
  frmModelCode code(nullptr, plane, session.Preferences);
  const std::pair<QDialog*, std::set<std::string>> cases[] = {
      {&list, {"Models", "Plane", "Definition:", "Remove All", "Close"}},
      {&editor,
       {"Model ID:", "Model, Y =", "Supporting function F1 =", "Description:", "Add F2", "Remove F1",
        "Compiles. Coefficients: a, b, c."}},
      {&rules, {"Variables", "Operation", "Value:", "a: 1 (Value)", "Assign"}},
      {&partials, {"Variables", "Partial derivative of 'a'", "b"}},
      {&functions, {"Find:", "Function", "exp(u)   e to the power u"}},
      {&copy, {"Model", "Plane   a*x1+b*x2+f1"}},
      {&choose, {"Existing model:", "Imported model:", "Keep Existing Model", "Use Imported Model"}},
      {&text, {"Equation:", "Append the parameters", "Copy"}},
      {&code, {"Language:", "Code:", "Copy", "Save..."}},
      {&formula, {"Column:", "Row:", "The variables are in neighbouring columns"}},
  };
  for (const auto& [form, names] : cases) {
    form->show();
    QTest::qWait(10);
    const std::set<std::string> met = AccessibilityWalk(*form).Names;
    for (const std::string& name : names) EXPECT_TRUE(met.contains(name)) << form->objectName().toStdString() << name;
    ExpectMnemonicsDoNotMeet(*form);
    for (const auto* rows : form->findChildren<QListWidget*>()) EXPECT_GE(rows->currentRow(), 0);
    EXPECT_LE(form->sizeHint().width(), 800);
    EXPECT_LE(form->sizeHint().height(), 600);
    form->close();
  }
}

}  // namespace
}  // namespace quorvex
