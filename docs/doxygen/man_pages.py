#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes manual pages of section 3, one a family of C functions, from Doxygen's XML.

    man_pages.py XML_FOLDER MAN3_FOLDER VERSION

Doxygen's own pages have no #include, no declarations to copy and a page for every member of every record ("used",
"word"). Here each function and each record is a link to the page of its family. The date is SOURCE_DATE_EPOCH, or today.
"""
import itertools
import os
import re
import sys
import textwrap
import time
import xml.etree.ElementTree as xml
from pathlib import Path

LINE_WIDTH = 78
DECLARATION_WIDTH = 70  # what a terminal of 80 columns has left of the indentation


def escape(text):
    """Text that means nothing to the formatter."""
    text = text.replace("\\", "\\e").replace("'", "\\(aq").replace("`", "\\(ga")
    text = re.sub(r"(?<![A-Za-z])-(?=[A-Za-z0-9-])", r"\\-", text)
    return "".join(each if each.isascii() else f"\\[u{ord(each):04X}]" for each in text)


def inline(element):
    """The text of an element with its fonts, as one line; blocks inside it are left out."""
    fonts = {"computeroutput": "\\fB", "bold": "\\fB", "emphasis": "\\fI"}
    blocks = ("verbatim", "itemizedlist", "parameterlist", "simplesect", "programlisting")
    text = escape(element.text or "")
    for child in element:
        if child.tag not in blocks:
            font = "\\fB" if child.tag == "ref" and (child.text or "").endswith("()") else fonts.get(child.tag)
            inner = inline(child)
            text += f"{font}{inner}\\fR" if font else inner
        text += escape(child.tail or "")
    return re.sub(r"\s+", " ", text)


def filled(text):
    """Lines of running text: each sentence begins one, and none is a request."""
    lines = []
    for sentence in re.split(r"(?<=[.:;]) (?=[A-Z])|(?<=\.) (?=[0-9\"])", text.strip()):
        lines += textwrap.wrap(sentence, LINE_WIDTH, break_long_words=False, break_on_hyphens=False)
    return [re.sub(r"^(?=[.])", r"\\&", line) for line in lines]


def literal(text):
    """Lines that stay as they are."""
    lines = [escape(line).rstrip() for line in text.strip("\n").split("\n")]
    return [".sp", ".RS 4", ".nf"] + [re.sub(r"^(?=[.])", r"\\&", line) for line in lines] + [".fi", ".RE"]


def list_items(element):
    lines = []
    for item in element.findall("listitem"):
        lines += [".IP \\(bu 2"] + [line for para in item.findall("para") for line in filled(inline(para))]
    return lines


def paragraph(para):
    """A paragraph, which Doxygen does not end at the lists and the literal lines in it."""
    pieces, text = [], escape(para.text or "")
    for child in para:
        if child.tag in ("verbatim", "itemizedlist"):
            pieces += [filled(text), literal(child.text) if child.tag == "verbatim" else list_items(child)]
            text = ""
        else:
            shell = xml.Element("para")
            shell.append(child)
            text += inline(shell)
            continue
        text += escape(child.tail or "")
    pieces.append(filled(text))
    return [piece for piece in pieces if piece]


def description(element):
    """The paragraphs of brief and detailed description; parameters and results are told apart from them."""
    pieces = []
    for part in ("briefdescription", "detaileddescription"):
        for para in element.findall(f"{part}/para"):
            pieces += paragraph(para)
    lines = []
    for piece in pieces:
        lines += ([".PP"] if lines and not piece[0].startswith((".sp", ".IP")) else []) + piece
    return lines


def summary(element):
    """All that is said of a member, as one paragraph."""
    text = " ".join(inline(para).strip() for part in ("briefdescription", "detaileddescription")
                    for para in element.findall(f"{part}/para"))
    return filled(text)


def type_of(element):
    return "".join(element.find("type").itertext()).strip()


def declared(kind, name):
    return f"{kind}{name}" if kind.endswith("*") else f"{kind} {name}"


def declaration(function):
    """The declaration as a caller may copy it, wrapped behind its parenthesis."""
    parameters = []
    for each in function.findall("param"):
        name = each.findtext("declname")
        parameters.append(declared(type_of(each), name) + (each.findtext("array") or "") if name else type_of(each))
    head = declared(type_of(function), function.findtext("name"))
    if function.get("kind") == "variable":
        return [f"extern {head}{function.findtext('argsstring')};"]
    lines, line = [], head + "("
    for i, each in enumerate(parameters or ["void"]):
        text = each + (", " if i + 1 < len(parameters) else ");")
        if len(line) + len(text.rstrip()) > DECLARATION_WIDTH:
            lines.append(line.rstrip())
            line = "    "
        line += text
    return lines + [line]


def synopsis(header, functions):
    lines = [".SH SYNOPSIS", ".nf", f".B #include <{header}>"]
    for each in functions:
        lines += [".PP"] + [f".B {escape(line)}" if not line.startswith(" ") else f"\\fB{escape(line)}\\fR"
                            for line in declaration(each)]
    link = functions and header.startswith("port_mgr/")
    return lines + [".fi"] + ([".PP", "Link with", ".BR \\-lport_mgr_common ."] if link else [])


def constant(name, value, element):
    return [".TP", f".BR {escape(name)} \" \\(eq {escape(value)}\"" if value else f".B {escape(name)}"] + summary(element)


def macro(element):
    parameters = [each.findtext("defname") for each in element.findall("param")]
    name = element.findtext("name") + (f"({', '.join(parameters)})" if parameters else "")
    value = "".join(element.find("initializer").itertext()) if element.find("initializer") is not None else ""
    name = f'"{name}"' if " " in name else name
    return constant(name, value.rstrip("u") if re.fullmatch(r"\w+", value) else "", element)


def enumeration(element):
    lines = summary(element)
    following = -1
    for each in element.findall("enumvalue"):
        stated = (each.findtext("initializer") or "").lstrip("= ")
        following = int(stated, 0) if stated else following + 1
        lines += constant(each.findtext("name"), stated or str(following), each)
    return lines


def record(element):
    name = element.findtext("compoundname")
    lines = [f".SS {escape(name)}"] + description(element)
    for each in element.iter("memberdef"):
        member = declared(type_of(each), each.findtext("name")) + (each.findtext("argsstring") or "")
        lines += [".TP", f".B \"{escape(member)}\""] + summary(each)
    return lines


def function_section(function):
    lines = [f".SS {escape(function.findtext('name'))}"] + description(function)
    for item in function.findall("detaileddescription//parameteritem"):
        name = item.find("parameternamelist/parametername")
        says = {"out": " (out)", "inout": " (in and out)"}.get(name.get("direction"), "")
        lines += [".TP", f".IR {escape(name.text)} \"{says}\"" if says else f".I {escape(name.text)}"]
        lines += filled(inline(item.find("parameterdescription/para")))
    for result in function.findall("detaileddescription//simplesect[@kind='return']"):
        lines += [".TP", ".B Returns"] + filled(inline(result.find("para")))
    return lines


class family:
    """A group of Doxygen's: what one header declares."""

    def __init__(self, folder, identity):
        self.xml = xml.parse(folder / f"{identity}.xml").find("compounddef")
        self.name = self.xml.findtext("compoundname")
        self.title = self.xml.findtext("title")
        self.records = [xml.parse(folder / f"{each.get('refid')}.xml").find("compounddef")
                        for each in self.xml.findall("innerclass")]
        members = sorted(self.xml.iter("memberdef"), key=lambda each: int(each.find("location").get("line")))
        self.functions = [each for each in members if each.get("kind") in ("function", "variable")]
        self.macros = [each for each in members if each.get("kind") == "define"]
        self.enumerations = [each for each in members if each.get("kind") == "enum"]
        self.types = [each for each in members if each.get("kind") == "typedef"]
        self.members = [each.get("refid") for each in self.xml.findall("innergroup")]
        self.headings = {member.get("id"): section.findtext("header") or "" for section in self.xml.findall("sectiondef")
                         for member in section}

    def is_of_c(self):
        return all("::" not in each.findtext("compoundname") for each in self.records)

    def header(self):
        places = [each.find("location").get("file") for each in list(self.xml.iter("memberdef")) + self.records]
        return places[0] if places else ""

    def about(self):
        """What whatis(1) shows."""
        brief = self.xml.find("briefdescription/para")
        text = inline(brief).strip() if brief is not None else escape(self.title.split(": ")[-1])
        return text[0].lower() + text[1:].rstrip(".")

    def links(self):
        return [each.findtext("name") for each in self.functions] + [each.findtext("compoundname") for each in self.records]

    def by_heading(self, members):
        """Runs of members below the same heading of the header, if there is one."""
        return itertools.groupby(members, key=lambda each: self.headings[each.get("id")])

    def constants(self):
        lines = [".SH CONSTANTS"]
        for heading, macros in self.by_heading(self.macros):
            if heading:
                lines += ([] if lines[-1] == ".SH CONSTANTS" else [".PP"]) + [f".I {escape(heading)}"]
            lines += [line for each in macros for line in macro(each)]
        for each in self.enumerations:
            lines += ([] if lines[-1] == ".SH CONSTANTS" else [".PP"]) + enumeration(each)
        return lines

    def contents(self):
        lines = [".SH DESCRIPTION"] + (description(self.xml) or [f"This header holds {self.about()}."])
        if self.macros or self.enumerations:
            lines += self.constants()
        if self.records or self.types:
            lines += [".SH TYPES"]
            for each in self.types:
                lines += [".TP", f".B {escape(each.findtext('name'))}"] + summary(each)
            lines += [line for each in self.records for line in record(each)]
        for heading, functions in self.by_heading(self.functions):
            lines += [f".SH {escape((heading or 'functions').upper())}"]
            lines += [line for each in functions for line in function_section(each)]
        return lines


