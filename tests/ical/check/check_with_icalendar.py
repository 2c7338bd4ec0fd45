#!/usr/bin/python3
"""Checks the program's iCalendar files with a reader that is not the program's.

Export: the file the driver writes must be well formed, and the dates Debian's
python3-icalendar and python3-recurring-ical-events compute for the next two years must be,
date by date, the ones the program's own rule gives. Import: a file written by python3-icalendar
must come in at the dates that same reader computes, each repeat choice recognised and every
other repetition simplified.

Usage: check_with_icalendar.py PATH_OF_ics_check_driver
"""
import datetime
import os
import subprocess
import sys
import tempfile
from collections import defaultdict

import icalendar
import pytz
import recurring_ical_events

ZONE = pytz.timezone("Europe/Madrid")
NOW = datetime.datetime(2024, 1, 10, 8, 0)
NOW_ARG = "2024-01-10T08:00"
failures = []


def check(condition, message):
    if not condition:
        failures.append(message)


def local(value):
    if isinstance(value, datetime.datetime):
        if value.tzinfo is not None:
            value = value.astimezone(ZONE)
        return value.strftime("%Y-%m-%d %H:%M")
    return value.strftime("%Y-%m-%d 00:00")


def validate(raw):
    """What RFC 5545 asks of the file that a lenient parser would let pass."""
    check(raw.startswith(b"BEGIN:VCALENDAR\r\n") and raw.endswith(b"END:VCALENDAR\r\n"), "not one VCALENDAR")
    lines = raw.split(b"\r\n")
    check(all(b"\n" not in line and b"\r" not in line for line in lines), "a line does not end in CR LF")
    check(all(len(line) <= 75 for line in lines), "a line is longer than 75 octets")
    raw.decode("utf-8")
    cal = icalendar.Calendar.from_ical(raw)
    check(cal.get("VERSION") == "2.0" and cal.get("PRODID"), "VERSION or PRODID missing")
    zones = {str(tz["TZID"]) for tz in cal.walk("VTIMEZONE")}
    uids = []
    for event in cal.walk("VEVENT"):
        for name in ("UID", "DTSTAMP", "DTSTART", "SUMMARY"):
            check(name in event, "VEVENT without %s" % name)
        uids.append(str(event["UID"]))
        for name in ("DTSTART", "RDATE"):
            props = event.get(name, [])
            for prop in props if isinstance(props, list) else [props]:
                tzid = prop.params.get("TZID")
                check(tzid is None or tzid in zones, "TZID %s without its VTIMEZONE" % tzid)
        for alarm in event.walk("VALARM"):
            for name in ("ACTION", "TRIGGER", "DESCRIPTION"):
                check(name in alarm, "VALARM without %s" % name)
    check(len(uids) == len(set(uids)), "UIDs repeat")
    return cal


def check_export(driver, folder):
    path = os.path.join(folder, "agenda.ics")
    printed = subprocess.run([driver, "export", path, NOW_ARG], check=True, capture_output=True, text=True).stdout
    expected = defaultdict(list)
    for line in printed.splitlines():
        summary, when = line.split("\t")
        expected[summary].append(when)
    with open(path, "rb") as f:
        raw = f.read()
    cal = validate(raw)

    start = ZONE.localize(NOW.replace(hour=0, minute=0))
    stop = ZONE.localize(datetime.datetime(2026, 1, 11))
    computed = defaultdict(list)
    for event in recurring_ical_events.of(cal).between(start, stop):
        computed[str(event["SUMMARY"])].append(local(event["DTSTART"].dt))
    computed = {summary: sorted(dates) for summary, dates in computed.items()}
    computed.pop("Recordatorio pendiente", None)
    for summary in sorted(set(expected) | set(computed)):
        mine, theirs = expected.get(summary, []), computed.get(summary, [])
        if mine != theirs:
            only_mine = sorted(set(mine) - set(theirs))[:3]
            only_theirs = sorted(set(theirs) - set(mine))[:3]
            failures.append("%s: program only %s, reader only %s" % (summary, only_mine, only_theirs))
    check(len(expected) == 14, "the driver gave dates for %d alarms" % len(expected))

    events = {str(e["SUMMARY"]): e for e in cal.walk("VEVENT")}
    check(not any("Oculta" in s for s in events), "the hidden alarm was exported")
    check(events["Diario guardado en sábado"]["DTSTART"].dt.weekday() == 0, "a daily alarm starts on a weekend")
    check(events["Boda (1998)"].get("PRIORITY") == 1, "the priority alarm has no PRIORITY:1")
    triggers = sorted(a["TRIGGER"].dt for a in events["Boda (1998)"].walk("VALARM"))
    check(triggers == [datetime.timedelta(days=-14), datetime.timedelta(0)], "notice days: %s" % triggers)
    check("Con inicio" in events, "the start tag is still in the summary")
    reminder = events.get("Recordatorio pendiente")
    check(reminder is not None and local(reminder["DTSTART"].dt) == "2024-01-11 17:30", "the pending reminder")
    check(reminder is not None and reminder.walk("VALARM")[0]["TRIGGER"].dt == datetime.timedelta(0),
          "the reminder's alarm is not at its time")


