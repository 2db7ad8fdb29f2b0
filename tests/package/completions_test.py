"""The completions of bash, zsh and fish, tried in the shells: bash and zsh at a terminal, where Tab is pressed, fish through
its own command for that. The program behind them is a stand-in for what it lists (documents, topics), and olh itself for
its --help.

Usage: completions_test.py SOURCE_DIR OLH_PROGRAM
"""
import contextlib
import os
import pty
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
  "topics --names guide") printf '%s\n' install 'Getting Started' index a:b ;;
  "topics --names a guide") echo First ;;
  "topics --names --root http://slow/ guide") exec sleep 60 ;;
esac
"""

# What is typed before Tab, and what is offered: all of these, and none of those.
CASES = [
    ("sh", ["show"], ["where", "guide"]),
    ("show --dis", ["--display"], ["show"]),
    ("show --display ", ["normal", "topic", "popup"], ["guide"]),
    ("show gui", ["guide", "guide_td"], ["show"]),
    ("show --display topic gui", ["guide"], []),
    ("show guide ", ["install", "index", "a:b"], ["guide", "Getting"]),
    ("show --root http://slow/ guide ", [], ["install"]),
    ("show --root=http://slow/ guide ", [], ["install"]),
    ("test --root /srv/docs ", ["served"], ["guide"]),
    ("test --root=/srv/docs ", ["served"], ["guide"]),
    ("portal ", ["guide_td"], ["guide"]),
    ("test --root http://slow/ ", [], ["guide"]),
    ("search words ", ["orvane"], ["show"]),
    ("viewers ", ["set", "forget"], ["guide"]),
    ("viewers set ", ["browser", "pdf"], ["guide"]),
    ("viewers set browser olh-bro", ["olh-browser"], ["a root/", "guide"]),
    ("serv", ["serve"], ["show"]),
    ("serve --open gui", ["guide"], ["show"]),
    ("paths gui", [], ["guide"]),
]
# The line after Tab where one thing is offered. What a document is called is text: it is not run, and stands quoted.
COMPLETED = [
    ("sh", "show"),
    ("show --display=po", "show --display=popup"),
    ("show guide a:", "show guide a:b"),
    ("show guide Get", r"show guide Getting\ Started"),
    ("show tri", r"show tricky\$\(touch\ run\)"),
    ("show ./a", r"show ./a\ root/"),
    ("show --root a", r"show --root a\ root/"),
    ("show --root=/:a", r"show --root=/:a\ root/"),
    ("show 'a guide' Fir", "show 'a guide' First"),
]

# What a shell reads first: each Tab notes what is offered, and the key behind it notes the line, then empties it.
READ_FIRST = {
    "bash": """PS1=; source /usr/share/bash-completion/bash_completion; source "$COMPLETION"
noted() { _olh; printf '%s\\n' "${COMPREPLY[@]}" >offered; }
complete -F noted olh
line() { printf '%s\\n' "$READLINE_LINE" >line; READLINE_LINE=; READLINE_POINT=0; echo noted >&3; }
bind -x '"\\C-g": line' 2>/dev/null
""",
    "zsh": """PS1=; fpath=("${COMPLETION:h}" $fpath); autoload -Uz compinit; compinit -u -D
