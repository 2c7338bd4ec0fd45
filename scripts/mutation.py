#!/usr/bin/python3
"""The project's own mutation run: changes one line of a source file at a time, rebuilds what
the change touches, runs the test programs that link the changed file and counts how many of
those changes the tests notice. scripts/mutation.sh is the way in; see the README.

A mutant is one of these one-line changes:
  relational   a < b -> a <= b, <= -> <, > -> >=, >= -> >, == -> !=, != -> ==
  logical      && -> ||, || -> &&
  integer      a decimal literal N -> N+1 and N-1
  arithmetic   binary + -> -, binary - -> +
  negate       if (c) / while (c) -> if (!(c)) / while (!(c))
  string       "text" -> "", "" -> "mutado"
  delete       a whole expression statement removed
Binary operators are recognised by the spaces clang-format puts around them, which tells
a < b from the angle brackets of a template.
"""

import argparse
import fnmatch
import hashlib
import json
import os
import random
import re
import signal
import subprocess
import sys
import time
from collections import defaultdict
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
EQUIVALENT_FILE = ROOT / "scripts" / "mutation-equivalent.txt"
QT_NAME = re.compile(r"^(qt_.*|.*_window\..*|.*_dialog\..*|tray_icon\..*)$")

# ---- finding the mutants --------------------------------------------------------------------

TOKEN = re.compile(
    r"""(?P<string>"(?:[^"\\]|\\.)*")|(?P<char>'(?:[^'\\]|\\.)*')|(?P<comment>//.*)|(?P<open>/\*)"""
    r"""|(?P<number>\b\d[\w.']*)|(?P<word>[A-Za-z_]\w*)"""
    r"""|(?P<op><<=|>>=|<=>|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||\+=|-=|::|.)""",
    re.S,
)
SWAPS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||",
         "||": "&&", "+": "-", "-": "+"}
KIND = {"<": "relational", "<=": "relational", ">": "relational", ">=": "relational",
        "==": "relational", "!=": "relational", "&&": "logical", "||": "logical",
        "+": "arithmetic", "-": "arithmetic"}
STATEMENT_START = re.compile(r"^(if|for|while|switch|else|do|case|default|return\s|return$|"
                             r"using|typedef|namespace|template|struct|class|enum|static_assert|}|{|#)")
DECLARATION = re.compile(r"^(?:(?:const|static|constexpr|inline|thread_local)\s+)*"
                         r"[A-Za-z_][\w:]*(?:<.*>)?[\s*&]+[A-Za-z_]\w*\s*(?:=|\{|\(|;|\[)")


class Mutant:
    def __init__(self, path, line_no, line, new_line, kind, change):
        self.path, self.line_no, self.line, self.new_line = path, line_no, line, new_line
        self.kind, self.change = kind, change

    def key(self):
        # File, the line's text and the change: stays valid when lines above it move.
        return f"{self.path} | {self.change} | {self.line.strip()}"

    def where(self):
        return f"{self.path}:{self.line_no}: {self.change}"


def scan_line(text, in_comment):
    """Splits one line into tokens (start, kind, text), skipping comments."""
    tokens, pos = [], 0
    if in_comment:
        end = text.find("*/")
        if end < 0:
            return tokens, True
        pos = end + 2
    while pos < len(text):
        m = TOKEN.match(text, pos)
        if m.lastgroup == "comment":
            break
        if m.lastgroup == "open":
            end = text.find("*/", m.end())
            if end < 0:
                return tokens, True
            pos = end + 2
            continue
        if not m.group().isspace():
            tokens.append((m.start(), m.lastgroup, m.group()))
        pos = m.end()
    return tokens, False


def spaced(text, start, end):
    return start > 0 and text[start - 1] == " " and end < len(text) and text[end] == " "


def closing_paren(tokens, open_index):
    depth = 0
    for i in range(open_index, len(tokens)):
        if tokens[i][2] == "(":
            depth += 1
        elif tokens[i][2] == ")":
            depth -= 1
            if depth == 0:
                return i
    return None


