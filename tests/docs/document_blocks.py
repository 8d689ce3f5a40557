# SPDX-License-Identifier: Apache-2.0
"""Runs, loads or compares the blocks of one document, each as its language says."""
import json
import pathlib
import re
import subprocess
import tempfile
import textwrap

import json_schema
import markdown_blocks
import shell_session
import transcript

_SWITCH = "build/switch/bin/pm-virtual-switch"


class document_runner:
    def __init__(self, root, document, exceptions, limit):
        self._root = root
        self._document = document
        self._lines = (root / document).read_text(encoding="utf-8").splitlines()
        self._exceptions = exceptions
        self._limit = limit
        self._session = None
        self._is_shell_gone = False
        self._chassis = ""
        self.blocks = 0
        self.problems = []

    def run(self):
        try:
            for block in markdown_blocks.code_blocks(self._document, self._lines):
                self.blocks += 1
                self._check(block)
        finally:
            if self._session:
                self._session.close()

    def _check(self, block):
        checks = {
            "sh": self._run_script,
            "console": self._run_transcript,
            "c": self._compare_program,
            "cpp": self._compare_program,
            "cmake": self._compare_excerpt,
            "toml": self._load_chassis,
            "json": self._validate,
            "text": lambda block: None,
            "": lambda block: self._report(block.place(), "a block without a language"),
            markdown_blocks.INDENTED: lambda block: self._report(block.place(), "an indented block: fence it"),
        }
        unknown = lambda block: self._report(block.place(), f"a block of an unknown language: {block.language}")
        checks.get(block.language, unknown)(block)

    def _report(self, place, problem, *details):
        shown = "".join(textwrap.indent(detail, "    ") + "\n" for detail in details if detail)
        self.problems.append(f"{place}: {problem}\n{shown}".rstrip())

    # Commands

    def _shell_result(self, commands, place, line):
        """Nothing when the commands did not end; then those after them cannot be run, either."""
        if self._is_shell_gone:
            return None
        if not self._session:
            self._session = shell_session.shell_session(self._root, self._limit)
        result = self._session.run(commands, line)
        if result.status is None:
            self._is_shell_gone = True
            output = "\n".join(result.output[-40:])
            self._report(place, "did not end in time, or ended the shell; what follows was not run", commands, output)
            return None
        return result

    def _run_script(self, block):
        if self._exceptions.reason(self._document, block.lines[0]):
            return
        result = self._shell_result(block.text(), block.place(), block.line)
        if not result:
            return
        output = "\n".join(result.output[-40:])
        for line, status in result.failures or ([(block.line, result.status)] if result.status else []):
            self._report(block.place(line), f"failed with status {status}: {self._lines[line - 1].strip()}", output)

    def _run_transcript(self, block):
        try:
            exchanges = transcript.exchanges(block)
        except ValueError as mistake:
            self.problems.append(str(mistake))
            return
        for exchange in exchanges:
            if not self._exceptions.reason(self._document, exchange.command):
                self._run_exchange(block.place(exchange.line), exchange)

    def _run_exchange(self, place, exchange):
        result = self._shell_result(exchange.command, place, exchange.line)
        if not result:
            return
        if difference := transcript.difference(exchange.output, result.output):
            self._report(place, f"prints something else: {exchange.command}", difference)
        elif result.status != 0 and not result.output:
            self._report(place, f"failed with status {result.status}: {exchange.command}")

    # Excerpts

    def _file_of(self, block, word, folder):
        """The file that the comment before a block names, after that word."""
        name = block.note.removeprefix(word + " ").strip()
        if block.note.startswith(word + " ") and name.startswith(folder) and (self._root / name).is_file():
            return self._root / name
        self._report(block.place(), f"no comment <!-- {word} {folder}FILE --> before it that names a file")
        return None

    def _compare_excerpt(self, block):
        file = self._file_of(block, "from", "examples/")
        if not file:
            return
        lines = file.read_text(encoding="utf-8").splitlines()
        wanted = textwrap.dedent(block.text())
        starts = range(len(lines) - len(block.lines) + 1)
        if not any(textwrap.dedent("\n".join(lines[i : i + len(block.lines)]) + "\n") == wanted for i in starts):
            self._report(block.place(), f"no excerpt of {file.relative_to(self._root)}")

    def _compare_program(self, block):
        self._compare_excerpt(block)
        name = block.note.rpartition("/")[2]
        builds = [*self._root.glob("examples/**/CMakeLists.txt"), *self._root.glob("tests/**/CMakeLists.txt")]
        if not any(name in re.split(r"[\s()/]", build.read_text(encoding="utf-8")) for build in builds):
            self._report(block.place(), f"the tests do not build {name}")

    # Files

    def _load_chassis(self, block):
        """A block without [chassis] is added to what the blocks before it make, or to the file of its note."""
        if block.note.startswith("from "):
            self._compare_excerpt(block)
            return
        if block.note.startswith("state file of "):
            if chassis := self._file_of(block, "state file of", "examples/"):
                self._load(block, block.text(), lambda file: ["--state", file, chassis])
            return
        if block.note.startswith("added to "):
            if not (base := self._file_of(block, "added to", "examples/")):
                return
            self._chassis = base.read_text(encoding="utf-8")
        if "[chassis]" in block.lines:
            self._chassis = ""
        elif not self._chassis:
            self._report(block.place(), "no [chassis] in it or before it, and no comment <!-- added to examples/FILE -->")
            return
        chassis = f"{self._chassis}\n{block.text()}"
        if self._load(block, chassis, lambda file: [file]):
            self._chassis = chassis

    def _load(self, block, text, arguments):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "pages").symlink_to(self._root / "examples/chassis/pages")
            file = folder / "block.toml"
            file.write_text(text, encoding="utf-8")
            file.chmod(0o600)
            command = [self._root / _SWITCH, "--check", *arguments(file)]
            run = subprocess.run(command, capture_output=True, text=True, timeout=self._limit, check=False)
        if run.returncode != 0:
            self._report(block.place(), "pm-virtual-switch does not take it", run.stderr.strip())
        return run.returncode == 0

    def _validate(self, block):
        schema = self._file_of(block, "schema", "docs/schema/")
        if not schema:
            return
        try:
            value = json.loads(block.text())
        except json.JSONDecodeError as mistake:
            self._report(block.place(block.line + mistake.lineno - 1), f"no JSON: {mistake.msg}")
            return
        for mistake in json_schema.mistakes(value, json.loads(schema.read_text(encoding="utf-8"))):
            self._report(block.place(), mistake)


def run_document(root, document, exceptions, limit):
    runner = document_runner(root, document, exceptions, limit)
    runner.run()
    return runner