def event(summary, start, rule=None, **extra):
    e = icalendar.Event()
    e.add("UID", summary.encode("ascii", "replace").decode() + "@check")
    e.add("DTSTAMP", datetime.datetime(2024, 1, 1, tzinfo=pytz.utc))
    e.add("DTSTART", start)
    e.add("SUMMARY", summary)
    if rule:
        e.add("RRULE", rule)
    for name, value in extra.items():
        e.add(name, value)
    return e


def check_import(driver, folder):
    madrid = ZONE.localize
    # summary -> the repeat code the program must give it, or None for a one-time alarm
    cases = [
        (event("Semanal lunes", madrid(datetime.datetime(2023, 10, 2, 10, 0)), {"FREQ": "WEEKLY"}), "07|D"),
        (event("Laborables", madrid(datetime.datetime(2023, 6, 1, 9, 0)),
               {"FREQ": "WEEKLY", "BYDAY": ["MO", "TU", "WE", "TH", "FR"]}), "01|D"),
        (event("Mensual día 5", madrid(datetime.datetime(2023, 3, 5, 12, 30)), {"FREQ": "MONTHLY"}), "01|M"),
        (event("Trimestral", madrid(datetime.datetime(2023, 12, 20, 12, 30)), {"FREQ": "MONTHLY", "INTERVAL": 3}),
         "03|M"),
        (event("Cumpleaños", datetime.date(1990, 3, 14), {"FREQ": "YEARLY"}), "01|A"),
        (event("Cada dos años", madrid(datetime.datetime(2022, 6, 1, 8, 0)), {"FREQ": "YEARLY", "INTERVAL": 2}), "02|A"),
        (event("Todos los días", madrid(datetime.datetime(2024, 1, 1, 7, 0)), {"FREQ": "DAILY"}), None),
        (event("Tres veces", madrid(datetime.datetime(2024, 1, 8, 16, 0)), {"FREQ": "WEEKLY", "COUNT": 3}), None),
        (event("Mensual del 31", madrid(datetime.datetime(2023, 10, 31, 9, 0)), {"FREQ": "MONTHLY"}), None),
        (event("Con excepción", madrid(datetime.datetime(2023, 11, 1, 18, 0)), {"FREQ": "WEEKLY"},
               EXDATE=madrid(datetime.datetime(2024, 1, 17, 18, 0))), None),
        (event("Vuelo UTC", datetime.datetime(2024, 2, 1, 12, 0, tzinfo=pytz.utc)), None),
        (event("Llamada a Nueva York", pytz.timezone("America/New_York").localize(datetime.datetime(2024, 2, 2, 9, 0))),
         None),
        (event("Caña €, ñandú y 🐢", madrid(datetime.datetime(2024, 3, 1, 20, 0))), None),
        (event("Ya pasó", madrid(datetime.datetime(2023, 12, 1, 20, 0))), None),
    ]
    cal = icalendar.Calendar()
    cal.add("PRODID", "-//check//python-icalendar//ES")
    cal.add("VERSION", "2.0")
    for e, _ in cases:
        cal.add_component(e)
    path = os.path.join(folder, "from_python.ics")
    with open(path, "wb") as f:
        f.write(cal.to_ical())
    printed = subprocess.run([driver, "import", path, NOW_ARG], check=True, capture_output=True, text=True).stdout
    added = {}
    simplified = []
    for line in printed.splitlines():
        kind, value = line.split("\t", 1)
        if kind == "ALARMA":
            added[value[27:]] = value
        elif kind == "SIMPLIFICADA":
            simplified.append(value)
        elif kind == "ILEGIBLE":
            failures.append("import could not read: " + value)
        elif kind == "PASADOS":
            check(value == "1", "past events: " + value)

    stop = ZONE.localize(datetime.datetime(2030, 1, 1))
    for e, code in cases:
        summary = str(e["SUMMARY"])
        text = summary.replace(",", ";").replace("🐢", "?")
        single = icalendar.Calendar()
        single.add_component(e)
        upcoming = [o["DTSTART"].dt for o in recurring_ical_events.of(single).between(ZONE.localize(NOW), stop)]
        if summary == "Ya pasó":
            check(text not in added, "a past event was added")
            continue
        entry = added.get(text)
        if entry is None:
            failures.append("not imported: " + summary)
            continue
        if isinstance(upcoming[0], datetime.date) and not isinstance(upcoming[0], datetime.datetime):
            upcoming = [d for d in upcoming if d >= NOW.date()]
        when = local(upcoming[0])
        got = "%s-%s-%s %s" % (entry[6:10], entry[3:5], entry[0:2], entry[11:16])
        check(got == when, "%s: added at %s, the reader's next occurrence is %s" % (summary, got, when))
        repeat = entry[17:19] + "|" + entry[20]
        check(repeat == (code or "00|D"), "%s: repeat %s, expected %s" % (summary, repeat, code or "00|D"))
        repeats = "RRULE" in e
        check(any(text in line for line in simplified) == (repeats and code is None) or "?" in text,
              "%s: simplified list is wrong" % summary)
    check(any("Caña" in line and "«?»" in line for line in simplified), "the lost character is not reported")


def main():
    driver = sys.argv[1]
    with tempfile.TemporaryDirectory() as folder:
        check_export(driver, folder)
        check_import(driver, folder)
    for failure in failures:
        print("FALLO:", failure)
    print("ical independent check:", "FAILED" if failures else "passed")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
