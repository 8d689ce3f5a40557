# SPDX-License-Identifier: Apache-2.0
"""One shell for the commands of one document, in directories of its own."""
import dataclasses
import os
import pathlib
import re
import select
import shutil
import signal
import subprocess
import tempfile
import time

_SHELL = pathlib.Path(__file__).with_name("documents_shell.sh")
_MOVED = re.compile(r"(?<![a-z0-9_./}])/(tmp|run)(?=/)")
_WATCHING_SECONDS = 2.5


@dataclasses.dataclass
class command_result:
    status: int  # None when the commands did not end, or ended the shell
    output: list
    failures: list  # line and exit status of each command that failed


class shell_session:
    """The shell starts in a copy of the tree, made of links. Its /tmp, /run and home directory are elsewhere."""

    def __init__(self, root, limit):
        self._root = root
        self._limit = limit
        self._scratch = pathlib.Path(tempfile.mkdtemp(prefix="d", dir="/tmp"))  # short: sockets are to lie below it
        self._scratch.chmod(0o711)
        for name in ("tmp", "run", "home", "user", "bin", "tree", "tree/scripts"):
            (self._scratch / name).mkdir(0o700 if name == "user" else 0o755)
        self._link_tree()
        self._terminal = self._scratch / "terminal"
        self._failures = self._scratch / "failures"
        self._terminal.touch()
        self._steps = 0
        self._is_stuck = False
        self._start()

    def _link_tree(self):
        tree = self._scratch / "tree"
        for entry in self._root.iterdir():
            if entry.name not in (".git", "scripts"):
                (tree / entry.name).symlink_to(entry)
        # What finds the tree by its own place or by the working directory is to find the real one, which one page at a
        # time builds.
        for script in (self._root / "scripts").glob("*"):
            self._write_program(tree / "scripts" / script.name, f'exec "{script}" "$@"')
        self._write_program(
            self._scratch / "bin/cmake",
            f'case "$PWD $1" in "{tree} --preset"* | "{tree} --build") cd "{self._root}" ;; esac\n'
            f'exec flock "{self._root}" "{shutil.which("cmake")}" "$@"',
        )

    @staticmethod
    def _write_program(path, text):
        path.write_text(f"#!/bin/sh\n{text}\n")
        path.chmod(0o755)

    def _environment(self):
        kept = {name: value for name, value in os.environ.items() if name not in ("MTS_RUNTIME_DIR", "LD_LIBRARY_PATH")}
        own = {
            "PATH": f"{self._scratch}/bin:{os.environ['PATH']}",
            "HOME": f"{self._scratch}/home",
            "TMPDIR": f"{self._scratch}/tmp",
            "XDG_RUNTIME_DIR": f"{self._scratch}/user",
            "LC_ALL": "C.UTF-8",
        }
        return kept | own

    def _start(self):
        with self._terminal.open("ab") as terminal:
            self._shell = subprocess.Popen(
                ["bash", str(_SHELL), str(self._terminal), str(self._failures)],
                stdin=subprocess.PIPE,
                stdout=subprocess.PIPE,
                stderr=terminal,
                cwd=self._scratch / "tree",
                env=self._environment(),
                start_new_session=True,
            )

    def path(self, name):
        return self._scratch / name

    def run(self, commands, line):
        """Runs commands that stand at that line of the document, so that the shell's messages name it."""
        self._steps += 1
        script = self._scratch / f"step{self._steps}"
        script.write_text("\n" * (line - 1) + _MOVED.sub(rf"{self._scratch}/\1", commands) + "\n")
        self._failures.write_text("")
        start = self._terminal.stat().st_size
        os.write(self._shell.stdin.fileno(), f"{script}\n".encode())
        status = self._status()
        self._is_stuck = status is None
        return command_result(status, self._printed(start), self._failed())

    def _failed(self):
        return [tuple(int(word) for word in line.split()) for line in self._failures.read_text().splitlines()]

    def _status(self):
        start = time.monotonic()
        while time.monotonic() < start + self._limit:
            if select.select([self._shell.stdout], [], [], 0.2)[0]:
                status = os.read(self._shell.stdout.fileno(), 100).decode().strip()
                return int(status) if status else None
            if self._shell.poll() is not None:
                return None
            if time.monotonic() > start + _WATCHING_SECONDS:
                self._interrupt_watching()
        return None

    def _interrupt_watching(self):
        """Watching goes on until Ctrl-C."""
        for entry in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                if os.getsid(int(entry.name)) == self._shell.pid and b"--watch" in (entry / "cmdline").read_bytes():
                    os.kill(int(entry.name), signal.SIGINT)
            except OSError:
                pass  # it has ended

    def _printed(self, start):
        with self._terminal.open("rb") as terminal:
            terminal.seek(start)
            text = terminal.read().decode(errors="replace")
        return text.replace(f"{self._scratch}/tmp", "/tmp").replace(f"{self._scratch}/run", "/run").splitlines()

    def close(self):
        """Ends the shell, which ends what it left in the background."""
        self._shell.stdin.close()
        if not self._is_stuck:
            try:
                self._shell.wait(3)
            except subprocess.TimeoutExpired:
                pass
        try:
            os.killpg(self._shell.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        self._shell.wait()
        self._shell.stdout.close()
        shutil.rmtree(self._scratch, ignore_errors=True)
