#!/usr/bin/env python3
"""Writes what docs/configuration.md says of the configuration's items as C++.

Usage: make_configuration.py PAGE keys|items OUTPUT

The tables of the page are the one place where the items are listed. `keys` writes a line for each item,
    "picture.mode",
and `items` the columns of a ConfigItem (see settings/config_items.h),
    {1, "picture.mode", ItemKind::kChoice, 0, 5, 0, "standard,vivid,cinema,sport,game,user", {}, true},
both in the order of the page. A row that cannot be understood ends the script with its line number.
"""
import pathlib
import re
import sys

TEXT_KINDS = {"text", "language", "country"}
INT16_MAX = 32767


class Fault(Exception):
    pass


def number(text):
    value = int(text)
    if not -INT16_MAX <= value <= INT16_MAX:
        raise Fault(f"{text} does not fit into 16 bits")
    return value


def bounds(kind, can_be):
    """The least and the greatest value of an item, of a text its bytes; and the names of a choice."""
    if kind == "switch" and can_be == "off, on":
        return 0, 1, ""
    if kind == "choice":
        names = [name.strip() for name in can_be.split(",")]
        return 0, len(names) - 1, ",".join(names)
    if kind in ("language", "country") and can_be.startswith("three "):
        return 3, 3, ""
    match = re.fullmatch(r"(-?\d+) to (-?\d+)( bytes)?", can_be)
    if match and kind in ("number", "text") and bool(match[3]) == (kind == "text"):
        return number(match[1]), number(match[2]), ""
    raise Fault(f"a {kind} cannot be '{can_be}'")


def condition(enabled):
    """When the item is enabled, as an ItemCondition, and whether menus show it."""
    if enabled in ("always", "never shown"):
        return "{}", enabled == "always"
    match = re.fullmatch(r"`([\w.]+)` is (not )?(-?\d+)", enabled)
    if not match:
        raise Fault(f"not a condition: '{enabled}'")
    return f'{{"{match[1]}", {number(match[3])}, {"false" if match[2] else "true"}}}', True


def items(page):
    group = None
    for line_number, line in enumerate(page.read_text().splitlines(), 1):
        heading = re.match(r"## Group (\d+):", line)
        if heading:
            group = int(heading[1])
        if not line.startswith("| `"):
            continue
        try:
            key, kind, can_be, delivered, enabled, _ = (cell.strip() for cell in line.strip("|").split("|"))
            least, greatest, text = bounds(kind, can_be)
            value = 0
            if kind in TEXT_KINDS:
                text = "" if delivered == "none" else delivered
            else:
                value = number(delivered)
            yield key.strip("`"), group, kind, least, greatest, value, text, *condition(enabled)
        except (Fault, ValueError) as fault:
            sys.exit(f"{page}:{line_number}: {fault}")


def main():
    if len(sys.argv) != 4 or sys.argv[2] not in ("keys", "items"):
        sys.exit(__doc__)
    lines = []
    for key, group, kind, least, greatest, value, text, enabled, shown in items(pathlib.Path(sys.argv[1])):
        if sys.argv[2] == "keys":
            lines.append(f'"{key}",')
        else:
            lines.append(f'{{{group}, "{key}", ItemKind::k{kind.capitalize()}, {least}, {greatest}, {value}, '
                         f'"{text}", {enabled}, {"true" if shown else "false"}}},')
    if not lines:
        sys.exit(f"{sys.argv[1]}: no table of items")
    pathlib.Path(sys.argv[3]).write_text("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
