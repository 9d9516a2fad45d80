#include "RecordingPrompter.h"
#include "selection/SelectionCase.h"
#include "selection/VarSelect.h"

namespace quorvex {
namespace {

std::vector<bool> Marks(const std::string& text) {
  std::vector<bool> marks;
  for (const char c : text) marks.push_back(c == '1');
  return marks;
}

TEST(VarSelect, RefusesWhatNoSearchCanBeMadeWith) {
  constexpr auto F = SelectionProcedure::Forward, B = SelectionProcedure::Backward, A = SelectionProcedure::AllSubsets;
  const std::string none =
                        "refuse: There are no independent variables left for the selection process. You need to "
                        "de-select at least two independent variables in the '",
                    one =
                        "refuse: There is only one independent variable left for the selection process. You need to "
                        "de-select at least one independent variable in the '",
                    enter = "refuse: p To Enter must be between 0.0 and 1.0.",
                    remove = "refuse: p To Remove must be between 0.0 and 1.0.",
                    most = "refuse: Maximum number of variables to return must be between 1 and 20.";
  const struct {
    SelectionProcedure Procedure;
    std::string Enter, Remove, Most, Exclude, Include;
    std::size_t Points;
    std::string Said;
  } cases[] = {
      {F, "0.05", "0.1", "20", "0000", "0000", 30, ""},
      {F, "", "0.1", "20", "0000", "0000", 30, enter},
      {F, "-0.1", "7", "0", "1111", "0000", 30, enter},
      {F, "1.01", "7", "0", "1111", "0000", 30, enter},
      {F, "nan", "7", "0", "1111", "0000", 30, enter},
      {F, "0.05", "1.5", "0", "1111", "0000", 30, remove},
      {F, "0.05", "a", "0", "1111", "0000", 30, remove},
      {F, "0.05", "0.05", "0", "1111", "0000", 30, "refuse: p To Enter must be less than p To Remove."},
      {F, "0.2", "0.1", "20", "0000", "0000", 30, "refuse: p To Enter must be less than p To Remove."},
      {F, "0", "1", "20", "0000", "0000", 30, ""},
      {F, "0.05", "0.1", "0", "1111", "0000", 30, most},
      {F, "0.05", "0.1", "21", "1111", "0000", 30, most},
      {F, "0.05", "0.1", "2.5", "1111", "0000", 30, most},
      {B, "0.05", "0.1", "20", "0000", "0000", 5,
       "refuse: There are too few data points to perform backward elimination. Please select another option, or "
       "exclude some of the independent variables."},
      {B, "0.05", "0.1", "20", "1000", "0000", 5, ""},
      {F, "0.05", "0.1", "20", "0000", "0000", 5, ""},
      {F, "0.05", "0.1", "20", "1111", "0000", 30, none + "Do not include' list to continue."},
      {F, "0.05", "0.1", "20", "1011", "1111", 30, one + "Do not include' list to continue."},
      {F, "0.05", "0.1", "20", "0000", "1111", 30, none + "Always include' list to continue."},
      {F, "0.05", "0.1", "20", "0001", "1110", 30, none + "Always include' list to continue."},
      {F, "0.05", "0.1", "20", "0001", "1100", 30, one + "Always include' list to continue."},
      {F, "0.05", "0.1", "20", "0011", "0011", 30, ""},
      {A, "0.05", "0.1", "1", "0000", "1100", 30,
       "refuse: The 'Always include' list has more variables than the maximum number of variables to return. Please "
       "de-select some of them or increase the maximum."},
      {A, "0.05", "0.1", "2", "0000", "1100", 30, ""}};
  for (const auto& c : cases) {
    VarSelect choices;
    choices.WhichModel = c.Procedure;
    choices.Exclude = Marks(c.Exclude);
    choices.Include = Marks(c.Include);
    RecordingPrompter user;
    EXPECT_EQ(choices.Accept(c.Enter, c.Remove, c.Most, c.Points, LocaleText(), user), c.Said.empty()) << &c - cases;
    EXPECT_EQ(user.Last(), c.Said) << &c - cases;
  }
}

TEST(VarSelect, AsksBeforeALongSearch) {
  VarSelect choices;
  choices.WhichModel = SelectionProcedure::AllSubsets;
  choices.Exclude.assign(19, false);
  choices.Include = choices.Exclude;
  choices.Include[4] = true;
  RecordingPrompter user;
  user.Answer = false;
  LocaleText comma{',', ';', '.', '.', ':'};
  EXPECT_FALSE(choices.Accept("0,05", "0,1", "20", 40, comma, user));
  EXPECT_EQ(user.Said, (std::vector<std::string>{"ask: There is a large number of combinations to examine (2 ^ 18). Do "
                                                 "you wish to continue?"}));
  EXPECT_EQ(choices.PToEnter, 0.05);
  user.Answer = true;
  EXPECT_TRUE(choices.Accept("0,05", "0,1", "20", 40, comma, user));
}

TEST(PrepareSelection, TransformsYOrSaysWhereThatFails) {
  constexpr auto Q = YTransform::Square, R = YTransform::Root, L = YTransform::Ln, I = YTransform::Inverse,
                 IQ = YTransform::InverseSquare, IR = YTransform::InverseRoot, IL = YTransform::InverseLn;
  const std::string failed = "An error occurred during the variable transformation process. ";
  const struct {
    YTransform Transform;
    double Y;  // in row 4
    double Value;
    std::string Name, Error;
  } cases[] = {{YTransform::None, -4, -4, "Y", ""},
               {Q, -4, 16, "Y^2", ""},
               {R, 4, 2, "Sqrt(Y)", ""},
               {L, 1, 0, "Ln(Y)", ""},
               {I, -4, -0.25, "1/Y", ""},
               {IQ, -4, 0.0625, "1/Y^2", ""},
               {IR, 4, 0.5, "1/Sqrt(Y)", ""},
               {IL, 1024, 1 / std::log(1024), "1/Ln(Y)", ""},
               {R, -4.5, 0, "", "Cannot take the square root of -4.5 in row 4."},
               {IR, -4.5, 0, "", "Cannot take the square root of -4.5 in row 4."},
               {IR, 0, 0, "", "Cannot take the inverse of 0 in row 4."},
               {L, 0, 0, "", "Cannot take the Log10 of 0 in row 4."},
               {L, -1e-9, 0, "", "Cannot take the Log10 of -1E-09 in row 4."},
               {IL, -1, 0, "", "Cannot take the Log10 of -1 in row 4."},
               {IL, 1, 0, "", "Cannot take the inverse of 0 in row 4."},
               {I, 0, 0, "", "Cannot take the inverse of 0 in row 4."},
               {IQ, 0, 0, "", "Cannot take the inverse of 0 in row 4."},
               {Q, 1e200, 0, "", failed + "Y^2 is out of range in row 4."}};
  for (const auto& c : cases) {
    // Row 2 is incomplete, so that rows and points differ.
    DataSheet sheet = SelectionSheet({{1, 2, 3, 4}, {2, 3, 5, 4}, {10, 3, 4, c.Y}});
    sheet.Cells.GridClearRange({2, 3, 2, 3});
    VarSelect choices = ChoicesFor(sheet);
    choices.YTransform = c.Transform;
    const auto data = PrepareSelection(GatherData(sheet, PointOrder::OfSheet), sheet, choices, LocaleText());
    ASSERT_EQ(static_cast<bool>(data), c.Error.empty()) << &c - cases;
    if (!data) {
      EXPECT_EQ(data.error(), c.Error);
      continue;
    }
    EXPECT_EQ(data->YName, c.Name);
    ASSERT_EQ(data->N(), 3u);
    EXPECT_DOUBLE_EQ(data->Y[2], c.Value);
  }
}

TEST(PrepareSelection, AddsSquaresAndProductsThatAreNotLeftOut) {
  DataSheet sheet = SelectionSheet({{1, 2, 3}, {2, 3, 5}, {7, 8, 9}, {1, 1, 2}});
  sheet.Headers[1] = "GNP";
  VarSelect choices = ChoicesFor(sheet, SelectionProcedure::Forward, true);
  EXPECT_EQ(CandidateNames(sheet.Headers, 3, true),
            (std::vector<std::string>{"X1", "GNP", "X3", "X1^2", "GNP^2", "X3^2", "X1*GNP", "X1*X3", "GNP*X3"}));
  choices.Exclude = Marks("101001000");
  choices.Include = Marks("110000001");
  SelectionData data = DataFor(sheet, choices);
  EXPECT_EQ(data.Names, (std::vector<std::string>{"GNP", "X1^2", "GNP^2", "X1*GNP", "X1*X3", "GNP*X3"}));
  EXPECT_EQ(data.Always, Marks("100001"));
  EXPECT_EQ(data.X[1], (std::vector<double>{1, 4, 9}));
  EXPECT_EQ(data.X[5], (std::vector<double>{14, 24, 45}));

  sheet.Cells.SetGridCellNumber(2, 3, 1e200);
  choices.Exclude.assign(9, false);
  const auto overflow = PrepareSelection(GatherData(sheet, PointOrder::OfSheet), sheet, choices, LocaleText());
  ASSERT_FALSE(overflow);
  EXPECT_EQ(overflow.error(), "An error occurred while taking the variable cross products.");
}

TEST(GatherForSelection, WantsThreeCompleteRows) {
  DataSheet sheet = SelectionSheet({{1, 2, 3}, {2, 3, 5}, {7, 8, 9}});
  Settings settings;
  settings.Set("missingdatawarning", "1");
  RecordingPrompter user;
  EXPECT_TRUE(GatherForSelection(sheet, settings, user));
  sheet.Cells.SetGridCellNumber(4, 1, 5);
  user.Answer = false;
  EXPECT_FALSE(GatherForSelection(sheet, settings, user));
  EXPECT_EQ(user.Last(),
            "ask: Row 4, column 'X2' is empty. 1 row of the data is incomplete and is left out of the solution. Do you "
            "want to continue?");
  sheet.Cells.GridClearRange({2, 3, 2, 3});
  EXPECT_FALSE(GatherForSelection(sheet, settings, user));
  EXPECT_EQ(user.Last(), "refuse: You need at least 3 data points in order to perform variable selection.");
}

}  // namespace
}  // namespace quorvex
