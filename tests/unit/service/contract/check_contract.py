#!/usr/bin/env python3
"""Compares the .hal files with the table of what clients were built against.

Usage: check_contract.py TABLE INTERFACES BASE_INTERFACES

A line of the table is `INTERFACE SLOT METHOD(TYPES) -> (TYPES)`, slots counted from 1, or, of types.hal,
`types struct NAME { TYPE FIELD, ... }` or `types enum NAME : TYPE { NAME = NUMBER, ... }`. Every interface
of the package has to be in the table, with as many methods as the interface compiler counts in it.
BASE_INTERFACES is the root of the package android.hidl.
"""
import difflib
import pathlib
import re
import subprocess
import sys

PACKAGE = "vendor.corvanta.tv.qortvapi"

SHORT = {"vec<uint8_t>": "bytes", "int8_t": "i8", "uint8_t": "u8", "int16_t": "i16", "uint16_t": "u16",
         "int32_t": "i32", "uint32_t": "u32", "int64_t": "i64", "uint64_t": "u64"}
DECLARATION = re.compile(r"(struct|enum) (\w+)(?: : (\w+))? \{([^}]*)\}")
METHOD = re.compile(r"(\w+)\s*\(([^)]*)\)\s*(?:generates\s*\(([^)]*)\)\s*)?;")


def short(name):
    return SHORT.get(name) or re.sub(r"\w+", lambda word: SHORT.get(word[0], word[0]), name)


def types(declarations):
    names = [" ".join(d.split()).rsplit(" ", 1)[0] for d in declarations.split(",") if d.strip()]
    return ", ".join(short(name) for name in names)


def code(hal):
    """The text without its comments."""
    return re.sub(r"/\*.*?\*/|//[^\n]*", "", hal.read_text(), flags=re.S)


def declarations(hal):
    for kind, name, storage, body in DECLARATION.findall(code(hal)):
        parts = [" ".join(short(part).split()) for part in re.split("[,;]", body) if part.strip()]
        yield f"types {kind} {name}{' : ' + short(storage) if storage else ''} {{ {', '.join(parts)} }}"


def methods(hal):
    text = code(hal)
    body = text[text.index("{", text.index(f"interface {hal.stem}")) + 1:]
    for slot, (name, arguments, results) in enumerate(METHOD.findall(body), 1):
        line = f"{hal.stem} {slot} {name}({types(arguments)})"
        yield line + (f" -> ({types(results)})" if results else "")


def compiled_counts(interfaces, base):
    """Methods of each interface as the compiler counts them."""
    lines = subprocess.run(["hidl-gen", "-L", "function-count", "-r", f"android.hidl:{base}", "-r",
                            f"{PACKAGE}:{pathlib.Path(interfaces).parent}", f"{PACKAGE}@1.0"],
                           check=True, capture_output=True, text=True).stdout.splitlines()
    return {name.split("::")[1]: int(count) for name, count in (line.split() for line in lines)}


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    table = [line for line in pathlib.Path(sys.argv[1]).read_text().splitlines() if line and line[0] != "#"]
    expected = {}
    for line in table:
        expected.setdefault(line.split()[0], []).append(line)
    failed = not expected
    for interface, lines in expected.items():
        read = declarations if interface == "types" else methods
        found = list(read(pathlib.Path(sys.argv[2]) / f"{interface}.hal"))
        if found != lines:
            failed = True
            print("\n".join(difflib.unified_diff(lines, found, "contract", f"{interface}.hal", "", "", 0)))
    counts = {interface: len(lines) for interface, lines in expected.items() if interface != "types"}
    compiled = compiled_counts(sys.argv[2], sys.argv[3])
    if compiled != counts:
        failed = True
        print(f"methods in the table: {counts}, as compiled: {compiled}")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
