#include <gtest/gtest.h>

#include "sheet/UndoLabel.h"

namespace quorvex {
namespace {

TEST(UndoLabelOfModel, NamesAModelByItsFirstCharacters) {
  const auto text = [](const char* name) { return UndoLabelOfModel(UndoOperation::Solve, name).Text; };
  EXPECT_EQ(text("a*x+b"), "&Undo Solve 'a*x+b...'");
  EXPECT_EQ(text("0123456789abcdefgh"), "&Undo Solve '0123456789abcde...'");
  EXPECT_EQ(text("0123456789abcd\xC3\xA4\xC3\xB6"), "&Undo Solve '0123456789abcd\xC3\xA4...'");
}

}  // namespace
}  // namespace quorvex
