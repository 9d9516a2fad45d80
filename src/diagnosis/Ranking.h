#pragma once

#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

namespace quorvex {

class ModelClass;

// A model among the others that were tried on the same data.
struct Ranking {
  double AICc = NAN, BIC = NAN;  // engine/InformationCriteria.h
  double DeltaAICc = NAN;        // above the best one's
  double AkaikeWeight = NAN;     // the model's part in exp(-DeltaAICc / 2)
  int Group = 0;                 // from 1: models that the data cannot tell apart, by AICc within 2 of the group's best
  int SameAs = 0;                // rank (from 1) of the first model with the same fitted values; 0: none before it
  double LeaveOneOut = NAN;      // root mean square of the errors with each point left out, by leverages
  double CrossValidated = NAN;   // the same by refits, where asked for
  int FailedParts = 0;           // of these, parts without an answer
};

// The rankings of solved models, in the order of `ranked`, which is that of RankModels. Only models of the same data
// compare: those that were solved before the sheet was edited have differences, weights and groups among themselves.
// The errors of cross-validation are those that the models hold.
//
// Two models are the same in other clothes where their values at all points are equal within 1e-8 of the spread of Y,
// and so are those that a row of such pairs leads to. The weights count such models once, by the best of them: of all
// models with SameAs 0 they sum to 1 where every key is AICc's. A model without AICc has no group and no weight.
// (K. P. Burnham & D. R. Anderson, Model Selection and Multimodel Inference, 2nd ed. 2002.)
std::vector<Ranking> RankingOf(const std::vector<ModelClass*>& ranked);

// What is to be said of the rankings of these models, a sentence each: that more models were `tried`, with those that
// found no solution, than there are points; that some were fitted to other data, have no AICc beside others that do, or
// were fitted with a robust loss; which have no cross-validated error.
std::vector<std::string> RankingWarnings(const std::vector<ModelClass*>& ranked, std::size_t tried);

}  // namespace quorvex
