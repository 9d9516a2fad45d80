#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <string_view>
#include <system_error>

#include "core/NumberText.h"

#ifdef __x86_64__
#include <emmintrin.h>
#endif

namespace quorvex {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Whether a number that the range of a double cannot hold, `text` without its sign, is too small for it rather than too
// large: the place of its first digit that is not 0, with the exponent, decides.
bool IsBelowRange(std::string_view text) {
  const std::size_t mark = std::min(text.find_first_of("eE"), text.size());
  const std::string_view digits = text.substr(0, mark);
  const auto point = static_cast<long long>(std::min(digits.find('.'), digits.size()));
  const auto first = static_cast<long long>(digits.find_first_of("123456789"));
  std::string_view exponentText = text.substr(std::min(mark + 1, text.size()));
  if (exponentText.starts_with('+')) exponentText.remove_prefix(1);
  long long exponent = 0;
  const auto [end, error] = std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
  if (error == std::errc::result_out_of_range) return exponentText.starts_with('-');
  return point - first + exponent < 0;
}

#ifdef __x86_64__

__extension__ using Wide = unsigned __int128;
using Bits = std::uint64_t;

// A power of ten as Significand * 2^Exponent, cut off to 64 bits of which the highest is set.
struct PowerOfTen {
  Bits Significand;
  int Exponent;
};

constexpr std::size_t kMostTens = 55;  // 5^55 is the last power that 128 bits hold

// From 10^-kMostTens on.
constexpr auto kPowersOfTen = [] {
  std::array<PowerOfTen, 2 * kMostTens + 1> powers{};
  Wide five = 1;
  for (std::size_t k = 0; k <= kMostTens; ++k, five *= 5) {
    const auto high = static_cast<Bits>(five >> 64);
    const int bits = high != 0 ? 128 - std::countl_zero(high) : 64 - std::countl_zero(static_cast<Bits>(five));
    const int tens = static_cast<int>(k);
    powers[kMostTens + k] = {static_cast<Bits>(bits > 64 ? five >> (bits - 64) : five << (64 - bits)),
                             bits - 64 + tens};
    if (k == 0) continue;
    // 2^(bits + 63) / 5^k, a bit at a time.
    Bits quotient = 0;
    Wide rest = Wide{1} << (bits - 1);
    for (int place = 0; place < 64; ++place) {
      const bool overflows = (rest >> 127) != 0;
      rest <<= 1;
      quotient <<= 1;
      if (!overflows && rest < five) continue;
      rest -= five;
      quotient |= 1;
    }
    powers[kMostTens - k] = {quotient, -(bits + 63) - tens};
  }
  return powers;
}();

unsigned DigitAt(const char* at) { return static_cast<unsigned char>(*at) - unsigned{'0'}; }

// The digits from `at` on, 16 at most, in units of 10^-16 behind a point that stands before them; `count` is how many
// they are.
Bits Fraction(const char* at, unsigned& count) {
  alignas(32) static constexpr unsigned char kKept[32] = {255, 255, 255, 255, 255, 255, 255, 255,
                                                          255, 255, 255, 255, 255, 255, 255, 255};
  __m128i digits = _mm_sub_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at)), _mm_set1_epi8('0'));
  const __m128i are = _mm_cmpeq_epi8(_mm_min_epu8(digits, _mm_set1_epi8(9)), digits);
  count = static_cast<unsigned>(std::countr_zero(~static_cast<unsigned>(_mm_movemask_epi8(are))));
  digits = _mm_and_si128(digits, _mm_loadu_si128(reinterpret_cast<const __m128i*>(kKept + 16 - count)));
  // Two digits, four and eight of them become one number.
  digits = _mm_add_epi16(_mm_mullo_epi16(_mm_and_si128(digits, _mm_set1_epi16(255)), _mm_set1_epi16(10)),
                         _mm_srli_epi16(digits, 8));
  digits = _mm_madd_epi16(digits, _mm_set1_epi32(1 << 16 | 100));
  digits = _mm_madd_epi16(_mm_packs_epi32(digits, digits), _mm_set1_epi32(1 << 16 | 10000));
  const auto eights = static_cast<Bits>(_mm_cvtsi128_si64(digits));
  return (eights & 0xFFFFFFFF) * 100'000'000 + (eights >> 32);
}

