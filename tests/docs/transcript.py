# SPDX-License-Identifier: Apache-2.0
"""Reads `console` blocks: commands with their output, as a terminal shows them."""
import dataclasses
import re


@dataclasses.dataclass
class exchange:
    line: int  # of the command in its document
    command: str
    output: list  # the lines expected


def exchanges(block):
    """The commands of a block. A command goes on after a backslash, and in lines that begin with `> `."""
    found = []
    is_in_command = False
    for number, line in enumerate(block.lines, block.line):
        if line.startswith("$ "):
            found.append(exchange(number, line[2:], []))
            is_in_command = True
        elif not found:
            raise ValueError(block.problem("a console block begins with a command after `$ `", line=number))
        elif is_in_command and (line.startswith("> ") or found[-1].command.endswith("\\")):
            found[-1].command += "\n" + line.removeprefix("> ")
        else:
            found[-1].output.append(line)
            is_in_command = False
    return found


def _tidy(lines):
    tidy = [line.rstrip() for line in lines]
    while tidy and not tidy[-1]:
        tidy.pop()
    return tidy


def _pattern(line):
    if line.strip() == "...":
        return r"(?:.*\n)*?"
    if line.endswith("..."):
        return re.escape(line[:-3]) + r".*\n"
    return re.escape(line) + r"\n"


def difference(expected, printed):
    """Lines that say how what was printed differs from what was expected; none when it does not. `...` stands for any
    lines, or for the rest of a line."""
    expected = _tidy(expected)
    printed = "".join(line + "\n" for line in _tidy(printed))
    patterns = [_pattern(line) for line in expected]
    if re.fullmatch("".join(patterns), printed):
        return []
    matched = len(patterns)
    while not (begin := re.match("".join(patterns[:matched]), printed)):
        matched -= 1
    rest = printed[begin.end() :].splitlines()
    wanted = expected[matched] if matched < len(expected) else "nothing more"
    return [f"wanted:  {wanted}", "printed: " + "\n         ".join(rest[:12])]


def is_whole(expected):
    """Whether the lines show all that a command prints, as those of one that fails are to."""
    return bool(expected) and not any(line.endswith("...") for line in _tidy(expected))
