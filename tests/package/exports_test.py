"""Exported names of the library = version script = public headers. Usage: exports_test.py LIBRARY SOURCE_DIR"""
import re
import subprocess
import sys
from pathlib import Path

library, source = sys.argv[1], Path(sys.argv[2])


def exported():
    out = subprocess.run(["nm", "-D", "--defined-only", library], capture_output=True, text=True, check=True).stdout
    names = {line.split()[-1].split("@")[0] for line in out.splitlines()}
    return names - {"libolh.so.4"}  # the version's own symbol


def scripted():
    text = (source / "src/libolh.map").read_text()
    return set(re.findall(r"^\s+(\w+);", text.rsplit("local:", 1)[0], flags=re.M))


def declared():
    names = set()
    for header in (source / "include/olh").glob("*.h"):
        text = re.sub(r"/\*.*?\*/|^\s*#.*?$", "", header.read_text(), flags=re.S | re.M)
        for declaration in re.findall(r"OLH_API\s+([^;]*);", text):
            declaration = declaration.split(" OLH_NOEXCEPT")[0]
            pointer = re.search(r"\(\*(\w+)\)", declaration)
            function = re.match(r"[^(]*?(\w+)\(", declaration)
            names.add(pointer.group(1) if pointer else function.group(1) if function else declaration.split()[-1].lstrip("*"))
    return names


problems = []
for one, other, what in [(exported(), scripted(), "exported but not in the version script"),
                         (scripted(), exported(), "in the version script but not exported"),
                         (scripted(), declared(), "in the version script but in no public header"),
                         (declared(), scripted(), "in a public header but not in the version script")]:
    problems += [f"{name}: {what}" for name in sorted(one - other)]

dynamic = subprocess.run(["readelf", "-d", library], capture_output=True, text=True, check=True).stdout
if "[libolh.so.4]" not in dynamic:
    problems.append("SONAME is not libolh.so.4")
sanitizers = re.compile(r"lib(asan|ubsan|pthread|dl|rt)\b|libgcov")
needed = {n for n in re.findall(r"NEEDED.*\[(.*?)\]", dynamic) if not sanitizers.match(n)}
allowed = {"libiniparser.so.1", "libstdc++.so.6", "libc.so.6", "libgcc_s.so.1", "libm.so.6", "ld-linux-x86-64.so.2"}
problems += [f"needs {name}" for name in sorted(needed - allowed)]

print("\n".join(problems) or f"{len(exported())} names, needs {sorted(needed)}")
sys.exit(1 if problems or len(exported()) < 70 else 0)
