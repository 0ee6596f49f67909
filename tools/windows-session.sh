# shellcheck shell=bash
# The steps of ./run that have windows: a workbook with the toolbar control, driven as by its user.
# Sourced after demonstration.sh; windows_programs is the folder of the programs built for Windows.
# shellcheck disable=SC2154  # what lib.sh, demonstration.sh and run define

windows_prefix=$PWD/build/wine-run
# Where they are installed, as programs in Wine know it; programs are in a folder below it.
installed='C:\KRV'
programs=''
# Where what isn't installed is put: the setup program, and the one that plays the user.
put_aside='C:\downloads'
pictures=$PWD/out/pictures
display_server=''
# Whether the prefix is this run's: another one that the environment names is never touched.
windows_started=false

# The windows are seen where there is a display; elsewhere they are drawn into memory.
open_display() {
    if [ -n "${DISPLAY:-}" ]; then
        say "The windows appear on the display $DISPLAY."
        return 0
    fi
    local number=$scratch/display tries=0
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$number" >/dev/null 2>&1 </dev/null &
    display_server=$!
    until [ -s "$number" ]; do
        tries=$((tries + 1))
        if [ "$tries" -gt 1200 ] || ! kill -0 "$display_server" 2>/dev/null; then
            say "There is no display, and Xvfb does not start."
            return 1
        fi
        sleep 0.05
    done
    DISPLAY=:$(cat "$number")
    export DISPLAY
    say "There is no display. Xvfb draws the windows into memory; see the pictures."
}

# in_wine PROGRAM WORD...: a Windows program, with a limit to the time it takes.
in_wine() {
    timeout --kill-after=10 600 wine "$@" </dev/null
}

