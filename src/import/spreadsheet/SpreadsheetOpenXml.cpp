#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "core/NumberText.h"
#include "import/spreadsheet/SpreadsheetFormats.h"
#include "import/spreadsheet/SpreadsheetXml.h"

namespace quorvex {
namespace {

constexpr std::size_t kLongestText = 2048;  // bytes; a grid's cell holds 255 characters

// The files that a file of the package refers to.
class RelationReader : public SpreadsheetXml {
 public:
  struct Relation {
    std::string Type, Target;  // Target as an entry of the archive
  };
  std::map<std::string, Relation> Relations;  // by Id

  // `folder` of the referring file, with its closing slash.
  explicit RelationReader(std::string folder) : folder_(std::move(folder)) {}

  // The target of the relation whose type ends so, "" where there is none.
  std::string TargetOf(std::string_view typeEnd) const {
    for (const auto& [id, relation] : Relations)
      if (relation.Type.ends_with(typeEnd)) return relation.Target;
    return "";
  }

 protected:
  void Begin(std::string_view name, const Attributes& attributes) override {
    if (!name.ends_with("|Relationship")) return;
    const std::string_view id = attributes["Id"], type = attributes["Type"], target = attributes["Target"];
    if (Relations.size() == 2 * kMostSheets || id.size() + type.size() + target.size() > kLongestName)
      return Stop(SpreadsheetFault::TooLarge);
    const std::string entry(target);
    Relations.insert(
        {std::string(id), {std::string(type), entry.starts_with('/') ? entry.substr(1) : folder_ + entry}});
  }

 private:
  std::string folder_;
};

// The workbook's sheets, by name and by the Id of the relation to their file, and from where its dates count.
class WorkbookReader : public SpreadsheetXml {
 public:
  struct Sheet {
    std::string Name, RelationId;
  };
  std::vector<Sheet> Sheets;
  bool From1904 = false;

 protected:
  void Begin(std::string_view name, const Attributes& attributes) override {
    if (name.ends_with("|workbookPr")) {
      const std::string_view from1904 = attributes["date1904"];
      From1904 = from1904 == "1" || from1904 == "true";
    }
    if (!name.ends_with("|sheet")) return;
    const std::string_view sheet = attributes["name"], id = attributes["relationships|id"];
    if (Sheets.size() == kMostSheets || sheet.size() + id.size() > kLongestName)
      return Stop(SpreadsheetFault::TooLarge);
    Sheets.push_back({std::string(sheet), std::string(id)});
  }
};

// Which of the styles that cells name by number show a number as a date or time, and how.
class StyleReader : public SpreadsheetXml {
 public:
  // Nothing for a style of other numbers.
  const DateForm* FormOf(std::size_t style) const {
    return style < forms_.size() && forms_[style] ? &*forms_[style] : nullptr;
  }

 protected:
  void Begin(std::string_view name, const Attributes& attributes) override {
    constexpr std::size_t kMostStyles = 1 << 16;
    if (name.ends_with("|cellXfs")) inCells_ = true;
    const std::size_t id = WholeNumber(attributes["numFmtId"], 0);
    if (name.ends_with("|numFmt"))
      if (const DateForm form = ReadForm(attributes["formatCode"]); form.HasDate || form.HasTime) dates_[id] = form;
    if (name.ends_with("|xf") && inCells_) {
      const auto own = dates_.find(id);
      forms_.push_back(own != dates_.end() ? own->second : BuiltInForm(id));
    }
    if (std::max(dates_.size(), forms_.size()) > kMostStyles) Stop(SpreadsheetFault::TooLarge);
  }
  void End(std::string_view name) override {
    if (name.ends_with("|cellXfs")) inCells_ = false;
  }

 private:
  // ECMA-376, part 1, section 18.8.30: the formats that every file has, and those of East Asian languages.
  static std::optional<DateForm> BuiltInForm(std::size_t id) {
    if ((id >= 14 && id <= 17) || (id >= 27 && id <= 31) || id == 36 || (id >= 50 && id <= 54) || id == 57 || id == 58)
      return DateForm{.HasDate = true};
    if (id == 22) return DateForm{.HasDate = true, .HasTime = true};
    if (id == 18 || id == 20) return DateForm{.HasTime = true};
    if (id == 19 || id == 21 || id == 45 || id == 47) return DateForm{.HasTime = true, .HasSeconds = true};
    if (id == 46) return DateForm{.HasTime = true, .HasSeconds = true, .Elapsed = true};
    return std::nullopt;
  }

