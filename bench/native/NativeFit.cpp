// native_fit FILE: what a programmer would write by hand for this one model, the least a fit can cost as a process:
// reads x and y, fits y = a exp(-b x) + c exp(-d x) + e by Levenberg and Marquardt's method with closed-form
// derivatives and normal equations, and prints the coefficients.

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kSize = 5;
using Vector = std::array<double, kSize>;
using Matrix = std::array<Vector, kSize>;

struct Points {
  std::vector<double> X, Y;
};

bool Read(const char* name, Points& points) {
  std::FILE* file = std::fopen(name, "rb");
  if (file == nullptr) return false;
  std::string text;
  char block[65536];
  for (std::size_t got; (got = std::fread(block, 1, sizeof block, file)) > 0;) text.append(block, got);
  std::fclose(file);
  for (const char *at = text.data(), *end = at + text.size(); at < end;) {
    double x = 0, y = 0;
    at = std::from_chars(at, end, x).ptr + 1;
    at = std::from_chars(at, end, y).ptr + 1;
    points.X.push_back(x);
    points.Y.push_back(y);
  }
  return true;
}

// The sum of squares at `p`, with J'J in the lower half of `normal` and J'(y - f) in `gradient`.
double Sum(const Points& points, const Vector& p, Matrix& normal, Vector& gradient) {
  normal = {};
  gradient = {};
  double sum = 0;
  for (std::size_t i = 0; i < points.X.size(); ++i) {
    const double x = points.X[i];
    const double fast = std::exp(-p[1] * x), slow = std::exp(-p[3] * x);
    const Vector slope = {fast, -p[0] * x * fast, slow, -p[2] * x * slow, 1};
    const double residual = points.Y[i] - (p[0] * fast + p[2] * slow + p[4]);
    for (std::size_t j = 0; j < kSize; ++j) {
      for (std::size_t k = 0; k <= j; ++k) normal[j][k] += slope[j] * slope[k];
      gradient[j] += slope[j] * residual;
    }
    sum += residual * residual;
  }
  return sum;
}

// Solves for the step by Cholesky's decomposition of the lower half; false where the matrix isn't positive definite.
bool Solve(Matrix m, Vector b, Vector& step) {
  for (std::size_t j = 0; j < kSize; ++j) {
    for (std::size_t k = 0; k < j; ++k) m[j][j] -= m[j][k] * m[j][k];
    if (!(m[j][j] > 0)) return false;
    m[j][j] = std::sqrt(m[j][j]);
    for (std::size_t i = j + 1; i < kSize; ++i) {
      for (std::size_t k = 0; k < j; ++k) m[i][j] -= m[i][k] * m[j][k];
      m[i][j] /= m[j][j];
    }
    for (std::size_t k = 0; k < j; ++k) b[j] -= m[j][k] * b[k];
    b[j] /= m[j][j];
  }
  for (std::size_t j = kSize; j-- > 0;) {
    for (std::size_t i = j + 1; i < kSize; ++i) b[j] -= m[i][j] * b[i];
    b[j] /= m[j][j];
  }
  step = b;
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  Points points;
  if (argc != 2 || !Read(argv[1], points)) return std::fputs("Usage: native_fit FILE\n", stderr), EXIT_FAILURE;

  Vector p = {6, 1, 4, 0.1, 0.5};
  Matrix normal, triedNormal;
  Vector gradient, triedGradient, step;
  double sum = Sum(points, p, normal, gradient);
  double lambda = 0.001;
  for (int pass = 0; pass < 250; ++pass) {
    Matrix damped = normal;
    for (std::size_t j = 0; j < kSize; ++j) damped[j][j] *= 1 + lambda;
    Vector tried = p;
    bool better = Solve(damped, gradient, step);
    double triedSum = 0;
    if (better) {
      for (std::size_t j = 0; j < kSize; ++j) tried[j] += step[j];
      triedSum = Sum(points, tried, triedNormal, triedGradient);
      better = triedSum < sum;
    }
    if (!better) {
      lambda *= 10;
      if (lambda > 1e10) break;
      continue;
    }
    const bool settled = sum - triedSum < 1e-12 * triedSum;
    p = tried;
    sum = triedSum;
    normal = triedNormal;
    gradient = triedGradient;
    lambda /= 10;
    if (settled) break;
  }
  constexpr const char* kNames = "abcde";
  for (std::size_t j = 0; j < kSize; ++j) std::printf("%c = %.15g\n", kNames[j], p[j]);
  std::printf("RSS = %.15g\n", sum);
}
