# shellcheck shell=bash
# What demo and serve share. Sourced, not run.

# die MESSAGE: ends the script with the message on standard error.
die() {
    echo "${0##*/}: $*" >&2
    exit 1
}

# program NAME: path of a built program.
program() {
    local build=${QORTV_BUILD:-$(dirname "${BASH_SOURCE[0]}")/../build/release} path
    path=$(find "$build" -type f -name "$1" -perm -u+x -print -quit 2>/dev/null) || true
    [[ -n $path ]] || die "no $1 in $build; build it with ./run build release"
    echo "$path"
}

# wait_until SECONDS COMMAND...: runs the command until it succeeds; fails when the time is over.
wait_until() {
    local -i deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < deadline)) || return 1
        sleep 0.05
    done
}
