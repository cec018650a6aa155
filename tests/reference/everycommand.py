#!/usr/bin/env python3
"""Expected outcomes of every command with every model, for tests/app/tst_everycommand.cpp.

Works them out a second time: the laws, the engine, the statistics, the number patterns and the charts are written here
straight from their formulas, point by point and in plain Python, and share nothing with the program. Writes one case a
line. Run it again after a change of a required figure:

    tests/reference/everycommand.py > tests/reference/everycommand.json
"""
import copy
import json
import math
import random
from decimal import Decimal, ROUND_HALF_UP

# The typed texts: concentration in M, components, two pairs of amplitude and lifetime in ns, intensity. Both lifetimes
# are some ten microseconds and shorten with the quencher; the intensities fall faster than the lifetimes.
SAMPLES = [
    ["0", "2", "0.4", "24000", "0.6", "57000", "", "", "100"],
    ["0.002", "2", "0.9", "22000", "1.1", "51000", "", "", "88.2"],
    ["0.005", "2", "0.5", "19800", "0.5", "45100", "", "", "75.1"],
    ["0.01", "2", "0.55", "16500", "0.45", "37000", "", "", "61.4"],
    ["0.02", "2", "0.6", "12500", "0.4", "28600", "", "", "42.9"],
]
TYPED = {"K": "20", "F": "0.4", "kq1": "3e5", "kq2": "8e5", "Cp": "2e-3", "s": "0.82",
         "tolerance": "0.0001"}
LIMITS = (40, 15, 6, 3, 1, 0)  # of iterations: the first limit at which rounding changes no printed figure is used
LEVEL = 0.0001  # of the fit region "All"

# The sheets of the sequence, from the longest to the shortest; three digits cannot hold their amplitudes.
SHEETS = [
    [["%g" % q, "3", "5", "%.6g" % (52000 / (1 + 50 * q)), "3", "%.6g" % (25000 / (1 + 40 * q)), "4",
      "%.6g" % (9000 / (1 + 30 * q)), "%.4g" % (90 / (1 + 70 * q))]
      for q in (0, 0.001, 0.002, 0.004, 0.006, 0.008, 0.012, 0.016, 0.02)],
    SAMPLES,
    [["0", "1", "3", "48000", "", "", "", "", "7.5"], ["0.008", "1", "2.5", "34000", "", "", "", "", "4.1"],
     ["0.016", "1", "2", "27100", "", "", "", "", "2.6"]],
]
# The text that the sequence types in log mode where other runs type a positive number: it has no logarithm, so the
# parameter starts from the old value of its slot.
WITHOUT_LOGARITHM = {2: {"kq1": "0"}, 4: {"K": "-5"}, 6: {"kq1": ""}, 8: {"kq1": "none"}, 9: {"K": "0"},
                     12: {"kq2": "-8e5"}, 13: {"F": "0"}}

# Fitted parameters in order: (box, report label, column of the results table, getter). "fix" boxes: kq2 and F.
K, F = ("K", "K :", 2, "K"), ("F", "F :", 2, "F")
KQ1, KQ2 = ("kq1", "kq1 :", 3, "kq1"), ("kq2", "kq2 :", 4, "kq2")
SITE1, SITE2 = ("kq1", "kq1 :", 4, "kq2"), ("kq2", "kq2 :", 5, "kq22")
MODELS = {1: [KQ2], 2: [K, KQ1, KQ2], 3: [K, KQ2], 4: [K, KQ1], 5: [K], 6: [K, KQ1, KQ2], 7: [K, KQ2], 8: [K, KQ1],
          9: [K], 10: [K, KQ1, KQ2], 11: [K, KQ1], 12: [F, SITE1, SITE2], 13: [F, SITE1]}
WITH_RADIUS = (6, 7, 8, 9, 10, 11)
WITHOUT_DECAY_LAW = (5, 9)
FITTING = {"SV": "mnuSternVolmerAnalysis", "Decay": "mnuDecayCurveAnalysis"}
CALCULATING = {"SV": "mnuCalcSternVolmer", "Decay": "mnuCalcDecayCurve"}

