#!/usr/bin/env python3
"""Writes partials.txt, derivatives of the language's functions by their arguments, by mpmath (python3-mpmath) at 50
digits and more. Run it in the folder: /usr/bin/python3 partials.py > partials.txt; it takes some minutes.

A line has the word, the number of the argument from 0, the arguments and the derivative; then, where the derivative
oscillates, the modulus that an error near one of its zeros is measured by. Arguments are the doubles that are written,
drawn at random over the domain, values have 17 digits. Places where a derivative is below 1e-290 or above 1e290 in
magnitude are left out, besides exact zeros.
"""
import random
import sys

from mpmath import mp, mpf

from functions import bessel, double, ibeta, legendre, spherical, wide

POINTS = 200
FEW = 30  # of derivatives that are constant, and of those that another function has, too
CONSTANT = ("abs", "fix", "int", "fract", "sgn", "rtod", "dtor", "floor", "ceil", "fact", "factln", "psi")
SAME = ("igammac", "poisson", "chi2c", "erfc")
draw = random.Random(1)


def spread(low, high):
    """A number between, evenly in its logarithm."""
    return mpf(10) ** draw.uniform(float(mp.log10(low)), float(mp.log10(high)))


def sign():
    return draw.choice((-1, 1))


def anywhere():
    return sign() * (spread(1e-3, 1e2) if draw.random() < 0.6 else spread(1e-160, 1e160))


def positive():
    return abs(anywhere())


def angle():
    return sign() * (draw.uniform(0, 20) if draw.random() < 0.6 else spread(1e-150, 1e9))


def moderate():
    return sign() * (draw.uniform(0, 20) if draw.random() < 0.6 else spread(1e-100, 300))


def inside():
    return sign() * (1 - spread(1e-15, 1) if draw.random() < 0.5 else spread(1e-150, 1))


def beyond():
    return sign() * (1 + spread(1e-14, 1) if draw.random() < 0.5 else spread(1.1, 1e140))


def between(low, high):
    return lambda: draw.uniform(low, high)


def over(low, high):
    return lambda: spread(low, high)


def whole(low, high):
    return lambda: draw.randint(low, high)


def short(x):
    """The double of seven digits; beside 1, all digits."""
    return double(x) if abs(abs(x) - 1) < 1e-3 else mpf(float(mp.nstr(mpf(x), 7)))


def emit(word, which, domains, f, modulus=None, points=POINTS):
    """`domains` has a draw for each argument, or is one draw for all of them."""
    written = 0
    for _ in range(20 * points):
        if written == points:
            break
        args = [short(a) for a in (domains() if callable(domains) else [d() for d in domains])]
        try:
            value = mp.re(wide(f)(*args))
        except (mp.NoConvergence, ZeroDivisionError, ValueError) as problem:
            print("skipped", word, *map(float, args), problem, file=sys.stderr)
            continue
        if not mp.isfinite(value) or (value != 0 and not 1e-290 < abs(value) < 1e290):
            continue
        line = [word, str(which)] + [repr(float(a)) for a in args] + [mp.nstr(value, 17, min_fixed=-3, max_fixed=6)]
        if modulus:
            line.append(mp.nstr(wide(modulus)(*args), 3))
        print(*line)
        written += 1


PI = mpf(float("3.14159265358979"))

