#include "core/NearestWord.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "core/NumberText.h"

namespace quorvex {
namespace {

// How many single changes lead from one word to the other, a swap of neighbours counting as one: row by row over the
// beginnings of `a`, of which the two rows before are kept.
std::size_t Distance(std::string_view a, std::string_view b) {
  std::array<std::vector<std::size_t>, 3> rows;
  for (auto& row : rows) row.resize(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) rows[0][j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    auto& now = rows[i % 3];
    const auto &before = rows[(i + 2) % 3], &twoBefore = rows[(i + 1) % 3];
    now[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      now[j] = std::min({before[j] + 1, now[j - 1] + 1, before[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) now[j] = std::min(now[j], twoBefore[j - 2] + 1);
    }
  }
  return rows[a.size() % 3][b.size()];
}

}  // namespace

std::string_view NearestWord(std::string_view word, std::span<const std::string_view> known) {
  std::string_view nearest;
  std::size_t least = 0;
  std::string folded;  // made once a word of about that length is there
  for (const std::string_view each : known) {
    const std::size_t most = each.size() / 3;
    const std::size_t apart = word.size() > each.size() ? word.size() - each.size() : each.size() - word.size();
    if (apart > most || (!nearest.empty() && apart >= least)) continue;
    if (folded.empty()) folded = ToLower(word);
    const std::size_t distance = Distance(folded, ToLower(each));
    if (distance > most || (!nearest.empty() && distance >= least)) continue;
    nearest = each;
    least = distance;
  }
  return nearest;
}

}  // namespace quorvex
