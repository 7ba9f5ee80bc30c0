#!/usr/bin/env bash
# Every case of the suite has a name that reads as what it checks, the same
# at every build: no test's parameter printed as the bytes of an object
# (addresses that change from build to build), no bare index, and no name
# given twice, so that -R picks cases and two runs can be compared.
#   suite_names_test.sh BUILD_DIR
set -u
names=$(ctest --test-dir "$1" -N | sed -n 's/^ *Test *#[0-9]*: //p')
failures=0
bad=$(grep -E 'GetParam|TypeParam|byte object|/[0-9]+$' <<<"$names")
[ -z "$bad" ] || { echo "FAIL: names that do not read:"; echo "$bad" | head -n 20; failures=1; }
twice=$(sort <<<"$names" | uniq -d)
[ -z "$twice" ] || { echo "FAIL: names given twice:"; echo "$twice"; failures=1; }
[ "$(wc -l <<<"$names")" -gt 100 ] || { echo "FAIL: the suite lists only $(wc -l <<<"$names") cases"; failures=1; }
echo "suite_names: $(wc -l <<<"$names") names, $failures failed"
exit $failures
