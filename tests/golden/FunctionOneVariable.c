#include <math.h>

static double arcsin(double arg);
static double evalif(double cond, double trueexp, double falseexp);

double curve(double x)

/*--------------------------------------------------------------*

Quorvex version 9.0
Date Created: Nov 21 2026
Time Created: 04:30:12 AM

This function returns a predicted f(x) value
for the function Y = A*arcsin(f1)+if(x>xmean,a,Base)*yrange
F1 = x/4

Regression Statistics:
R2 = 0.987654321
Adjusted R2 = 0.9
Standard Error = 1E-05

 *--------------------------------------------------------------*/


{
    double A = 1.5;
    double Base = -2E-20;
    double xmean = 2.5;
    double yrange = 4;
    double result;
    double F1;
    F1 = (x / 4);
    result = ((A * arcsin(F1)) + (evalif((x > xmean),A,Base) * yrange));
    return result;
}

static double arcsin(double arg)
{
    /* Function to compute Inverse Sine */
    return asin(arg);
}

static double evalif(double cond, double trueexp, double falseexp)
{
    /* Function to compute If */
    return cond != 0.0 ? trueexp : falseexp;
}
