#!/bin/bash
# Compiles the C# example and holds its declarations against the header: names, types of results and
# arguments, sizes.
. "$(dirname "$0")/common.sh"
cd "$ROOT"
OUT=build/csharp
mkdir -p "$OUT"
compile() { mcs -warnaserror -platform:x64 "$@"; }

compile -target:winexe -r:System.Windows.Forms -r:System.Drawing -out:"$OUT/minimal.exe" examples/csharp/*.cs
compile -out:"$OUT/signatures.exe" tests/csharp/signatures.cs examples/csharp/Native.cs
python3 tests/csharp/c_signatures.py include/nivral/nivral.h | sort > "$OUT/wanted"
mono "$OUT/signatures.exe" | sort > "$OUT/found"
diff "$OUT/wanted" "$OUT/found" || die "the C# declarations differ from the header (< header, > C#)"
say "csharp: $(wc -l < "$OUT/wanted") declarations match the header"
