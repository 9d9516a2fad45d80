public function curve(x as double) as double

'---------------------------------------------------------------

'Quorvex version 9.0
'Date Created: Nov 21 2026
'Time Created: 04:30:12 AM

'This function returns a predicted f(x) value
'for the function Y = A*arcsin(f1)+if(x>xmean,a,Base)*yrange
'F1 = x/4

'Regression Statistics:
'R2 = 0.987654321
'Adjusted R2 = 0.9
'Standard Error = 1E-05

'---------------------------------------------------------------


    const A as double = 1.5
    const Base as double = -2E-20
    const xmean as double = 2.5
    const yrange as double = 4
dim result as double
dim F1 as double
    F1 = (x / 4)
    result = ((A * arcsin(F1)) + (evalif((x > xmean),A,Base) * yrange))
curve = result

end function

public function arcsin(arg as double) as double
'Function to compute Inverse Sine
    arcsin = atn(arg / sqr(-arg * arg + 1#))
end function

public function evalif(cond as boolean, trueexp as variant, falseexp as variant) as variant
'Function to compute If
    if cond then evalif = trueexp else evalif = falseexp
end function
