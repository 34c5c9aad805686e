#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Fails when the declarations of nivral.js are not those of nivral.h: node_prototypes.py HEADER NIVRAL.JS"""
import re
import sys


def prototypes(path, comments):
    """The text with everything that may differ taken out."""
    with open(path, encoding="utf-8") as file:
        text = re.sub(comments, "", file.read(), flags=re.S)
    text = re.sub(r"typedef (\w+)\(NIVRAL_CALL\* (\w+)\)", r"\1 \2", text)
    text = re.sub(r"NIVRAL_API |NIVRAL_CALL |_Out_\s*", "", text)
    text = re.sub(r"(Nivral\w+Callback)\* ", r"\1 ", text)
    return {" ".join(found.split()) for found in re.findall(r"\w+\s+(?:NIVRAL_|Nivral)\w+\([^()]*\);", text)}


differing = prototypes(sys.argv[1], r"/\*.*?\*/") ^ prototypes(sys.argv[2], r"//[^\n]*")
print("\n".join(sorted(differing)) or "node: the declarations are the header's")
sys.exit(1 if differing else 0)