FAULT = "The Gauss-Newton calculation stopped with an arithmetic error.\r\nPlease change the initial values and run again."
SOLVER = "Gauss-Newton法でエラーが起こりました\r\n初期値を変えて実行してみてください"


# ---- number texts -----------------------------------------------------------------------------------------------------
def number(text):
    """The number in a box or a cell; the texts used here are numbers or contain no number."""
    try:
        return float(text)
    except ValueError:
        return 0.0


def fifteen(value):
    return Decimal("%.14e" % value)


def rounded(number, decimals):
    return number.quantize(Decimal(1).scaleb(-decimals), ROUND_HALF_UP)


def decimals_text(digits, places, pattern):
    """Integer and decimal digits of a rounded number; trailing zeros are dropped down to the last required digit."""
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
class Ratios:
    """The Stern-Volmer data of a sheet: concentrations, ratios and the mean lifetime without quencher."""

    def __init__(self, sheet, blur):
        self.conc = [float(s[0]) for s in sheet]
        self.ratios = [1.0] + [float(sheet[0][8]) / float(s[8]) * blur() for s in sheet[1:]]
        components = [(float(sheet[0][2 * k + 2]), float(sheet[0][2 * k + 3]) / 1e9) for k in range(int(sheet[0][1]))]
        self.tau0 = sum(a * t for a, t in components) / sum(a for a, t in components)


def free(x, k, cp):
    b = 1 - x * k + cp * k
    return (-b + math.sqrt(b ** 2 + 4 * x * k)) / (2 * k)


def ratio(model, x, p, t, cp):
    """t: lifetime without quencher."""
    p1, p2, p3 = p
    d = cp * p1 + 1
    if model == 1:
        return p1 * t * x + 1
    if model == 2:
        q = free(x, p1, cp)
        return (t * p3 * q + 1) * (p1 * q + 1) / ((p1 / (p2 * t + 1)) * q * (t * p3 * q + 1) + 1)
    if model == 3:
        q = free(x, p1, cp)
        return (p2 * t * q + 1) * (p1 * q + 1)
    if model == 4:
        q = free(x, p1, cp)
        return (p1 * q + 1) / ((p1 / (p2 * t + 1)) * q + 1)
    if model == 5:
        return p1 * free(x, p1, cp) + 1
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
def log10(x):
    return math.log(x) / 2.302585093 if x > 0 else 0.0


class Decays:
    """The normalised data of a sheet: the observed decays on the common time grid."""

    def __init__(self, sheet, blur):
        self.conc = [float(s[0]) for s in sheet]
        self.amplitudes, self.lifetimes = [], []
        for s in sheet:
            count = int(s[1])
            total = sum(float(s[2 * k + 2]) for k in range(count))
            self.amplitudes.append([float(s[2 * k + 2]) / total for k in range(count)])
            self.lifetimes.append([float(s[2 * k + 3]) / 1e9 for k in range(count)])
        self.rates = [1 / tau for tau in self.lifetimes[0]]
        ends = [self.end_time(s) for s in range(len(sheet))]
        self.time_max = max(10.0 ** math.floor(log10(t)) * math.floor(t / 10.0 ** math.floor(log10(t)) + 0.5)
                            for t in ends)
        self.grid = []
        time = 0.0
        while time <= self.time_max and len(self.grid) < 256:
            self.grid.append(time)
            time += self.time_max / 50
        self.last = [next((i for i, t in enumerate(self.grid) if t > end), 49) for end in ends]
        self.observed = [[self.intensity_of(s, t) * blur() for t in self.grid] for s in range(len(sheet))]

    def intensity_of(self, s, t):
        return sum(a * math.exp(-t / tau) for a, tau in zip(self.amplitudes[s], self.lifetimes[s]))

    def end_time(self, s):
        lo, hi = 0.0, 1.0
        at_lo = self.intensity_of(s, lo) - LEVEL
        while True:
            mid, half = (lo + hi) / 2, (hi - lo) / 2
            g = self.intensity_of(s, mid) - LEVEL
            if half <= 1e-7 or abs(g) <= 1e-7:
                return mid
            if g * at_lo < 0:
                hi = mid
            else:
                lo, at_lo = mid, g


