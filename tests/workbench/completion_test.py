# SPDX-License-Identifier: GPL-3.0-or-later
"""Completion: what bash offers for real, with the package bash-completion, and what the program says to any shell."""
import os
import re
import shutil
import subprocess
import unittest

from support import BASE, SENSORS, SOURCE, Workbench, main

LOADER = "/usr/share/bash-completion/bash_completion"
# Completes the words that it is given as a terminal would, and prints what is offered.
ASK = """
. {loader}
. {script}
COMP_LINE=$1 COMP_POINT=${{#1}} COMP_TYPE=9 COMP_KEY=9
COMP_WORDS=(); COMP_CWORD=-1
while IFS= read -r word; do COMP_WORDS+=("$word"); done <<<"$2"
COMP_CWORD=$((${{#COMP_WORDS[@]}} - 1))
compopt() {{ :; }}
_oxa_sensors
printf '%s\\n' "${{COMPREPLY[@]}}"
"""
# A zsh at a terminal of its own: a line is typed, the tab key asks what fits, and it is read until it has been offered.
TYPE_IN_ZSH = """
zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell 'PS1=; fpath=($ZDOTDIR $fpath); autoload -U compinit; compinit -u; bindkey "^I" list-choices'
zpty -w shell 'print -n REA; print DY'
zpty -r shell said '*READY*'
zpty -w -n shell $1$'\t'
zpty -r shell said "*$2*"
print -r -- $said
"""


