#include "macro/MacroReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>
#include <set>
#include <unordered_map>

#include "core/DerivativeKind.h"
#include "core/Files.h"
#include "core/NearestWord.h"
#include "core/NumberText.h"
#include "diagnosis/DerivedQuantity.h"
#include "engine/LoadModelCatalog.h"
#include "engine/UserModel.h"
#include "equation/Expression.h"
#include "macro/Assign.h"
#include "macro/MacroStatements.h"
#include "macro/MacroText.h"
#include "macro/SubstituteParameters.h"
#include "macro/ValueFault.h"

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

// Two percent signs enclose a parameter, whose value is known only when its run begins.
bool HoldsParameter(std::string_view text) { return text.find('%') < text.rfind('%') && text.rfind('%') < text.size(); }

// The first model of a collection that has given lines, found without looking through all of them.
class ModelsByLines {
 public:
  // The model whose first lines are these, in any case; null where there is none. Lines that a model doesn't have count
  // as empty.
  ModelClass* Find(const ModelCollection& models, const std::vector<std::string>& lines) {
    for (; known_ < models.size(); ++known_) {
      ModelClass* const model = models.begin()[static_cast<std::ptrdiff_t>(known_)].get();
      std::string key;
      // Under its first line, its first two and so on, since a block may give any number of them.
      for (int n = 0; n < kMostFunctionLines; ++n) first_.try_emplace(key += Piece(model->FunctionList(n)), model);
    }
    std::string key;
    for (const std::string& line : lines) key += Piece(line);
    const auto found = first_.find(key);
    return found == first_.end() ? nullptr : found->second;
  }

 private:
  static std::string Piece(const std::string& line) { return ToLower(line) + '\n'; }

  std::size_t known_ = 0;  // models that have been looked at
  std::unordered_map<std::string, ModelClass*> first_;
};

class Reader {
 public:
  Reader(std::string_view text, const LocaleText& locale, Settings& preferences, Macro& macro, std::string& log,
         MacroNotes* notes)
      : rest_(text),
        locale_(locale),
        preferences_(preferences),
        macro_(macro),
        setup_(macro.Setup),
        log_(log),
        notes_(notes) {}