def factorial(j):
    product = 1.0
    for i in range(2, j + 1):
        product *= i
    return product


def poisson(t, q, p, data, bound, quench):
    m = p[0] * q
    total = 0.0
    for a, r in zip(data.amplitudes[0], data.rates):
        p0 = math.exp(-m)
        total += p0 * a * math.exp(-(r + quench * p0 * q) * t)
        reached, j = p0, 1
        while True:
            pj = m ** j * math.exp(-m) / factorial(j)
            total += pj * a * math.exp(-(r + j * p[1]) * t)
            reached += pj
            j += 1
            if m ** j >= 1e200 or reached >= bound:
                break
    return total


def intensity(model, t, q, p, data, cp):
    p1, p2, p3 = p

    def e(k, r):
        return math.exp(-(data.rates[k] + r) * t)

    def over(term):
        return sum(a * term(k) for k, a in enumerate(data.amplitudes[0]))

    if model == 1:
        return over(lambda k: e(k, p1 * q))
    if model in (2, 3, 4):
        qf = free(q, p1, cp)
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
        return poisson(t, q, p, data, 0.99, p3)
    if model == 11:
        return poisson(t, q, p, data, 0.95, 0)
    f1 = 1 / (1 + p1)
    second = p3 if model == 12 else 0
    if len(data.rates) == 3:
        return 0.0
    return f1 * e(0, p2 * q) + (1 - f1) * e(-1, second * q)


# ---- engine -----------------------------------------------------------------------------------------------------------
def eliminate(a, b, n):
    """Step of the first zero pivot, 0 if solved. Indices of a and b start at 0, the step at 1."""
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


class Fault(Exception):
    """A number that is infinite or undefined."""


def fit(residuals, held, n, fixed, log_mode, unit_step, tolerance, limit):
    """Returns parameters as held, number of updates, status, whether the solver failed. Slots beyond n do not change.
    unit_step: a parameter that is 0 gets the derivative step of 1."""
    a, previous, count, status = list(held), 1.0, 0, 1

    def real():
        return [math.exp(v) if log_mode else v for v in a[:n]] + [0.0] * (3 - n)

    while True:
        h = [(1 if v == 0 and unit_step else v) / 2 ** (min(count, 4) + 3) for v in a[:n]]
        normal = [[0.0] * n for _ in range(n)]
        g = [0.0] * n
        total = 0.0
        for residual in residuals:
            r = residual(real())
            total += r * r
            slope = []
            for j in range(n):
                a[j] += h[j]
                shifted = residual(real())
                a[j] -= h[j]
                slope.append((shifted - r) / h[j])
            for j in range(n):
                for k in range(j, n):
                    normal[j][k] += slope[j] * slope[k]
                g[j] -= r * slope[j]
        if not all(map(math.isfinite, [total] + g + sum(normal, []))):
            raise Fault
        if abs(1 - total / previous) < tolerance:
            return a, count, status, False
        previous = total
        info = eliminate(normal, g, n)
        if info > 1:
            status = 3
            if eliminate(normal, g, info - 1) > 0:
                return a, count, status, True
        for j in range(n):
            if fixed[j]:
                continue
            if not log_mode and a[j] + g[j] <= 0:
                a[j] /= 2
            else:
                a[j] += g[j]
        a[:n] = [in_range(v, log_mode) for v in a[:n]]
        if not all(map(math.isfinite, a[:n])):
            raise Fault
        count += 1
        if count > limit:
            return a, count, 2, False


