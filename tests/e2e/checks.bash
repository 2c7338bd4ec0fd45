# The pass and fail bookkeeping of every end-to-end check (sourced, not run).

failures=0
pass() { echo "PASS: $*"; }
fail() {
    echo "FAIL: $*"
    failures=$((failures + 1))
}
# Passes when "$@" succeeds, fails otherwise; the first argument is what is being checked. Its
# status is that of "$@", so that a failure can be followed by output that helps find the cause.
check() {
    local what=$1
    shift
    if "$@"; then pass "$what"; else fail "$what"; return 1; fi
}
# Ends the check: status 1 with the count when anything failed, after running "$@" (extra
# output to help find the cause), else a last PASS line naming the check.
finish_checks() {
    local name=$1
    shift
    if [ "$failures" -ne 0 ]; then
        [ $# -gt 0 ] && "$@"
        echo "FAIL: $failures check(s) failed"
        exit 1
    fi
    echo "PASS: all $name checks"
}
