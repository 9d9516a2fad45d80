#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "core/LocaleText.h"
#include "core/NumberText.h"
#include "files/FieldReader.h"
#include "files/FieldText.h"
#include "files/FieldWriter.h"

namespace quorvex {

// A record of a file is told once, as a list of its fields that a RecordReader or a RecordWriter goes through:
//
//   template <typename Io, typename Curve>
//   void ListFields(Io& io, Curve& curve) {
//     io(curve.Description);                         // a line of one field: text, real, 32-bit integer or Boolean
//     io(curve.Least, curve.Most);                   // a line of two; a span of reals is as many as it has
//     io.Since(61, curve.Marks);                     // not in files of older versions, which leave it as it is
//     Section(io, "POINTS", [&] { io.Columns(curve.X, curve.Y); });
//   }
//
// The writer takes the record const. The reader goes on through what it can't read, as a FieldReader does, and is asked
// once whether all went well. What takes more than one field to judge is judged behind the list, by its reader.

// Fields that are not stored as what they are.
template <typename Text>
struct ModelText {  // a text of a model: in the locale's form in the program, with "." and "," in the file
  Text& Field;
};
template <typename Integer>
struct RealForm {  // a whole number that is written as a real one, "1E+05"
  Integer& Field;
};
template <typename Number>
struct Computed {  // a real number that came out of a computation, and may be infinite or none
  Number& Field;
};
template <typename Text>
struct Trimmed {  // a text that is written without the blanks around it
  Text& Field;
};
template <typename Text>
ModelText(Text&) -> ModelText<Text>;
template <typename Integer>
RealForm(Integer&) -> RealForm<Integer>;
template <typename Number>
Computed(Number&) -> Computed<Number>;
template <typename Text>
Trimmed(Text&) -> Trimmed<Text>;

class RecordWriter {
 public:
  explicit RecordWriter(const LocaleText& locale) : locale_(locale) {}

  // One line.
  template <typename... Fields>
  void operator()(const Fields&... fields) {
    (Put(fields), ...);
    out_.EndLine();
  }
  // The same for fields that came with a version: 61 for 6.1. What is written is the newest.
  template <typename... Fields>
  void Since(int, const Fields&... fields) {
    (*this)(fields...);
  }
  // A number that the reader knows before it comes.
  void Known(std::size_t number) { out_.Line(number); }
  // A number, or an enumerator by its number, that is no less than `least` and no more than `most`.
  template <typename T>
  void Bounded(const T& value, T, T) {
    out_.Line(static_cast<std::int32_t>(value));
  }
  // A number that, where it lies beyond `least` or `most`, counts as the nearer of them.
  template <typename Number>
  void Clamped(const Number& value, double, double) {
    out_.Line(value);
  }
  // A number of things to come, perhaps not at once.
  std::int32_t Count(std::size_t number) {
    out_.Line(number);
    return static_cast<std::int32_t>(number);
  }

  // The number of elements, then what `list` lists for each.
  template <typename Element, typename List>
  void Counted(const std::vector<Element>& elements, const Element&, const List& list) {
    out_.Line(elements.size());
    for (const Element& element : elements) list(element);
  }
  // The same where their number is a field of its own.
  template <typename Element, typename List>
  void Elements(std::int32_t, const std::vector<Element>& elements, const Element&, const List& list) {
    for (const Element& element : elements) list(element);
  }
  // The number of rows, then a line for each.
  template <typename... Rest>
  void Columns(const std::vector<double>& first, const Rest&... rest) {
    Rows(Count(first.size()), first, rest...);
  }
  // The same where their number is a field of its own.
  template <typename... Values>
  void Rows(std::int32_t count, const Values&... columns) {
    for (std::size_t row = 0; row < static_cast<std::size_t>(count); ++row) out_.Line(columns[row]...);
  }
  // A line for each text, and one that ends them.
  void TextsUntil(std::string_view marker, const std::vector<std::string>& texts) {
    for (const std::string& text : texts) out_.Line(text);
    Mark(marker);
  }

  // A line that only says where in the file one is.
  void Mark(std::string_view marker) { out_.Line(marker); }

  // For what is no list of fields.
  FieldWriter& Out() { return out_; }
  const std::string& Text() const { return out_.Text(); }

