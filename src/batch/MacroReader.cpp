#include "batch/MacroReader.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <unordered_map>

#include "batch/Assign.h"
#include "batch/MacroText.h"
#include "core/Files.h"
#include "core/NumberText.h"
#include "engine/LoadModelCatalog.h"
#include "engine/UserModel.h"

namespace quorvex {
namespace {

// Both sides of the blanks that a model line loses when it is stored belong to words or numbers, so that the two become
// one: "x mod 4" is stored as "xmod4", a coefficient.
bool JoinsWords(std::string_view text) {
  const auto isWord = [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
  };
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] != ' ' || !isWord(text[i - 1])) continue;
    const auto next = text.find_first_not_of(' ', i);
    if (next != std::string_view::npos && isWord(text[next])) return true;
  }
  return false;
}

// The first model of a collection that has given lines, found without looking through all of them.
class ModelsByLines {
 public:
  // The model whose first lines are these, in any case; null where there is none. Lines that a model doesn't have count
  // as empty.
  ModelClass* Find(const ModelCollection& models, const std::vector<std::string>& lines) {
    for (; known_ < models.size(); ++known_) {
      ModelClass* const model = models.begin()[static_cast<std::ptrdiff_t>(known_)].get();
      std::string key;
      for (int n = 0; n < kMostLines; ++n) first_.try_emplace(key += Piece(model->FunctionList(n)), model);
    }
    std::string key;
    for (const std::string& line : lines) key += Piece(line);
    const auto found = first_.find(key);
    return found == first_.end() ? nullptr : found->second;
  }

 private:
  static constexpr int kMostLines = 10;
  static std::string Piece(const std::string& line) { return ToLower(line) + '\n'; }

  std::size_t known_ = 0;  // models that have been looked at
  std::unordered_map<std::string, ModelClass*> first_;
};

class Reader {
 public:
  Reader(std::string_view text, const LocaleText& locale, Settings& preferences, Macro& macro, std::string& log)
      : rest_(text), locale_(locale), preferences_(preferences), macro_(macro), setup_(macro.Setup), log_(log) {}

  bool Read() {
    while (!AtEnd()) {
      if (!EqualNoCase(NextLine(), "b_macro")) continue;
      if (AtEnd()) return false;
      ReadStatements();
      return true;
    }
    return false;
  }

 private:
  bool AtEnd() const { return rest_.empty(); }
  std::string NextLine() {
    std::string line(TakeLine(rest_));
    std::erase(line, '\t');
    return std::string(Trim(line));
  }
  void Log(std::string_view text) { log_.append(text).append(NL); }
  void Warn(std::string_view text) { Log("Warning: " + std::string(text)); }

  // The last line of the file is never acted on; a well-formed macro ends there with E_MACRO.
  void ReadStatements() {
    for (;;) {
      std::string line = NextLine();
      if (AtEnd() || EqualNoCase(line, "e_macro")) return;
      if (line.empty()) continue;
      const std::string key = ToLower(GetLineKey(line));
      if (key == "b_model") {
        ++macro_.BlockCount;
        if (ReadModelBlock())
          ++macro_.ModelsCreated;
        else
          Log("Error creating model " + std::to_string(macro_.BlockCount));
        if (AtEnd()) return;
      } else if (key == "e_model") {
        Log("Syntax error, reached 'E_MODEL' statement before 'B_MODEL' statement");
      } else if (!Statement(key, GetLineValue(line))) {
        Log("Ignoring unknown command or syntax error: " + line);
      }
    }
  }

  std::optional<double> Number(const std::string& value) const { return NumericText(value, locale_.DecimalSeparator); }
  // A number in the range of 16-bit integers, rounded.
  std::optional<int> Integer(const std::string& value) const {
    const std::optional<double> number = Number(value);
    if (!number || std::abs(*number) > std::numeric_limits<std::int16_t>::max()) return std::nullopt;
    return RoundToInt16(*number);
  }