class Tests(Workbench):
    def setUp(self):
        super().setUp()
        os.symlink(SENSORS, self.path("oxa-sensors"))
        self.environment = dict(os.environ, PATH=self.folder.name + os.pathsep + os.environ["PATH"])
        self.script = self.path("completion")
        with open(self.script, "w", encoding="utf-8") as file:
            file.write(self.out("generate", "bash"))

    def bash(self, *words, **environment):
        """What bash offers for the last word; "=" ends a word for readline, so words with one come in parts."""
        if not os.path.exists(LOADER):
            self.skipTest("no bash-completion")
        parts = []
        for word in ("oxa-sensors", *words):
            name, equals, value = word.partition("=")
            parts += [name, "=", value] if equals and value else [name, "="] if equals else [name]
        done = subprocess.run(["bash", "-c", ASK.format(loader=LOADER, script=self.script), "bash",
                               " ".join(("oxa-sensors", *words)), "\n".join(parts)],
                              cwd=SOURCE, env=dict(self.environment, **environment), capture_output=True, timeout=60,
                              check=True)
        self.assertEqual(done.stderr, b"")
        return done.stdout.decode().split()

    def test_bash_offers_commands_and_options(self):
        self.assertEqual(self.bash("s"), ["show", "serve", "scenario", "schema", "sheet"])
        self.assertEqual(self.bash("thresholds", ""), ["show", "set", "preflight"])
        self.assertEqual(self.bash("list", "--no"), ["--no-header"])
        self.assertEqual(self.bash("thresholds", "set", "--un"), ["--unc", "--unr"])

    def test_bash_offers_boards_and_files(self):
        boards = sorted(f"boards/{name}" for name in os.listdir(os.path.join(SOURCE, "boards")) if name.endswith(".toml"))
        self.assertEqual([word for word in self.bash("list", "-b", "") if word.endswith(".toml")], boards)
        self.assertEqual(self.bash("check", "--boards", "boa"), ["boards"])
        self.assertIn("README.md", self.bash("scenario", "READ"))

    def test_bash_offers_files_and_profiles_as_sources(self):
        self.assertEqual(self.bash("list", "--from", "READ"), ["README.md"])
        self.assertEqual(self.bash("check", "--from", "kes"), ["kestrin"])

    def test_bash_offers_profiles_sensors_device_types_and_builders(self):
        self.assertEqual(self.bash("list", "-p", "de"), ["default"])
        self.assertEqual(self.bash("show", "-b", BASE, "CPU_VO"), ["CPU_VOLTS_00", "CPU_VOLTS_01"])
        self.assertEqual(self.bash("show", "CPU_VO", OXA_BOARD=BASE), ["CPU_VOLTS_00", "CPU_VOLTS_01"])
        self.assertEqual(self.bash("add", "--device-type", "nv"), ["nvme-disk"])
        self.assertIn("psu-fru", self.bash("add", "--class", ""))
        self.assertEqual(self.bash("event", "addDisk"), ["addDiskSEL"])
        self.assertEqual(self.bash("event", "addDiskSEL", "e"), ["entityId=", "eventDir=", "eventNum="])

    def test_bash_offers_the_value_behind_an_equals_sign_alone(self):
        self.assertEqual(self.bash("list", "--color=a"), ["always", "auto"])
        self.assertEqual(self.bash("list", "--profile=kes"), ["kestrin"])

    def test_names_of_sensors_follow_the_profile_of_the_line(self):
        names = {s["name"] for s in self.json("list", "-b", BASE, "-p", "kestrin")["sensors"]}
        self.assertEqual(set(self.bash("show", "--board=" + BASE, "-p", "kestrin", "")), names)

    def test_a_line_that_is_wrong_so_far_offers_nothing_and_is_no_failure(self):
        for words in (("show", "-b", "/nowhere.toml", "C"), ("nonsense", "x"), ("show", "-p", "none", "-b", BASE, "C"),
                      ("event", "addNothing", "")):
            with self.subTest(words):
                self.assertEqual(self.out("complete", *words), "")

    def test_everything_that_help_tells_is_offered(self):
        for command in ("list", "show", "export", "diff", "check", "event", "decode-sel", "serve", "add", "remove",
                        "scenario", "thresholds show", "thresholds set", "thresholds preflight", "schema", "why",
                        "report", "explore", "doctor"):
            with self.subTest(command):
                words = command.split()
                told = {part.split("{")[0] for line in self.out(*words, "--help").splitlines() if line.startswith("  -")
                        for part in line.split()[0].split(",")}
                offered = {line.split("\t")[0] for line in self.out("complete", *words, "-").splitlines()}
                self.assertEqual(offered, told)

    @unittest.skipUnless(shutil.which("fish"), "no fish")
    def test_fish_offers_the_same_with_what_it_is(self):
        script = self.path("oxa-sensors.fish")
        with open(script, "w", encoding="utf-8") as file:
            file.write(self.out("generate", "fish"))
        done = subprocess.run(["fish", "-c", f"source {script}; complete -C 'oxa-sensors show -b {BASE} CPU_VO'; "
                               "complete -C 'oxa-sensors thresholds p'"], cwd=SOURCE, timeout=60, check=True,
                              env=dict(self.environment, HOME=self.folder.name), capture_output=True)
        lines = done.stdout.decode().splitlines()
        self.assertEqual(lines[:2], ["CPU_VOLTS_00", "CPU_VOLTS_01"])
        self.assertRegex(lines[2], "^preflight\tWhich entries apply")

    @unittest.skipUnless(shutil.which("zsh"), "no zsh")
    def test_zsh_offers_the_same_at_a_terminal(self):
        script = self.path("_oxa-sensors")
        with open(script, "w", encoding="utf-8") as file:
            file.write(self.out("generate", "zsh"))
        subprocess.run(["zsh", "-n", script], timeout=60, check=True)
        for typed, offered in ((f"oxa-sensors show -b {BASE} CPU_VO", ["CPU_VOLTS_00", "CPU_VOLTS_01"]),
                               ("oxa-sensors thresholds p", ["preflight", "--", "Which", "entries", "apply"])):
            with self.subTest(typed):
                done = subprocess.run(["zsh", "-f", "-c", TYPE_IN_ZSH, "zsh", typed, offered[-1]], cwd=SOURCE, timeout=60,
                                      env=dict(self.environment, ZDOTDIR=self.folder.name, TERM="xterm"), check=True,
                                      stdin=subprocess.DEVNULL, stdout=subprocess.PIPE)
                shown = re.sub(r"\x1b\[[0-9;?]*[A-Za-z]", "", done.stdout.decode()).replace(typed, "")
                self.assertRegex(shown, r"\s" + r"\s+".join(offered))

    def test_a_shell_without_completion_is_refused(self):
        self.assertIn("there are bash, zsh, fish", self.refused(2, "generate", "csh"))


if __name__ == "__main__":
    main()
