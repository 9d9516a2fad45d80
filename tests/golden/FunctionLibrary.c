
static double fix(double arg)
{
    /* Function to compute Truncation */
    return trunc(arg);
}

static double fract(double arg)
{
    /* Function to compute Fractional Part */
    return arg - trunc(arg);
}

static double rnd(double arg)
{
    /* Function to compute Random Number */
    static unsigned long long counter;
    union { double value; unsigned long long bits; } seed;
    unsigned long long bits;
    if (arg < 0.0) {
        seed.value = arg;
        counter = seed.bits;
    }
    if (arg != 0.0) counter += 0x9E3779B97F4A7C15ULL;
    bits = counter;
    bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9ULL;
    bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EBULL;
    bits ^= bits >> 31;
    return (double)(bits >> 11) / 9007199254740992.0;
}

static double sgn(double arg)
{
    /* Function to compute Sign */
    return (arg > 0.0) - (arg < 0.0);
}

static double sqr(double arg)
{
    /* Function to compute Square Root */
    return sqrt(arg);
}

static double arcsin(double arg)
{
    /* Function to compute Inverse Sine */
    return asin(arg);
}

static double arccos(double arg)
{
    /* Function to compute Inverse Cosine */
    return acos(arg);
}

static double arctan(double arg)
{
    /* Function to compute Inverse Tangent */
    return atan(arg);
}

static double sec(double arg)
{
    /* Function to compute Secant */
    return 1.0 / cos(arg);
}

static double cosec(double arg)
{
    /* Function to compute Cosecant */
    return 1.0 / sin(arg);
}

static double cotan(double arg)
{
    /* Function to compute Cotangent */
    return 1.0 / tan(arg);
}

static double arcsec(double arg)
{
    /* Function to compute Inverse Secant */
    double angle = 2.0 * atan(sqrt(fabs(arg) - 1.0) / sqrt(fabs(arg) + 1.0));
    return arg < 0.0 ? 4.0 * atan(1.0) - angle : angle;
}

static double arccosec(double arg)
{
    /* Function to compute Inverse Cosecant */
    return asin(1.0 / arg);
}

static double arccotan(double arg)
{
    /* Function to compute Inverse Cotangent */
    return arg > 1.0 ? atan(1.0 / arg) : 2.0 * atan(1.0) - atan(arg);
}

static double hsin(double arg)
{
    /* Function to compute Hyperbolic Sine */
    return sinh(arg);
}

static double hcos(double arg)
{
    /* Function to compute Hyperbolic Cosine */
    return cosh(arg);
}

static double htan(double arg)
{
    /* Function to compute Hyperbolic Tangent */
    return tanh(arg);
}

static double hsec(double arg)
{
    /* Function to compute Hyperbolic Secant */
    return 1.0 / cosh(arg);
}

static double hcosec(double arg)
{
    /* Function to compute Hyperbolic Cosecant */
    return 1.0 / sinh(arg);
}

static double hcotan(double arg)
{
    /* Function to compute Hyperbolic Cotangent */
    return 1.0 / tanh(arg);
}

static double harcsin(double arg)
{
    /* Function to compute Inverse Hyperbolic Sine */
    return asinh(arg);
}

static double harccos(double arg)
{
    /* Function to compute Inverse Hyperbolic Cosine */
    return acosh(arg);
}

static double harctan(double arg)
{
    /* Function to compute Inverse Hyperbolic Tangent */
    return atanh(arg);
}

static double harcsec(double arg)
{
    /* Function to compute Inverse Hyperbolic Secant */
    double t = (1.0 - arg) / arg;
    return log1p(t + sqrt(t) * sqrt(t + 2.0));
}

static double harccosec(double arg)
{
    /* Function to compute Inverse Hyperbolic Cosecant */
    return asinh(1.0 / arg);
}

static double harccotan(double arg)
{
    /* Function to compute Inverse Hyperbolic Cotangent */
    return copysign(log1p(2.0 / (fabs(arg) - 1.0)) / 2.0, arg);
}

