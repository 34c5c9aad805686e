#!/bin/bash
# Portable code stays portable: check_core_headers.sh <compiler> <include folder>... -- <source>...
# No source of nivral_core, nor any of our headers it reaches, names Windows, its interfaces or SDL.
set -euo pipefail
compiler=$1; shift
flags=()
while [ "$1" != -- ]; do flags+=(-I "$1"); shift; done
shift
[ $# -gt 0 ] || { echo "no sources given" >&2; exit 1; }
mapfile -t files < <(for source in "$@"; do
  "$compiler" -std=c++20 -MM "${flags[@]}" "$source"
done | tr -s '\134 ' '\n' | grep -E '\.(cpp|h)$' | sort -u)
[ ${#files[@]} -ge $# ] || { echo "the compiler names too few files" >&2; exit 1; }
WINDOWS='windows|winnt|windef|winuser|wingdi|d3d|ddraw|dsound|mmsystem|SDL'
if grep -nHEi "#\s*include\s*<($WINDOWS)|\b_WIN(32|64)\b" "${files[@]}"; then
  echo "portable code names Windows in the lines above" >&2; exit 1
fi
echo "${#files[@]} files are free of Windows"
