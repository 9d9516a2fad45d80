#include <algorithm>
#include <string_view>

#include "core/NumberText.h"
#include "import/spreadsheet/SpreadsheetFormats.h"
#include "import/spreadsheet/SpreadsheetXml.h"

namespace quorvex {
namespace {

// "PT18H30M15.5S" as a fraction of a day. A part that is missing is 0.
double DayFraction(std::string_view text) {
  double seconds = 0;
  if (text.starts_with("PT")) text.remove_prefix(2);
  while (!text.empty()) {
    double part = 0;
    const std::size_t length = LeadingNumber(text, part);
    if (length == 0 || length == text.size()) break;
    const char unit = text[length];
    seconds += part * (unit == 'H' ? 3600 : unit == 'M' ? 60 : 1);
    text.remove_prefix(length + 1);
  }
  return seconds / 86400;
}

// A cell as the file tells it: what kind of value, and the value's text.
struct CellValue {
  enum { Empty, Number, Time, Text, Date } Kind = Empty;
  double Value = 0;
  std::string Words;
};

// Goes through content.xml. A table holds rows and a row cells, with groups and headers between them; a run of equal
// rows or cells is written once, with its length. Tables inside a cell, comments and drawings are passed over.
class ContentReader : public SpreadsheetXml {
 public:
  ContentReader(const std::optional<std::string>& wanted, SpreadsheetContent& content)
      : wanted_(wanted), content_(content) {}

 protected:
  void Begin(std::string_view name, const Attributes& attributes) override {
    ++depth_;
    if (cellDepth_ > 0) {
      BeginInsideCell(name, attributes);
    } else if (name.ends_with("table:1.0|table")) {
      const std::string_view table = attributes["table:1.0|name"];
      if (content_.Names.size() == kMostSheets || table.size() > kLongestName) return Stop(SpreadsheetFault::TooLarge);
      content_.Names.emplace_back(table);
      reading_ = wanted_ == content_.Names.back();
      content_.Found |= reading_;
      row_ = 1;
      tableDepth_ = depth_;
    } else if (!reading_) {
      return;
    } else if (name.ends_with("table:1.0|table-row")) {
      rowRepeats_ = std::max<std::size_t>(WholeNumber(attributes["table:1.0|number-rows-repeated"], 1), 1);
      cells_.clear();
      column_ = 1;
    } else if (name.ends_with("table:1.0|table-cell") || name.ends_with("table:1.0|covered-table-cell")) {
      cellRepeats_ = std::max<std::size_t>(WholeNumber(attributes["table:1.0|number-columns-repeated"], 1), 1);
      cellDepth_ = depth_;
      BeginCell(attributes);
    }
  }

  void End(std::string_view name) override {
    const std::size_t depth = depth_--;
    if (cellDepth_ > 0) {
      if (depth == paragraphDepth_) paragraphDepth_ = 0;
      if (depth == skippedDepth_) skippedDepth_ = 0;
      if (depth == cellDepth_) EndCell();
    } else if (reading_ && name.ends_with("table:1.0|table-row")) {
      EndRow();
    } else if (reading_ && depth == tableDepth_) {
      // The wanted table has come to its end, and the others are not needed.
      Stop(SpreadsheetFault::None);
    }
  }

  void Text(std::string_view text) override {
    if (paragraphDepth_ > 0 && skippedDepth_ == 0) Append(text);
  }

 private:
  // A value, and where the row has it.
  struct PlacedValue {
    std::size_t Column, Repeats;
    CellValue Cell;
  };

  void BeginCell(const Attributes& attributes) {
    const std::string_view kind = attributes["office:1.0|value-type"];
    cell_ = {};
    ownWords_ = false;
    if (kind == "float" || kind == "percentage" || kind == "currency") {
      if (const auto value = NumericText(attributes["office:1.0|value"])) cell_ = {CellValue::Number, *value, ""};
    } else if (kind == "boolean") {
      cell_ = {CellValue::Number, attributes["office:1.0|boolean-value"] == "true" ? 1.0 : 0.0, ""};
    } else if (kind == "time") {
      cell_ = {CellValue::Time, DayFraction(attributes["office:1.0|time-value"]), ""};
    } else if (kind == "date") {
      cell_ = {CellValue::Date, 0, std::string(attributes["office:1.0|date-value"])};
    } else if (kind == "string" && attributes["calcext:1.0|value-type"] != "error") {
      cell_ = {CellValue::Text, 0, std::string(attributes["office:1.0|string-value"])};
      ownWords_ = cell_.Words.empty();
    }
  }

