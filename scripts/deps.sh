#!/bin/bash
# Cross-builds SDL2, SDL2_ttf (with FreeType), GoogleTest and Google Benchmark for Windows from Debian's source
# packages into $NIVRAL_DEPS/prefix. Does nothing when that is up to date. Leaves the apt configuration untouched.
. "$(dirname "$0")/common.sh"
OUT=$NIVRAL_DEPS
TOOLCHAIN=$ROOT/cmake/mingw-w64.cmake
mkdir -p "$OUT"
exec 9>"$OUT/.lock"; flock 9
STAMP=$OUT/.done-$(cat "$0" "$TOOLCHAIN" | sha1sum | cut -c1-12)
if [ -f "$STAMP" ]; then say "deps: up to date ($OUT)"; exit 0; fi

say "deps: cross-building SDL2, FreeType, SDL2_ttf, GoogleTest, Benchmark into $OUT (2 to 5 minutes)"
rm -rf "$OUT"/{prefix,src,obj,apt} "$OUT"/.done-*
mkdir -p "$OUT"/{src,obj,apt/parts,apt/lists/partial}
if [ -f /etc/apt/sources.list.d/debian.sources ]; then
  sed 's/^Types:.*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources > "$OUT/apt/parts/src.sources"
else
  grep -hE '^deb .*debian' /etc/apt/sources.list | sed 's/^deb /deb-src /' > "$OUT/apt/parts/src.list"
fi
APT=(apt-get -q -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$OUT/apt/parts" -o APT::Sandbox::User=root
     -o Dir::State::Lists="$OUT/apt/lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=)
cd "$OUT/src"
{ "${APT[@]}" update && "${APT[@]}" --only-source source libsdl2 libsdl2-ttf freetype benchmark; } > "$OUT/obj/fetch.log" 2>&1 ||
  { tail -30 "$OUT/obj/fetch.log"; die "could not fetch the source packages"; }

build() {
  local name=$1 source=$2; shift 2
  { cmake -G Ninja -S "$source" -B "$OUT/obj/$name" -DCMAKE_TOOLCHAIN_FILE="$TOOLCHAIN" -DCMAKE_BUILD_TYPE=Release \
      -DCMAKE_INSTALL_PREFIX="$OUT/prefix" "$@" &&
    cmake --build "$OUT/obj/$name" -j "$JOBS" && cmake --install "$OUT/obj/$name"; } > "$OUT/obj/$name.log" 2>&1 ||
    { tail -30 "$OUT/obj/$name.log"; die "building $name failed"; }
  say "deps: $name done"
}
build sdl2 libsdl2-2*/ -DSDL_STATIC=OFF -DSDL_TEST=OFF
build freetype freetype-2*/ -DFT_DISABLE_ZLIB=ON -DFT_DISABLE_BZIP2=ON -DFT_DISABLE_PNG=ON -DFT_DISABLE_HARFBUZZ=ON -DFT_DISABLE_BROTLI=ON
build ttf libsdl2-ttf-2*/ -DSDL2TTF_SAMPLES=OFF -DSDL2TTF_HARFBUZZ=OFF -DSDL2TTF_VENDORED=OFF -DBUILD_SHARED_LIBS=ON
build gtest /usr/src/googletest
# Debian's benchmark does not configure without GIT_VERSION.
build benchmark benchmark-1*/ -DGIT_VERSION=0.0.0 -DBENCHMARK_ENABLE_TESTING=OFF -DBENCHMARK_INSTALL_DOCS=OFF \
  -DHAVE_STD_REGEX=1 -DHAVE_STEADY_CLOCK=1
mkdir -p "$OUT/prefix/share/licenses"
cp libsdl2-2*/LICENSE.txt "$OUT/prefix/share/licenses/SDL2.txt"
cp libsdl2-ttf-2*/LICENSE.txt "$OUT/prefix/share/licenses/SDL2_ttf.txt"
cp freetype-2*/docs/FTL.TXT "$OUT/prefix/share/licenses/FreeType.txt"
rm -rf "$OUT"/{src,obj,apt}
touch "$STAMP"
