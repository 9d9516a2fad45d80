#!/usr/bin/env python3
"""Writes functions.txt, values of the language's functions over their domains, by mpmath (python3-mpmath) at 50 digits
and more. Run it in the folder: /usr/bin/python3 functions.py > functions.txt; it takes some minutes.

A line has the word, the arguments and the value; then, where the function oscillates (x beyond the order), the modulus
that an error near one of its zeros is measured by. Arguments are the doubles that are written, values have 17 digits.
Places where a value is below 1e-290 or above 1e290 in magnitude are left out, besides exact zeros.

Where mpmath's incomplete functions don't settle (large parameters), the tail is integrated here, in units of the
density where it begins.
"""
import sys

from mpmath import mp, mpf, inf

mp.dps = 50

MAGNITUDES = [mpf(10) ** k for k in (-300, -160, -100, -30, -16, -9, -5, -3, -1)]
MIDDLE = [mpf(x) for x in ("0.25", "0.4999999", "0.5", "0.5000001", "0.75", "1", "1.5", "2", "2.5", "3.75", "5", "7.9999",
                           "8", "12", "20", "37.5")]
LARGE = [mpf(10) ** k for k in (2, 3, 4, 5, 7, 9, 12, 16, 30, 100, 160, 300)]
POSITIVE = MAGNITUDES + MIDDLE + LARGE
REAL = POSITIVE + [-x for x in POSITIVE]
BELOW_ONE = MAGNITUDES + [mpf(x) for x in ("0.25", "0.5", "0.6", "0.9", "0.999", "0.99999999", "0.9999999999999")]
ABOVE_ONE = [mpf(x) for x in ("1.0000000000001", "1.00000001", "1.001", "1.1", "1.5", "2", "10")] + LARGE
BOTH = lambda values: values + [-x for x in values]


def double(x):
    return mpf(float(x))


def held(f):
    return lambda x: f(max(-707, min(707, x)))


def tail(log_density, start, sign):
    """The integral of exp(log_density(t) - log_density(start)) from start away to the side of `sign`."""
    at_start = log_density(start)
    fall = lambda s: log_density(start + sign * s) - at_start
    width = start / 2
    while fall(width) < -200:
        width /= 2
    while fall(width) > -120 and (sign > 0 or width < start * 0.99):
        width *= mpf("1.25")
    width = min(width, start) if sign < 0 else width
    edges = [width * k / 12 for k in range(13)]
    return mp.quad(lambda s: mp.exp(fall(s)), edges)


def upper_gamma(a, x):
    if a < 400:
        with mp.workdps(60 + int(min(x, 200)) if a > 1e-9 else 400):
            return mp.gammainc(a, x, regularized=True)
    with mp.workdps(60 + int(mp.log10(a) + mp.log10(max(x, 1)))):
        density = lambda t: (a - 1) * mp.log(t) - t
        scale = mp.exp(density(x) - mp.loggamma(a))
        return scale * tail(density, x, 1) if x >= a else 1 - scale * tail(density, x, -1)


def lower_gamma(a, x):
    if a < 400:
        with mp.workdps(60 + int(min(x, 200)) if a > 1e-9 else 400):
            return mp.gammainc(a, 0, x, regularized=True)
    with mp.workdps(60 + int(mp.log10(a) + mp.log10(max(x, 1)))):
        density = lambda t: (a - 1) * mp.log(t) - t
        scale = mp.exp(density(x) - mp.loggamma(a))
        return 1 - scale * tail(density, x, 1) if x >= a else scale * tail(density, x, -1)


def ibeta(a, b, x):
    """Of x as it is, so that 1 - x is exact."""
    if x == 0 or x == 1:
        return x
    with mp.workdps(80 + int(mp.log10(a + b + 1)) - int(min(0, mp.log10(x), mp.log10(1 - x)))):
        if a < 400 and b < 400:
            return mp.betainc(a, b, 0, x, regularized=True)
        log_beta = mp.loggamma(a) + mp.loggamma(b) - mp.loggamma(a + b)
        density = lambda t: (a - 1) * mp.log(t) + (b - 1) * mp.log(1 - t) if 0 < t < 1 else -inf
        if x * (a + b) > a:
            turned = lambda t: density(1 - t)
            return 1 - mp.exp(density(x) - log_beta) * tail(turned, 1 - x, -1)
        return mp.exp(density(x) - log_beta) * tail(density, x, -1)


def wide(f):
    """f with digits to spare for large arguments."""
    def inner(*args):
        digits = 0
        for a in args:
            if a != 0:
                digits = max(digits, abs(int(mp.log10(abs(a)))))
        with mp.workdps(60 + 2 * min(digits, 400)):
            return +f(*args)
    return inner


