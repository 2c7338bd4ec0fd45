#!/usr/bin/python3
# Checks the program's iCalendar files with a reader that is not the program's.
#
# Export: the file the driver writes must be well formed, and the dates Debian's
# python3-icalendar and python3-recurring-ical-events compute for the next two years must be,
# date by date, the ones the program's own rule gives. Import: a file written by python3-icalendar
# must come in at the dates that same reader computes, each repeat choice recognised and every
# other repetition simplified.
#
# Usage: check_with_icalendar.py PATH_OF_ics_check_driver
import datetime, pathlib, re, subprocess, sys, tempfile
from collections import defaultdict

import icalendar, pytz, recurring_ical_events

ZONE = pytz.timezone("Europe/Madrid")
NOW = datetime.datetime(2024, 1, 10, 8, 0)
NOW_ARG = "2024-01-10T08:00"
AGENDA_FILE = pathlib.Path(__file__).resolve().parents[2] / "data/ical/export_agenda.txt"
failures = []


def at(*args, zone=ZONE):  # a wall-clock time, in Madrid unless told
    return zone.localize(datetime.datetime(*args))


def check(condition, message):
    if not condition:
        failures.append(message)


def run_driver(*args):
    return subprocess.check_output([sys.argv[1], *map(str, args)], text=True).splitlines()


def local(value):  # "yyyy-mm-dd hh:mm" in Madrid; a whole day gives 00:00
    if isinstance(value, datetime.datetime) and value.tzinfo is not None:
        value = value.astimezone(ZONE)
    return value.strftime("%Y-%m-%d %H:%M")


# summary -> the sorted start times the reader finds between start and stop
def occurrences(cal, start, stop):
    found = defaultdict(list)
    for event in recurring_ical_events.of(cal).between(start, stop):
        found[str(event["SUMMARY"])].append(local(event["DTSTART"].dt))
    return {summary: sorted(dates) for summary, dates in found.items()}


# What RFC 5545 asks of the file that a lenient parser would let pass.
def validate(raw):
    check(raw.startswith(b"BEGIN:VCALENDAR\r\n") and raw.endswith(b"END:VCALENDAR\r\n"), "not one VCALENDAR")
    lines = raw.split(b"\r\n")
    check(all(b"\n" not in line and b"\r" not in line for line in lines), "a line does not end in CR LF")
    check(all(len(line) <= 75 for line in lines), "a line is longer than 75 octets")
    text = raw.decode("utf-8")
    cal = icalendar.Calendar.from_ical(raw)
    check(cal.get("VERSION") == "2.0" and cal.get("PRODID"), "VERSION or PRODID missing")
    for kind, names in (("VEVENT", ("UID", "DTSTAMP", "DTSTART", "SUMMARY")),
                        ("VALARM", ("ACTION", "TRIGGER", "DESCRIPTION"))):
        for component in cal.walk(kind):
            check(all(n in component for n in names), "%s without %s" % (kind, set(names) - set(component)))
    # Every TZID parameter, of any property (lines unfolded), names a VTIMEZONE of the file.
    zones = {str(tz["TZID"]) for tz in cal.walk("VTIMEZONE")}
    for tzid in set(re.findall(r";TZID=([^:;]+)", text.replace("\r\n ", ""))):
        check(tzid in zones, "TZID %s without its VTIMEZONE" % tzid)
    uids = [str(event["UID"]) for event in cal.walk("VEVENT")]
    check(len(uids) == len(set(uids)), "UIDs repeat")
    return cal


def check_export(folder):
    path = folder / "agenda.ics"
    agenda = [line for line in AGENDA_FILE.read_text("utf-8").splitlines() if line and not line.startswith("#")]
    expected = defaultdict(list)
    for summary, when in (line.split("\t") for line in run_driver("export", path, NOW_ARG, *agenda)):
        expected[summary].append(when)
    cal = validate(path.read_bytes())
    computed = occurrences(cal, at(2024, 1, 10), at(2026, 1, 11))
    computed.pop("Recordatorio pendiente", None)
    for summary in sorted(set(expected) | set(computed)):
        mine, theirs = expected.get(summary, []), computed.get(summary, [])
        check(mine == theirs, "%s: program only %s, reader only %s"
              % (summary, sorted(set(mine) - set(theirs))[:3], sorted(set(theirs) - set(mine))[:3]))
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


