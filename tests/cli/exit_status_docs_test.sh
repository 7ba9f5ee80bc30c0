#!/usr/bin/env bash
# One table of exit statuses: the list --help prints (made from the code's
# table) stands word for word in the README and in the manual page.
#   exit_status_docs_test.sh DRAV_REPORT SOURCE_DIR
set -u
bin=$1
src=$2
source "$(dirname "$0")/checks.sh"
"$bin" --help | sed -n '/^Exit status:/,$p' | grep -E '^  [0-9]  ' >"$tmp/statuses"
check "the help lists eight statuses" 8 "$(wc -l <"$tmp/statuses")"
if command -v mandoc >/dev/null; then
  mandoc -Tascii "$src/packaging/drav-report.1" | col -b | tr -s '[:space:]' ' ' >"$tmp/manual"
fi
while read -r code meaning; do
  check_text "README: status $code" "$src/README.md" "| $code | $meaning |"
  [ -f "$tmp/manual" ] && check_text "manual page: status $code" "$tmp/manual" " $code $meaning "
done <"$tmp/statuses"
finish exit_status_docs
