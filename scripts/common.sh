# Shell functions shared by ./run and ./test. Sourced after `root` is set to the project's folder.
#
# Messages go to stderr, so that a program's own output can be redirected.
: "${root:?the folder of the project}"

say() { printf '== %s\n' "$*" >&2; }

fail() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# packages SECTION...: the packages that packages.txt lists under those sections.
packages() {
    local section
    for section in "$@"; do
        awk -v wanted="[$section]" '
            $1 == "#" && $2 ~ /^\[.*\]$/ { inside = ($2 == wanted); next }
            inside && $1 != "" && $1 !~ /^#/ { print $1 }' "$root/packages.txt"
    done
}

# missing: those of the packages on standard input that are not installed.
missing() {
    local package
    while read -r package; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
            echo "$package"
    done
}

# as_root COMMAND...: runs it as root, or with sudo.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif [ -t 0 ]; then
        sudo "$@" # may ask for the password
    else
        sudo -n "$@"
    fi
}

# install_missing SECTION...: installs the packages that are not there yet.
install_missing() {
    local names absent
    names=$(packages "$@" | tr '\n' ' ')
    command -v apt-get >/dev/null || fail "this needs apt-get of Debian 12 to install $names"
    read -ra absent <<<"$(packages "$@" | missing | tr '\n' ' ')"
    [ ${#absent[@]} -gt 0 ] || return 0

    [ "$(id -u)" -eq 0 ] || command -v sudo >/dev/null ||
        fail "cannot install without root or sudo; ask for: apt-get install ${absent[*]}"
    say "installing ${absent[*]}"
    # Old package lists may still do when the network is down, so only the installation decides.
    as_root apt-get -qq update >&2 || say "the package lists could not be updated"
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get -qq install -y --no-install-recommends "${absent[@]}" >&2 ||
        fail "could not install ${absent[*]}: no rights, or no network (see apt-get's message above)"
}

# build_folder PRESET: where a preset builds.
build_folder() {
    if [ "$1" = release ]; then echo "$root/build"; else echo "$root/build-$1"; fi
}

# configure PRESET ON|OFF: with tests or not, unless that has been done for the packages of today.
# A folder that has tests keeps them.
configure() {
    local folder stamp absent
    folder=$(build_folder "$1")
    stamp="$folder/build.ninja"
    absent=$(packages office | missing)
    if [ -f "$stamp" ] && [ "$stamp" -nt "$root/CMakePresets.json" ] &&
        [ "$absent" = "$(cat "$folder/absent-packages" 2>/dev/null)" ] &&
        { [ "$2" = OFF ] || grep -q '^ORN_BUILD_TESTS:BOOL=ON' "$folder/CMakeCache.txt"; }; then
        return
    fi
    local tests=()
    [ "$2" = OFF ] && [ -f "$stamp" ] || tests=("-DORN_BUILD_TESTS=$2")
    say "configuring $folder"
    (cd "$root" && cmake --preset "$1" --log-level=WARNING "${tests[@]}") >&2 ||
        fail "could not configure the $1 build"
    touch "$stamp"
    printf '%s' "$absent" >"$folder/absent-packages"
}

# build PRESET [TARGET]: builds with all cores; everything unless a target is named.
build() {
    local folder
    folder=$(build_folder "$1")
    say "building $folder"
    cmake --build "$folder" --parallel "$(nproc)" --target "${2-all}" >&2 ||
        fail "the $1 build failed"
}