  // Paragraphs stand right in the cell, their text in them and in pieces (spans, links) within.
  void BeginInsideCell(std::string_view name, const Attributes& attributes) {
    if (skippedDepth_ > 0) return;
    if (depth_ == cellDepth_ + 1 && name.ends_with("text:1.0|p")) {
      if (!cell_.Words.empty()) Append(" ");
      paragraphDepth_ = depth_;
    } else if (name.ends_with("text:1.0|s")) {
      Append(std::string(std::min<std::size_t>(WholeNumber(attributes["text:1.0|c"], 1), 255), ' '));
    } else if (name.ends_with("text:1.0|tab") || name.ends_with("text:1.0|line-break")) {
      Append(" ");
    } else if (!name.ends_with("text:1.0|span") && !name.ends_with("text:1.0|a")) {
      skippedDepth_ = depth_;
    }
  }

  void Append(std::string_view text) {
    constexpr std::size_t kEnough = 2048;  // bytes; a grid's cell holds 255 characters
    if (ownWords_ && cell_.Words.size() < kEnough) cell_.Words += text;
  }

  void EndCell() {
    // A text of blanks is nothing, and repeated it would take time for ever without taking memory.
    const bool blank = (cell_.Kind == CellValue::Text || cell_.Kind == CellValue::Date) && Trim(cell_.Words).empty();
    if (cell_.Kind != CellValue::Empty && !blank) {
      if (cells_.size() > kMostSeriesColumns) cells_.pop_back();  // these are not kept
      cells_.push_back({column_, cellRepeats_, std::move(cell_)});
    }
    column_ += cellRepeats_;
    cellDepth_ = paragraphDepth_ = skippedDepth_ = 0;
  }

  void EndRow() {
    // A sheet ends with an empty row that is repeated down to the last possible one: nothing to walk through.
    for (std::size_t repeat = 0; repeat < (cells_.empty() ? 0 : rowRepeats_); ++repeat) {
      for (const PlacedValue& placed : cells_) {
        for (std::size_t col = placed.Column; col < placed.Column + placed.Repeats; ++col) {
          if (Store(row_ + repeat, col, placed.Cell)) continue;
          return Stop(SpreadsheetFault::TooLarge);
        }
      }
    }
    row_ += rowRepeats_;
  }

  bool Store(std::size_t row, std::size_t col, const CellValue& cell) {
    if (cell.Kind == CellValue::Number) return content_.Sheet.SetNumber(row, col, cell.Value);
    if (cell.Kind == CellValue::Time) {
      const DateForm form{.HasTime = true, .HasSeconds = true, .Elapsed = cell.Value >= 1};
      return content_.Sheet.SetDay(row, col, cell.Value, form);
    }
    if (cell.Kind == CellValue::Date) return content_.Sheet.SetDate(row, col, cell.Words);
    return content_.Sheet.SetText(row, col, cell.Words);
  }

  const std::optional<std::string>& wanted_;
  SpreadsheetContent& content_;
  bool reading_ = false;  // inside the wanted table
  std::size_t depth_ = 0, tableDepth_ = 0;
  std::size_t cellDepth_ = 0, paragraphDepth_ = 0, skippedDepth_ = 0;  // 0: not inside one
  std::size_t row_ = 1, column_ = 1, rowRepeats_ = 1, cellRepeats_ = 1;
  CellValue cell_;
  bool ownWords_ = false;  // the words of the cell are those of its paragraphs
  std::vector<PlacedValue> cells_;
};

}  // namespace

SpreadsheetFault ReadOpenDocument(SpreadsheetArchive& archive, const std::optional<std::string>& sheet,
                                  SpreadsheetContent& content) {
  constexpr std::size_t kLongestManifest = 1 << 20;
  constexpr const char* kManifest = "META-INF/manifest.xml";
  std::string manifest;
  if (archive.Has(kManifest)) {
    const SpreadsheetFault fault = archive.Unpack(kManifest, [&](std::string_view piece) {
      manifest += piece;
      return manifest.size() < kLongestManifest;
    });
    if (fault != SpreadsheetFault::None) return fault;
  }
  if (manifest.find("encryption-data") != std::string::npos) return SpreadsheetFault::Protected;
  return ContentReader(sheet, content).Read(archive, "content.xml");
}

}  // namespace quorvex
