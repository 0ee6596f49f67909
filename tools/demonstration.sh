# shellcheck shell=bash
# The steps of ./run: generators to talk to, downloads that are verified, refusals that are expected.
# Sourced after lib.sh, with krv naming the program and scratch the folder for everything written.
# shellcheck disable=SC2154  # these two, and lib.sh's bold and plain

generator=''
second_generator=''
second_address=''
address=''
model=''
store=''
generator_number=0
step_number=0

stop_second_generator() {
    if [ -n "$second_generator" ]; then
        kill "$second_generator" 2>/dev/null
        wait "$second_generator" 2>/dev/null
        second_generator=''
    fi
}

stop_generator() {
    stop_second_generator
    if [ -n "$generator" ]; then
        kill "$generator" 2>/dev/null
        wait "$generator" 2>/dev/null
        generator=''
    fi
}

# print_command WORD...: as one would type it.
print_command() {
    local word line=''
    for word in "$@"; do
        # What a shell would take for names of files; a word with blanks is a whole line of shell.
        [[ $word == *[*?]* && $word != *" "* ]] && word="'$word'"
        line+=" $word"
    done
    printf '   %s$%s%s\n' "$bold" "$line" "$plain"
}

indented() {
    sed 's/^/   /'
}

# start_generator MODEL OPTION...: sets address and model, and shows what answers there.
start_generator() {
    stop_generator
    model=$1
    shift
    generator_number=$((generator_number + 1))
    store=$scratch/generator$generator_number
    local log=$store.log
    mkdir -p "$store"
    print_command "$krv sim --model $model --port 0 --store $store${*:+ $*} &"
    "$krv" sim --model "$model" --port 0 --store "$store" "$@" >"$log" 2>&1 </dev/null &
    generator=$!
    local tries=0
    until grep -qs '^listening on ' "$log"; do
        tries=$((tries + 1))
        if [ "$tries" -gt 1200 ] || ! kill -0 "$generator" 2>/dev/null; then
            say "The generator did not start:"
            indented <"$log"
            return 1
        fi
        sleep 0.05
    done
    indented <"$log"
    address=tcp://$(sed -n 's/^listening on //p' "$log")
    print_command "$krv identify --address $address"
    "$krv" identify --address "$address" 2>&1 | indented
    return "${PIPESTATUS[0]}"
}

# start_second_generator MODEL: one more, beside the one that runs; sets second_address.
start_second_generator() {
    local log=$scratch/second-generator.log tries=0
    print_command "$krv sim --model $1 --port 0 &"
    "$krv" sim --model "$1" --port 0 >"$log" 2>&1 </dev/null &
    second_generator=$!
    until grep -qs '^listening on ' "$log"; do
        tries=$((tries + 1))
        [ "$tries" -le 1200 ] && kill -0 "$second_generator" 2>/dev/null || return
        sleep 0.05
    done
    indented <"$log"
    # shellcheck disable=SC2034  # the steps in run use it
    second_address=tcp://$(sed -n 's/^listening on //p' "$log")
}

# run_krv WORD...: runs the program where its progress lines can be seen.
run_krv() {
    print_command "$krv $*"
    if [ -t 2 ]; then
        "$krv" "$@" </dev/null | indented
    else
        "$krv" "$@" </dev/null 2>&1 | indented
    fi
    return "${PIPESTATUS[0]}"
}

# from_report KEY: a value of the last run's report.
from_report() {
    sed -n "s/^ *\"$1\": \"\\{0,1\\}\\([^\",]*\\).*/\\1/p" "$report" | head -n 1
}

# new_step TITLE
new_step() {
    step_number=$((step_number + 1))
    report=$scratch/step$step_number.json
    printf '\n %s%d. %s%s\n' "$bold" "$step_number" "$1" "$plain"
}

# interleave I Q: two files of codes in turn, as numbers.
interleave() {
    paste -d '\n' <(od -An -v -td2 -w2 "$1") <(od -An -v -td2 -w2 "$2")
}

# same_codes STORED CONVERTED: whether the generator holds what the conversion gives for the channels
# that the model is sent: interleaved with markers, or I and Q apart without any.
same_codes() {
    local stored=$1 converted=$2
    if [ ! -f "$stored.iq.int16" ]; then
        cmp "$stored.i.int16" "$converted/i.int16" &&
            { [ ! -f "$converted/q.int16" ] || cmp "$stored.q.int16" "$converted/q.int16"; }
        return
    fi
    cmp "$stored.markers.int16" "$converted/markers.int16" || return
    if [ -f "$converted/q.int16" ]; then
        interleave "$converted/i.int16" "$converted/q.int16" |
            cmp - <(od -An -v -td2 -w2 "$stored.iq.int16")
    else
        cmp "$stored.iq.int16" "$converted/i.int16"
    fi
}