 private:
  template <typename T>
  void Put(const T& field) {
    out_.Field(field);
  }
  void Put(const std::span<const double>& fields) {
    for (const double field : fields) out_.Field(field);
  }
  template <typename Text>
  void Put(const ModelText<Text>& field) {
    out_.Field(EncodeLocaleText(field.Field, locale_));
  }
  template <typename Integer>
  void Put(const RealForm<Integer>& field) {
    out_.Field(static_cast<double>(field.Field));
  }
  template <typename Number>
  void Put(const Computed<Number>& field) {
    out_.Field(field.Field);
  }
  template <typename Text>
  void Put(const Trimmed<Text>& field) {
    out_.Field(Trim(field.Field));
  }

  const LocaleText locale_;
  FieldWriter out_;
};

// Counts come from the file: a list grows only as long as there is something to read.
class RecordReader {
 public:
  // A file of that version, 61 for 6.1.
  RecordReader(FieldReader& in, int version, const LocaleText& locale) : in_(in), version_(version), locale_(locale) {}

  template <typename... Fields>
  void operator()(Fields&&... fields) {
    (Take(fields), ...);
  }
  bool Has(int version) const { return version_ >= version; }
  template <typename... Fields>
  void Since(int version, Fields&&... fields) {
    if (Has(version)) (*this)(fields...);
  }
  void Known(std::size_t number) {
    if (in_.Integer() != static_cast<std::int64_t>(number)) in_.Fail();
  }
  template <typename T>
  void Bounded(T& value, T least, T most) {
    const std::int32_t number = in_.Integer();
    if (number < static_cast<std::int32_t>(least) || number > static_cast<std::int32_t>(most)) return in_.Fail();
    value = static_cast<T>(number);
  }
  template <typename Number>
  void Clamped(Number& value, double least, double most) {
    const double number = std::is_integral_v<Number> ? in_.Integer() : in_.Real();
    value = static_cast<Number>(std::clamp(number, least, most));
  }
  std::int32_t Count(std::size_t = 0) {
    const std::int32_t count = in_.Integer();
    if (count < 0) in_.Fail();
    return count;
  }

  // Each element is `fresh` before its fields are read.
  template <typename Element, typename List>
  void Counted(std::vector<Element>& elements, const Element& fresh, const List& list) {
    Elements(Count(), elements, fresh, list);
  }
  template <typename Element, typename List>
  void Elements(std::int32_t count, std::vector<Element>& elements, const Element& fresh, const List& list) {
    for (std::int32_t i = 0; i < count && Good(); ++i) list(elements.emplace_back(fresh));
  }
  template <typename... Values>
  void Columns(Values&... columns) {
    Rows(Count(), columns...);
  }
  template <typename... Values>
  void Rows(std::int32_t count, Values&... columns) {
    for (std::int32_t row = 0; row < count && Good(); ++row) (columns.push_back(in_.Real()), ...);
  }
  void TextsUntil(std::string_view marker, std::vector<std::string>& texts) {
    while (!in_.Sees(marker) && Good()) texts.push_back(in_.Text());
    Mark(marker);
  }

  void Mark(std::string_view marker) { in_.Expect(marker); }
  // Whether the section of that name begins here, and whether it has not ended yet.
  bool Begins(const std::string& name) { return in_.Sees("B_" + name); }
  bool GoesOn(const std::string& name) { return !in_.Sees("E_" + name) && Good(); }

  bool AtEnd() const { return in_.AtEnd(); }
  bool Good() const { return in_.Good(); }
  void Fail() { in_.Fail(); }
  FieldReader& In() { return in_; }

 private:
  void Take(std::string& field) { field = in_.Text(); }
  void Take(double& field) { field = in_.Real(); }
  void Take(std::int32_t& field) { field = in_.Integer(); }
  void Take(bool& field) { field = in_.Boolean(); }
  void Take(const std::span<double>& fields) {
    for (double& field : fields) Take(field);
  }
  void Take(const ModelText<std::string>& field) { field.Field = DecodeLocaleText(in_.Text(), locale_); }
  void Take(const RealForm<std::int32_t>& field) { Take(field.Field); }
  void Take(const Computed<double>& field) { field.Field = in_.AnyReal(); }
  void Take(const Trimmed<std::string>& field) { Take(field.Field); }

  FieldReader& in_;
  const int version_;
  const LocaleText locale_;
};

// What `list` lists, between "B_" and "E_" with the name of the section.
template <typename Io, typename List>
void Section(Io& io, const std::string& name, const List& list) {
  io.Mark("B_" + name);
  list();
  io.Mark("E_" + name);
}

}  // namespace quorvex