ELEMENTARY = [
    ("abs", anywhere, mp.sign),
    ("exp", moderate, mp.exp),
    ("fix", anywhere, lambda x: mpf(0)),
    ("int", anywhere, lambda x: mpf(0)),
    ("fract", anywhere, lambda x: mpf(1)),
    ("log", positive, lambda x: 1 / x),
    ("ln", positive, lambda x: 1 / x),
    ("log10", positive, lambda x: 1 / (x * mp.log(10))),
    ("sgn", anywhere, lambda x: mpf(0)),
    ("sqr", positive, lambda x: 1 / (2 * mp.sqrt(x))),
    ("cos", angle, lambda x: -mp.sin(x)),
    ("sin", angle, mp.cos),
    ("tan", angle, lambda x: mp.sec(x) ** 2),
    ("arcsin", inside, lambda x: 1 / mp.sqrt(1 - x * x)),
    ("arccos", inside, lambda x: -1 / mp.sqrt(1 - x * x)),
    ("arctan", anywhere, lambda x: 1 / (1 + x * x)),
    ("sec", angle, lambda x: mp.sec(x) * mp.tan(x)),
    ("cosec", angle, lambda x: -mp.csc(x) * mp.cot(x)),
    ("cotan", angle, lambda x: -mp.csc(x) ** 2),
    ("arcsec", beyond, lambda x: 1 / (abs(x) * mp.sqrt(x * x - 1))),
    ("arccosec", beyond, lambda x: -1 / (abs(x) * mp.sqrt(x * x - 1))),
    ("arccotan", anywhere, lambda x: -1 / (1 + x * x)),
    ("hsin", moderate, mp.cosh),
    ("hcos", moderate, mp.sinh),
    ("htan", moderate, lambda x: mp.sech(x) ** 2),
    ("hsec", moderate, lambda x: -mp.sech(x) * mp.tanh(x)),
    ("hcosec", moderate, lambda x: -mp.csch(x) * mp.coth(x)),
    ("hcotan", moderate, lambda x: -mp.csch(x) ** 2),
    ("harcsin", anywhere, lambda x: 1 / mp.sqrt(x * x + 1)),
    ("harccos", lambda: abs(beyond()), lambda x: 1 / mp.sqrt(x * x - 1)),
    ("harctan", inside, lambda x: 1 / (1 - x * x)),
    ("harcsec", lambda: abs(inside()), lambda x: -1 / (x * mp.sqrt(1 - x * x))),
    ("harccosec", anywhere, lambda x: -1 / (abs(x) * mp.sqrt(1 + x * x))),
    ("harccotan", beyond, lambda x: 1 / (1 - x * x)),
    ("rtod", anywhere, lambda x: 180 / PI),
    ("dtor", anywhere, lambda x: PI / 180),
    ("floor", anywhere, lambda x: mpf(0)),
    ("ceil", anywhere, lambda x: mpf(0)),
]

# ---- gamma, beta and their incomplete functions


def gamma_density(a, x):
    return mp.exp((a - 1) * mp.log(x) - x - mp.loggamma(a))


def by_parameter(a, x):
    """d/da of P(a, x), by its power series and that term by term: all terms have one sign where x is below a, and
    digits to spare carry the others."""
    with mp.workdps(40 + int(x) + int(2 * abs(mp.log10(x)))):
        term = mp.exp(a * mp.log(x) - x - mp.loggamma(a + 1))
        logarithm, digamma, n, total = mp.log(x), mp.digamma(a + 1), 0, mpf(0)
        while True:
            part = term * (logarithm - digamma)
            total += part
            if n > x - a and abs(part) < abs(total) * mpf(10) ** -30:
                return total
            n += 1
            term *= x / (a + n)
            digamma += 1 / (a + n)


def near_mean():
    """A parameter, and an argument at most some deviations from it."""
    a = spread(0.01, 500)
    x = a * spread(0.02, 10) if draw.random() < 0.5 else a + draw.uniform(-6, 8) * mp.sqrt(a)
    return (a, x) if x > 0 else near_mean()


def density_points():
    a = spread(0.01, 1e9)
    x = a * spread(1e-3, 10) if a < 100 else a + draw.uniform(-12, 15) * mp.sqrt(a)
    return (a, x) if x > 0 else density_points()


def halves(pair):
    def inner():
        a, x = pair()
        return 2 * x, 2 * a
    return inner


def beta_density(a, b, x):
    with mp.workdps(100):
        return mp.exp((a - 1) * mp.log(x) + (b - 1) * mp.log(1 - x) + mp.loggamma(a + b) - mp.loggamma(a) - mp.loggamma(b))


def beta_points():
    a, b = spread(0.05, 1e6), spread(0.05, 1e6)
    mean, s = a / (a + b), mp.sqrt(a * b / (a + b + 1)) / (a + b)
    x = mean + draw.uniform(-8, 8) * s if draw.random() < 0.7 else draw.uniform(0, 1)
    return (a, b, x) if 0 < x < 1 else beta_points()


