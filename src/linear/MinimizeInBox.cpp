#include "linear/MinimizeInBox.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace quorvex {
namespace {

class ActiveSet {
 public:
  ActiveSet(const BoxProblem& problem, const Box& box, std::vector<double> x)
      : problem_(problem), box_(box), x_(std::move(x)), free_(x_.size()), refused_(x_.size(), false) {
    for (std::size_t j = 0; j < x_.size(); ++j) free_[j] = box.Lower[j] < x_[j] && x_[j] < box.Upper[j];
  }

  std::optional<std::vector<double>> Run() {
    // Each round but those that rounding sends in a circle gains something; where it does, x is as good as it gets.
    const std::size_t rounds = 20 * x_.size() + 20;
    std::optional<std::size_t> letGo;
    for (std::size_t round = 0; round < rounds; ++round) {
      if (std::ranges::find(free_, true) != free_.end()) {
        const auto z = problem_.Minimum(free_, x_);
        if (!z) return std::nullopt;
        if (!GoTowards(*z, letGo)) continue;
      }
      letGo = BestToLetGo();
      if (!letGo) break;
      free_[*letGo] = true;
    }
    return x_;
  }

 private:
  double BoundBeyond(double z, std::size_t j) const { return z < box_.Lower[j] ? box_.Lower[j] : box_.Upper[j]; }
  bool IsBeyond(double z, std::size_t j) const { return z < box_.Lower[j] || z > box_.Upper[j]; }

  // Goes to z, or to where the first bound is met on the way; what meets it stays there. Whether z was reached.
  bool GoTowards(const std::vector<double>& z, std::optional<std::size_t> letGo) {
    double part = 1;
    bool inside = true;
    const auto partOf = [&](std::size_t j) { return (BoundBeyond(z[j], j) - x_[j]) / (z[j] - x_[j]); };
    for (std::size_t j = 0; j < x_.size(); ++j) {
      if (!free_[j] || !IsBeyond(z[j], j)) continue;
      inside = false;
      part = std::min(part, partOf(j));
    }
    // What is let go and wants to leave at once was let go for a rounding error.
    if (part > 0)
      refused_.assign(x_.size(), false);
    else if (letGo)
      refused_[*letGo] = true;
    for (std::size_t j = 0; j < x_.size(); ++j) {
      if (!free_[j]) continue;
      if (inside) {
        x_[j] = z[j];
      } else if (IsBeyond(z[j], j) && partOf(j) <= part) {
        x_[j] = BoundBeyond(z[j], j);
        free_[j] = false;
      } else {
        x_[j] = std::clamp(x_[j] + part * (z[j] - x_[j]), box_.Lower[j], box_.Upper[j]);
      }
    }
    return inside;
  }

  std::optional<std::size_t> BestToLetGo() const {
    if (std::ranges::find(free_, false) == free_.end()) return std::nullopt;
    const std::vector<double> descent = problem_.Descent(x_);
    std::optional<std::size_t> best;
    for (std::size_t j = 0; j < x_.size(); ++j) {
      if (free_[j] || refused_[j] || box_.Lower[j] == box_.Upper[j]) continue;
      const bool inwards = x_[j] == box_.Lower[j] ? descent[j] > 0 : descent[j] < 0;
      if (inwards && (!best || std::abs(descent[j]) > std::abs(descent[*best]))) best = j;
    }
    return best;
  }

  const BoxProblem& problem_;
  const Box& box_;
  std::vector<double> x_;
  std::vector<bool> free_, refused_;
};

}  // namespace

bool Box::Holds(std::span<const double> x) const {
  for (std::size_t j = 0; j < x.size(); ++j)
    if (!(Lower[j] <= x[j] && x[j] <= Upper[j])) return false;
  return true;
}

void Box::BringInside(std::span<double> x) const {
  for (std::size_t j = 0; j < x.size(); ++j) x[j] = std::clamp(x[j], Lower[j], Upper[j]);
}

std::optional<std::vector<double>> MinimizeInBox(const BoxProblem& problem, const Box& box, std::vector<double> x) {
  return ActiveSet(problem, box, std::move(x)).Run();
}

}  // namespace quorvex
