#!/bin/bash
# The package as a client meets it: unpacked into an empty folder, programs built against it by CMake and by
# plain compiler lines, in C and C++, and run. After scripts/package.sh, in a bed.
. "$(dirname "$0")/common.sh"
OUT=$ROOT/build/package
HERE="$OUT/a client"
WINE=/usr/lib/wine/wine64
CC=x86_64-w64-mingw32-gcc-posix
CXX=x86_64-w64-mingw32-g++-posix

unpack() {
  rm -rf "$HERE"; mkdir -p "$HERE"
  ( cd "$HERE" && cmake -E tar xf "$OUT"/libnivral-*-win64.zip )
  KIT=$(echo "$HERE"/libnivral-*)
  local strays
  strays=$(grep -rIlF -e "$ROOT" -e "$NIVRAL_CACHE" "$KIT" || true)
  [ -z "$strays" ] || die "a path of this machine in $strays"
}

# build_project <source> <name> [CMake option...]
build_project() {
  local source=$1 name=$2; shift 2
  cmake -G Ninja -S "$source" -B "$HERE/$name" -DCMAKE_TOOLCHAIN_FILE="$ROOT/cmake/mingw-w64.cmake" \
    -DCMAKE_BUILD_TYPE=Release "$@"
  cmake --build "$HERE/$name" -j "$JOBS"
}

# run <exe> [argument...]
run() {
  say "package: running ${1#"$HERE"/}"
  timeout 120 "$WINE" "$@" || die "$1 ended with code $?"
}

unpack
say "package: plain compiler lines"
( cd "$KIT"
  "$CC" examples/minimal.c -Iinclude lib/nivral.lib -o bin/minimal.exe
  "$CXX" -std=c++17 "$ROOT/tests/consumer/wrapper_test.cpp" -Iinclude -Llib -lnivral -lgdi32 -static \
    -o bin/wrapper_test.exe )
build_project "$ROOT/tests/consumer" consumer -Dnivral_DIR="$KIT/lib/cmake/nivral"
build_project "$KIT/examples" examples

run "$KIT/bin/minimal.exe" & plain=$!
run "$HERE/examples/bin/nivral_minimal.exe"
wait $plain
run "$KIT/bin/wrapper_test.exe"
run "$HERE/consumer/wrapper_test.exe"
run "$KIT/bin/nivral_player.exe" --help
