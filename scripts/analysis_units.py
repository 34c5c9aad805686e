#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""What clang-tidy is to look at: prints its files, and writes into OUT/commands how to compile each.

analysis_units.py BUILD OUT [FILE...]

Most of the time goes into the system's headers, so the Windows sources of a folder become one unit that
includes them all. Names without linkage must therefore differ within a folder. Given files are units of their
own.
"""
import json
import os
import re
import sys

build, out, chosen = sys.argv[1], sys.argv[2], [os.path.realpath(f) for f in sys.argv[3:]]
with open(os.path.join(build, "compile_commands.json")) as file:
    commands = [c for c in json.load(file) if "/src/" in c["file"] and c["file"].endswith(".cpp")]


def is_portable(command):
    return "nivral_core.dir" in command["command"]


def unit_of_folder(folder, members):
    path = os.path.join(os.path.realpath(out), folder.split("/src/")[-1].replace("/", "_") + ".cpp")
    with open(path, "w") as unit:
        for member in members:
            included = member["file"].split("/src/")[-1]
            unit.write(f'#include "{included}"  // NOLINT(bugprone-suspicious-include)\n')
    first = members[0]
    return {"file": path, "command": first["command"].replace(first["file"], path)}


def compile_to(command, number):
    """The command with its object file in OUT, where commands of any folder can be run."""
    return re.sub(r" -o \S+", f" -o {out}/{number}.o", command)


units, folders = [], {}
for command in commands:
    if chosen:
        units += [command] if command["file"] in chosen else []
    elif is_portable(command):
        units.append(command)
    else:
        folders.setdefault(os.path.dirname(command["file"]), []).append(command)
units = [unit_of_folder(*item) for item in folders.items()] + units
with open(os.path.join(out, "commands"), "w") as file:
    file.writelines(compile_to(unit["command"], number) + "\n" for number, unit in enumerate(units))
print("\n".join(u["file"] for u in units))
