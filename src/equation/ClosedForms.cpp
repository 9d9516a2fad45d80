#include "equation/ClosedForms.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <utility>
#include <vector>

#include "core/Limits.h"
#include "functions/Elementary.h"

namespace quorvex {

namespace {

// Sub-terms of a block lie on the stack, so longer ones are cut; results do not depend on where.
constexpr int kMostTerms = kMostIndependentVariables + 1;
constexpr int kMostDegree = 10;

// out = of(x), or with a negative power exp(-x), 1/x or 1/ln(x).
void ApplyFunction(XFunction of, bool inverse, const double* x, std::size_t n, double* out) {
  const auto each = [n, out](auto&& f) {
    for (std::size_t i = 0; i < n; ++i) out[i] = f(i);
  };
  switch (of) {
    case XFunction::X:
      return inverse ? each([x](std::size_t i) { return 1 / x[i]; }) : each([x](std::size_t i) { return x[i]; });
    case XFunction::Ln:
      LnBlock(x, out, n);
      if (inverse) each([out](std::size_t i) { return 1 / out[i]; });
      return;
    case XFunction::Exp:
      if (inverse) each([x](std::size_t i) { return -x[i]; });
      return ExpBlock(inverse ? out : x, out, n);
    case XFunction::Cos:
      return CosBlock(x, out, n);
    case XFunction::Sin:
      return SinBlock(x, out, n);
    case XFunction::LnOnePlus:
      each([x](std::size_t i) { return 1 + x[i]; });
      return LnBlock(out, out, n);
    case XFunction::LnOneMinus:
      each([x](std::size_t i) { return 1 - x[i]; });
      return LnBlock(out, out, n);
  }
}

// The functions of X that the terms of a sum share within a block, each computed once, when first asked for.
class SubTerms {
 public:
  SubTerms(const double* const* x, std::size_t n) : x_(x), n_(n) {}
  std::size_t N() const { return n_; }

  // of(x), or its inverse as told above.
  const double* Column(XFunction of, bool inverse, int variable) {
    if (of == XFunction::X && !inverse) return x_[variable];
    double* column = Storage(2 * static_cast<std::size_t>(of) + (inverse ? 1 : 0), variable);
    if (Fresh(column)) {
      // 1/ln(x) takes the logarithm that another term may have computed.
      if (of == XFunction::Ln && inverse) {
        const double* ln = Column(XFunction::Ln, false, variable);
        ApplyFunction(XFunction::X, true, ln, n_, column);
      } else {
        ApplyFunction(of, inverse, x_[variable], n_, column);
      }
    }
    return column;
  }

  const double* Root(int variable) {
    double* column = Storage(0, variable);  // the place of X itself, which needs none
    if (Fresh(column)) {
      const double* x = x_[variable];
      for (std::size_t i = 0; i < n_; ++i) column[i] = Sqr(x[i]);
    }
    return column;
  }

 private:
  static constexpr std::size_t kKinds = 10;     // X to Sin, each with its inverse
  static constexpr std::size_t kVariables = 2;  // models of more variables use plain X only

  double* Storage(std::size_t kind, int variable) {
    assert(kind < kKinds && variable < static_cast<int>(kVariables));
    return storage_[kKinds * static_cast<std::size_t>(variable) + kind];
  }

  bool Fresh(const double* column) {
    const auto bit = 1U << static_cast<std::size_t>((column - storage_[0]) / static_cast<std::ptrdiff_t>(kBlock));
    const bool fresh = (made_ & bit) == 0;
    made_ |= bit;
    return fresh;
  }

