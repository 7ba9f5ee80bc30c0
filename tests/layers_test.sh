#!/usr/bin/env bash
# The folders are the way data flows, and no folder reaches forward: base/
# stands alone; analysis/ and selection/ stand on base/ and never on each
# other; within selection/ each stage includes only the stages before it
# (parallel, table, input, fits, models, output), and only selection_run,
# the one way in, includes them all.
#   layers_test.sh SOURCE_DIR
set -u
src=$1
source "$(dirname "$0")/cli/checks.sh"
cd "$src"
order=(parallel table input fits models output)
rank() { local i; for i in "${!order[@]}"; do [ "${order[$i]}" = "$1" ] && echo "$i" && return; done; echo 99; }
forward=""
for file in base/* analysis/* selection/*/*.?pp; do
  case $file in base/*) layer=base ;; analysis/*) layer=analysis ;; *) layer=${file#selection/}; layer=${layer%%/*} ;; esac
  while read -r target; do
    case $layer:$target in
      base:base/*|analysis:base/*|analysis:analysis/*) continue ;;
      base:*|analysis:*) forward+="$file -> $target"$'\n'; continue ;;
    esac
    case $target in
      base/*) continue ;;
      selection/*/*) to=${target#selection/}; to=${to%%/*}
        [ "$(rank "$to")" -le "$(rank "$layer")" ] || forward+="$file -> $target"$'\n' ;;
      *) forward+="$file -> $target"$'\n' ;;
    esac
  done < <(sed -n 's/^#include "\(.*\)"$/\1/p' "$file")
done
check "includes that reach forward or across" "" "$forward"
check "selection/ holds only the way in at its root" "selection/selection_run.cpp selection/selection_run.hpp" \
  "$(ls selection/*.?pp | tr '\n' ' ' | sed 's/ $//')"
finish layers
