#include <gtest/gtest.h>

#include <bit>

#include "core/DerivativeKind.h"
#include "core/VectorWidths.h"
#include "engine/LoadModelCatalog.h"
#include "engine/UserModel.h"
#include "equation/BlockProgram.h"

namespace quorvex {
namespace {

SolveData Sampled(std::size_t variables, std::size_t points) {
  SolveData data;
  data.X.resize(variables);
  for (std::size_t i = 0; i < points; ++i) {
    for (std::size_t v = 0; v < variables; ++v)
      data.X[v].push_back(0.01 * static_cast<double>(i * (v + 1) % 1000) + 0.013);
    data.Y.push_back(1);
  }
  data.SD = data.sig = data.Y;
  return data;
}

// Value and derivatives of a model over a block against the same point by point, bit for bit.
void Compare(ModelClass& model, const SolveData& data, DerivativeKind method, bool expectBlock) {
  const auto count = static_cast<std::size_t>(model.NumDependentVar());
  std::vector<std::vector<double>> dyda(count, std::vector<double>(kBlock));
  std::vector<double*> columns;
  for (auto& column : dyda) columns.push_back(column.data());
  std::vector<const double*> stand(count);
  std::vector<double> y(kBlock), slopes(count);
  std::array<double, kMostIndependentVariables> x;
  for (std::size_t first = 0; first < data.N(); first += kBlock) {
    const std::size_t n = std::min(kBlock, data.N() - first);
    const bool went = model.DifferentiateBlock(data, first, n, method, y.data(), columns.data(), stand.data());
    if (first == 0) {
      EXPECT_EQ(went, expectBlock) << model.id;
    }
    if (!went) continue;
    for (std::size_t i = 0; i < n; ++i) {
      double value = 0;
      std::string ErrString;
      const auto point = data.Point(first + i, x);
      ASSERT_TRUE(model.Evaluate(point, value));
      ASSERT_TRUE(method == DerivativeKind::Central ? model.NumericalDerivatives(point, slopes, ErrString)
                  : method == DerivativeKind::Exact && model.HasExactDerivatives()
                      ? model.ExactDerivatives(point, slopes, ErrString)
                      : model.Derivative(point, slopes, ErrString));
      ASSERT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(y[i])) << model.id << " point " << i;
      for (std::size_t c = 0; c < count; ++c)
        ASSERT_EQ(std::bit_cast<std::uint64_t>(slopes[c]), std::bit_cast<std::uint64_t>(stand[c][i]))
            << model.id << " point " << i << " coefficient " << c << ": " << slopes[c] << " " << stand[c][i];
    }
  }
}

const struct {
  std::vector<std::string> Lines;
  bool Several, Block;
} kModels[] = {
    {{"a*exp(-b*x)+c*exp(-d*x)+e"}, false, true},
    {{"a*exp(-b*x)+c*exp(-(x-d)^2/e^2)+f*exp(-(x-g)^2/h^2)"}, false, true},
    {{"F1*a+F1^b", "sqr(x+c)+1"}, false, true},
    {{"if(c>0,a*sin(b*x)+xmax,d)"}, false, true},
    {{"a*j0(b*x)+gamma(c+x)+erf(x*d)"}, false, true},
    {{"a*x1^b+c*x2/(x3+d)"}, true, true},
    {{"1e60*a*exp(b*x)"}, false, true},  // errors too large to be taken for any
    {{"if(x>2,a,b)*x"}, false, false},   // both branches within a block
    {{"a*ln(x-1)+b"}, false, false},
    {{"a*x+b*rnd(1)"}, false, false},
};

TEST(DifferentiateBlock, GivesTheBitsOfThePointPath) {
  for (const auto& c : kModels) {
    const std::unique_ptr<ModelClass> model = NewModelFor(c.Several ? 3 : 1, LocaleText());
    model->SetID(c.Lines[0], c.Lines);
    ASSERT_TRUE(model->IsValidEquation()) << c.Lines[0];
    for (int i = 1; i <= model->NumDependentVar(); ++i) model->SetValue(i, i == 3 ? 0.0 : 0.3 + 0.4 * i);
    if (c.Lines[0].starts_with("if(c")) model->SetValue(3, 1);
    const SolveData data = Sampled(c.Several ? 3 : 1, 300);
    for (const DerivativeKind method : {DerivativeKind::Richardson, DerivativeKind::Central, DerivativeKind::Exact})
      Compare(*model, data, method, c.Block);
    // Few points are extrapolated by several rounds at once, and their number need not fill registers.
    if (c.Block)
      WithEveryVectorWidth([&] {
        for (const std::size_t points : {1, 20, 41, 100, 250})
          Compare(*model, Sampled(c.Several ? 3 : 1, points), DerivativeKind::Richardson, true);
      });
    model->SetConstant(1, 0);
    Compare(*model, data, DerivativeKind::Richardson, c.Block);
    Compare(*model, data, DerivativeKind::Exact, c.Block);
  }
}

TEST(DifferentiateBlock, GivesTheBitsOfThePointPathForBuiltInModels) {
  const SolveData data = Sampled(1, 20);
  ModelCollection models;
  LoadModelCatalog(models, 1, {});
  for (const auto& model : models) {
    for (int i = 1; i <= model->NumDependentVar(); ++i) model->SetValue(i, 0.002 * i);
    if (model->id.find("ln(x-a)") != std::string::npos || model->id.find("(1-x)") != std::string::npos ||
        model->id == "x^a" || model->id.find("/ln(x)") != std::string::npos)
      continue;  // without a value somewhere on these points
    Compare(*model, data, DerivativeKind::Richardson, true);
  }
}

}  // namespace
}  // namespace quorvex
