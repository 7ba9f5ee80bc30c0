#!/usr/bin/env bash
# The manual pages pass mandoc's lint, as the package check demands of them:
# found here in seconds rather than at the end of the long check.
#   manual_pages_test.sh SOURCE_DIR
set -u
command -v mandoc >/dev/null || { echo "SKIP: mandoc is not installed"; exit 77; }
failures=0
for page in "$1"/packaging/*.1; do
  mandoc -Tlint "$page" || { echo "FAIL: $(basename "$page") has lint"; failures=$((failures + 1)); }
done
echo "manual_pages: $failures failed"
exit $((failures > 0))
