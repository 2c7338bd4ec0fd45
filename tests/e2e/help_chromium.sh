#!/usr/bin/env bash
# Opens the help page in headless Chromium and checks what the browser reads: the title, the
# section headings and the seven stage lines (the page is Windows-1252; the browser must show
# the accents right). Usage: help_chromium.sh /path/to/VendrakoTimer (core_tests is found in
# ../tests beside it, or named by VT_CORE_TESTS). Skips with a line saying why when Chromium
# cannot be had.
set -u

source "$(dirname "${BASH_SOURCE[0]}")/browser_checks.bash"

page="$work/Ayuda_VendrakoTimer.htm"
VT_HELP_PAGE="$page" "$core_tests" --gtest_filter='HelpBrowserSample.*' >"$work/gtest.log" 2>&1 || {
    cat "$work/gtest.log"
    echo "FAIL: the help page could not be written"
    exit 1
}

# The text as the browser lays it out, one line per line break.
probe="$work/probe.htm"
cp "$page" "$probe"
printf '%s\n' "<script>var p=document.createElement('pre');p.id='probe';" \
    "p.textContent=document.title+'\n'+document.body.innerText;document.body.appendChild(p);</script>" >>"$probe"
text=$(dump_dom "$probe" | sed -n '/<pre id="probe">/,/<\/pre>/p')
if [ -z "$text" ]; then
    echo "FAIL: chromium printed nothing"
    exit 1
fi

expect() { check "the browser shows: $1" grep -qF -- "$1" <<<"$text"; }
expect "Ayuda_VendrakoTimer"
expect "Ayuda para el Vendrako Timer"
for heading in "Controlar las horas de trabajo" "Alarmas" "Calendario" "Accesos" "Tareas" "Trucos"; do
    expect "$heading"
done
expect "* Mas de 10 minutos: Icono fijo con 2 o 4 porciones (dependiendo del tipo de jornada)."
expect "* 10 minutos: Icono rojo intermitente."
expect "* 9 a 6 minutos: Icono rojo fijo."
expect "* 5 minutos: Icono amarillo intermitente."
expect "* 4 a 2 minutos: Icono amarillo fijo."
expect "* 1 minuto: Icono verde intermitente."
expect "* Después de la hora de salida: Icono verde fijo."
finish_checks "help page"