  bool Statement(const std::string& key, const std::string& value);
  bool ReadModelBlock();
  ModelClass* CreateMacroModel(std::vector<std::string> functions, const std::string& ID);
  void WarnOfJoinedWords(const std::string& line) {
    if (JoinsWords(line.substr(line.find('=') + 1)))
      Warn("the model line '" + line +
           "' is read without its blanks, which joins two words; put word operators in parentheses, as in (a) mod (b)");
  }
  void WarnOfBrokenLines(const ModelClass& model, const std::string& block);

  std::string_view rest_;  // of the file
  const LocaleText& locale_;
  Settings& preferences_;
  Macro& macro_;
  MacroSetup& setup_;
  std::string& log_;
  int userModels_ = 0;
  ModelsByLines byLines_;
  std::unordered_map<const ModelClass*, std::string> blocks_;  // the block that each model was first told by
};

// The statements of a macro, less the model blocks. `value` is what stands right of the "=".
bool Reader::Statement(const std::string& key, const std::string& value) {
  using Action = void (*)(Reader&, MacroSetup&, const std::string& value);
  static constexpr std::pair<std::string_view, Action> kStatements[] = {
      {"comment",
       [](Reader&, MacroSetup& setup, const std::string& value) {
         if (value.empty()) return;
         if (!setup.Comment.empty()) setup.Comment += NL;
         setup.Comment += "        " + value;
       }},
      {"handshake",
       [](Reader&, MacroSetup& setup, const std::string& value) {
         setup.UseDDE |= ContainsNoCase(value, "usedde");
         setup.ShowMessageBox |= ContainsNoCase(value, "showmessagebox");
         setup.ShowProgress |= ContainsNoCase(value, "showprogress");
       }},
      {"regressiontolerance",
       [](Reader& reader, MacroSetup& setup, const std::string& value) {
         if (const auto number = reader.Number(value)) reader.preferences_.ResidualTolerance = *number;
         setup.RegressionTolerance = reader.preferences_.ResidualTolerance;
       }},
      {"unchangediterations",
       [](Reader& reader, MacroSetup& setup, const std::string& value) {
         if (const auto number = reader.Integer(value)) reader.preferences_.DivIterations = *number;
         setup.UnchangedIterations = reader.preferences_.DivIterations;
       }},
      {"maxiterations",
       [](Reader& reader, MacroSetup& setup, const std::string& value) {
         if (const auto number = reader.Integer(value)) reader.preferences_.MaxIterations = *number;
         setup.MaxIterations = reader.preferences_.MaxIterations;
       }},
      {"derivatives",
       [](Reader& reader, MacroSetup& setup, const std::string& value) {
         setup.Derivatives = EqualNoCase(value, "richardson")          ? 0
                             : EqualNoCase(value, "centraldifference") ? 1
                                                                       : reader.preferences_.DerivativeMethod;
       }},
      {"datafile", [](Reader&, MacroSetup& setup, const std::string& value) { setup.DataFile = value; }},
      {"independentvariables",
       [](Reader& reader, MacroSetup& setup, const std::string& value) {
         if (const auto number = reader.Integer(value)) setup.IndependentVariables = *number;
         LoadModelCatalog(reader.macro_.Models, setup.IndependentVariables, reader.locale_);
       }},
      {"weighted",
       [](Reader&, MacroSetup& setup, const std::string& value) {
         setup.WeightedText = value;
         setup.Weighted = EqualNoCase(value, "true");
       }},
      {"overridedecimal",
       [](Reader&, MacroSetup& setup, const std::string& value) { setup.OverrideDecimal = EqualNoCase(value, "true"); }},
      {"missingdata",
       [](Reader&, MacroSetup& setup, const std::string& value) {
         if (!value.empty()) setup.MissingData = value;
       }},
      {"datafirstline",
       [](Reader&, MacroSetup& setup, const std::string& value) { setup.DataFirstLine = ToLower(value); }},
      {"inputdelimit",
       [](Reader&, MacroSetup& setup, const std::string& value) {
         SetInputDelimit(setup, value);
       }},
      {"columnorder",
       [](Reader& reader, MacroSetup& setup, const std::string& value) {
         setup.ColumnOrder = value.empty() ? "Default" : value;
         if (HasForeignSeparator(value, reader.locale_.ListSeparator))
           reader.Warn("'ColumnOrder = " + value + "' names one column: lists are separated by '" +
                       reader.locale_.ListSeparator + "' here");
       }},
      {"outputfile", [](Reader&, MacroSetup& setup, const std::string& value) { setup.OutputFile = value; }},
      {"outputquorvexformat",
       [](Reader&, MacroSetup& setup, const std::string& value) {
         setup.OutputFormat = EqualNoCase(value, "true") ? "Quorvex" : "Structured";
       }},
      {"outputformat", [](Reader&, MacroSetup& setup, const std::string& value) { setup.OutputFormat = value; }},
      {"logfile",
       [](Reader&, MacroSetup& setup, const std::string& value) {
         setup.LogFile = ToLower(value);
         if (!value.empty()) setup.LogEnabled = true;
       }},
      {"logsummaryonly",
       [](Reader&, MacroSetup& setup, const std::string& value) { setup.LogSummaryOnly = EqualNoCase(value, "true"); }},
      {"sortkey",
       [](Reader&, MacroSetup& setup, const std::string& value) {
         setup.SortKey = 1;
         for (std::size_t key = 0; key < kSortKeys.size(); ++key)
           if (EqualNoCase(value, kSortKeys[key])) setup.SortKey = static_cast<int>(key) + 1;
       }},
      {"tableoutput",
       [](Reader&, MacroSetup& setup, const std::string& value) {
         setup.TableDataFile = ContainsNoCase(value, "datafile");
         setup.TableCalcData = ContainsNoCase(value, "calcdata");
         setup.TableErrorData = ContainsNoCase(value, "errordata");
         setup.TableMinMaxError = ContainsNoCase(value, "minmaxerror");
       }},
      {"outputdelimit",
       [](Reader&, MacroSetup& setup, const std::string& value) {
         constexpr std::pair<std::string_view, std::string_view> kDelimiters[] = {
             {"tab", "\t"}, {"comma", ","}, {"space", " "}, {"semicolon", ";"}};
         for (const auto& [word, delimiter] : kDelimiters)
           if (ContainsNoCase(value, word)) setup.OutputDelimit = delimiter;
       }},
      {"outputfitinfo",
       [](Reader&, MacroSetup& setup, const std::string& value) { setup.OutputFitInfo = EqualNoCase(value, "true"); }},
      {"sqlquery", [](Reader&, MacroSetup& setup, const std::string& value) { setup.SQLQuery = value; }},
      {"parameterfile",
       [](Reader&, MacroSetup& setup, const std::string& value) {
         setup.ParameterFile = ToLower(value);
         if (!value.empty()) setup.UseParameterFile = true;
       }},
  };
  for (const auto& [keyword, act] : kStatements) {
    if (key != keyword) continue;
    act(*this, setup_, value);
    return true;
  }
  return false;
}

