#pragma once

#include <vector>

#include "engine/ModelCollection.h"

namespace quorvex {

// The solved models, the best first, by a sort key as settings and macros hold it: 1 RSS and 4 StdErr ascending, 2 R^2
// and 3 Ra^2 descending, ties in the order of the collection.
std::vector<ModelClass*> RankModels(const ModelCollection& models, int SortKey);

}  // namespace quorvex
