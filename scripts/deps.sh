#!/bin/bash
# Cross-builds SDL2, SDL2_ttf (with FreeType) and GoogleTest for Windows from Debian's source packages into
# $NIVRAL_DEPS/prefix. Does nothing when that is up to date. Leaves the apt configuration untouched.
. "$(dirname "$0")/common.sh"
OUT=$NIVRAL_DEPS
TOOLCHAIN=$ROOT/cmake/mingw-w64.cmake
mkdir -p "$OUT"
exec 9>"$OUT/.lock"; flock 9
STAMP=$OUT/.done-$(cat "$0" "$TOOLCHAIN" | sha1sum | cut -c1-12)

# Sources of Debian packages, in the current folder.
fetch() {
  mkdir -p "$OUT"/{obj,apt/parts,apt/lists/partial}
  if [ -f /etc/apt/sources.list.d/debian.sources ]; then
    sed 's/^Types:.*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources > "$OUT/apt/parts/src.sources"
  else
    grep -hE '^deb .*debian' /etc/apt/sources.list | sed 's/^deb /deb-src /' > "$OUT/apt/parts/src.list"
  fi
  local apt=(apt-get -q -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$OUT/apt/parts" -o APT::Sandbox::User=root
             -o Dir::State::Lists="$OUT/apt/lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=)
  { "${apt[@]}" update && "${apt[@]}" --only-source source "$@"; } > "$OUT/obj/fetch.log" 2>&1 ||
    { tail -30 "$OUT/obj/fetch.log"; die "could not fetch the sources of $*"; }
}

build() {
  local name=$1 source=$2; shift 2
  { cmake -G Ninja -S "$source" -B "$OUT/obj/$name" -DCMAKE_TOOLCHAIN_FILE="$TOOLCHAIN" -DCMAKE_BUILD_TYPE=Release \
      -DCMAKE_INSTALL_PREFIX="$OUT/prefix" "$@" &&
    cmake --build "$OUT/obj/$name" -j "$JOBS" && cmake --install "$OUT/obj/$name"; } > "$OUT/obj/$name.log" 2>&1 ||
    { tail -30 "$OUT/obj/$name.log"; die "building $name failed"; }
  say "deps: $name done"
}

# Video and events are all that is used of SDL2: the rest would take longest of everything here.
build_sdl2() {
  build sdl2 libsdl2-2*/ -DSDL_STATIC=OFF -DSDL_TEST=OFF -DSDL2_DISABLE_SDL2MAIN=ON -DSDL_AUDIO=OFF -DSDL_JOYSTICK=OFF \
    -DSDL_HAPTIC=OFF -DSDL_SENSOR=OFF -DSDL_HIDAPI=OFF -DSDL_POWER=OFF -DSDL_VULKAN=OFF -DSDL_OPENGLES=OFF
}

build_ttf() {
  build freetype freetype-2*/ -DFT_DISABLE_ZLIB=ON -DFT_DISABLE_BZIP2=ON -DFT_DISABLE_PNG=ON -DFT_DISABLE_HARFBUZZ=ON \
    -DFT_DISABLE_BROTLI=ON
  build ttf libsdl2-ttf-2*/ -DSDL2TTF_SAMPLES=OFF -DSDL2TTF_HARFBUZZ=OFF -DSDL2TTF_VENDORED=OFF -DBUILD_SHARED_LIBS=ON
}

copy_licences() {
  mkdir -p "$OUT/prefix/share/licenses"
  cp libsdl2-2*/LICENSE.txt "$OUT/prefix/share/licenses/SDL2.txt"
  cp libsdl2-ttf-2*/LICENSE.txt "$OUT/prefix/share/licenses/SDL2_ttf.txt"
  cp freetype-2*/docs/FTL.TXT "$OUT/prefix/share/licenses/FreeType.txt"
}

build_all() {
  say "deps: cross-building SDL2, FreeType, SDL2_ttf, GoogleTest into $OUT (2 to 4 minutes)"
  rm -rf "$OUT"/{prefix,src,obj,apt} "$OUT"/.done-*
  mkdir -p "$OUT/src"; cd "$OUT/src"
  fetch libsdl2 libsdl2-ttf freetype
  build_sdl2
  build_ttf
  build gtest /usr/src/googletest
  copy_licences
  rm -rf "$OUT"/{src,obj,apt}
  touch "$STAMP"
}

if [ -f "$STAMP" ]; then say "deps: up to date ($OUT)"; else build_all; fi
