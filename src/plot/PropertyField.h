#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "core/LocaleText.h"
#include "drawing/PlotFont.h"

namespace quorvex {

// What of a plot the user sets in its properties, as lists of fields: a dialog shows a control for each.

enum class FieldKind {
  PlotText,   // with text codes
  Lines,      // ended by carriage return and line feed
  Number,     // typed in the locale's form; whole where the field is
  Pattern,    // of number labels, such as "0.00"
  Flag,       // ticked or not
  Choice,     // one of Choices, which are numbered from 0
  LineStyle,  // 0 solid to 4 dash-dot-dot
  Marker,     // 0 to 9
  Color,
  Font,
};

struct ColoredFont {
  PlotFont Font;
  std::int32_t Color = 0;
  bool operator==(const ColoredFont&) const = default;
};

// What stands in the control of a field: a text as typed; 0 or 1, a choice or colour; a font.
using FieldValue = std::variant<std::string, std::int32_t, ColoredFont>;

// Where the field is: in a plot or series, or in several of them, which then get one value.
struct FontPlace {
  PlotFont* Font;
  std::int32_t* Color;
};
using FieldPlace = std::variant<std::string*, bool*, std::int16_t*, std::int32_t*, float*, double*, FontPlace,
                                std::vector<std::int32_t*>>;

struct PropertyField {
  std::string Control;  // its name
  std::string Label;    // "&" before the letter that goes to it
  FieldKind Kind;
  FieldPlace Place;
  double Least = -std::numeric_limits<double>::infinity(), Most = std::numeric_limits<double>::infinity();
  std::string NotANumber = "";  // what is said of a number that is none,
  std::string OutOfRange = "";  // and of any that does not do
  std::vector<const char*> Choices = {};
  std::vector<std::vector<std::int32_t>> Swatches = {};  // colours that each choice stands for, where it does
  bool Beside = false;                                   // its control stands beside that of the field before it
  std::string Hint = "";                                 // stands there, too
  bool Applies = true;    // a field that a series does not have is shown, but not to be set
  FieldValue Entry = {};  // what its control holds
};

// What stands in the control as long as nobody edits it.
FieldValue ValueOf(const PropertyField& field, const LocaleText& locale);

// The number that is typed; nothing where it is none, or broken where the field is whole.
std::optional<double> NumberOf(const PropertyField& field, const LocaleText& locale);

// Puts the entry of a field into a place. A number that is none stays out.
void StoreEntry(const PropertyField& field, const FieldPlace& place, const LocaleText& locale);

// The first fields of the scale of an axis.
enum ScaleField : std::size_t { kMinimum, kMaximum, kMajorTicks, kMinorTicks, kLogScale };

// Fields that stand together.
struct FieldGroup {
  std::string Title;
  std::vector<PropertyField> Fields;
  // Of a scale, which begins with the ScaleFields: what is said of limits that do not do, on a logarithmic axis too.
  struct ScaleRefusals {
    std::string Limits, LogScale;
  };
  std::optional<ScaleRefusals> Scale = {};
  // Of fields that have a dialog of their own: its name, and name and label of the button that opens it.
  struct DialogNames {
    std::string Form, Button, Label;
  };
  std::optional<DialogNames> Dialog = {};

  bool IsLogScale() const { return Scale && std::get<std::int32_t>(Fields[kLogScale].Entry) != 0; }
  // Whether the program decides on the field: ticks of a logarithmic axis.
  bool IsDecided(std::size_t field) const { return IsLogScale() && (field == kMajorTicks || field == kMinorTicks); }
};

struct FieldPage {
  std::string Title;
  std::vector<FieldGroup> Groups;
  std::string CodeButtons = "";  // the name of its buttons for text codes, where it has any
  bool OfSeries = false;         // it shows the fields of one of the plot's series
};

}  // namespace quorvex