def bessel(kind, slope=0):
    f = {"j": mp.besselj, "y": mp.bessely, "i": mp.besseli, "k": mp.besselk}[kind]
    if not slope:
        return lambda n, x: f(n, x)
    sign = {"j": -1, "y": -1, "i": 1, "k": -1}[kind]
    return lambda n, x: n / x * f(n, x) + sign * f(n + 1, x)


def spherical(kind):
    return lambda n, x: mp.sqrt(mp.pi / (2 * x)) * bessel(kind)(n + mpf(1) / 2, x)


def spherical_slope(kind):
    return lambda n, x: n / x * spherical(kind)(n, x) - spherical(kind)(n + 1, x)


def legendre(l, m, x):
    """The recurrence of the exact rational polynomials, with the square root in front."""
    l, m = int(l), int(m)
    with mp.workdps(400):
        value, below = mpf(1), mpf(0)
        for odd in range(1, 2 * m, 2):
            value *= -odd
        for degree in range(m + 1, l + 1):
            value, below = (x * (2 * degree - 1) * value - (degree + m - 1) * below) / (degree - m), value
        return value * mp.sqrt((1 - x) * (1 + x)) ** m


def emit(word, points, f, modulus=None):
    done = set()
    for point in points:
        args = [double(a) for a in (point if isinstance(point, tuple) else (point,))]
        if any(not mp.isfinite(a) for a in args) or tuple(args) in done:
            continue
        done.add(tuple(args))
        try:
            value = wide(f)(*args)
        except (mp.NoConvergence, ZeroDivisionError, ValueError) as problem:
            print("skipped", word, *map(float, args), problem, file=sys.stderr)
            continue
        value = mp.re(value)
        if not mp.isfinite(value) or (value != 0 and not 1e-290 < abs(value) < 1e290):
            continue
        line = [word] + [repr(float(a)) for a in args] + [mp.nstr(value, 17, min_fixed=-3, max_fixed=6)]
        if modulus and abs(args[-1]) > max([1] + args[:-1]):
            line.append(mp.nstr(wide(modulus)(*args), 3))
        print(*line)


def together(f, g):
    return lambda *args: mp.sqrt(f(*args) ** 2 + g(*args) ** 2)


CIRCULAR = BOTH(MAGNITUDES + MIDDLE + LARGE[:8]) + [mpf(22), mpf(355), mp.pi / 2, mp.pi]
ELEMENTARY = [
    ("exp", BOTH(MAGNITUDES + MIDDLE) + [mpf(600), mpf(-600)], mp.exp),
    ("log", POSITIVE + ABOVE_ONE, mp.log),
    ("ln", POSITIVE, mp.log),
    ("log10", POSITIVE + ABOVE_ONE + [mpf(10) ** k for k in range(-20, 23, 3)], lambda x: mp.log10(x)),
    ("sqr", POSITIVE, mp.sqrt),
    ("cos", CIRCULAR, mp.cos),
    ("sin", CIRCULAR, mp.sin),
    ("tan", CIRCULAR, mp.tan),
    ("sec", CIRCULAR, mp.sec),
    ("cosec", CIRCULAR, mp.csc),
    ("cotan", CIRCULAR, mp.cot),
    ("arcsin", BOTH(BELOW_ONE), mp.asin),
    ("arccos", BOTH(BELOW_ONE), mp.acos),
    ("arctan", REAL, mp.atan),
    ("arcsec", BOTH(ABOVE_ONE), lambda x: mp.acos(1 / x)),
    ("arccosec", BOTH(ABOVE_ONE), lambda x: mp.asin(1 / x)),
    ("arccotan", REAL, lambda x: mp.atan(1 / x) + (mp.pi if x < 0 else 0)),
    ("hsin", REAL, held(mp.sinh)),
    ("hcos", REAL, held(mp.cosh)),
    ("htan", REAL, held(mp.tanh)),
    ("hsec", REAL, held(mp.sech)),
    ("hcosec", REAL, held(mp.csch)),
    ("hcotan", REAL, held(mp.coth)),
    ("harcsin", BOTH(POSITIVE + [mpf("1.5e6"), mpf("1.1e9")]), mp.asinh),
    ("harccos", ABOVE_ONE, mp.acosh),
    ("harctan", BOTH(BELOW_ONE), mp.atanh),
    ("harcsec", BELOW_ONE, mp.asech),
    ("harccosec", BOTH(POSITIVE), mp.acsch),
    ("harccotan", BOTH(ABOVE_ONE), mp.acoth),
    ("rtod", REAL, mp.degrees),
    ("dtor", REAL, mp.radians),
    ("mag", [(a, b) for a in (0, 3, mpf(10) ** -200, mpf(10) ** 200) for b in (4, mpf(10) ** -199, mpf(10) ** 200)],
     lambda a, b: mp.sqrt(a * a + b * b)),
]

