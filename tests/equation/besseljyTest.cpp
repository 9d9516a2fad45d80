#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "equation/Checked.h"

namespace quorvex {
namespace {

// Reference values: mpmath at 50 digits. Rows stand at and beside the break point 2, also of Airy's argument.

TEST(bessjy, AgreesWithReference) {
  constexpr struct {
    double nu, x, j, y, dj, dy;
  } kRows[] = {
      {0, 0.1, 0.99750156206604003, -1.5342386513503668, -0.049937526036242, 6.4589510947020266},
      {0.3333333333333333, 1e-20, 1.9149106161145024e-7, -4986810.6141109341, 6.3830353870483413e+12,
       1.6622702047037184e+26},
      {0.5, 1.9999999999999998, 0.51301613656182783, 0.23478571040624837, -0.36303974454670534, 0.45431970896026573},
      {0.5, 2, 0.51301613656182775, 0.23478571040624847, -0.36303974454670541, 0.45431970896026563},
      {0.75, 1e-30, 2.0458907763218653e-23, -2.0744664695219178e+22, 15344180.822413989, 1.5558498521414382e+52},
      {2.5, 1.2, 0.075615002728933786, -1.9830860759045416, 0.14426083623935318, 3.2326233221816159},
      {7.3, 20, -0.17439710031283124, 0.061243024022253455, -0.052040259584776392, -0.16424519501255051},
      {1, 8, 0.23463634685391462, -0.15806046173124749, 0.14232126378081458, 0.24327904710397216},
      {20.25, 3, 6.3829393596329802e-16, -2.4902096416572683e+13, 4.2632116397783078e-15, 1.6613612869616382e+14},
      {20, 20, 0.16474777377532653, -0.28548945860020349, 0.054114129746354459, 0.099436700351483681},
      {60, 1.5, 3.7974834651207708e-90, -1.39745805919085e+87, 1.5185264128802686e-88, 5.5880555149242362e+88},
      {0, 300, -0.033298554876305668, -0.031831889730003398, 0.03188743137749995, -0.033245548121310216},
      {33.3, 2500, -0.015723301200199062, 0.0027291567091564795, -0.0027257694281500563, -0.01572245254841607},
      {1000, 1000, 0.044730672947964041, -0.077476001520720744, 0.0040995558222577404, 0.0071316293322741252}};
  for (const auto& row : kRows) {
    // Rounding of recurrences over nu orders, and of a first fraction of x rounds; of the modulus where J oscillates.
    const double limit = 5e-15 * (1 + std::min(row.nu, 40.0)) + 2e-17 * row.x * row.x;
    const bool waves = row.x > row.nu;
    const double value = std::hypot(row.j, row.y), slope = std::hypot(row.dj, row.dy);
    EXPECT_NEAR(Value("jnu", {row.nu, row.x}), row.j, limit * (waves ? value : std::abs(row.j)))
        << row.nu << " " << row.x;
    EXPECT_NEAR(Value("ynu", {row.nu, row.x}), row.y, limit * value) << row.nu << " " << row.x;
    EXPECT_NEAR(Value("djnu", {row.nu, row.x}), row.dj, limit * (waves ? slope : std::abs(row.dj)))
        << row.nu << " " << row.x;
    EXPECT_NEAR(Value("dynu", {row.nu, row.x}), row.dy, limit * slope) << row.nu << " " << row.x;
  }
}

TEST(bessik, AgreesWithReference) {
  constexpr struct {
    double nu, x, i, k, di, dk;
  } kRows[] = {
      {0, 0.1, 1.0025015629340956, 2.4270690247020166, 0.050062526047092695, -9.8538447808706056},
      {0.3333333333333333, 1e-20, 1.9149106161145024e-7, 7833263.7950670843, 6.3830353870483413e+12,
       -2.6110879316892597e+26},
      {0.5, 1.9999999999999998, 2.0462368630890547, 0.11993777196806148, 1.6110324044053731, -0.14992221496007685},
      {0.5, 2, 2.046236863089055, 0.11993777196806145, 1.6110324044053734, -0.14992221496007681},
      {0.5, 1e-08, 7.9788456080286538e-5, 12533.141247823589, 3989.4228040143271, -6.266570749243207e+11},
      {2.5, 1.2, 0.092891085467883195, 1.9240196087521773, 0.2090963737267465, -4.6401418176249651},
      {7.3, 20, 11281563.001392321, 2.0818812839515716e-9, 11759516.754433395, -2.2619279046246389e-9},
      {1, 8, 399.8731367825601, 1.5536921180500113e-4, 377.57997362398477, -1.6589185669844053e-4},
      {20.25, 3, 7.8884248141876702e-16, 3.0962032640787378e+13, 5.3801071536117091e-15, -2.113911002008401e+14},
      {60, 1.5, 3.8681688301147474e-90, 2.1536623737804974e+87, 1.5477430558593224e-88, -8.617386751662324e+88},
      {0, 700, 1.5295933476718737e+302, 4.6697764316853769e-306, 1.5285003902339007e+302, -4.6731107967079661e-306},
      {33.3, 500, 8.2582133926361876e+214, 1.2082396116447745e-218, 8.2682822644968035e+214, -1.2121185747877161e-218}};
  for (const auto& row : kRows) {
    const double limit = 5e-15 * (1 + row.nu);
    EXPECT_NEAR(Value("inu", {row.nu, row.x}) / row.i, 1, limit) << row.nu << " " << row.x;
    EXPECT_NEAR(Value("dinu", {row.nu, row.x}) / row.di, 1, limit) << row.nu << " " << row.x;
    // Just below x = 2 the series for K cancels to a tenth of its terms.
    EXPECT_NEAR(Value("knu", {row.nu, row.x}) / row.k, 1, 3e-14 + limit) << row.nu << " " << row.x;
    EXPECT_NEAR(Value("dknu", {row.nu, row.x}) / row.dk, 1, 3e-14 + limit) << row.nu << " " << row.x;
  }
}

TEST(sphbes, HasItsClosedFormsInTheLowestOrders) {
  for (double x : {1e-3, 0.5, 1.0, 1.999, 2.0, 7.5, 40.0, 200.0}) {
    const double s = std::sin(x), c = std::cos(x);
    // sqrt(pi/2) has 8 digits: 3e-8, of the modulus, which is 1/x and for slopes and order 1 at most (1 + 1/x)/x.
    const double limit = 3e-8 / x;
    EXPECT_NEAR(Value("sphjn", {0, x}), s / x, limit * std::min(x, 1.0)) << x;
    EXPECT_NEAR(Value("sphyn", {0, x}), -c / x, limit) << x;
    EXPECT_NEAR(Value("dsphjn", {0, x}), c / x - s / x / x, limit * (1 + 1 / x)) << x;
    EXPECT_NEAR(Value("dsphyn", {0, x}), s / x + c / x / x, limit * (1 + 1 / x)) << x;
    EXPECT_NEAR(Value("sphyn", {1, x}), -c / x / x - s / x, limit * (1 + 1 / x)) << x;
  }
}

TEST(airy, AgreesWithReferenceToItsConstants) {
  constexpr struct {
    double x, ai, bi, dai, dbi;
  } kRows[] = {
      {-590, -0.10810439884279323, -0.037656998946817038, 0.91463952002720593, -2.6258626825557056},
      {-100, 0.17675339323955288, 0.024273887680160132, -0.24229703166058381, 1.7675948932340609},
      {-10, 0.040241238486443191, -0.31467982964383863, 0.99626504413279006, 0.11941411339990924},
      {-2.338107410459767, 2.743319340666283e-17, -0.45394320205833579, 0.70121082272069136, -0.045982121821858042},
      {-2.081, 0.17592963489806205, -0.43209605917415858, 0.65159996315161239, 0.20892506239354961},
      {-2.08, 0.17658105160983956, -0.43188668466035418, 0.65123326390068082, 0.20982382061609345},
      {-1, 0.53556088329235212, 0.10399738949694461, -0.010160567116645209, 0.59237562642279235},
      {-1e-06, 0.35502831270722103, 0.61492617915764338, -0.25881940379262928, 0.44828835735413382},
      {0, 0.35502805388781724, 0.61492662744600074, -0.2588194037928068, 0.44828835735382636},
      {1e-100, 0.35502805388781724, 0.61492662744600074, -0.2588194037928068, 0.44828835735382636},
      {1e-06, 0.35502779506841345, 0.61492707573435809, -0.25881940379262928, 0.44828835735413382},
      {0.5, 0.23169360648083349, 0.85427704310315549, -0.22491053266468389, 0.5445725641405923},
      {2.08, 0.030894392489319441, 3.6482763726682131, -0.047727576240678393, 4.6670766389094687},
      {2.081, 0.030846697031852055, 3.6529472457415626, -0.047663350087413832, 4.6746717358509582},
      {5, 1.0834442813607442e-4, 657.79204417117118, -2.4741389086846248e-4, 1435.8190802179825},
      {20, 1.6916728686705403e-27, 2.1037650496511038e+25, -7.586391625748355e-27, 9.3818393361339643e+25},
      {103, 1.9562320229339224e-304, 8.01643392902487e+301, -1.985833197807815e-303, 8.1338449670323222e+302}};
  for (const auto& row : kRows) {
    // 1/sqrt(3) has 8 digits, an error of 1.4e-9, and at x = 0 so have the values themselves. Left of 0 bessjy adds
    // 2e-17 times the square of its argument (2/3)|x|^1.5, and the error is one of the modulus.
    const double limit = row.x == 0 ? 2e-8 : 1.6e-9 + 9e-18 * std::pow(std::max(-row.x, 0.0), 3);
    const auto of = [&](double value, double other) {
      return limit * (row.x < 0 ? std::hypot(value, other) : std::abs(value));
    };
    EXPECT_NEAR(Value("airya", {row.x}), row.ai, of(row.ai, row.bi)) << row.x;
    EXPECT_NEAR(Value("airyb", {row.x}), row.bi, of(row.bi, row.ai)) << row.x;
    EXPECT_NEAR(Value("dairya", {row.x}), row.dai, of(row.dai, row.dbi)) << row.x;
    EXPECT_NEAR(Value("dairyb", {row.x}), row.dbi, of(row.dbi, row.dai)) << row.x;
  }
}

TEST(bessjy, FaultsOutsideItsDomainAndBeyondItsRounds) {
  constexpr struct {
    const char* word;
    double nu, x;
  } kRows[] = {{"jnu", 0.5, 0},   {"jnu", 0.5, -1},  {"ynu", -0.1, 1},      {"jnu", 0, 1e4},   {"jnu", 0, 1e300},
               {"jnu", 33000, 1}, {"jnu", 1e300, 1}, {"jnu", 1e300, 1e300}, {"ynu", 200, 1},   {"jnu", 0, 5e-324},
               {"inu", 0.5, 0},   {"knu", -1, 1},    {"inu", 0, 720},       {"knu", 1e300, 1}, {"inu", 0, 1e300},
               {"sphjn", -1, 1},  {"sphyn", 0, 0},   {"dsphjn", 2, -1},     {"sphjn", 4e4, 1}};
  for (const auto& row : kRows) EXPECT_FALSE(Checked(row.word, {row.nu, row.x})) << row.word << row.nu << " " << row.x;
  for (double x : {-610.0, 105.0, 1e-120, -1e-120}) EXPECT_FALSE(Checked("airya", {x})) << x;
}

}  // namespace
}  // namespace quorvex
