#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Fails when the declarations of Native.cs do not fit those of nivral.h: csharp_declarations.py HEADER NATIVE.CS"""
import re
import sys

WORDS = {"void": "void", "HWND": "IntPtr", "float": "float", "char": "string", "uint8_t": "byte", "int": "int",
         "uint16_t": "ushort", "uint32_t": "uint", "int32_t": "int", "int64_t": "long",
         "POINT": "NivralPoint", "RECT": "NivralRect", "WAVEFORMATEX": "WaveFormat"}


def declarations(path, form):
    """Each name's lists of its result and its parameters."""
    with open(path, encoding="utf-8") as file:
        text = " ".join(re.sub(r"/\*.*?\*/|//[^\n]*", "", file.read(), flags=re.S).split())
    found = {}
    for result, name, parameters in re.findall(form, text):
        words = [] if parameters in ("", "void") else parameters.split(", ")
        found.setdefault(name.removeprefix("Nivral"), []).append([result + " result"] + words)
    return found


def fits(c, csharp):
    c_type, name = c.removeprefix("const ").rsplit(" ", 1)
    found = csharp.rsplit(" ", 1)[0]
    base = c_type.rstrip("*")
    word = WORDS.get(base, base.removeprefix("Nivral"))
    if c_type == base or word == "string":
        return found == word
    if name == "cells":  # 16 bytes that are a RECT
        return found == "ref NivralRect"
    words_of_floats = ["float[]"] if base == "uint32_t" else []
    return found in ["IntPtr", f"ref {word}", f"out {word}", f"{word}[]"] + words_of_floats or \
        (c_type, found) == ("void**", "out IntPtr")


wanted = declarations(sys.argv[1], r"(\w+)(?: NIVRAL_CALL |\(NIVRAL_CALL\* )(\w+)\)?\((.*?)\);")
native = declarations(sys.argv[2], r"(?:extern|delegate) (\w+) (\w+)\((.*?)\);")
failures = [f"only one side has {name}" for name in wanted.keys() ^ native.keys()]
for name in wanted.keys() & native.keys():
    c = wanted[name][0]
    failures += [f"{name}: {overload} for {c}" for overload in native[name]
                 if len(overload) != len(c) or not all(map(fits, c, overload))]
print("\n".join(failures) or f"csharp: {len(native)} declarations match the header")
sys.exit(1 if failures else 0)
