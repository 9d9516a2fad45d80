#include "import/DeviationColumn.h"

#include <algorithm>
#include <cctype>

#include "core/NumberText.h"

namespace quorvex {
namespace {

// The words of a heading in small letters, without the unit in brackets at its end.
std::vector<std::string> Words(std::string_view heading) {
  if (const std::size_t unit = heading.find_first_of("(["); unit != 0) heading = heading.substr(0, unit);
  std::vector<std::string> words;
  bool inWord = false;
  for (const char c : ToLower(heading)) {
    // What is no ASCII belongs to a word, too.
    const bool letter = std::isalnum(static_cast<unsigned char>(c)) != 0 || (c & 0x80) != 0;
    if (letter && !inWord) words.emplace_back();
    if (letter) words.back() += c;
    inWord = letter;
  }
  return words;
}

}  // namespace

bool NamesDeviation(std::string_view heading) {
  const auto means = [](const std::string& word) {
    constexpr std::string_view kWords[] = {"sd",        "sdev",  "stdev", "stddev", "std",
                                           "dev",       "error", "err",   "errors", "uncertainty",
                                           "deviation", "sigma", "sem",   "dy",     "\xCF\x83"};
    return std::ranges::find(kWords, word) != std::end(kWords);
  };
  const std::vector<std::string> words = Words(heading);
  // "error rate" is a measurement, "error of y" is none.
  return !words.empty() && (means(words.back()) || (words.size() > 1 && means(words.front()) && words.back() == "y"));
}

std::size_t DeviationColumn(const std::vector<std::string>& headings) {
  if (headings.size() < 3) return 0;
  const auto found = std::find_if(headings.begin() + 1, headings.end(), NamesDeviation);
  return found == headings.end() ? 0 : static_cast<std::size_t>(found - headings.begin()) + 1;
}

}  // namespace quorvex
