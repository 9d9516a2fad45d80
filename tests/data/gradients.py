#!/usr/bin/env python3
"""Writes gradients.txt: values of whole models and their derivatives by all coefficients, by mpmath (python3-mpmath) at
60 digits. Run it in the folder: /usr/bin/python3 gradients.py > gradients.txt.

A line has, with tabs between: the model's lines, with "|" between; the number of variables; the coefficients with their
values; then for each point its variables, the value and the derivatives, with blanks between.
A model is evaluated here by the rules of calculus for sums, products and powers of numbers that carry their
derivatives.
"""
import re

from mpmath import mp, mpf

mp.dps = 60


class Dual:
    """A number and its derivatives by the coefficients."""

    def __init__(self, value, slopes=()):
        self.v, self.d = mpf(value), list(slopes)

    def chain(self, value, slope):
        return Dual(value, [slope * d for d in self.d])

    def plus(self, other, a, b):
        n = max(len(self.d), len(other.d))
        pad = lambda d: d + [mpf(0)] * (n - len(d))
        return [a * x + b * y if (x, y) != (0, 0) else mpf(0) for x, y in zip(pad(self.d), pad(other.d))]

    def __add__(self, o): return Dual(self.v + o.v, self.plus(o, 1, 1))
    def __sub__(self, o): return Dual(self.v - o.v, self.plus(o, 1, -1))
    def __mul__(self, o): return Dual(self.v * o.v, self.plus(o, o.v, self.v))
    def __truediv__(self, o): return Dual(self.v / o.v, self.plus(o, 1 / o.v, -self.v / o.v ** 2))
    def __neg__(self): return self.chain(-self.v, -1)

    def __pow__(self, o):
        a, b = self.v, o.v
        value = mpf(1) if b == 0 else a ** int(b) if b == int(b) and abs(b) < 1000 else a ** b
        by_base = mpf(0) if b == 0 else mpf(1) if b == 1 else b * a ** (b - 1)
        by_exponent = mpf(0) if not o.d or a == 0 else mp.log(a) * value
        return Dual(value, self.plus(o, by_base, by_exponent))

    def __lt__(self, o): return Dual(-(self.v < o.v))
    def __gt__(self, o): return Dual(-(self.v > o.v))
    def __le__(self, o): return Dual(-(self.v <= o.v))
    def __ge__(self, o): return Dual(-(self.v >= o.v))
    def __mod__(self, o): return Dual(mp.fmod(mp.nint(self.v), mp.nint(o.v)))
    def __floordiv__(self, o): return Dual(int(mp.nint(self.v) / mp.nint(o.v)))


def function(f, slope):
    return lambda x: x.chain(f(x.v), slope(x.v))


WORDS = {
    "exp": function(mp.exp, mp.exp),
    "ln": function(mp.log, lambda x: 1 / x),
    "log10": function(mp.log10, lambda x: 1 / x / mp.log(10)),
    "sqr": function(mp.sqrt, lambda x: 1 / mp.sqrt(x) / 2),
    "sin": function(mp.sin, mp.cos),
    "cos": function(mp.cos, lambda x: -mp.sin(x)),
    "tan": function(mp.tan, lambda x: mp.sec(x) ** 2),
    "arctan": function(mp.atan, lambda x: 1 / (1 + x * x)),
    "htan": function(mp.tanh, lambda x: mp.sech(x) ** 2),
    "hsin": function(mp.sinh, mp.cosh),
    "hcos": function(mp.cosh, mp.sinh),
    "abs": function(abs, lambda x: mpf(-1 if x < 0 else 1)),
    "int": function(mp.floor, lambda x: mpf(0)),
    "fract": function(lambda x: x - int(x), lambda x: mpf(1)),
    "erf": function(mp.erf, lambda x: 2 / mp.sqrt(mp.pi) * mp.exp(-x * x)),
    "gammaln": function(mp.loggamma, mp.digamma),
    "max": lambda a, b: a if a.v >= b.v else b,
    "min": lambda a, b: b if a.v >= b.v else a,
    "mag": lambda a, b: (a * a + b * b) ** Dual("0.5"),
    "choose": lambda c, a, b: a() if c.v != 0 else b(),
}