def line_mutants(path, line_no, text, tokens, previous_end):
    found, seen = [], defaultdict(int)

    def add(kind, change, start, end, replacement):
        seen[change] += 1
        found.append(Mutant(path, line_no, text, text[:start] + replacement + text[end:], kind,
                            f"{change} #{seen[change]}"))

    for i, (start, kind, tok) in enumerate(tokens):
        end = start + len(tok)
        if kind == "op" and tok in SWAPS and spaced(text, start, end):
            neighbours = [t[1] for t in tokens[max(i - 1, 0):i + 2]]
            if tok in "+-" and "string" in neighbours:
                continue  # joins texts: "-" would not compile
            add(KIND[tok], f"{tok} -> {SWAPS[tok]}", start, end, SWAPS[tok])
        elif kind == "number" and re.fullmatch(r"\d+[uUlL]*", tok) and (tok == "0" or tok[0] != "0"):
            digits = re.match(r"\d+", tok).group()
            value, suffix = int(digits), tok[len(digits):]
            add("integer", f"{tok} -> {value + 1}{suffix}", start, end, f"{value + 1}{suffix}")
            if value > 0:
                add("integer", f"{tok} -> {value - 1}{suffix}", start, end, f"{value - 1}{suffix}")
        elif kind == "string":
            if tok == '""':
                add("string", '"" -> "mutado"', start, end, '"mutado"')
            else:
                add("string", f"{tok} -> \"\"", start, end, '""')
        elif kind == "word" and tok in ("if", "while") and i + 1 < len(tokens) and tokens[i + 1][2] == "(":
            close = closing_paren(tokens, i + 1)
            if close is not None:
                a, b = tokens[i + 1][0] + 1, tokens[close][0]
                add("negate", f"negate {tok}", a, b, f"!({text[a:b]})")
    code = text.strip()
    if (tokens and code.endswith(";") and previous_end in (";", "{", "}", ":")
            and not STATEMENT_START.match(code) and not DECLARATION.match(code)
            and code.count("(") == code.count(")") and code.count("{") == code.count("}")):
        found.append(Mutant(path, line_no, text, "", "delete", "delete statement"))
    return found


def file_mutants(path):
    lines = (ROOT / path).read_text(encoding="utf-8", errors="surrogateescape").split("\n")
    found, in_comment, previous_end = [], False, "{"
    for number, raw in enumerate(lines, 1):
        text = raw.rstrip("\r")
        if text.lstrip().startswith("#") and not in_comment:
            continue
        tokens, in_comment_after = scan_line(text, in_comment)
        skip = "static_assert" in text or "extern \"C\"" in text
        if tokens and not skip:
            found += line_mutants(path, number, text, tokens, previous_end)
        if tokens:
            previous_end = tokens[-1][2]
        in_comment = in_comment_after
    return found


def all_mutants(pattern):
    sources = sorted(str(p.relative_to(ROOT)) for p in (ROOT / "src").rglob("*.cpp"))
    if pattern:
        sources = [s for s in sources if fnmatch.fnmatch(s, pattern) or fnmatch.fnmatch(s, f"*{pattern}*")]
    return [m for s in sources for m in file_mutants(s)]


def read_equivalents():
    equivalent = {}
    if EQUIVALENT_FILE.exists():
        for line in EQUIVALENT_FILE.read_text(encoding="utf-8").splitlines():
            if line.strip() and not line.startswith("#"):
                fields = line.split(" | ")
                equivalent[" | ".join(fields[:-1])] = fields[-1]
    return equivalent


# ---- building and judging ---------------------------------------------------------------------

def run(cmd, **kw):
    return subprocess.run(cmd, cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          errors="replace", **kw)


