#!/usr/bin/env python3
"""Importance and model-averaged coefficients read from printed outputs,
held to the programs' own fits.

Each folder of tests/golden/fits/averaging is one model set as R or
statsmodels printed it, with expected.tsv beside it: every term's
importance and averages computed from the fits themselves (coef(), vcov(),
logLik(); params, bse, llf) by make-averaging-sets.sh. drav-report reads
only the printed text, whose digits bound how close it can come: summary()
prints a glm's AIC to 0.01 and its estimates to 4-5 significant digits,
statsmodels its log-likelihood to 5 and its SEs to 0.001, lme4 its deviance to 0.1 (which moves
a weight by a few per cent). So each set has its own tolerance, relative to
the larger of the number and the term's SE, plus half a unit in the last
digit where estimates and SEs are printed to a fixed number of decimals;
a term wrongly named, missed, counted in the wrong model, or given the
wrong column is off by far more.
A set fitted in two programs is averaged under the names its
term-names.map gives. Where the set was also exported as a table (models.csv, tidy.csv), the
terms from the printed outputs are the same, named the same and in the same
order, as those from the export.

    fits_averages.py DRAV_REPORT SOURCE_DIR
"""
import csv
import glob
import io
import math
import os
import subprocess
import sys

# (relative, absolute): the relative part for the weights, which the
# printed likelihoods fix; the absolute one half a unit in the last digit
# of the printed estimates and SEs, which an average of them keeps.
TOLERANCE = {
    "swiss-glm": (3e-4, 0),
    "mtcars-aliased": (3e-4, 0),
    "orthodont-gls": (3e-4, 0),
    "warpbreaks-poisson": (3e-4, 0),
    "grades-logit": (2e-3, 5e-4),
    "grades-two-programs": (2e-3, 5e-4),
    "sleepstudy-lmer": (4e-2, 0),
    "holzinger-lavaan": (2e-3, 5e-4),
}
COLUMNS = ["importance", "estimate", "se", "full_estimate", "full_se"]


def number(text):
    """A cell as a number: empty (drav-report) and NA (R) are unknown."""
    return math.nan if text.strip() in ("", "NA", "nan") else float(text)


def run(drav, *args):
    done = subprocess.run([drav, *args], capture_output=True, text=True)
    if done.returncode != 0:
        raise AssertionError(f"{' '.join(args)}: status {done.returncode}: {done.stderr}")
    return list(csv.DictReader(io.StringIO(done.stdout)))


def check_set(drav, folder):
    name = os.path.basename(folder)
    outputs = sorted(p for p in glob.glob(os.path.join(folder, "*"))
                     if not p.endswith((".tsv", ".csv", ".map")))
    names = os.path.join(folder, "term-names.map")
    if os.path.exists(names):
        outputs = ["--term-names", names, *outputs]
    got = run(drav, "average", "--all", "--fits", "--no-sort", "--format", "csv", *outputs)
    with open(os.path.join(folder, "expected.tsv"), newline="") as f:
        want = {row["term"]: row for row in csv.DictReader(f, delimiter="\t")}
    faults = []
    if [r["term"] for r in got] != list(want):
        faults.append(f"terms {[r['term'] for r in got]}, expected {list(want)}")
    relative, absolute = TOLERANCE[name]
    for row in got:
        expected = want.get(row["term"])
        if not expected:
            continue
        if int(row["models"]) != int(float(expected["models"])):
            faults.append(f"{row['term']}: in {row['models']} models, expected {expected['models']}")
        scale = max(number(expected["se"]), 1e-3) if not math.isnan(number(expected["se"])) else 1e-3
        for column in COLUMNS:
            a, b = number(row[column]), number(expected[column])
            # An SE that a fixed parameter lacks is unknown in both, never a number in one.
            if math.isnan(a) != math.isnan(b) or abs(a - b) > relative * max(abs(b), scale) + absolute:
                faults.append(f"{row['term']} {column}: {a}, expected {b}")
    # One term averaged on its own is the conditional row of --all.
    term = got[-1]["term"]
    one = run(drav, "average", "--fits", "--estimate", term, "--format", "csv", *outputs)[0]
    if any(abs(number(one[c]) - number(got[-1][c])) > 1e-12 * abs(number(got[-1][c])) for c in ("estimate", "se")):
        faults.append(f"average --estimate {term}: {one['estimate']} ({one['se']}), --all says "
                      f"{got[-1]['estimate']} ({got[-1]['se']})")
    table = os.path.join(folder, "models.csv")
    if os.path.exists(table):
        exported = run(drav, "average", "--all", "--no-sort", "--format", "csv",
                       "--coefficients", os.path.join(folder, "tidy.csv"), table)
        if [(r["term"], r["models"]) for r in exported] != [(r["term"], r["models"]) for r in got]:
            faults.append("the terms differ from those of the exported table")
    return [f"{name}: {fault}" for fault in faults]


def main():
    drav, source = sys.argv[1], sys.argv[2]
    sets = sorted(glob.glob(os.path.join(source, "tests/golden/fits/averaging/*/")))
    faults = [fault for folder in sets for fault in check_set(drav, folder.rstrip("/"))]
    for fault in faults:
        print("FAIL " + fault)
    print(f"{len(sets)} sets, {len(faults)} faults")
    return 1 if faults or not sets else 0


if __name__ == "__main__":
    sys.exit(main())