GAMMA_X = [x for x in MAGNITUDES] + [mpf(x) for x in (
    "0.4999", "0.5", "0.9", "0.99999999", "1.0000001", "1.3", "1.4999", "1.5", "1.9999999", "2.00000001", "2.499", "2.5", "3",
    "9.99", "10", "33.3", "100", "170.5")]
PARAMETERS = [mpf(x) for x in ("1e-5", "0.01", "0.3", "0.5", "1", "2.4", "9.99", "10", "77", "399", "999", "1000", "4e4",
                               "1e6", "1e9", "1e12", "1e15")]


def around(a):
    """Arguments of the incomplete gamma functions: the tails, the mean and beside it."""
    s = mp.sqrt(a)
    rows = [a / 100, a / 2, a - 5 * s, a - s / 3, a, a + 1, a + s / 2, a + 6 * s, 3 * a, a + 20, mpf(10) ** -20]
    return [(a, x) for x in rows if x > 0]


GAMMAS = [pair for a in PARAMETERS for pair in around(a)]
COUNTS = [mpf(x) for x in ("0.5", "1", "2.5", "10", "150", "999", "1500", "6e4", "1e9")]


def beta_points():
    for a in COUNTS:
        for b in COUNTS:
            mean, s = a / (a + b), mp.sqrt(a * b / (a + b + 1)) / (a + b)
            for x in (mean, mean - 4 * s, mean + 3 * s, mean / 50, 1 - (1 - mean) / 50):
                if 1e-300 < x < 1:
                    yield a, b, x


def student(t, v):
    with mp.workdps(700):
        w = t * t / (v + t * t)
    return ibeta(mpf(1) / 2, v / 2, w)


def fdist(v1, v2, f):
    with mp.workdps(100):
        x = v2 / (v2 + v1 * f)
    return ibeta(v2 / 2, v1 / 2, x)


GAMMA_FAMILY = [
    ("erf", REAL, mp.erf),
    ("erfc", BOTH(MAGNITUDES) + [mpf(x) for x in (-30, -3, -0.5, 3, 1.22, 1.23, 6, 15, 25)], mp.erfc),
    ("fact", list(range(0, 40, 3)) + [33, 32, 100, 165], mp.factorial),
    ("factln", [2, 3, 9, 10, 33, 170, 1000, 32767], lambda n: mp.loggamma(n + 1)),
    ("gamma", GAMMA_X, mp.gamma),
    ("gammaln", GAMMA_X + LARGE, mp.loggamma),
    ("psi", [1, 2, 3, 10, 100, 32767], lambda n: mp.psi(0, n)),
    ("igamma", GAMMAS, lower_gamma),
    ("igammac", GAMMAS, upper_gamma),
    ("beta", [(a, b) for a in COUNTS + LARGE[1::3] + MAGNITUDES[::2] for b in COUNTS[::2] + MAGNITUDES[::3]], mp.beta),
    ("poisson", [(mpf(k), mpf(n)) for k, n in ((1, 3), (20, 18), (800, 810), (801, 700), (1e6, 999000), (1e9, 1e9),
                                               (1e9, 1000050000))], upper_gamma),
    ("chi2", [(mpf(x), mpf(v)) for x, v in ((3.84, 1), (1e-10, 2), (790, 800), (850, 800), (1e8, 1e8), (1e8 + 3e4, 1e8),
                                            (1e4, 2e4))], lambda x, v: lower_gamma(v / 2, x / 2)),
    ("chi2c", [(mpf(x), mpf(v)) for x, v in ((3.84, 1), (100, 2), (790, 800), (850, 800), (1e8, 1e8), (1e8 + 3e4, 1e8),
                                             (3e4, 2e4))], lambda x, v: upper_gamma(v / 2, x / 2)),
    ("ibeta", list(beta_points()), ibeta),
    ("student", [(mpf(t), mpf(v)) for v in (0.5, 1, 3.3, 30, 1999, 2e4, 1e7, 1e12)
                 for t in (1e-200, 1e-12, 0.01, 1, 1.96, 5, -2, 30, 1e8)], student),
    ("binomial", [(mpf(k), mpf(n), mpf(p)) for k, n, p in (
        (1, 5, 0.3), (5, 5, 0.3), (3, 1e9, 1e-9), (25000, 5e4, 0.5), (25200, 5e4, 0.5), (5e8, 1e9, 0.5), (10, 2000, 0.001))],
     lambda k, n, p: ibeta(k, n - k + 1, p)),
    ("fdist", [(mpf(v1), mpf(v2), mpf(f)) for v1, v2 in ((1, 1), (3, 10), (5e4, 5e4), (5e4, 7), (7, 5e4), (1e8, 1e8), (2, 1e15))
               for f in (1e-9, 0.3, 0.99, 1, 1.01, 2, 1e3)], fdist),
]

