#!/usr/bin/env python3
# drav-report against golden batch files: each case is a command line as a
# user types it, then the status, standard output and standard error it
# must give, byte for byte.
#
#   golden_batch.py DRAV_REPORT SOURCE_DIR FILE.batch...
#
# A batch file holds one topic (tests/golden/*.batch):
#
#   # a comment, between cases
#   < models.csv           a file for the commands below it
#   | model,AIC            each of its lines behind "| " ("|" alone: an empty line)
#   <% cp1252.csv          the same, with printf's escapes (\t, \r, \xE9) read,
#                          and no line end added behind the last line
#   $ drav-report table models.csv
#   > status 0
#   > stdout               the exact lines, each behind "| "
#   | Rank  Model ...
#   > stderr
#
# "> stdout, no line end" (or stderr) stands where the last line has none.
# Blanks at the ends of lines count (the classic report's cells end in them).
# The commands run in bash, in a fresh folder of this run and batch file
# that holds its files, with drav-report standing for the program under
# test, LC_ALL=C.UTF-8 and TZ=UTC. {src} stands for the source folder and
# {tmp} for that folder, in commands and in what they print; {ANY} in an
# expected line matches any text (the date of a classic report).
#
# DRAV_UPDATE_GOLDENS=1 writes what the program gives into the files,
# keeping comments, files, commands and {ANY} lines that still match. Read
# the diff line by line before committing it: a golden changes only where
# the program was meant to change.
import difflib
import os
import re
import shutil
import subprocess
import sys
import tempfile

FIELDS = ("stdout", "stderr")


def block(lines, i):
    """The "| " lines from i on as text, and the index behind them."""
    end = i
    while end < len(lines) and (lines[end] == "|" or lines[end].startswith("| ")):
        end += 1
    return [line[2:] for line in lines[i:end]], end


def parse(lines):
    """The cases, and the lines to keep when the file is written anew."""
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
            case["status"], i = int(lines[i][9:]), i + 1
            for field in FIELDS:
                head = lines[i] if i < len(lines) else ""
                if head not in (f"> {field}", f"> {field}, no line end"):
                    sys.exit(f"line {i + 1}: '> {field}' expected")
                case[field + " ends"] = head == f"> {field}"
                case[field], i = block(lines, i + 1)
            cases.append(case)
        elif line.startswith(("|", ">")):
            sys.exit(f"line {i + 1}: no command before it")
        else:
            kept.append(line)
            i += 1
    return cases, kept


def matches(expected, actual):
    return re.fullmatch(".*".join(map(re.escape, expected.split("{ANY}"))), actual, re.S) is not None


def run(case, folder, program, src):
    for name, body, escaped in case["files"]:
        if escaped:
            data = subprocess.run(["bash", "-c", 'printf "%b" "$1"', "-", "\n".join(body)], capture_output=True).stdout
        else:
            data = "".join(line + "\n" for line in body).encode("utf-8", "surrogateescape")
        with open(os.path.join(folder, name), "wb") as f:
            f.write(data)
    script = 'drav-report() { "$DRAV_REPORT" "$@"; }\n' + case["command"].replace("{src}", src).replace("{tmp}", folder)
    env = dict(os.environ, LC_ALL="C.UTF-8", TZ="UTC", DRAV_REPORT=program)
    done = subprocess.run(["bash", "-c", script], cwd=folder, env=env, capture_output=True,
                          stdin=subprocess.DEVNULL, timeout=60)
    texts = [getattr(done, field).decode("utf-8", "surrogateescape") for field in FIELDS]
    return done.returncode, [text.replace(folder, "{tmp}").replace(src, "{src}") for text in texts]


def check(path, folder, program, src):
    with open(path, encoding="utf-8", errors="surrogateescape") as f:
        cases, kept = parse(f.read().rstrip("\n").split("\n"))
    os.makedirs(folder)
    passed, written = 0, {}
    for case in cases:
        status, texts = run(case, folder, program, src)
        problems = [] if status == case["status"] else [f"status {status}, not {case['status']}"]
        rewritten = [f"> status {status}"]
        for field, text in zip(FIELDS, texts):
            ends = text.endswith("\n") or text == ""
            actual = text[:-1].split("\n") if text.endswith("\n") else text.split("\n") if text else []
            expected = case[field]
            if ends != case[field + " ends"] or len(actual) != len(expected) or not all(map(matches, expected, actual)):
                # Wildcard lines that match show as what they matched, so that only real differences show.
                shown = [a if "{ANY}" in e and matches(e, a) else e for e, a in zip(expected, actual + [""] * len(expected))]
                diff = "\n".join(difflib.unified_diff(shown, actual, "expected", "actual", lineterm=""))
                problems.append(f"{field} differs:\n{diff}" + ("" if ends else "\n(no line end at the end)"))
            # An expected line with {ANY} that still matches stays as written.
            keep = [e if "{ANY}" in e and matches(e, a) else a for e, a in zip(expected + [""] * len(actual), actual)]
            rewritten.append(f"> {field}" + ("" if ends else ", no line end"))
            rewritten.extend("| " + line if line else "|" for line in keep)
        # A column padded to the source folder's path is as wide as the
        # folder the tree is checked out in: such a case would pass here
        # and fail in a clone elsewhere.
        if any(re.search(r"\{src\}\S*  ", line) for text in texts for line in text.split("\n")):
            problems.append("the source folder's path stands in a padded column, whose width then depends on "
                            "where the tree is checked out: cd into the folder and name the file alone")
        written[case["at"]] = rewritten
        if problems:
            print(f"FAIL {os.path.basename(path)}:{case['line']}: $ {case['command']}")
            print("  " + "\n".join(problems).replace("\n", "\n  "))
        passed += not problems
    if os.environ.get("DRAV_UPDATE_GOLDENS") == "1":
        with open(path, "w", encoding="utf-8", errors="surrogateescape") as f:
            for i, line in enumerate(kept):
                f.writelines(out + "\n" for out in [line] + written.get(i, []))
    return passed, len(cases) - passed


def main():
    program, src = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
    tmp = tempfile.mkdtemp(prefix="drav-golden.")
    try:
        counts = [check(path, os.path.join(tmp, str(n)), program, src) for n, path in enumerate(sys.argv[3:])]
    finally:
        shutil.rmtree(tmp, ignore_errors=True)
    passed, failed = sum(c[0] for c in counts), sum(c[1] for c in counts)
    print(f"{passed} passed, {failed} failed")
    return 1 if failed or not passed else 0


sys.exit(main())