static double rtod(double arg)
{
    /* Function to compute Radians to Degrees */
    return arg * 180.0 / 3.14159265358979;
}

static double dtor(double arg)
{
    /* Function to compute Degrees to Radians */
    return arg * 3.14159265358979 / 180.0;
}

double fact(double arg)
{
    /* Function to compute Factorial. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}

double factln(double arg)
{
    /* Function to compute Natural Log of the Factorial. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}

double gamma(double arg)
{
    /* Function to compute Gamma Function. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}

double gammaln(double arg)
{
    /* Function to compute Natural Log of the Gamma Function. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}

double psi(double arg)
{
    /* Function to compute Psi Function. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}

static double evalif(double cond, double trueexp, double falseexp)
{
    /* Function to compute If */
    return cond != 0.0 ? trueexp : falseexp;
}

double igamma(double a, double x)
{
    /* Function to compute Incomplete Gamma Function. */
    /* This function must be supplied by the user. */
    (void)a;
    (void)x;
    return NAN;
}

double igammac(double a, double x)
{
    /* Function to compute Incomplete Gamma Compliment Function. */
    /* This function must be supplied by the user. */
    (void)a;
    (void)x;
    return NAN;
}

double beta(double z, double w)
{
    /* Function to compute Beta Function. */
    /* This function must be supplied by the user. */
    (void)z;
    (void)w;
    return NAN;
}

double poisson(double k, double n)
{
    /* Function to compute Cumulative Poisson Distribution. */
    /* This function must be supplied by the user. */
    (void)k;
    (void)n;
    return NAN;
}

double student(double t, double v)
{
    /* Function to compute Student's Distribution. */
    /* This function must be supplied by the user. */
    (void)t;
    (void)v;
    return NAN;
}

double chi2(double x2, double v)
{
    /* Function to compute Chi-Square Distribution. */
    /* This function must be supplied by the user. */
    (void)x2;
    (void)v;
    return NAN;
}

double chi2c(double x2, double v)
{
    /* Function to compute Chi-Square Compliment Distribution. */
    /* This function must be supplied by the user. */
    (void)x2;
    (void)v;
    return NAN;
}

double jn(int n, double x)
{
    /* Function to compute Bessel Function J of Integer Order. */
    /* This function must be supplied by the user. */
    (void)n;
    (void)x;
    return NAN;
}

double yn(int n, double x)
{
    /* Function to compute Bessel Function Y of Integer Order. */
    /* This function must be supplied by the user. */
    (void)n;
    (void)x;
    return NAN;
}

double in(double n, double x)
{
    /* Function to compute Modified Bessel Function I of Integer Order. */
    /* This function must be supplied by the user. */
    (void)n;
    (void)x;
    return NAN;
}

double kn(double n, double x)
{
    /* Function to compute Modified Bessel Function K of Integer Order. */
    /* This function must be supplied by the user. */
    (void)n;
    (void)x;
    return NAN;
}

double jnu(double nu, double x)
{
    /* Function to compute Bessel Function J of Fractional Order. */
    /* This function must be supplied by the user. */
    (void)nu;
    (void)x;
    return NAN;
}

double ynu(double nu, double x)
{
    /* Function to compute Bessel Function Y of Fractional Order. */
    /* This function must be supplied by the user. */
    (void)nu;
    (void)x;
    return NAN;
}

double djnu(double nu, double x)
{
    /* Function to compute Derivative of Bessel Function J of Fractional Order. */
    /* This function must be supplied by the user. */
    (void)nu;
    (void)x;
    return NAN;
}

double dynu(double nu, double x)
{
    /* Function to compute Derivative of Bessel Function Y of Fractional Order. */
    /* This function must be supplied by the user. */
    (void)nu;
    (void)x;
    return NAN;
}