BESSEL_X = [x for x in MAGNITUDES] + [mpf(x) for x in (
    "0.5", "1", "1.9999999", "2", "2.0000001", "2.404825557695773", "3.7499999", "3.75", "5", "6.9", "7.9999999", "8",
    "8.1", "12", "19.99", "20", "20.01", "40", "100", "300", "700", "1000", "1001", "9850", "12345.678", "1e6", "1e9", "1e15",
    "1e22", "1e100", "1e300")]
ORDERS = [0, 1, 2, 3, 10, 29, 100, 1000]
FRACTIONS = [mpf(x) for x in ("0", "0.001", "0.3333333333333333", "0.5", "1.5", "7.3", "30.5", "999.5")]
AIRY_X = [mpf(x) for x in ("1e-300", "1e-120", "1e-20", "1e-9", "1e-6", "0.005", "0.5", "1", "2.08", "2.081", "5", "12", "40", "103",
                           "104.5")]


def with_orders(orders, xs):
    pairs = []
    for n in orders:
        near = [mpf(n) * k for k in (mpf("0.7"), mpf("0.98"), 1, mpf("1.02"), mpf("1.5"), 4)] + [
            mpf(n) + 1001, 2 * mp.sqrt(n + 1) * mpf("0.999"), 2 * mp.sqrt(n + 1) * mpf("1.001")]
        pairs += [(mpf(n), x) for x in list(xs) + near if 0 < x]
    return pairs


FEW_X = BESSEL_X[::2] + [mpf("1e-19"), mpf("1e-14")]
MODIFIED_X = [x for x in BESSEL_X if x < 10000]
ORDINARY = [("j", "y"), ("y", "j")]

if __name__ == "__main__":
    for row in ELEMENTARY + GAMMA_FAMILY:
        emit(*row)
    for kind, other in ORDINARY:
        for order in (0, 1):
            emit(kind + str(order), BESSEL_X, lambda x: bessel(kind)(order, x),
                 together(lambda x: bessel(kind)(order, x), lambda x: bessel(other)(order, x)))
        emit(kind + "n", with_orders(ORDERS, FEW_X), bessel(kind), together(bessel(kind), bessel(other)))
        emit(kind + "nu", with_orders(FRACTIONS, FEW_X), bessel(kind), together(bessel(kind), bessel(other)))
        emit("d" + kind + "nu", with_orders(FRACTIONS, FEW_X), bessel(kind, 1), together(bessel(kind, 1), bessel(other, 1)))
        emit("sph" + kind + "n", with_orders(ORDERS, FEW_X), spherical(kind), together(spherical(kind), spherical(other)))
        emit("dsph" + kind + "n", with_orders(ORDERS, FEW_X), spherical_slope(kind),
             together(spherical_slope(kind), spherical_slope(other)))
    for kind in "ik":
        for order in (0, 1):
            emit(kind + str(order), MODIFIED_X, lambda x: bessel(kind)(order, x))
        emit(kind + "n", with_orders(ORDERS, MODIFIED_X[::2]), bessel(kind))
        emit(kind + "nu", with_orders(FRACTIONS, MODIFIED_X[::2]), bessel(kind))
        emit("d" + kind + "nu", with_orders(FRACTIONS, MODIFIED_X[::2]), bessel(kind, 1))
    for word, second, slope in (("airya", 0, 0), ("airyb", 1, 0), ("dairya", 0, 1), ("dairyb", 1, 1)):
        own, other = (mp.airyai, mp.airybi) if not second else (mp.airybi, mp.airyai)
        emit(word, [0] + AIRY_X, lambda x: own(x, derivative=slope))
        emit(word, [-x for x in AIRY_X + [mpf(600), mpf(5000), mpf(1e5)]], lambda x: own(x, derivative=slope),
             lambda x: mp.sqrt(own(x, derivative=slope) ** 2 + other(x, derivative=slope) ** 2))
    emit("legendre", [(mpf(l), mpf(m), mpf(x)) for l, m in ((0, 0), (1, 1), (5, 3), (20, 0), (20, 19), (150, 150), (1000, 0),
                      (1000, 7), (400, 300)) for x in (-1, -0.9999, -0.3, 0, 1e-9, 0.5, 0.8, 0.999999, 1)], legendre)
