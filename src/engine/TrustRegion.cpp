#include "engine/TrustRegion.h"

#include <algorithm>
#include <cmath>

#include "core/Limits.h"
#include "core/NumericFault.h"
#include "linear/Householder.h"
#include "linear/TriangularFactor.h"

namespace quorvex {
namespace {

// Singular values below this part of the largest are rounding.
constexpr double kSingular = 1e-14;

// The triangular factor of derivatives with the residuals as one more column.
ColumnMatrix Factor(const ColumnMatrix& J, const std::vector<double>& r) {
  const std::size_t p = J.Columns();
  TriangularFactor factor(p + 1);
  ColumnMatrix rows(kBlock + 1, p + 1);
  for (std::size_t first = 0; first < r.size(); first += kBlock) {
    const std::size_t n = std::min(kBlock, r.size() - first);
    for (std::size_t j = 0; j < p; ++j) std::copy_n(J.Column(j) + first, n, rows.Column(j) + 1);
    std::copy_n(r.data() + first, n, rows.Column(p) + 1);
    factor.Append(rows, n);
  }
  return factor.R();
}

// The linear form of the residuals around one place, in scaled coefficients and along its singular vectors.
class LinearForm {
 public:
  // `scale` grows to the lengths of the columns. `length` is that of the residuals. Throws NumericFault where something
  // is not finite.
  LinearForm(const ColumnMatrix& R, double length, std::vector<double>& scale) : length_(length) {
    const std::size_t p = scale.size();
    ColumnMatrix u(p, p);
    for (std::size_t j = 0; j < p; ++j) {
      scale[j] = std::max(scale[j], Norm(std::span(R.Column(j), j + 1)));
      if (!std::isfinite(scale[j])) throw NumericFault();
      for (std::size_t i = 0; i <= j; ++i) u(i, j) = scale[j] > 0 ? R(i, j) / scale[j] : 0;
    }
    SvdDecompose(u, w_, v_);
    along_.assign(p, 0.0);
    for (std::size_t k = 0; k < p; ++k)
      for (std::size_t i = 0; i < p; ++i) along_[k] += u(i, k) * R(i, p);
  }

  // The step whose scaled length is `radius`, within a tenth, or the full one where that is shorter. Gives the step in
  // scaled coefficients.
  std::vector<double> Step(double radius) {
    const double most = *std::ranges::max_element(w_);
    std::vector<double> s(w_.size(), 0.0);
    for (std::size_t k = 0; k < s.size(); ++k)
      if (w_[k] > kSingular * most) s[k] = along_[k] / w_[k];
    lambda_ = 0;
    if (!(Norm(s) <= 1.1 * radius)) Dampen(radius, s);
    expectedGain_ = 0;
    double fitted = 0, damped = 0;
    for (std::size_t k = 0; k < s.size(); ++k) {
      // In parts of the residuals, whose squares may be out of range.
      const double part = s[k] / length_;
      fitted += w_[k] * part * w_[k] * part;
      damped += lambda_ * part * part;
    }
    expectedGain_ = fitted + 2 * damped;
    slope_ = fitted + damped;
    std::vector<double> step(s.size(), 0.0);
    for (std::size_t k = 0; k < s.size(); ++k)
      for (std::size_t i = 0; i < s.size(); ++i) step[i] += v_(i, k) * s[k];
    return step;
  }

  bool Damped() const { return lambda_ > 0; }
  // Both as parts of the sum of squares: what the step gains, and half the slope of the sum down the step.
  double ExpectedGain() const { return expectedGain_; }
  double Slope() const { return slope_; }

 private:
  // Finds the damping by Newton's method on the reciprocal of the length (M. D. Hebden, 1973), within bounds.
  void Dampen(double radius, std::vector<double>& s) {
    for (std::size_t k = 0; k < s.size(); ++k) s[k] = w_[k] * along_[k];
    double upper = Norm(s) / radius;
    double lower = 0;
    lambda_ = 0.001 * upper;
    for (int round = 0; round < 60; ++round) {
      double slope = 0;
      for (std::size_t k = 0; k < s.size(); ++k) {
        const double damped = w_[k] * w_[k] + lambda_;
        s[k] = damped > 0 ? w_[k] * along_[k] / damped : 0;
        if (damped > 0) slope += s[k] / radius * (s[k] / radius) / damped;
      }
      const double length = Norm(s), excess = length - radius;
      if (std::abs(excess) <= 0.1 * radius || length == 0) return;
      (excess > 0 ? lower : upper) = lambda_;
      const double next = lambda_ + length / radius * (excess / radius) * (length / radius) / slope;
      // A bound that Newton's method oversteps takes its place half way, by the exponent.
      lambda_ = next > lower && next < upper ? next : std::max(std::sqrt(lower) * std::sqrt(upper), 0.001 * upper);
    }
  }

