#!/usr/bin/env bash
# Builds the Debian package from build/ and checks it as Debian and the
# desktop will: lintian with no error or warning, stripped and hardened
# programs, the AppStream metainfo, the desktop entry, both manual pages and
# the scalable icon. Then installs it, checks the installed drav-report and
# drav, and removes it again, leaving nothing behind.
set -euo pipefail
cd "$(dirname "$0")/.."
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

# The package is built in the one build/ and installed into the one system,
# so a second run at the same time, from this tree or another, waits here
# until the first has removed its package again.
lock="${TMPDIR:-/tmp}/drav-package-check.lock"
(umask 000 && : >>"$lock")
exec 9<"$lock"
flock -w 900 9 || { echo "FAIL: another package check holds $lock"; exit 1; }

# dpkg will not start while another dpkg or apt holds its own lock (an
# install elsewhere on the machine); wait for it rather than fail.
dpkg_waiting() {
  local out
  for _ in $(seq 300); do
    if out=$($sudo dpkg "$@" 2>&1); then return 0; fi
    grep -q 'locked' <<<"$out" || { echo "$out"; return 1; }
    sleep 1
  done
  echo "$out"
  return 1
}

work=$(mktemp -d)
installed=""
app=""
xvfb=""
cleanup() {
  [ -n "$app" ] && kill "$app" 2>/dev/null
  [ -n "$xvfb" ] && kill "$xvfb" 2>/dev/null
  [ -n "$installed" ] && dpkg_waiting -r drav >/dev/null
  rm -rf "$work"
}
trap cleanup EXIT

(cd build && cpack >/dev/null)
deb=$(ls build/drav_*_amd64.deb | head -n 1)
tree="$work/tree"
dpkg-deb -x "$deb" "$tree"

# lintian: every tag is shown, info and pedantic ones too; errors and
# warnings fail the check, the others are for reading.
if ! lintian --display-info --pedantic --fail-on error,warning "$deb" >"$work/lintian" 2>&1; then
  fail "lintian finds errors or warnings"
fi
grep -v 'running with root privileges' "$work/lintian" | sed 's/^/lintian: /' || true

# Stripped: no symbol table and no debug sections. Hardened: read-only
# relocations bound at start (relro, bindnow) and the stack protector in
# each program. Fortified calls show only where the compiler knows a
# buffer's size: drav has them, while drav-report's one candidate, fread
# into a buffer from the heap, has nothing to check, which lintian reports
# as hardening-no-fortify-functions. So fortify is looked for in the two
# together.
fortified=0
for program in drav drav-report; do
  elf="$tree/usr/bin/$program"
  sections=$(readelf -S --wide "$elf")
  if grep -qE '\.symtab|\.debug_' <<<"$sections"; then fail "$program is not stripped"; fi
  grep -q 'GNU_RELRO' <(readelf -l --wide "$elf") || fail "$program has no relro"
  grep -qE 'BIND_NOW|FLAGS.*\bNOW\b' <(readelf -d --wide "$elf") || fail "$program is not bound now"
  symbols=$(readelf --dyn-syms --wide "$elf")
  grep -q '__stack_chk_fail' <<<"$symbols" || fail "$program has no stack protector"
  if grep -qE '__[a-z0-9_]+_chk@' <<<"$symbols"; then fortified=$((fortified + 1)); fi
done
[ "$fortified" -gt 0 ] || fail "neither program calls a fortified function"

metainfo=$(ls "$tree"/usr/share/metainfo/*.metainfo.xml)
appstreamcli validate --pedantic --no-net "$metainfo" | sed 's/^/appstream: /' ||
  fail "the AppStream metainfo does not validate"
appstreamcli validate-tree --pedantic --no-net "$tree" | sed 's/^/appstream tree: /' ||
  fail "the installed tree does not validate for AppStream"
desktop-file-validate "$tree/usr/share/applications/drav.desktop" || fail "the desktop entry does not validate"
grep -q '^MimeType=' "$tree/usr/share/applications/drav.desktop" && fail "the desktop entry claims a file type"
[ -e "$tree/usr/share/mime" ] && fail "the package redefines MIME types"
# The completion where bash-completion loads it, and bash reads it.
completion="$tree/usr/share/bash-completion/completions/drav-report"
bash -n "$completion" 2>/dev/null || fail "no bash completion of drav-report that bash reads"
for page in drav drav-report; do
  zcat "$tree/usr/share/man/man1/$page.1.gz" | mandoc -Tlint || fail "the manual page $page.1 has lint"
done

# The scalable icon is the PNG icon drawn again: rendered at 256 pixels, it
# differs from Drav256.png only at the antialiased edges.
rsvg-convert -w 256 -h 256 "$tree/usr/share/icons/hicolor/scalable/apps/drav.svg" -o "$work/svg.png"
distance=$(compare -metric RMSE "$work/svg.png" "$tree/usr/share/icons/hicolor/256x256/apps/drav.png" \
  null: 2>&1 | sed -n 's/.*(\(.*\)).*/\1/p' || true)
awk -v d="${distance:-1}" 'BEGIN { exit !(d < 0.03) }' ||
  fail "the SVG icon does not look like the PNG icon (RMSE ${distance:-unknown})"

installed=yes
dpkg_waiting -i "$deb"
for f in /usr/bin/drav /usr/bin/drav-report /usr/share/applications/drav.desktop \
         /usr/share/icons/hicolor/256x256/apps/drav.png /usr/share/icons/hicolor/16x16/apps/drav.png \
         /usr/share/icons/hicolor/scalable/apps/drav.svg /usr/share/metainfo/org.drav_project.drav.metainfo.xml \
         /usr/share/man/man1/drav.1.gz /usr/share/man/man1/drav-report.1.gz \
         /usr/share/doc/drav/copyright /usr/share/doc/drav/changelog.gz; do
  [ -e "$f" ] || fail "$f is not installed"
done
expected=$(tail -n +2 tests/golden/five-models.report)
actual=$(/usr/bin/drav-report 5 examples/five-models.txt | tail -n +2)
[ "$expected" = "$actual" ] || fail "the installed drav-report prints another report"
zcat /usr/share/man/man1/drav.1.gz | grep -q 'Number of Models' || fail "the drav man page lacks the window"

# The installed program starts and puts its splash panel on the screen, on
# a display number the X server picks for itself.
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp -noreset 3>"$work/display" >/dev/null 2>&1 &
xvfb=$!
for _ in $(seq 100); do [ -s "$work/display" ] && break; sleep 0.1; done
display=":$(head -n 1 "$work/display")"
DISPLAY=$display /usr/bin/drav >/dev/null 2>&1 &
app=$!
shown=""
for _ in $(seq 100); do
  shown=$(DISPLAY=$display xdotool search --onlyvisible --class drav 2>/dev/null | head -n 1 || true)
  [ -n "$shown" ] && break
  sleep 0.1
done
[ -n "$shown" ] || fail "the installed drav showed no window"
kill "$app" "$xvfb" 2>/dev/null || true
wait "$app" "$xvfb" 2>/dev/null || true
app=""
xvfb=""

dpkg_waiting -r drav
installed=""
for f in /usr/bin/drav /usr/bin/drav-report /usr/share/applications/drav.desktop \
         /usr/share/metainfo/org.drav_project.drav.metainfo.xml /usr/share/doc/drav; do
  [ ! -e "$f" ] || fail "$f is left behind after removal"
done
echo "package_check: $(( failures == 0 ? 1 : 0 )) passed, $(( failures == 0 ? 0 : 1 )) failed"
[ "$failures" -eq 0 ]
