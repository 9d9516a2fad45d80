#pragma once

#include <algorithm>
#include <cstddef>

#include "equation/ClosedForms.h"
#include "equation/Column.h"
#include "functions/Elementary.h"

// The built-in models that are no sums of terms, one struct each: its value at the points of a column, and the partial
// derivatives d where these are asked for. kVariables and kCoefficients size the loops that kClosedForm makes of it.
//
// Products and quotients are ordered so that nothing overflows on the way to a finite result.
namespace quorvex::forms {

// Where a derivative goes.
struct Slope {
  double* Points;
  std::size_t N;

  void operator=(const Column& values) const { std::copy_n(values.Points, N, Points); }
  void operator=(double value) const { std::fill_n(Points, N, value); }
};

// d/db of base^b is base^b times this: ln(base), and 0 at base 0 under a positive b, where the power stays 0.
inline Column LogOfBase(const Column& base, double b) {
  if (!(b > 0)) return Ln(base);
  Column held(base.N);
  for (std::size_t i = 0; i < base.N; ++i) held.Points[i] = base.Points[i] == 0 ? 1.0 : base.Points[i];
  return Ln(held);
}

// d/dbase of power = base^b: b * base^(b-1), from the power itself where that can be.
inline Column SlopeInBase(const Column& power, double base, const Column& b) {
  if (base != 0) return b * (power / base);
  Column slope(b.N);
  for (std::size_t i = 0; i < b.N; ++i)
    slope.Points[i] = b.Points[i] == 0 ? 0 : b.Points[i] * Power(base, b.Points[i] - 1);
  return slope;
}

template <int variables, int coefficients>
struct Sized {
  static constexpr int kVariables = variables;
  static constexpr int kCoefficients = coefficients;
};

// ---- one coefficient

struct ReciprocalOfOnePlusAX : Sized<1, 1> {  // 1/(1+a*x)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column y = 1 / (1 + a[0] * x[0]);
    if constexpr (kSlopes) d[0] = -y * (y * x[0]);
    return y;
  }
};

struct ShiftedExp : Sized<1, 1> {  // exp(x-a)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column y = Exp(x[0] - a[0]);
    if constexpr (kSlopes) d[0] = -y;
    return y;
  }
};

struct ShiftedLn : Sized<1, 1> {  // ln(x-a)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column z = x[0] - a[0];
    if constexpr (kSlopes) d[0] = -1 / z;
    return Ln(z);
  }
};

struct ShiftedReciprocal : Sized<1, 1> {  // 1/(x+a)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column y = 1 / (x[0] + a[0]);
    if constexpr (kSlopes) d[0] = -y * y;
    return y;
  }
};

struct XToA : Sized<1, 1> {  // x^a
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column y = Power(x[0], a[0]);
    if constexpr (kSlopes) d[0] = y * LogOfBase(x[0], a[0]);
    return y;
  }
};

struct Root : Sized<1, 1> {  // a^(1/x)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column b = 1 / x[0];
    const Column y = Power(a[0], b);
    if constexpr (kSlopes) d[0] = SlopeInBase(y, a[0], b);
    return y;
  }
};

struct OneMinusReciprocalPower : Sized<1, 1> {  // 1-1/(x^a)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column p = Power(x[0], a[0]);
    if constexpr (kSlopes) d[0] = Ln(x[0]) / p;
    return 1 - 1 / p;
  }
};

struct ShiftedCosine : Sized<1, 1> {  // cos(x+a)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column z = x[0] + a[0];
    if constexpr (kSlopes) d[0] = -Sin(z);
    return Cos(z);
  }
};

struct ShiftedSine : Sized<1, 1> {  // sin(x+a)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column z = x[0] + a[0];
    if constexpr (kSlopes) d[0] = Cos(z);
    return Sin(z);
  }
};

struct OneMinusBell : Sized<1, 1> {  // 1-exp(-a*x^2)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column square = x[0] * x[0];
    const Column e = Exp(-a[0] * square);
    if constexpr (kSlopes) d[0] = square * e;
    return 1 - e;
  }
};

