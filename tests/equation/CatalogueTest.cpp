#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <vector>

#include "core/NumberText.h"
#include "equation/Catalogue.h"

namespace quorvex {
namespace {

using GroupSizes = std::vector<std::pair<std::string, int>>;

GroupSizes SizesInOrder(int variables) {
  GroupSizes sizes;
  for (const CatalogueModel& model : Catalogue(variables)) {
    if (sizes.empty() || sizes.back().first != model.Group) sizes.emplace_back(model.Group, 0);
    ++sizes.back().second;
  }
  return sizes;
}

TEST(Catalogue, HasItsGroupsInOrder) {
  const GroupSizes one = {{"Polynomial", 10},
                          {"Logarithm Polynomial", 5},
                          {"Inverse Polynomial", 5},
                          {"Inverse Logarithm Polynomial", 5},
                          {"Single Parameter Convex/Concave Curves", 7},
                          {"Two Parameter Convex/Concave Curves", 18},
                          {"Three Parameter Convex/Concave Curves", 6},
                          {"Single Parameter Curves with Maxima and Minima", 4},
                          {"Two Parameter Curves with Maxima and Minima", 1},
                          {"Three Parameter Curves with Maxima and Minima", 8},
                          {"Single Parameter Sigmoidally Shaped Curves", 2},
                          {"Two Parameter Sigmoidally Shaped Curves", 3},
                          {"Single Term Intercept", 17},
                          {"Two Term Intercept", 207}};
  const GroupSizes two = {{"Three Parameter Power", 3},
                          {"Three Parameter Polynomial", 9},
                          {"Four Parameter Polynomial", 18},
                          {"Five Parameter Polynomial", 27},
                          {"Six Parameter Polynomial", 34},
                          {"Seven Parameter Polynomial", 44},
                          {"Eight Parameter Polynomial", 35},
                          {"Nine Parameter Polynomial", 27},
                          {"Ten Parameter Polynomial", 18},
                          {"Eleven Parameter Polynomial", 9},
                          {"Six Parameter Taylor Series Polynomial", 9},
                          {"Ten Parameter Taylor Series Polynomial", 9}};
  EXPECT_EQ(SizesInOrder(1), one);
  EXPECT_EQ(SizesInOrder(2), two);
  for (int n = 3; n <= 20; ++n) EXPECT_EQ(Catalogue(n).size(), 3U) << n;
  for (const int none : {-1, 0, 21}) EXPECT_TRUE(Catalogue(none).empty()) << none;
}

// FNV-1a, 64 bits, over the listing. The expected sums are of listings made by a Python script of its own: the rows of
// the published table, and the generated groups from their rules by string operations.
std::uint64_t Checksum(const std::string& text) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  return hash;
}

TEST(ListModels, IsTheListingMadeIndependently) {
  EXPECT_EQ(Checksum(ListModels(1)), 0xcd3de0d83582b7c6);
  EXPECT_EQ(Checksum(ListModels(2)), 0x6031dcb56bd08aeb);
  std::string many;
  for (int n = 3; n <= 20; ++n) many += ListModels(n);
  EXPECT_EQ(Checksum(many), 0x0b9ae4147adb1232U);
  EXPECT_EQ(ListModels(3).substr(0, ListModels(3).find('\n') + 1),
            "300\t3 Parameter Polynomial\ta*x1+b*x2+c*x3\ta*x1+b*x2+c*x3\t3 Parameter Polynomial\n");
}

TEST(Catalogue, NumbersWithoutRepetitionAndWithItsGaps) {
  const std::map<int, std::vector<std::pair<int, int>>> ranges = {
      {1, {{1, 64}, {70, 74}, {80, 84}, {90, 313}}}, {2, {{1, 221}, {250, 270}}}, {20, {{1030, 1032}}}};
  for (const auto& [variables, expected] : ranges) {
    std::set<int> numbers, wanted;
    std::set<std::string> keys;  // of a collection that ignores case
    for (const CatalogueModel& model : Catalogue(variables)) {
      EXPECT_TRUE(numbers.insert(model.IDIndex).second) << model.ID;
      EXPECT_TRUE(keys.insert(ToLower(model.ID)).second) << model.ID;
    }
    for (const auto& [first, last] : expected)
      for (int i = first; i <= last; ++i) wanted.insert(i);
    EXPECT_EQ(numbers, wanted) << variables;
  }
}

TEST(LookupBuiltInModel, FindsByExactID) {
  const struct {
    int Variables;
    const char* ID;
    int IDIndex, NumXBasis, NumCoefficients;  // 0 where there is no such model
  } cases[] = {
      {1, "a*x+b", 1, 2, 2},
      {1, "A*X+B", 0, 0, 0},
      {1, "a+b*x", 0, 0, 0},
      {1, "Tenth order polynomial", 10, 11, 11},
      {1, "cos(x+a)", 39, 2, 1},
      {1, "sin(x+a)", 40, 2, 1},
      {1, "a+b*ln(x)", 32, 2, 2},
      {1, "First order logarithm", 80, 2, 2},
      {1, "a+b*x+c/x^2", 54, 3, 3},
      {1, "a+b*x*ln(x)", 90, 2, 2},
      {1, "a+b*exp(-x)", 106, 2, 2},
      {1, "a+b*x+c*x*ln(x)", 107, 3, 3},
      {1, "a+b*x+c*exp(-x)", 124, 3, 3},
      {1, "a+b*x*ln(x)+c*x^1.5", 125, 3, 3},
      {1, "a+b/x^2+c*exp(-x)", 313, 3, 3},
      {1, "a+b*ln(x)+c*ln(x)^2", 0, 0, 0},
      {2, "a+b*x1+c*x2", 1, 3, 3},
      {2, "a+b/x1+c/x1^2+d*x2+e*x2^2+f*x2^3", 84, 6, 6},
      {2, "a+b/x1+c/x1^2+d*ln(x2)+e*ln(x2)^2+f*ln(x2)^3", 81, 6, 6},
      {2, "a+b/x1+c/x1^2+d/x2+e/x2^2+f/x2^3", 82, 6, 6},
      {2, "a+b/x1+c/x1^2+d/x1^3+e*x2+f*x2^2", 83, 6, 6},
      {2, "a+b/x1+c/x1^2+d/x1^3+e*ln(x2)+f*ln(x2)^2", 85, 6, 6},
      {2, "a+b/x1+c/x1^2+d/x1^3+e/x1^4+f*x2", 0, 0, 0},
      {2, "a+b/x1+c*x2+d/x1^2+e*x2^2+f*x2/x1", 252, 6, 6},
      {2, "a+b*ln(x1)+c/x2+d*ln(x1)^2+e/x2^2+f*ln(x1)/x2", 257, 6, 6},
      {2, "a+b/x1+c/x2+d/x1^2+e/x2^2+f/(x1*x2)", 258, 6, 6},
      {2, "a*x1^b*c^x2", 270, 3, 3},
      {2, "a*x+b", 0, 0, 0},
      {3, "a*x1+b*x2+c*x3+d", 301, 4, 4},
      {21, "a*x1", 0, 0, 0},
  };
  for (const auto& c : cases) {
    const CatalogueModel* model = LookupBuiltInModel(c.ID, c.Variables);
    EXPECT_EQ(model ? model->IDIndex : 0, c.IDIndex) << c.ID;
    EXPECT_EQ(model ? model->NumXBasis() : 0, c.NumXBasis) << c.ID;
    EXPECT_EQ(model ? model->NumCoefficients : 0, c.NumCoefficients) << c.ID;
  }
}

TEST(Catalogue, CountsTheCoefficientsOfItsFormulas) {
  for (int n = 1; n <= 20; ++n) {
    for (const CatalogueModel& model : Catalogue(n)) {
      std::set<char> letters;  // a coefficient is a letter that stands alone
      const std::string& text = model.Definition;
      for (std::size_t i = 0; i < text.size(); ++i) {
        const auto letter = [&text](std::size_t at) { return at < text.size() && text[at] >= 'a' && text[at] <= 'z'; };
        if (letter(i) && text[i] != 'x' && !letter(i + 1) && (i == 0 || !letter(i - 1))) letters.insert(text[i]);
      }
      EXPECT_EQ(static_cast<int>(letters.size()), model.NumCoefficients) << text;
      EXPECT_EQ(*letters.rbegin(), 'a' + model.NumCoefficients - 1) << text;
    }
  }
}

}  // namespace
}  // namespace quorvex
