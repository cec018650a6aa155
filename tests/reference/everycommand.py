#!/usr/bin/env python3
"""Expected outcomes of every command with every model, for tests/app/tst_everycommand.cpp.

Works them out a second time: the laws, the engine, the statistics, the number patterns and the charts are written here
straight from their formulas, point by point and in plain Python, and share nothing with the program. Writes one case a
line. Run it again after a change of a required figure:

    tests/reference/everycommand.py > tests/reference/everycommand.json
"""
import json
import math
import random
from decimal import Decimal, ROUND_HALF_UP

# What is typed: concentration in M, components, amplitude and lifetime in ns twice, intensity. Two lifetimes of some ten
# microseconds that shorten with the quencher, and intensities that fall faster than the lifetimes.
SAMPLES = [
    ["0", "2", "0.4", "24000", "0.6", "57000", "", "", "100"],
    ["0.002", "2", "0.9", "22000", "1.1", "51000", "", "", "88.2"],
    ["0.005", "2", "0.5", "19800", "0.5", "45100", "", "", "75.1"],
    ["0.01", "2", "0.55", "16500", "0.45", "37000", "", "", "61.4"],
    ["0.02", "2", "0.6", "12500", "0.4", "28600", "", "", "42.9"],
]
TYPED = {"K": "20", "F": "0.4", "kq1": "3e5", "kq2": "8e5", "Cp": "2e-3", "s": "0.82",
         "tolerance": "0.0001"}
LIMITS = (40, 15, 6, 3, 1, 0)  # of iterations: the first that leaves no figure to the last digits of the arithmetic
LEVEL = 0.0001  # of the fit region "All"

N = len(SAMPLES)
CONC = [float(s[0]) for s in SAMPLES]
SUMS = [float(s[2]) + float(s[4]) for s in SAMPLES]
AMPLITUDES = [[float(s[2]) / total, float(s[4]) / total] for s, total in zip(SAMPLES, SUMS)]
LIFETIMES = [[float(s[3]) / 1e9, float(s[5]) / 1e9] for s in SAMPLES]
RATIOS = [float(SAMPLES[0][8]) / float(s[8]) for s in SAMPLES]
V = {name: float(text) for name, text in TYPED.items()}
CP = V["Cp"]

# Fitted parameters in order: (box, report label, column of the results table). "fix" boxes: kq2 and F.
K, F = ("K", "K :", 2), ("F", "F :", 2)
KQ1, KQ2 = ("kq1", "kq1 :", 3), ("kq2", "kq2 :", 4)
SITE1, SITE2 = ("kq1", "kq1 :", 4), ("kq2", "kq2 :", 5)
MODELS = {1: [KQ2], 2: [K, KQ1, KQ2], 3: [K, KQ2], 4: [K, KQ1], 5: [K], 6: [K, KQ1, KQ2], 7: [K, KQ2], 8: [K, KQ1],
          9: [K], 10: [K, KQ1, KQ2], 11: [K, KQ1], 12: [F, SITE1, SITE2], 13: [F, SITE1]}
WITH_RADIUS = (6, 7, 8, 9, 10, 11)

FAULT = "The Gauss-Newton calculation stopped with an arithmetic error.\r\nPlease change the initial values and run again."
SOLVER = "Gauss-Newton法でエラーが起こりました\r\n初期値を変えて実行してみてください"


class SolverFailed(Exception):
    pass


# ---- number texts -----------------------------------------------------------------------------------------------------
def fifteen(value):
    return Decimal("%.14e" % value)


def rounded(number, decimals):
    return number.quantize(Decimal(1).scaleb(-decimals), ROUND_HALF_UP)


def decimals_text(digits, places, pattern):
    """Integer and decimal digits of a rounded number; trailing zeros go down to the last required one."""
    required = pattern.rfind("0") + 1
    while len(digits) > required and digits.endswith("0"):
        digits = digits[:-1]
    return digits


def pattern_text(value, pattern):
    mantissa, _, exponent_part = pattern.partition("e+")
    whole, point, places = mantissa.partition(".")
    number = fifteen(abs(value))
    exponent = 0
    if exponent_part:
        exponent = number.adjusted() if number else 0
        number = rounded(number.scaleb(-exponent), len(places))
        if number >= 10:
            exponent += 1
            number = number / 10
    number = rounded(number, len(places))
    integers, _, digits = "{:f}".format(number).partition(".")
    if integers == "0":
        integers = ""
    least = 1 if exponent_part else len(whole[whole.find("0"):]) if "0" in whole else 0
    integers = integers.rjust(least, "0")
    text = integers + point + decimals_text(digits, places, places)
    if exponent_part:
        text += "e" + ("-" if exponent < 0 else "+") + str(abs(exponent)).rjust(exponent_part.count("0"), "0")
    return ("-" if value < 0 and number else "") + text