struct Bell : Sized<1, 1> {  // exp(-a*x^2)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column square = x[0] * x[0];
    const Column y = Exp(-a[0] * square);
    if constexpr (kSlopes) d[0] = -square * y;
    return y;
  }
};

struct OneMinusExpOfPower : Sized<1, 1> {  // 1-exp(-x^a)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column p = Power(x[0], a[0]);
    const Column e = Exp(-p);
    if constexpr (kSlopes) d[0] = p * e * LogOfBase(x[0], a[0]);
    return 1 - e;
  }
};

struct ExpOfPower : Sized<1, 1> {  // exp(-x^a)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column p = Power(x[0], a[0]);
    const Column y = Exp(-p);
    if constexpr (kSlopes) d[0] = -p * y * LogOfBase(x[0], a[0]);
    return y;
  }
};

// ---- two coefficients

struct ModifiedPower : Sized<1, 2> {  // a*b^x
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column p = Power(a[1], x[0]);
    if constexpr (kSlopes) {
      d[0] = p;
      d[1] = a[0] * SlopeInBase(p, a[1], x[0]);
    }
    return a[0] * p;
  }
};

struct Exponential : Sized<1, 2> {  // a*exp(b*x)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column e = Exp(a[1] * x[0]);
    if constexpr (kSlopes) {
      d[0] = e;
      d[1] = a[0] * e * x[0];
    }
    return a[0] * e;
  }
};

struct ModifiedExponential : Sized<1, 2> {  // a*exp(b/x)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column e = Exp(a[1] / x[0]);
    if constexpr (kSlopes) {
      d[0] = e;
      d[1] = a[0] * e / x[0];
    }
    return a[0] * e;
  }
};

struct PowerLaw : Sized<1, 2> {  // a*x^b
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column p = Power(x[0], a[1]);
    if constexpr (kSlopes) {
      d[0] = p;
      d[1] = a[0] * p * LogOfBase(x[0], a[1]);
    }
    return a[0] * p;
  }
};

struct RectangularHyperbola : Sized<1, 2> {  // a*b*x/(1+b*x)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column q = 1 + a[1] * x[0];
    if constexpr (kSlopes) {
      const Column r = 1 / q;
      d[0] = a[1] * x[0] * r;
      d[1] = a[0] * (x[0] * r) * r;
    }
    return a[0] * a[1] * x[0] / q;
  }
};

struct XOverLine : Sized<1, 2> {  // x/(a*x+b)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column q = a[0] * x[0] + a[1];
    const Column y = x[0] / q;
    if constexpr (kSlopes) {
      d[0] = -y * y;
      d[1] = -y / q;
    }
    return y;
  }
};

struct AOverOnePlusBX : Sized<1, 2> {  // a/(1+b*x)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column q = 1 + a[1] * x[0];
    const Column y = a[0] / q;
    if constexpr (kSlopes) {
      const Column r = 1 / q;
      d[0] = r;
      d[1] = -y * (x[0] * r);
    }
    return y;
  }
};

struct SlopeAndRoot : Sized<1, 2> {  // a*(x-b)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column z = x[0] - a[1];
    if constexpr (kSlopes) {
      d[0] = z;
      d[1] = -a[0];
    }
    return a[0] * z;
  }
};

struct ShiftedPowerLaw : Sized<1, 2> {  // a*(1+x)^b
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column shifted = 1 + x[0];
    return PowerLaw::At<kSlopes>(&shifted, a, d);
  }
};

struct Geometric : Sized<1, 2> {  // a*x^(b*x)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column p = Power(x[0], a[1] * x[0]);
    if constexpr (kSlopes) {
      d[0] = p;
      d[1] = a[0] * p * (x[0] * LogOfBase(x[0], 1));  // x*ln(x) is 0 at 0 whatever b is: there the model is a alone
    }
    return a[0] * p;
  }
};

