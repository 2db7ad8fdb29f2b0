"""The completions of bash, zsh and fish, asked as the shells ask them. The program behind them is a stand-in for what it
lists (documents, topics), and olh itself for its --help. Shells that are not installed are left out; bash is not.

Usage: completions_test.py SOURCE_DIR OLH_PROGRAM
"""
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

source, olh = Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve()
problems = []

STAND_IN = r"""#!/bin/sh
case "$*" in
  *--help) exec "$REAL_OLH" "$@" ;;
  "list --names") printf '%s\n' guide guide_td 'tricky$(touch run)' ;;
  "list --names --kind portal") echo guide_td ;;
  "list --names --root /srv/docs") echo served ;;
  "list --names --root http://slow/") exec sleep 60 ;;
  "topics --names guide") printf '%s\n' install 'Getting Started' index ;;
  "topics --names --root http://slow/ guide") exec sleep 60 ;;
esac
"""

# Words typed, the last of them unfinished, and what is offered: all of these, and none of those.
CASES = [
    (["sh"], ["show"], ["where", "guide"]),
    (["show", "--dis"], ["--display"], ["show"]),
    (["show", "--display", ""], ["normal", "topic", "popup"], ["guide"]),
    (["show", "gui"], ["guide", "guide_td"], ["show"]),
    (["show", "--display", "topic", "gui"], ["guide"], []),
    (["show", "guide", ""], ["install", "index"], ["guide", "Getting"]),
    (["show", "--root", "http://slow/", "guide", ""], [], ["install"]),
    (["test", "--root", "/srv/docs", ""], ["served"], ["guide"]),
    (["portal", ""], ["guide_td"], ["guide"]),
    (["test", "--root", "http://slow/", ""], [], ["guide"]),
    (["viewers", ""], ["set", "forget"], ["guide"]),
    (["viewers", "set", ""], ["browser", "pdf"], ["guide"]),
]


def bash(words):
    script = """source "$1"; shift; COMP_WORDS=(olh "$@"); COMP_CWORD=$#; _olh; ((${#COMPREPLY[@]})) && printf '%s\\n' "${COMPREPLY[@]}" """
    return subprocess.run(["bash", "--norc", "-c", script, "bash", completions["bash"], *words], **how).stdout.splitlines()


def zsh(words):
    script = """zmodload zsh/parameter; fpath=("${1:h}" $fpath); autoload -U _olh; shift
                compadd() { shift; print -rl -- "$@" }; _files() { print -r -- FILES }
                words=(olh "$@"); CURRENT=$#words; _olh"""
    out = subprocess.run(["zsh", "-f", "-c", script, "zsh", completions["zsh"], *words], **how).stdout
    return [offered for offered in out.splitlines() if offered.startswith(words[-1])]  # compadd would do that


def fish(words):
    line = " ".join(["olh", *words])
    out = subprocess.run(["fish", "--no-config", "-c", f"source {completions['fish']}; complete -C '{line}'"], **how).stdout
    return [offered.split("\t")[0] for offered in out.splitlines()]


with tempfile.TemporaryDirectory(prefix="olh-completions-") as directory:
    scratch = Path(directory)
    share = scratch / "share"  # as cmake/install.cmake lays them out
    completions = {"bash": share / "bash-completion/completions/olh", "zsh": share / "zsh/vendor-completions/_olh",
                   "fish": share / "fish/vendor_completions.d/olh.fish", "candidates": share / "olh/candidates.sh"}
    for place, name in zip(completions.values(), ("olh.bash", "_olh", "olh.fish", "candidates.sh")):
        place.parent.mkdir(parents=True)
        shutil.copy(source / "share/completions" / name, place)
    (scratch / "olh").write_text(STAND_IN)
    (scratch / "olh").chmod(0o755)
    how = {"capture_output": True, "text": True, "cwd": scratch,
           "env": {**os.environ, "PATH": f"{scratch}:{os.environ['PATH']}", "HOME": directory, "REAL_OLH": str(olh)}}

    tried = [shell for shell in (bash, zsh, fish) if shutil.which(shell.__name__)]
    for shell in tried:
        for words, wanted, unwanted in CASES:
            offered = shell(words)
            missing = [w for w in wanted if w not in offered]
            extra = [w for w in unwanted if w in offered]
            if missing or extra:
                problems.append(f"{shell.__name__}: olh {' '.join(words)}: without {missing}, with {extra}: {offered}")
    # What a document is called is text: it is not run, and stands quoted on the command line.
    if bash(["show", "tri"]) != [r"tricky\$\(touch\ run\)"] or (scratch / "run").exists():
        problems.append(f"bash: a hostile name is offered as {bash(['show', 'tri'])}")
    if bash(["show", "guide", "Get"]) != [r"Getting\ Started"]:
        problems.append(f"bash: a tag of two words is offered as {bash(['show', 'guide', 'Get'])}")
    (scratch / "a root").mkdir()
    if bash(["show", "--root", "a"]) != ["a root"]:
        problems.append(f"bash: directories for --root: {bash(['show', '--root', 'a'])}")
    if bash not in tried:
        problems.append("bash is not installed")

print("\n".join(problems) or f"{len(CASES)} command lines in {[shell.__name__ for shell in tried]}")
sys.exit(1 if problems else 0)