def translated(text):
    """The text as Python reads it: numbers become constants, and the branches of an "if" are evaluated when taken."""
    text = text.replace("^", "**").replace(" mod ", "%").replace("\\", "//")
    text = re.sub(r"(?<![A-Za-z0-9_.])(\d+\.?\d*(?:e[-+]?\d+)?)", r"Dual(float('\1'))", text)
    return re.sub(r"\bif\(([^,]*),", r"choose(\1,lambda:", text).replace(";", ",lambda:")


def emit(lines, values, points, variables=1):
    known = set(WORDS) | {"if", "mod", "pi", "x", "x1", "x2", "x3"}
    names = []
    for name in re.findall(r"(?<![0-9.A-Za-z])[A-Za-z][A-Za-z0-9]*", " ".join(lines)):
        if name not in known and not re.fullmatch(r"F\d", name) and name not in names:
            names.append(name)
    assert len(names) == len(values), (lines, names)
    width = len(names)
    cells = ["|".join(line.replace(";", ",") for line in lines), str(variables), " ".join(f"{n}={float(v)!r}" for n, v in zip(names, values))]
    for point in points:
        point = point if isinstance(point, tuple) else (point,)
        scope = dict(WORDS, Dual=Dual, pi=Dual(float("3.14159265358979")))
        for i, name in enumerate(names):
            scope[name] = Dual(float(values[i]), [mpf(int(i == k)) for k in range(width)])
        for i, x in enumerate(point):
            scope["x" if variables == 1 else f"x{i + 1}"] = Dual(float(x))
        for number in range(len(lines) - 1, 0, -1):
            scope[f"F{number}"] = eval(translated(lines[number]), scope)
        result = eval(translated(lines[0]), scope)
        slopes = result.d + [mpf(0)] * (width - len(result.d))
        cells.append(" ".join([repr(float(x)) for x in point] +
                     [mp.nstr(d, 17, min_fixed=-3, max_fixed=6) for d in [result.v] + slopes]))
    print("\t".join(cells))


X = [0.013, 0.5, 1.25, 2, 3.7, 9]
SIGNED = [-3, -1.5, 0, 0.25, 2]
PAIRS = [(0.5, 2), (1.25, -3), (4, 0.125), (2, 2)]

