#include <math.h>

static double maximum(double a, double b);

double surface(double x[])

/*--------------------------------------------------------------*

Quorvex version 9.0
Date Created: Nov 21 2026
Time Created: 04:30:12 AM

This function returns a predicted f(x) value
The independent variables x1, x2, .. xn are passed in the
array x[], where x[1] = x1, et.
for the function Y = a*x1^b+max(x2,erf(x3))

Regression Statistics:
R2 = 0.987654321
Adjusted R2 = 0.9
Standard Error = 1E-05

 *--------------------------------------------------------------*/


{
    double a = 3;
    double b = 0.25;
    double result;
    result = ((a * (pow(x[1] , b))) + maximum(x[2],erf(x[3])));
    return result;
}

static double maximum(double a, double b)
{
    /* Function to compute Maximum */
    return a >= b ? a : b;
}