def beta_by_parameter(a, b, x):
    """d/da of I_x(a, b), by its power series and that term by term, with digits for what cancels."""
    with mp.workdps(300):
        term = mp.exp(a * mp.log(x) + b * mp.log(1 - x) + mp.loggamma(a + b) - mp.loggamma(a + 1) - mp.loggamma(b))
        slope, n, total = mp.log(x) + mp.digamma(a + b) - mp.digamma(a + 1), 0, mpf(0)
        while n < 20 or max(abs(term), abs(term * slope)) > mpf(10) ** -25 * abs(total):
            total += term * slope
            slope += 1 / (a + b + n) - 1 / (a + 1 + n)
            term *= (a + b + n) / (a + 1 + n) * x
            n += 1
        return total


def beta_by_other(a, b, x):
    return -beta_by_parameter(b, a, 1 - x)


def few_counts():
    """Parameters and a place that is not too near 0 or 1 for the series."""
    a, b = spread(0.05, 500), spread(0.05, 500)
    mean, s = a / (a + b), mp.sqrt(a * b / (a + b + 1)) / (a + b)
    x = mean + draw.uniform(-6, 6) * s if draw.random() < 0.6 else draw.uniform(0.02, 0.98)
    return (a, b, x) if 0.02 < x < 0.98 else few_counts()


def few_throws():
    a, b, x = few_counts()
    return (a, a + b - 1, x) if b > 1 else few_throws()


def binomial_points():
    a, b, x = beta_points()
    return (a, a + b - 1, x) if double(a + b - 1) - double(a) + 1 > 0.01 else binomial_points()


def f_density(v1, v2, f):
    with mp.workdps(100):
        a, b = v2 / 2, v1 / 2
        x = v2 / (v2 + v1 * f)
        return -beta_density(a, b, x) * x * x * v1 / v2


def f_points():
    v1, v2 = spread(0.1, 1e6), spread(0.1, 1e6)
    return v1, v2, spread(1e-3, 1e3) if draw.random() < 0.5 else 1 + draw.uniform(-0.9, 3) / mp.sqrt(min(v1, v2) + 1)


def t_density(t, v):
    with mp.workdps(100):
        half = (v + 1) / 2
        return 2 * mp.sign(t) * mp.exp(mp.loggamma(half) - mp.loggamma(v / 2) - half * mp.log(1 + t * t / v)) / mp.sqrt(
            v * mp.pi)


def by_freedom(a, b, c, v):
    """d/dv of I_x(a, b), where x = c/(c + v) and v is twice b, by differences at digits to spare."""
    with mp.workdps(400):
        return mp.diff(lambda u: mp.betainc(a, u / 2, 0, c / (c + u), regularized=True), v)


def t_by_freedom(t, v):
    return by_freedom(mpf(0.5), v / 2, t * t, v)


def f_by_upper(v1, v2, f):
    return by_freedom(v2 / 2, v1 / 2, v2 / f, v1)


def f_by_lower(v1, v2, f):
    return -by_freedom(v1 / 2, v2 / 2, v1 * f, v2)


def part_of_freedom(v, other, tail):
    """What cancels near a zero: the tail times half the expected curvature of ln r - r."""
    half = (v + other) / 2
    return (mp.digamma(half) - mp.log(half) - mp.digamma(v / 2) + mp.log(v / 2)) / 2 * min(tail, 1 - tail)


def f_tail(v1, v2, f):
    return mp.betainc(v2 / 2, v1 / 2, 0, v2 / (v2 + v1 * f), regularized=True)


def f_moderate():
    v1, v2 = spread(1, 1000), spread(0.1, 1000)
    return v1, v2, spread(1e-3, 1e3) if draw.random() < 0.5 else 1 + draw.uniform(-0.9, 3) / mp.sqrt(min(v1, v2) + 1)


FREEDOM = [
    ("student", 1, [moderate, over(0.1, 1e9)], t_by_freedom),
    ("fdist", 0, f_moderate, f_by_upper, lambda v1, v2, f: part_of_freedom(v1, v2, f_tail(v1, v2, f))),
    ("fdist", 1, f_moderate, f_by_lower, lambda v1, v2, f: part_of_freedom(v2, v1, f_tail(v1, v2, f))),
]

