#!/usr/bin/env python3
"""drav-report against golden batch files: each case is a command line as a
user types it, then the status, standard output and standard error it must
give, byte for byte.

    golden_batch.py DRAV_REPORT SOURCE_DIR FILE.batch...

A batch file, one topic each (tests/golden/*.batch):

    # a comment, between cases
    < models.csv            a file for the commands below it, in the batch's own folder
    | model,AIC             each line of the file behind "| " ("|" alone: an empty line)
    <% cp1252.csv           the same, with printf's escapes (\\t, \\r, \\xE9) read and
                            no line end added behind the last line
    $ drav-report table models.csv
    > status 0
    > stdout                the exact lines, each behind "| "
    | rank  model ...
    > stderr
    > stdout, no line end   (instead of "> stdout" where the last line has none)

Each command runs in bash, in a fresh folder of this run and batch file (where
its files are), with drav-report
standing for the program under test, LC_ALL=C.UTF-8 and TZ=UTC. {src}
stands for the source folder and {tmp} for that folder, in commands
and in what is expected; {ANY} in an expected line matches any text (the
date of a classic report).

DRAV_UPDATE_GOLDENS=1 writes what the program gives into the files, keeping
comments, inputs, commands and {ANY} lines that still match. Read the diff
line by line before committing it: a golden changes only where the program
was meant to change.
"""
import difflib
import os
import re
import shutil
import subprocess
import sys
import tempfile

bin_path, src = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
update = os.environ.get("DRAV_UPDATE_GOLDENS") == "1"
FIELDS = ("stdout", "stderr")


def block(lines, i):
    """The "| " lines from i on, as text lines, and the index behind them."""
    out = []
    while i < len(lines) and (lines[i] == "|" or lines[i].startswith("| ")):
        out.append(lines[i][2:])
        i += 1
    return out, i


def parse(lines):
    """Cases, and each line that is no part of a case's expectation, kept for rewriting."""
    cases, kept, files, i = [], [], [], 0
    while i < len(lines):
        line = lines[i]
        if line.startswith(("< ", "<% ")):
            body, end = block(lines, i + 1)
            files.append((line.split(" ", 1)[1], body, line.startswith("<%")))
            kept.extend(lines[i:end])
            i = end
        elif line.startswith("$ "):
            case = {"line": i + 1, "command": line[2:], "files": files, "at": len(kept)}
            kept.append(line)
            files, i = [], i + 1
            if i >= len(lines) or not lines[i].startswith("> status "):
                sys.exit(f"line {i + 1}: '> status N' must follow the command")
            case["status"] = int(lines[i][9:])
            i += 1
            for field in FIELDS:
                head = lines[i] if i < len(lines) else ""
                if head not in (f"> {field}", f"> {field}, no line end"):
                    sys.exit(f"line {i + 1}: '> {field}' expected")
                case[field], i = block(lines, i + 1)
                case[field + " end"] = head == f"> {field}"
            cases.append(case)
        elif line.startswith(("|", ">")):
            sys.exit(f"line {i + 1}: no command before it")
        else:
            kept.append(line)
            i += 1
    return cases, kept


def matches(expected, actual):
    return re.fullmatch(".*".join(map(re.escape, expected.split("{ANY}"))), actual, re.S) is not None


def as_lines(text):
    """Text lines, and whether the last one ends."""
    if text == "":
        return [], True
    ends = text.endswith("\n")
    return (text[:-1] if ends else text).split("\n"), ends


def run(case, folder):
    os.makedirs(folder, exist_ok=True)
    for name, body, escaped in case["files"]:
        if escaped:
            data = subprocess.run(["bash", "-c", 'printf "%b" "$1"', "-", "\n".join(body)], capture_output=True).stdout
        else:
            data = "".join(line + "\n" for line in body).encode("utf-8", "surrogateescape")
        with open(os.path.join(folder, name), "wb") as f:
            f.write(data)
    command = case["command"].replace("{src}", src).replace("{tmp}", folder)
    script = 'drav-report() { "$DRAV_REPORT" "$@"; }\n' + command
    env = dict(os.environ, LC_ALL="C.UTF-8", TZ="UTC", DRAV_REPORT=bin_path)
    done = subprocess.run(["bash", "-c", script], cwd=folder, env=env, capture_output=True,
                          stdin=subprocess.DEVNULL, timeout=60)
    outputs = {}
    for field in FIELDS:
        text = getattr(done, field).decode("utf-8", "surrogateescape")
        outputs[field] = text.replace(folder, "{tmp}").replace(src, "{src}")
    return done.returncode, outputs


def check(path, tmp):
    with open(path, encoding="utf-8", errors="surrogateescape") as f:
        lines = f.read().split("\n")
    if lines and lines[-1] == "":
        lines.pop()
    cases, kept = parse(lines)
    passed, failed, written = 0, 0, {}
    for case in cases:
        status, outputs = run(case, tmp)
        problems = []
        if status != case["status"]:
            problems.append(f"status {status}, not {case['status']}")
        rewritten = [f"> status {status}"]
        for field in FIELDS:
            actual, ends = as_lines(outputs[field])
            expected = case[field]
            same = ends == case[field + " end"] and len(actual) == len(expected) and all(
                matches(e, a) for e, a in zip(expected, actual))
            if not same:
                diff = difflib.unified_diff(expected, actual, "expected", "actual", lineterm="")
                problems.append(f"{field} differs:\n" + "\n".join(diff) + ("" if ends else "\n(no line end at the end)"))
            # An expected line with {ANY} that still matches stays as written.
            keep = [e if i < len(expected) and "{ANY}" in e and matches(e, a) else a
                    for i, (e, a) in enumerate(zip(expected + [""] * len(actual), actual))]
            rewritten.append(f"> {field}" + ("" if ends else ", no line end"))
            rewritten.extend("| " + line if line else "|" for line in keep)
        written[case["at"]] = rewritten
        if problems:
            failed += 1
            print(f"FAIL {os.path.basename(path)}:{case['line']}: $ {case['command']}")
            for problem in problems:
                print("  " + problem.replace("\n", "\n  "))
        else:
            passed += 1
    if update:
        with open(path, "w", encoding="utf-8", errors="surrogateescape") as f:
            for i, line in enumerate(kept):
                f.write(line + "\n")
                f.writelines(r + "\n" for r in written.get(i, []))
    return passed, failed


def main():
    tmp = tempfile.mkdtemp(prefix="drav-golden.")
    try:
        passed = failed = 0
        for path in sys.argv[3:]:
            p, f = check(path, os.path.join(tmp, os.path.basename(path)))
            passed, failed = passed + p, failed + f
    finally:
        shutil.rmtree(tmp, ignore_errors=True)
    print(f"{passed} passed, {failed} failed")
    return 1 if failed or not passed else 0


sys.exit(main())
