#include "selection/AllSubsets.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace quorvex {
namespace {

constexpr std::size_t kMostFree = kMostVariablesToReturn;

// A combination while the search goes on.
struct Found {
  double Key = 0;     // the less the better
  double Number = 0;  // of the counter
  double Rest = 0;    // the length of what it leaves of Y
  std::uint8_t Count = 0;
  std::array<std::uint8_t, kMostFree> Free{};  // numbers of bits, the highest first

  bool operator<(const Found& other) const { return Key != other.Key ? Key < other.Key : Number < other.Number; }
};

// A square upper triangle within rows of a fixed length: columns of candidates from the highest bit down, then Y.
struct Triangle {
  const double* Cells = nullptr;
  std::size_t Stride = 0, Order = 0;

  const double* Row(std::size_t row) const { return Cells + row * Stride; }
  Triangle WithoutFirst() const { return {Cells + Stride + 1, Stride, Order - 1}; }

  // The length of Y in it: what the columns that are in leave of Y.
  double Rest() const {
    double squares = 0;
    for (std::size_t i = 0; i < Order; ++i) squares += Row(i)[Order - 1] * Row(i)[Order - 1];
    return std::sqrt(squares);
  }
};

class Search {
 public:
  Search(const SubsetSolver& solver, const SubsetSearch& search, SelectionForm& form, std::size_t most)
      : solver_(solver), search_(search), form_(form), most_(most) {
    for (std::size_t j = 0; j < solver.Candidates(); ++j) (search.Always[j] ? always_ : free_).push_back(j);
  }

  std::vector<RankedSubset> Run() {
    // A fit of all its points leaves nothing to judge it by.
    const std::size_t room = solver_.N() - 1;
    const std::size_t least = always_.size();
    if (least > search_.VarsToReturn || solver_.Terms(least) > room) return {};
    mostFree_ = std::min({search_.VarsToReturn - least, room - solver_.Terms(least), free_.size(), kMostFree});
    total_ = std::exp2(static_cast<double>(free_.size()));

    Subset order = always_;
    order.insert(order.end(), free_.rbegin(), free_.rend());
    const TriangularFactor factor = solver_.Factor(order);
    for (std::size_t j = 0; j < least; ++j)
      if (!solver_.HasPartOfItsOwn(factor.R()(j, j), order[j])) return {};

    const std::size_t n = free_.size() + 1;
    rooms_.resize(n);
    for (std::size_t d = 1; d < n; ++d) rooms_[d].resize(d * d);
    std::vector<double> whole(n * n);
    for (std::size_t i = 0; i < n; ++i)
      for (std::size_t j = i; j < n; ++j) whole[i * n + j] = factor.R()(least + i, least + j);
    const Triangle top{whole.data(), n, n};
    if (least > 0) Take(top);
    Descend(top);
    if (!form_.Aborted()) form_.SetCounter(total_, total_);
    return Ranked();
  }

 private:
  // All combinations of the triangle's candidates with those that are in, but for none of them: first those without
  // the highest bit, so that the counter only rises.
  void Descend(const Triangle& triangle) {
    const std::size_t bits = triangle.Order - 1;
    if (bits == 0 || current_.Count == mostFree_ || form_.Aborted()) return;
    const std::size_t bit = bits - 1;
    if (bit > 0) {
      Drop(triangle, rooms_[bits].data());
      Descend({rooms_[bits].data(), bits, bits});
    }
    // All with it and those that are in would be nearly identical, too.
    if (form_.Aborted() || !solver_.HasPartOfItsOwn(triangle.Cells[0], free_[bit])) return;
    const Triangle with = triangle.WithoutFirst();
    const double number = current_.Number;
    current_.Free[current_.Count++] = static_cast<std::uint8_t>(bit);
    current_.Number += std::exp2(static_cast<double>(bit));
    Take(with);
    Descend(with);
    current_.Number = number;
    --current_.Count;
  }

  // The triangle without its first column. What that leaves below the diagonal is rotated away, row by row.
  static void Drop(const Triangle& from, double* to) {
    const std::size_t n = from.Order - 1;
    // The row that the next one is rotated against.
    std::array<double, 256> upper;
    std::copy_n(from.Row(0) + 1, n, upper.data());
    for (std::size_t i = 0; i < n; ++i, to += n) {
      const double* lower = from.Row(i + 1) + 1;
      const double length = std::sqrt(upper[i] * upper[i] + lower[i] * lower[i]);
      const double c = length == 0 ? 1 : upper[i] / length, s = length == 0 ? 0 : lower[i] / length;
      to[i] = length;
      for (std::size_t j = i + 1; j < n; ++j) {
        to[j] = c * upper[j] + s * lower[j];
        upper[j] = c * lower[j] - s * upper[j];
      }
    }
  }

  void Take(const Triangle& triangle) {
    form_.SetCounter(current_.Number + 1, total_);
    Found found = current_;
    found.Rest = triangle.Rest();
    const std::size_t variables = always_.size() + found.Count;
    // Of models with equally many terms all three ranks say the same; R^2 and RSS do always.
    found.Key = search_.RankBy == SubsetRank::StdErr
                    ? found.Rest * found.Rest / static_cast<double>(solver_.N() - solver_.Terms(variables))
                    : found.Rest;
    found_.push_back(found);
    // Twice the room, so that the worst go many at a time.
    if (found_.size() < 2 * most_) return;
    std::nth_element(found_.begin(), found_.begin() + static_cast<std::ptrdiff_t>(most_), found_.end());
    found_.resize(most_);
  }

  std::vector<RankedSubset> Ranked() {
    std::sort(found_.begin(), found_.end());
    found_.resize(std::min(found_.size(), most_));
    std::vector<RankedSubset> ranked;
    ranked.reserve(found_.size());
    for (const Found& found : found_) {
      Subset variables = always_;
      for (std::size_t i = 0; i < found.Count; ++i) variables.push_back(free_[found.Free[i]]);
      std::sort(variables.begin(), variables.end());
      const auto quality = solver_.QualityOf(found.Rest, variables.size());
      if (std::isfinite(quality.RSS)) ranked.push_back({std::move(variables), quality});
    }
    return ranked;
  }

  const SubsetSolver& solver_;
  const SubsetSearch& search_;
  SelectionForm& form_;
  const std::size_t most_;
  Subset always_, free_;
  std::size_t mostFree_ = 0;
  double total_ = 0;
  std::vector<std::vector<double>> rooms_;  // by order: where a triangle goes whose first column was dropped
  Found current_;
  std::vector<Found> found_;
};

}  // namespace

std::vector<RankedSubset> AllSubsets(const SubsetSolver& solver, const SubsetSearch& search, SelectionForm& form,
                                     std::size_t most) {
  return Search(solver, search, form, most).Run();
}

}  // namespace quorvex