GAMMA_FAMILY = [
    ("erf", 0, [moderate], lambda x: 2 / mp.sqrt(mp.pi) * mp.exp(-x * x)),
    ("erfc", 0, [moderate], lambda x: -2 / mp.sqrt(mp.pi) * mp.exp(-x * x)),
    ("fact", 0, [between(0, 100)], lambda x: mpf(0)),
    ("factln", 0, [between(0, 100)], lambda x: mpf(0)),
    ("psi", 0, [between(1, 100)], lambda x: mpf(0)),
    ("gamma", 0, [over(1e-100, 170)], lambda x: mp.gamma(x) * mp.digamma(x), lambda x: mp.gamma(x)),
    ("gammaln", 0, [over(1e-150, 1e150)], mp.digamma, lambda x: abs(mp.digamma(x)) + min(1, x)),
    ("igamma", 1, density_points, gamma_density),
    ("igammac", 1, density_points, lambda a, x: -gamma_density(a, x)),
    ("poisson", 1, density_points, lambda a, x: -gamma_density(a, x)),
    ("chi2", 0, halves(density_points), lambda x, v: gamma_density(v / 2, x / 2) / 2),
    ("chi2c", 0, halves(density_points), lambda x, v: -gamma_density(v / 2, x / 2) / 2),
    ("igamma", 0, near_mean, by_parameter),
    ("igammac", 0, near_mean, lambda a, x: -by_parameter(a, x)),
    ("poisson", 0, near_mean, lambda a, x: -by_parameter(a, x)),
    ("chi2", 1, halves(near_mean), lambda x, v: by_parameter(v / 2, x / 2) / 2),
    ("chi2c", 1, halves(near_mean), lambda x, v: -by_parameter(v / 2, x / 2) / 2),
    ("beta", 0, [over(1e-3, 100), over(1e-3, 100)], lambda a, b: mp.beta(a, b) * (mp.digamma(a) - mp.digamma(a + b))),
    ("beta", 1, [over(1e-6, 10), over(1e-6, 1e9)], lambda a, b: mp.beta(a, b) * (mp.digamma(b) - mp.digamma(a + b))),
    ("student", 0, [moderate, over(0.1, 1e9)], t_density),
    ("ibeta", 2, beta_points, beta_density),
    ("binomial", 2, binomial_points, lambda k, n, p: beta_density(k, n - k + 1, p)),
    ("ibeta", 0, few_counts, beta_by_parameter),
    ("ibeta", 1, few_counts, beta_by_other),
    ("binomial", 0, few_throws, lambda k, n, p: beta_by_parameter(k, n - k + 1, p) - beta_by_other(k, n - k + 1, p)),
    ("binomial", 1, few_throws, lambda k, n, p: beta_by_other(k, n - k + 1, p)),
    ("fdist", 2, f_points, f_density),
]

# ---- Bessel functions and their kin


def slope(kind, order, x, times):
    """The derivative by x, from those of the neighbouring orders (DLMF 10.6.1 and 10.29.1)."""
    f = bessel(kind)
    down, up = {"j": (1, -1), "y": (1, -1), "i": (1, 1), "k": (-1, -1)}[kind]
    if times == 0:
        return f(order, x)
    return (down * slope(kind, order - 1, x, times - 1) + up * slope(kind, order + 1, x, times - 1)) / 2


def spherical_slope(kind, n, x, times):
    """By Bessel's equation (DLMF 10.47.1) at digits enough for what cancels."""
    with mp.workdps(80 + 4 * abs(int(mp.log10(x))) + int(n)):
        f, next_ = spherical(kind)(n, x), spherical(kind)(n + 1, x)
        first = n / x * f - next_
        return first if times == 1 else -2 / x * first - (1 - n * (n + 1) / x ** 2) * f


def pair(f, one, other, times):
    return lambda n, x: mp.sqrt(f(one, n, x, times) ** 2 + f(other, n, x, times) ** 2) if x > n else abs(f(one, n, x, times))


def real_x():
    return draw.uniform(0, 40) if draw.random() < 0.6 else spread(1e-30, 1e4)


def modified_x():
    return draw.uniform(0, 40) if draw.random() < 0.6 else spread(1e-30, 300)


order = between(0, 30)
number = whole(0, 20)