  bool Read() {
    while (!AtEnd()) {
      if (!EqualNoCase(NextTrimmed(), "b_macro")) continue;
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
    ++line_;
    std::erase(line, '\t');
    return line;
  }
  std::string NextTrimmed() { return std::string(Trim(NextLine())); }
  void Log(std::string_view text) { log_.append(text).append(NL); }
  void Warn(const std::string& text) { WarnAt(line_, text); }
  void WarnAt(std::size_t line, const std::string& text) {
    Log("Warning: " + text);
    NoteAt(line, text);
  }
  // What only a check tells.
  void Note(const std::string& text) { NoteAt(line_, text); }
  void NoteAt(std::size_t line, const std::string& text) {
    if (notes_ != nullptr) notes_->Faults.push_back({.Line = line, .Text = text});
  }
  void NoteNoEnd() {
    if (!hasEnd_) Note("the macro has no E_MACRO, and the last line of the file is not read.");
  }
  void NoteUnknown(const std::string& key, bool inModel);
  void NoteEarlier(const MacroStatement& statement);
  void NoteLine(const MacroStatement* statement, std::string_view keyword, const std::string& value) {
    if (notes_ != nullptr) notes_->Lines.push_back({line_, statement, std::string(keyword), value});
  }

  // The last line of the file is never acted on; a well-formed macro ends there with E_MACRO.
  void ReadStatements() {
    for (;;) {
      std::string line = NextTrimmed();
      if (EqualNoCase(line, "e_macro")) return;
      if (AtEnd()) return NoteNoEnd();
      if (line.empty()) continue;
      const std::string written = GetLineKey(line), key = ToLower(written);
      if (key == "b_model") {
        ++macro_.BlockCount;
        if (ReadModelBlock())
          ++macro_.ModelsCreated;
        else
          Log("Error creating model " + std::to_string(macro_.BlockCount));
        if (AtEnd()) return NoteNoEnd();
      } else if (key == "e_model") {
        Log("Syntax error, reached 'E_MODEL' statement before 'B_MODEL' statement");
        Note("E_MODEL stands without a B_MODEL before it.");
      } else if (!Statement(key, GetLineValue(line))) {
        Log("Ignoring unknown command or syntax error: " + line);
        NoteUnknown(written, false);
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

  // A statement outside of the model blocks. `value` is what stands right of the "=". False for an unknown one.
  bool Statement(const std::string& key, const std::string& value);
  void Take(const MacroStatement& statement, const LinesValue& lines, const std::string& value);
  void Take(const MacroStatement& statement, const TextValue& text, const std::string& value);
  void Take(const MacroStatement& statement, const LimitValue<double>& limit, const std::string& value);
  void Take(const MacroStatement& statement, const LimitValue<int>& limit, const std::string& value);
  template <typename N>
  void Take(const MacroStatement& statement, const NumberValue<N>& wanted, const std::string& value);
  void Take(const MacroStatement& statement, const VariablesValue& variables, const std::string& value);
  void Take(const MacroStatement& statement, const DerivativesValue& derivatives, const std::string& value);
  void Take(const MacroStatement&, const FlagValue& flag, const std::string& value) { ReadFlag(flag, value, setup_); }
  void Take(const MacroStatement&, const WordsValue& words, const std::string& value) {
    ReadWords(words, value, setup_);
  }
  void Take(const MacroStatement& statement, const ChoiceValue& choice, const std::string& value);
  template <typename N>
  void TakeLimit(const LimitValue<N>& limit, const std::optional<N>& number) {
    // What is no number leaves the preference in force.
    if (number) preferences_.*limit.Preference = *number;
    setup_.*limit.Read = preferences_.*limit.Preference;
  }

  bool ReadModelBlock();
  // An Assign or Report statement of a model.
  struct ModelStatement {
    std::string Line, Text;  // as written, and what is behind the word
    std::size_t Number;      // of the line
  };
  void TakeReports(ModelClass& model, const std::vector<ModelStatement>& reports);
  // Where the lines of a model stand, 0 for those that it doesn't have.
  struct BlockLines {
    std::size_t ID = 0;
    std::array<std::size_t, kMostFunctionLines> Function{};
  };
  ModelClass* CreateMacroModel(std::vector<std::string> functions, const std::string& ID, const BlockLines& lines);
  void WarnOfJoinedWords(const std::string& line) {
    if (JoinsWords(line.substr(line.find('=') + 1)))
      Warn("the model line '" + line +
           "' is read without its blanks, which joins two words; put word operators in parentheses, as in (a) mod (b)");
  }
  // A line is taken for one of a model by the letters that it begins with.
  void WarnOfOtherKey(const std::string& line, const std::string& folded, const std::string& key) {
    if (!EqualNoCase(folded.substr(0, folded.find('=')), key))
      Warn("the model line '" + std::string(Trim(line)) + "' counts as " + key);
  }
  void WarnOfBrokenLines(const ModelClass& model, const std::string& block, const BlockLines& lines);

  std::string_view rest_;  // of the file
  std::size_t line_ = 0;   // that was taken last, from 1
  const LocaleText& locale_;
  Settings& preferences_;
  Macro& macro_;
  MacroSetup& setup_;
  std::string& log_;
  MacroNotes* const notes_;  // null where nobody wants them
  bool hasEnd_ = false;      // an E_MACRO, if only within a model
  std::set<const MacroStatement*> seen_;
  int userModels_ = 0;
  ModelsByLines byLines_;
  std::unordered_map<const ModelClass*, std::string> blocks_;  // the block that each model was first told by
};

bool Reader::Statement(const std::string& key, const std::string& value) {
  const MacroStatement* const statement = FindStatement(key);
  if (statement == nullptr) return false;
  const std::size_t told = notes_ == nullptr ? 0 : notes_->Faults.size();
  if (notes_ != nullptr) NoteEarlier(*statement);
  NoteLine(statement, statement->Keyword, value);
  std::visit([&](const auto& kind) { Take(*statement, kind, value); }, statement->Value);
  if (notes_ == nullptr || notes_->Faults.size() > told) return true;
  // A parameter may make any value good.
  if (HoldsParameter(value) && IsSubstituted(*statement)) return true;
  if (const std::string fault = ValueFault(*statement, value, locale_); !fault.empty()) Note(fault);
  return true;
}

// A statement of which an earlier one counts no more, or that comes too late.
void Reader::NoteEarlier(const MacroStatement& statement) {
  if (macro_.BlockCount > 0 && std::holds_alternative<VariablesValue>(statement.Value))
    Note("IndependentVariables stands behind the first model, which was read without it.");
  const auto* words = std::get_if<WordsValue>(&statement.Value);
  const bool adds = std::holds_alternative<LinesValue>(statement.Value) || (words != nullptr && words->Adds);
  if (!seen_.insert(&statement).second && !adds)
    Note(std::string(statement.Keyword) + " stands in line " + std::to_string(notes_->LineOf(statement.Keyword)) +
         ", too; this one counts.");
}

void Reader::NoteUnknown(const std::string& key, bool inModel) {
  if (notes_ == nullptr) return;
  constexpr std::string_view kModelWords[] = {"ID", "Y",  "F1", "F2", "F3",     "F4",     "F5",
                                              "F6", "F7", "F8", "F9", "Assign", "Report", "E_MODEL"};
  constexpr std::string_view kBlocks[] = {"B_MODEL", "E_MODEL", "E_MACRO"};
  constexpr std::size_t kLongest = 80;
  std::string shown = FirstCharacters(key, kLongest);
  if (shown.size() < key.size()) shown += "...";
  if (inModel && FindStatement(key) != nullptr)
    return Note("the statement '" + shown + "' is not read between B_MODEL and E_MODEL.");
  std::vector<std::string_view> known;
  if (inModel) known.assign(std::begin(kModelWords), std::end(kModelWords));
  for (const MacroStatement& statement : MacroStatements()) known.push_back(statement.Keyword);
  if (!inModel) known.insert(known.end(), std::begin(kBlocks), std::end(kBlocks));
  // In a model a name may follow, as behind Assign.
  const std::string_view word = inModel ? std::string_view(key).substr(0, key.find(' ')) : std::string_view(key);
  const std::string_view nearest = NearestWord(word, known);
  Note("unknown statement '" + shown + "'." + (nearest.empty() ? "" : " Did you mean " + std::string(nearest) + "?"));
}

void Reader::Take(const MacroStatement&, const LinesValue& lines, const std::string& value) {
  if (value.empty()) return;
  std::string& text = setup_.*lines.Read;
  if (!text.empty()) text += NL;
  text.append(lines.Indent).append(value);
}

void Reader::Take(const MacroStatement& statement, const ChoiceValue& choice, const std::string& value) {
  if (choice.Read(setup_, value)) return;
  Warn("'" + std::string(statement.Keyword) + " = " + value + "' is ignored: it is none of " + WordsOf(choice));
}

void Reader::Take(const MacroStatement& statement, const TextValue& text, const std::string& value) {
  if (text.IsList && HasForeignSeparator(value, locale_.ListSeparator))
    Warn("'" + std::string(statement.Keyword) + " = " + value + "' names one column: lists are separated by '" +
         locale_.ListSeparator + "' here");
  if (value.empty() && text.Empty == EmptyText::IsIgnored) return;
  const bool isDefault = value.empty() && text.Empty == EmptyText::MeansDefault;
  setup_.*text.Read = isDefault ? MacroSetup().*text.Read : text.LowerCase ? ToLower(value) : value;
  if (text.AsTyped != nullptr) setup_.*text.AsTyped = value;
  if (text.Given != nullptr && !value.empty()) setup_.*text.Given = true;
}

void Reader::Take(const MacroStatement&, const LimitValue<double>& limit, const std::string& value) {
  TakeLimit(limit, Number(value));
}

void Reader::Take(const MacroStatement&, const LimitValue<int>& limit, const std::string& value) {
  TakeLimit(limit, Integer(value));
}

template <typename N>
void Reader::Take(const MacroStatement& statement, const NumberValue<N>& wanted, const std::string& value) {
  if (const auto number = NumberWithin(statement, value, locale_))
    setup_.*wanted.Read = static_cast<N>(*number);
  else
    Warn("'" + std::string(statement.Keyword) + " = " + value + "' is ignored: it is not " +
         std::string(wanted.Wanted));
}

void Reader::Take(const MacroStatement&, const VariablesValue& variables, const std::string& value) {
  if (const auto number = Integer(value)) setup_.*variables.Read = *number;
  LoadModelCatalog(macro_.Models, setup_.*variables.Read, locale_);
}

void Reader::Take(const MacroStatement&, const DerivativesValue& derivatives, const std::string& value) {
  setup_.*derivatives.Read = preferences_.*derivatives.Preference;
  for (std::size_t i = 0; i < derivatives.Words.size(); ++i)
    if (EqualNoCase(value, derivatives.Words[i])) setup_.*derivatives.Read = static_cast<DerivativeKind>(i);
}

// The lines from behind B_MODEL to E_MODEL. Unlike the outer loop it acts on every line it reads.
bool Reader::ReadModelBlock() {
  std::vector<std::string> functions(1);
  const std::size_t begin = line_;
  BlockLines lines;
  std::vector<ModelStatement> assigns, reports;  // the text of the former without blanks
  std::string ID;
  for (;;) {
    if (AtEnd()) {
      NoteAt(begin, "this B_MODEL has no E_MODEL, and its model is not read.");
      return false;
    }
    const std::string line = NextLine();
    std::string copy = line;
    const std::string written = RemoveSpaces(copy);
    const std::string folded = ToLower(written);
    const bool hasValue = folded.find('=') != std::string::npos;
    if (folded == "e_model") {
      break;
    } else if (folded.starts_with("assign")) {
      assigns.push_back({std::string(Trim(line)), written.substr(6), line_});
      NoteLine(nullptr, "Assign", written.substr(6));
    } else if (folded.starts_with("report=")) {
      // An expression keeps its blanks, which part words in it.
      reports.push_back({std::string(Trim(line)), GetLineValue(line), line_});
      NoteLine(nullptr, "Report", reports.back().Text);
    } else if (hasValue && folded.size() > 1 && folded[0] == 'f' && folded[1] >= '1' && folded[1] <= '9') {
      const auto n = static_cast<std::size_t>(folded[1] - '0');
      if (functions.size() <= n) functions.resize(n + 1);
      functions[n] = GetLineValue(folded);
      lines.Function[n] = line_;
      WarnOfOtherKey(line, folded, "F" + std::to_string(n));
      WarnOfJoinedWords(line);
    } else if (folded.starts_with("y=")) {
      functions[0] = GetLineValue(folded);
      lines.Function[0] = line_;
      WarnOfJoinedWords(line);
    } else if (hasValue && folded.starts_with("id")) {
      // Unlike the formulas an ID keeps its case and its blanks.
      ID = GetLineValue(line);
      lines.ID = line_;
      NoteLine(nullptr, "ID", ID);
      WarnOfOtherKey(line, folded, "ID");
    } else if (folded.empty()) {
      continue;
    } else if (folded == "b_model") {
      Log("Missing E_MODEL command, model ignored");
      Note("B_MODEL stands within a model, whose E_MODEL is missing.");
    } else if (folded == "e_macro") {
      Log("Found E_MACRO before E_MODEL command");
      hasEnd_ = true;
      NoteAt(begin, "this B_MODEL has no E_MODEL, and its model is not read.");
      return false;
    } else {
      Log("Error parsing model, the " + std::string(Trim(line)) +
          "command not valid between B_MODEL and E_MODEL pairs");
      NoteUnknown(std::string(Trim(std::string_view(line).substr(0, line.find('=')))), true);
    }
  }

  ModelClass* const model = CreateMacroModel(std::move(functions), ID, lines);
  if (model == nullptr) return false;
  model->Solve = true;
  model->SolveType = 0;
  for (const ModelStatement& assign : assigns) {
    if (HoldsParameter(assign.Text)) {
      macro_.Deferred.push_back({assign.Text, model, assign.Number});
    } else if (const std::string fault = ApplyAssign(*model, assign.Text, locale_); !fault.empty()) {
      WarnAt(assign.Number, "'" + assign.Line + "' is ignored: " + fault);
    }
  }
  TakeReports(*model, reports);
  if (!assigns.empty()) {
    // A built-in model would start from its linear form and pass over the rules that were just assigned.
    if (!model->UserType) model->ForceRuleEstimate = true;
    model->SpecifyICComplete = false;
  }
  return true;
}

// A quantity that can't be computed stays one, so that the answer tells why; the same is told here, where it can be
// known before parameters have their values.
void Reader::TakeReports(ModelClass& model, const std::vector<ModelStatement>& reports) {
  std::erase_if(macro_.DeferredReports, [&](const DeferredReport& earlier) { return earlier.Model == &model; });
  model.Reports.clear();
  for (const ModelStatement& report : reports) {
    if (HoldsParameter(report.Text))
      macro_.DeferredReports.push_back({report.Text, &model, model.Reports.size(), report.Number});
    model.Reports.push_back(ParseReport(report.Text));
  }
  const std::vector<std::string> faults = ReportFaults(model);
  for (std::size_t i = 0; i < reports.size(); ++i)
    if (!faults[i].empty() && !HoldsParameter(reports[i].Text))
      WarnAt(reports[i].Number, "'" + reports[i].Line + "' has no answer: " + faults[i]);
}

// The model of the collection with these lines, or a new user model; null where the lines make none.
ModelClass* Reader::CreateMacroModel(std::vector<std::string> functions, const std::string& ID,
                                     const BlockLines& lines) {
  const std::string block = std::to_string(macro_.BlockCount) + (ID.empty() ? "" : " ('" + ID + "')");
  ModelClass* model = byLines_.Find(macro_.Models, functions);
  if (model == nullptr) {
    const std::string key = KeyOfMacroModel(++userModels_);
    // All that counts here is one variable or several.
    std::unique_ptr<ModelClass> created = NewModelFor(setup_.IndependentVariables == 1 ? 1 : 2, locale_);
    created->SetID(key, std::move(functions));
    created->Description = "User Model";
    if (!created->IsValidEquation()) {
      WarnOfBrokenLines(*created, block, lines);
      return nullptr;
    }
    for (const std::string& warning : created->Compiled().Warnings)
      WarnAt(lines.Function[0] > 0 ? lines.Function[0] : line_, "block " + block + ": " + warning);
    model = macro_.Models.Add(key, std::move(created));
    if (model == nullptr) return nullptr;
  }
  if (const auto [first, isNew] = blocks_.try_emplace(model, block); !isNew)
    Warn("blocks " + first->second + " and " + block +
         " have the same formula and become one model, which keeps what the later one says");
  if (!ID.empty()) {
    std::erase_if(macro_.DeferredIDs, [&](const DeferredID& earlier) { return earlier.Model == model; });
    if (HoldsParameter(ID)) macro_.DeferredIDs.push_back({ID, model, lines.ID});
    model->cfgID = ID;
  }
  return model;
}

// With the place of a syntax error, in the line as it was compiled, that is, in lower case and without blanks.
void Reader::WarnOfBrokenLines(const ModelClass& model, const std::string& block, const BlockLines& lines) {
  constexpr std::size_t kLongest = 300;
  const Expression& compiled = model.Compiled();
  std::string text = FirstCharacters(WhyNoModel(compiled, "block " + block + " does not compile"), kLongest);
  std::size_t place = lines.Function[0];
  if (compiled.ParseError && compiled.PublicTokenPointerStart >= 0) {
    const int n = compiled.PublicSubFunctionPointer;
    place = lines.Function[static_cast<std::size_t>(n)];
    const std::string& line = model.FunctionList(n);
    const auto end = line.begin() + std::min(PlaceOfError(compiled, line), static_cast<int>(line.size()));
    // Characters, not bytes: those that continue a character of UTF-8 are not counted.
    const auto before = std::count_if(line.begin(), end, [](char c) { return (c & 0xC0) != 0x80; });
    if (text.ends_with('.')) text.pop_back();
    text += ", at character " + std::to_string(before + 1);
    if (line.size() <= kLongest) text += " of '" + line + "'";
  }
  WarnAt(place > 0 ? place : line_, text);
}

}  // namespace

bool ReadMacro(std::string_view text, const LocaleText& locale, Settings& preferences, Macro& macro, std::string& log,
               MacroNotes* notes) {
  return Reader(text, locale, preferences, macro, log, notes).Read();
}

}  // namespace quorvex