  // What a format has of a day, month or year: a "d" or "y", or an "m" that is no minute beside hours or seconds; and
  // of a time. What is quoted, escaped or in brackets, such as a colour, counts for nothing, but for elapsed hours.
  static DateForm ReadForm(std::string_view format) {
    DateForm form;
    bool month = false;
    for (std::size_t i = 0; i < format.size(); ++i) {
      const char c = format[i];
      if (c == '\\' || c == '_' || c == '*') {
        ++i;
      } else if (c == '"' || c == '[') {
        form.Elapsed |=
            c == '[' && i + 1 < format.size() && std::string_view("hHmMsS").find(format[i + 1]) != format.npos;
        i = std::min(format.find(c == '"' ? '"' : ']', i + 1), format.size());
      }
      form.HasDate |= c == 'd' || c == 'D' || c == 'y' || c == 'Y';
      month |= c == 'm' || c == 'M';
      form.HasTime |= c == 'h' || c == 'H' || c == 's' || c == 'S';
      form.HasSeconds |= c == 's' || c == 'S';
    }
    form.HasTime |= form.Elapsed;
    form.HasDate |= month && !form.HasTime;
    return form;
  }

  bool inCells_ = false;
  std::map<std::size_t, DateForm> dates_;
  std::vector<std::optional<DateForm>> forms_;
};

// The texts that cells refer to by number. A text is in one piece or in several of one format each; how it is read
// aloud (rPh) is left out.
class SharedTextReader : public SpreadsheetXml {
 public:
  std::vector<std::string> Texts;

 protected:
  void Begin(std::string_view name, const Attributes&) override {
    constexpr std::size_t kMostBytes = 1 << 27;
    if (name.ends_with("|si")) {
      taken_ += sizeof(std::string) + (Texts.empty() ? 0 : Texts.back().size());
      if (taken_ > kMostBytes) return Stop(SpreadsheetFault::TooLarge);
      Texts.emplace_back();
    }
    if (name.ends_with("|rPh")) aloud_ = true;
    inText_ = name.ends_with("|t") && !aloud_;
  }
  void End(std::string_view name) override {
    if (name.ends_with("|rPh")) aloud_ = false;
    inText_ = false;
  }
  void Text(std::string_view text) override {
    if (inText_ && !Texts.empty() && Texts.back().size() < kLongestText) Texts.back() += text;
  }

 private:
  bool inText_ = false, aloud_ = false;
  std::size_t taken_ = 0;
};

// Goes through a sheet's file. A cell tells its kind and has its value, or a formula's last result, in <v>, or a text
// in place in <is>. Rows and cells may tell where they stand; without that they follow one another.
class SheetReader : public SpreadsheetXml {
 public:
  // The dates of some workbooks count from 1904.
  SheetReader(const std::vector<std::string>& texts, const StyleReader& styles, bool from1904, SpreadsheetCells& cells)
      : texts_(texts), styles_(styles), from1904_(from1904), cells_(cells) {}

 protected:
  void Begin(std::string_view name, const Attributes& attributes) override {
    inText_ = false;
    if (name.ends_with("|row")) {
      row_ = WholeNumber(attributes["r"], row_ + 1);
      column_ = 0;
    } else if (name.ends_with("|c")) {
      column_ = ColumnOf(attributes["r"], column_ + 1);
      kind_ = attributes["t"];
      style_ = WholeNumber(attributes["s"], 0);
      text_.clear();
    } else if (name.ends_with("|rPh")) {
      aloud_ = true;
    } else {
      inText_ = name.ends_with("|v") || (name.ends_with("|t") && !aloud_);
    }
  }
  void End(std::string_view name) override {
    inText_ = false;
    if (name.ends_with("|rPh")) aloud_ = false;
    if (name.ends_with("|c") && !text_.empty() && row_ > 0 && !Store()) Stop(SpreadsheetFault::TooLarge);
  }
  void Text(std::string_view text) override {
    if (inText_ && text_.size() < kLongestText) text_ += text;
  }