def see_also(page, families):
    """The families above and below a page, and those of the functions that it names."""
    mentioned = {each.text.rstrip("()") for each in page.xml.iter("ref") if (each.text or "").endswith("()")}
    names = [each.name for each in families
             if page.xml.get("id") in each.members
             or each.is_of_c() and each is not page
             and (each.xml.get("id") in page.members or mentioned.intersection(each.links()))]
    if not names:
        return []
    return [".SH SEE ALSO"] + [f".BR {escape(each)} (3){',' if each != names[-1] else ''}" for each in names]


def man_page(page, families, version, date):
    names = [page.name] + [each.findtext("name") for each in page.functions]
    lines = [".\\\" Made by docs/doxygen/man_pages.py from the header's comments.",
             f".TH {page.name.upper()} 3 {date} \"port manager {version}\" \"Library Functions\"",
             ".ad l", ".nh", ".SH NAME"]
    lines += textwrap.wrap(", ".join(names), LINE_WIDTH, break_on_hyphens=False) + [f"\\- {page.about()}"]
    if page.header():
        lines += synopsis(page.header(), page.functions)
    return "\n".join(lines + page.contents() + see_also(page, families)) + "\n"


def main():
    source, target, version = Path(sys.argv[1]), Path(sys.argv[2]), sys.argv[3]
    date = time.strftime("%Y-%m-%d", time.gmtime(int(os.environ.get("SOURCE_DATE_EPOCH", time.time()))))
    index = xml.parse(source / "index.xml")
    families = [family(source, each.get("refid")) for each in index.findall("compound[@kind='group']")]
    target.mkdir(parents=True, exist_ok=True)
    for page in families:
        if page.is_of_c():
            (target / f"{page.name}.3").write_text(man_page(page, families, version, date))
            for link in page.links():
                (target / f"{link}.3").symlink_to(f"{page.name}.3")


main()
