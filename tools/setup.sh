# shellcheck shell=bash
# Installs the Debian packages that a script needs. Sourced after lib.sh.
# shellcheck disable=SC2034  # the scripts that source this use the lists

# What it takes to configure everything, and to build and run the programs.
run_packages=(
    g++ cmake ninja-build libasio-dev libcli11-dev nlohmann-json3-dev
    libgif-dev libtiff-dev libturbojpeg0-dev zlib1g-dev libkissfft-dev googletest
)
# What the native checks need on top of that.
native_test_packages=(
    clang-14 libclang-rt-14-dev lld-14 llvm-14 libmatio-dev clang-format-14 shellcheck imagemagick dpkg-dev
    cmark-gfm libchm-bin
)
# What it takes to build for 64-bit Windows and to run what was built.
windows_run_packages=(
    g++-mingw-w64-x86-64-posix mingw-w64-tools libwine-dev libz-mingw-w64-dev
    wine wine64 fonts-wine fonts-liberation xvfb groff-base nsis
)
windows_test_packages=("${windows_run_packages[@]}" g++-mingw-w64-i686-posix xauth zip unzip)
# Clients that nobody here wrote, and what gives them a network of their own. The checks do without.
client_packages=(lxi-tools python3-pyvisa python3-pyvisa-py iproute2)
# What the benchmarks compare with, and what runs them. Nothing else needs these.
benchmark_packages=(libbenchmark-dev libfast-float-dev)

# missing_packages NAME...: those that are not installed, one a line.
missing_packages() {
    local package
    for package in "$@"; do
        if [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
            echo "$package"
        fi
    done
}

# Fills root_command with what runs a command as root without asking for a password.
find_root_command() {
    root_command=()
    if [ "$(id -u)" -eq 0 ]; then
        root_command=(env)
    elif sudo -n true 2>/dev/null; then
        root_command=(sudo -n env)
    else
        return 1
    fi
}

install_packages() {
    local apt=("${root_command[@]}" DEBIAN_FRONTEND=noninteractive apt-get -q -y
        -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=120)
    quietly build/logs/apt-get.log "${apt[@]}" update &&
        quietly build/logs/apt-get.log "${apt[@]}" install --no-install-recommends "$@"
}

# offer_packages NAME...: installs what is missing where that is possible, and says where it isn't.
offer_packages() {
    local missing
    mapfile -t missing < <(command -v dpkg-query >/dev/null && missing_packages "$@")
    if [ "${#missing[@]}" -eq 0 ]; then
        return 0
    fi
    if find_root_command && say "Installing ${missing[*]}" && install_packages "${missing[@]}" </dev/null; then
        return 0
    fi
    say "Left out, since they are not installed: ${missing[*]}"
}

# need_packages NAME...: installs what is missing, or says what to install.
need_packages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        say "This is not a Debian system. These packages' contents are assumed to be installed:"
        say "$*"
        return 0
    fi
    local missing
    mapfile -t missing < <(missing_packages "$@")
    if [ "${#missing[@]}" -eq 0 ]; then
        say "All packages are installed."
        return 0
    fi
    if ! find_root_command; then
        say "These packages are missing. To install them, run as root:"
        say "  apt-get update"
        say "  apt-get install --no-install-recommends ${missing[*]}"
        return 1
    fi
    say "Installing ${missing[*]}"
    install_packages "${missing[@]}" </dev/null || return
    mapfile -t missing < <(missing_packages "$@")
    if [ "${#missing[@]}" -ne 0 ]; then
        say "Still missing after the installation: ${missing[*]}"
        return 1
    fi
}
