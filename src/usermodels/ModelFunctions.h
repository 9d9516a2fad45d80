#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/LocaleText.h"

namespace quorvex {

// A function of the equation language as the user reads about it.
struct ModelFunction {
  std::string_view Name, Arguments, Meaning;  // the names of the arguments, one letter or word each, separated by ","
};

// Those that a model with that many independent variables may use, by subject.
std::vector<ModelFunction> ModelFunctions(std::size_t independentVariables);

// A text that is put into a model's line, and where the caret goes in it.
struct FunctionTemplate {
  std::string Text;
  std::size_t Caret = 0;  // in front of that byte
};

// The function around `argument`, which stands in the place of the first one; further ones are left to be typed.
FunctionTemplate TemplateOf(const ModelFunction& function, std::string_view argument, const LocaleText& locale);

}  // namespace quorvex
