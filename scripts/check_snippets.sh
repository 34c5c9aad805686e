#!/bin/bash
# The code blocks of the documents for clients compile as they are printed: C as C99, C++ as C++17, each block
# by itself.
#   check_snippets.sh [folder with nivral/nivral.h]
. "$(dirname "$0")/common.sh"
cd "$ROOT"
INCLUDE=$(realpath "${1:-include}")
BLOCKS=$ROOT/build/snippets
COMPILE=(-fsyntax-only -Wall -Wextra -Wpedantic -Werror -I "$INCLUDE")
rm -rf "$BLOCKS"; mkdir -p "$BLOCKS"
# A block is named after the line that it begins at, which compilers then report by #line.
awk -v out="$BLOCKS" '
  /^```(c|cpp)$/ { n = split(FILENAME, part, "/"); file = out "/" part[n] "." FNR "." substr($0, 4)
                   printf "#line %d \"%s\"\n", FNR + 1, FILENAME > file; next }
  /^```/ { if (file) close(file); file = ""; next }
  file { print > file }' README.md docs/guide.md docs/audio.md docs/overlays.md
shopt -s nullglob
count=0
for block in "$BLOCKS"/*.c; do
  x86_64-w64-mingw32-gcc-posix -std=c99 "${COMPILE[@]}" "$block"; count=$((count + 1))
done
for block in "$BLOCKS"/*.cpp; do
  x86_64-w64-mingw32-g++-posix -std=c++17 "${COMPILE[@]}" "$block"; count=$((count + 1))
done
[ $count -gt 0 ] || die "the documents have no code blocks"
say "snippets: $count blocks compile as printed"
