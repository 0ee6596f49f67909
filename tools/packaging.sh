# shellcheck shell=bash
# What the scripts that make packages share. Sourced with the project's folder as the working directory.
# shellcheck disable=SC2034  # the scripts that source this use the variables

version=$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
# The time that everything in a package has, in seconds since 1970: the same sources make the same package.
written=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || date +%s)}
# The linker writes it into programs for Windows, and dpkg-deb into the archive.
export SOURCE_DATE_EPOCH=$written
packages=$PWD/build/packages
mkdir -p "$packages"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# make_help: build/help as the documents have it now; what needs a compiler that isn't there is left out.
make_help() {
    local status=0
    tools/build-help || status=$?
    [ "$status" -eq 0 ] || [ "$status" -eq 3 ]
}

# notices LIBRARY...: the project's licence, and those of the Debian packages whose code is compiled in,
# which want their notices to go with the program.
notices() {
    local library
    printf 'krv %s, built from the sources of KRVControl.\n\n' "$version"
    cat LICENSE
    for library in "$@"; do
        if [ -f "/usr/share/doc/$library/copyright" ]; then
            printf '\nParts of %s are compiled in:\n\n' "$library"
            cat "/usr/share/doc/$library/copyright"
        fi
    done
}
