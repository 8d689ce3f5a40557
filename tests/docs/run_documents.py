#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Runs every code block of the documents."""
import argparse
import concurrent.futures
import dataclasses
import os
import pathlib
import sys

import document_blocks

# Commands, or blocks that begin with them, that this test cannot run: the document, the command, why.
NOT_RUN = (
    ("README.md", "scripts/check", "it runs this test"),
    ("CONTRIBUTING.md", "scripts/check", "it runs this test"),
    ("docs/install.md", "scripts/package", "it builds what other presets are for"),
    ("docs/install.md", "sudo apt-get install ./build/packages/*_amd64.deb", "it would change the machine"),
    ("docs/install.md", "sudo systemctl enable --now pm-virtual-switch", "it would change the machine"),
    ("docs/pmctl.md", "ssh lab pmctl show running-config | pmctl config -", "it takes another machine"),
)

# Those that only root can run: they share a directory with groups that another user is no member of.
FOR_ROOT = (
    ("docs/access.md", "export MTS_RUNTIME_DIR=/tmp/lab"),
    ("docs/access.md", "install -d -m 2710 -g operator /run/lab"),
    (
        "docs/access.md",
        "MTS_RUNTIME_DIR=/run/lab pm-virtual-switch --config-group staff examples/chassis/director.toml &",
    ),
)


@dataclasses.dataclass
class exceptions_table:
    """Why commands are not run, by document and command, empty for those that can; and which the documents have."""

    reasons: dict
    used: set = dataclasses.field(default_factory=set)

    def reason(self, document, command):
        self.used.add((document, command))
        return self.reasons.get((document, command), "")

    def stale(self):
        return [key for key in self.reasons if key not in self.used]


def exceptions_here(not_run, for_root):
    reasons = {(document, command): reason for document, command, reason in not_run}
    root_reason = "" if os.geteuid() == 0 else "it needs root"
    reasons |= {(document, command): root_reason for document, command in for_root}
    return exceptions_table(reasons)


def documents_of(root):
    return sorted(str(path.relative_to(root)) for path in [*root.glob("*.md"), *root.glob("docs/**/*.md")])


def run_documents(root, exceptions, limit, only=None):
    """All that is wrong with the documents of a tree, or with one of them, a text each; and the number of blocks."""

    def run(document):
        return document_blocks.run_document(root, document, exceptions, limit)

    with concurrent.futures.ThreadPoolExecutor(4) as pool:
        results = list(pool.map(run, [only] if only else documents_of(root)))
    problems = [problem for result in results for problem in result.problems]
    for document, command in [] if only else exceptions.stale():
        problems.append(f"{document}: run_documents.py excepts a command that is not there: {command}")
    return problems, sum(result.blocks for result in results)


def main():
    parser = argparse.ArgumentParser(description="Runs every code block of the documents.")
    parser.add_argument("tree", type=pathlib.Path, help="with the programs in its build/switch/bin")
    parser.add_argument("--limit", type=float, default=100, help="seconds that a block may take")
    parser.add_argument("--only", metavar="DOCUMENT", help="one document, by its path in the tree")
    arguments = parser.parse_args()
    exceptions = exceptions_here(NOT_RUN, FOR_ROOT)
    problems, blocks = run_documents(arguments.tree.resolve(), exceptions, arguments.limit, arguments.only)
    for (document, command), reason in exceptions.reasons.items():
        if reason:
            print(f"not run: {document}: {command}: {reason}")
    print(f"{blocks} blocks")
    for problem in problems:
        print(problem)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