double inu(double nu, double x)
{
    /* Function to compute Modified Bessel Function I of Fractional Order. */
    /* This function must be supplied by the user. */
    (void)nu;
    (void)x;
    return NAN;
}

double knu(double nu, double x)
{
    /* Function to compute Modified Bessel Function K of Fractional Order. */
    /* This function must be supplied by the user. */
    (void)nu;
    (void)x;
    return NAN;
}

double dinu(double nu, double x)
{
    /* Function to compute Derivative of Modified Bessel Function I of Fractional Order. */
    /* This function must be supplied by the user. */
    (void)nu;
    (void)x;
    return NAN;
}

double dknu(double nu, double x)
{
    /* Function to compute Derivative of Modified Bessel Function K of Fractional Order. */
    /* This function must be supplied by the user. */
    (void)nu;
    (void)x;
    return NAN;
}

double sphjn(double n, double x)
{
    /* Function to compute Spherical Bessel Function J. */
    /* This function must be supplied by the user. */
    (void)n;
    (void)x;
    return NAN;
}

double sphyn(double n, double x)
{
    /* Function to compute Spherical Bessel Function Y. */
    /* This function must be supplied by the user. */
    (void)n;
    (void)x;
    return NAN;
}

double dsphjn(double n, double x)
{
    /* Function to compute Derivative of Spherical Bessel Function J. */
    /* This function must be supplied by the user. */
    (void)n;
    (void)x;
    return NAN;
}

double dsphyn(double n, double x)
{
    /* Function to compute Derivative of Spherical Bessel Function Y. */
    /* This function must be supplied by the user. */
    (void)n;
    (void)x;
    return NAN;
}

static double maximum(double a, double b)
{
    /* Function to compute Maximum */
    return a >= b ? a : b;
}

static double minimum(double a, double b)
{
    /* Function to compute Minimum */
    return a >= b ? b : a;
}

static double mag(double a, double b)
{
    /* Function to compute Magnitude */
    return hypot(a, b);
}

double legendre(double l, double m, double x)
{
    /* Function to compute Associated Legendre Polynomial. */
    /* This function must be supplied by the user. */
    (void)l;
    (void)m;
    (void)x;
    return NAN;
}

double binomial(double k, double n, double p)
{
    /* Function to compute Cumulative Binomial Distribution. */
    /* This function must be supplied by the user. */
    (void)k;
    (void)n;
    (void)p;
    return NAN;
}

double ibeta(double a, double b, double x)
{
    /* Function to compute Incomplete Beta Function. */
    /* This function must be supplied by the user. */
    (void)a;
    (void)b;
    (void)x;
    return NAN;
}

double fdist(double v1, double v2, double f)
{
    /* Function to compute F-Distribution. */
    /* This function must be supplied by the user. */
    (void)v1;
    (void)v2;
    (void)f;
    return NAN;
}

double j0(double arg)
{
    /* Function to compute Bessel Function J of Order 0. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}

double j1(double arg)
{
    /* Function to compute Bessel Function J of Order 1. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}

double y0(double arg)
{
    /* Function to compute Bessel Function Y of Order 0. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}

double y1(double arg)
{
    /* Function to compute Bessel Function Y of Order 1. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}

double i0(double arg)
{
    /* Function to compute Modified Bessel Function I of Order 0. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}

double i1(double arg)
{
    /* Function to compute Modified Bessel Function I of Order 1. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}

double k0(double arg)
{
    /* Function to compute Modified Bessel Function K of Order 0. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}

double k1(double arg)
{
    /* Function to compute Modified Bessel Function K of Order 1. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}

double airya(double arg)
{
    /* Function to compute Airy Function A. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}

double airyb(double arg)
{
    /* Function to compute Airy Function B. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}

double dairya(double arg)
{
    /* Function to compute Derivative of Airy Function A. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}

double dairyb(double arg)
{
    /* Function to compute Derivative of Airy Function B. */
    /* This function must be supplied by the user. */
    (void)arg;
    return NAN;
}
