# SPDX-License-Identifier: Apache-2.0
"""Finds the code blocks of a Markdown document."""
import dataclasses
import re
import textwrap

INDENTED = "indented"

_FENCE = re.compile(r"( *)(```+|~~~+) *([^`\s]*)")
_LIST_ITEM = re.compile(r" *([-*+]|\d+[.)]) ")
_COMMENT = re.compile(r"<!-- *(.*?) *-->")


@dataclasses.dataclass
class code_block:
    document: str  # its path in the tree
    line: int  # where its content begins, counted from 1
    language: str  # empty when it has none, INDENTED when it is no fenced block
    lines: list
    note: str  # the comment right before it

    def problem(self, text, *details, line=None):
        """What is wrong with a line of it, or with all of it."""
        shown = "".join("\n" + textwrap.indent(detail, "    ") for detail in details)
        return f"{self.document}:{line or self.line}: {text}{shown}".rstrip()

    def text(self):
        return "".join(line + "\n" for line in self.lines)


def _note_before(lines, index):
    while index > 0 and not lines[index - 1].strip():
        index -= 1
    comment = _COMMENT.fullmatch(lines[index - 1].strip()) if index > 0 else None
    return comment.group(1) if comment else ""


def _fenced_block(document, lines, index, fence):
    indent, mark, language = fence.groups()
    end = index + 1
    while end < len(lines) and lines[end].strip() != mark:
        end += 1
    content = [line.removeprefix(indent) for line in lines[index + 1 : end]]
    return code_block(document, index + 2, language, content, _note_before(lines, index)), end + 1


def _is_indented_code(lines, index, is_in_list):
    return lines[index].startswith("    ") and not is_in_list and (index == 0 or not lines[index - 1].strip())


def _indented_block(document, lines, index):
    end = index
    while end < len(lines) and (lines[end].startswith("    ") or not lines[end].strip()):
        end += 1
    return code_block(document, index + 1, INDENTED, lines[index:end], ""), end


def code_blocks(document, lines):
    """All blocks in their order. Paragraphs of list items are indented, too, and no code."""
    blocks = []
    is_in_list = False
    index = 0
    while index < len(lines):
        line = lines[index]
        block = None
        if fence := _FENCE.match(line):
            block, index = _fenced_block(document, lines, index, fence)
        elif _is_indented_code(lines, index, is_in_list):
            block, index = _indented_block(document, lines, index)
        else:
            if _LIST_ITEM.match(line):
                is_in_list = True
            elif line and not line.startswith(" "):
                is_in_list = False
            index += 1
        if block:
            blocks.append(block)
    return blocks
