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

dom=$(dump_dom "$page")
probed=$(dump_dom "$probe")
if [ -z "$dom" ]; then
    fail "chromium printed no DOM"
    exit 1
fi

has() { grep -qF -- "$2" <<<"$1"; }
lacks() { ! has "$@"; }
check "title" has "$dom" "<title>MARZO.2024</title>"
check "title row and six weeks" has "$probed" "rows=7"
for i in 1 2 3 4 5 6; do
    check "week $i has 7 cells" has "$probed" "cells$i=7"
done
check "weekend cells grey" has "$probed" "sat=rgb(192, 192, 192)"
check "weekday cells not grey" has "$probed" "mon=rgba(0, 0, 0, 0)"
check "other-month cell greyed text" has "$probed" "othercolor=rgb(170, 170, 170)"
check "other-month weekend: colour then class" has "$dom" 'bgcolor="#C0C0C0" class="otromes"'
check "priority underlined" has "$probed" "underline=underline"
check "priority bold" has "$probed" "weight=700"
check "escaped text shown as written" has "$probed" "priority=Entrega &lt;informe&gt;"
check "hidden entry left out" lacks "$dom" "Oculto"
finish_checks "calendar page"
