#pragma once

#include <cstddef>
#include <vector>

#include "selection/SubsetSolver.h"

namespace quorvex {

// A combination of All Subsets.
struct RankedSubset {
  Subset Variables;
  SubsetSolver::Quality Quality;
};

// Combinations that are kept, as many as a report has room for beside the tables below: the best ones.
inline constexpr std::size_t kMostSubsets = 65'000;

struct SubsetSearch {
  std::vector<bool> Always;  // per candidate: in every combination
  std::size_t VarsToReturn = 20;
  SubsetRank RankBy = SubsetRank::R2;
};

// All combinations of the candidates with at most VarsToReturn variables, ranked, of equal ones in the order of a
// counter whose bits are the candidates that are not always in, the first one being the lowest. Left out are the empty
// combination, those that leave no degree of freedom, and those with identical or nearly identical variables. The form
// is told the counter's value, from 1, of each that is solved; where it aborts, what is there by then is returned.
//
// Costs some 20 operations a combination, however many points there are, and no memory to speak of: the triangular
// factor of all candidates goes down a tree, in which the branch with the next candidate is a part of it, and the one
// without it takes a plane rotation for each of those behind. No rounding adds up but along such a path, of as many
// rotations as a direct solution takes.
// Source: D. M. Smith & J. M. Bremner, Comput. Stat. Data Anal. 7, 1989; C. Gatu & E. J. Kontoghiorghes, Parallel
// Comput. 29, 2003.
std::vector<RankedSubset> AllSubsets(const SubsetSolver& solver, const SubsetSearch& search, SelectionForm& form,
                                     std::size_t most = kMostSubsets);

}  // namespace quorvex
