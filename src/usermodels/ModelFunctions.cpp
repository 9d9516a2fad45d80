#include "usermodels/ModelFunctions.h"

#include <algorithm>

#include "equation/IntrinsicFunctions.h"

namespace quorvex {
namespace {

// clang-format off
constexpr ModelFunction kModelFunctions[] = {
    {"exp", "u", "e to the power u"},
    {"ln", "u", "natural logarithm"},
    {"log", "u", "natural logarithm, the same as ln"},
    {"log10", "u", "logarithm to base 10"},
    {"sqr", "u", "square root"},
    {"abs", "u", "absolute value"},
    {"sgn", "u", "sign: -1, 0 or 1"},
    {"if", "condition,u,v", "u where the condition holds, v elsewhere"},
    {"max", "u,v", "the larger one"},
    {"min", "u,v", "the smaller one"},
    {"mag", "u,v", "square root of u^2 + v^2"},
    {"fix", "u", "whole part, towards zero"},
    {"int", "u", "largest whole number not above u"},
    {"floor", "u", "largest whole number not above u"},
    {"ceil", "u", "smallest whole number not below u"},
    {"fract", "u", "part behind the decimal point, with the sign of u"},
    {"rnd", "u", "random number from 0 to 1; below 0 u restarts, 0 repeats"},

    {"sin", "u", "sine of u in radians"},
    {"cos", "u", "cosine"},
    {"tan", "u", "tangent"},
    {"sec", "u", "secant, 1/cos"},
    {"cosec", "u", "cosecant, 1/sin"},
    {"cotan", "u", "cotangent, 1/tan"},
    {"arcsin", "u", "inverse sine"},
    {"arccos", "u", "inverse cosine"},
    {"arctan", "u", "inverse tangent"},
    {"arcsec", "u", "inverse secant"},
    {"arccosec", "u", "inverse cosecant"},
    {"arccotan", "u", "inverse cotangent"},
    {"rtod", "u", "radians to degrees"},
    {"dtor", "u", "degrees to radians"},

    {"hsin", "u", "hyperbolic sine"},
    {"hcos", "u", "hyperbolic cosine"},
    {"htan", "u", "hyperbolic tangent"},
    {"hsec", "u", "hyperbolic secant"},
    {"hcosec", "u", "hyperbolic cosecant"},
    {"hcotan", "u", "hyperbolic cotangent"},
    {"harcsin", "u", "inverse hyperbolic sine"},
    {"harccos", "u", "inverse hyperbolic cosine"},
    {"harctan", "u", "inverse hyperbolic tangent"},
    {"harcsec", "u", "inverse hyperbolic secant"},
    {"harccosec", "u", "inverse hyperbolic cosecant"},
    {"harccotan", "u", "inverse hyperbolic cotangent"},

    {"gamma", "u", "gamma function, u above 0"},
    {"gammaln", "u", "logarithm of the gamma function"},
    {"fact", "n", "factorial"},
    {"factln", "n", "logarithm of the factorial"},
    {"psi", "n", "digamma function of a whole number"},
    {"beta", "u,v", "beta function"},
    {"erf", "u", "error function"},
    {"erfc", "u", "complementary error function"},
    {"igamma", "a,u", "incomplete gamma function P"},
    {"igammac", "a,u", "complementary incomplete gamma function Q"},
    {"ibeta", "a,b,u", "incomplete beta function"},
    {"poisson", "k,u", "cumulative Poisson probability of fewer than k"},
    {"student", "t,v", "Student's t probability, v degrees of freedom"},
    {"chi2", "c,v", "chi-square probability, v degrees of freedom"},
    {"chi2c", "c,v", "complementary chi-square probability"},
    {"fdist", "v1,v2,f", "F-distribution probability"},
    {"binomial", "k,n,p", "cumulative binomial probability of k or more"},
    {"legendre", "l,m,u", "associated Legendre polynomial"},

    {"j0", "u", "Bessel function J of order 0"},
    {"j1", "u", "Bessel function J of order 1"},
    {"jn", "n,u", "Bessel function J of whole order n"},
    {"jnu", "v,u", "Bessel function J of fractional order v"},
    {"djnu", "v,u", "derivative of jnu"},
    {"y0", "u", "Bessel function Y of order 0"},
    {"y1", "u", "Bessel function Y of order 1"},
    {"yn", "n,u", "Bessel function Y of whole order n"},
    {"ynu", "v,u", "Bessel function Y of fractional order v"},
    {"dynu", "v,u", "derivative of ynu"},
    {"i0", "u", "modified Bessel function I of order 0"},
    {"i1", "u", "modified Bessel function I of order 1"},
    {"in", "n,u", "modified Bessel function I of whole order n"},
    {"inu", "v,u", "modified Bessel function I of fractional order v"},
    {"dinu", "v,u", "derivative of inu"},
    {"k0", "u", "modified Bessel function K of order 0"},
    {"k1", "u", "modified Bessel function K of order 1"},
    {"kn", "n,u", "modified Bessel function K of whole order n"},
    {"knu", "v,u", "modified Bessel function K of fractional order v"},
    {"dknu", "v,u", "derivative of knu"},
    {"sphjn", "n,u", "spherical Bessel function j"},
    {"sphyn", "n,u", "spherical Bessel function y"},
    {"dsphjn", "n,u", "derivative of sphjn"},
    {"dsphyn", "n,u", "derivative of sphyn"},
    {"airya", "u", "Airy function Ai"},
    {"airyb", "u", "Airy function Bi"},
    {"dairya", "u", "derivative of Ai"},
    {"dairyb", "u", "derivative of Bi"},
};
// clang-format on

}  // namespace

std::vector<ModelFunction> ModelFunctions(std::size_t independentVariables) {
  std::vector<ModelFunction> functions(std::begin(kModelFunctions), std::end(kModelFunctions));
  std::erase_if(functions, [&](const ModelFunction& function) {
    return !IsFunctionName(function.Name, independentVariables > 1);
  });
  return functions;
}

FunctionTemplate TemplateOf(const ModelFunction& function, std::string_view argument, const LocaleText& locale) {
  const std::string opened = std::string(function.Name) + "(" + std::string(argument);
  const auto more = static_cast<std::size_t>(std::ranges::count(function.Arguments, ','));
  const std::string text = opened + std::string(more, locale.ListSeparator) + ")";
  // Behind an argument that was there already, in front of the next one or behind the whole.
  return {text, opened.size() + (argument.empty() ? 0 : 1)};
}

}  // namespace quorvex