# The branches of an "if" are parted by ";" here, which is "," in the language.
MODELS = [
    # sums, products and quotients, also of coefficients alone and of one with itself
    (["a*x+b"], [2, 3], X),
    (["a+b"], [2, 3], X),
    (["-a"], [2], X),
    (["a"], [2], X),
    (["x*a-(b-c*x)"], [2, 3, 5], X),
    (["a/b*x"], [2, 3], X),
    (["a/(b+x)"], [2, 3], X),
    (["(a+x)/(b*x+c)"], [2, 3, 0.5], X),
    (["a/a+a-a*x"], [2], X),
    (["(a*x)/(a*x)"], [2], X),
    (["a*b*c*x*a"], [2, 3, -5], X),
    (["1/(1+a*x+b*x^2)"], [0.3, 0.02], X),
    (["(a-x)*(a-x)*(b-x)"], [2, 3], X),
    (["a*x/(b+x+x^2/c)"], [2, 3, 7], X),
    (["-(-(a*x)-b)"], [2, 3], X),
    # powers: both derivatives, whole exponents of negative bases, the edges at 0
    (["a*x^b"], [2, 1.5], X),
    (["a*x^b+c"], [2, 1.5, 1], [0, 0.5, 2]),
    (["(a*x)^3"], [-2], SIGNED),
    (["(a*x)^2+(b*x)^1+(c*x)^0"], [-2, 3, -4], SIGNED),
    (["(a+x)^(-2)"], [-20], SIGNED),
    (["(a*x)^b"], [2, 2], [0, 1, 3]),
    (["a^x"], [2], SIGNED),
    (["(a*x)^0.5"], [2], X),
    (["(a^b)^c+a^(b^c)"], [1.5, 2, 0.5], X),
    (["(a*x)^ln(b+x)"], [2, 3], X),
    (["(a+x)^(b+x)"], [2, -3], X),
    (["(a*x)^(a*x)"], [0.7], X),
    (["x^a*x^(-a)"], [1e-3], X),
    (["(x/a)^b"], [1e150, 0.01], X),
    (["(a*x)^7"], [-1e-9], SIGNED),
    (["(a*x)^b"], [1e-150, 1.9], X),
    (["(a*x)^2"], [1e150], X),
    (["(a*x)^101"], [1e-3], X),
    (["0^a+b"], [2, 3], X),
    # functions in functions
    (["a*exp(-b*x)+c"], [2, 0.3, 1], X),
    (["a*exp(-b*x)+c*exp(-d*x)+g"], [2, 0.3, 1, 4, 0.1], X),
    (["exp(exp(-a*x))"], [0.3], X),
    (["ln(a*x)+ln(b*x)"], [2, 3], X),
    (["ln(ln(a+x)+ln(b+x))"], [2, 3], X),
    (["log10(a+x)*sqr(b*x)"], [2, 3], X),
    (["a*exp(-((x-b)/c)^2/2)"], [2, 1, 0.7], X),
    (["a*exp(-(x-b)^2/c^2)+d*exp(-(x-g)^2/h^2)"], [2, 1, 0.7, 3, 2, 1.5], X),
    (["a*sin(b*x+c)"], [2, 3, 0.5], X),
    (["a*cos(2*pi*x/b)+c*tan(d*x)"], [2, 3.1, 0.5, 0.1], X),
    (["a+b*arctan(c*(x-d))"], [2, 3, 0.5, 1], X),
    (["a*htan(b*x)+hsin(c*x)*hcos(d*x)"], [2, 3, 0.2, -0.1], X),
    (["sin(cos(sin(a*x)))"], [2], SIGNED),
    (["a*erf((x-b)/c)"], [2, 1, 0.7], X),
    (["gammaln(a+x)+gammaln(b*x)"], [2, 3], X),
    (["mag(a*x,b)"], [2, 3], SIGNED),
    (["mag(a,b)*mag(b,a)"], [2, 3], X),
    (["mag(ln(a+x),ln(b+x))"], [2, 3], X),
    (["max(a*x,b)+min(a,b*x)"], [2, 3], X),
    (["abs(a*x)+fract(b*x)+int(c*x)*a"], [2, 0.3, 0.7], SIGNED),
    # "if", comparisons as numbers, steps
    (["if(x>-10,a*x;b)+c"], [2, 3, 1], X),
    (["if(a>1,if(b>5,a;b*x);c)"], [2, 3, 1], X),
    (["a*x*(x>1)+b"], [2, 3], X),
    (["(a>x)*b+a"], [2, 3], X),
    (["((a*x) mod 3)*b+((a*x)\\2)*c"], [7.2, 3, 2], X),
    (["if(a<x+100,exp(a*x);ln(a))*if(b>0,b;a)"], [0.2, 3], X),
    # supporting functions
    (["F1*a+F1^b", "sqr(x+c)+1"], [2, 1.5, 1], X),
    (["F1/F2+F1*F2", "a*x+F2", "exp(-b*x)"], [2, 0.5], X),
    (["F1*F1*F1", "a+F2", "b*F3", "c*x"], [2, 0.5, 3], X),
    # scales
    (["a*exp(-b*x)"], [1e-9, 1e-9], X),
    (["a/(b+x)"], [1e9, 1e-9], X),
    (["a*x/(b+x)"], [1e150, 1e-150], X),
    (["a*x^2/(b*x+c)"], [1e-150, 1e-150, 1e-160], X),
    (["exp(a*x)/b"], [30, 1e100], X),
    (["ln(a*x)+sqr(b*x)"], [1e150, 1e-150], X),
    (["arctan(a*x)+htan(b*x)"], [1e150, 1e9], X),
    (["(a*x+b)/(c*x+d)"], [1e150, 1e149, 1e150, -1e-9], X),
    # products on the way back that are below the doubles until a later factor
    (["1e-200*(1e-200*(1e300*(a+x)))"], [2], X),
    (["(x*1e-200)*((x*1e-200)*(1e300*(a*x+b)))*c"], [2, 3, 4], X),
    (["1/(1+exp(a*(b-x)))"], [100, 5], X),
    # several variables
    (["a*x1^b+c*x2/(x1+d)"], [2, 1.5, 3, 1], PAIRS, 2),
    (["a*exp(-b*x1)*sin(c*x2)+d"], [2, 0.5, 3, 1], PAIRS, 2),
    (["(a*x1+b*x2)^2/(1+(c*x1)^2)"], [2, -3, 0.5], PAIRS, 2),
    (["F1+if(a>0,b*x1;c*x2)", "x1^a"], [2, 3, 5], PAIRS, 2),
]

if __name__ == "__main__":
    for model in MODELS:
        emit(*model)