struct ModifiedGeometric : Sized<1, 2> {  // a*x^(b/x)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column p = Power(x[0], a[1] / x[0]);
    if constexpr (kSlopes) {
      d[0] = p;
      d[1] = a[0] * p * (Ln(x[0]) / x[0]);
    }
    return a[0] * p;
  }
};

struct SaturationGrowth : Sized<1, 2> {  // a*x/(b+x)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column q = a[1] + x[0];
    const Column y = a[0] * x[0] / q;
    if constexpr (kSlopes) {
      d[0] = x[0] / q;
      d[1] = -y / q;
    }
    return y;
  }
};

struct OneMinusExpOfPowerLaw : Sized<1, 2> {  // 1-exp(-a*x^b)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column p = Power(x[0], a[1]);
    const Column e = Exp(-a[0] * p);
    if constexpr (kSlopes) {
      const Column slope = p * e;
      d[0] = slope;
      d[1] = a[0] * slope * LogOfBase(x[0], a[1]);
    }
    return 1 - e;
  }
};

struct OneMinusExpOfModifiedPower : Sized<1, 2> {  // 1-exp(-a*b^x)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column p = Power(a[1], x[0]);
    const Column e = Exp(-a[0] * p);
    if constexpr (kSlopes) {
      d[0] = p * e;
      d[1] = a[0] * e * SlopeInBase(p, a[1], x[0]);
    }
    return 1 - e;
  }
};

struct DoubleExp : Sized<1, 2> {  // exp(-exp(a-b*x))
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column g = Exp(a[0] - a[1] * x[0]);
    const Column y = Exp(-g);
    if constexpr (kSlopes) {
      d[0] = -y * g;
      d[1] = y * g * x[0];
    }
    return y;
  }
};

// ---- three coefficients

struct AOverQuadratic : Sized<1, 3> {  // a/(1+b*x+c*x^2)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column q = 1 + x[0] * (a[1] + a[2] * x[0]);
    const Column y = a[0] / q;
    if constexpr (kSlopes) {
      const Column r = 1 / q;
      const Column u = x[0] * r;
      d[0] = r;
      d[1] = -y * u;
      d[2] = -(y * x[0]) * u;
    }
    return y;
  }
};

struct XOverQuadratic : Sized<1, 3> {  // x/(a+b*x-c*x^2)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column q = a[0] + x[0] * (a[1] - a[2] * x[0]);
    const Column y = x[0] / q;
    if constexpr (kSlopes) {
      d[0] = -y / q;
      d[1] = -y * y;
      d[2] = y * (x[0] * y);
    }
    return y;
  }
};

struct Gunary : Sized<1, 3> {  // x/(a+b*x+c*sqr(x))
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column root = Sqr(x[0]);
    const Column q = a[0] + a[1] * x[0] + a[2] * root;
    const Column y = x[0] / q;
    if constexpr (kSlopes) {
      d[0] = -y / q;
      d[1] = -y * y;
      d[2] = -y * (root / q);
    }
    return y;
  }
};

struct PowerTimesExp : Sized<1, 3> {  // a*x^b*exp(-c*x)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column p = Power(x[0], a[1]);
    const Column e = Exp(-a[2] * x[0]);
    const Column y = a[0] * p * e;
    if constexpr (kSlopes) {
      d[0] = p * e;
      d[1] = y * LogOfBase(x[0], a[1]);
      d[2] = -x[0] * y;
    }
    return y;
  }
};

struct PowerTimesShiftedExp : Sized<1, 3> {  // x^a*exp(b-c*x)
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column y = Power(x[0], a[0]) * Exp(a[1] - a[2] * x[0]);
    if constexpr (kSlopes) {
      d[0] = y * LogOfBase(x[0], a[0]);
      d[1] = y;
      d[2] = -x[0] * y;
    }
    return y;
  }
};

