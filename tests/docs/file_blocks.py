# SPDX-License-Identifier: Apache-2.0
"""Blocks that are files, or parts of files: programs, chassis, JSON."""
import json
import pathlib
import re
import subprocess
import tempfile
import textwrap

import jsonschema

_SWITCH = "build/switch/bin/pm-virtual-switch"


class file_blocks:
    """Each check returns what is wrong with a block, a text each."""

    def __init__(self, root, limit):
        self._root = root
        self._limit = limit
        self._chassis = ""  # what the blocks before make

    def _file_of(self, block, word, folder):
        """The file that the comment before a block names after that word; or nothing."""
        name = block.note.removeprefix(word + " ").strip()
        is_named = block.note.startswith(word + " ") and name.startswith(folder)
        return self._root / name if is_named and (self._root / name).is_file() else None

    @staticmethod
    def _unnamed(block, word, folder):
        return [block.problem(f"no comment <!-- {word} {folder}FILE --> before it that names a file")]

    def compare_excerpt(self, block):
        file = self._file_of(block, "from", "examples/")
        if not file:
            return self._unnamed(block, "from", "examples/")
        lines = file.read_text(encoding="utf-8").splitlines()
        size = len(block.lines)
        excerpts = ("\n".join(lines[start : start + size]) + "\n" for start in range(len(lines) - size + 1))
        if textwrap.dedent(block.text()) in map(textwrap.dedent, excerpts):
            return []
        return [block.problem(f"no excerpt of {file.relative_to(self._root)}")]

    def compare_program(self, block):
        problems = self.compare_excerpt(block)
        name = block.note.rpartition("/")[2]
        builds = [*self._root.glob("examples/**/CMakeLists.txt"), *self._root.glob("tests/**/CMakeLists.txt")]
        if not any(name in re.split(r"[\s()/]", build.read_text(encoding="utf-8")) for build in builds):
            problems.append(block.problem(f"the tests do not build {name}"))
        return problems

    def load_chassis(self, block):
        """A block without [chassis] is added to what the blocks before it make, or to the file of its note."""
        if block.note.startswith("from "):
            return self.compare_excerpt(block)
        if block.note.startswith("state file of "):
            return self._load_state(block)
        if base := self._file_of(block, "added to", "examples/"):
            self._chassis = base.read_text(encoding="utf-8")
        elif "[chassis]" in block.lines:
            self._chassis = ""
        elif not self._chassis or block.note.startswith("added to "):
            return [block.problem("no [chassis] in it or before it, and no comment <!-- added to examples/FILE -->")]
        chassis = f"{self._chassis}\n{block.text()}"
        problems = self._load(block, chassis)
        if not problems:
            self._chassis = chassis
        return problems

    def _load_state(self, block):
        chassis = self._file_of(block, "state file of", "examples/")
        if not chassis:
            return self._unnamed(block, "state file of", "examples/")
        return self._load(block, block.text(), "--state", chassis=chassis)

    def _load(self, block, text, *options, chassis=""):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "pages").symlink_to(self._root / "examples/chassis/pages")
            file = folder / "block.toml"
            file.write_text(text, encoding="utf-8")
            arguments = [word for word in (*options, file, chassis) if word]
            command = [self._root / _SWITCH, "--check", *arguments]
            run = subprocess.run(command, capture_output=True, text=True, timeout=self._limit, check=False)
        if run.returncode == 0:
            return []
        return [block.problem("pm-virtual-switch does not take it", run.stderr.strip())]

    def validate(self, block):
        schema = self._file_of(block, "schema", "docs/schema/")
        if not schema:
            return self._unnamed(block, "schema", "docs/schema/")
        try:
            value = json.loads(block.text())
        except json.JSONDecodeError as mistake:
            return [block.problem(f"no JSON: {mistake.msg}", line=block.line + mistake.lineno - 1)]
        validator = jsonschema.Draft202012Validator(json.loads(schema.read_text(encoding="utf-8")))
        return [block.problem(f"{mistake.json_path}: {mistake.message}") for mistake in validator.iter_errors(value)]