# ---- Stern-Volmer ratios ----------------------------------------------------------------------------------------------
TAU0 = (sum(a * t for a, t in zip([float(SAMPLES[0][2]), float(SAMPLES[0][4])], LIFETIMES[0]))
        / (float(SAMPLES[0][2]) + float(SAMPLES[0][4])))


def free(x, k):
    b = 1 - x * k + CP * k
    return (-b + math.sqrt(b ** 2 + 4 * x * k)) / (2 * k)


def ratio(model, x, p):
    t = TAU0
    p1, p2, p3 = p
    d = CP * p1 + 1
    if model == 1:
        return p1 * t * x + 1
    if model == 2:
        q = free(x, p1)
        return (t * p3 * q + 1) * (p1 * q + 1) / ((p1 / (p2 * t + 1)) * q * (t * p3 * q + 1) + 1)
    if model == 3:
        q = free(x, p1)
        return (p2 * t * q + 1) * (p1 * q + 1)
    if model == 4:
        q = free(x, p1)
        return (p1 * q + 1) / ((p1 / (p2 * t + 1)) * q + 1)
    if model == 5:
        return p1 * free(x, p1) + 1
    if model == 6:
        tt = p3 * t
        e = math.exp(-p1 * x / d)
        return (x * tt + d) * (t * p2 + 1) / ((d * p2 - x * p3) * t * e + x * tt + d)
    if model == 7:
        return (p2 * t * x / d + 1) * math.exp(p1 * x / d)
    if model == 8:
        return (t * p2 + 1) / (t * p2 * math.exp(-p1 * x / d) + 1)
    if model == 9:
        return math.exp(p1 * x / d)
    if model == 10:
        e = math.exp(-p1 * x / d)
        return (t * p3 * x / d + 1) / (t * p3 * x * (1 - e) / d + 1 - p2 * t * p1 * x / d)
    if model == 11:
        return 1 / (1 - p2 * t * p1 * x / d)
    w = 1 / (p1 + 1)
    u = 1 - w
    if model == 12:
        return (t * p3 * x + 1) * (t * p2 * x + 1) / ((u * p2 + w * p3) * t * x + 1)
    return (t * p2 * x + 1) / (u * p2 * t * x + 1)


# ---- decays -----------------------------------------------------------------------------------------------------------
RATES = [1 / tau for tau in LIFETIMES[0]]


def observed(s, t):
    return sum(a * math.exp(-t / tau) for a, tau in zip(AMPLITUDES[s], LIFETIMES[s]))


def end_time(s):
    lo, hi = 0.0, 1.0
    at_lo = observed(s, lo) - LEVEL
    while True:
        mid, half = (lo + hi) / 2, (hi - lo) / 2
        g = observed(s, mid) - LEVEL
        if half <= 1e-7 or abs(g) <= 1e-7:
            return mid
        if g * at_lo < 0:
            hi = mid
        else:
            lo, at_lo = mid, g


def log10(x):
    return math.log(x) / 2.302585093 if x > 0 else 0.0


ENDS = [end_time(s) for s in range(N)]
TIME_MAX = max(10.0 ** math.floor(log10(t)) * math.floor(t / 10.0 ** math.floor(log10(t)) + 0.5) for t in ENDS)
GRID = []
time = 0.0
while time <= TIME_MAX and len(GRID) < 256:
    GRID.append(time)
    time += TIME_MAX / 50
LAST = [next((i for i, t in enumerate(GRID) if t > end), 49) for end in ENDS]
IEXP = [[observed(s, t) for t in GRID] for s in range(N)]


def poisson(t, q, p, bound, quench):
    m = p[0] * q
    total = 0.0
    for a, r in zip(AMPLITUDES[0], RATES):
        p0 = math.exp(-m)
        total += p0 * a * math.exp(-(r + quench * p0 * q) * t)
        reached, j = p0, 1
        while True:
            pj = m ** j * math.exp(-m) / math.factorial(j)
            total += pj * a * math.exp(-(r + j * p[1]) * t)
            reached += pj
            j += 1
            if m ** j >= 1e200 or reached >= bound:
                break
    return total


