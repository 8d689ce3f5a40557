# SPDX-License-Identifier: Apache-2.0
"""Checks JSON against a schema, as far as the schemas of this tree go."""
import re

_TYPES = {
    "array": lambda value: isinstance(value, list),
    "boolean": lambda value: isinstance(value, bool),
    "integer": lambda value: isinstance(value, int) and not isinstance(value, bool),
    "null": lambda value: value is None,
    "number": lambda value: isinstance(value, (int, float)) and not isinstance(value, bool),
    "object": lambda value: isinstance(value, dict),
    "string": lambda value: isinstance(value, str),
}
_WORDS_FOR_PEOPLE = {"$schema", "$id", "$defs", "title", "description"}


def _has_type(value, types):
    return any(_TYPES[name](value) for name in ([types] if isinstance(types, str) else types))


def _is_described(value, schema, keyword, argument, whole):
    """Whether a value is as one keyword of a schema wants it. Keywords say nothing about values of other types."""
    if keyword == "$ref":
        target = whole
        for step in argument.removeprefix("#/").split("/"):
            target = target[step]
        return not mistakes(value, target, whole)
    if keyword == "anyOf":
        return any(not mistakes(value, choice, whole) for choice in argument)
    if keyword == "type":
        return _has_type(value, argument)
    if keyword in ("minimum", "maximum"):
        return not _has_type(value, "number") or (value >= argument if keyword == "minimum" else value <= argument)
    if keyword == "pattern":
        return not isinstance(value, str) or re.search(argument, value) is not None
    if keyword in ("minItems", "maxItems"):
        is_list = isinstance(value, list)
        return not is_list or (len(value) >= argument if keyword == "minItems" else len(value) <= argument)
    if keyword == "required":
        return not isinstance(value, dict) or all(key in value for key in argument)
    if keyword == "additionalProperties":
        return argument is True or not isinstance(value, dict) or all(key in schema["properties"] for key in value)
    raise ValueError(f"a keyword that json_schema.py does not know: {keyword}")


def mistakes(value, schema, whole=None, place="the document"):
    """What is wrong with a value, a text each."""
    whole = whole or schema
    found = []
    for keyword, argument in schema.items():
        if keyword in _WORDS_FOR_PEOPLE:
            continue
        if keyword == "properties":
            known = {key: value[key] for key in argument if isinstance(value, dict) and key in value}
            for key, member in known.items():
                found += mistakes(member, argument[key], whole, f"{place}.{key}")
        elif keyword == "items":
            for index, element in enumerate(value if isinstance(value, list) else []):
                found += mistakes(element, argument, whole, f"{place}[{index}]")
        elif not _is_described(value, schema, keyword, argument, whole):
            found.append(f"{place}: not as {keyword} of its schema wants it")
    return found
