#!/bin/bash
# The package as a client meets it: unpacked into an empty folder, programs built against it by CMake and by
# plain compiler lines, in C and C++, and run. After scripts/package.sh, in a bed.
. "$(dirname "$0")/common.sh"
OUT=$ROOT/build/package
HERE="$OUT/a client"
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

# build_project <source> <name> <target>... [-- CMake option...]
build_project() {
  local source=$1 name=$2 targets=(); shift 2
  while [ $# -gt 0 ] && [ "$1" != -- ]; do targets+=("$1"); shift; done
  cmake -G Ninja -S "$source" -B "$HERE/$name" -DCMAKE_TOOLCHAIN_FILE="$ROOT/cmake/mingw-w64.cmake" "${@:2}"
  cmake --build "$HERE/$name" -j "$JOBS" --target "${targets[@]}"
}

# run <exe> [argument...]
run() {
  say "package: running ${1#"$HERE"/}"
  timeout 120 "$WINE" "$@" || die "$1 ended with code $?"
}

unpack
cd "$HERE"
say "package: plain compiler lines"
( cd "$KIT"
  "$CC" examples/minimal.c -Iinclude lib/nivral.lib -o bin/minimal.exe
  "$CXX" -std=c++17 examples/minimal.cpp -Iinclude -Llib -lnivral -static -o bin/minimal_cpp.exe )
build_project "$ROOT/tests/consumer" consumer all -- -Dnivral_DIR="$KIT/lib/cmake/nivral"
build_project "$KIT/examples" examples nivral_minimal nivral_player

run "$KIT/bin/minimal.exe" & first=$!
run "$KIT/bin/minimal_cpp.exe" & second=$!
run "$HERE/examples/bin/nivral_minimal.exe"
wait $first
wait $second
run "$HERE/consumer/wrapper_test.exe"
run "$HERE/examples/bin/nivral_player.exe" --seconds 1 --no-sound --screenshot player.png
[ -s player.png ] || die "the player left no screenshot"
run "$KIT/bin/nivral_player.exe" --help