# summary, start, RRULE, and the repeat code the program must give it ("00|D": a one-time alarm)
IMPORT_CASES = [
    ("Semanal lunes", at(2023, 10, 2, 10, 0), {"FREQ": "WEEKLY"}, "07|D"),
    ("Laborables", at(2023, 6, 1, 9, 0), {"FREQ": "WEEKLY", "BYDAY": ["MO", "TU", "WE", "TH", "FR"]}, "01|D"),
    ("Mensual día 5", at(2023, 3, 5, 12, 30), {"FREQ": "MONTHLY"}, "01|M"),
    ("Trimestral", at(2023, 12, 20, 12, 30), {"FREQ": "MONTHLY", "INTERVAL": 3}, "03|M"),
    ("Cumpleaños", datetime.date(1990, 3, 14), {"FREQ": "YEARLY"}, "01|A"),
    ("Cada dos años", at(2022, 6, 1, 8, 0), {"FREQ": "YEARLY", "INTERVAL": 2}, "02|A"),
    ("Todos los días", at(2024, 1, 1, 7, 0), {"FREQ": "DAILY"}, "00|D"),
    ("Tres veces", at(2024, 1, 8, 16, 0), {"FREQ": "WEEKLY", "COUNT": 3}, "00|D"),
    ("Mensual del 31", at(2023, 10, 31, 9, 0), {"FREQ": "MONTHLY"}, "00|D"),
    ("Con excepción", at(2023, 11, 1, 18, 0), {"FREQ": "WEEKLY"}, "00|D"),  # with an EXDATE, added below
    ("Vuelo UTC", datetime.datetime(2024, 2, 1, 12, 0, tzinfo=pytz.utc), None, "00|D"),
    ("Llamada a Nueva York", at(2024, 2, 2, 9, 0, zone=pytz.timezone("America/New_York")), None, "00|D"),
    ("Caña €, ñandú y 🐢", at(2024, 3, 1, 20, 0), None, "00|D"),
    ("Ya pasó", at(2023, 12, 1, 20, 0), None, "00|D"),  # no occurrence from now on: not added
]


def check_import(folder):
    cal = icalendar.Calendar()
    cal.add("PRODID", "-//check//python-icalendar//ES")
    cal.add("VERSION", "2.0")
    for summary, start, rule, _ in IMPORT_CASES:
        event = icalendar.Event()
        for name, value in (("UID", summary.encode("ascii", "replace").decode() + "@check"), ("SUMMARY", summary),
                            ("DTSTAMP", datetime.datetime(2024, 1, 1, tzinfo=pytz.utc)), ("DTSTART", start),
                            ("RRULE", rule), ("EXDATE", at(2024, 1, 17, 18, 0) if "excepción" in summary else None)):
            if value is not None:
                event.add(name, value)
        cal.add_component(event)
    path = folder / "from_python.ics"
    path.write_bytes(cal.to_ical())
    printed = defaultdict(list)
    for kind, value in (line.split("\t", 1) for line in run_driver("import", path, NOW_ARG)):
        printed[kind].append(value)
    check(printed["ILEGIBLE"] == [], "import could not read: %s" % printed["ILEGIBLE"])
    check(printed["PASADOS"] == ["1"], "past events: %s" % printed["PASADOS"])
    added = {entry[27:]: entry for entry in printed["ALARMA"]}
    simplified = printed["SIMPLIFICADA"]

    upcoming = occurrences(cal, at(2024, 1, 10, 8, 0), at(2030, 1, 1))
    for summary, _, rule, code in IMPORT_CASES:
        text = summary.replace(",", ";").replace("🐢", "?")
        entry = added.get(text)
        if summary == "Ya pasó":
            check(entry is None, "a past event was added")
        elif entry is None:
            failures.append("not imported: " + summary)
        else:
            # The reader's next occurrence; a whole day counts from today's date.
            when = min(w for w in upcoming[summary] if w >= local(NOW.date()))
            got = "%s-%s-%s %s" % (entry[6:10], entry[3:5], entry[0:2], entry[11:16])
            check(got == when, "%s: added at %s, the reader's next occurrence is %s" % (summary, got, when))
            repeat = entry[17:19] + "|" + entry[20]
            check(repeat == code, "%s: repeat %s, expected %s" % (summary, repeat, code))
            check(any(text in line for line in simplified) == (rule is not None and code == "00|D") or "?" in text,
                  summary + ": simplified list is wrong")
    check(any("Caña" in line and "«?»" in line for line in simplified), "the lost character is not reported")


with tempfile.TemporaryDirectory() as temporary_folder:
    check_export(pathlib.Path(temporary_folder))
    check_import(pathlib.Path(temporary_folder))
print("".join("FALLO: %s\n" % f for f in failures) + "ical independent check:", "FAILED" if failures else "passed")
sys.exit(1 if failures else 0)
