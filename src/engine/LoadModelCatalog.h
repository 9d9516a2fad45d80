#pragma once

#include "core/LocaleText.h"
#include "engine/ModelCollection.h"

namespace quorvex {

// Adds the built-in models for `independentVariables` variables to the collection, in catalogue order, each under its
// ID; one that is there already stays. None for a count outside 1 to 20.
void LoadModelCatalog(ModelCollection& models, int independentVariables, const LocaleText& locale);

}  // namespace quorvex