def intensity(model, t, q, p):
    p1, p2, p3 = p

    def e(k, r):
        return math.exp(-(RATES[k] + r) * t)

    def over(term):
        return sum(a * term(k) for k, a in enumerate(AMPLITUDES[0]))

    if model == 1:
        return over(lambda k: e(k, p1 * q))
    if model in (2, 3, 4):
        qf = free(q, p1)
        if model == 3:
            return over(lambda k: e(k, p2 * qf))
        collisions = p3 * qf if model == 2 else 0
        return over(lambda k: (e(k, collisions) + p1 * qf * e(k, p2)) / (1 + p1 * qf))
    if model in (6, 7, 8):
        p0 = math.exp(-p1 * q)
        if model == 7:
            return over(lambda k: e(k, p2 * p0 * q))
        collisions = p3 * p0 * q if model == 6 else 0
        return over(lambda k: p0 * e(k, collisions) + (1 - p0) * e(k, p2))
    if model == 10:
        return poisson(t, q, p, 0.99, p3)
    if model == 11:
        return poisson(t, q, p, 0.95, 0)
    f1 = 1 / (1 + p1)
    second = p3 if model == 12 else 0
    return f1 * e(0, p2 * q) + (1 - f1) * e(1, second * q)


# ---- engine -----------------------------------------------------------------------------------------------------------
def eliminate(a, b, n):
    """Step of the first zero pivot, 0 when solved. a and b count from 0 here, the step from 1."""
    for k in range(n - 1):
        p = max(range(k, n), key=lambda m: (abs(a[m][k]), -m))
        if a[p][k] == 0:
            return k + 1
        a[k], a[p] = a[p], a[k]
        b[k], b[p] = b[p], b[k]
        for i in range(k + 1, n):
            factor = a[i][k] / a[k][k]
            b[i] -= factor * b[k]
            for m in range(k, n):
                a[i][m] -= factor * a[k][m]
    if a[n - 1][n - 1] == 0:
        return n
    for i in range(n - 1, -1, -1):
        b[i] = (b[i] - sum(a[i][m] * b[m] for m in range(i + 1, n))) / a[i][i]
    return 0


def in_range(value, log_mode):
    if log_mode and value > 50:
        return value / 10 ** (log10(value) - 1)
    if log_mode and value < -50:
        return value / 10 ** (math.floor(4 * (log10(-value) - 1)) / 4)
    if not log_mode and abs(value) > 1e25:
        return value / 10 ** math.floor(log10(abs(value)) - 24)
    return value


def real(a, log_mode):
    values = [math.exp(v) for v in a] if log_mode else list(a)
    return values + [0.0] * (3 - len(values))


def fit(residuals, start, fixed, log_mode):
    """Parameters as held, number of updates, status. residuals: list of functions of the real parameters."""
    a = [math.log(v) for v in start] if log_mode else list(start)
    n, previous, count, status = len(a), 1.0, 0, 1
    while True:
        h = [v / 2 ** (min(count, 4) + 3) for v in a]
        normal = [[0.0] * n for _ in range(n)]
        g = [0.0] * n
        total = 0.0
        for residual in residuals:
            r = residual(real(a, log_mode))
            total += r * r
            slope = []
            for j in range(n):
                a[j] += h[j]
                shifted = residual(real(a, log_mode))
                a[j] -= h[j]
                slope.append((shifted - r) / h[j])
            for j in range(n):
                for k in range(j, n):
                    normal[j][k] += slope[j] * slope[k]
                g[j] -= r * slope[j]
        if abs(1 - total / previous) < V["tolerance"]:
            return a, count, status
        previous = total
        info = eliminate(normal, g, n)
        if info > 1:
            status = 3
            if eliminate(normal, g, info - 1) > 0:
                raise SolverFailed
        for j in range(n):
            if fixed[j]:
                continue
            if not log_mode and a[j] + g[j] <= 0:
                a[j] /= 2
            else:
                a[j] += g[j]
        a = [in_range(v, log_mode) for v in a]
        if not all(math.isfinite(v) for v in a):
            raise OverflowError
        count += 1
        if count > V["iteration"]:
            return a, count, 2


# ---- one case ---------------------------------------------------------------------------------------------------------
ERRORS = {1: "OK", 2: "not satisfied", 3: "*"}
WARNINGS = {1: "", 2: "Tolerance has not been satisfied.\r\nPlease increase the iteration.\r\n",
            3: "This fitting result may be doubltful.\r\nPlease try another initial parameters.\r\n"}


