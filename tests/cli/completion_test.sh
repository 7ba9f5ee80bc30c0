#!/usr/bin/env bash
# The bash completion drav-report writes from its table of options, used as
# bash uses it: the forms, each form's options, and an option's choices.
#   completion_test.sh DRAV_REPORT
set -u
bin=$1
source "$(dirname "$0")/checks.sh"
"$bin" --bash-completion >"$tmp/completion"
check "written: status" 0 $?
complete_words() {  # the words after drav-report, the last one being completed
  bash -c 'source "$1"; shift; COMP_WORDS=(drav-report "$@"); COMP_CWORD=$#; _drav_report; echo "${COMPREPLY[*]}"' \
    _ "$tmp/completion" "$@"
}
check "the forms" "table" "$(complete_words ta)"
check "an option of table" "--criterion" "$(complete_words table --crit)"
check "the choices of --criterion" "aic aicc bic qaic qaicc" "$(complete_words table --criterion '')"
check "average's own option" "--all" "$(complete_words average --al)"
check "not table's" "" "$(complete_words table --al)"
check "fits' formats" "text csv tsv markdown latex json" "$(complete_words fits --format '')"
check "a file after --coefficients" "$tmp/completion" "$(complete_words importance --coefficients "$tmp/compl")"
finish completion
