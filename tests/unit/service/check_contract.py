#!/usr/bin/env python3
"""Compares the .hal files with the table of what clients were built against.

Usage: check_contract.py TABLE INTERFACES

A line of the table is `INTERFACE SLOT METHOD(TYPES) -> (TYPES)`, slots counted from 1. Interfaces that
the table does not name are not looked at.
"""
import difflib
import pathlib
import re
import sys

SHORT = {"vec<uint8_t>": "bytes", "int8_t": "i8", "uint8_t": "u8", "int16_t": "i16", "uint16_t": "u16",
         "int32_t": "i32", "uint32_t": "u32", "int64_t": "i64", "uint64_t": "u64"}
METHOD = re.compile(r"(\w+)\s*\(([^)]*)\)\s*(?:generates\s*\(([^)]*)\)\s*)?;")


def short(name):
    return SHORT.get(name) or re.sub(r"\w+", lambda word: SHORT.get(word[0], word[0]), name)


def types(declarations):
    names = [" ".join(d.split()).rsplit(" ", 1)[0] for d in declarations.split(",") if d.strip()]
    return ", ".join(short(name) for name in names)


def methods(hal):
    text = re.sub(r"/\*.*?\*/|//[^\n]*", "", hal.read_text(), flags=re.S)
    body = text[text.index("{", text.index(f"interface {hal.stem}")) + 1:]
    for slot, (name, arguments, results) in enumerate(METHOD.findall(body), 1):
        line = f"{hal.stem} {slot} {name}({types(arguments)})"
        yield line + (f" -> ({types(results)})" if results else "")


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    table = [line for line in pathlib.Path(sys.argv[1]).read_text().splitlines() if line and line[0] != "#"]
    expected = {}
    for line in table:
        expected.setdefault(line.split()[0], []).append(line)
    failed = not expected
    for interface, lines in expected.items():
        found = list(methods(pathlib.Path(sys.argv[2]) / f"{interface}.hal"))
        if found != lines:
            failed = True
            print("\n".join(difflib.unified_diff(lines, found, "contract", f"{interface}.hal", "", "", 0)))
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
