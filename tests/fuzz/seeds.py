#!/usr/bin/env python3
"""Writes seeds/engine and seeds/trust from the descriptions below, in the layout of engine.cpp, trust.cpp and sheet.h.

Run it again when the layout that these files read has changed; a test fails if a seed reaches no fit.

    tests/fuzz/seeds.py
"""
import math
import pathlib
import shutil
import struct

HERE = pathlib.Path(__file__).parent

# Sheets: concentration in M, components, amplitude and lifetime in ns of three components, intensity.
TWO = [(0, 2, 0.4, 24000, 0.6, 57000, 0, 0, 100), (0.002, 2, 0.9, 22000, 1.1, 51000, 0, 0, 88.2),
       (0.005, 2, 0.5, 19800, 0.5, 45100, 0, 0, 75.1), (0.01, 2, 0.55, 16500, 0.45, 37000, 0, 0, 61.4),
       (0.02, 2, 0.6, 12500, 0.4, 28600, 0, 0, 42.9)]
ONE = [(0, 1, 1, 17.6, 0, 0, 0, 0, 180), (0.05, 1, 1, 12.4, 0, 0, 0, 0, 126), (0.1, 1, 1, 9.6, 0, 0, 0, 0, 96),
       (0.2, 1, 1, 6.6, 0, 0, 0, 0, 65)]
THREE = [(0, 3, 5, 400, 3, 150, 2, 40, 10), (0.01, 3, 5, 320, 3, 130, 2, 38, 7.5), (0.02, 3, 5, 260, 3, 110, 2, 35, 6)]
CURVED = [(x, 1, 1, 20 / (1 + 6 * x), 0, 0, 0, 0, 100 / ((1 + 6 * x) * math.exp(4 * x)))
          for x in (0, 0.05, 0.1, 0.15, 0.2, 0.25)]
LEVELLING = [(x, 1, 1, 20, 0, 0, 0, 0, 100 * (1 + 3 * x) / (1 + 12 * x)) for x in (0, 0.1, 0.2, 0.4, 0.6, 1, 2)]
EXACT = [(x, 1, 1, 10 / (1 + x), 0, 0, 0, 0, 1 / (1 + x)) for x in (0, 1, 2, 4)]
TWENTY = [TWO[0]] + [(0.001 * i,) + TWO[1][1:8] + (100 / (1 + 0.06 * i),) for i in range(1, 20)]
ALONE = TWO[:1]
UNQUENCHED = [(x,) + ONE[0][1:] for x in (0, 1, 2)]
SCATTERED = [(0.1 * i, 1, 1, 20, 0, 0, 0, 0, phi) for i, phi in enumerate((100, 120, 90, 130, 80))]
SHORT_FORMS = [(None, 1, (0, 0), (8, 194), None, None, None, None, (16, 204)),
               ((-8, 0), 1, (0, 0), (8, 61), None, None, None, None, (16, 66)),
               ((-8, 255), 1, (0, 0), (0, 255), None, None, None, None, (8, 255))]
HUGE = [(0, 1, 1e300, 24000, 0, 0, 0, 0, 1e300), (1e-300, 1, -1e300, 12000, 0, 0, 0, 0, 123456789012345678),
        (1e-4, 1, 1e-300, 1e12, 0, 0, 0, 0, 1e299)]


def changed(samples, column, row, value):
    cells = [list(sample) for sample in samples]
    cells[column][row] = value
    return cells


def number(value):
    """A number: a double, or in short form (eight times its decimal exponent, 255ths above 1), or None for zero."""
    if value is None:
        return struct.pack("<Bb", 1, 0)
    return struct.pack("<BbB", 2, *value) if isinstance(value, tuple) else struct.pack("<Bd", 0, value)


def sheet(samples):
    cells = [bytes([cell]) if row == 1 else number(cell) for column in samples for row, cell in enumerate(column)]
    return bytes([len(samples)]) + b"".join(cells)