// The lines from behind B_MODEL to E_MODEL. Unlike the outer loop it acts on every line it reads.
bool Reader::ReadModelBlock() {
  std::vector<std::string> functions(1);
  struct Assign {
    std::string Line, Text;  // as written, and behind the word without blanks
  };
  std::vector<Assign> assigns;
  std::string ID;
  for (;;) {
    if (AtEnd()) return false;
    std::string line(TakeLine(rest_));
    std::erase(line, '\t');
    std::string copy = line;
    const std::string written = RemoveSpaces(copy);
    const std::string folded = ToLower(written);
    const bool hasValue = folded.find('=') != std::string::npos;
    if (folded == "e_model") {
      break;
    } else if (folded.starts_with("assign")) {
      assigns.push_back({std::string(Trim(line)), written.substr(6)});
    } else if (hasValue && folded.size() > 1 && folded[0] == 'f' && folded[1] >= '1' && folded[1] <= '9') {
      const auto n = static_cast<std::size_t>(folded[1] - '0');
      if (functions.size() <= n) functions.resize(n + 1);
      functions[n] = GetLineValue(folded);
      WarnOfJoinedWords(line);
    } else if (folded.starts_with("y=")) {
      functions[0] = GetLineValue(folded);
      WarnOfJoinedWords(line);
    } else if (hasValue && folded.starts_with("id")) {
      ID = GetLineValue(line);
    } else if (folded.empty()) {
      continue;
    } else if (folded == "b_model") {
      Log("Missing E_MODEL command, model ignored");
    } else if (folded == "e_macro") {
      Log("Found E_MACRO before E_MODEL command");
      return false;
    } else {
      Log("Error parsing model, the " + std::string(Trim(line)) +
          "command not valid between B_MODEL and E_MODEL pairs");
    }
  }

  ModelClass* const model = CreateMacroModel(std::move(functions), ID);
  if (model == nullptr) return false;
  model->Solve = true;
  model->SolveType = 0;
  for (const Assign& assign : assigns) {
    const auto percent = assign.Text.find('%');
    if (percent != std::string::npos && assign.Text.find('%', percent + 1) != std::string::npos) {
      macro_.Deferred.push_back({assign.Text, model});
    } else if (const std::string fault = ApplyAssign(*model, assign.Text, locale_.ListSeparator); !fault.empty()) {
      Warn("'" + assign.Line + "' is ignored: " + fault);
    }
  }
  if (!assigns.empty()) {
    if (!model->UserType) model->ForceRuleEstimate = true;
    model->SpecifyICComplete = false;
  }
  return true;
}

