# shellcheck shell=bash
# Functions that the scripts share; to be sourced.

# What the tests are built with, beside a compiler and CMake.
# shellcheck disable=SC2034
test_packages=(libgtest-dev librapidcheck-dev libfmt-dev)

# say TEXT...: what happens next, in one line.
say() {
    printf '==> %s\n' "$*"
}

# fail TEXT...: ends the script.
fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# show_progress DONE TOTAL UNIT: how far a long run is and when it will be through, since this script's start. On a
# terminal the line replaces the one before.
show_progress() {
    local line="$1 of $2 $3, $SECONDS s, about $((SECONDS * ($2 - $1) / ($1 > 0 ? $1 : 1))) s left"
    if [[ ! -t 1 ]]; then
        printf '%s\n' "$line"
    elif (($1 < $2)); then
        printf '\r%s\033[K' "$line"
    else
        printf '\r%s\033[K\n' "$line"
    fi
}

# quietly LOG COMMAND...: the command's output goes to LOG, and is shown only where the command fails.
quietly() {
    local log=$1
    shift
    "$@" >"$log" 2>&1 || {
        cat "$log" >&2
        return 1
    }
}

# ensure_packages PACKAGE...: installs those Debian packages that are missing.
ensure_packages() {
    if ! command -v dpkg-query >/dev/null; then
        say "not a Debian system, so this must be there already: $*"
        return
    fi

    local package missing=()
    for package; do
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing+=("$package")
    done
    ((${#missing[@]})) || return 0

    local as_root=()
    if ((EUID != 0)); then
        sudo -n true 2>/dev/null ||
            fail "please install, as root:  apt-get update && apt-get install --no-install-recommends ${missing[*]}"
        as_root=(sudo -n)
    fi
    local apt_get=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300)

    local log
    log=$(mktemp)
    say "installing ${missing[*]}"
    quietly "$log" "${apt_get[@]}" update || say "the package lists are not all up to date; going on"
    quietly "$log" "${apt_get[@]}" install --no-install-recommends "${missing[@]}" ||
        fail "installing failed; the packages needed are: ${missing[*]}"
    rm -f "$log"
}
