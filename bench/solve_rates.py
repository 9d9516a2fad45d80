#!/usr/bin/env python3
"""How often a macro solves generated problems, by family of models, with and without TryHarder.

    bench/solve_rates.py [problems of each family] [seed] [program]

Each problem has its own true coefficients, noise (none to 5 % of the range of y), units of x and y (1e-9 to 1e9) and
initial estimates: ones; within a factor of 3; within a factor of 10; within a factor of 100, some with the wrong sign.
A problem counts as solved where the sum of squares is at most that of the true coefficients."""
import math, random, subprocess, sys, tempfile, pathlib
from math import exp, log, sin, cos, pi, atan

def u(low, high): return lambda r: r.uniform(low, high)
def lu(low, high): return lambda r: math.exp(r.uniform(math.log(low), math.log(high)))

# model; coefficients: how to draw, power of the unit of x, power of the unit of y; first and last x; noise
FAMILIES = {
    'decay': ('a*exp(-b*x)+c', dict(a=(u(.5, 2), 0, 1), b=(lu(1, 20), -1, 0), c=(u(-.5, .5), 0, 1)), 0, 1, .05),
    'two decays': ('a*exp(-b*x)+c*exp(-d*x)', dict(a=(u(.5, 2), 0, 1), b=(lu(10, 40), -1, 0), c=(u(.5, 2), 0, 1), d=(lu(.5, 4), -1, 0)), 0, 1, .02),
    'logistic': ('a/(1+exp(-b*(x-c)))', dict(a=(u(.5, 2), 0, 1), b=(lu(5, 30), -1, 0), c=(u(.3, .7), 1, 0)), 0, 1, .05),
    'Gompertz': ('a*exp(-b*exp(-c*x))', dict(a=(u(.5, 2), 0, 1), b=(lu(2, 20), 0, 0), c=(lu(3, 12), -1, 0)), 0, 1, .05),
    'Hill': ('v*x^n/(k^n+x^n)', dict(v=(u(.5, 2), 0, 1), n=(u(1.5, 5), 0, 0), k=(lu(.1, .7), 1, 0)), .01, 1, .05),
    'Michaelis-Menten': ('v*x/(k+x)', dict(v=(u(.5, 2), 0, 1), k=(lu(.05, 1), 1, 0)), .01, 1, .05),
    'damped sine': ('a*exp(-b*x)*sin(c*x+d)', dict(a=(u(.5, 2), 0, 1), b=(lu(.5, 5), -1, 0), c=(lu(10, 80), -1, 0), d=(u(-2, 2), 0, 0)), 0, 1, .05),
    'two sines': ('a*sin(b*x+c)+d*sin(f*x+g)', dict(a=(u(.5, 2), 0, 1), b=(lu(10, 25), -1, 0), c=(u(-2, 2), 0, 0), d=(u(.5, 2), 0, 1), f=(lu(40, 90), -1, 0), g=(u(-2, 2), 0, 0)), 0, 1, .05),
    'Lorentz peak': ('a/(1+((x-m)/w)^2)+c', dict(a=(u(.5, 2), 0, 1), m=(u(.2, .8), 1, 0), w=(lu(.03, .2), 1, 0), c=(u(0, .5), 0, 1)), 0, 1, .05),
    'two peaks and decay': ('a*exp(-((x-b)/c)^2)+d*exp(-((x-f)/g)^2)+h*exp(-k*x)', dict(a=(u(.5, 2), 0, 1), b=(u(.25, .42), 1, 0), c=(lu(.04, .1), 1, 0), d=(u(.5, 2), 0, 1), f=(u(.6, .8), 1, 0), g=(lu(.04, .1), 1, 0), h=(u(.5, 2), 0, 1), k=(lu(1, 5), -1, 0)), 0, 1, .02),
    'power law': ('a*x^b+c', dict(a=(u(.5, 2), 0, 1), b=(u(.3, 4), 0, 0), c=(u(-.5, .5), 0, 1)), .01, 1, .02),
    'rational': ('(a+b*x+c*x^2)/(1+d*x+f*x^2)', dict(a=(u(.5, 2), 0, 1), b=(u(-2, 2), -1, 1), c=(u(2, 6), -2, 1), d=(u(.5, 2), -1, 0), f=(u(1, 5), -2, 0)), 0, 1, .02),
    'hyperbola': ('1/(a+b*x+c*x^2)', dict(a=(u(.5, 1), 0, -1), b=(u(-.5, 1), -1, -1), c=(u(1, 5), -2, -1)), 0, 1, .02),
    'Arrhenius': ('a*exp(-b/x)', dict(a=(lu(50, 5000), 0, 1), b=(u(3, 12), 1, 0)), .5, 1, .02),
    'Weibull': ('a-b*exp(-(x/c)^d)', dict(a=(u(1, 2), 0, 1), b=(u(.5, 1), 0, 1), c=(u(.2, .6), 1, 0), d=(u(1.2, 4), 0, 0)), .01, 1, .02),
    'absorption and loss': ('a*(exp(-b*x)-exp(-c*x))', dict(a=(u(.5, 2), 0, 1), b=(lu(1, 4), -1, 0), c=(lu(8, 30), -1, 0)), 0, 1, .05),
}

