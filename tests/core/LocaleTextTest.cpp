#include <gtest/gtest.h>
#include <locale.h>

#include "TemporaryFolder.h"
#include "core/LocaleText.h"

namespace quorvex {
namespace {

constexpr LocaleText kGerman = {',', ';', '.', '.', ':', DateOrder::DayFirst};

TEST(ReadUserLocale, AsksTheEnvironmentInTheSystemsOrder) {
  const locale_t handle = newlocale(LC_ALL_MASK, "de_DE.UTF-8", locale_t{});
  const LocaleText german = handle != locale_t{} ? kGerman : LocaleText();  // a machine without it gives the defaults
  if (handle != locale_t{}) freelocale(handle);
  LocaleText germanNumbers = german;
  germanNumbers.DateSeparator = '/';
  germanNumbers.OrderOfDate = DateOrder::MonthFirst;

  const struct {
    const char *all, *numeric, *lang;
    LocaleText expected;
  } kCases[] = {
      {nullptr, nullptr, nullptr, {}},
      {nullptr, nullptr, "de_DE.UTF-8", german},
      {"", "", "de_DE.UTF-8", german},
      {"C", "de_DE.UTF-8", "de_DE.UTF-8", {}},
      {nullptr, "de_DE.UTF-8", "C", germanNumbers},
      {"de_DE.UTF-8", "C", nullptr, german},
      {"xx_XX.nonsense", "de_DE.UTF-8", "de_DE.UTF-8", {}},
  };
  const TemporaryVariable time("LC_TIME", nullptr);
  for (const auto& c : kCases) {
    const TemporaryVariable all("LC_ALL", c.all), numeric("LC_NUMERIC", c.numeric), lang("LANG", c.lang);
    EXPECT_EQ(ReadUserLocale(), c.expected) << (c.all ? c.all : "-") << ' ' << (c.lang ? c.lang : "-");
  }
}

TEST(LocalizeExpression, SwapsSeparatorsAndBack) {
  const std::string stored = "a*x^1.5+max(b,2.25)";
  EXPECT_EQ(LocalizeExpression(stored, kGerman), "a*x^1,5+max(b;2,25)");
  EXPECT_EQ(DelocalizeExpression(LocalizeExpression(stored, kGerman), kGerman), stored);
  EXPECT_EQ(LocalizeExpression(stored, LocaleText()), stored);
  EXPECT_EQ(DelocalizeExpression(stored, LocaleText()), stored);

  LocaleText swiss;
  swiss.ThousandSeparator = '\'';
  EXPECT_EQ(LocalizeExpression("1'000.5,2", swiss), "1000.5,2");
}

}  // namespace
}  // namespace quorvex
