#pragma once

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "engine/ModelClass.h"

namespace quorvex {

struct Expression;

// A user-defined model as text: what the editor shows and files store. Numbers and lists are in the locale's form.
struct UserModelDefinition {
  // One per coefficient, in the order of the coefficients' names.
  struct Coefficient {
    std::string Rule, RuleConstant, Derivative;
    double Minimum = -HUGE_VAL, Maximum = HUGE_VAL;  // of which files of models know nothing

    bool operator==(const Coefficient&) const = default;
  };

  std::string id;
  std::vector<std::string> FunctionList;  // the model line, then F1 to F9, as far as they are there
  std::string Description;
  std::vector<Coefficient> Coefficients;

  bool operator==(const UserModelDefinition&) const = default;
};

UserModelDefinition DefinitionOf(const ModelClass& model);

// What a macro's model goes by within its run, counted from 1; nobody has given it that name.
std::string KeyOfMacroModel(int number);

// The name of a model where it is drawn or reported on: the one given in a macro, else its ID, but its formula where a
// macro gave none.
std::string ShownName(const ModelClass& model);

// The model of these lines, for data with that many independent variables; also an equation without coefficients, which
// can be drawn. Null where they do not compile, have no variable or ask for one beyond them.
std::unique_ptr<ModelClass> CompileModel(std::string id, std::vector<std::string> lines,
                                         std::size_t independentVariables, const LocaleText& locale);

// The model of a definition, for data with that many independent variables. Null where there is none for its text, it
// has no coefficients, or others than the definition.
std::unique_ptr<ModelClass> MakeUserModel(const UserModelDefinition& definition, std::size_t independentVariables,
                                          const LocaleText& locale);

// Whether two models have the same lines, to the letter.
bool SameDefinition(const ModelClass& a, const ModelClass& b);

// Why compiled lines are no model: `subject` and the reason, as in "Not a model yet, in F1: Unexpected token ')'."; ""
// where they are one.
std::string WhyNoModel(const Expression& compiled, const std::string& subject);

// Where the offending token of a syntax error begins in `line`, the line that the error is in, from 0.
int PlaceOfError(const Expression& compiled, const std::string& line);

// A new, empty model for data with that many independent variables.
std::unique_ptr<ModelClass> NewModelFor(std::size_t independentVariables, const LocaleText& locale);

}  // namespace quorvex
