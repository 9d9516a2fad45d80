#pragma once

#include <string>

#include "engine/ModelClass.h"

namespace quorvex {

// Write the model to `file` as a function in BASIC or C, with the library functions that it needs, dated now in local
// time. The function takes its name from the file. Return the file error's number, or 0.
int WriteBasicFunction(const ModelClass& model, const std::string& file);
int WriteCFunction(const ModelClass& model, const std::string& file);

}  // namespace quorvex