  const double length_;
  std::vector<double> w_, along_;
  ColumnMatrix v_;
  double lambda_ = 0, expectedGain_ = 0, slope_ = 0;
};

// Clears the derivatives by what lies on a bound and would leave the box down the slope.
void LeaveOutPushed(const Box& box, const std::vector<double>& a, const std::vector<double>& r, ColumnMatrix& J) {
  for (std::size_t j = 0; j < a.size(); ++j) {
    if (a[j] != box.Lower[j] && a[j] != box.Upper[j]) continue;
    const double slope = PairwiseDot(J.Column(j), r.data(), r.size());
    if (a[j] == box.Lower[j] ? slope <= 0 : slope >= 0) std::fill_n(J.Column(j), r.size(), 0.0);
  }
}

double ScaledLength(std::span<const double> scale, const std::vector<double>& a) {
  std::vector<double> scaled(a.size());
  for (std::size_t j = 0; j < a.size(); ++j) scaled[j] = scale[j] * a[j];
  return Norm(scaled);
}

}  // namespace

TrustRegionEnd TrustRegionSearch(WeightedResiduals& residuals, std::vector<double> a, const TrustRegionPlan& plan,
                                 SolveForm& form) {
  TrustRegionEnd end;
  end.a = a;
  residuals.ForgetScales();
  std::vector<double> r, trialResiduals;
  if (!residuals.Residuals(a, r)) return end;
  if (plan.Improve && !plan.Improve(a, r)) return end;
  end.a = a;
  end.Length = Norm(r);
  const std::size_t p = a.size();
  std::vector<double> scale(p, 0.0);
  ColumnMatrix J;
  double radius = 0;
  for (int iteration = 1; iteration <= plan.Iterations && end.Length > 0; ++iteration) {
    form.Yield();
    if (form.Aborted || form.Paused || !residuals.Derivatives(end.a, J)) return end;
    LeaveOutPushed(residuals.Bounds(), end.a, r, J);
    try {
      LinearForm linear(Factor(J, r), end.Length, scale);
      const double reach = ScaledLength(scale, end.a);
      if (iteration == 1) radius = plan.FirstRadius * (reach > 0 ? reach : end.Length);
      for (bool better = false; !better;) {
        std::vector<double> step = linear.Step(radius);
        const double length = Norm(step);
        if (!(length > 0)) {
          end.Converged = true;
          return end;
        }
        if (iteration == 1) radius = std::min(radius, length);
        a = end.a;
        for (std::size_t j = 0; j < p; ++j)
          if (scale[j] > 0) a[j] += step[j] / scale[j];
        residuals.Bounds().BringInside(a);
        double trial = HUGE_VAL;
        if (residuals.Residuals(a, trialResiduals) && (!plan.Improve || plan.Improve(a, trialResiduals)))
          trial = Norm(trialResiduals);
        if (form.Aborted) return end;
        const double quotient = trial / end.Length;
        // A sum a hundredfold and more is as bad as none.
        const double gain = quotient < 10 ? 1 - quotient * quotient : -1;
        const double expected = linear.ExpectedGain();
        const double ratio = expected > 0 ? gain / expected : 0;
        if (ratio <= 0.25) {
          // To the minimum of the parabola through what is known of the sum along the step.
          const double slope = -linear.Slope();
          const double factor = gain >= 0 ? 0.5 : std::clamp(0.5 * slope / (slope + 0.5 * gain), 0.1, 0.5);
          radius = factor * std::min(radius, length / 0.1);
        } else if (!linear.Damped() || ratio >= 0.75) {
          radius = 2 * length;
        }
        better = ratio >= 1e-4 && trial < end.Length;
        if (better) {
          end.a = a;
          end.Length = trial;
          r.swap(trialResiduals);
        }
        if ((std::abs(gain) <= plan.Tolerance && expected <= plan.Tolerance && ratio <= 2) ||
            radius <= plan.Tolerance * reach) {
          end.Converged = true;
          return end;
        }
        if (!(radius > 0) || !std::isfinite(radius)) return end;
      }
    } catch (const NumericFault&) {
      return end;
    }
  }
  end.Converged = end.Converged || end.Length == 0;
  return end;
}

Determination DeterminationAt(WeightedResiduals& residuals, const std::vector<double>& a) {
  Determination result;
  ColumnMatrix J;
  residuals.ForgetScales();
  if (!residuals.Derivatives(a, J)) return result;
  const std::size_t p = a.size();
  std::vector<double> ones(residuals.PointCount(), 0.0);
  const ColumnMatrix R = Factor(J, ones);
  ColumnMatrix u(p, p), v;
  std::vector<double> lengths(p), w;
  for (std::size_t j = 0; j < p; ++j) {
    lengths[j] = Norm(std::span(R.Column(j), j + 1));
    if (!std::isfinite(lengths[j])) return result;
    if (lengths[j] == 0) lengths[j] = residuals.Unit();  // no effect, whatever its unit
    for (std::size_t i = 0; i <= j; ++i) u(i, j) = R(i, j) / lengths[j];
  }
  try {
    SvdDecompose(u, w, v);
  } catch (const NumericFault&) {
    return result;
  }
  const double most = *std::ranges::max_element(w);
  if (!(most > 0)) return result;
  result.ReciprocalCondition = *std::ranges::min_element(w) / most;
  for (std::size_t j = 0; j < p; ++j) {
    double sum = 0;
    for (std::size_t k = 0; k < p; ++k) {
      const double quotient = v(j, k) / std::max(w[k], kSingular * most) / lengths[j] * residuals.Unit();
      sum += quotient * quotient;
    }
    result.Variances.push_back(sum);
  }
  return result;
}

}  // namespace quorvex
