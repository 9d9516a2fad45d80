#include "code/Markup.h"

namespace quorvex {
namespace {

std::string Greek(std::size_t letter) { return "<mi>&#" + std::to_string(0x3B1 + letter) + ";</mi>"; }

}  // namespace

const Markup kMathMLMarkup = {
    .Number = "<mn>$1</mn>",
    .TimesTenTo = "<mn>$1</mn><mo>&#xD7;</mo><msup><mn>10</mn><mrow>$2</mrow></msup>",
    .Italic = "<mi>$1</mi>",
    .Upright = "<mi mathvariant=\"normal\">$1</mi>",
    .Operator = "<mi>$1</mi>",
    .Subscript = "<msub><mrow>$1</mrow><mrow>$2</mrow></msub>",
    .Power = "<msup><mrow>$1</mrow><mrow>$2</mrow></msup>",
    .Both = "<msubsup><mrow>$1</mrow><mrow>$2</mrow><mrow>$3</mrow></msubsup>",
    .Fraction = "<mfrac><mrow>$1</mrow><mrow>$2</mrow></mfrac>",
    .Root = "<msqrt><mrow>$1</mrow></msqrt>",
    .Parentheses = "<mrow><mo>(</mo>$1<mo>)</mo></mrow>",
    .Bars = "<mrow><mo>|</mo>$1<mo>|</mo></mrow>",
    .Floor = "<mrow><mo>&#x230A;</mo>$1<mo>&#x230B;</mo></mrow>",
    .Ceiling = "<mrow><mo>&#x2308;</mo>$1<mo>&#x2309;</mo></mrow>",
    .Negative = "<mo form=\"prefix\">&#x2212;</mo>$1",
    .Sum = "$1<mo form=\"infix\">+</mo>$2",
    .Difference = "$1<mo form=\"infix\">&#x2212;</mo>$2",
    .Product = "$1<mspace width=\"0.17em\"></mspace>$2",
    .Dot = "$1<mo>&#xB7;</mo>$2",
    .Apply = "$1<mo>&#x2061;</mo><mrow><mo>(</mo>$2<mo>)</mo></mrow>",
    .Comma = "$1<mo>,</mo>$2",
    .Factorial = "$1<mo>!</mo>",
    .PrimeSign = "<mo>&#x2032;</mo>",
    .AsNumber = "<mo form=\"prefix\">&#x2212;</mo><mrow><mo>[</mo>$1<mo>]</mo></mrow>",
    .Not = "<mo>&#xAC;</mo>$1",
    .And = "$1<mo>&#x2227;</mo>$2",
    .Or = "$1<mo>&#x2228;</mo>$2",
    .Cases =
        "<mrow><mo form=\"prefix\" stretchy=\"true\">{</mo><mtable><mtr><mtd style=\"text-align:left\">$2</mtd>"
        "<mtd style=\"text-align:left\"><mtext>if&#xA0;</mtext>$1</mtd></mtr><mtr><mtd style=\"text-align:left\">"
        "$3</mtd><mtd style=\"text-align:left\"><mtext>otherwise</mtext></mtd></mtr></mtable></mrow>",
    .Comparisons = {"$1<mo>=</mo>$2", "$1<mo>&lt;</mo>$2", "$1<mo>&gt;</mo>$2", "$1<mo>&#x2260;</mo>$2",
                    "$1<mo>&#x2264;</mo>$2", "$1<mo>&#x2265;</mo>$2"},
    .Line =
        "<mtr><mtd style=\"text-align:right;padding:0.2em 0\"><mrow>$1</mrow></mtd>"
        "<mtd style=\"text-align:left;padding:0.2em\"><mrow><mo form=\"infix\">=</mo>$2</mrow></mtd></mtr>",
    .Further =
        "<mtr><mtd></mtd><mtd style=\"text-align:left;padding:0.2em 0.2em 0.2em 2em\"><mrow>$1</mrow></mtd></mtr>",
    .LineEnd = "\n",
    .Whole =
        "<math xmlns=\"http://www.w3.org/1998/Math/MathML\" display=\"block\"><mtable displaystyle=\"true\">\n"
        "$1\n</mtable></math>",
    .Underscore = "_",
    .Gamma = "<mi mathvariant=\"normal\">&#x393;</mi>",
    .Greek = Greek};

}  // namespace quorvex
