#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "plot/PlotPage.h"

namespace quorvex {

// What the value of a template's key is.
enum class TemplateKind { Whole, Real, Boolean, Color, Text, Percent, Degrees };

// A key of a plot template: what it is called, what it says and which field it says it of.
struct TemplateKey {
  std::string Key;
  std::string Twin;   // another name for it, which is read and not written; empty: none
  std::string Group;  // of the keys that are saved together
  TemplateKind Kind = TemplateKind::Text;
  std::optional<double> Least, Most;
  std::string Prompt;
  bool WhereUsed = false;  // a template has no line for it where there is no value

  // The field's value as a line has it; nothing where the plot has no such field or its text is too long.
  std::function<std::optional<std::string>(PlotPage&)> Value;
  // Sets the field to what a line says, where that is a value for it.
  std::function<void(PlotPage&, std::string_view)> Set;
  // What a user who is asked for the value sees first, where it isn't Value.
  std::function<std::optional<std::string>(PlotPage&)> Offered = nullptr;
};

// A field of a plot, by way of the plot: TemplateField<PlotClass> is the whole of one, and
// [&PlotClass::X][&PlotAxis::Min] a field of its X axis. It may stand for none, as of a series that a plot does not
// have, or for the same of several.
template <typename T>
class TemplateField {
 public:
  using Find = std::function<std::vector<T*>(PlotPage&)>;
  explicit TemplateField(Find find) : find_(std::move(find)) {}

  std::vector<T*> In(PlotPage& plot) const { return find_(plot); }

  // `part` is a pointer to a member of T or a function that takes one from it.
  template <typename Part>
  auto operator[](Part part) const {
    using Member = std::remove_reference_t<std::invoke_result_t<Part, T&>>;
    return TemplateField<Member>([find = find_, part](PlotPage& plot) {
      std::vector<Member*> members;
      for (T* whole : find(plot)) members.push_back(&std::invoke(part, *whole));
      return members;
    });
  }

 private:
  Find find_;
};

// The number that `value` says; `current` where it says none, or one that T cannot hold or that lies outside of the
// limits. A whole number is rounded to, ties to even.
template <typename T>
T CheckTemplateRange(std::string_view value, T current, std::optional<double> minimum, std::optional<double> maximum) {
  const std::optional<double> number = NumericText(value);
  if (!number) return current;
  double taken = *number;
  try {
    if constexpr (std::is_integral_v<T>) taken = RoundToInt32(taken);
  } catch (const NumericFault&) {
    return current;
  }
  if ((minimum && taken < *minimum) || (maximum && taken > *maximum)) return current;
  return static_cast<T>(taken);
}

// True for "true", "yes", "t" and "y" in any case.
bool ParseTemplateBoolean(std::string_view text);

// "(R, G, B)" of a colour, whose low byte is red.
std::string ColorToText(std::int32_t color);
// The way back. The parentheses may be missing, as where a user types a colour. Nothing where the text is no colour.
std::optional<std::int32_t> TextToColor(std::string_view text);

// Makes the keys of a template in order, those of a kind alike. `words` are what a prompt asks for, as in "the width
// for line 1" and, for a Boolean, "Display the legend".
class TemplateKeyList {
 public:
  std::vector<TemplateKey> Take() { return std::move(keys_); }

  // The group of the keys that follow.
  void Group(std::string name) { group_ = std::move(name); }
  // What their names begin with for those of their twins; empty: they have none.
  void TwinPrefix(std::string prefix) { twinPrefix_ = std::move(prefix); }
  // Gives the last key another name or another prompt.
  void Twin(std::string name) { keys_.back().Twin = std::move(name); }
  void Prompt(std::string prompt) { keys_.back().Prompt = std::move(prompt); }
  // Leaves the last key out of the templates of plots that make no use of it.
  void WhereUsed(std::function<bool(PlotPage&)> used) {
    TemplateKey& key = keys_.back();
    key.WhereUsed = true;
    key.Offered = key.Value;
    key.Value = [value = key.Value, used = std::move(used)](PlotPage& plot) {
      return used(plot) ? value(plot) : std::nullopt;
    };
  }

  // T is a 16-bit or 32-bit integer, or a 32-bit or 64-bit real.
  template <typename T>
  void Number(std::string key, const std::string& words, const TemplateField<T>& field,
              std::optional<double> least = {}, std::optional<double> most = {});
  // T is bool, or the integer that stands for one.
  template <typename T>
  void Boolean(std::string key, const std::string& words, const TemplateField<T>& field);
  void Color(std::string key, const std::string& words, const TemplateField<std::int32_t>& field);
  // A text of one line.
  void Text(std::string key, const std::string& words, const TemplateField<std::string>& field);
  // One of several, whose ends are written as "\n" and backslashes as "\\".
  void Lines(std::string key, const std::string& words, const TemplateField<std::string>& field);
  // A box's place, in percent of the plot's size.
  void Percent(std::string key, const std::string& words, PlotBox PlotPage::*box, float PlotBox::*place,
               std::int32_t PlotPage::*size);
  // One angle of the view. A prompt offers the other one.
  void Degrees(std::string key, const std::string& words, double ViewAngles::*angle, double ViewAngles::*offered,
               double most);

 private:
  TemplateKey& Add(std::string key, TemplateKind kind, std::string prompt);
  template <typename T>
  TemplateKey& AddField(std::string key, TemplateKind kind, std::string prompt, const TemplateField<T>& field,
                        std::function<std::optional<std::string>(const T&)> text,
                        std::function<void(T&, std::string_view)> set);
  static std::string RangeText(std::optional<double> least, std::optional<double> most);

  std::vector<TemplateKey> keys_;
  std::string group_, twinPrefix_;
};

template <typename T>
TemplateKey& TemplateKeyList::AddField(std::string key, TemplateKind kind, std::string prompt,
                                       const TemplateField<T>& field,
                                       std::function<std::optional<std::string>(const T&)> text,
                                       std::function<void(T&, std::string_view)> set) {
  TemplateKey& added = Add(std::move(key), kind, std::move(prompt));
  added.Value = [field, text = std::move(text)](PlotPage& plot) -> std::optional<std::string> {
    const std::vector<T*> fields = field.In(plot);
    return fields.empty() ? std::nullopt : text(*fields[0]);
  };
  added.Set = [field, set = std::move(set)](PlotPage& plot, std::string_view value) {
    for (T* each : field.In(plot)) set(*each, value);
  };
  return added;
}

template <typename T>
void TemplateKeyList::Number(std::string key, const std::string& words, const TemplateField<T>& field,
                             std::optional<double> least, std::optional<double> most) {
  const auto text = [](const T& number) {
    if constexpr (std::is_integral_v<T>)
      return std::to_string(number);
    else
      return ShortestNumber(number);
  };
  const auto set = [least, most](T& number, std::string_view value) {
    number = CheckTemplateRange(value, number, least, most);
  };
  TemplateKey& added = AddField<T>(std::move(key), std::is_integral_v<T> ? TemplateKind::Whole : TemplateKind::Real,
                                   "Enter " + words + RangeText(least, most) + ":", field, text, set);
  added.Least = least;
  added.Most = most;
}

template <typename T>
void TemplateKeyList::Boolean(std::string key, const std::string& words, const TemplateField<T>& field) {
  const auto text = [](const T& flag) { return std::string(flag ? "true" : "false"); };
  const auto set = [](T& flag, std::string_view value) { flag = ParseTemplateBoolean(value); };
  AddField<T>(std::move(key), TemplateKind::Boolean, words + "? (true or false):", field, text, set);
}

}  // namespace quorvex