def engine(samples, model, log_mode, start, fix=(0, 0, 0), region=2, level=1e-3, cp=2e-3, limit=30, tolerance=1e-4):
    """start: the fitted parameters in real units, 0 in log mode for the logarithm 0."""
    values = list(start) + [0] * (3 - len(start))
    parameters = [number(math.log(v) if log_mode and v > 0 else v) + bytes([f, not log_mode]) for v, f in zip(values, fix)]
    return (bytes([model, log_mode, region]) + number(level) + number(cp) + bytes([len(start) - 1, limit])
            + number(tolerance) + b"".join(parameters) + sheet(samples))


def trust(samples, model, log_mode, fix_kq2=0, fix_f=0, limit=100, kq1=3e5, kq2=8e5, k=20, f=0.4, cp=2e-3, tolerance=1e-4):
    panel = b"".join(number(v) for v in (kq1, kq2, k, f, cp, tolerance))
    return bytes([log_mode, model - 1, fix_kq2, fix_f, limit]) + panel + sheet(samples)


ENGINE = {
    "dynamic": engine(TWO, 1, 0, [8e5]),
    "complex-and-collisions": engine(TWO, 2, 1, [20, 3e5, 8e5]),
    "complex-that-shows-by-collisions": engine(TWO, 3, 0, [20, 8e5], fix=(0, 1, 0), region=1),
    "complex-of-one-component": engine(ONE, 4, 1, [5, 3e8], level=1e-4, cp=1e-5),
    "dark-complex": engine(TWO, 5, 0, [20]),
    "sphere-and-collisions": engine(TWO, 6, 1, [20, 3e5, 8e5], limit=6),
    "sphere-with-dark-complex": engine(CURVED, 7, 0, [3, 2e8], cp=1e-5),
    "sphere-of-three-components": engine(THREE, 8, 1, [20, 3e6]),
    "dark-sphere": engine(CURVED, 9, 0, [3], cp=1e-5),
    "poisson-and-collisions": engine(TWO, 10, 1, [20, 3e5, 8e5], limit=3),
    "poisson": engine(THREE, 11, 0, [20, 3e6], limit=3),
    "two-sites": engine(TWO, 12, 0, [0.4, 3e5, 8e5], fix=(1, 0, 0)),
    "two-sites-of-one-component": engine(LEVELLING, 13, 1, [0.4, 3e8], cp=1e-5),
    "code-14": engine(TWO, 14, 0, [0.4, 3e5, 8e5]),
    "code-15": engine(TWO, 15, 1, [0.4, 3e5]),
    "no-law": engine(TWO, 0, 0, [1]),
    "constant-without-influence": engine(ALONE * 2, 6, 0, [20, 3e5, 8e5]),
    "start-at-zero": engine(TWO, 6, 0, [20, 3e5, 0]),
    "limit-of-0": engine(TWO, 3, 1, [20, 8e5], limit=0),
    "far-away": engine(TWO, 12, 1, [1e-20, 1e21, 1e-21], level=0.5),
    "beyond-the-range": engine(TWO, 1, 0, [1e30]),
    "twenty-samples": engine(TWENTY, 1, 1, [8e5], limit=2),
    "short-forms": engine(SHORT_FORMS, 3, 0, [1, 1e8], level=1e-2, cp=1e-5),
    "huge-numbers": engine(HUGE, 1, 0, [1e-12], cp=1e-300),
    "below-the-range-of-logarithms": engine(TWO, 1, 1, [math.exp(-60)]),
    "overflow-in-an-exponential": engine(TWO, 8, 0, [-1000, 3e5], cp=0.99e-3, limit=2),
    "rate-that-falls": engine(TWO, 10, 0, [20, -3e4, 8e5], limit=3),
    "many-quenchers": engine(TWO, 10, 0, [1e5, 3e5, 8e5], limit=3),
    "unquenched": engine(UNQUENCHED, 2, 0, [1, 1e8, 1e6]),
    "no-quencher": engine([UNQUENCHED[0]] * 3, 1, 0, [1e6]),
    "no-intensity": engine(changed(ONE, 3, 8, 0), 1, 1, [2e8], level=1e-4),
    "reference-not-first": engine(changed(ONE, 0, 0, 1e-3), 1, 0, [2e8], region=0),
    "amplitudes-that-cancel": engine(changed(TWO, 4, 2, -0.4), 1, 0, [8e5]),
    "cut-off": engine(ONE, 13, 0, [0, 2e8])[:-5],
    "fixed-in-log-mode": engine(TWO, 12, 1, [1, 3e5, 8e5], fix=(1, 0, 1)),
    "slower-than-a-second": engine([(x, 1, 1, 3e9, 0, 0, 0, 0, 5) for x in (0, 1, 2)], 1, 0, [1]),
    "below-the-level-at-once": engine(TWO, 1, 0, [8e5], level=2),
    "undefined-level": engine(TWO, 4, 1, [20, 3e5], level=math.nan),
}
TRUST = {
    "dynamic": trust(ONE, 1, 0, kq2=2e8, cp=1e-5),
    "complex-and-collisions": trust(TWO, 2, 1),
    "complex-that-shows-by-collisions": trust(TWO, 3, 0, fix_kq2=1),
    "complex": trust(ONE, 4, 1, kq1=1e10, k=5, cp=1e-5),
    "dark-complex": trust(TWO, 5, 0),
    "sphere-and-collisions": trust(CURVED, 6, 1, kq1=1e9, kq2=2e8, k=3, cp=1e-5),
    "sphere-with-dark-complex": trust(CURVED, 7, 0, kq2=2e8, k=3, cp=1e-5),
    "sphere": trust(LEVELLING, 8, 0, kq1=1e8, k=3, cp=1e-5),
    "dark-sphere": trust(CURVED, 9, 1, k=3, cp=1e-5),
    "poisson-and-collisions": trust(TWO, 10, 0, limit=6),
    "poisson": trust(TWO, 11, 1, limit=15),
    "two-sites": trust(LEVELLING, 12, 0, fix_f=1, kq1=3e8, kq2=1e6, cp=1e-5),
    "one-quenched-site": trust(LEVELLING, 13, 1, kq1=3e8, cp=1e-5),
    "exact-data": trust(EXACT, 1, 0, kq2=1e8, tolerance=1e-12),
    "everything-fixed": trust(TWO, 1, 1, fix_kq2=1),
    "one-point": trust(ALONE, 1, 0),
    "limit-of-0": trust(TWO, 12, 1, limit=0),
    "short-forms": trust(SHORT_FORMS, 2, 0, k=(0, 0), kq1=(72, 9), kq2=(64, 100), cp=(-40, 0)),
    "scattered": trust(SCATTERED, 3, 0, kq2=1e7, k=1, cp=1e-5),
    "scattered-in-log-mode": trust(SCATTERED, 12, 1, kq1=1e7, kq2=1e9, f=1, cp=1e-5),
    "unquenched": trust(UNQUENCHED, 6, 0, k=1, kq1=1e8, kq2=1e6, cp=1e-5),
    "two-points": trust(TWO[:2], 2, 1),
    "outside-the-law": trust(TWO, 11, 0, k=2000, kq1=1e9),
    "no-probe": trust(TWO, 4, 0, cp=0),
    "overflow-in-an-exponential": trust(TWO, 8, 0, k=-1e5),
    "undefined-constant": trust(TWO, 2, 0, kq1=math.nan),
}

if __name__ == "__main__":
    for target, seeds in (("engine", ENGINE), ("trust", TRUST)):
        folder = HERE / "seeds" / target
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        for name, data in seeds.items():
            (folder / name).write_bytes(data)
