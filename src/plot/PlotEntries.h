#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "plot/PlotPage.h"
#include "plot/PropertyField.h"

namespace quorvex {

// What the user has entered into the properties of a plot, beside the plot as it was. Only what was changed is
// written, and looked at but for the limits of the axes: a number keeps the digits that its control does not show, and
// what the program has chosen, such as a scale of many decades, is not refused to the user.
class PlotEntries {
 public:
  explicit PlotEntries(const PlotPage& plot);

  std::vector<FieldPage> Pages;
  std::vector<FieldGroup> Series;  // one group a series of PlotData

  const PlotPage& Original() const { return *original_; }
  bool Changed() const;

  // Why the entries cannot be had, and the control to blame, on the page of which series where it is one of those.
  struct Refusal {
    std::string Message, Control;
    std::optional<std::size_t> Series;
  };
  std::optional<Refusal> Check() const;
  std::optional<Refusal> CheckGroup(const FieldGroup& group) const;

  // Makes the plot, of the same fields, what the entries say, which have passed, and creates it: false as CreateGraph.
  bool Create(PlotPage& plot, Prompter& prompter) const;

  // The same on trial. False, and the plot is left alone or as it was, where the entries do not pass or it cannot be
  // created with them.
  bool Preview(PlotPage& plot) const;
  // Makes the plot what it was.
  void TakeBack(PlotPage& plot) const;

  // Enters limits and ticks that suit the data, for axes as the entries have them. False where there are none.
  bool CalcScale();

  // Makes the entries, which have passed, what new plots begin with.
  void SaveDefaults(Settings& settings) const;

 private:
  const LocaleText& Locale() const { return original_->Locale; }
  bool IsChanged(const PropertyField& field) const { return field.Entry != ValueOf(field, Locale()); }
  template <typename Predicate>
  bool AnyField(Predicate holds) const;
  std::optional<Refusal> CheckRange(const PropertyField& field) const;
  void Write(PlotPage& plot) const;
  void WriteSeries(PlotPage& plot) const;
  bool AutoFormat() const;

  std::unique_ptr<PlotPage> original_;
};

}  // namespace quorvex