// The model of the collection with these lines, or a new user model; null where the lines make none.
ModelClass* Reader::CreateMacroModel(std::vector<std::string> functions, const std::string& ID) {
  const std::string block = std::to_string(macro_.BlockCount) + (ID.empty() ? "" : " ('" + ID + "')");
  ModelClass* model = byLines_.Find(macro_.Models, functions);
  if (model == nullptr) {
    const std::string key = std::to_string(++userModels_) + "UserModel";
    std::unique_ptr<ModelClass> created = NewModelFor(setup_.IndependentVariables == 1 ? 1 : 2, locale_);
    created->SetID(key, std::move(functions));
    created->Description = "User Model";
    if (!created->IsValidEquation()) {
      WarnOfBrokenLines(*created, block);
      return nullptr;
    }
    for (const std::string& warning : created->Compiled().Warnings) Warn("block " + block + ": " + warning);
    model = macro_.Models.Add(key, std::move(created));
    if (model == nullptr) return nullptr;
  }
  if (const auto [first, isNew] = blocks_.try_emplace(model, block); !isNew)
    Warn("blocks " + first->second + " and " + block +
         " have the same formula and become one model, which keeps what the later one says");
  if (!ID.empty()) model->cfgID = ID;
  return model;
}

// With the place of a syntax error, in the line as it was compiled, that is, in lower case and without blanks.
void Reader::WarnOfBrokenLines(const ModelClass& model, const std::string& block) {
  constexpr std::size_t kLongest = 300;
  const Expression& compiled = model.Compiled();
  std::string text = FirstCharacters(WhyNoModel(compiled, "block " + block + " does not compile"), kLongest);
  if (compiled.ParseError && compiled.PublicTokenPointerStart >= 0) {
    const int n = compiled.PublicSubFunctionPointer;
    const std::string& line = model.FunctionList(n);
    const auto end = line.begin() + std::min(PlaceOfError(compiled, line), static_cast<int>(line.size()));
    const auto before = std::count_if(line.begin(), end, [](char c) { return (c & 0xC0) != 0x80; });
    if (text.ends_with('.')) text.pop_back();
    text += ", at character " + std::to_string(before + 1);
    if (line.size() <= kLongest) text += " of '" + line + "'";
  }
  Warn(text);
}

}  // namespace

void SetInputDelimit(MacroSetup& setup, std::string_view value) {
  setup.InputDelimitText = value;
  setup.DelimitTab = ContainsNoCase(value, "tab");
  setup.DelimitComma = ContainsNoCase(value, "comma");
  setup.DelimitSemicolon = ContainsNoCase(value, "semicolon");
  setup.DelimitSpace = ContainsNoCase(value, "space");
  setup.IgnoreConsecutive = ContainsNoCase(value, "ignoreconsecutive");
}

bool ReadMacro(std::string_view text, const LocaleText& locale, Settings& preferences, Macro& macro, std::string& log) {
  return Reader(text, locale, preferences, macro, log).Read();
}

}  // namespace quorvex
