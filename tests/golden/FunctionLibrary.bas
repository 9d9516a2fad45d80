
public function fract(arg as double) as double
'Function to compute Fractional Part
    fract = cdbl(arg) - cdbl(fix(arg))
end function

public function ln(arg as double) as double
'Function to compute Natural Log
    ln = log(arg)
end function

public function log10(arg as double) as double
'Function to compute Log Base 10
    log10 = log(arg) / log(10#)
end function

public function arcsin(arg as double) as double
'Function to compute Inverse Sine
    arcsin = atn(arg / sqr(-arg * arg + 1#))
end function

public function arccos(arg as double) as double
'Function to compute Inverse Cosine
    arccos = atn(-arg / sqr(-arg * arg + 1#)) + 2# * atn(1)
end function

public function arctan(arg as double) as double
'Function to compute Inverse Tangent
    arctan = atn(arg)
end function

public function sec(arg as double) as double
'Function to compute Secant
    sec = 1# / cos(arg)
end function

public function cosec(arg as double) as double
'Function to compute Cosecant
    cosec = 1# / sin(arg)
end function

public function cotan(arg as double) as double
'Function to compute Cotangent
    cotan = 1# / tan(arg)
end function

public function arcsec(arg as double) as double
'Function to compute Inverse Secant
    arcsec = atn(arg / sqr(arg * arg - 1#)) + sgn(sgn(arg) - 1#) * 1.570796327
end function

public function arccosec(arg as double) as double
'Function to compute Inverse Cosecant
    arccosec = atn(arg / sqr(arg * arg - 1#)) + (sgn(arg) - 1#) * 1.570796327
end function

public function arccotan(arg as double) as double
'Function to compute Inverse Cotangent
    arccotan = atn(arg) + 1.570796327
end function

public function hsin(arg as double) as double
'Function to compute Hyperbolic Sine
    hsin = (exp(arg) - exp(-arg)) / 2#
end function

public function hcos(arg as double) as double
'Function to compute Hyperbolic Cosine
    hcos = (exp(arg) + exp(-arg)) / 2.0
end function

public function htan(arg as double) as double
'Function to compute Hyperbolic Tangent
    htan = (exp(arg) - exp(-arg)) / (exp(arg) + exp(-arg))
end function

public function hsec(arg as double) as double
'Function to compute Hyperbolic Secant
    hsec = 2# / (exp(arg) + exp(-arg))
end function

public function hcosec(arg as double) as double
'Function to compute Hyperbolic Cosecant
    hcosec = 2# / (exp(arg) - exp(-arg))
end function

public function hcotan(arg as double) as double
'Function to compute Hyperbolic Cotangent
    hcotan = (exp(arg) + exp(-arg)) / (exp(arg) - exp(-arg))
end function

public function harcsin(arg as double) as double
'Function to compute Inverse Hyperbolic Sine
    harcsin = log(arg + sqr(arg * arg + 1#))
end function

public function harccos(arg as double) as double
'Function to compute Inverse Hyperbolic Cosine
    harccos = log(arg + sqr(arg * arg - 1#))
end function

public function harctan(arg as double) as double
'Function to compute Inverse Hyperbolic Tangent
    harctan = log((1# + arg) / (1# - arg)) / 2#
end function

public function harcsec(arg as double) as double
'Function to compute Inverse Hyperbolic Secant
    harcsec = log((sqr(-arg * arg + 1#) + 1#) / arg)
end function

public function harccosec(arg as double) as double
'Function to compute Inverse Hyperbolic Cosecant
    harccosec = log((sgn(arg) * sqr(arg * arg + 1#) + 1#) / arg)
end function

public function harccotan(arg as double) as double
'Function to compute Inverse Hyperbolic Cotangent
    harccotan = log((arg + 1#) / (arg - 1#)) / 2#
end function

public function rtod(arg as double) as double
'Function to compute Radians to Degrees
    rtod = arg * 180.0 / 3.14159265358979 
end function

public function dtor(arg as double) as double
'Function to compute Degrees to Radians
    dtor = arg * 3.14159265358979 / 180.0
end function

public function erf() as variant
'Function to compute Error Function.
'This function must be supplied by the user.
end function

public function erfc() as variant
'Function to compute Error Compliment Function.
'This function must be supplied by the user.
end function

public function fact() as variant
'Function to compute Factorial.
'This function must be supplied by the user.
end function

public function factln() as variant
'Function to compute Natural Log of the Factorial.
'This function must be supplied by the user.
end function

public function gamma() as variant
'Function to compute Gamma Function.
'This function must be supplied by the user.
end function

public function gammaln() as variant
'Function to compute Natural Log of the Gamma Function.
'This function must be supplied by the user.
end function

public function psi() as variant
'Function to compute Psi Function.
'This function must be supplied by the user.
end function

public function evalif(cond as boolean, trueexp as variant, falseexp as variant) as variant
'Function to compute If
    if cond then evalif = trueexp else evalif = falseexp
end function

public function igamma() as variant
'Function to compute Incomplete Gamma Function.
'This function must be supplied by the user.
end function

public function igammac() as variant
'Function to compute Incomplete Gamma Compliment Function.
'This function must be supplied by the user.
end function

public function beta() as variant
'Function to compute Beta Function.
'This function must be supplied by the user.
end function

public function poisson() as variant
'Function to compute Cumulative Poisson Distribution.
'This function must be supplied by the user.
end function

public function student() as variant
'Function to compute Student's Distribution.
'This function must be supplied by the user.
end function

public function chi2() as variant
'Function to compute Chi-Square Distribution.
'This function must be supplied by the user.
end function

public function chi2c() as variant
'Function to compute Chi-Square Compliment Distribution.
'This function must be supplied by the user.
end function

public function jn() as variant
'Function to compute Bessel Function J of Integer Order.
'This function must be supplied by the user.
end function

public function yn() as variant
'Function to compute Bessel Function Y of Integer Order.
'This function must be supplied by the user.
end function

public function in() as variant
'Function to compute Modified Bessel Function I of Integer Order.
'This function must be supplied by the user.
end function

public function kn() as variant
'Function to compute Modified Bessel Function K of Integer Order.
'This function must be supplied by the user.
end function

public function jnu() as variant
'Function to compute Bessel Function J of Fractional Order.
'This function must be supplied by the user.
end function

public function ynu() as variant
'Function to compute Bessel Function Y of Fractional Order.
'This function must be supplied by the user.
end function

public function djnu() as variant
'Function to compute Derivative of Bessel Function J of Fractional Order.
'This function must be supplied by the user.
end function

public function dynu() as variant
'Function to compute Derivative of Bessel Function Y of Fractional Order.
'This function must be supplied by the user.
end function

public function inu() as variant
'Function to compute Modified Bessel Function I of Fractional Order.
'This function must be supplied by the user.
end function

public function knu() as variant
'Function to compute Modified Bessel Function K of Fractional Order.
'This function must be supplied by the user.
end function

public function dinu() as variant
'Function to compute Derivative of Modified Bessel Function I of Fractional Order.
'This function must be supplied by the user.
end function

public function dknu() as variant
'Function to compute Derivative of Modified Bessel Function K of Fractional Order.
'This function must be supplied by the user.
end function

public function sphjn() as variant
'Function to compute Spherical Bessel Function J.
'This function must be supplied by the user.
end function

public function sphyn() as variant
'Function to compute Spherical Bessel Function Y.
'This function must be supplied by the user.
end function

public function dsphjn() as variant
'Function to compute Derivative of Spherical Bessel Function J.
'This function must be supplied by the user.
end function

public function dsphyn() as variant
'Function to compute Derivative of Spherical Bessel Function Y.
'This function must be supplied by the user.
end function

public function max(a as double, b as double) as double
'Function to compute Maximum
    if a >= b then max = a else max = b
end function

public function min(a as double, b as double) as double
'Function to compute Minimum
    if a >= b then min = b else min = a
end function

public function mag(a as double, b as double) as double
'Function to compute Magnitude
    mag = sqr(a^2+b^2)
end function

public function legendre(l as variant, m as variant, x as variant) as variant
'Function to compute Associated Legendre Polynomial.
'This function must be supplied by the user.
end function

public function binomial(k as variant, n as variant, p as variant) as variant
'Function to compute Cumulative Binomial Distribution.
'This function must be supplied by the user.
end function

public function ibeta(a as variant, b as variant, x as variant) as variant
'Function to compute Incomplete Beta Function.
'This function must be supplied by the user.
end function

public function fdist(v1 as variant, v2 as variant, f as variant) as variant
'Function to compute F-Distribution.
'This function must be supplied by the user.
end function

public function j0() as variant
'Function to compute Bessel Function J of Order 0.
'This function must be supplied by the user.
end function

public function j1() as variant
'Function to compute Bessel Function J of Order 1.
'This function must be supplied by the user.
end function

public function y0() as variant
'Function to compute Bessel Function Y of Order 0.
'This function must be supplied by the user.
end function

public function y1() as variant
'Function to compute Bessel Function Y of Order 1.
'This function must be supplied by the user.
end function

public function i0() as variant
'Function to compute Modified Bessel Function I of Order 0.
'This function must be supplied by the user.
end function

public function i1() as variant
'Function to compute Modified Bessel Function I of Order 1.
'This function must be supplied by the user.
end function

public function k0() as variant
'Function to compute Modified Bessel Function K of Order 0.
'This function must be supplied by the user.
end function

public function k1() as variant
'Function to compute Modified Bessel Function K of Order 1.
'This function must be supplied by the user.
end function

public function airya() as variant
'Function to compute Airy Function A.
'This function must be supplied by the user.
end function

public function airyb() as variant
'Function to compute Airy Function B.
'This function must be supplied by the user.
end function

public function dairya() as variant
'Function to compute Derivative of Airy Function A.
'This function must be supplied by the user.
end function

public function dairyb() as variant
'Function to compute Derivative of Airy Function B.
'This function must be supplied by the user.
end function

public function floor(arg as double) as double
'Function to compute Floor
    floor = cdbl(int(arg))
end function

public function ceil(arg as double) as double
'Function to compute Ceiling
    ceil = cdbl(-int(-arg))
end function