# verify_stored NAME OPTION...: converts the same files again, without any instrument, and compares.
verify_stored() {
    local stored=$store/$1 converted=$scratch/step$step_number
    shift
    "$krv" convert --model "$model" --output "$converted" "$@" >/dev/null </dev/null || return
    same_codes "$stored" "$converted" || return
    local file files=''
    for file in "$stored".*.int16; do
        files+=" ${file##*/} ($(wc -c <"$file") bytes)"
    done
    say "Verified:     byte for byte, the generator stored the codes that krv convert writes:"
    say "             $files"
}

# download_files OPTION...: one download into the running generator.
download_files() {
    run_krv download --address "$address" --report "$report" "$@" || return
    say "Took:         $(from_report read) ms to read, $(from_report convert) ms to convert," \
        "$(from_report transfer) ms to send (estimated: $(from_report estimatedSeconds) s)"
    if ! grep -q '"instrumentErrors": \[\]' "$report"; then
        say "Instrument:   reported an error"
        return 1
    fi
    say "Instrument:   its error queue is empty"
    verify_stored "$(from_report destination)" "$@"
}

# download TITLE OPTION...
download() {
    new_step "$1"
    check "step $step_number: downloaded and verified" download_files "${@:2}"
}

# keeps_codes FILE OPTION...: a download after which the generator stores the last bytes of the file, as
# the program that wrote it has put them there.
keeps_codes() {
    local written=$1 stored
    shift
    download_files "$@" || return
    stored=$store/$(from_report destination).iq.int16
    cmp <(tail -c "$(wc -c <"$stored")" "$written") "$stored" || return
    say "Verified:     these are the bytes in $written, too"
}

# download_foreign TITLE FILE OPTION...: see keeps_codes.
download_foreign() {
    new_step "$1"
    check "step $step_number: downloaded and verified" keeps_codes "${@:2}"
}

# nearest_codes HALF: the code that is nearest to each share of full scale on standard input, halves to even;
# HALF is half the number of codes. Shares that were written with few digits may miss a half by a little.
nearest_codes() {
    awk -v half="$1" '{
        x = $1 * half
        twice = int(2 * x + (x < 0 ? -0.5 : 0.5))
        if (2 * x - twice < 0.001 && twice - 2 * x < 0.001) x = twice / 2
        code = int(x); rest = x - code
        if (rest > 0.5 || (rest == 0.5 && code % 2 != 0)) ++code
        if (rest < -0.5 || (rest == -0.5 && code % 2 != 0)) --code
        print code < half ? code : half - 1
    }'
}

# code_numbers FILE
code_numbers() {
    od -An -v -td2 -w2 "$1" | tr -d ' '
}

# keeps_shares SHARES OPTION...: a download after which the generator stores the codes nearest to the shares of
# full scale, I and Q in turn, one a line, as they were taken out of the file by other means.
keeps_shares() {
    local shares=$1 stored
    shift
    download_files "$@" || return
    stored=$store/$(from_report destination)
    if [ -f "$stored.iq.int16" ]; then
        cmp <(nearest_codes 32768 <"$shares") <(code_numbers "$stored.iq.int16") || return
    else
        cmp <(nearest_codes 8192 <"$shares" | awk '{ print $1 + 8192 }') \
            <(paste -d '\n' <(code_numbers "$stored.i.int16") <(code_numbers "$stored.q.int16")) || return
    fi
    say "Verified:     these are the codes nearest to the values in the file, as od and awk find them"
}

# download_shares TITLE SHARES OPTION...: see keeps_shares.
download_shares() {
    new_step "$1"
    check "step $step_number: downloaded and verified" keeps_shares "${@:2}"
}

# is_refused TEXT OPTION...: the download ends with exit code 1 and a message that holds the text, and
# leaves nothing in the generator.
is_refused() {
    local text=$1 status=0
    shift
    run_krv download --address "$address" --report "$report" "$@" || status=$?
    [ "$status" -eq 1 ] && grep -qF "$text" "$report" && [ -z "$(ls -A "$store")" ] || return
    say "Verified:     the generator stored nothing."
}

# refusal TITLE TEXT OPTION...
refusal() {
    new_step "$1"
    check "step $step_number: refused, as expected" is_refused "${@:2}"
}

# prints TEXT WORD...: the program succeeds, and a line of what it prints holds the text.
prints() {
    local text=$1 output=$scratch/printed
    shift
    run_krv "$@" | tee "$output"
    [ "${PIPESTATUS[0]}" -eq 0 ] && grep -qF -- "$text" "$output"
}

# command_step TITLE TEXT WORD...
command_step() {
    new_step "$1"
    check "step $step_number: done, and said so" prints "${@:2}"
}
