# shellcheck shell=bash
# Functions that the test scripts in this folder share.

failures=0

# check SENTENCE COMMAND...: runs COMMAND, and reports SENTENCE as passed if COMMAND succeeds, otherwise as failed, with
# the output of COMMAND.
check()
{
    local output
    if output=$("${@:2}" 2>&1); then
        echo "PASS   : $1"
    else
        printf 'FAIL!  : %s\n%s\n' "$1" "$output"
        failures=$((failures + 1))
    fi
}
skip() { echo "SKIP   : $1"; }

# is EXPECTED ACTUAL: succeeds if both are equal.
is() { [ "$1" = "$2" ] || printf 'expected <%s>\nactual   <%s>\n' "$1" "$2" | { cat -v; false; }; }
# contains TEXT FILE, lacks TEXT FILE: search a file.
contains() { grep -qaF -- "$1" "$2" || { tail -c 2000 "$2" | cat -v; false; }; }
lacks() { ! grep -aF -- "$1" "$2" | cat -v | grep ''; }
# says TEXT, saysNot TEXT: search the output of the last run, $said.
says() { grep -qF -- "$1" <<<"$said" || { echo "$said"; false; }; }
saysNot() { ! says "$1" >/dev/null || { echo "$said"; false; }; }

# finish: the last command of a script; succeeds if every check did.
finish()
{
    echo "$failures failed"
    [ "$failures" -eq 0 ]
}
