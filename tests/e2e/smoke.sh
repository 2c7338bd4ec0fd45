#!/usr/bin/env bash
# Starts the real program on a virtual display, in a fresh folder of its own, and checks that
# its window appears, that a second copy on the same folder is turned away without touching
# anything, and that SIGTERM takes the closing path and ends the program cleanly, within 2 s
# whatever is on the screen (the start-up report, the repeat-later dialog, a closing scan that
# would warn). Then the installed desktop entry: a Spanish desktop starts the program, a
# month-first one is refused (its text read over the accessibility bus).
# Usage: smoke.sh /path/to/VendrakoTimer
set -u

executable=${1:?usage: smoke.sh /path/to/VendrakoTimer}
source "$(dirname "${BASH_SOURCE[0]}")/desktop.bash"
program+=("$app_dir/VendrakoTimer")
listing() { (cd "$app_dir" && find . -printf '%p %s %T@\n' | sort); }

# "DESA" skips the start-up backups, so a "Backup" folder can only come from the closing path.
start "${program[@]}" DESA
first_pid=$pid
# The proximity report comes up before the main window; it is answered like a user would.
check "the proximity report is shown at start-up" answer_box "$first_pid"
check "main window \"VendrakoTimer 3.52\" appeared within 20 s" \
    wait_for_window 20 --name "^VendrakoTimer 3\.52$" || finish smoke
check "no \"Backup\" before closing, as started with DESA" [ ! -e "$app_dir/Backup" ]

# A second copy on the same folder says so and leaves; it must not touch the folder. Enter
# presses the box's button; the second copy must then end by itself.
before=$(listing)
start "${program[@]}"
check "second instance shows its message box" answer_box "$pid"
exits "$pid" 10 -ne 0 "the second instance (its box answered)"
check "second instance left the folder unchanged" [ "$before" = "$(listing)" ] ||
    diff <(echo "$before") <(listing)
check "first instance still running" kill -0 "$first_pid"

# The session ending: SIGTERM takes the closing path, without anything modal.
kill -TERM "$first_pid"
exits "$first_pid" 10 -eq 0 "the first instance after SIGTERM"
check "closing path ran (\"Backup\" folder created)" [ -d "$app_dir/Backup" ]

# SIGTERM to process $1: gone within 2 s with status 0; $2 says what is on the screen.
ends_within_2s() {
    local start=${EPOCHREALTIME/./} took
    kill -TERM "$1"
    if wait_for_exit "$1" 3; then
        took=$((${EPOCHREALTIME/./} - start))
        check "$2: gone after SIGTERM in $((took / 1000)) ms, status $exit_status" \
            let "took < 2000000 && exit_status == 0"
    else
        fail "$2: still running 3 s after SIGTERM"
    fi
}

# SIGTERM while the start-up report is open: the closing path still runs (with DESA only it
# makes "Backup").
rm -rf "$app_dir/Backup"
start "${program[@]}" DESA
if check "the proximity report is shown again" box_up "$pid"; then
    ends_within_2s "$pid" "start-up report open"
    check "the closing path ran over the start-up report" [ -d "$app_dir/Backup" ]
fi

# SIGTERM while the repeat-later dialog shows a due reminder: the reminder stays.
ini="$app_dir/VendrakoTimer.ini"
today=$(TZ=Europe/Madrid date +%d/%m/%Y)
printf '%s\r\n' "[GENERAL]" "FECHA=$(TZ=Europe/Madrid date +%d-%m-%y)" "NUM_ALARMAS=0" "" "[REPETICIONES]" \
    "REP_001=$today 00:00 Llamar a Ana" "" "[ALARMAS]" "" >"$ini"
start "${program[@]}" DESA
answer_box "$pid"
if check "the repeat-later dialog comes up" wait_for_window 20 --pid "$pid" --name "^Repetici"; then
    ends_within_2s "$pid" "repeat-later dialog open"
    check "the reminder is still in the settings file" grep -aq "^REP_001=$today 00:00 Llamar a Ana" "$ini" ||
        grep -a REP_ "$ini"
fi
rm -f "$ini"

# SIGTERM when the closing scan would warn of a recent file dated in the future.
touch "$work/futuro.odt"
mkdir -p "$work/home/.local/share"
cat >"$work/home/.local/share/recently-used.xbel" <<XBEL
<?xml version="1.0" encoding="UTF-8"?>
<xbel version="1.0" xmlns:bookmark="http://www.freedesktop.org/standards/desktop-bookmarks">
  <bookmark href="file://$work/futuro.odt" added="2099-01-01T10:00:00Z" modified="2099-01-01T10:00:00Z" visited="2099-01-01T10:00:00Z"/>
</xbel>
XBEL
start "${program[@]}" DESA
# The start-up report, then the start-up scan's own warning, answered like a user would.
for box in report warning; do
    check "the $box box at start-up" answer_box "$pid"
    sleep 0.5
done
if check "main window after the warning of the future file" wait_for_window 20 --pid "$pid" --name "^VendrakoTimer 3\.52$"; then
    sleep 1
    ends_within_2s "$pid" "closing scan with a future file"
fi
rm -f "$work/home/.local/share/recently-used.xbel"

# The installed desktop entry, started the way a desktop does, in Spanish and in US English.
build_dir=$(dirname "$executable")
while [ ! -f "$build_dir/CMakeCache.txt" ] && [ "$build_dir" != / ]; do build_dir=$(dirname "$build_dir"); done
prefix="$work/installed"
if ! cmake --install "$build_dir" --prefix "$prefix" >"$work/install.log" 2>&1; then
    fail "cmake --install into $prefix failed"
    cat "$work/install.log"
    finish smoke
fi
exec_line=$(sed -n 's/^Exec=//p' "$prefix/share/applications/VendrakoTimer.desktop")
read -r -a exec_words <<<"$exec_line"
# A desktop session's environment: the language in LANG alone, the entry's Exec on PATH.
session=(env -u LC_ALL -u LC_TIME -u LC_MESSAGES -u QT_QPA_PLATFORM PATH="$prefix/bin:$PATH" "${home_env[@]}"
    QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1)
installed_listing() { (cd "$prefix/bin" && find . | sort); }
before=$(installed_listing)

start "${session[@]}" LANG=en_US.UTF-8 "${exec_words[@]}"
refused() {
    widgets names | grep -Fxq "label: Para que el programa funcione correctamente el formato de la fecha debe ser 'dd/MM/yyyy'."
}
if check "en_US: a refusal box" box_up "$pid"; then
    check "en_US: refused with the date-format message" wait_until 5 refused || widgets names | head -n 20
    answer_box "$pid"
    exits "$pid" 10 -ne 0 "en_US (its refusal answered)"
fi
check "en_US: nothing written beside the program ($(installed_listing | tr '\n' ' '))" \
    [ "$before" = "$(installed_listing)" ]

start "${session[@]}" LANG=es_ES.UTF-8 "${exec_words[@]}"
answer_box "$pid"
check "es_ES through the desktop entry's \"Exec=$exec_line\": the main window is up" \
    wait_for_window 20 --pid "$pid" --name "^VendrakoTimer 3\.52$"
kill -TERM "$pid" 2>/dev/null
wait_for_exit "$pid" 5 || fail "es_ES: still running after SIGTERM"

finish smoke
