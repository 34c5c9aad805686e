#!/bin/bash
# Compiles the C# example, as .NET Framework and as newer .NET see it, and holds its declarations against
# the header: names, types of results and arguments.
. "$(dirname "$0")/common.sh"
cd "$ROOT"
OUT=build/csharp
mkdir -p "$OUT"
compile() { mcs -warnaserror -platform:x64 "$@"; }

compile -target:winexe -langversion:5 -r:System.Windows.Forms -r:System.Drawing -out:"$OUT/minimal.exe" \
  examples/csharp/*.cs
compile -target:library -define:NETCOREAPP -out:"$OUT/wpf.dll" tests/bindings/wpf_stand_in.cs \
  examples/csharp/{Native,Handles,Picture,wpf/PaneHost}.cs
awk '/^```/ { on = /csharp/; next } on' examples/csharp/README.md > "$OUT/readme.cs"
compile -target:library -out:"$OUT/readme.dll" "$OUT/readme.cs" examples/csharp/{Native,Handles,Picture}.cs
python3 -c 'import sys, xml.etree.ElementTree as tree; tree.parse(sys.argv[1])' examples/csharp/Minimal.csproj
python3 tests/bindings/csharp_declarations.py include/nivral/nivral.h examples/csharp/Native.cs
