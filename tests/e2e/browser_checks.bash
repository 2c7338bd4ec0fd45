# Shared by the browser checks (sourced, not run): finds core_tests beside the executable given
# as $1 (or VT_CORE_TESTS) and headless Chromium, and skips the check with a line saying why
# when either cannot be had. Sets core_tests, browser and a scratch folder `work`; gives
# dump_dom.

source "$(dirname "${BASH_SOURCE[0]}")/checks.bash"

executable=${1:-}
core_tests=${VT_CORE_TESTS:-}
if [ -z "$core_tests" ] && [ -n "$executable" ]; then
    core_tests="$(dirname "$executable")/../tests/core_tests"
fi
if [ -z "$core_tests" ] || [ ! -x "$core_tests" ]; then
    echo "SKIP: core_tests not found (set VT_CORE_TESTS)"
    exit 0
fi

browser=$(command -v chromium || command -v chromium-browser || true)
if [ -z "$browser" ]; then
    if [ "$(id -u)" = 0 ] && command -v apt-get >/dev/null; then
        DEBIAN_FRONTEND=noninteractive apt-get install -y chromium >/dev/null 2>&1 || true
        browser=$(command -v chromium || true)
    fi
fi
if [ -z "$browser" ]; then
    echo "SKIP: chromium is not installed and could not be installed here"
    exit 0
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The page at path $1 as the browser holds it after its scripts ran.
dump_dom() {
    timeout 60 "$browser" --headless --no-sandbox --disable-gpu --disable-dev-shm-usage \
        --disable-background-networking --no-first-run --user-data-dir="$work/profile" \
        --dump-dom "file://$1" 2>/dev/null
}
