#include <gtest/gtest.h>

#include <cstdint>
#include <set>

#include "TableFile.h"
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
  std::map<std::string, GroupSizes> expected;
  for (const auto& row : TableRows("catalogue_groups.txt", 3)) expected[row[0]].emplace_back(row[1], std::stoi(row[2]));
  EXPECT_EQ(SizesInOrder(1), expected["1"]);
  EXPECT_EQ(SizesInOrder(2), expected["2"]);
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
  for (const auto& row : TableRows("catalogue_lookup.txt", 5)) {
    const CatalogueModel* model = LookupBuiltInModel(row[1], std::stoi(row[0]));
    EXPECT_EQ(model ? model->IDIndex : 0, Number(row[2])) << row[1];
    EXPECT_EQ(model ? model->NumXBasis() : 0, Number(row[3])) << row[1];
    EXPECT_EQ(model ? model->NumCoefficients : 0, Number(row[4])) << row[1];
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
