# shellcheck shell=bash
# What the project's scripts share: sections, checks that are counted, time and quiet commands.
# Sourced with the project's folder as the working directory.

passed=0
failed=0
failures=()
stage_seconds=()

if [ -t 1 ]; then
    bold=$'\e[1m' green=$'\e[32m' red=$'\e[31m' plain=$'\e[0m'
else
    bold='' green='' red='' plain=''
fi

cores() {
    nproc 2>/dev/null || echo 2
}

section() {
    printf '\n%s== %s%s\n' "$bold" "$*" "$plain"
}

say() {
    printf '   %s\n' "$*"
}

# check NAME COMMAND...: runs the command as one counted check.
check() {
    local name=$1
    shift
    if "$@"; then
        passed=$((passed + 1))
        say "${green}ok${plain}      $name"
    else
        failed=$((failed + 1))
        failures+=("$name")
        say "${red}FAILED${plain}  $name"
        return 1
    fi
}

# stage TITLE COMMAND...: a section whose seconds are kept for the summary.
stage() {
    local title=$1 start=$SECONDS status=0
    shift
    section "$title"
    "$@" || status=$?
    stage_seconds+=("$(printf '%5d s  %s' $((SECONDS - start)) "$title")")
    say "($((SECONDS - start)) s)"
    return "$status"
}

# quietly LOG COMMAND...: keeps the output in a file and shows it only when the command fails.
quietly() {
    local log=$1 status=0
    shift
    mkdir -p "$(dirname "$log")"
    "$@" >"$log" 2>&1 || status=$?
    if [ "$status" -ne 0 ]; then
        tail -n 100 "$log"
    fi
    return "$status"
}

# beside NAME COMMAND...: begins a command that runs beside what follows, which has precedence.
declare -A beside_process
beside() {
    local name=$1
    shift
    mkdir -p build/logs
    (
        renice -n $(($(nice) + 5)) "$BASHPID" >/dev/null
        "$@"
    ) >"build/logs/$name.log" 2>&1 &
    beside_process[$name]=$!
}

# finish_beside NAME: waits for the command and shows its output if it failed.
finish_beside() {
    wait "${beside_process[$1]}" && return
    tail -n 100 "build/logs/$1.log"
    return 1
}

# configure PRESET: with what the preset says and nothing else, so that every script can go on with what
# another one built.
configure() {
    quietly "build/logs/configure-$1.log" cmake --preset "$1"
}

# build PRESET TARGET...: builds the targets, or everything. On a terminal Ninja keeps to one live
# line; in a log only what goes wrong is of interest.
build() {
    local preset=$1 target=() native=()
    shift
    [ $# -eq 0 ] || target=(--target "$@")
    [ -t 1 ] || native=(-- --quiet)
    cmake --build "build/$preset" --parallel "$(cores)" "${target[@]}" "${native[@]}"
}

configure_and_build() {
    configure "$1" && build "$@"
}

# build_preset PRESET TARGET...: the targets, or everything of a preset, as one counted check.
build_preset() {
    check "$1: builds" configure_and_build "$@"
}

# ctest_preset PRESET PLATFORM [COMMAND...]: runs a preset's tests and adds the counts of their cases; a
# program of the platform that isn't among them has failed. The command, if any, is what runs CTest.
ctest_preset() {
    local preset=$1 folder=build/$1 counts expected
    expected=$(tools/expected-tests "$2" | tr '\n' ' ')
    shift 2
    # Reports of an earlier run must not be counted again.
    rm -rf "$folder/test-results" "$folder/ctest.xml"
    "$@" ctest --test-dir "$folder" --parallel "$(cores)" --no-tests=error --output-on-failure \
        --output-junit ctest.xml
    if [ ! -f "$folder/ctest.xml" ]; then
        failed=$((failed + 1))
        failures+=("$preset: the tests left no result")
        return 1
    fi
    counts=$(awk -v reports="$folder/test-results" -v expected="$expected" -f tools/count-results.awk \
        "$folder/ctest.xml")
    add_results "$preset" "$counts"
}

# add_results PRESET COUNTS: what count-results.awk printed.
add_results() {
    local preset=$1 good bad left_out name
    {
        read -r good bad left_out
        passed=$((passed + good))
        failed=$((failed + bad))
        while read -r name; do
            failures+=("$preset: $name")
        done
    } <<<"$2"
    say "$preset: $good passed, $bad failed, $left_out left out"
    [ "$bad" -eq 0 ]
}
