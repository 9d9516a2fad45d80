#include <gtest/gtest.h>

#include "plot/PlotUndo.h"
#include "plot/Plots.h"

namespace quorvex {
namespace {

// Changes named after the title that they give the plot.
class PlotUndoTest : public testing::Test {
 protected:
  void Change(const std::string& title, std::string_view what, std::size_t limit = 15) {
    plot.PlotTitle = title;
    undo.Record(plot, what, limit);
  }
  std::string Undo() { return Title(undo.Undo()); }
  std::string Redo() { return Title(undo.Redo()); }
  std::string Title(const PlotPage* state) {
    if (state == nullptr) return "none";
    plot.Assign(*state);
    return plot.PlotTitle;
  }
  std::string Texts() { return undo.UndoText() + " | " + undo.RedoText(); }

  PlotClass plot = BarePlot();
  PlotUndo undo{plot};
};

TEST_F(PlotUndoTest, GoesBackAndForthThroughItsStates) {
  EXPECT_EQ(Texts(), "Can't &Undo | Can't &Redo");
  EXPECT_EQ(Undo(), "none");
  Change("a", "Zoom");
  Change("b", "Fit All");
  EXPECT_EQ(Texts(), "&Undo Fit All | Can't &Redo");
  EXPECT_EQ(Undo(), "a");
  EXPECT_EQ(Texts(), "&Undo Zoom | &Redo Fit All");
  EXPECT_EQ(Undo(), "");
  EXPECT_EQ(Texts(), "Can't &Undo | &Redo Zoom");
  EXPECT_EQ(Undo(), "none");
  EXPECT_EQ(Redo(), "a");
  EXPECT_EQ(Redo(), "b");
  EXPECT_EQ(Redo(), "none");
  EXPECT_EQ(Texts(), "&Undo Fit All | Can't &Redo");

  // What was taken back is gone with the next change.
  Undo();
  Change("c", "Import");
  EXPECT_EQ(Texts(), "&Undo Import | Can't &Redo");
  EXPECT_EQ(Undo(), "a");
  EXPECT_EQ(Redo(), "c");
}

TEST_F(PlotUndoTest, TakesTurnsThatFollowEachOtherForOne) {
  Change("zoom", "Zoom");
  for (const char* title : {"1", "2", "3"}) Change(title, kTurnChange);
  EXPECT_EQ(Undo(), "zoom");
  EXPECT_EQ(Redo(), "3");
  Change("4", kTurnChange);
  EXPECT_EQ(Undo(), "3") << "after a redo a turn is one of its own";
  Redo();
  undo.Saved();
  Change("5", kTurnChange);
  EXPECT_EQ(Undo(), "4") << "what was saved can be come back to";
  EXPECT_FALSE(undo.Changed());
}

TEST_F(PlotUndoTest, KeepsAsManyStatesAsItMay) {
  for (const char* title : {"a", "b", "c", "d"}) Change(title, "Zoom", 2);
  EXPECT_EQ(Undo(), "c");
  EXPECT_EQ(Undo(), "b");
  EXPECT_EQ(Undo(), "none");
  Change("e", "Zoom", 0);
  EXPECT_EQ(Texts(), "Can't &Undo | Can't &Redo");
  EXPECT_TRUE(undo.Changed());
  for (const char* title : {"f", "g"}) Change(title, kTurnChange, 0);
  EXPECT_EQ(Undo(), "none");
}

TEST_F(PlotUndoTest, KnowsTheStateThatWasSaved) {
  EXPECT_FALSE(undo.Changed());
  Change("a", "Zoom");
  EXPECT_TRUE(undo.Changed());
  Undo();
  EXPECT_FALSE(undo.Changed());
  Redo();
  undo.Saved();
  EXPECT_FALSE(undo.Changed());
  Undo();
  EXPECT_TRUE(undo.Changed());
  Change("b", "Zoom");
  Undo();
  EXPECT_TRUE(undo.Changed()) << "the saved state cannot be come back to";
}

}  // namespace
}  // namespace quorvex
