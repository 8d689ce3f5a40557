# SPDX-License-Identifier: Apache-2.0
"""Looks the promised exports, and every record, member, constant and type of the C headers, up in Doxygen's XML.

    check_entries.py XML_FOLDER PROMISED_EXPORTS
"""
import sys
import xml.etree.ElementTree as xml
from pathlib import Path

complaints = []


def has_text(element, *parts):
    return any("".join(each.itertext()).strip() for part in parts for each in element.findall(part))


def is_described(element):
    return has_text(element, "briefdescription", "detaileddescription")


def check(is_good, *what):
    if not is_good:
        complaints.append(" ".join(what))


def check_function(function):
    name = function.findtext("name")
    described = {each.findtext("parameternamelist/parametername"): each
                 for each in function.findall("detaileddescription//parameteritem")}
    for parameter in function.findall("param/declname"):
        item = described.pop(parameter.text, None)
        check(item is not None and has_text(item, "parameterdescription"), name, "lacks the parameter", parameter.text)
    check(not described, name, "describes parameters that it has not:", *described)
    returns = has_text(function, "detaileddescription//simplesect[@kind='return']")
    check(returns != (function.findtext("type") == "void"), name, "lacks a result, or is void and has one")


def check_compound(compound):
    name = compound.findtext("compoundname")
    if compound.get("kind") in ("struct", "union"):
        check(is_described(compound), "no description:", name)
    for member in list(compound.iter("memberdef")) + list(compound.iter("enumvalue")):
        check(is_described(member), "no description:", name, member.findtext("name"))
        if member.get("kind") == "function":
            check_function(member)


def is_of_c(compound):
    return compound.get("kind") in ("group", "struct", "union") and "::" not in compound.findtext("compoundname")


def main():
    folder, promised = Path(sys.argv[1]), set(Path(sys.argv[2]).read_text().split())
    compounds = [xml.parse(folder / f"{each.get('refid')}.xml").find("compounddef")
                 for each in xml.parse(folder / "index.xml").findall("compound")]
    compounds = [each for each in compounds if is_of_c(each)]
    for each in compounds:
        check_compound(each)
    entries = {member.findtext("name") for each in compounds if each.get("kind") == "group"
               for member in each.iter("memberdef") if member.find("location").get("file").startswith("port_mgr/")}
    for name in sorted(promised - entries):
        check(False, "no entry:", name)
    members = sum(len(list(each.iter("memberdef"))) for each in compounds)
    check(len(promised) == 99 and members > 400, "too little was looked at:", str(len(promised)), str(members))
    print(*complaints, sep="\n")
    print(f"{len(promised)} exports, {members} entries")
    sys.exit(bool(complaints))


main()
