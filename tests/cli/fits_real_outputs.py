#!/usr/bin/env python3
# drav-report fits on outputs as researchers print them (tests/golden/fits/
# real, written by make-real-outputs.sh with each program's own word on
# every fit it printed beside it): each model printed is read right, missed
# (refused, or not listed), or wrong (listed with a log-likelihood, K, n or
# kind that is not the fit's, or a row that is no model's at all: numbers
# taken from the next output). Prints the count of each, file by file.
#
# Fails where a file's models are not all read as KNOWN says (a file it
# does not list: every model right): a file read wrong, or read worse or
# better than listed. The list is the state of things, so that it changes
# only with a reader, and never hides a model read wrong.
#
#   fits_real_outputs.py DRAV_REPORT REAL_DIR
import csv
import io
import math
import os
import subprocess
import sys


def number(text):
    try:
        return float(text)
    except ValueError:
        return math.nan


def truth_of(path):
    with open(path) as f:
        return [dict(row, logLik=number(row["logLik"]), k=number(row["k"]), n=number(row["n"]))
                for row in csv.DictReader(f, delimiter="\t")]


def listed(drav, sample):
    run = subprocess.run([drav, "fits", "--format", "csv", os.path.basename(sample)], cwd=os.path.dirname(sample),
                         capture_output=True, text=True, env=dict(os.environ, LC_ALL="C.UTF-8"))
    if run.returncode != 0:
        return None, run.stderr.strip()
    rows = list(csv.DictReader(io.StringIO(run.stdout)))
    return [dict(row, loglik=number(row["loglik"]), k=number(row["k"]), n=number(row["n"])) for row in rows], ""


def close(a, b, k):
    # The digits an output prints: four significant ones of an AIC at the
    # least (print() of a glm), from which the log-likelihood is derived.
    return abs(a - b) <= 0.01 + 6e-4 * (abs(b) + k)


def judge(truth, rows):
    """Each model of the truth right, missed or wrong (with why); and the
    rows that are no model's."""
    verdicts = []
    used = set()
    for t in truth:
        match = next((i for i, r in enumerate(rows) if i not in used and not math.isnan(r["loglik"])
                      and close(r["loglik"], t["logLik"], t["k"])), None)
        if match is None:
            verdicts.append(("missed", ""))
            continue
        used.add(match)
        r = rows[match]
        why = []
        if r["k"] != t["k"]:
            why.append(f"K {r['k']:g} where the fit has {t['k']:g}")
        if not math.isnan(r["n"]) and r["n"] != t["n"]:
            why.append(f"n {r['n']:g} where the fit has {t['n']:g}")
        if r["kind"] != t["kind"]:
            why.append(f"kind {r['kind']} where the fit's is {t['kind']}")
        verdicts.append(("wrong", "; ".join(why)) if why else ("right", ""))
    # A row with a likelihood that is no printed model's would be ranked.
    strays = [r for i, r in enumerate(rows) if i not in used and not math.isnan(r["loglik"])]
    return verdicts, strays


def main():
    drav, real = sys.argv[1], sys.argv[2]
    known = {}
    with open(os.path.join(real, "KNOWN")) as f:
        for line in f:
            if line.strip() and not line.startswith("#"):
                name, state = line.split()[:2]
                state = state.rstrip(":")
                known[name] = state
    totals = {"right": 0, "missed": 0, "wrong": 0}
    failures = []
    files = 0
    for name in sorted(os.listdir(real)):
        if not name.endswith(".truth"):
            continue
        stem = name[: -len(".truth")]
        samples = [s for s in os.listdir(real) if s.startswith(stem + ".") and not s.endswith(".truth")]
        for sample in samples:
            files += 1
            truth = truth_of(os.path.join(real, name))
            rows, refusal = listed(drav, os.path.join(real, sample))
            verdicts, strays = judge(truth, rows or [])
            counts = {v: sum(1 for s, _ in verdicts if s == v) for v in totals}
            counts["wrong"] += len(strays)
            for v in totals:
                totals[v] += counts[v]
            state = "wrong" if counts["wrong"] else "missed" if counts["missed"] else "right"
            notes = [why for s, why in verdicts if s == "wrong"]
            notes += [f"a row '{r['model']}' with logLik {r['loglik']:g} is no printed model's" for r in strays]
            if refusal:
                notes.append(f"refused: {refusal.splitlines()[0][:160]}")
            print(f"{sample}: {counts['right']} right, {counts['missed']} missed, {counts['wrong']} wrong"
                  + ("".join(f"\n    {n}" for n in notes)))
            expected = known.get(sample, "right")
            if state != expected:
                failures.append(f"{sample} is {state}; KNOWN says {expected}")
    models = sum(totals.values())
    share = 100.0 * totals["right"] / models if models else 0
    print(f"\n{totals['right']} of {models} models read right ({share:.0f}%), "
          f"{totals['missed']} missed, {totals['wrong']} wrong")
    for failure in failures:
        print("FAIL: " + failure)
    print(f"fits_real_outputs: {files - len(failures)} passed, {len(failures)} failed")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