compadd() { local -a what; builtin compadd -O what "$@"; print -rl -- $what >>offered; builtin compadd "$@" }
line() { print -r -- "$BUFFER" >line; BUFFER=; print noted >&3 }
zle -N line; bindkey '^G' line
""",
}
AT_TERMINAL = {"bash": ["bash", "--noprofile", "--rcfile", "read_first", "-i"], "zsh": ["zsh", "-d", "-i"]}


@contextlib.contextmanager
def terminal(shell):
    """A function that types a line and Tab, and gives what was offered and the line that became of it."""
    (scratch / {"bash": "read_first", "zsh": ".zshrc"}[shell]).write_text(READ_FIRST[shell] + "echo noted >&3\n")
    keyboard, line = pty.openpty()
    noted, noting = os.pipe()
    own = {**environment, "COMPLETION": str(completions[shell]), "TERM": "dumb", "ZDOTDIR": str(scratch)}
    start = ["sh", "-c", f'exec "$@" 3>&{noting}', "sh", *AT_TERMINAL[shell]]
    running = subprocess.Popen(start, stdin=line, stdout=subprocess.DEVNULL, stderr=line, env=own, cwd=scratch,
                               pass_fds=[noting], start_new_session=True)
    os.close(noting)
    os.close(line)
    with open(noted, encoding="utf-8") as notes:
        notes.readline()  # it has read what it reads first

        def type_and_tab(typed):
            (scratch / "offered").write_text("")
            os.write(keyboard, f"olh {typed}\t\a".encode())
            if notes.readline() != "noted\n":
                sys.exit(f"{shell} has ended at: olh {typed}")
            became = (scratch / "line").read_text().removesuffix("\n").removeprefix("olh ")
            return [offered for offered in (scratch / "offered").read_text().splitlines() if offered], became

        yield type_and_tab
        running.kill()
        running.wait()
    os.close(keyboard)


@contextlib.contextmanager
def fish(_):
    def type_and_tab(typed):
        script = f'source {completions["fish"]}; complete -C "olh {typed}"; complete --escape -C "olh {typed}" >line'
        out = subprocess.run(["fish", "--no-config", "-c", script], env=environment, cwd=scratch, capture_output=True,
                             text=True, check=True)
        if out.stderr:
            problems.append(f"fish: olh {typed}: {out.stderr}")
        whole = [word.split("\t")[0] for word in (scratch / "line").read_text().splitlines()]
        became = typed[:len(typed) - len(typed.split(" ")[-1])] + (whole[0] if len(whole) == 1 else "")
        return [offered.split("\t")[0] for offered in out.stdout.splitlines()], became

    yield type_and_tab


def try_shell(name, opened):
    with opened(name) as type_and_tab:
        for typed, wanted, unwanted in CASES:
            offered, _ = type_and_tab(typed)
            missing = [w for w in wanted if w not in offered]
            extra = [w for w in unwanted if w in offered]
            if missing or extra:
                problems.append(f"{name}: olh {typed}: without {missing}, with {extra}: {offered}")
        for typed, wanted in COMPLETED:
            _, became = type_and_tab(typed)
            if became.rstrip(" ") != wanted:
                problems.append(f"{name}: olh {typed}: became {became!r} instead of {wanted!r}")
    if (scratch / "run").exists():
        problems.append(f"{name} has run what a document is called")


with tempfile.TemporaryDirectory(prefix="olh-completions-") as directory:
    scratch = Path(directory)
    share = scratch / "share"  # as cmake/install.cmake lays them out
    completions = {"bash": share / "bash-completion/completions/olh", "zsh": share / "zsh/vendor-completions/_olh",
                   "fish": share / "fish/vendor_completions.d/olh.fish", "candidates": share / "olh/candidates.sh"}
    for place, name in zip(completions.values(), ("olh.bash", "_olh", "olh.fish", "candidates.sh")):
        place.parent.mkdir(parents=True)
        shutil.copy(source / "share/completions" / name, place)
    programs = scratch / "bin"
    programs.mkdir()
    for program, text in (("olh", STAND_IN), ("olh-browser", "#!/bin/sh\n")):
        (programs / program).write_text(text)
        (programs / program).chmod(0o755)
    (scratch / "a root").mkdir()
    environment = {**os.environ, "PATH": f"{programs}:{os.environ['PATH']}", "HOME": directory, "REAL_OLH": str(olh)}
    for shell, opened in (("bash", terminal), ("zsh", terminal), ("fish", fish)):
        try_shell(shell, opened)

print("\n".join(problems) or f"{len(CASES) + len(COMPLETED)} command lines in each of bash, zsh and fish")
sys.exit(1 if problems else 0)
