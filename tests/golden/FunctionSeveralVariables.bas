public function surface(x() as double) as double

'---------------------------------------------------------------

'Quorvex version 9.0
'Date Created: Nov 21 2026
'Time Created: 04:30:12 AM

'This function returns a predicted f(x) value
'The independent variables x1, x2, .. xn are passed in the
'array x(), where x(1) = x1, et.
'for the function Y = a*x1^b+max(x2,erf(x3))

'Regression Statistics:
'R2 = 0.987654321
'Adjusted R2 = 0.9
'Standard Error = 1E-05

'---------------------------------------------------------------


    const a as double = 3
    const b as double = 0.25
dim result as double
    result = ((a * (x(1) ^ b)) + max(x(2),erf(x(3))))
surface = result

end function

public function erf() as variant
'Function to compute Error Function.
'This function must be supplied by the user.
end function

public function max(a as double, b as double) as double
'Function to compute Maximum
    if a >= b then max = a else max = b
end function
