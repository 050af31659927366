# shellcheck shell=bash
# Sourced by ./demo, ./check and scripts/setup, in the project's folder. A step is one line when all is well, and its
# whole output when it is not.

TESSARY_SCRATCH=$(mktemp -d -t tessary-XXXXXX)
export TMPDIR=$TESSARY_SCRATCH
trap 'rm -rf "$TESSARY_SCRATCH"' EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# step NAME COMMAND...: runs the command with nothing to read, quietly. Where it is a function, a failure in its
# middle does not end it: its commands are joined by &&.
step() {
    local name=$1 log=$TESSARY_SCRATCH/step.log start=$SECONDS
    shift
    if "$@" > "$log" 2>&1 < /dev/null; then
        printf '%-44s %4d s\n' "$name" $((SECONDS - start))
    else
        local status=$?
        cat "$log"
        printf '%-44s FAILED (status %d): %s\n' "$name" "$status" "$*"
        exit 1
    fi
}

# Files that a run through sudo makes should belong to the person who ran it. Installing packages is done by then,
# so the rest of the script needs no other rights than that person's.
continue_as_invoking_user() {
    if [[ $EUID -eq 0 && -n ${SUDO_UID:-} && $SUDO_UID -ne 0 ]]; then
        rm -rf "$TESSARY_SCRATCH"
        unset TMPDIR
        exec sudo -H -u "#$SUDO_UID" --preserve-env=DISPLAY,WAYLAND_DISPLAY,XAUTHORITY,XDG_RUNTIME_DIR,CI "$0" "$@"
    fi
}
