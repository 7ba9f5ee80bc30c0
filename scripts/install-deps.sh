#!/usr/bin/env bash
# Installs, on Debian 12, every package that building, running and testing
# Drav need. Safe to run again: when nothing is missing it does nothing and
# says nothing.
set -euo pipefail

packages=(
  # build and package
  cmake g++ make ninja-build pkg-config dpkg-dev file
  # the toolkit
  qt6-base-dev qt6-base-dev-tools libgl-dev libxkbcommon-dev
  # tests and benchmarks
  libgtest-dev libgmock-dev libbenchmark-dev
  # real windows for end-to-end checks
  xvfb xdotool xclip imagemagick x11-utils time desktop-file-utils
  # what a screen reader sees, read through AT-SPI on a session bus of its own
  at-spi2-core python3-pyatspi dbus-daemon
  # where memory goes over repeated runs
  heaptrack
  # fuzzing and sanitizers
  clang libclang-rt-dev
  # the package's checks: Debian policy, software centres, manual pages,
  # and the scalable icon drawn to compare with the PNG; the charts of
  # drav-report rendered (librsvg2-bin) and parsed as XML (libxml2-utils)
  lintian appstream mandoc librsvg2-bin libxml2-utils
  # an independent check of the model-selection numbers, JSON read back,
  # and the LaTeX tables compiled as the manual says
  r-base-core r-cran-bbmle r-cran-broom python3
  # the statistics programs whose printed outputs drav-report fits reads:
  # the samples are made with them (tests/golden/fits/make-samples.sh) and
  # checked against R's AIC() of the same fits
  r-cran-lme4 r-cran-lavaan r-cran-knitr python3-statsmodels
  # and the outputs as researchers print them (make-real-outputs.sh)
  r-cran-lmertest r-cran-nlme r-cran-glmmtmb r-cran-pscl r-cran-aer r-cran-survival r-cran-ordinal
  r-cran-markdown
  texlive-latex-base texlive-latex-recommended lmodern
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
echo "Installing: ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