def emit_bessel():
    for one, other in ("jy", "yj"):
        f = lambda n, x: slope(one, n, x, 1)
        for n in (0, 1):
            signed = (lambda: sign() * real_x()) if one == "j" else real_x
            emit(f"{one}{n}", 0, [signed], lambda x: slope(one, mpf(n), x, 1),
                 lambda x: pair(slope, one, other, 1)(mpf(n), abs(x)) if x < 0 or one == "y" or x > 0 else 1)
        emit(f"{one}n", 1, [number, real_x], f, pair(slope, one, other, 1))
        emit(f"{one}nu", 1, [order, real_x], f, pair(slope, one, other, 1))
        emit(f"d{one}nu", 1, [order, real_x], lambda n, x: slope(one, n, x, 2), pair(slope, one, other, 2))
        for word, times in (("sph", 1), ("dsph", 2)):
            emit(f"{word}{one}n", 1, [number, real_x], lambda n, x: spherical_slope(one, n, x, times),
                 pair(spherical_slope, one, other, times))
    for kind in "ik":
        for n in (0, 1):
            signed = (lambda: sign() * modified_x()) if kind == "i" else modified_x
            emit(f"{kind}{n}", 0, [signed], lambda x: slope(kind, mpf(n), x, 1))
        emit(f"{kind}n", 1, [number, modified_x], lambda n, x: slope(kind, n, x, 1))
        emit(f"{kind}nu", 1, [order, modified_x], lambda n, x: slope(kind, n, x, 1))
        emit(f"d{kind}nu", 1, [order, modified_x], lambda n, x: slope(kind, n, x, 2))
    for word, own, other, times in (("airya", mp.airyai, mp.airybi, 1), ("airyb", mp.airybi, mp.airyai, 1),
                                    ("dairya", mp.airyai, mp.airybi, 2), ("dairyb", mp.airybi, mp.airyai, 2)):
        def f(x, g):
            return g(x, derivative=1) if times == 1 else x * g(x)
        emit(word, 0, [lambda: draw.uniform(0, 60) if draw.random() < 0.6 else spread(1e-100, 90)], lambda x: f(x, own))
        emit(word, 0, [lambda: -draw.uniform(0, 60) if draw.random() < 0.6 else -spread(1e-100, 300)], lambda x: f(x, own),
             lambda x: mp.sqrt(f(x, own) ** 2 + f(x, other) ** 2))


def emit_orders():
    """Whole orders, to which the argument is rounded: the functions go in steps."""
    for word in ("jn", "yn", "in", "kn", "sphjn", "sphyn", "dsphjn", "dsphyn"):
        emit(word, 0, [between(0, 9), between(1, 20)], lambda n, x: mpf(0), points=5)
    for which in (0, 1):
        emit("legendre", which, [between(3, 9), between(0, 2), inside], lambda l, m, x: mpf(0), points=5)


def legendre_slope(l, m, x):
    """(1 - x^2) P' = (l + m) P(l-1) - l x P(l) (DLMF 14.10.5)."""
    with mp.workdps(400):
        below = legendre(l - 1, m, x) if l > m else mpf(0)
        return ((l + m) * below - l * x * legendre(l, m, x)) / ((1 - x) * (1 + x))


def legendre_points():
    l = draw.randint(0, 40)
    return l, draw.randint(0, min(l, draw.choice((0, 1, 2, 40)))), inside()


if __name__ == "__main__":
    for word, domain, f in ELEMENTARY:
        emit(word, 0, [domain], f, points=FEW if word in CONSTANT else POINTS)
    for which in (0, 1):
        for word, better in (("max", 1), ("min", -1)):
            emit(word, which, [anywhere, anywhere],
                 lambda a, b: mpf(1) if (better * a > better * b) == (which == 0) else mpf(0), points=FEW)
        emit("mag", which, [anywhere, anywhere], lambda a, b: (a, b)[which] / mp.sqrt(a * a + b * b))
    for row in GAMMA_FAMILY:
        emit(*row, points=FEW if row[0] in CONSTANT + SAME else POINTS)
    emit_bessel()
    emit_orders()
    # The modulus is that of the neighbourhood, for l oscillations in (-1, 1).
    emit("legendre", 2, legendre_points, legendre_slope,
         lambda l, m, x: max(abs(legendre_slope(l, m, x)), max(1, l) * abs(legendre(l, m, x))))
    draw = random.Random(2)
    for row in FREEDOM:
        emit(*row)
