#include "files/PlotTemplate.h"

#include <vector>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/SaveFile.h"
#include "core/TextEncoding.h"
#include "files/PlotTemplateKeys.h"

namespace quorvex {
namespace {

constexpr std::string_view kNull = "null", kPrompt = "prompt";

// Many times what a template can hold.
constexpr std::size_t kLargestFile = 1 << 20;

std::optional<std::string> ReadText(const std::string& fileName) {
  WholeFile file;
  if (file.Read(fileName, kLargestFile + 1) != 0 || file.Text().size() > kLargestFile) return std::nullopt;
  return DecodeText(file.Text());
}

std::optional<std::string> AskFor(const TemplateKey& key, PlotPage& plot, Prompter& user) {
  const auto present = (key.Offered ? key.Offered : key.Value)(plot);
  if (!present) return std::nullopt;
  return key.Kind == TemplateKind::Color ? user.AskColor(key.Prompt, *present) : user.AskText(key.Prompt, *present);
}

// Whether a reader takes the value for what it is.
bool CanBeWritten(const std::string& line, std::string_view value) {
  if (line.find_first_of("\r\n") != std::string::npos) return false;
  const auto read = ParseTemplateLine(line);
  return read && read->Value == value && !EqualNoCase(value, kPrompt);
}

bool EndsWithExtension(const std::string& fileName, const std::string& extension) {
  return ToLower(fileName).ends_with(extension);
}

}  // namespace

std::optional<TemplateLine> ParseTemplateLine(std::string_view line) {
  line = Trim(line);
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos || equals == 0 || line.ends_with('=')) return std::nullopt;
  const std::string_view value = Trim(line.substr(equals + 1));
  if (EqualNoCase(value, kNull)) return std::nullopt;
  return TemplateLine{ToLower(Trim(line.substr(0, equals))), value};
}

void ApplyTemplateText(PlotPage& plot, std::string_view text, Prompter* user) {
  const PlotTemplateFormat& format = TemplateFormatOf(plot);
  const std::vector<PlotAxis*> axes = plot.Axes();
  std::vector<AxisLimits> before;
  for (const PlotAxis* axis : axes) before.push_back(axis->Limits());

  while (!text.empty()) {
    const auto line = ParseTemplateLine(TakeLine(text));
    const TemplateKey* key = line ? format.Find(line->Key) : nullptr;
    if (key == nullptr) continue;
    if (!EqualNoCase(line->Value, kPrompt)) {
      key->Set(plot, line->Value);
    } else if (user != nullptr) {
      if (const auto typed = AskFor(*key, plot, *user)) key->Set(plot, *typed);
    }
  }

  for (std::size_t i = 0; i < axes.size(); ++i) {
    if (axes[i]->Min <= axes[i]->Max) continue;
    axes[i]->Min = before[i].Min;
    axes[i]->Max = before[i].Max;
  }
}

bool ApplyPlotTemplate(PlotPage& plot, const std::string& fileName, bool promptAllowed, Prompter& user) {
  const PlotTemplateFormat& format = TemplateFormatOf(plot);
  if (EndsWithExtension(fileName, format.OtherExtension)) {
    user.Refuse(format.Mismatch);
    return false;
  }
  const std::optional<std::string> text = ReadText(fileName);
  if (text)
    ApplyTemplateText(plot, *text, promptAllowed ? &user : nullptr);
  else
    user.Refuse("Error applying plot template '" + fileName + "'.");
  return text.has_value();
}

void ApplyDefaultTemplate(PlotPage& plot, Settings& settings, Prompter& user) {
  const std::string& setting = TemplateFormatOf(plot).Setting;
  const std::string fileName = settings.Text(setting);
  if (fileName.empty()) return;
  if (IdentityOfFile(ResolvePath(fileName))) {
    ApplyPlotTemplate(plot, fileName, true, user);
  } else if (user.Ask("Could not find the plot template '" + fileName +
                      "'. Do you want to remove it as a default template?")) {
    settings.Set(setting, "0");
  }
}

std::string TemplateText(const PlotPage& plot, const TemplateSelection& selection) {
  // The keys reach their fields to read and to set them; here they only read.
  PlotPage& fields = const_cast<PlotPage&>(plot);
  std::string text;
  for (const TemplateKey& key : TemplateFormatOf(plot).Keys) {
    const auto value = selection.contains(key.Group) ? key.Value(fields) : std::nullopt;
    if (key.WhereUsed && !value) continue;
    const std::string stored(Trim(value.value_or("")));
    std::string line = key.Key + " = " + stored;
    if (!CanBeWritten(line, stored)) line = key.Key + " = " + std::string(kNull);
    text.append(line).append(NL);
  }
  return text;
}

int SavePlotTemplate(const PlotPage& plot, const std::string& fileName, const TemplateSelection& selection) {
  return SaveFile(fileName, TemplateText(plot, selection));
}

std::optional<std::string> ReadTemplateText(const std::string& fileName, Prompter& user) {
  std::optional<std::string> text = ReadText(fileName);
  if (!text) user.Refuse("Error reading plot template '" + fileName + "'.");
  return text;
}

bool SaveTemplateText(const std::string& fileName, const std::string& text, Prompter& user) {
  const bool saved = SaveFile(fileName, text) == 0;
  if (!saved) user.Refuse("Error saving plot template to '" + fileName + "'.");
  return saved;
}

bool UpdatePlotTemplate(const PlotPage& plot, const TemplateSelection& selection, Settings& settings, Prompter& user) {
  const PlotTemplateFormat& format = TemplateFormatOf(plot);
  if (!plot.PlotCreated) {
    user.Refuse(
        "An error in the current plot settings prohibits the plot template from being saved with the plots current "
        "state. Check the plot settings in the Graph Properties window.");
    return false;
  }
  const auto fileName =
      user.ChooseFileToSave("Save Template", format.Filter, format.Extension, "Template." + format.Extension);
  if (!fileName) return false;
  if (!SaveTemplateText(*fileName, TemplateText(plot, selection), user)) return false;
  if (user.Ask("Do you want to make this the default template?")) settings.Set(format.Setting, *fileName);
  return true;
}

}  // namespace quorvex
