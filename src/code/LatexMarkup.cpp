#include "code/Markup.h"

namespace quorvex {
namespace {

std::string Greek(std::size_t letter) { return std::string("\\") + kGreekLetters[letter]; }

}  // namespace

const Markup kLatexMarkup = {.Number = "$1",
                             .TimesTenTo = "$1\\times 10^{$2}",
                             .Italic = "$1",
                             .Upright = "\\mathrm{$1}",
                             .Operator = "\\$1",
                             .Subscript = "$1_{$2}",
                             .Power = "$1^{$2}",
                             .Both = "$1_{$2}^{$3}",
                             .Fraction = "\\frac{$1}{$2}",
                             .Root = "\\sqrt{$1}",
                             .Parentheses = "\\left($1\\right)",
                             .Bars = "\\left|$1\\right|",
                             .Floor = "\\left\\lfloor $1\\right\\rfloor ",
                             .Ceiling = "\\left\\lceil $1\\right\\rceil ",
                             .Negative = "-$1",
                             .Sum = "$1 + $2",
                             .Difference = "$1 - $2",
                             .Product = "$1\\,$2",
                             .Dot = "$1\\cdot $2",
                             .Apply = "$1{\\left($2\\right)}",
                             .Comma = "$1, $2",
                             .Factorial = "$1!",
                             .PrimeSign = "\\prime ",
                             .AsNumber = "-\\left[$1\\right]",
                             .Not = "\\neg $1",
                             .And = "$1 \\land $2",
                             .Or = "$1 \\lor $2",
                             .Cases = "\\begin{cases} $2 & \\text{if } $1 \\\\ $3 & \\text{otherwise} \\end{cases}",
                             .Comparisons = {"$1 = $2", "$1 < $2", "$1 > $2", "$1 \\ne $2", "$1 \\le $2", "$1 \\ge $2"},
                             .Line = "$1 &= $2",
                             .Further = "&\\quad {}$1",
                             .LineEnd = " \\\\\n",
                             .Whole = "\\begin{aligned}\n$1\n\\end{aligned}",
                             .Underscore = "\\_",
                             .Gamma = "\\Gamma ",
                             .Greek = Greek};

}  // namespace quorvex
