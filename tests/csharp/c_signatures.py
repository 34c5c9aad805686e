#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints the functions and callbacks of nivral.h with the C# types that fit them, and sizes of structures."""
import re
import sys

TYPES = {
    "void": "Void", "void*": "IntPtr", "void**": "IntPtr*", "HWND": "IntPtr", "float": "Single", "char*": "Byte*",
    "uint8_t*": "Byte*", "uint16_t": "UInt16", "uint16_t*": "UInt16*", "uint32_t": "UInt32", "int32_t": "Int32",
    "int32_t*": "Int32*", "int": "Int32", "int64_t": "Int64", "POINT": "Point", "RECT*": "Rect*",
    "WAVEFORMATEX*": "WaveFormat*", "uint32_t*": "Single*",  # words that carry the bits of floats
}
SIZES = {"Rect": 16, "Point": 8, "WaveFormat": 18}


def fitting(parameter, in_callback):
    kind, name = re.fullmatch(r"(?:const )?(\w+\**) (\w+)", parameter).groups()
    if name == "cells":  # 16 bytes that are a RECT
        return "Rect*"
    if in_callback and kind.endswith("*"):
        return "IntPtr"
    return TYPES.get(kind) or re.fullmatch(r"Nivral(\w+Callback)", kind).group(1)


def line(name, result, parameters, in_callback=False):
    parameters = [] if parameters == "void" else parameters.split(", ")
    return " ".join([name, TYPES[result]] + [fitting(p, in_callback) for p in parameters])


with open(sys.argv[1], encoding="utf-8") as file:
    header = " ".join(re.sub(r"/\*.*?\*/", "", file.read(), flags=re.S).split())
for result, name, parameters in re.findall(r"NIVRAL_API (\w+) NIVRAL_CALL (\w+)\((.*?)\);", header):
    print(line(name, result, parameters))
for result, name, parameters in re.findall(r"typedef (\w+)\(NIVRAL_CALL\* (\w+)\)\((.*?)\);", header):
    print(line(name, result, parameters, in_callback=True))
for name, size in SIZES.items():
    print(name, size)
