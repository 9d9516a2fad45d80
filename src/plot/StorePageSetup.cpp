#include "plot/StorePageSetup.h"

#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr const char* kSection = "printsetup";

// In the order in which they are looked at.
constexpr struct {
  std::string PageSetupEntries::*Entry;
  const char *Name, *Key;
} kMargins[] = {{&PageSetupEntries::Left, "Left", "mleft"},
                {&PageSetupEntries::Right, "Right", "mright"},
                {&PageSetupEntries::Top, "Top", "mtop"},
                {&PageSetupEntries::Bottom, "Bottom", "mbottom"}};

}  // namespace

PageSetupEntries PageSetupEntries::Read(const Settings& settings, const LocaleText& locale) {
  PageSetupEntries entries;
  for (const auto& margin : kMargins)
    entries.*margin.Entry = LocalizeExpression(GeneralNumber(settings.Number(margin.Key, kSection)), locale);
  entries.Units = settings.Text("munits", kSection);
  entries.PrintBackground = settings.Flag("printbackground", kSection);
  entries.Orientation = settings.Integer("plotorientation", kSection);
  return entries;
}

bool StorePageSetup(const PageSetupEntries& entries, const LocaleText& locale, Settings& settings, Prompter& user) {
  const auto number = [&](const std::string& text) { return NumericText(text, locale.DecimalSeparator); };
  for (const auto& margin : kMargins) {
    if (number(entries.*margin.Entry)) continue;
    user.Refuse(std::string("Please enter a valid number for the ") + margin.Name + " Margin");
    return false;
  }
  for (const auto& margin : kMargins) settings.SetNumber(margin.Key, *number(entries.*margin.Entry), kSection);
  settings.Set("munits", entries.Units, kSection);
  settings.SetFlag("printbackground", entries.PrintBackground, kSection);
  settings.SetNumber("plotorientation", entries.Orientation, kSection);
  return true;
}

}  // namespace quorvex
