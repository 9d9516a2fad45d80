#include <algorithm>
#include <string_view>
#include <utility>

#include "core/NumberText.h"
#include "sheet/SpreadsheetFormats.h"
#include "sheet/SpreadsheetXml.h"

namespace quorvex {
namespace {

constexpr std::size_t kLongestText = 2048;  // bytes; a grid's cell holds 255 characters

// The files that a file of the package refers to.
class RelationReader : public SpreadsheetXml {
 public:
  struct Relation {
    std::string Id, Type, Target;  // Target as an entry of the archive
  };
  std::vector<Relation> Relations;

  // `folder` of the referring file, with its closing slash.
  explicit RelationReader(std::string folder) : folder_(std::move(folder)) {}

  // The target of the first relation whose type ends so, "" where there is none.
  std::string TargetOf(std::string_view typeEnd) const {
    for (const Relation& relation : Relations)
      if (relation.Type.ends_with(typeEnd)) return relation.Target;
    return "";
  }

 protected:
  void Begin(std::string_view name, const Attributes& attributes) override {
    if (!name.ends_with("|Relationship")) return;
    const std::string target(attributes["Target"]);
    Relations.push_back({std::string(attributes["Id"]), std::string(attributes["Type"]),
                         target.starts_with('/') ? target.substr(1) : folder_ + target});
  }

 private:
  std::string folder_;
};

// The workbook's sheets, by name and by the Id of the relation to their file.
class WorkbookReader : public SpreadsheetXml {
 public:
  struct Sheet {
    std::string Name, RelationId;
  };
  std::vector<Sheet> Sheets;

 protected:
  void Begin(std::string_view name, const Attributes& attributes) override {
    if (name.ends_with("|sheet"))
      Sheets.push_back({std::string(attributes["name"]), std::string(attributes["relationships|id"])});
  }
};

// The texts that cells refer to by number. A text is in one piece or in several of one format each; how it is read
// aloud (rPh) is left out.
class SharedTextReader : public SpreadsheetXml {
 public:
  std::vector<std::string> Texts;

 protected:
  void Begin(std::string_view name, const Attributes&) override {
    constexpr std::size_t kMostBytes = 1 << 28;
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
  SheetReader(const std::vector<std::string>& texts, SpreadsheetCells& cells) : texts_(texts), cells_(cells) {}

 protected:
  void Begin(std::string_view name, const Attributes& attributes) override {
    inText_ = false;
    if (name.ends_with("|row")) {
      row_ = WholeNumber(attributes["r"], row_ + 1);
      column_ = 0;
    } else if (name.ends_with("|c")) {
      column_ = ColumnOf(attributes["r"], column_ + 1);
      kind_ = attributes["t"];
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
    if (kind_ == "e") return true;
    if (kind_ == "d") return cells_.SetDate(row_, column_, text_);
    if (kind_ != "s") return cells_.SetText(row_, column_, text_);
    const std::size_t index = WholeNumber(text_, texts_.size());
    return index >= texts_.size() || cells_.SetText(row_, column_, texts_[index]);
  }

  const std::vector<std::string>& texts_;
  SpreadsheetCells& cells_;
  std::size_t row_ = 0, column_ = 0;
  std::string kind_, text_;
  bool inText_ = false, aloud_ = false;
};

// The folder of an entry, with its closing slash.
std::string FolderOf(const std::string& entry) { return entry.substr(0, entry.rfind('/') + 1); }

}  // namespace

SpreadsheetFault ReadOpenXml(SpreadsheetArchive& archive, const std::optional<std::string>& sheet,
                             SpreadsheetContent& content) {
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

  std::string sheetFile;
  for (const WorkbookReader::Sheet& listed : workbook.Sheets) {
    for (const RelationReader::Relation& part : parts.Relations) {
      if (part.Id != listed.RelationId || !part.Type.ends_with("/worksheet")) continue;  // a sheet can be a chart
      content.Names.push_back(listed.Name);
      if (listed.Name == sheet) sheetFile = part.Target;
    }
  }
  if (sheetFile.empty()) return SpreadsheetFault::None;
  content.Found = true;
  SharedTextReader texts;
  const std::string textFile = parts.TargetOf("/sharedStrings");
  if (!textFile.empty()) fault = texts.Read(archive, textFile);
  if (fault != SpreadsheetFault::None) return fault;
  return SheetReader(texts.Texts, content.Sheet).Read(archive, sheetFile);
}

}  // namespace quorvex
