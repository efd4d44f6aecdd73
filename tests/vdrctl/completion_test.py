"""What completes command lines, in the shells themselves.

usage: completion_test.py VDRCTL
"""
import os
import pty
import select
import shlex
import subprocess
import sys
import tempfile
import unittest

VDRCTL = sys.argv[1]


def run(*words):
    return subprocess.run(words, stdout=subprocess.PIPE, check=True, text=True).stdout


class Contract:
    """What every shell offers. A shell has `offered(line)`, with the cursor behind the line."""

    def test_the_first_word_is_completed(self):
        self.assertEqual(self.offered("vdrctl inst"), ["instance"])

    def test_objects_are_followed_by_their_verbs(self):
        self.assertCountEqual(self.offered("vdrctl instance "), ["list", "show", "set", "delete", "tune"])
        self.assertCountEqual(self.offered("vdrctl instance s"), ["show", "set"])
        self.assertCountEqual(self.offered("vdrctl --json lif address "), ["set", "delete"])

    def test_values_of_options_are_no_words_of_the_command(self):
        self.assertCountEqual(self.offered("vdrctl --names instance instance s"), ["show", "set"])
        self.assertCountEqual(self.offered("vdrctl --columns name instance s"), ["show", "set"])

    def test_options_are_those_of_the_command_and_of_all(self):
        self.assertCountEqual(self.offered("vdrctl instance set edge-1 --s"), ["--second", "--sort"])
        self.assertEqual(self.offered("vdrctl instance list --co"), ["--columns"])
        self.assertEqual(self.offered("vdrctl commands --v"), ["--version"])
        self.assertCountEqual(self.offered("vdrctl command 9 --v"), ["--value", "--version"])

    def test_an_argument_that_is_called_like_a_parameter_is_no_option(self):
        self.assertCountEqual(self.offered("vdrctl instance set INSTANCE --s"), ["--second", "--sort"])

    def test_nothing_is_offered_where_the_operator_alone_knows(self):
        self.assertEqual(self.offered("vdrctl instance list --columns "), [])
        self.assertEqual(self.offered("vdrctl instance set edge-1 --second "), [])

    def test_choices_are_offered(self):
        self.assertEqual(self.offered("vdrctl completion f"), ["fish"])

    def test_files_are_offered_where_one_is_wanted(self):
        with tempfile.TemporaryDirectory() as folder:
            os.mkdir(f"{folder}/only")
            for line in ("vdrctl batch", "vdrctl command 9 --output", "vdrctl --names"):
                self.assertIn(f"{folder}/only/", self.files_offered(f"{line} {folder}/on"), line)
            for line in ("vdrctl command", "vdrctl instance show", "vdrctl instance list --sort"):
                self.assertNotIn(f"{folder}/only/", self.files_offered(f"{line} {folder}/on"), line)


class Bash(Contract, unittest.TestCase):
    # As bash does it, but for the keys: a word that ends in a blank is followed by an empty one.
    SCRIPT = r"""source <("$0" completion bash)
read -ra COMP_WORDS <<<"$1"
[[ $1 == *' ' ]] && COMP_WORDS+=('')
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
compopt() { mapfile -t COMPREPLY < <(compgen -o default -- "${COMP_WORDS[COMP_CWORD]}"); }
$(complete -p vdrctl | sed 's/.*-F \([^ ]*\).*/\1/')
printf '%s\n' "${COMPREPLY[@]}"
"""

    def offered(self, line):
        return run("bash", "--norc", "-c", self.SCRIPT, VDRCTL, line).split()

    def files_offered(self, line):
        return [f"{file}/" for file in self.offered(line)]


class Fish(Contract, unittest.TestCase):
    def offers(self, line):
        """What is offered, each with its description."""
        script = f"{shlex.quote(VDRCTL)} completion fish | source; complete -C {shlex.quote(line)}"
        return [offer.split("\t") for offer in run("fish", "--no-config", "-c", script).splitlines()]

    def offered(self, line):
        return [offer[0] for offer in self.offers(line)]

    files_offered = offered

    def test_each_offer_is_described(self):
        self.assertEqual(self.offers("vdrctl instance sh"),
                         [["show", "Show all fields of a router instance"]])
        self.assertEqual(self.offers("vdrctl instance set edge-1 --sec"),
                         [["--second", "Word with a meaning of the kernel's"]])


class Zsh(Contract, unittest.TestCase):
    """A shell on a terminal, which gets a line and the key of completion."""

    # What is offered is written beside it; what the line becomes is shown by a key.
    SETUP = r"""unsetopt beep
bindkey -e; fpath=($PWD $fpath); autoload -Uz compinit && compinit -u -D
compadd() { local -a found; builtin compadd -O found "$@"; print -rl -- $found >>offered; builtin compadd "$@" }
show() { print -r -- "$BUFFER" >line }; zle -N show; bindkey '^T' show
"""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        with open(f"{cls.folder.name}/_vdrctl", "w", encoding="ascii") as file:
            file.write(run(VDRCTL, "completion", "zsh"))
        child, cls.terminal = pty.fork()
        if child == 0:
            os.chdir(cls.folder.name)
            os.execvpe("zsh", ["zsh", "-f", "-i"], {**os.environ, "TERM": "dumb"})
        cls.child = child
        cls.turns = 0
        cls.type(cls.SETUP)
        cls.wait()

    @classmethod
    def tearDownClass(cls):
        os.close(cls.terminal)
        os.waitpid(cls.child, 0)
        cls.folder.cleanup()

    @classmethod
    def type(cls, keys):
        os.write(cls.terminal, keys.encode())

    @classmethod
    def wait(cls):
        """Until the shell has done all that was typed, and asks for more."""
        cls.turns += 1
        cls.type(f"PS1=TURN$(({cls.turns} * 1))DONE\n")
        wanted = f"TURN{cls.turns}DONE".encode()
        shown = b""
        while wanted not in shown:
            if not select.select([cls.terminal], [], [], 60)[0]:
                raise AssertionError(f"no {wanted} in {shown}")
            shown += os.read(cls.terminal, 4096)

    def complete(self, line):
        """The words that are offered, and the line behind them."""
        files = [f"{self.folder.name}/{name}" for name in ("offered", "line")]
        for file in files:
            with open(file, "w", encoding="ascii"):
                pass
        # The line is shown and thrown away.
        self.type(f"{line}\t\x14\x15")
        self.wait()
        texts = []
        for file in files:
            with open(file, encoding="ascii") as opened:
                texts.append(opened.read())
        return texts[0].split(), texts[1].strip()

    def offered(self, line):
        return self.complete(line)[0]

    def files_offered(self, line):
        return self.complete(line)[1].split()


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
