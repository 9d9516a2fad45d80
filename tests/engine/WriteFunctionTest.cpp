#include <gtest/gtest.h>

#include "TemporaryFolder.h"
#include "engine/EqClass.h"
#include "engine/MvClass.h"
#include "engine/UserModel.h"
#include "engine/WriteFunction.h"
#include "equation/Catalogue.h"
#include "equation/CodeLibrary.h"

namespace quorvex {
namespace {

TEST(WriteFunction, NamesTheFunctionAfterItsFile) {
  const TemporaryFolder folder;
  EqClass model{LocaleText()};
  model.SetID("a*x+b", {"a*x+b"});
  model.SetValue(1, 2);
  model.R2 = 0.75;
  ASSERT_EQ(WriteBasicFunction(model, folder.Path("line.bas")), 0);
  ASSERT_EQ(WriteCFunction(model, folder.Path("line.c")), 0);
  const std::string basic = folder.Read("line.bas"), inC = folder.Read("line.c");
  EXPECT_TRUE(basic.starts_with("public function line(x as double) as double\r\n")) << basic;
  EXPECT_NE(basic.find("'R2 = 0.75\r\n"), std::string::npos);
  EXPECT_NE(inC.find("double line(double x)\r\n"), std::string::npos) << inC;
  EXPECT_NE(inC.find("    double a = 2;\r\n"), std::string::npos);
}

TEST(WriteFunction, ReportsTheFileErrorsNumber) {
  const TemporaryFolder folder;
  EqClass model{LocaleText()};
  model.SetID("a*x", {"a*x"});
  EXPECT_EQ(WriteBasicFunction(model, folder.Path("none/line.bas")), 76);
  EXPECT_EQ(WriteCFunction(model, folder.Path("")), 75);
  EXPECT_EQ(WriteCFunction(model, "/dev/full"), 61);
}

// The text of a built-in model is that of its definition, in every form.
TEST(ModelText, RendersBothKindsOfModel) {
  EqClass one{LocaleText()};
  one.SetID("a*x^1.5+b", {"a*x^1.5+b"});
  one.SetValue(1, 0.5);
  one.SetValue(2, -1);
  MvClass several{LocaleText()};
  several.SetID("a*x1+b*x2", {"a*x1+b*x2"});
  EXPECT_EQ(one.GenerateTextInfix(0, 0), "Y = 0.5*x^1.5+-1");
  EXPECT_EQ(*one.GenerateExcelInfix("C3", true), "=((0.5 * (C3 ^ 1.5)) + -1)");
  EXPECT_EQ(*several.GenerateExcelInfix("C3", false), "=((0 * C3) + (0 * C4))");
  std::vector<std::string> InFixList, FnList;
  several.GenerateInfix(ExprType::C, InFixList, FnList);
  EXPECT_EQ(InFixList, std::vector<std::string>{"result = ((a * x[1]) + (b * x[2]));"});
}

// Nothing of the catalogues is beyond an export: all models have all four forms.
TEST(ModelText, CoversTheCatalogues) {
  for (int variables = 1; variables <= 20; ++variables) {
    for (const CatalogueModel& row : Catalogue(variables)) {
      const auto model = NewModelFor(static_cast<std::size_t>(variables), LocaleText());
      model->SetID(row.ID, {row.Definition});
      EXPECT_EQ(model->GenerateTextInfix(1, 0).substr(0, 4), "Y = ") << row.ID;
      EXPECT_TRUE(model->GenerateExcelInfix("A1", true)) << row.ID;
      for (const ExprType language : {ExprType::Basic, ExprType::C}) {
        const std::string source = model->ExportFunction(language, "f", {});
        EXPECT_EQ(source.find("supplied by the user"), std::string::npos) << row.ID;
      }
    }
  }
}

}  // namespace
}  // namespace quorvex
