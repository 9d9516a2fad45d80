#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/SolveData.h"
#include "engine/ModelClass.h"

namespace quorvex {

// Why a fit failed, in plain words, one sentence or two. It is found by looking at the model where the search began:
// whether it has values and derivatives at the points, and whether each coefficient moves the curve in a way of its
// own. What a search met on its way is known by the model's ErrorMessage alone. `left` is the model as its fit left it,
// `start` a copy with the estimates and ranges that it began with and with the input. Of many points, derivatives are
// looked at in 20,000.
std::string WhyFailed(const ModelClass& left, ModelClass& start, const SolveData& data, const LocaleText& locale);

// "'a'", "'a' and 'b'", "'a', 'b' and 'c'"
std::string Listed(const std::vector<std::string>& names);
// "1 point", "3 points"
std::string CountOfPoints(std::size_t count);

}  // namespace quorvex
