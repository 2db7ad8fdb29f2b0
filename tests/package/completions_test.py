"""The completions of bash, zsh and fish, tried in the shells: bash and zsh at a terminal, where Tab is pressed, fish through
its own command for that. The program behind them is a stand-in for what it lists (documents, topics), and olh itself for
its --help."""
import contextlib
import os
import pty
import shutil
import subprocess

from scene import OLH, PROJECT, Scene

STAND_IN = r"""case "$*" in
  *--help) exec "$REAL_OLH" "$@" ;;
  "list --names") printf '%s\n' guide guide_td 'tricky$(touch run)' ;;
  "list --names --kind portal") echo guide_td ;;
  "list --names --root /srv/docs") echo served ;;
  "list --names --root http://slow/") exec sleep 60 ;;
  kept-results) echo "2 The second result" ;;
  "topics --names guide") printf '%s\n' install 'Getting Started' index a:b ;;
  "topics --names a guide") echo First ;;
  "topics --names --root http://slow/ guide") exec sleep 60 ;;
esac"""

# What is typed before Tab, and what is offered: all of these, and none of those.
CASES = [
    ("sh", ["show"], ["where", "guide"]),
    ("show --dis", ["--display"], ["show"]),
    ("show --display ", ["normal", "topic", "popup"], ["guide"]),
    ("show ", ["guide", "2"], ["show"]),
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
    ("show 2", "show 2"),
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


class Completions(Scene):
    def setUp(self):
        super().setUp()
        share = self.dir / "share"  # as cmake/install.cmake lays them out
        self.completions = {"bash": share / "bash-completion/completions/olh", "zsh": share / "zsh/vendor-completions/_olh",
                            "fish": share / "fish/vendor_completions.d/olh.fish", "candidates": share / "olh/candidates.sh"}
        for place, name in zip(self.completions.values(), ("olh.bash", "_olh", "olh.fish", "candidates.sh")):
            place.parent.mkdir(parents=True)
            shutil.copy(PROJECT / "share/completions" / name, place)
        self.script("olh", STAND_IN)
        self.script("olh-browser", "")
        (self.dir / "a root").mkdir()
        self.own = {**os.environ, "PATH": f"{self.bin}:{os.environ['PATH']}", "HOME": str(self.home), "REAL_OLH": str(OLH)}

    @contextlib.contextmanager
    def terminal(self, shell):
        """A function that types a line and Tab, and gives what was offered and the line that became of it."""
        (self.dir / {"bash": "read_first", "zsh": ".zshrc"}[shell]).write_text(READ_FIRST[shell] + "echo noted >&3\n")
        keyboard, line = pty.openpty()
        noted, noting = os.pipe()
        own = {**self.own, "COMPLETION": str(self.completions[shell]), "TERM": "dumb", "ZDOTDIR": str(self.dir)}
        start = ["sh", "-c", f'exec "$@" 3>&{noting}', "sh", *AT_TERMINAL[shell]]
        running = subprocess.Popen(start, stdin=line, stdout=subprocess.DEVNULL, stderr=line, env=own, cwd=self.dir,
                                   pass_fds=[noting], start_new_session=True)
        os.close(noting)
        os.close(line)
        with open(noted, encoding="utf-8") as notes:
            notes.readline()  # it has read what it reads first

            def type_and_tab(typed):
                (self.dir / "offered").write_text("")
                os.write(keyboard, f"olh {typed}\t\a".encode())
                self.assertEqual(notes.readline(), "noted\n", f"{shell} has ended at: olh {typed}")
                became = (self.dir / "line").read_text().removesuffix("\n").removeprefix("olh ")
                return [offered for offered in (self.dir / "offered").read_text().splitlines() if offered], became

            yield type_and_tab
            running.kill()
            running.wait()
        os.close(keyboard)

    def in_fish(self, typed):
        script = f'source {self.completions["fish"]}; complete -C "olh {typed}"; complete --escape -C "olh {typed}" >line'
        out = subprocess.run(["fish", "--no-config", "-c", script], env=self.own, cwd=self.dir, capture_output=True, text=True,
                             check=True)
        self.assertEqual(out.stderr, "")
        whole = [word.split("\t")[0] for word in (self.dir / "line").read_text().splitlines()]
        became = typed[:len(typed) - len(typed.split(" ")[-1])] + (whole[0] if len(whole) == 1 else "")
        return [offered.split("\t")[0] for offered in out.stdout.splitlines()], became

    def check(self, type_and_tab):
        for typed, wanted, unwanted in CASES:
            with self.subTest(typed=typed):
                offered, _ = type_and_tab(typed)
                self.assertLessEqual(set(wanted), set(offered))
                self.assertEqual(set(unwanted) & set(offered), set())
        for typed, wanted in COMPLETED:
            with self.subTest(typed=typed):
                self.assertEqual(type_and_tab(typed)[1].rstrip(" "), wanted)
        self.assertFalse((self.dir / "run").exists(), "it has run what a document is called")

    def test_bash_and_zsh(self):
        for shell in AT_TERMINAL:
            with self.subTest(shell=shell), self.terminal(shell) as type_and_tab:
                self.check(type_and_tab)

    def test_fish(self):
        self.check(self.in_fish)