 private:
  // The column of an address: 28 of "AB12".
  static std::size_t ColumnOf(std::string_view address, std::size_t missing) {
    constexpr std::size_t kMostColumns = 1 << 14;
    std::size_t column = 0;
    for (const char c : address) {
      if (c < 'A' || c > 'Z' || column > kMostColumns) break;
      column = column * 26 + static_cast<std::size_t>(c - 'A' + 1);
    }
    return column > 0 ? column : missing;
  }

  bool Store() {
    // An error in a formula leaves no value.
    if (kind_ == "e") return true;
    if (kind_ == "d") return cells_.SetDate(row_, column_, text_);
    if (const DateForm* const form = styles_.FormOf(style_); form && (kind_.empty() || kind_ == "n"))
      if (const auto day = NumericText(text_))
        return cells_.SetDay(row_, column_, *day + (from1904_ && form->HasDate ? kDaysTo1904 : 0), *form);
    if (kind_ != "s") return cells_.SetText(row_, column_, text_);
    const std::size_t index = WholeNumber(text_, texts_.size());
    return index >= texts_.size() || cells_.SetText(row_, column_, texts_[index]);
  }

  static constexpr double kDaysTo1904 = 1462;  // from 30 December 1899

  const std::vector<std::string>& texts_;
  const StyleReader& styles_;
  const bool from1904_;
  SpreadsheetCells& cells_;
  std::size_t row_ = 0, column_ = 0, style_ = 0;
  std::string kind_, text_;
  bool inText_ = false, aloud_ = false;
};

// The folder of an entry, with its closing slash.
std::string FolderOf(const std::string& entry) { return entry.substr(0, entry.rfind('/') + 1); }

}  // namespace

SpreadsheetFault ReadOpenXml(SpreadsheetArchive& archive, const std::optional<std::string>& sheet,
                             SpreadsheetContent& content) {
  // The package names its workbook, and the workbook its sheets, texts and styles; file names mean nothing.
  RelationReader package("");
  SpreadsheetFault fault = package.Read(archive, "_rels/.rels");
  const std::string workbookFile = package.TargetOf("/officeDocument");
  const std::string folder = FolderOf(workbookFile);
  WorkbookReader workbook;
  RelationReader parts(folder);
  if (fault == SpreadsheetFault::None) fault = workbook.Read(archive, workbookFile);
  if (fault == SpreadsheetFault::None)
    fault = parts.Read(archive, folder + "_rels/" + workbookFile.substr(folder.size()) + ".rels");
  if (fault != SpreadsheetFault::None) return fault;

  std::optional<std::string> sheetFile;  // empty where the relation of the sheet names none
  for (const WorkbookReader::Sheet& listed : workbook.Sheets) {
    const auto part = parts.Relations.find(listed.RelationId);
    if (part == parts.Relations.end() || !part->second.Type.ends_with("/worksheet")) continue;  // a chart, for one
    content.Names.push_back(listed.Name);
    if (listed.Name == sheet) sheetFile = part->second.Target;
  }
  if (!sheetFile) return SpreadsheetFault::None;
  content.Found = true;
  SharedTextReader texts;
  const std::string textFile = parts.TargetOf("/sharedStrings");
  if (!textFile.empty()) fault = texts.Read(archive, textFile);
  StyleReader styles;
  const std::string styleFile = parts.TargetOf("/styles");
  if (fault == SpreadsheetFault::None && !styleFile.empty()) {
    // Where the styles tell only how dates look, damage to them is none to the data.
    const SpreadsheetFault ofStyles = styles.Read(archive, styleFile);
    if (workbook.From1904 || ofStyles == SpreadsheetFault::Cancelled) fault = ofStyles;
  }
  if (fault != SpreadsheetFault::None) return fault;
  return SheetReader(texts.Texts, styles, workbook.From1904, content.Sheet).Read(archive, *sheetFile);
}

}  // namespace quorvex
