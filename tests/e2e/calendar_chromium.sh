#!/usr/bin/env bash
# Opens a generated month page in headless Chromium and checks the page as the browser sees it:
# the title, six week rows of seven cells, grey weekend cells, the other-month cells and the
# priority entry underlined and bold. A small script added to a copy of the page reports the
# computed styles, since the dumped DOM alone only shows the attributes.
# Usage: calendar_chromium.sh /path/to/VendrakoTimer   (core_tests is found in ../tests beside it,
# or named by VT_CORE_TESTS). Chromium is installed from the distribution when it is missing;
# when that is not possible the check is skipped with a line saying why.
set -u

source "$(dirname "${BASH_SOURCE[0]}")/browser_checks.bash"

failures=0
pass() { echo "PASS: $*"; }
fail() {
    echo "FAIL: $*"
    failures=$((failures + 1))
}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
page="$work/calendario.03.2024.htm"

VT_BROWSER_PAGE="$page" "$core_tests" --gtest_filter='BrowserSample.*' >"$work/gtest.log" 2>&1 || {
    cat "$work/gtest.log"
    fail "the sample page could not be generated"
    exit 1
}
[ -s "$page" ] || { fail "no page written"; exit 1; }

probe="$work/probe.htm"
cp "$page" "$probe"
cat >>"$probe" <<'SCRIPT'
<script>
var out = [];
var rows = document.querySelectorAll('table tr');
out.push('rows=' + rows.length);
for (var i = 1; i < rows.length; i++) out.push('cells' + i + '=' + rows[i].cells.length);
var week = rows[1].cells;
out.push('sat=' + getComputedStyle(week[5]).backgroundColor);
out.push('mon=' + getComputedStyle(week[0]).backgroundColor);
out.push('othercolor=' + getComputedStyle(week[0]).color);
var u = document.querySelector('td u');
out.push('underline=' + (u ? getComputedStyle(u).textDecorationLine : 'none'));
out.push('weight=' + (u ? getComputedStyle(u.querySelector('b')).fontWeight : 'none'));
out.push('priority=' + (u ? u.textContent : ''));
var pre = document.createElement('pre');
pre.id = 'probe';
pre.textContent = out.join('\n');
document.body.appendChild(pre);
</script>
SCRIPT

run_browser() {
    timeout 60 "$browser" --headless --no-sandbox --disable-gpu --disable-dev-shm-usage \
        --user-data-dir="$work/profile" --dump-dom "file://$1" 2>/dev/null
}
dom=$(run_browser "$page")
probed=$(run_browser "$probe")
if [ -z "$dom" ]; then
    fail "chromium printed no DOM"
    exit 1
fi

has() { grep -qF -- "$2" <<<"$1"; }
has "$dom" "<title>MARZO.2024</title>" && pass "title" || fail "title"
has "$probed" "rows=7" && pass "title row and six weeks" || fail "row count"
for i in 1 2 3 4 5 6; do
    has "$probed" "cells$i=7" || fail "week $i does not have 7 cells"
done
has "$probed" "sat=rgb(192, 192, 192)" && pass "weekend cells grey" || fail "weekend colour"
has "$probed" "mon=rgba(0, 0, 0, 0)" && pass "weekday cells not grey" || fail "weekday colour"
has "$probed" "othercolor=rgb(170, 170, 170)" && pass "other-month cell greyed text" || fail "other-month colour"
has "$dom" 'bgcolor="#C0C0C0" class="otromes"' && pass "other-month weekend: colour then class" ||
    fail "other-month weekend attributes"
has "$probed" "underline=underline" && pass "priority underlined" || fail "priority underline"
has "$probed" "weight=700" && pass "priority bold" || fail "priority bold"
has "$probed" "priority=Entrega &lt;informe&gt;" && pass "escaped text shown as written" || fail "priority text"
has "$dom" "Oculto" && fail "hidden entry shown" || pass "hidden entry left out"

if [ "$failures" -gt 0 ]; then
    echo "$failures check(s) failed"
    exit 1
fi
echo "all browser checks passed"
