#pragma once

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "plot/PlotEntries.h"

namespace quorvex {

// The field with a control of that name, of a plot or its first series.
inline PropertyField& Field(PlotEntries& entries, const std::string& control) {
  std::vector<FieldGroup*> groups;
  for (FieldPage& page : entries.Pages)
    for (FieldGroup& group : page.Groups) groups.push_back(&group);
  if (!entries.Series.empty()) groups.push_back(&entries.Series[0]);
  for (FieldGroup* group : groups)
    for (PropertyField& field : group->Fields)
      if (field.Control == control) return field;
  throw std::invalid_argument("no control " + control);
}

// Controls with what is entered there.
using Typed = std::vector<std::pair<std::string, FieldValue>>;

inline void Type(PlotEntries& entries, const Typed& typed) {
  for (const auto& [control, value] : typed) {
    PropertyField& field = Field(entries, control);
    ASSERT_EQ(field.Entry.index(), value.index()) << control;
    field.Entry = value;
  }
}

inline std::vector<std::string> Texts(PlotEntries& entries, const std::vector<std::string>& controls) {
  std::vector<std::string> texts;
  for (const std::string& control : controls) texts.push_back(std::get<std::string>(Field(entries, control).Entry));
  return texts;
}

// What is said of entries, and the control to blame: the first one, where none is named.
struct Refusal {
  Typed Entered;
  std::string Message, Control = "";
};

inline void ExpectRefusal(const PlotPage& plot, const Refusal& expected) {
  PlotEntries entries(plot);
  Type(entries, expected.Entered);
  const auto refusal = entries.Check();
  ASSERT_TRUE(refusal) << expected.Message;
  EXPECT_EQ(refusal->Message, expected.Message);
  EXPECT_EQ(refusal->Control, expected.Control.empty() ? expected.Entered[0].first : expected.Control);
}

}  // namespace quorvex