# ---- the program ------------------------------------------------------------------------------------------------------
ERRORS = {1: "OK", 2: "not satisfied", 3: "*"}
WARNINGS = {1: "", 2: "Tolerance has not been satisfied.\r\nPlease increase the iteration.\r\n",
            3: "This fitting result may be doubltful.\r\nPlease try another initial parameters.\r\n"}
CONSTANT = "#.###e+##"


class Analyzer:
    """The state that an analyzer window keeps from run to run."""

    def __init__(self, analysis):
        self.analysis = analysis
        self.a = [0.0] * 3  # as held, logarithms in log mode; None: undefined after a fault
        self.getters = dict.fromkeys(("K", "F", "kq1", "kq2", "kq22"), 0.0)
        self.ratios = [0.0] * 101  # a shorter sheet does not clear the ratios behind its own

    def configure(self, run):
        self.run, self.parameters = run, MODELS[run["model"]]
        self.n, self.count, self.status = len(self.parameters), 0, 1
        start = [run["typed"][box] for box, _, _, _ in self.parameters] + [0.0] * (3 - self.n)
        for j, value in enumerate(start):
            if not run["logMode"]:
                self.a[j] = value
            elif value > 0:
                self.a[j] = math.log(value)
        if None in self.a[:self.n]:
            raise RuntimeError("the outcome depends on what a fault has left: %s" % run)

    def take(self, data):
        self.data = data
        if self.analysis == "SV":
            self.ratios[1:len(data.ratios) + 1] = data.ratios

    def value(self, s, i, p):
        """Model value of a sample, for decays at a time index."""
        model, cp = self.run["model"], self.run["typed"]["Cp"]
        if self.analysis == "SV":
            return ratio(model, self.data.conc[s], p, self.data.tau0, cp)
        return intensity(model, self.data.grid[i], self.data.conc[s], p, self.data, cp)

    def points(self, first):
        """The points of the samples from first on: (sample, time index, observed value)."""
        samples = range(first, len(self.data.conc))
        if self.analysis == "SV":
            return [(s, 0, self.data.ratios[s]) for s in samples]
        return [(s, i, self.data.observed[s][i]) for s in samples for i in range(self.data.last[s] + 1)]

    def fixed(self):
        free_in_decays = self.analysis == "Decay" and self.run["model"] in (2, 6, 10)
        return [self.run["fixed"] and (box == "F" or box == "kq2" and not free_in_decays)
                for box, _, _, _ in self.parameters]

    def fit(self):
        """Whether the solver failed."""
        residuals = [lambda p, s=s, i=i, y=y: self.value(s, i, p) - y
                     for s, i, y in self.points(0 if self.analysis == "SV" else 1)]
        held, self.a = self.a, [None] * 3
        self.a, self.count, self.status, failed = fit(
            residuals, held, self.n, self.fixed(), self.run["logMode"], self.analysis == "Decay",
            self.run["typed"]["tolerance"], self.run["iteration"])
        return failed

    def real(self):
        return [math.exp(v) if self.run["logMode"] else v for v in self.a[:self.n]] + [0.0] * (3 - self.n)

    def figures(self):
        """R2 and the residual sum."""
        p, points = self.real(), self.points(0)
        squares = sum((y - self.value(s, i, p)) ** 2 for s, i, y in points)
        mean = sum(y for _, _, y in points) / len(points)
        observed = self.ratios[:50] if self.analysis == "SV" else [y for _, _, y in points]
        return 1 - squares / sum((y - mean) ** 2 for y in observed), squares

    def report(self):
        r2, se = self.figures()
        lines = ["Model  %d" % self.run["model"]]
        for (_, label, _, getter), value in zip(self.parameters, self.real()):
            self.getters[getter] = value
            lines.append(label + "\t" + pattern_text(value, CONSTANT))
        lines += ["Exe num. :  %d" % self.count, "R2\t" + pattern_text(r2, "0.#####"),
                  "Se\t" + pattern_text(se, "####0.00#")]
        return "\r\n".join(lines) + "\r\n" + WARNINGS[self.status]

    def record(self, before):
        """The stored result. Columns 2 to 5 and 8 that the model does not report keep the old values of the record."""
        values = dict(before["values"])
        for (_, _, column, _), value in zip(self.parameters, self.real()):
            values[column] = value
        if self.run["model"] in WITH_RADIUS:
            volume = self.run["typed"]["s"] ** 3 + 3 * self.real()[0] / 7.567461992
            values[8] = volume ** (1 / 3) if volume > 0 else 0.0
        columns = [column for _, _, column, _ in self.parameters] + [8] * (self.run["model"] in WITH_RADIUS)
        row = [self.analysis, " %d" % self.run["model"]] + [""] * 7
        for column in columns:
            row[column] = pattern_text(values[column], "##.##" if column == 8 else CONSTANT)
        row[6] = pattern_text(self.figures()[1], "####0.###")
        row[7] = ERRORS[self.status]
        return {"values": values, "row": row}


