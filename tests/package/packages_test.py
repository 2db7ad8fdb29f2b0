"""The Debian packages: their files, what they say of themselves, and that what is in them works wherever it is unpacked.

Usage: packages_test.py BUILD_DIR SOURCE_DIR LIBDIR     (LIBDIR: of libraries below the prefix, "lib" or so)
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

build, source, libdir = Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve(), sys.argv[3]
problems = []


def run(*command, **more):
    done = subprocess.run(list(map(str, command)), capture_output=True, text=True, **more)
    if done.returncode:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout}{done.stderr}")
    return done.stdout


def expected_files():
    files, package = {}, None
    for line in Path(__file__).with_name("packages.txt").read_text().splitlines():
        if line.startswith("#") or not line:
            package = None
        elif package is None:
            package, files[line] = line, set()
        else:
            files[package].add(re.sub(r"^LIB/", f"usr/{libdir}/", line))
    files["olh"] |= {f"usr/bin/{p.name}" for p in (source / "tools").iterdir() if (p / "main.cpp").exists()}
    files["olh-doc"] |= {f"usr/share/olh/docs/{p.relative_to(build / 'docs')}"
                         for p in (build / "docs").rglob("*") if p.is_file()}
    return files


def listed_files(package):
    """The files of a package; what is not root's, or may be written by others, is a problem."""
    names = set()
    for line in run("dpkg-deb", "--contents", package).splitlines():
        mode, owner, _, _, _, name = line.split(None, 5)
        if owner != "root/root" or mode[0] in "-d" and (mode[5] == "w" or mode[8] == "w"):
            problems.append(f"{package.name}: {mode} {owner} {name}")
        if mode[0] != "d":
            names.add(name.removeprefix("./"))
    return names


def field(package, name):
    return run("dpkg-deb", "--field", package, name).strip()


def compare_files(packages):
    for name, expected in expected_files().items():
        listed = listed_files(packages[name])
        problems.extend(f"{name}: {file} is missing" for file in sorted(expected - listed))
        problems.extend(f"{name}: {file} is not in packages.txt" for file in sorted(listed - expected))


def compare_descriptions(packages):
    version = field(packages["libolh4"], "Version")
    upstream = version.rsplit("-", 1)[0]
    for name, depends in {"libolh4": ["libiniparser1", "libc6", "libstdc++6"], "libolh-dev": [f"libolh4 (= {version})"],
                          "olh": [f"libolh4 (>= {upstream})", "libcpp-httplib0", "libc6"], "olh-doc": []}.items():
        told = field(packages[name], "Depends")
        problems.extend(f"{name} does not depend on {one}: {told}" for one in depends if one not in told)
        if field(packages[name], "Architecture") != ("all" if name == "olh-doc" else run("dpkg", "--print-architecture").strip()):
            problems.append(f"{name}: architecture {field(packages[name], 'Architecture')}")
        if len(field(packages[name], "Description").splitlines()) < 3:
            problems.append(f"{name}: description {field(packages[name], 'Description')!r}")
    for control, text in {"shlibs": f"libolh 4 libolh4 (>= {version})", "triggers": "activate-noawait ldconfig"}.items():
        if run("dpkg-deb", "--info", packages["libolh4"], control).strip() != text:
            problems.append(f"libolh4: {control}: {run('dpkg-deb', '--info', packages['libolh4'], control)}")
    for name in ("olh", "olh-doc"):
        if run("dpkg-deb", "--info", packages[name], "conffiles").split() != [f"/etc/profile.d/{name}.sh"]:
            problems.append(f"{name}: /etc/profile.d/{name}.sh would be overwritten by an update")


def compare_symbols(packages, scratch):
    """The symbols file lists exactly the names of the library: what programs are made to depend on is true."""
    run("dpkg-deb", "-x", packages["libolh4"], scratch / "library")
    (scratch / "debian").mkdir()
    (scratch / "debian/control").write_text("Source: libolh\n\nPackage: libolh4\nArchitecture: any\n")
    library = next((scratch / "library").rglob("libolh.so.4.*"))
    done = subprocess.run(["dpkg-gensymbols", "-plibolh4", "-v4.3.2", "-c4", f"-I{source}/cmake/debian/symbols",
                           f"-e{library}", f"-O{scratch}/symbols"], cwd=scratch, capture_output=True, text=True)
    if done.returncode:
        problems.append(f"cmake/debian/symbols:\n{done.stdout}{done.stderr}")


def use_unpacked(packages, scratch):
    """The command and the documents of the packages, in a directory that nobody knew when they were made."""
    tree = scratch / "an other place"
    for package in packages.values():
        run("dpkg-deb", "-x", package, tree)
    environment = {"PATH": os.environ["PATH"], "HOME": str(scratch), "LD_LIBRARY_PATH": str(tree / "usr" / libdir),
                   "QEL_DOC_PATH": str(tree / "usr/share/olh/docs")}
    found = run(tree / "usr/bin/olh", "where", "olh_manual", env=environment)
    if "/usr/share/olh/docs/htmldocs/olh_manual/index.htm" not in found:
        problems.append(f"olh where olh_manual: {found}")
    recorder = scratch / "browser"
    run(tree / "usr/bin/olh-recorder", "make", recorder)
    run("python3", tree / "usr/share/doc/libolh-dev/examples/help_demo.py",
        env={**environment, "QEL_HTML_BROWSER": str(recorder), "PYTHONDONTWRITEBYTECODE": "1"})
    run(tree / "usr/bin/olh-recorder", "wait", recorder, 2)
    shown = run(tree / "usr/bin/olh-recorder", "show", recorder)
    if "topic=quick_start" not in shown:
        problems.append(f"the Python example made the browser show {shown}")


if not shutil.which("dpkg-shlibdeps") or not shutil.which("file"):
    print("skipped: dpkg-dev or file is not installed")
    sys.exit(77)
with tempfile.TemporaryDirectory(prefix="olh-packages-") as directory:
    scratch = Path(directory)
    run("cpack", "-G", "DEB", "--config", build / "CPackConfig.cmake", "-B", scratch / "made")
    packages = {p.name.split("_")[0]: p for p in (scratch / "made").glob("*.deb")}
    if sorted(packages) != ["libolh-dev", "libolh4", "olh", "olh-doc"]:
        sys.exit(f"cpack made {sorted(packages)}")
    compare_files(packages)
    compare_descriptions(packages)
    compare_symbols(packages, scratch)
    use_unpacked(packages, scratch)
print("\n".join(problems) or "four packages, as listed")
sys.exit(1 if problems else 0)
