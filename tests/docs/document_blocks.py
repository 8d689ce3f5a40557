# SPDX-License-Identifier: Apache-2.0
"""Runs, loads or compares the blocks of one document, each as its language says, and follows its links."""
import file_blocks
import links
import markdown_blocks
import shell_session
import transcript

_SHOWN_LINES = 40  # of what a command printed


class document_runner:
    def __init__(self, root, document, exceptions, limit):
        self._root = root
        self._document = document
        self._lines = (root / document).read_text(encoding="utf-8").splitlines()
        self._exceptions = exceptions
        self._limit = limit
        self._session = None
        self._is_shell_gone = False
        files = file_blocks.file_blocks(root, limit)
        self._checks = {
            "sh": self._run_script,
            "console": self._run_transcript,
            "c": files.compare_program,
            "cpp": files.compare_program,
            "cmake": files.compare_excerpt,
            "toml": files.load_chassis,
            "json": files.validate,
            "text": lambda block: [],
            "": lambda block: [block.problem("a block without a language")],
            markdown_blocks.INDENTED: lambda block: [block.problem("an indented block: fence it")],
        }
        self.blocks = 0
        self.problems = links.dead_links(root, document)

    def run(self):
        try:
            for block in markdown_blocks.code_blocks(self._document, self._lines):
                self.blocks += 1
                self.problems += self._checks.get(block.language, self._refuse)(block)
        finally:
            if self._session:
                self._session.close()

    @staticmethod
    def _refuse(block):
        return [block.problem(f"a block of an unknown language: {block.language}")]

    def _run(self, commands, line):
        if not self._session:
            self._session = shell_session.shell_session(self._root, self._limit)
        result = self._session.run(commands, line)
        self._is_shell_gone = result.status is None
        return result

    def _run_commands(self, block, line, commands, judge):
        """What `judge` finds in the result. When the shell has gone, what follows cannot be run, either."""
        first_line = commands.partition("\n")[0]
        if self._exceptions.reason(self._document, first_line) or self._is_shell_gone:
            return []
        result = self._run(commands, line)
        if not self._is_shell_gone:
            return judge(result)
        problem = "did not end in time, or ended the shell; what follows was not run"
        return [block.problem(problem, commands, *result.output[-_SHOWN_LINES:], line=line)]

    def _run_script(self, block):
        def judge(result):
            failures = result.failures
            if result.status != 0 and not failures:
                failures = [(block.line, result.status)]
            output = result.output[-_SHOWN_LINES:]
            return [
                block.problem(f"failed with status {status}: {self._lines[line - 1].strip()}", *output, line=line)
                for line, status in failures
            ]

        return self._run_commands(block, block.line, block.text(), judge)

    def _run_transcript(self, block):
        try:
            exchanges = transcript.exchanges(block)
        except ValueError as mistake:
            return [str(mistake)]
        problems = []
        for exchange in exchanges:
            problems += self._run_exchange(block, exchange)
        return problems

    def _run_exchange(self, block, exchange):
        def judge(result):
            command = exchange.command
            if difference := transcript.difference(exchange.output, result.output):
                return [block.problem(f"prints something else: {command}", *difference, line=exchange.line)]
            if result.status != 0 and not transcript.is_whole(exchange.output):
                problem = f"failed with status {result.status}, and not all that it prints is shown: {command}"
                return [block.problem(problem, *result.output[-_SHOWN_LINES:], line=exchange.line)]
            return []

        return self._run_commands(block, exchange.line, exchange.command, judge)


def run_document(root, document, exceptions, limit):
    runner = document_runner(root, document, exceptions, limit)
    runner.run()
    return runner
