#include "code/Languages.h"

namespace quorvex {
namespace {

// Words of the language, and what the code speaks of, which no coefficient may hide.
constexpr std::string_view kReserved[] = {
    "as",       "async",  "await",    "break",  "const",   "continue", "crate", "dyn",    "else",
    "enum",     "extern", "false",    "fn",     "for",     "if",       "impl",  "in",     "let",
    "loop",     "match",  "mod",      "move",   "mut",     "pub",      "ref",   "return", "self",
    "Self",     "static", "struct",   "super",  "trait",   "true",     "type",  "unsafe", "use",
    "where",    "while",  "abstract", "become", "box",     "do",       "final", "gen",    "macro",
    "override", "priv",   "try",      "typeof", "unsized", "virtual",  "yield", "union",  "f64",
    "i32",      "u64",    "std",      "core",   "main",    "tests",    "value", "n",      "RANDOM_COUNTER",
    "Ok",       "Err",    "Some",     "None",
};

constexpr CodeForm kForms[] = {
    {"^whole", "f64::powi($1, $2)"},
    {"^", "f64::powf($1, $2)"},
    {"\\", "f64::from(whole($1) / whole($2))", Binding::Atom, "whole"},
    {"mod", "f64::from(whole($1) % whole($2))", Binding::Atom, "whole"},
    {"not", "f64::from(!whole($1))", Binding::Atom, "whole"},
    {"and", "f64::from(whole($1) & whole($2))", Binding::Atom, "whole"},
    {"or", "f64::from(whole($1) | whole($2))", Binding::Atom, "whole"},
    {"xor", "f64::from(whole($1) ^ whole($2))", Binding::Atom, "whole"},
    {"eqv", "f64::from(!(whole($1) ^ whole($2)))", Binding::Atom, "whole"},
    {"imp", "f64::from(!whole($1) | whole($2))", Binding::Atom, "whole"},
    {"abs", "f64::abs($1)"},
    {"exp", "f64::exp($1)"},
    {"fix", "f64::trunc($1)"},
    {"int", "f64::floor($1)"},
    {"floor", "f64::floor($1)"},
    {"ceil", "f64::ceil($1)"},
    {"fract", "f64::fract($1)"},
    {"log", "f64::ln($1)"},
    {"ln", "f64::ln($1)"},
    {"log10", "f64::log10($1)"},
    {"rnd", "random_number($1)", Binding::Atom, "random_number"},
    {"sgn", "sign($1)", Binding::Atom, "sign"},
    {"sqr", "f64::sqrt($1)"},
    {"cos", "f64::cos($1)"},
    {"sin", "f64::sin($1)"},
    {"tan", "f64::tan($1)"},
    {"arcsin", "f64::asin($1)"},
    {"arccos", "f64::acos($1)"},
    {"arctan", "f64::atan($1)"},
    {"sec", "1.0 / f64::cos($1)", Binding::Product},
    {"cosec", "1.0 / f64::sin($1)", Binding::Product},
    {"cotan", "1.0 / f64::tan($1)", Binding::Product},
    {"arcsec", "f64::acos(1.0 / #1)"},
    {"arccosec", "f64::asin(1.0 / #1)"},
    {"arccotan", "f64::atan2(1.0, $1)"},
    {"hsin", "f64::sinh(held($1))", Binding::Atom, "held"},
    {"hcos", "f64::cosh(held($1))", Binding::Atom, "held"},
    {"htan", "f64::tanh($1)"},
    {"hsec", "1.0 / f64::cosh(held($1))", Binding::Product, "held"},
    {"hcosec", "1.0 / f64::sinh(held($1))", Binding::Product, "held"},
    {"hcotan", "1.0 / f64::tanh($1)", Binding::Product},
    {"harcsin", "f64::asinh($1)"},
    {"harccos", "f64::acosh($1)"},
    {"harctan", "f64::atanh($1)"},
    {"harcsec", "f64::acosh(1.0 / #1)"},
    {"harccosec", "f64::asinh(1.0 / #1)"},
    {"harccotan", "f64::atanh(1.0 / #1)"},
    {"rtod", "#1 / 3.14159265358979 * 180.0", Binding::Product},
    {"dtor", "#1 / 180.0 * 3.14159265358979", Binding::Product},
    {"max", "f64::max($1, $2)"},
    {"min", "f64::min($1, $2)"},
    {"mag", "f64::hypot($1, $2)"},
    {"fact", "factorial($1)", Binding::Atom, "factorial"},
    {"factln", "ln_factorial($1)", Binding::Atom, "ln_factorial"},
    {"psi", "digamma($1)", Binding::Atom, "digamma"},
};

constexpr CodeDefinition kDefinitions[] = {
    {"whole",
     "/// The nearest whole number, ties to even, in 32 bits.\n"
     "fn whole(value: f64) -> i32 {\n"
     "    let is_tie = f64::abs(value - value.trunc()) == 0.5;\n"
     "    let number = if is_tie { 2.0 * (value / 2.0).round() } else { value.round() };\n"
     "    assert!((-2147483648.0..=2147483647.0).contains(&number), \"no whole number of 32 bits: {}\", value);\n"
     "    number as i32\n"
     "}"},
    {"sign",
     "fn sign(value: f64) -> f64 {\n"
     "    f64::from(i8::from(value > 0.0) - i8::from(value < 0.0))\n"
     "}"},
    {"held",
     "/// Hyperbolic functions stay as they are beyond 707, where they would overflow.\n"
     "fn held(value: f64) -> f64 {\n"
     "    value.clamp(-707.0, 707.0)\n"
     "}"},
    {"factorial",
     "fn factorial(value: f64) -> f64 {\n"
     "    let n = whole(value);\n"
     "    assert!(n >= 0, \"no factorial of {}\", value);\n"
     "    (1..=n.min(171)).map(f64::from).product()\n"
     "}",
     "whole"},
    {"ln_factorial",
     "fn ln_factorial(value: f64) -> f64 {\n"
     "    let n = whole(value);\n"
     "    assert!(n >= 0, \"no factorial of {}\", value);\n"
     "    (1..=n).map(|k| f64::from(k).ln()).sum()\n"
     "}",
     "whole"},
    {"digamma",
     "/// Of a whole number.\n"
     "fn digamma(value: f64) -> f64 {\n"
     "    (1..whole(value)).map(|k| 1.0 / f64::from(k)).sum::<f64>() - 0.5772156649015329\n"
     "}",
     "whole"},
    {"random_number",
     "static RANDOM_COUNTER: std::sync::atomic::AtomicU64 = std::sync::atomic::AtomicU64::new(0);\n"
     "\n"
     "/// Begins anew from a negative number, repeats the last one for 0, else draws the next.\n"
     "fn random_number(value: f64) -> f64 {\n"
     "    let order = std::sync::atomic::Ordering::SeqCst;\n"
     "    let mut bits = if value < 0.0 { value.to_bits() } else { RANDOM_COUNTER.load(order) };\n"
     "    if value != 0.0 {\n"
     "        bits = bits.wrapping_add(0x9E3779B97F4A7C15);\n"
     "    }\n"
     "    RANDOM_COUNTER.store(bits, order);\n"
     "    bits = (bits ^ (bits >> 30)).wrapping_mul(0xBF58476D1CE4E5B9);\n"
     "    bits = (bits ^ (bits >> 27)).wrapping_mul(0x94D049BB133111EB);\n"
     "    ((bits ^ (bits >> 31)) >> 11) as f64 / 9007199254740992.0\n"
     "}"},
};

}  // namespace

const CodeLanguage kRust = {
    .Name = "Rust",
    .Extension = "rs",
    .Comment = "//",
    .Reserved = kReserved,
    .Forms = kForms,
    .Definitions = kDefinitions,
    .Truth = {.OfNumber = "#1 != 0.0",
              .AsNumber = "(if $1 { -1.0 } else { 0.0 })",
              .And = "($1 && $2)",
              .Or = "($1 || $2)",
              .Not = "!($1)"},
    .Choice = "(if $1 { $2 } else { $3 })",
    .Statements = {.If = "if $1 {", .Else = "} else {", .End = "}", .Assign = "$1 = $2;"},
    .Frame =
        {// A coefficient may be called like no variable of the language is, and the last variables may not occur.
         .Function = "\n#[allow(non_snake_case, unused_parens, unused_variables, unused_assignments, "
                     "clippy::all)]\npub fn $1($2) -> f64 {\n",
         .Variable = "$1: f64",
         .Constant = "let $1: f64 = $2;",
         .Support = "let mut $1: f64 = 0.0;",
         .Choice = "let $1: f64;",
         .Result = "$1",
         .End = "}\n",
         .Proof =
             "\n#[cfg(test)]\nmod tests {\n    #[test]\n    fn gives_the_value_of_the_fit() {\n        let value = "
             "super::$1;\n        assert!(f64::abs(value - ($2)) <= 1e-10 * f64::abs($2), \"{}\", value);\n    }\n}\n"},
    .Number = RealNumber,
    .Write = WriteFramed};

}  // namespace quorvex
