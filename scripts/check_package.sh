#!/bin/bash
# The package as a client meets it: unpacked into an empty folder, its documents read, programs built
# against it in C, C++ and C# by CMake and by plain compiler lines, and run, with the one in JavaScript.
# After scripts/package.sh, in a bed.
. "$(dirname "$0")/common.sh"
OUT=$ROOT/build/package
HERE="$OUT/a client"
CC=x86_64-w64-mingw32-gcc-posix
CXX=x86_64-w64-mingw32-g++-posix
if command -v ccache > /dev/null; then
  export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_BASEDIR=$ROOT
fi
# Without Wine's thread for Direct3D: Wine 8 crashes now and then when a program ends while that thread is
# still ending, as these do right after their last device went.
export WINE_D3D_CONFIG=csmt=0
PROMISED=(-Wall -Wextra -Wpedantic -Wshadow -Werror -fno-exceptions -fno-rtti)

unpack() {
  rm -rf "$HERE"; mkdir -p "$HERE"
  ( cd "$OUT" && sha256sum --quiet -c SHA256SUMS )
  ( cd "$HERE" && for archive in "$OUT"/*.zip; do cmake -E tar xf "$archive"; done )
  KIT=$(echo "$HERE"/libnivral-*-win64)
  local strays
  strays=$(grep -rlaF -e "$ROOT" -e "$NIVRAL_CACHE" "$HERE" || true)
  [ -z "$strays" ] || die "a path of this machine in $strays"
}

# Links, and paths in the places where the tree has files, lead to what the package holds.
check_documents() {
  local document path failed=0
  while read -r document; do
    while read -r path; do
      [ -e "$(dirname "$document")/$path" ] || { echo "${document##*/} links to $path" >&2; failed=1; }
    done < <(grep -oP '\]\(\K[^)# ]+(?=[)#])|src="\K[^"]+' "$document" | grep -v '^http')
    while read -r path; do
      [ -e "$KIT/$path" ] || { echo "${document##*/} names $path" >&2; failed=1; }
    done < <(grep -oP '`\K(cmake|docs|examples|include|scripts|src|tests|bench)/[\w./-]*' "$document")
  done < <(find "$KIT" -name '*.md')
  [ $failed = 0 ] || die "the documents lead to files that are not in the package"
}

# configure_and_build <source> <name> [option of cmake...]
configure_and_build() {
  local source=$1 name=$2; shift 2
  cmake -G Ninja -S "$source" -B "$HERE/$name" "$@" &&
    cmake --build "$HERE/$name" -j "$JOBS" --target "${TARGETS[@]-all}"
}
with_toolchain_file=(-DCMAKE_TOOLCHAIN_FILE="$ROOT/cmake/mingw-w64.cmake")
without_toolchain_file=(-DCMAKE_SYSTEM_NAME=Windows "-DCMAKE_C_COMPILER=$CC")

# A project with the lines that the README prints for one, with the package's folder filled in.
snippet_project() {
  mkdir -p "$HERE/project"
  cp "$KIT/examples/minimal.c" "$HERE/project"
  { printf 'cmake_minimum_required(VERSION 3.24)\nproject(client LANGUAGES C)\n'
    printf 'add_executable(client minimal.c)\n'
    sed -n '/^ *find_package(nivral/,/^ *nivral_copy_dlls/p' "$KIT/README.md" | sed "s|<this folder>|$KIT|"
  } > "$HERE/project/CMakeLists.txt"
  [ "$(wc -l < "$HERE/project/CMakeLists.txt")" = 6 ] || die "the README's lines for CMake were not found"
}

# As vcpkg runs the port, and where it looks for the package afterwards.
install_port() {
  printf 'cmake_minimum_required(VERSION 3.24)\ninclude("%s")\n' "$KIT/vcpkg/nivral/portfile.cmake" \
    > "$HERE/port.cmake"
  cmake "-DCURRENT_PACKAGES_DIR=$HERE/vcpkg" -DFEATURES=bundled-sdl -P "$HERE/port.cmake"
  python3 -m json.tool "$KIT/vcpkg/nivral/vcpkg.json" > /dev/null
}

compile_by_hand() {
  ( cd "$KIT"
    "$CC" examples/minimal.c -Iinclude lib/nivral.lib -o bin/minimal.exe
    "$CXX" -std=c++17 "${PROMISED[@]}" examples/minimal.cpp -Iinclude -Llib -lnivral -static \
      -o bin/minimal_cpp.exe )
  ( cd "$HERE"
    # No space may be in what pkg-config prints, so that a shell can split it.
    ln -s "$KIT" kit
    # shellcheck disable=SC2046
    "$CC" kit/examples/minimal.c $(PKG_CONFIG_PATH=kit/lib/pkgconfig pkg-config --cflags --libs nivral) \
      -o kit/bin/minimal_pc.exe )
  mcs -warnaserror -platform:x64 -target:winexe -r:System.Windows.Forms -r:System.Drawing \
    -out:"$KIT/bin/minimal_cs.exe" "$KIT"/examples/csharp/*.cs
}

# run <exe> [argument...]
run() {
  say "package: running ${1#"$HERE"/}"
  quietly "$1.log" "$1" timeout 120 "$WINE" "$@" < /dev/null
}

# A client's project finds the package by its path, with a toolchain file and without, and by a prefix.
build_clients() {
  configure_and_build "$HERE/project" strict "${with_toolchain_file[@]}" &&
    configure_and_build "$HERE/project" loose "${without_toolchain_file[@]}" &&
    sed -i 's/ PATHS.*)/)/' "$HERE/project/CMakeLists.txt" &&
    configure_and_build "$HERE/project" from_port "${without_toolchain_file[@]}" \
      -DCMAKE_PREFIX_PATH="$HERE/vcpkg"
}

unpack
check_documents
say "package: the documents' code, plain compiler lines and CMake"
"$ROOT/scripts/check_snippets.sh" "$KIT/include" & snippets=$!
snippet_project
install_port
quietly "$HERE/clients.log" "building clients by CMake" build_clients & clients=$!
compile_by_hand
TARGETS=(nivral_minimal nivral_player)
configure_and_build "$KIT/examples" examples "${with_toolchain_file[@]}"
wait $snippets
wait $clients

cd "$HERE"
run "$KIT/bin/minimal.exe" & first=$!
run "$KIT/bin/minimal_cpp.exe" & second=$!
run "$HERE/from_port/client.exe"
wait $first
wait $second
run "$HERE/examples/bin/nivral_player.exe" --seconds 1 --no-sound --screenshot player.png
[ -s player.png ] || die "the player left no screenshot"
run "$KIT/bin/nivral_player.exe" --help
"$ROOT/scripts/check_node.sh" "$KIT"