// The usual number at the start of a text: stores its value and returns how many characters it takes. 0 where it is
// none, or where more must be known about its value than this works out.
//
// All digits are one whole number n of up to 128 bits, and the value is n * 10^k. Both factors are cut off to 64 bits,
// and so is their product: it is less than 3 units of its last bit too small, one for each cut. Rounded to a double it
// is the nearest one to the value, unless the middle between two doubles is that near.
std::size_t UsualNumber(std::string_view text, double& value) {
  constexpr std::size_t kLookedAt = 64;
  if (text.size() < kLookedAt) return 0;
  const Bits sign = text.front() == '-' ? 1 : 0;
  const char* const first = text.data() + sign;
  const char* at = first;
  Bits whole = 0;
  for (; DigitAt(at) < 10 && at != first + 19; ++at) whole = 10 * whole + DigitAt(at);
  if (at == first) return 0;
  Bits low = whole, high = 0;
  long tens = 0;
  if (*at == '.') {
    unsigned count = 0;
    const Wide all = Wide{whole} * 10'000'000'000'000'000 + Fraction(++at, count);
    low = static_cast<Bits>(all);
    high = static_cast<Bits>(all >> 64);
    tens = -16;
    at += count;
    if (count == 16)
      for (; DigitAt(at) < 10; ++at, --tens) {
        if (high != 0 || low >= UINT64_MAX / 10 || tens == -24) return 0;
        low = 10 * low + DigitAt(at);
      }
  }
  if (*at == 'e' || *at == 'E') {
    const bool isNegative = at[1] == '-';
    at += isNegative || at[1] == '+' ? 2 : 1;
    const char* const begin = at;
    long exponent = 0;
    for (; DigitAt(at) < 10 && at != begin + 4; ++at) exponent = 10 * exponent + DigitAt(at);
    if (at == begin) return 0;
    tens += isNegative ? -exponent : exponent;
  }
  const bool goesOn = DigitAt(at) < 10;
  constexpr long kMost = kMostTens;
  if (goesOn || tens < -kMost || tens > kMost) return 0;
  const std::size_t length = static_cast<std::size_t>(at - text.data());
  if ((low | high) == 0) {
    value = std::bit_cast<double>(sign << 63);
    return length;
  }
  const PowerOfTen power = kPowersOfTen[static_cast<std::size_t>(tens + kMost)];
  const int zeros = std::countl_zero(high != 0 ? high : low);
  const Bits significand = high == 0 ? low << zeros : high << zeros | low >> 1 >> (63 - zeros);
  const auto product = static_cast<Bits>(Wide{significand} * power.Significand >> 64);
  // The product has 63 or 64 bits. With the highest one in its place eleven are left over behind those of a double; a
  // unit may be two there, and one more goes where the conversion leaves out the last bit.
  constexpr Bits kMiddle = 1 << 10;
  if ((((product << (~product >> 63)) - (kMiddle - 4)) & (2 * kMiddle - 1)) <= 6) return 0;
  const auto rounded = static_cast<double>(static_cast<std::int64_t>(product >> 1));
  const int exponent = power.Exponent + (high != 0 ? 64 : 0) - zeros + 65;
  value = std::bit_cast<double>((std::bit_cast<Bits>(rounded) + (static_cast<Bits>(exponent) << 52)) | sign << 63);
  return length;
}

#else

std::size_t UsualNumber(std::string_view, double&) { return 0; }

#endif

}  // namespace

std::size_t LeadingNumber(std::string_view text, double& value) {
  if (const std::size_t length = UsualNumber(text, value); length > 0) return length;
  const char* const last = text.data() + text.size();
  const char* first = text.data();
  const bool plus = first != last && *first == '+';  // std::from_chars takes a minus sign only
  if (plus) ++first;
  // Digits must follow a sign, which also keeps out "inf" and "nan".
  const char* digits = first;
  if (!plus && digits != last && *digits == '-') ++digits;
  if (digits == last || !(IsDigit(*digits) || *digits == '.')) return 0;
  const auto [end, error] = std::from_chars(first, last, value);
  if (error == std::errc::result_out_of_range && IsBelowRange({digits, static_cast<std::size_t>(end - digits)})) {
    value = digits == first ? 0.0 : -0.0;
    return static_cast<std::size_t>(end - text.data());
  }
  return error == std::errc() ? static_cast<std::size_t>(end - text.data()) : 0;
}

}  // namespace quorvex
