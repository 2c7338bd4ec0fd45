#!/usr/bin/env bash
# Opens the generated month calendar page and the help page in headless Chromium and checks them
# as the browser sees them. A small script added to a copy of a page reports what the browser
# computed (styles, laid-out text), since the dumped DOM alone only shows the attributes.
#  - The month page: the title, six week rows of seven cells, grey weekend cells, the
#    other-month cells, and the priority entry underlined and bold.
#  - The help page: the title, the section headings and the seven stage lines (the page is
#    Windows-1252; the browser must show the accents right).
# Usage: browser_pages.sh /path/to/VendrakoTimer   (core_tests, which writes both pages, is
# found in ../tests beside it, or named by VT_CORE_TESTS). Chromium is installed from the
# distribution when it is missing; when either cannot be had the check is skipped with a line
# saying why.
set -u
source "$(dirname "${BASH_SOURCE[0]}")/checks.bash"

core_tests=${VT_CORE_TESTS:-${1:+$(dirname "$1")/../tests/core_tests}}
[ -x "$core_tests" ] || { echo "SKIP: core_tests not found (set VT_CORE_TESTS)"; exit 0; }
browser=$(command -v chromium || command -v chromium-browser || true)
if [ -z "$browser" ] && [ "$(id -u)" = 0 ] && command -v apt-get >/dev/null; then
    DEBIAN_FRONTEND=noninteractive apt-get install -y chromium >/dev/null 2>&1 || true
    browser=$(command -v chromium || true)
fi
[ -n "$browser" ] || { echo "SKIP: chromium is not installed and could not be installed here"; exit 0; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
calendar="$work/calendario.03.2024.htm"
help="$work/Ayuda_VendrakoTimer.htm"
if ! VT_CALENDAR_PAGE="$calendar" VT_HELP_PAGE="$help" "$core_tests" --gtest_filter='*BrowserSample.*' \
    >"$work/gtest.log" 2>&1 || [ ! -s "$calendar" ] || [ ! -s "$help" ]; then
    cat "$work/gtest.log"
    fail "the sample pages could not be written"
    finish_checks "browser page"
fi

# The page at path $1 as the browser holds it after its scripts ran.
dump_dom() {
    timeout 60 "$browser" --headless --no-sandbox --disable-gpu --disable-dev-shm-usage \
        --disable-background-networking --no-first-run --user-data-dir="$work/profile" \
        --dump-dom "file://$1" 2>/dev/null
}
# What the script on stdin puts in the array `out`, one item a line, once the browser has laid
# out a copy of the page $1 with that script added at its end.
probe() {
    {
        cat "$1"
        echo "<script>var out = [];"
        cat
        printf '%s\n' "var p = document.createElement('pre'); p.id = 'probe'; p.textContent = out.join('\n');"
        echo "document.body.appendChild(p);</script>"
    } >"$work/probe.htm"
    dump_dom "$work/probe.htm" | sed -n '/<pre id="probe">/,/<\/pre>/p'
}
has() { grep -qF -- "$2" <<<"$1"; }
lacks() { ! has "$@"; }

dom=$(dump_dom "$calendar")
probed=$(probe "$calendar" <<'JS'
var rows = document.querySelectorAll('table tr'), week = rows[1].cells, u = document.querySelector('td u');
out.push('rows=' + rows.length);
for (var i = 1; i < rows.length; i++) out.push('cells' + i + '=' + rows[i].cells.length);
out.push('sat=' + getComputedStyle(week[5]).backgroundColor, 'mon=' + getComputedStyle(week[0]).backgroundColor);
out.push('othercolor=' + getComputedStyle(week[0]).color);
out.push('underline=' + (u ? getComputedStyle(u).textDecorationLine : 'none'));
out.push('weight=' + (u ? getComputedStyle(u.querySelector('b')).fontWeight : 'none'));
out.push('priority=' + (u ? u.textContent : ''));
JS
)
[ -z "$dom" ] || [ -z "$probed" ] && { fail "chromium printed no month page"; finish_checks "browser page"; }
check "month: title" has "$dom" "<title>MARZO.2024</title>"
check "month: title row and six weeks" has "$probed" "rows=7"
for i in 1 2 3 4 5 6; do
    check "month: week $i has 7 cells" has "$probed" "cells$i=7"
done
check "month: weekend cells grey" has "$probed" "sat=rgb(192, 192, 192)"
check "month: weekday cells not grey" has "$probed" "mon=rgba(0, 0, 0, 0)"
check "month: other-month cell greyed text" has "$probed" "othercolor=rgb(170, 170, 170)"
check "month: other-month weekend: colour then class" has "$dom" 'bgcolor="#C0C0C0" class="otromes"'
check "month: priority underlined" has "$probed" "underline=underline"
check "month: priority bold" has "$probed" "weight=700"
check "month: escaped text shown as written" has "$probed" "priority=Entrega &lt;informe&gt;"
check "month: hidden entry left out" lacks "$dom" "Oculto"

# The help page's text as the browser lays it out, one line per line break.
text=$(probe "$help" <<<"out.push(document.title, document.body.innerText);")
[ -n "$text" ] || { fail "chromium printed no help page"; finish_checks "browser page"; }
for shown in "Ayuda_VendrakoTimer" "Ayuda para el Vendrako Timer" "Controlar las horas de trabajo" "Alarmas" \
    "Calendario" "Accesos" "Tareas" "Trucos" \
    "* Mas de 10 minutos: Icono fijo con 2 o 4 porciones (dependiendo del tipo de jornada)." \
    "* 10 minutos: Icono rojo intermitente." "* 9 a 6 minutos: Icono rojo fijo." \
    "* 5 minutos: Icono amarillo intermitente." "* 4 a 2 minutos: Icono amarillo fijo." \
    "* 1 minuto: Icono verde intermitente." "* Después de la hora de salida: Icono verde fijo."; do
    check "help: the browser shows: $shown" has "$text" "$shown"
done
finish_checks "browser page"
