# SPDX-License-Identifier: Apache-2.0
"""Finds links of a document that lead nowhere in the tree."""
import re

_LINK = re.compile(r"\]\(([^()\s#]*)(?:#([^()\s]*))?\)")
_CODE = re.compile(r"```.*?```|`[^`\n]*`", re.DOTALL)
_HEADING = re.compile(r"^#+ +(.*?) *$", re.MULTILINE)


def _without_code(text):
    """With as many lines as before."""
    return _CODE.sub(lambda code: "\n" * code.group().count("\n"), text)


def _anchors(text):
    blocks_gone = re.sub(r"^```.*?^```", "", text, flags=re.DOTALL | re.MULTILINE)
    return {re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-") for heading in _HEADING.findall(blocks_gone)}


def dead_links(root, document):
    """A text for each link to a file, or to a heading of a document, that is not there."""
    page = root / document
    text = page.read_text(encoding="utf-8")
    found = []
    for number, line in enumerate(_without_code(text).splitlines(), 1):
        for name, anchor in _LINK.findall(line):
            target = page.parent / name if name else page
            if ":" in name:
                continue  # in the world
            if not target.exists():
                found.append(f"{document}:{number}: a link to nothing: {name}")
            elif anchor and anchor not in _anchors(target.read_text(encoding="utf-8")):
                found.append(f"{document}:{number}: a link to no heading: {name}#{anchor}")
    return found
