#include "plot/PropertyField.h"

#include <cmath>
#include <type_traits>

#include "core/NumberText.h"

namespace quorvex {
namespace {

// A float has fewer digits to show than a double.
template <typename Number>
std::string Typed(Number value, const LocaleText& locale) {
  return LocalizeExpression(GeneralNumber(static_cast<double>(value), std::is_same_v<Number, float> ? 7 : 15), locale);
}

}  // namespace

FieldValue ValueOf(const PropertyField& field, const LocaleText& locale) {
  const bool typed = field.Kind == FieldKind::Number;
  const auto value = [&]<typename Place>(const Place& place) -> FieldValue {
    if constexpr (std::is_same_v<Place, std::string*>)
      return *place;
    else if constexpr (std::is_same_v<Place, FontPlace>)
      return ColoredFont{*place.Font, *place.Color};
    else if constexpr (std::is_same_v<Place, std::vector<std::int32_t*>>)
      return place.empty() ? 0 : *place.front();
    else if (typed)
      return Typed(*place, locale);
    else
      return static_cast<std::int32_t>(*place);
  };
  return std::visit(value, field.Place);
}

std::optional<double> NumberOf(const PropertyField& field, const LocaleText& locale) {
  const auto value = NumericText(std::get<std::string>(field.Entry), locale.DecimalSeparator);
  const bool broken = std::holds_alternative<double*>(field.Place) || std::holds_alternative<float*>(field.Place);
  return value && (broken || *value == std::floor(*value)) ? value : std::nullopt;
}

void StoreEntry(const PropertyField& field, const FieldPlace& place, const LocaleText& locale) {
  const auto write = [&]<typename Place>(const Place& to) {
    if constexpr (std::is_same_v<Place, std::string*>)
      *to = std::get<std::string>(field.Entry);
    else if constexpr (std::is_same_v<Place, FontPlace>) {
      const auto& [font, color] = std::get<ColoredFont>(field.Entry);
      *to.Font = font;
      *to.Color = color;
    } else if constexpr (std::is_same_v<Place, std::vector<std::int32_t*>>) {
      for (std::int32_t* each : to) *each = std::get<std::int32_t>(field.Entry);
    } else {
      using Value = std::remove_reference_t<decltype(*to)>;
      if (field.Kind != FieldKind::Number)
        *to = static_cast<Value>(std::get<std::int32_t>(field.Entry));
      else if (const auto number = NumberOf(field, locale))
        *to = static_cast<Value>(*number);
    }
  };
  std::visit(write, place);
}

}  // namespace quorvex
