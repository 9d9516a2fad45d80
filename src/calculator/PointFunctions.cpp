#include "calculator/PointFunctions.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

#include "calculator/CalculatorFault.h"
#include "functions/Elementary.h"
#include "functions/NearOne.h"

namespace quorvex {
namespace {

constexpr double kDegree = 3.1415926535897932 / 180;

// Beyond it exp(-y) is nothing beside exp(y), and 1 nothing beside y^2 from its square on.
constexpr double kLargeExponent = 20, kLargeNumber = 1e8;

double Within(bool domain, double value) {
  if (!domain) throw CalculatorFault(CalculatorError::InvalidOperation);
  return value;
}

double Divided(double a, double b) {
  if (b == 0) throw CalculatorFault(CalculatorError::DivisionByZero);
  return a / b;
}

double Negative(double y) { return -y; }
double Absolute(double y) { return std::abs(y); }
double Reciprocal(double y) { return Divided(1, y); }
double SquareRoot(double y) { return std::sqrt(Within(y >= 0, y)); }
double NaturalLog(double y) { return Ln(Within(y > 0, y)); }
double CommonLog(double y) { return Log10(Within(y > 0, y)); }
double Decibel(double y) { return 20 * CommonLog(y); }

// 1 - y^2 as a product, which keeps its digits near 1. At 1 the quotient is infinite, and its arc tangent pi/2.
double ArcSine(double y) { return Atn(y / std::sqrt(Within(std::abs(y) <= 1, (1 - y) * (1 + y)))); }
double ArcCosine(double y) { return 2 * Atn(std::sqrt(Within(std::abs(y) <= 1, 1 - y) / (1 + y))); }

// Odd functions by their values for positive numbers.
template <double (*Positive)(double)>
double Odd(double y) {
  return std::copysign(Positive(std::abs(y)), y);
}

// Half of exp(y) for large y, which overflows later than exp(y) does.
double HalfExponential(double y) {
  const double root = Exp(y / 2);
  return root / 2 * root;
}

double SinhOf(double y) {
  if (y > kLargeExponent) return HalfExponential(y);
  const double e = ExpMinusOne(y);
  return (e + e / (e + 1)) / 2;
}

double HyperbolicCosine(double y) {
  y = std::abs(y);
  return y > kLargeExponent ? HalfExponential(y) : (Exp(y) + Exp(-y)) / 2;
}

double TanhOf(double y) {
  if (y > kLargeExponent) return 1;
  const double e = ExpMinusOne(2 * y);
  return e / (e + 2);
}

// ln(y + sqrt(y^2 + 1)) and, below, ln(y + sqrt(y^2 - 1)) by ln(1 + ...), whose argument is small with y or y - 1.
double ArcSinhOf(double y) {
  if (y > kLargeNumber) return Ln(y) + std::numbers::ln2;
  return LnOnePlus(y + y * y / (1 + std::sqrt(y * y + 1)));
}

double ArcCosh(double y) {
  const double t = Within(y >= 1, y) - 1;
  if (y > kLargeNumber) return Ln(y) + std::numbers::ln2;
  return LnOnePlus(t + std::sqrt(t * (t + 2)));
}

double ArcTanhOf(double y) { return LnOnePlus(Divided(2 * y, Within(y <= 1, 1 - y))) / 2; }

constexpr PointFunction kFunctions[] = {
    {0, "neg(", Negative},
    {1, "Sin(", Sin, "Arcsin(", ArcSine, true},
    {2, "Cos(", Cos, "Arcos(", ArcCosine, true},
    {3, "Tan(", Tan, "Arctan(", Atn, true},
    {5, "Abs(", Absolute},
    {6, "Sinh(", Odd<SinhOf>, "Arcsinh(", Odd<ArcSinhOf>},
    {7, "Cosh(", HyperbolicCosine, "Arccosh(", ArcCosh},
    {8, "Tanh(", Odd<TanhOf>, "Arctanh(", Odd<ArcTanhOf>},
    {10, "1.0/(", Reciprocal},
    {11, "Exp(", Exp},
    {13, "Sqrt(", SquareRoot},
    {14, "Ln(", NaturalLog},
    {15, "Log(", CommonLog},
    {22, "dB(", Decibel},
};

}  // namespace

const PointFunction* FindPointFunction(int Index) {
  const auto row = std::ranges::find(kFunctions, Index, &PointFunction::Index);
  return row != std::end(kFunctions) ? row : nullptr;
}

double ValueOf(const PointFunction& function, bool arc, AngleUnit unit, double y) {
  const double angle = function.OfAngle && unit == AngleUnit::Degrees ? kDegree : 1;
  if (arc && function.Arc != nullptr) return Finite(function.Arc(y) / angle);
  return Finite(function.Value(y * angle));
}

double RaisedTo(double a, double b) {
  if (a == 0 && b < 0) throw CalculatorFault(CalculatorError::DivisionByZero);
  if (a < 0 && b != std::trunc(b)) throw CalculatorFault(CalculatorError::InvalidPower);
  return Finite(Power(a, b));
}

}  // namespace quorvex