  const double* const* x_;
  std::size_t n_;
  unsigned made_ = 0;
  double storage_[kKinds * kVariables][kBlock];
};

// The term's values: a column of `shared` where it is a plain sub-term, else `room`, filled. A constant is 1s.
const double* TermColumn(const Term& term, SubTerms& shared, double* room) {
  assert(term.Sign == 1);
  std::array<const double*, 3> product{};
  std::size_t count = 0;
  for (const Factor& factor : term.Factors()) {
    double whole = std::floor(factor.Power);  // x^-1.5 is root * 1/x * 1/x, in this order lest 1/x^2 overflow
    if (whole != factor.Power) product[count++] = shared.Root(factor.Variable);
    for (double step = whole > 0 ? 1 : -1; whole != 0; whole -= step)
      product[count++] = shared.Column(factor.Function, step < 0, factor.Variable);
  }
  assert(count <= product.size());
  const std::size_t n = shared.N();
  const auto [p, q, r] = product;
  if (count == 0) std::fill_n(room, n, 1.0);
  if (count == 1) return p;
  if (count == 2)
    for (std::size_t i = 0; i < n; ++i) room[i] = p[i] * q[i];
  if (count == 3)
    for (std::size_t i = 0; i < n; ++i) room[i] = p[i] * q[i] * r[i];
  return room;
}

// y = sum of a[j] * columns[j]
void AddUp(const CatalogueModel& model, const double* const* columns, std::size_t n, const double* a, double* y) {
  // Term by term and not point by point, so that each loop turns into vector instructions; a point's sum is the same.
  for (std::size_t j = 0; j < model.Basis.size(); ++j) {
    const double aj = a[j];
    const double* t = columns[j];
    if (j == 0)
      for (std::size_t i = 0; i < n; ++i) y[i] = aj * t[i];
    else
      for (std::size_t i = 0; i < n; ++i) y[i] += aj * t[i];
  }
}

// y += c[1]*u + c[2]*u^2 + ... in nested form, unrolled so that a point's sum stays in a register.
template <int degree>
void AddNested(const double* u, std::size_t n, const double* c, double* y) {
  double own[degree + 1];
  std::copy_n(c, degree + 1, own);
  for (std::size_t i = 0; i < n; ++i) {
    double sum = own[degree];
    for (int k = degree - 1; k > 0; --k) sum = sum * u[i] + own[k];
    y[i] += sum * u[i];
  }
}

template <int... minusOne>
constexpr auto NestedLoops(std::integer_sequence<int, minusOne...>) {
  return std::array{AddNested<minusOne + 1>...};
}

void NestedValue(const CatalogueModel& model, SubTerms& shared, const double* a, double* y) {
  constexpr auto kLoops = NestedLoops(std::make_integer_sequence<int, kMostDegree>());
  std::fill_n(y, shared.N(), a[model.ConstantAt]);
  for (const NestedRun& run : model.Runs) {
    double c[kMostDegree + 1] = {};
    for (int k = 1; k <= run.Degree; ++k) c[k] = a[run.Offset + run.Step * k];
    const double* u = shared.Column(run.Base.Function, run.Base.Power < 0, run.Base.Variable);
    kLoops[static_cast<std::size_t>(run.Degree - 1)](u, shared.N(), c, y);
  }
}

void NestedTerms(const CatalogueModel& model, SubTerms& shared, double* const* dyda) {
  const std::size_t n = shared.N();
  std::fill_n(dyda[model.ConstantAt], n, 1.0);
  for (const NestedRun& run : model.Runs) {
    const double* u = shared.Column(run.Base.Function, run.Base.Power < 0, run.Base.Variable);
    std::copy_n(u, n, dyda[run.Offset + run.Step]);
    for (int k = 2; k <= run.Degree; ++k) {
      const double* lower = dyda[run.Offset + run.Step * (k - 1)];
      double* power = dyda[run.Offset + run.Step * k];
      for (std::size_t i = 0; i < n; ++i) power[i] = lower[i] * u[i];
    }
  }
}

// The value of the sum within the outer function.
void InnerValue(const CatalogueModel& model, SubTerms& shared, const double* a, double* y) {
  if (model.Shape == ModelShape::Nested) return NestedValue(model, shared, a, y);
  double room[kMostTerms][kBlock];
  const double* columns[kMostTerms];
  for (std::size_t j = 0; j < model.Basis.size(); ++j) columns[j] = TermColumn(model.Basis[j], shared, room[j]);
  AddUp(model, columns, shared.N(), a, y);
}

void InnerValueAndTerms(const CatalogueModel& model, SubTerms& shared, const double* a, double* y,
                        double* const* dyda) {
  if (model.Shape == ModelShape::Nested) {
    NestedValue(model, shared, a, y);
    return NestedTerms(model, shared, dyda);
  }
  for (std::size_t j = 0; j < model.Basis.size(); ++j) {
    const double* column = TermColumn(model.Basis[j], shared, dyda[j]);
    if (column != dyda[j]) std::copy_n(column, shared.N(), dyda[j]);
  }
  AddUp(model, dyda, shared.N(), a, y);
}

// y = outer(y)
void ApplyOuter(OuterFunction outer, std::size_t n, double* y) {
  switch (outer) {
    case OuterFunction::None:
      return;
    case OuterFunction::Exp:
      return ApplyFunction(XFunction::Exp, false, y, n, y);
    case OuterFunction::Reciprocal:
      return ApplyFunction(XFunction::X, true, y, n, y);
    case OuterFunction::Ln:
      return ApplyFunction(XFunction::Ln, false, y, n, y);
  }
}

// The same with the derivatives by the chain rule; dyda holds the terms t of the sum s before.
void ApplyOuterAndChain(OuterFunction outer, std::size_t n, std::size_t count, double* y, double* const* dyda) {
  const auto chain = [&](auto&& slope) {  // slope(i, t)
    for (std::size_t j = 0; j < count; ++j) {
      double* t = dyda[j];
      for (std::size_t i = 0; i < n; ++i) t[i] = slope(i, t[i]);
    }
  };
  // The slope of ln(s) is 1/s, and s is gone once y holds the logarithm.
  if (outer == OuterFunction::Ln) chain([y](std::size_t i, double t) { return t / y[i]; });
  ApplyOuter(outer, n, y);
  if (outer == OuterFunction::Exp) chain([y](std::size_t i, double t) { return y[i] * t; });
  if (outer == OuterFunction::Reciprocal) chain([y](std::size_t i, double t) { return -y[i] * (y[i] * t); });
}

// Calls work(x, first, n) for each block, with the columns of x beginning there.
template <class Work>
void ForEachBlock(const CatalogueModel& model, const double* const* x, std::size_t n, Work work) {
  const auto variables = static_cast<std::size_t>(model.NumVariables);
  const double* from[kMostIndependentVariables];
  for (std::size_t first = 0; first < n; first += kBlock) {
    for (std::size_t v = 0; v < variables; ++v) from[v] = x[v] + first;
    work(from, first, std::min(kBlock, n - first));
  }
}

}  // namespace

void Value(const CatalogueModel& model, const double* const* x, std::size_t n, const double* a, double* y) {
  if (model.Form) return model.Form->Value(x, n, a, y);
  ForEachBlock(model, x, n, [&](const double* const* from, std::size_t first, std::size_t count) {
    SubTerms shared(from, count);
    InnerValue(model, shared, a, y + first);
    ApplyOuter(model.Outer, count, y + first);
  });
}

void ValueAndDerivatives(const CatalogueModel& model, const double* const* x, std::size_t n, const double* a, double* y,
                         double* const* dyda) {
  if (model.Form) return model.Form->ValueAndDerivatives(x, n, a, y, dyda);
  ForEachBlock(model, x, n, [&](const double* const* from, std::size_t first, std::size_t count) {
    SubTerms shared(from, count);
    double* columns[kMostTerms];
    for (std::size_t j = 0; j < model.Basis.size(); ++j) columns[j] = dyda[j] + first;
    InnerValueAndTerms(model, shared, a, y + first, columns);
    ApplyOuterAndChain(model.Outer, count, model.Basis.size(), y + first, columns);
  });
}

void Derivatives(const CatalogueModel& model, const double* const* x, std::size_t n, const double* a,
                 double* const* dyda) {
  // The slope of an outer function is computed from its value, so the values come along whether asked for or not.
  double y[kBlock];
  ForEachBlock(model, x, n, [&](const double* const* from, std::size_t first, std::size_t count) {
    double* columns[kMostTerms];
    for (std::size_t j = 0; j < static_cast<std::size_t>(model.NumCoefficients); ++j) columns[j] = dyda[j] + first;
    ValueAndDerivatives(model, from, count, a, y, columns);
  });
}

void BasisFunctions(const CatalogueModel& model, const double* const* x, std::size_t n, double* const* basis) {
  ForEachBlock(model, x, n, [&](const double* const* from, std::size_t first, std::size_t count) {
    double f[kBlock];
    for (std::size_t j = 0; j < model.Basis.size(); ++j) {
      const Term& term = model.Basis[j];
      double* out = basis[j] + first;
      std::fill_n(out, count, term.Sign);
      for (const Factor& factor : term.Factors()) {
        const bool inverseExp = factor.Function == XFunction::Exp && factor.Power < 0;
        const double power = std::abs(factor.Power);
        ApplyFunction(factor.Function, inverseExp, from[factor.Variable], count, f);
        if (power != 1) PowerBlock(f, power, f, count);
        // The inverse of exp(x) is exp(-x) and no quotient.
        if (factor.Power > 0 || inverseExp)
          for (std::size_t i = 0; i < count; ++i) out[i] *= f[i];
        else
          for (std::size_t i = 0; i < count; ++i) out[i] /= f[i];
      }
    }
  });
}

void GetXBasisFunction(const CatalogueModel& model, const double* x, double* afunc) {
  const double* columns[kMostIndependentVariables];
  double* basis[kMostTerms];
  for (int v = 0; v < model.NumVariables; ++v) columns[v] = x + v;
  for (std::size_t j = 0; j < model.Basis.size(); ++j) basis[j] = afunc + j;
  BasisFunctions(model, columns, 1, basis);
}

}  // namespace quorvex