class Judge:
    def __init__(self, build, with_crash_test):
        self.build = build
        self.qt_tests = sorted(p.stem for p in (ROOT / "tests" / "qt").glob("tst_*.cpp"))
        self.core_programs = ["core_tests"] + (["test_kill_during_save"] if with_crash_test else [])
        self.env = dict(os.environ, QT_QPA_PLATFORM="offscreen", TZ="UTC", LC_TIME="en_GB.UTF-8")
        self.env.pop("DISPLAY", None)

    def program(self, name):
        for sub in ("tests", "tests/crash"):
            p = self.build / sub / name
            if p.exists():
                return p
        raise SystemExit(f"mutation: {name} was not built")

    def configure(self):
        if not (self.build / "build.ninja").exists():
            flags = ["-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0",
                     "-DVENDRAKO_BENCH=OFF", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON"]
            if subprocess.run(["sh", "-c", "command -v ld.lld"], stdout=subprocess.DEVNULL).returncode == 0:
                flags.append("-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld")  # links in a fraction of the time
            if subprocess.run(["sh", "-c", "command -v ccache"], stdout=subprocess.DEVNULL).returncode == 0:
                flags.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")  # restoring a file is then a cache hit
            result = run(["cmake", "-S", ".", "-B", str(self.build)] + flags)
            if result.returncode:
                raise SystemExit("mutation: cmake failed\n" + result.stdout)
        commands = json.loads((self.build / "compile_commands.json").read_text())
        self.objects = {}
        for c in commands:
            source = Path(c["file"]).resolve()
            if ROOT / "src" in source.parents:
                output = c.get("output") or re.search(r" -o (\S+)", c["command"]).group(1)
                self.objects[str(source.relative_to(ROOT))] = Path(c["directory"]) / output

    def ninja(self, targets):
        return run(["ninja", "-C", str(self.build), "-j", str(os.cpu_count() or 2)] + targets)

    def build_baseline(self, chosen):
        # Only the programs the chosen mutants need: a run over core files builds no Qt test.
        qt = any(QT_NAME.match(Path(m.path).name) for m in chosen)
        core = any(not QT_NAME.match(Path(m.path).name) for m in chosen)
        self.core_programs = self.core_programs if core else ["core_tests"]
        self.qt_tests = self.qt_tests if qt else []
        result = self.ninja(self.core_programs + self.qt_tests)
        if result.returncode:
            raise SystemExit("mutation: the unchanged tree does not build\n" + result.stdout[-3000:])
        self.object_hash = {s: digest(o) for s, o in self.objects.items() if o.exists()}
        self.links = self.linked_objects()

    def linked_objects(self):
        """For each program, the source files whose object it links: a program links an
        object of a static library only when it needs one of its symbols."""
        defined = {}
        for source, obj in self.objects.items():
            out = run(["nm", "--defined-only", "--extern-only", str(obj)]).stdout.split("\n")
            defined[source] = {l.split()[-1] for l in out if re.match(r"^\S+ [TDBR] ", l)}
        links = {}
        for name in self.core_programs + self.qt_tests:
            out = run(["nm", "--defined-only", str(self.program(name))]).stdout.split("\n")
            symbols = {l.split()[-1] for l in out if len(l.split()) == 3}
            # An object with no symbol of its own to look for counts as linked.
            links[name] = {s for s, syms in defined.items() if syms & symbols or not syms}
        return links

    def programs_for(self, source):
        library = self.objects[source].parts
        if "vendrako_core.dir" not in library and "vendrako_gui.dir" not in library:
            return []  # main.cpp and the build helper: only the program itself and e2e run them
        candidates = self.qt_tests if QT_NAME.match(Path(source).name) else self.core_programs
        return [p for p in candidates if source in self.links[p]]

    def run_tests(self, name, limit):
        """Runs one test program; returns (passed, failing test names or None, timed out)."""
        started = time.monotonic()
        qt = name.startswith("tst_")
        try:
            # -v1 makes a Qt test say which function it enters, so a crash is put on it.
            result = subprocess.run([str(self.program(name))] + (["-v1"] if qt else []),
                                    cwd=self.build, env=self.env,
                                    stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=limit,
                                    errors="replace", text=True, start_new_session=True)
            output, code, timed_out = result.stdout, result.returncode, False
        except subprocess.TimeoutExpired as e:
            output = e.stdout.decode(errors="replace") if isinstance(e.stdout, bytes) else (e.stdout or "")
            code, timed_out = -1, True
        self.last_time = time.monotonic() - started
        if qt:
            failing = set(re.findall(r"^FAIL!  : \w+::(\w+)\(", output, re.M))
            entered = re.findall(r"^INFO   : \w+::(\w+)\(.*?\) entering", output, re.M)
            if code != 0 and not failing and entered:
                failing.add(entered[-1])
            return code == 0, failing, timed_out
        failing = set(re.findall(r"^\[  FAILED  \] (\S+?)(?:,| \(|$)", output, re.M))
        running = re.findall(r"^\[ RUN      \] (\S+)", output, re.M)
        finished = set(re.findall(r"^\[       (?:OK|FAILED) \] (\S+?)(?:,| \(|$)", output, re.M)) | failing
        unfinished = [t for t in running if t not in finished]
        if code != 0 and unfinished:  # a crash or a hang inside this test
            failing.add(unfinished[-1])
        return code == 0, failing, timed_out


def digest(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def gtest_files(judge):
    """Test name -> its source file, from the JSON report of the unchanged core_tests."""
    report = judge.build / "mutation-baseline.json"
    run([str(judge.program("core_tests")), f"--gtest_output=json:{report}"])
    files = {}
    for suite in json.loads(report.read_text())["testsuites"]:
        for test in suite["testsuite"]:
            # ccache's base folder makes the recorded path relative; the tail is enough.
            files[f"{suite['name']}.{test['name']}"] = re.search(r"tests/[^/]+/[^/]+$", test["file"]).group()
    return files


# ---- the run ----------------------------------------------------------------------------------

class Restorer:
    """Puts the original text back whatever happens, including Ctrl-C and SIGTERM."""

    def __init__(self):
        self.saved = None
        for sig in (signal.SIGTERM, signal.SIGHUP):
            signal.signal(sig, lambda *_: sys.exit(130))

    def write(self, path, data):
        self.saved = (path, (ROOT / path).read_bytes())
        (ROOT / path).write_bytes(data)

    def restore(self):
        if self.saved:
            (ROOT / self.saved[0]).write_bytes(self.saved[1])
            self.saved = None


def mutated_bytes(m):
    original = (ROOT / m.path).read_bytes().decode("utf-8", errors="surrogateescape").split("\n")
    ending = "\r" if original[m.line_no - 1].endswith("\r") else ""
    original[m.line_no - 1] = m.new_line + ending
    return "\n".join(original).encode("utf-8", errors="surrogateescape")


def main():
    parser = argparse.ArgumentParser(description="Mutation run over src/")
    parser.add_argument("--seed", type=int, default=1, help="sampling seed (1)")
    parser.add_argument("--count", type=int, default=300, help="mutants to run (300); 0 for all")
    parser.add_argument("--files", default="", help="only source files matching this pattern")
    parser.add_argument("--core", action="store_true", help="only the core files, no Qt test built")
    parser.add_argument("--build", default="build/mutation", help="build tree (build/mutation)")
    parser.add_argument("--list", action="store_true", help="print the chosen mutants and stop")
    parser.add_argument("--crash-test", action="store_true",
                        help="also judge core mutants with the kill-during-save test (slow)")
    args = parser.parse_args()

    if run(["git", "diff", "--quiet", "--", "src"]).returncode:
        raise SystemExit("mutation: src/ has changes not committed (a mutant left by a killed run? "
                         "`git diff src` shows it); commit or undo them first")
    mutants = all_mutants(args.files)
    if args.core:
        mutants = [m for m in mutants if not QT_NAME.match(Path(m.path).name)]
    chosen = mutants
    if args.count and args.count < len(mutants):
        chosen = random.Random(args.seed).sample(mutants, args.count)
    chosen.sort(key=lambda m: (m.path, m.line_no, m.change))
    print(f"{len(chosen)} of {len(mutants)} mutants (seed {args.seed})", flush=True)
    if args.list:
        for m in chosen:
            print(f"  {m.where()}")
        return 0

    judge = Judge(ROOT / args.build, args.crash_test)
    judge.configure()
    print("building the unchanged tree ...", flush=True)
    judge.build_baseline(chosen)
    test_file = gtest_files(judge)
    limits = {}
    for name in judge.core_programs + judge.qt_tests:
        passed, failing, _ = judge.run_tests(name, 600)
        if not passed:
            raise SystemExit(f"mutation: {name} fails on the unchanged tree: {sorted(failing)}")
        limits[name] = 10 + 5 * judge.last_time  # a mutant past this hangs: killed by timeout
    equivalent = read_equivalents()
    used_equivalents = set()

    outcome = defaultdict(list)  # killed, survived, equivalent, uncovered, not-compiled
    kills_by = {}  # mutant index -> set of test files that kill it
    record = []  # per mutant: where, verdict and the test cases that kill it
    timeouts = 0
    restorer = Restorer()
    started = time.monotonic()
    try:
        for index, m in enumerate(chosen):
            t0 = time.monotonic()
            programs = judge.programs_for(m.path)
            if m.key() in equivalent:
                used_equivalents.add(m.key())
                outcome["equivalent"].append(m)
                verdict = "equivalent (listed)"
            elif not programs:
                outcome["uncovered"].append(m)
                verdict = "survived: no test program links this file"
            else:
                restorer.write(m.path, mutated_bytes(m))
                built = judge.ninja(programs)
                if built.returncode:
                    outcome["not-compiled"].append(m)
                    verdict = "does not compile"
                elif digest(judge.objects[m.path]) == judge.object_hash[m.path]:
                    outcome["equivalent"].append(m)
                    verdict = "equivalent (same object code)"
                else:
                    killers, cases = set(), []
                    for name in programs:
                        passed, failing, timed_out = judge.run_tests(name, limits[name])
                        timeouts += timed_out
                        if not passed:
                            if name == "core_tests":
                                killers |= {test_file.get(t, "tests/?") for t in failing} or {"tests/?"}
                                cases += sorted(failing)
                            else:
                                source = str(next((ROOT / "tests").rglob(f"{name}.cpp")).relative_to(ROOT))
                                killers.add(source)
                                cases += [f"{name}::{f}" for f in sorted(failing)] or [f"{name}::?"]
                    if killers:
                        kills_by[index] = killers
                        outcome["killed"].append(m)
                        verdict = "killed" + (" (timeout)" if timed_out else "")
                    else:
                        outcome["survived"].append(m)
                        verdict = "SURVIVED"
                restorer.restore()
            record.append({"mutant": m.where(), "key": m.key(), "verdict": verdict,
                           "programs": programs, "killed_by": cases if index in kills_by else []})
            print(f"[{index + 1}/{len(chosen)}] {time.monotonic() - t0:5.1f}s {verdict}: {m.where()}",
                  flush=True)
    finally:
        restorer.restore()
    elapsed = time.monotonic() - started
    # Which test cases kill which mutant, to weigh single tests and not only files.
    (judge.build / "mutation-kills.json").write_text(json.dumps(record, indent=1, ensure_ascii=False))

    # Rebuild the restored tree so the next run starts from it.
    judge.ninja(judge.core_programs + judge.qt_tests)
    if run(["git", "diff", "--quiet", "--", "src"]).returncode:
        raise SystemExit("mutation: src/ differs from git after the run; see `git diff src`")

    killed, survived = len(outcome["killed"]), len(outcome["survived"]) + len(outcome["uncovered"])
    print()
    print(f"mutants run: {len(chosen)} in {elapsed / 60:.1f} min ({elapsed / max(len(chosen), 1):.1f} s each)")
    print(f"  killed {killed} (by timeout {timeouts}), survived {survived} "
          f"(of which {len(outcome['uncovered'])} in files no test program links), "
          f"equivalent {len(outcome['equivalent'])}, set aside as not compiling {len(outcome['not-compiled'])}")
    if killed + survived:
        print(f"kill rate: {100 * killed / (killed + survived):.1f} % ({killed} of {killed + survived})")
    if outcome["survived"] or outcome["uncovered"]:
        print("\nsurvivors (add a test, or list a true equivalent in scripts/mutation-equivalent.txt):")
        for m in outcome["survived"] + outcome["uncovered"]:
            print(f"  {m.where()}\n      {m.line.strip()}\n      key: {m.key()}")

    files = sorted(str(p.relative_to(ROOT)) for p in (ROOT / "tests").rglob("*.cpp")
                   if re.match(r"(test|tst)_", p.name))
    kills, unique = defaultdict(int), defaultdict(int)
    for killers in kills_by.values():
        for f in killers:
            kills[f] += 1
            if len(killers) == 1:
                unique[f] += 1
    print(f"\n{'test file':<46} {'lines':>6} {'kills':>6} {'only it':>8}")
    for f in sorted(files, key=lambda f: (-kills[f], -unique[f], f)):
        lines = len((ROOT / f).read_bytes().split(b"\n")) - 1
        print(f"{f:<46} {lines:>6} {kills[f]:>6} {unique[f]:>8}")
    if kills.get("tests/?"):
        print(f"{'(test file unknown)':<46} {'':>6} {kills['tests/?']:>6}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