def problem(r, kind, model, terms, first, last, noise):
    n = r.choice([30, 60, 120, 200])
    sx, sy = (10. ** r.choice([0, 0, 0, -9, -3, 3, 9]) for _ in 'xy')
    truth = {k: draw(r) * sx ** px * sy ** py for k, (draw, px, py) in terms.items()}
    xs = [(first + (last - first) * i / (n - 1)) * sx for i in range(n)]
    code = compile(model.replace('^', '**'), model, 'eval')
    fitted = [eval(code, dict(globals(), x=x, **truth)) for x in xs]
    deviation = r.choice([0, .1, 1]) * noise * (max(fitted) - min(fitted))
    ys = [y + r.gauss(0, deviation) for y in fitted]
    if kind == 0: start = dict.fromkeys(truth, 1.)
    else: start = {k: v * 10 ** (r.uniform(-1, 1) * (.477, 1, 2)[kind - 1]) * (-1 if kind == 3 and r.random() < .2 else 1) for k, v in truth.items()}
    return xs, ys, start, sum((y - f) ** 2 for y, f in zip(ys, fitted)), sum(y * y for y in ys)

def solves(program, folder, model, xs, ys, start, least, size, harder):
    (folder / 'data.txt').write_text(''.join(f'{x!r}\t{y!r}\n' for x, y in zip(xs, ys)))
    assign = ''.join(f'Assign {k} = {v!r}, Operator = Value, Fit = True, Derivative = Numerical\n' for k, v in start.items())
    (folder / 'run.cfg').write_text(f'B_MACRO\nDataFile = {folder}/data.txt\nIndependentVariables = 1\nOutputFile = {folder}/out.txt\n'
                                    f'LogFile = {folder}/run.log\nTryHarder = {harder}\nB_MODEL\nID = m\nY = {model}\n{assign}E_MODEL\nE_MACRO\n')
    subprocess.run([program, '-runcfg', folder / 'run.cfg'], capture_output=True)
    log = (folder / 'run.log').read_text()
    sums = [float(line.split('=')[1]) for line in log.splitlines() if line.startswith('Residual Sum of Squares')]
    return bool(sums) and sums[-1] <= least * (1 + 1e-6) + 1e-16 * size

def main():
    each, seed = (int(sys.argv[i]) if len(sys.argv) > i else d for i, d in ((1, 8), (2, 1)))
    program = sys.argv[3] if len(sys.argv) > 3 else 'build/release/quorvex'
    r = random.Random(seed)
    totals = [0, 0, 0]
    print(f'{"family":22} problems  solved  with TryHarder')
    with tempfile.TemporaryDirectory() as folder:
        for name, (model, terms, first, last, noise) in FAMILIES.items():
            counts = [0, 0, 0]
            for k in range(each):
                xs, ys, start, least, size = problem(r, k % 4, model, terms, first, last, noise)
                solved = [solves(program, pathlib.Path(folder), model, xs, ys, start, least, size, h) for h in (False, True)]
                counts = [c + d for c, d in zip(counts, [1, *solved])]
            totals = [t + c for t, c in zip(totals, counts)]
            print(f'{name:22} {counts[0]:8} {counts[1]:7} {counts[2]:7}')
    print(f'{"all":22} {totals[0]:8} {totals[1]:7} {totals[2]:7}')

if __name__ == '__main__': main()