struct BetaDistribution : Sized<1, 3> {  // a*x^b*(1-x)^c
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column rest = 1 - x[0];
    const Column p = Power(x[0], a[1]);
    const Column q = Power(rest, a[2]);
    const Column y = a[0] * p * q;
    if constexpr (kSlopes) {
      d[0] = p * q;
      d[1] = y * LogOfBase(x[0], a[1]);
      d[2] = y * LogOfBase(rest, a[2]);
    }
    return y;
  }
};

struct Gaussian : Sized<1, 3> {  // a*exp((-(x-b)^2)/(2*c^2))
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column z = x[0] - a[1];
    const Column e = Exp(-(z * z) / (2 * (a[2] * a[2])));
    const Column y = a[0] * e;
    if constexpr (kSlopes) {
      const Column t = z / a[2];
      d[0] = e;
      d[1] = y * t / a[2];
      d[2] = y * t * t / a[2];
    }
    return y;
  }
};

// a*b^u*v^c; d may be null.
inline Column PowerPair(const Column& u, const Column& v, double a, double b, double c, const Slope* d) {
  const Column p = Power(b, u);
  const Column q = Power(v, c);
  const Column y = a * p * q;
  if (d) {
    d[0] = p * q;
    d[1] = a * SlopeInBase(p, b, u) * q;
    d[2] = y * LogOfBase(v, c);
  }
  return y;
}

struct Hoerl : Sized<1, 3> {  // a*b^x*x^c
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    return PowerPair(x[0], x[0], a[0], a[1], a[2], kSlopes ? d : nullptr);
  }
};

struct ModifiedHoerl : Sized<1, 3> {  // a*b^(1/x)*x^c
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    return PowerPair(1 / x[0], x[0], a[0], a[1], a[2], kSlopes ? d : nullptr);
  }
};

struct PowerOfX1TimesXOfX2 : Sized<2, 3> {  // a*b^x1*x2^c
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    return PowerPair(x[0], x[1], a[0], a[1], a[2], kSlopes ? d : nullptr);
  }
};

struct XOfX1TimesPowerOfX2 : Sized<2, 3> {  // a*x1^b*c^x2
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    if constexpr (!kSlopes) return PowerPair(x[1], x[0], a[0], a[2], a[1], nullptr);
    const Slope swapped[] = {d[0], d[2], d[1]};
    return PowerPair(x[1], x[0], a[0], a[2], a[1], swapped);
  }
};

struct TwoPowers : Sized<2, 3> {  // a*x1^b*x2^c
  template <bool kSlopes>
  static Column At(const Column* x, const double* a, const Slope* d) {
    const Column p = Power(x[0], a[1]);
    const Column q = Power(x[1], a[2]);
    const Column y = a[0] * p * q;
    if constexpr (kSlopes) {
      d[0] = p * q;
      d[1] = y * LogOfBase(x[0], a[1]);
      d[2] = y * LogOfBase(x[1], a[2]);
    }
    return y;
  }
};

// ---- loops over all points, a column at a time

template <bool kSlopes, class Model>
void OverPoints(const double* const* x, std::size_t n, const double* a, double* y, double* const* dyda) {
  for (std::size_t first = 0; first < n; first += Column::kLongest) {
    const std::size_t count = std::min(Column::kLongest, n - first);
    Column from[Model::kVariables];
    Slope d[Model::kCoefficients];
    for (int v = 0; v < Model::kVariables; ++v) from[v].Take(x[v] + first, count);
    if constexpr (kSlopes)
      for (int j = 0; j < Model::kCoefficients; ++j) d[j] = Slope{dyda[j] + first, count};
    const Column value = Model::template At<kSlopes>(from, a, d);
    std::copy_n(value.Points, count, y + first);
  }
}

template <class Model>
void ValueOverPoints(const double* const* x, std::size_t n, const double* a, double* y) {
  OverPoints<false, Model>(x, n, a, y, nullptr);
}

template <class Model>
inline constexpr ClosedForm kClosedForm{ValueOverPoints<Model>, OverPoints<true, Model>};

}  // namespace quorvex::forms