class Program:
    """The state that the program keeps between commands. blur() differs from 1 by the rounding of other arithmetic."""

    def __init__(self, seed=0):
        noise = random.Random(seed)
        self.blur = (lambda: 1 + noise.uniform(-1e-13, 1e-13)) if seed else (lambda: 1)
        self.analyzers = {"SV": Analyzer("SV"), "Decay": Analyzer("Decay")}
        self.records = [{"values": {2: 0.0, 3: 0.0, 4: 0.0, 5: 0.0, 8: 0.0}, "row": [""] * 9} for _ in range(21)]
        self.cursor = 1
        self.shown = []

    def fill(self, samples):
        self.sheet = [list(sample) for sample in samples]

    def normalize(self):
        self.decays = Decays(self.sheet, self.blur)
        for column, amplitudes in zip(self.sheet, self.decays.amplitudes):
            for k, amplitude in enumerate(amplitudes):
                column[2 * k + 2] = pattern_text(amplitude, "#.###")

    def do(self, analysis, fitting, run):
        """The outcome of an analysis or a calculation."""
        if analysis == "Decay" and run["model"] in WITHOUT_DECAY_LAW:
            return {"messages": ["Model %d cannot be analyzed with decay curves." % run["model"]]}
        analyzer = self.analyzers[analysis]
        analyzer.configure(run)
        analyzer.take(Ratios(self.sheet, self.blur) if analysis == "SV" else self.decays)
        try:
            failed = fitting and analyzer.fit()
            outcome = {"messages": [SOLVER] * failed, "report": analyzer.report(), "row": [""] * 9}
            record = analyzer.record(self.records[self.cursor])
            outcome["table"], outcome["plots"] = (sv_output if analysis == "SV" else decay_output)(analyzer)
        except (Fault, ZeroDivisionError, OverflowError, ValueError):
            return {"messages": [FAULT]}
        self.shown = self.showing(analyzer, fitting, outcome["table"])
        if fitting:
            outcome["row"] = record["row"]
            self.records[self.cursor] = record
            outcome["stored"] = self.cursor
            outcome["record"] = [pattern_text(v, CONSTANT) for v in record["values"].values()]
            self.cursor = self.cursor % 20 + 1
        return outcome

    def showing(self, analyzer, fitting, table):
        """Captions of table and plot, rows of the table and the number of its filled cells."""
        if analyzer.analysis == "SV":
            return ["Stern-Volmer (Fitting)", "Stern-Volmer Plot", "100", str(sum(1 for cell in table if cell[2]))]
        cells = 50 + 51 * len(analyzer.data.conc)
        return ["Decay Curve (%s)" % ("Fitting" if fitting else "Calculation"), "Deviation from fitting curves(%)",
                "51", str(cells)]

    def left(self):
        """The return values of the getters of both analyzers."""
        return [pattern_text(value, CONSTANT) for a in self.analyzers.values() for value in a.getters.values()]


# ---- tables and plots -------------------------------------------------------------------------------------------------
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


