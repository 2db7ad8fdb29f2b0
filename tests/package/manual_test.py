"""The manual pages: without a fault that mandoc knows, complete for the functions, programs and variables that there
are, with samples that are what they say.

Usage: manual_test.py SOURCE_DIR C_COMPILER
"""
import re
import subprocess
import sys
from pathlib import Path

source, compiler = Path(sys.argv[1]), sys.argv[2]
pages = sorted((source / "share/man").iterdir())
problems = []


def page(name):
    return (source / "share/man" / name).read_text()


def without_fault():
    # -W warning: what is a matter of style only, such as the operating system's own way to write a date, is not a fault.
    done = subprocess.run(["mandoc", "-T", "lint", "-W", "warning", *pages], capture_output=True, text=True)
    problems.extend((done.stdout + done.stderr).splitlines())


def documented_functions():
    script = (source / "src/libolh.map").read_text().rsplit("local:", 1)[0]
    exported = set(re.findall(r"^\s+(\w+);", script, flags=re.M))
    headers = "".join(h.read_text() for h in (source / "include/olh").glob("*.h"))
    functions = {name for name in exported if re.search(rf"OLH_API\s[^;]*\b{name}\(", headers)}
    entries = set(re.findall(r'^\.It Fn "[^"]*?(\w+)"', page("libolh.3"), flags=re.M))
    problems.extend(f"libolh(3) has no entry for {name}" for name in sorted(functions - entries))
    problems.extend(f"libolh(3) tells of {name}, which is not exported" for name in sorted(entries - functions))
    if len(functions) < 70:
        problems.append(f"only {len(functions)} functions seen in the headers")


def prototypes():
    """What libolh(3) says a function takes is what the header says: a C compiler compares them."""
    lines = ["#include <olh/olh.h>", "#include <olh/support.h>", "#include <olh/dmerge.h>"]
    for entry in re.findall(r'^\.It Fn (".*")$', page("libolh.3"), flags=re.M):
        function, *parameters = re.findall(r'"([^"]*)"', entry)
        taken = "" if parameters == ["..."] else ", ".join(parameters)
        lines.append(f"{function}({taken});")
    done = subprocess.run([compiler, "-std=c99", "-fsyntax-only", "-x", "c", f"-I{source}/include", "-"],
                          input="\n".join(lines), capture_output=True, text=True)
    problems.extend(line for line in done.stderr.splitlines() if "error" in line)


def documented_variables():
    rooms = [source / "src", source / "tools/viewers", source / "tools/olh-browser", source / "tools/olh-pdf-reader"]
    code = "".join(f.read_text() for room in rooms for f in room.rglob("*") if f.suffix in (".cpp", ".h"))
    read = set(re.findall(r'"((?:QEL|TRV|OLH(?!_VIEWER_|_DISPLAY_))_[A-Z_]+)"', code))
    told = set(re.findall(r"\b(?:QEL|OLH|TRV)_[A-Z_]+\b", " ".join(re.findall(r"^\.It Ev (.*)$", page("olh_environment.7"), flags=re.M))))
    keys_of_files = set(re.findall(r"^\.It Ic (\w+)$", page("qel_doc_options.ini.5") + page("qel_viewer_config.ini.5"), flags=re.M))
    problems.extend(f"olh_environment(7) does not tell of {name}" for name in sorted(read - told - keys_of_files))
    problems.extend(f"olh_environment(7) tells of {name}, which nothing reads" for name in sorted(told - read))


def variables_of_page():
    """What olh_environment(7) marks up in the entry of each variable or file: names, values, paths."""
    told = {}
    for entry in re.split(r"^\.It ", page("olh_environment.7").split(".Sh DESCRIPTION")[1], flags=re.M)[1:]:
        names, text = entry.split("\n", 1)
        marked = re.findall(r"^\.(?:Dq|Pa|Fn|Ev|Dv) (\S+)|^\.Xr (olh-\S+)", text.split("\n.El")[0], flags=re.M)
        for name in re.findall(r"[A-Z_]{4,}|/\S+", names):
            told[name] = {one or other for one, other in marked}
    return told


def variables_of_topic():
    """The same of the manual's topic."""
    topic = (source / "share/docs/htmldocs/olh_manual/environment.htm").read_text()
    told = {}
    for names, text in re.findall(r"((?:<dt[^>]*>.*?</dt>\s*)+)<dd>(.*?)</dd>", topic, flags=re.S):
        for name in re.findall(r"<code>(.*?)</code>", names):
            told[name] = set(re.findall(r"<code>(.*?)</code>", text))
    return told


def same_variables_in_both():
    """The page and the topic are two texts about the same things."""
    of_page, of_topic = variables_of_page(), variables_of_topic()
    if len(of_page) < 15:
        problems.append(f"only {sorted(of_page)} seen in olh_environment(7)")
    for name in sorted(of_page.keys() | of_topic.keys()):
        in_page, in_topic = of_page.get(name), of_topic.get(name)
        if in_page != in_topic:
            problems.append(f"{name}: olh_environment(7) tells of {in_page}, the topic environment of {in_topic}")


def pages_of_programs():
    for program in (p.name for p in (source / "tools").iterdir() if (p / "main.cpp").exists()):
        if not (source / f"share/man/{program}.1").exists():
            problems.append(f"{program} has no manual page")
    for adapter in ("olh-browser", "olh-pdf-reader"):
        has = set(re.findall(r"--([a-z-]+)", (source / f"tools/{adapter}/main.cpp").read_text())) | {"help", "version"}
        told = set(re.findall(r"Fl Fl ([a-z-]+)", page(f"{adapter}.1")))
        problems.extend(f"{adapter}(1) and --help do not agree about --{name}" for name in sorted(has ^ told))


def cross_references():
    there = {p.name for p in pages}
    for one in pages:
        for name, section in re.findall(r"^\.Xr (\S+) (\d)", one.read_text(), flags=re.M):
            if f"{name}.{section}" not in there and name not in ("w3m", "pdftotext", "pdfinfo"):
                problems.append(f"{one.name} refers to {name}({section}), which is not there")


def samples():
    """A sample is marked by a comment that gives it a name; a C program compiles, a file of options loads."""
    found = 0
    for one in pages:
        for name, sample in re.findall(r'^\.\\" sample: (\S+)\n\.Bd [^\n]*\n(.*?)^\.Ed', one.read_text(), flags=re.M | re.S):
            found += 1
            sample = sample.replace("\\e", "\\")
            if name.endswith(".c"):
                done = subprocess.run([compiler, "-std=c99", "-Wall", "-Werror", "-fsyntax-only", "-x", "c", f"-I{source}/include",
                                       "-"], input=sample, capture_output=True, text=True)
                problems.extend(f"{one.name}: {line}" for line in done.stderr.splitlines())
            elif name.endswith(".ini"):
                lines = [line for line in sample.splitlines() if line and not re.match(r'#|[A-Z_]+="[^"]*"$', line)]
                problems.extend(f"{one.name}: {line} would spoil the file" for line in lines)
    if found < 5:
        problems.append(f"only {found} samples found")


try:
    without_fault()
except FileNotFoundError:
    print("skipped: mandoc is not installed")
    sys.exit(77)
for check in (documented_functions, prototypes, documented_variables, same_variables_in_both, pages_of_programs,
              cross_references, samples):
    check()
print("\n".join(problems) or f"{len(pages)} pages")
sys.exit(1 if problems else 0)
