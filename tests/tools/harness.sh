# shellcheck shell=bash
# For tests of the scripts in tools/: a scratch folder, and expectations that count.
# Sourced by each test, which ends with `finish`.
# shellcheck disable=SC2034  # the tests that source this use the variables

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
wrong=0
right=0

# write FILE: makes a file of the scratch folder from standard input.
write() {
    mkdir -p "$(dirname "$scratch/$1")"
    cat >"$scratch/$1"
}

# expect WHAT EXPECTED ACTUAL
expect() {
    if [ "$2" = "$3" ]; then
        right=$((right + 1))
        return
    fi
    wrong=$((wrong + 1))
    printf '%s:\n  expected: %s\n  actual:   %s\n' "$1" "${2//$'\n'/$'\n            '}" \
        "${3//$'\n'/$'\n            '}"
}

finish() {
    if [ "$wrong" -gt 0 ] || [ "$right" -eq 0 ]; then
        echo "$0: $wrong of $((right + wrong)) expectations not met"
        exit 1
    fi
}