def color(sample, depth, count):
    h, light = round(144 / count * sample + 48), sample + depth
    m2 = round(light + light - light * light / 32) if light > 16 else round((light + 32) * light / 32)
    m1 = 2 * light - m2
    return "#" + "".join("%02x" % min(255, 8 * hue(h + shift, m1, m2)) for shift in (64, -64, 0))


def marks(points, view, rgb):
    """Points within the picture, as fractions of its width and height; at most about ten."""
    x1, y1, x2, y2 = view
    inside = [(round((x - x1) / (x2 - x1), 4), round((y - y1) / (y2 - y1), 4)) for x, y in points]
    inside = [p for p in inside if 0.01 < p[0] < 0.99 and 0.01 < p[1] < 0.99]
    return [[x, y, rgb] for x, y in inside[::max(1, len(inside) // 10)]]


def sv_output(analyzer):
    data, p = analyzer.data, analyzer.real()

    def fitted(x):
        return ratio(analyzer.run["model"], x, p, data.tau0, analyzer.run["typed"]["Cp"])

    x_max, y_max = max(data.conc), max(data.ratios)
    view = (-x_max / 5, 1.1 * y_max, 1.1 * x_max, -y_max / 2)
    curve = [(x_max / 20 * i, fitted(x_max / 20 * i)) for i in range(22)]
    step = axis_step(x_max / 10)
    last = round(x_max / step)  # the largest concentration is a whole number of steps, so it has a row
    rows = [[last + 2, 0, ""]]
    for i in range(last + 1):
        rows += [[i + 1, 0, pattern_text(step * i, "#.###e+#")],
                 [i + 1, 1, pattern_text(fitted(step * i), "#.###e+#")]]
    red = "#ff0000"
    return rows, {"GraphWindow2": marks(zip(data.conc, data.ratios), view, red) + marks(curve, view, red)}


def decay_table(data, logs):
    """Some rows of the table of the decays logs(sample, time index)."""
    samples = range(len(data.conc))
    rows = [[0, s + 1, pattern_text(data.conc[s], "0.#####")] for s in samples]
    rows += [[0, len(samples) + 1, ""], [51, 0, ""]]
    for j in (0, 1, 12, 37, 49):
        rows.append([j + 1, 0, pattern_text(data.grid[j] * 1e9, "####0.##")])
        rows += [[j + 1, s + 1, pattern_text(10 ** logs(s, j), "0.###e+#")] for s in samples]
    return rows


def normalized_table(data):
    return decay_table(data, lambda s, j: log10(data.observed[s][j]))


def decay_output(analyzer):
    data, p, model = analyzer.data, analyzer.real(), analyzer.run["model"]
    shown, samples = data.last[0], len(data.conc)
    logs = [[log10(intensity(model, t, q, p, data, analyzer.run["typed"]["Cp"])) for t in data.grid[:shown]]
            for q in data.conc]
    rows = decay_table(data, lambda s, j: logs[s][j] if 1 <= j < shown else 0.0)
    start = -data.time_max / 10
    curves = (start, 0.0, data.time_max, log10(LEVEL))
    percent = (start, 100.0, data.time_max, -100.0)
    drawn, deviations = [], []
    for s in (1, samples - 1):
        points = [(data.grid[j], log10(data.observed[s][j])) for j in range(49)]
        drawn += (marks(points, curves, color(s + 1, 16, samples))
                  + marks(list(zip(data.grid, logs[s]))[1:], curves, color(s + 1, 12, samples)))
        percents = [(data.grid[i], 10 ** (log10(data.observed[s][i]) - logs[s][i] + 2) - 100) for i in range(1, shown)]
        deviations += marks(percents, percent, color(s + 1, 16, samples))
    return rows, {"GraphWindow1": drawn, "GraphWindow2": deviations}


# ---- cases ------------------------------------------------------------------------------------------------------------
PRINTED = ("messages", "report", "row", "table", "record")


def sensible(programs, analysis, fitting, run):
    """The outcome with the first iteration limit at which slightly different arithmetic prints the same figures.

    Far from a minimum, or where a constant has no influence, a fit makes any difference of the last digit large. The
    programs, of which only the first calculates exactly, go on from the outcome.
    """
    for limit in LIMITS:
        trials = [copy.deepcopy(program) for program in programs]
        outcomes = [trial.do(analysis, fitting, run | {"iteration": limit}) for trial in trials]
        texts = [[outcome.get(part) for part in PRINTED] + [trial.left()] for outcome, trial in zip(outcomes, trials)]
        if all(t == texts[0] for t in texts):
            programs[:] = trials
            return outcomes[0] | {"iteration": str(limit)}
    raise RuntimeError("no limit suits %s" % run)


def chosen(model, log_mode, fixed, typed):
    """fixed: both "Fix" boxes are ticked."""
    return {"model": model, "logMode": log_mode, "fixed": int(fixed),
            "typed": {box: number(text) for box, text in typed.items()}}


def command(analysis, model, log_mode, fixed, fitting):
    return {"analysis": analysis, "model": model, "logMode": log_mode, "fixed": int(fixed),
            "command": (FITTING if fitting else CALCULATING)[analysis]}


def case(analysis, model, log_mode, fixed, fitting):
    """A command in a newly started program."""
    programs = [Program(seed) for seed in range(5)]
    for program in programs:
        program.fill(SAMPLES)
        if analysis == "Decay":
            program.normalize()
    outcome = sensible(programs, analysis, fitting, chosen(model, log_mode, fixed, TYPED))
    for part in ("stored", "record"):
        outcome.pop(part, None)
    return command(analysis, model, log_mode, fixed, fitting) | outcome


def cases():
    for analysis in FITTING:
        for model in MODELS:
            if analysis == "Decay" and model in WITHOUT_DECAY_LAW:
                yield from (case(analysis, model, 1, False, fitting) for fitting in (True, False))
                continue
            yield from (case(analysis, model, mode, False, fitting) for mode in (0, 1) for fitting in (False, True))
            if any(box in ("kq2", "F") for box, _, _, _ in MODELS[model]):
                yield from (case(analysis, model, mode, True, True) for mode in (0, 1))


def sequence():
    """All models in one program, one command after the other: long sheets before short ones, normal before log mode,
    Stern-Volmer commands between those for decays."""
    programs = [Program(seed) for seed in range(5)]
    for order, samples in enumerate(SHEETS):
        for program in programs:
            program.fill(samples)
        emptied = [[""] * 9] * (len(SHEETS[0]) - len(samples))
        new = {"sheet": samples + emptied}
        for mode in (0, 1):
            for program in programs:
                program.normalize()
            new["normalized"] = normalized_table(programs[0].decays)
            for model in MODELS:
                typed = TYPED | (WITHOUT_LOGARITHM.get(model, {}) if mode == 1 else {})
                fixed = samples is SHEETS[-1] and model % 2 == 1
                for analysis in FITTING:
                    fitting = analysis == "SV" or (model + mode + order) % 2 == 0
                    outcome = sensible(programs, analysis, fitting, chosen(model, mode, fixed, typed))
                    outcome["table"] = outcome.get("table", [])[::5]
                    yield (new | command(analysis, model, mode, fixed, fitting) | {"typed": typed} | outcome
                           | {"shown": programs[0].shown, "left": programs[0].left(), "plots": {}})
                    new = {}


def lines(objects):
    return ",\n".join(json.dumps(one, ensure_ascii=False) for one in objects)


def main():
    print('{"samples": %s,' % json.dumps(SAMPLES))
    print('"typed": %s,' % json.dumps(TYPED))
    print('"normalized": %s,' % json.dumps(normalized_table(Decays(SAMPLES, lambda: 1))))
    print('"cases": [\n%s],' % lines(cases()))
    print('"sequence": [\n%s]}' % lines(sequence()))


if __name__ == "__main__":
    main()
