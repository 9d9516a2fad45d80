#include "macro/SubstituteParameters.h"

#include <algorithm>
#include <utility>

#include "core/NumberText.h"
#include "diagnosis/DerivedQuantity.h"
#include "import/ConnectString.h"
#include "macro/Assign.h"
#include "macro/MacroStatements.h"
#include "macro/MacroText.h"
#include "sheet/SeriesData.h"

namespace quorvex {
namespace {

constexpr std::string_view kHiddenKeys[] = {"Pwd", "Password"};
constexpr std::string_view kData = "DataFile", kOutput = "OutputFile", kPlots = "PlotFile", kCodes = "CodeFile",
                           kReports = "ReportFile";
constexpr SubstitutedField kFields[] = {
    {"MissingData", true},     {kData, true},           {"SQLQuery", true},     {kOutput, false},
    {"Comment", false, false}, {"ColumnOrder", true},   {"InputDelimit", true}, {"Weighted", true},
    {"OutputFormat", false},   {"DataFirstLine", true}, {kPlots, false},        {kCodes, false},
    {kReports, false},
};

// Values may hold the names of parameters further on, each of which may double a text; no text of use gets this long.
constexpr std::size_t kLongestText = 100'000;

std::string Token(const std::string& parameter) { return "%" + parameter + "%"; }

// Replaces every occurrence of `token`, in any case, by `value`, whose own text is not looked through. False where
// there is none.
bool Substitute(std::string& text, const std::string& token, std::string_view value) {
  if (text.find('%') == std::string::npos) return false;
  // Folding changes ASCII letters only, so a place in one text is the same place in the other.
  const std::string foldedToken = ToLower(token), folded = ToLower(text);
  std::string substituted;
  std::size_t done = 0;
  for (std::size_t at = 0; (at = folded.find(foldedToken, done)) != std::string::npos; done = at + token.size())
    substituted.append(text, done, at - done).append(value);
  if (done == 0) return false;
  text = substituted.append(text, done);
  return true;
}

// Statements that name several files, and what these are.
constexpr struct FileNames {
  std::string_view Keyword;
  std::string MacroSetup::*Names;
  std::string_view What;
} kFileNames[] = {{kPlots, &MacroSetup::PlotFile, "plot"},
                  {kCodes, &MacroSetup::CodeFile, "code"},
                  {kReports, &MacroSetup::ReportFile, "report"}};

// Takes those out that the parameters leave without a name.
void AssignNames(MacroSetup& setup, const FileNames& files, MacroLog& log) {
  std::string named;
  const std::string keyword(files.Keyword), text = std::exchange(setup.*files.Names, "") + std::string(NL);
  for (std::string_view lines = text; !lines.empty();) {
    const std::string_view name = Trim(TakeLine(lines));
    if (name.empty())
      log.Warn("A " + keyword + " of this run has no name, and that " + std::string(files.What) + " is left out.");
    else
      named.append(named.empty() ? "" : NL).append(name);
  }
  setup.*files.Names = named;
  log.Line("Assigning " + keyword + " = '" + NamesInOneLine(named) + "'");
}

}  // namespace

std::string& SubstitutedField::In(MacroSetup& setup) const { return setup.*KeptText(*FindStatement(Keyword)); }

std::span<const SubstitutedField> SubstitutedFields() { return kFields; }

bool IsSubstituted(const MacroStatement& statement) {
  return std::ranges::any_of(kFields, [&](const auto& field) { return field.Keyword == statement.Keyword; });
}

ParameterTable TableOfSeries(const std::vector<std::string>& names) {
  ParameterTable table;
  table.IsSeries = true;
  table.Names.emplace_back("SERIES");
  for (const std::string& name : names) table.Rows.push_back({name});
  return table;
}

std::string WithParameters(std::string text, const ParameterTable& table, std::size_t row) {
  for (std::size_t p = 0; p < table.Names.size() && text.size() <= kLongestText; ++p)
    Substitute(text, Token(table.Names[p]), table.Rows[row][p]);
  return text;
}

std::string FileWithParameters(std::string file, const ParameterTable& table, std::size_t row) {
  if (!table.IsSeries) return WithParameters(std::move(file), table, row);
  Substitute(file, Token(table.Names[0]), SeriesFileName(table.Rows[row][0]));
  return file;
}

std::vector<std::pair<std::string, std::string>> ShownParameters(const ParameterTable& table, std::size_t row,
                                                                 const std::string& source,
                                                                 const MacroSetup& substituted) {
  std::vector<std::pair<std::string, std::string>> shown;
  const bool isConnection = !substituted.SQLQuery.empty();
  for (std::size_t p = 0; p < table.Names.size(); ++p) {
    const std::string& value = table.Rows[row][p];
    shown.emplace_back(table.Names[p], value);
    if (!isConnection || value.empty()) continue;
    // Its place within the connect string is hidden, or it holds what is.
    const std::string mark = "\x01";
    std::string marked = source;
    const bool isHidden = Substitute(marked, Token(table.Names[p]), mark) &&
                          std::ranges::count(MaskPassword(marked), mark[0]) < std::ranges::count(marked, mark[0]);
    const bool holdsHidden = std::ranges::any_of(kHiddenKeys, [&](std::string_view key) {
      const std::string secret = ConnectValue(substituted.DataFile, key);
      return !secret.empty() && value.find(secret) != std::string::npos;
    });
    if (isHidden || holdsHidden) shown.back().second = "***";
  }
  return shown;
}

bool SubstituteParameters(Macro& macro, const ParameterTable& table, std::size_t row, const LocaleText& locale,
                          MacroLog& log) {
  MacroSetup& setup = macro.Setup;
  std::vector<DeferredAssign> assigns = macro.Deferred;
  std::vector<std::string> faults(assigns.size(), "it holds no parameter of the table");
  const auto tooLong = [&](const std::string& text, std::string_view name) {
    if (text.size() <= kLongestText) return false;
    log.Line("The parameters make " + std::string(name) + " longer than " + std::to_string(kLongestText) +
             " characters.");
    return true;
  };
  std::vector<const FileNames*> changed;
  for (std::size_t p = 0; p < table.Names.size(); ++p) {
    const std::string token = Token(table.Names[p]);
    const std::string& value = table.Rows[row][p];
    for (const SubstitutedField& field : kFields) {
      std::string& text = field.In(setup);
      if (table.IsSeries && field.IsInput) continue;
      const auto* const files = std::ranges::find(kFileNames, field.Keyword, &FileNames::Keyword);
      const bool isFile = table.IsSeries && (field.Keyword == kOutput || files != std::end(kFileNames));
      if (!Substitute(text, token, isFile ? SeriesFileName(value) : value)) continue;
      if (tooLong(text, field.Keyword)) return false;
      // Names that are not complete yet would be many.
      if (files != std::end(kFileNames)) {
        if (std::ranges::find(changed, files) == changed.end()) changed.push_back(files);
        continue;
      }
      // A connection may hold a password, which no log shows.
      const std::string shown = field.Keyword == kData ? DataSourceText(setup) : text;
      if (field.IsLogged) log.Line("Assigning " + std::string(field.Keyword) + " = '" + shown + "'");
      ReadKeptText(*FindStatement(field.Keyword), setup);
    }
    for (std::size_t i = 0; i < assigns.size(); ++i) {
      if (!Substitute(assigns[i].Text, token, value)) continue;
      if (tooLong(assigns[i].Text, "Assign")) return false;
      log.Line("Assigning " + token + " = '" + value);
      faults[i] = ApplyAssign(*assigns[i].Model, assigns[i].Text, locale);
    }
  }
  for (const DeferredID& deferred : macro.DeferredIDs) {
    deferred.Model->cfgID = WithParameters(deferred.Text, table, row);
    if (tooLong(deferred.Model->cfgID, "ID")) return false;
    if (deferred.Model->cfgID != deferred.Text) log.Line("Assigning ID = '" + deferred.Model->cfgID + "'");
  }
  for (const DeferredReport& deferred : macro.DeferredReports) {
    const std::string text = WithParameters(deferred.Text, table, row);
    if (tooLong(text, "Report")) return false;
    deferred.Model->Reports[deferred.Number] = ParseReport(text);
    log.Line("Assigning Report = '" + text + "'");
  }
  for (const DeferredReport& deferred : macro.DeferredReports)
    if (const std::string fault = ReportFaults(*deferred.Model)[deferred.Number]; !fault.empty())
      log.Warn("'Report = " + WithParameters(deferred.Text, table, row) + "' has no answer: " + fault, deferred.Line);
  for (const FileNames* files : changed) AssignNames(setup, *files, log);
  for (std::size_t i = 0; i < assigns.size(); ++i)
    if (!faults[i].empty()) log.Warn("'Assign " + assigns[i].Text + "' is ignored: " + faults[i], assigns[i].Line);
  return true;
}

}  // namespace quorvex
