#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Fails when C# declarations do not fit nivral.h: c_signatures.py HEADER DECLARATIONS

The declarations are what signatures.cs prints: functions and callbacks with the types of result and
arguments, and sizes of structures. Where C has a pointer C# may have an IntPtr.
"""
import re
import sys

TYPES = {
    "void": "Void", "void*": "IntPtr", "void**": "IntPtr*", "HWND": "IntPtr", "float": "Single",
    "char*": "Byte*", "uint8_t*": "Byte*", "uint16_t": "UInt16", "uint16_t*": "UInt16*", "uint32_t": "UInt32",
    "int": "Int32", "int32_t": "Int32", "int32_t*": "Int32*", "int64_t": "Int64",
    "POINT": "NivralPoint", "RECT*": "NivralRect*",
    "WAVEFORMATEX*": "WaveFormat*", "uint32_t*": "Single*",  # words that carry the bits of floats
}
SIZES = {"NivralRect": 16, "NivralPoint": 8, "WaveFormat": 18}


def fitting(parameter, in_callback):
    kind, name = re.fullmatch(r"(?:const )?(\w+\**) (\w+)", parameter).groups()
    if name == "cells":  # 16 bytes that are a RECT
        return "NivralRect*"
    if in_callback and kind.endswith("*"):
        return "IntPtr"
    return TYPES.get(kind) or re.fullmatch(r"Nivral(\w+Callback)", kind).group(1)


def line(name, result, parameters, in_callback=False):
    parameters = [] if parameters == "void" else parameters.split(", ")
    return " ".join([name, TYPES[result]] + [fitting(p, in_callback) for p in parameters])


with open(sys.argv[1], encoding="utf-8") as file:
    header = " ".join(re.sub(r"/\*.*?\*/", "", file.read(), flags=re.S).split())
wanted = [line(name, result, parameters)
          for result, name, parameters in re.findall(r"NIVRAL_API (\w+) NIVRAL_CALL (\w+)\((.*?)\);", header)]
wanted += [line(name, result, parameters, in_callback=True) for result, name, parameters
           in re.findall(r"typedef (\w+)\(NIVRAL_CALL\* (\w+)\)\((.*?)\);", header)]
wanted += [f"{name} {size}" for name, size in SIZES.items()]

with open(sys.argv[2], encoding="utf-8") as file:
    found = file.read().splitlines()
failures = []
for declared in found:
    name = declared.split()[0]
    fits = [w.split() for w in wanted if w.split()[0] == name]
    if not any(len(w) == len(declared.split()) and
               all(d == c or (d == "IntPtr" and c.endswith("*")) for d, c in zip(declared.split(), w))
               for w in fits):
        c_has = " ".join(fits[0]) if fits else "nothing of that name"
        failures.append(f"C# has {declared}\nC has  {c_has}")
failures += [f"C# lacks {w}" for w in wanted if w.split()[0] not in {f.split()[0] for f in found}]
print("\n".join(failures) or f"csharp: {len(found)} declarations match the header")
sys.exit(1 if failures else 0)