def figures(analysis, model, p):
    """R2 and the residual sum."""
    if analysis == "SV":
        fitted = [ratio(model, x, p) for x in CONC]
        squares = sum((y - f) ** 2 for y, f in zip(RATIOS, fitted))
        mean = sum(RATIOS) / N
        slots = [0.0] + RATIOS + [0.0] * (49 - N)
        return 1 - squares / sum((y - mean) ** 2 for y in slots), squares
    points = [(s, i) for s in range(N) for i in range(LAST[s] + 1)]
    squares = sum((IEXP[s][i] - intensity(model, GRID[i], CONC[s], p)) ** 2 for s, i in points)
    mean = sum(IEXP[s][i] for s, i in points) / len(points)
    return 1 - squares / sum((IEXP[s][i] - mean) ** 2 for s, i in points), squares


def report(analysis, model, p, count, status):
    r2, se = figures(analysis, model, p)
    lines = ["Model  %d" % model]
    lines += [row[1] + "\t" + pattern_text(v, "#.###e+##") for row, v in zip(MODELS[model], p)]
    lines += ["Exe num. :  %d" % count, "R2\t" + pattern_text(r2, "0.#####"), "Se\t" + pattern_text(se, "####0.00#")]
    return "\r\n".join(lines) + "\r\n" + WARNINGS[status]


def result_row(analysis, model, p, status):
    row = [analysis if analysis == "SV" else "Decay", " %d" % model] + [""] * 7
    for (box, label, column), value in zip(MODELS[model], p):
        row[column] = pattern_text(value, "#.###e+##")
    row[6] = pattern_text(figures(analysis, model, p)[1], "####0.###")
    row[7] = ERRORS[status]
    if model in WITH_RADIUS:
        volume = V["s"] ** 3 + 3 * p[0] / 7.567461992
        row[8] = pattern_text(volume ** (1 / 3) if volume > 0 else 0, "##.##")
    return row


def axis_step(span):
    step = 10.0 ** math.floor(log10(span))
    return 2 * step if span / step > 5 else step


def hue(h, m1, m2):
    h = (h + 192) % 192
    if h < 32:
        return round(m1 + (m2 - m1) * h / 32)
    if h < 96:
        return m2
    return m1 if h >= 128 else round(m1 + (m2 - m1) * (128 - h) / 32)


def color(sample, depth):
    h, light = round(144 / N * sample + 48), sample + depth
    m2 = round(light + light - light * light / 32) if light > 16 else round((light + 32) * light / 32)
    m1 = 2 * light - m2
    return "#" + "".join("%02x" % min(255, 8 * hue(h + shift, m1, m2)) for shift in (64, -64, 0))


