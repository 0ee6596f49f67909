# shellcheck shell=bash
# What the packages for Windows hold. Sourced after packaging.sh.
# shellcheck disable=SC2154  # what packaging.sh defines

# build_for_windows: both word sizes, with one time in all programs, that of the sources.
build_for_windows() {
    local preset targets
    for preset in mingw64 mingw32; do
        configure "$preset"
        mapfile -t targets < <(installed_targets "$preset")
        # What is linked already has the time at which it was linked.
        rm -f "${targets[@]/#/build/$preset/}"
        build "$preset" "${targets[@]}" >&2
    done
}

# installed_targets PRESET: by the names of their files.
installed_targets() {
    local bits=${1#mingw}
    ninja -C "build/$1" -t targets all | sed -n 's/: .*//p' |
        grep -Fx "$(sed -n "s/^$bits  *?*\\([^ ]*\\) .*/\\1/p" installer/contents.txt)" | sort -u
}

# Lines end as the older editors of Windows want them.
for_windows() {
    sed 's/$/\r/'
}

copy_documents() {
    local tree=$1 build=$2
    quietly build/logs/install.log cmake --install "$build" --prefix "$work/installed"
    mv "$work/installed/share/doc/krv" "$tree"
    rm "$tree/LICENSE"
    cp docs/windows.md "$tree"
    groff -t -man -Tascii -rLL=100n -P-cbou docs/krv.1 | for_windows >"$tree/krv.txt"
    for_windows <CHANGELOG.md >"$tree/CHANGELOG.md"
    # The compiler's own libraries are linked in, too, and so is what gives them threads.
    notices libcli11-dev nlohmann-json3-dev libkissfft-dev libasio-dev libz-mingw-w64-dev \
        mingw-w64-common gcc-mingw-w64-base | for_windows >"$tree/LICENSE.txt"
}

# copy_programs TREE BUILD64 BUILD32: what installer/contents.txt lists, programs with the time at which the linker
# made them, which the list of components shows. Without a BUILD32 those of 32 bits are left out.
copy_programs() {
    local tree=$1 maker file folder source
    local -A made=([64]=$2 [32]=$3 [help]=build/help) prefix=([64]=x86_64 [32]=i686)
    while read -r maker file folder; do
        source=${made[$maker]}/${file#\?}
        if [ -z "${made[$maker]}" ] || { [ ! -f "$source" ] && [[ $file = \?* ]]; }; then
            echo "Left out: ${source##*/} for $folder." >&2
            continue
        fi
        mkdir -p "$tree/$folder"
        if [ "$maker" = help ]; then
            cp "$source" "$tree/$folder"
        else
            "${prefix[$maker]}-w64-mingw32-strip" --preserve-dates -o "$tree/$folder/${source##*/}" "$source"
        fi
    done < <(grep -v '^#' installer/contents.txt)
}

# copy_help TREE: the pages for a browser, where there is what makes them. The compiled files go with the programs.
copy_help() {
    local pages=build/help/html
    if [ ! -d $pages ] || [ -n "$(find docs tools/help tools/build-help -newer $pages -print -quit)" ]; then
        # What it leaves out it says itself.
        tools/build-help build/help || [ -d $pages ] || return 0
    fi
    cp -r build/help/html "$1/help"
}

# krv prints them itself, under Wine where there is a prefix, and otherwise where this system's own is built.
copy_completion() {
    local tree=$1 build=$2 printer=build/release/krv shell command
    if [ -n "${WINEPREFIX:-}" ]; then
        command=(cmake/wine-run "$build/krv.exe")
    elif [ -x "$printer" ]; then
        command=("$printer")
    else
        echo "Left out: the completion for shells; build/release has no krv to print it." >&2
        return
    fi
    mkdir "$tree/completion"
    for shell in bash zsh fish; do
        "${command[@]}" completion "$shell" | tr -d '\r' >"$tree/completion/krv.$shell"
    done
}

# stage_windows TREE BUILD64 [BUILD32]: everything, as it lies in the folder of a version.
stage_windows() {
    copy_documents "$1" "$2"
    copy_help "$1"
    copy_programs "$1" "$2" "${3:-}"
    copy_completion "$1" "$2"
    find "$1" -type d -exec chmod 755 {} +
    find "$1" -type f -exec chmod 644 {} +
}

# set_times TREE: to that of the sources.
set_times() {
    find "$1" -exec touch --no-dereference --date "@$written" {} +
}