# As users install them. It is for all users, since Wine doesn't find what is registered for one.
install_programs() {
    local folder=$WINEPREFIX/drive_c/downloads name=krv-setup.exe setup
    mkdir -p "$folder" && cp "$windows_programs/krvsession.exe" "$folder" &&
        setup=$(tools/package-setup --for64 "$windows_programs" 2>build/logs/package-setup.log) &&
        cp "$setup" "$folder/$name" || return
    print_command "wine $put_aside\\$name /S /allusers /bench /D=$installed"
    in_wine "$put_aside\\$name" /S /allusers /bench "/D=$installed" >/dev/null 2>&1 || return
    folder=$(echo "$WINEPREFIX"/drive_c/KRV/*/bench)
    [ -d "$folder" ] && programs="$installed\\$(basename "${folder%/bench}")\\bench"
}

# The line of krv doctor about the toolbar.
toolbar_is_well() {
    local krv_there=${programs%\\bench}\\krv.exe
    print_command "wine $krv_there doctor"
    in_wine "$krv_there" doctor 2>&1 | tr -d '\r' >"$scratch/doctor.txt"
    grep 'toolbar control *64 bit' "$scratch/doctor.txt" | sed 's/^/   /'
    grep -q '^ok *toolbar control *64 bit *all users *registered, loads' "$scratch/doctor.txt"
}

remove_programs() {
    # It waits where it is told the folder, and then it can't remove itself.
    in_wine "$installed\\uninstall.exe" /S "_?=$installed" >/dev/null 2>&1
    rm -f "$WINEPREFIX/drive_c/KRV/uninstall.exe"
}

# Everything is registered in a prefix of its own, which nothing else uses.
start_windows() {
    windows_started=true
    export WINEPREFIX=$windows_prefix WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES=mscoree,mshtml=
    open_display &&
        quietly build/logs/wine-run.log tools/wine-prefix "$WINEPREFIX" &&
        wineserver --persistent >/dev/null 2>&1 &&
        { [ ! -f "$WINEPREFIX/drive_c/KRV/uninstall.exe" ] || remove_programs; } &&
        install_programs
}

stop_windows() {
    if $windows_started; then
        remove_programs
        wineserver --kill >/dev/null 2>&1
        windows_started=false
    fi
    if [ -n "$display_server" ]; then
        kill "$display_server" 2>/dev/null
        wait "$display_server" 2>/dev/null
        display_server=''
    fi
}

# windows_path FILE: as programs in Wine know it.
windows_path() {
    local path
    path=$(realpath "$1")
    echo "Z:${path//\//\\}"
}

# open_program NAME FILE...: a program with windows, files under their names in Windows.
open_program() {
    local name=$1
    shift
    print_command "wine $programs\\$name.exe${*:+ $*} &"
    in_wine "$programs\\$name.exe" "$@" --screenshot-ready >"$scratch/$name.log" 2>&1 &
    program=$!
}

program_ended() {
    wait "$program"
}

# play FILE.session NAME=VALUE...: shows what the user does as it happens.
play() {
    local log=$scratch/session.log status=0
    mkdir -p "$pictures"
    : >"$log"
    print_command "wine $put_aside\\krvsession.exe $*"
    in_wine "$put_aside\\krvsession.exe" "$@" --pictures "$(windows_path "$pictures")" \
        >"$log" 2>&1 &
    local player=$!
    tail --pid="$player" --lines=+1 --follow "$log" | sed 's/^/   The user /'
    wait "$player" || status=$?
    return "$status"
}

verify_cells() {
    verify_stored TONE_CELLS --i "$scratch/cellsI.txt" --q "$scratch/cellsQ.txt"
}

verify_files() {
    verify_stored TONE_FILES --i examples/sineI.txt --find-q --find-marker
}

verify_document() {
    verify_stored TONE_DOCUMENT --i examples/sineI.txt --find-q
}

verify_again() {
    verify_stored TONE_AGAIN --i "$scratch/cellsI.txt" --q "$scratch/cellsQ.txt" --scale -50
}

# A workbook with a tone in its columns, and the waveform files where a user would have them.
write_workbook() {
    local folder=$WINEPREFIX/drive_c/waveforms
    # Saving asks before it replaces a file.
    rm -rf "$folder"
    mkdir -p "$folder"
    cp examples/*.txt examples/*.bin "$folder"
    { echo I,Q && paste -d , examples/sineI.txt examples/sineQ.txt; } >"$scratch/wave.csv"
    tail -n +2 "$scratch/wave.csv" | cut -d , -f 1 >"$scratch/cellsI.txt"
    tail -n +2 "$scratch/wave.csv" | cut -d , -f 2 >"$scratch/cellsQ.txt"
}

# ask_generator QUERY: as another of its clients; shows the reply, which it leaves in reply.
ask_generator() {
    local place=${address#tcp://} line
    print_command "exec 3<>/dev/tcp/${place%:*}/${place#*:}; echo '$1' >&3; head -n 1 <&3"
    exec {line}<>"/dev/tcp/${place%:*}/${place#*:}" || return
    printf '%s\n' "$1" >&"$line"
    read -r -t 60 reply <&"$line" || reply=''
    exec {line}>&-
    say "$reply"
}

# generator_answers QUERY REPLY
generator_answers() {
    ask_generator "$1"
    [ "$reply" = "$2" ]
}

# saved_picture NAME: whether a GIF picture of the display's size was saved.
saved_picture() {
    local start
    start=$(head -c 10 "$WINEPREFIX/drive_c/waveforms/$1" | od -An -v -tx1 | tr -d ' \n')
    # "GIF", a version, 640 and 320 with the low byte first.
    [[ $start == 474946??????80024001 ]]
}

first_session() {
    new_step "The workbook: connect, download from cells and from files"
    check "Windows programs run, and setup installs the toolbar" start_windows || return
    check "step $step_number: krv doctor finds the toolbar" toolbar_is_well || return
    # It takes its time, so that the progress dialog is seen.
    check "the generator answers" start_generator M7718C --fault bandwidth=2500 || return
    write_workbook
    open_program krvbook "$(windows_path "$scratch/wave.csv")"
    check "step $step_number: connected, and downloaded through the dialogs" \
        play examples/first-download.session "ADDRESS=$address" "FOLDER=C:\\waveforms" || return
    check "step $step_number: the generator stored what the cells held" verify_cells
    check "step $step_number: the generator stored what the files held" verify_files
}

# All that the generator's user sets, by its queries.
settings_query='FREQ?;:POW?;:OUTP?;:ARB:SEL?;STAT?'
settings='2.400000000E+09;-3.000000000E+00;1;"TONE_FILES";1'
reset_settings='1.000000000E+09;-2.000000000E+01;0;"";0'

settings_sessions() {
    new_step "Settings: capture and restore"
    check "step $step_number: the generator plays the tone" \
        generator_answers "FREQ 2.4 GHz;:POW -3;:ARB:SEL \"TONE_FILES\";STAT ON;:OUTP ON;:$settings_query" \
        "$settings"
    check "step $step_number: settings captured under a name" play examples/capture-settings.session || return
    check "step $step_number: the generator is reset" \
        generator_answers "*RST;:$settings_query" "$reset_settings"
    check "step $step_number: settings restored" play examples/restore-settings.session || return
    check "step $step_number: the generator has its settings again" \
        generator_answers "$settings_query" "$settings"
}

image_session() {
    new_step "The screen image, and the installed components"
    check "step $step_number: screen image placed in the sheet and saved to a file, about box opened" \
        play examples/screen-image.session "FOLDER=C:\\waveforms" || return
    check "step $step_number: the workbook closed without an error" program_ended
    check "step $step_number: the file holds a picture of the display's size" saved_picture display.gif
}

reopened_session() {
    new_step "The saved workbook, opened again; the instrument reports a fault"
    check "step $step_number: the generator is reset, and has a fault" \
        generator_answers "*RST;:DIAG:FAUL \"error=-240,Hardware error\";:$settings_query" "$reset_settings"
    open_program krvbook "C:\\waveforms\\tone.krvbook"
    check "step $step_number: connected by itself, settings restored, fault reported, and downloaded" \
        play examples/reopened-workbook.session "ADDRESS=$address" || return
    check "step $step_number: the workbook closed without an error" program_ended
    check "step $step_number: the generator stored what the cells held" verify_again
    check "step $step_number: the generator has the workbook's settings" \
        generator_answers "$settings_query" "$settings"
}

document_sessions() {
    new_step "A document with the screen image"
    open_program krvdoc
    check "step $step_number: connected, downloaded, screen image placed, and saved" \
        play examples/document.session "ADDRESS=$address" "FOLDER=C:\\waveforms" || return
    check "step $step_number: the document closed without an error" program_ended
    check "step $step_number: the generator stored what the files held" verify_document

    new_step "The saved document, opened again"
    open_program krvdoc "C:\\waveforms\\report.krvdoc"
    check "step $step_number: connected by itself; an older model's instructions for a capture by hand shown" \
        play examples/reopened-document.session "ADDRESS=$address" || return
    check "step $step_number: the document closed without an error" program_ended
    check "step $step_number: the generator is back at its front panel, without an error" \
        generator_answers "SYST:REM?;:SYST:ERR?" "0;0,\"No error\""
}

session_with_windows() {
    first_session && settings_sessions && image_session && reopened_session && document_sessions
    say "Pictures of the windows: out/pictures/*.png"
}