def marks(points, view, rgb):
    """Points as fractions of the picture's width and height, those within it; at most about ten of them."""
    x1, y1, x2, y2 = view
    inside = [(round((x - x1) / (x2 - x1), 4), round((y - y1) / (y2 - y1), 4)) for x, y in points]
    inside = [p for p in inside if 0.01 < p[0] < 0.99 and 0.01 < p[1] < 0.99]
    return [[x, y, rgb] for x, y in inside[::max(1, len(inside) // 10)]]


def sv_output(model, p):
    x_max, y_max = max(CONC), max(RATIOS)
    view = (-x_max / 5, 1.1 * y_max, 1.1 * x_max, -y_max / 2)
    curve = [(x_max / 20 * i, ratio(model, x_max / 20 * i, p)) for i in range(22)]
    step = axis_step(x_max / 10)
    last = round(x_max / step)  # the greatest concentration is a whole number of steps and has a row
    rows = [[last + 2, 0, ""]]
    for i in range(last + 1):
        rows += [[i + 1, 0, pattern_text(step * i, "#.###e+#")],
                 [i + 1, 1, pattern_text(ratio(model, step * i, p), "#.###e+#")]]
    red = "#ff0000"
    return rows, {"GraphWindow2": marks(zip(CONC, RATIOS), view, red) + marks(curve, view, red)}


def decay_table(logs):
    """Some rows of the table of decays that logs(sample, time index) gives."""
    rows = [[0, s + 1, pattern_text(CONC[s], "0.#####")] for s in range(N)] + [[0, N + 1, ""], [51, 0, ""]]
    for j in (0, 1, 12, 37, 49):
        rows.append([j + 1, 0, pattern_text(GRID[j] * 1e9, "####0.##")])
        rows += [[j + 1, s + 1, pattern_text(10 ** logs(s, j), "0.###e+#")] for s in range(N)]
    return rows


def decay_output(model, p):
    shown = LAST[0]
    logs = [[log10(intensity(model, t, q, p)) for t in GRID[:shown]] for q in CONC]
    rows = decay_table(lambda s, j: logs[s][j] if 1 <= j < shown else 0.0)
    start = -TIME_MAX / 10
    curves = (start, 0.0, TIME_MAX, log10(LEVEL))
    percent = (start, 100.0, TIME_MAX, -100.0)
    drawn, deviations = [], []
    for s in (1, N - 1):
        points = [(GRID[j], log10(IEXP[s][j])) for j in range(49)]
        drawn += marks(points, curves, color(s + 1, 16)) + marks(list(zip(GRID, logs[s]))[1:], curves, color(s + 1, 12))
        percents = [(GRID[i], 10 ** (log10(IEXP[s][i]) - logs[s][i] + 2) - 100) for i in range(1, shown)]
        deviations += marks(percents, percent, color(s + 1, 16))
    return rows, {"GraphWindow1": drawn, "GraphWindow2": deviations}


def case(analysis, model, log_mode, fixed, command):
    """fixed: both "Fix" boxes are ticked."""
    parameters = MODELS[model]
    start = [V[box] for box, _, _ in parameters]
    flags = [fixed and box in ("kq2", "F") and not (analysis == "Decay" and model in (2, 6, 10) and box == "kq2")
             for box, _, _ in parameters]
    expected = {"analysis": analysis, "model": model, "logMode": log_mode, "fixed": int(fixed), "command": command}
    value = (lambda s, i: (lambda p: ratio(model, CONC[s], p) - RATIOS[s])) if analysis == "SV" else (
        lambda s, i: (lambda p: intensity(model, GRID[i], CONC[s], p) - IEXP[s][i]))
    points = [(s, 0) for s in range(N)] if analysis == "SV" else [(s, i) for s in range(1, N) for i in range(LAST[s] + 1)]
    try:
        held, count, status = [math.log(v) for v in start] if log_mode else start, 0, 1
        if "Analysis" in command:
            held, count, status = fit([value(s, i) for s, i in points], start, flags, log_mode)
        p = real(held, log_mode)
        expected["report"] = report(analysis, model, p, count, status)
        expected["row"] = result_row(analysis, model, p, status) if "Analysis" in command else [""] * 9
        expected["table"], expected["plots"] = (sv_output if analysis == "SV" else decay_output)(model, p)
        expected["messages"] = []
    except (ZeroDivisionError, OverflowError, ValueError):
        expected["messages"] = [FAULT]
    except SolverFailed:
        expected["messages"] = [SOLVER]
    return expected


def sensible_case(*arguments):
    """The case with the first iteration limit whose printed figures are those of slightly different arithmetic, too.

    Far from a minimum, or where a constant has no influence, a fit makes any difference of the last digit large.
    """
    exact = [list(curve) for curve in IEXP], list(RATIOS)
    for limit in LIMITS:
        V["iteration"] = limit
        outcomes = []
        for seed in range(5):
            noise = random.Random(seed)
            by = (lambda: 1 + noise.uniform(-1e-13, 1e-13)) if seed else (lambda: 1)
            IEXP[:] = [[y * by() for y in curve] for curve in exact[0]]
            RATIOS[1:] = [y * by() for y in exact[1][1:]]
            outcomes.append(case(*arguments))
        IEXP[:], RATIOS[:] = exact
        texts = [[o.get(part) for part in ("messages", "report", "row", "table")] for o in outcomes]
        if all(t == texts[0] for t in texts):
            return outcomes[0] | {"iteration": str(limit)}
    raise RuntimeError("no limit suits %s" % (arguments,))


def main():
    print('{"samples": %s,' % json.dumps(SAMPLES))
    print('"typed": %s,' % json.dumps(TYPED))
    print('"normalized": %s,' % json.dumps(decay_table(lambda s, j: log10(IEXP[s][j]))))
    print('"cases": [')
    cases = []
    for analysis, fitting, calculating in (("SV", "mnuSternVolmerAnalysis", "mnuCalcSternVolmer"),
                                           ("Decay", "mnuDecayCurveAnalysis", "mnuCalcDecayCurve")):
        for model in MODELS:
            if analysis == "Decay" and model in (5, 9):
                text = "Model %d cannot be analyzed with decay curves." % model
                cases += [{"analysis": analysis, "model": model, "logMode": 1, "fixed": 0, "command": command,
                           "iteration": "1", "messages": [text]} for command in (fitting, calculating)]
                continue
            cases += [sensible_case(analysis, model, mode, False, command)
                      for mode in (0, 1) for command in (calculating, fitting)]
            if any(box in ("kq2", "F") for box, _, _ in MODELS[model]):
                cases += [sensible_case(analysis, model, mode, True, fitting) for mode in (0, 1)]
    print(",\n".join(json.dumps(c, ensure_ascii=False) for c in cases))
    print("]}")


if __name__ == "__main__":
    main()
