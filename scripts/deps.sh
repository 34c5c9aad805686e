#!/bin/bash
# Cross-builds for Windows, from Debian's source packages: into $NIVRAL_DEPS/prefix what the library needs,
# which is SDL2 and SDL2_ttf (with FreeType), and CLI11 for the player; into $NIVRAL_DEPS/player what the
# player opens recordings with, which is FFmpeg's libraries. Each is made again only when its own recipe
# changes, and both at once, since their configure scripts use one core. Leaves the apt configuration
# untouched.
#   deps.sh [folder]...     prefix and player by default
. "$(dirname "$0")/common.sh"
OUT=$NIVRAL_DEPS
TOOLCHAIN=$ROOT/cmake/mingw-w64.cmake
mkdir -p "$OUT"
exec 9>"$OUT/.lock"; flock 9
export CCACHE_DISABLE=1  # what is compiled once would only be read twice

WORK=$OUT/work
APT=(apt-get -q -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$WORK/apt/parts"
  -o APT::Sandbox::User=root -o Dir::State::Lists="$WORK/apt/lists"
  -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=)

list_sources() {
  mkdir -p "$WORK/apt"/{parts,lists/partial}
  if [ -f /etc/apt/sources.list.d/debian.sources ]; then
    sed 's/^Types:.*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources > "$WORK/apt/parts/src.sources"
  else
    grep -hE '^deb .*debian' /etc/apt/sources.list | sed 's/^deb /deb-src /' > "$WORK/apt/parts/src.list"
  fi
  quietly "$WORK/update.log" "fetching the list of sources" "${APT[@]}" update
}

# Sources of Debian packages, in the current folder.
fetch() { quietly "$PWD/fetch.log" "fetching the sources of $*" "${APT[@]}" --only-source source "$@"; }

# Binaries hold no path of this machine and no time, so that each build gives the same bytes.
build() {
  local name=$1 source=$2 no_path="-ffile-prefix-map=$OUT=."; shift 2
  quietly "$PWD/$name-configure.log" "configuring $name" cmake -G Ninja -S "$source" -B "obj-$name" \
    -DCMAKE_TOOLCHAIN_FILE="$TOOLCHAIN" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$OUT/prefix" \
    -DCMAKE_C_FLAGS="$no_path" -DCMAKE_CXX_FLAGS="$no_path" \
    -DCMAKE_SHARED_LINKER_FLAGS=-Wl,--no-insert-timestamp "$@"
  quietly "$PWD/$name.log" "building $name" cmake --build "obj-$name" -j "$JOBS"
  quietly "$PWD/$name-install.log" "installing $name" cmake --install "obj-$name" --strip
  say "deps: $name done"
}

# Video and events are all that is used of SDL2: the rest would take longest of everything here.
build_sdl2() {
  build sdl2 libsdl2-2*/ -DSDL_STATIC=OFF -DSDL_TEST=OFF -DSDL2_DISABLE_SDL2MAIN=ON -DSDL_AUDIO=OFF \
    -DSDL_JOYSTICK=OFF -DSDL_HAPTIC=OFF -DSDL_SENSOR=OFF -DSDL_HIDAPI=OFF -DSDL_POWER=OFF -DSDL_VULKAN=OFF \
    -DSDL_OPENGLES=OFF
}

build_ttf() {
  build freetype freetype-2*/ -DFT_DISABLE_ZLIB=ON -DFT_DISABLE_BZIP2=ON -DFT_DISABLE_PNG=ON \
    -DFT_DISABLE_HARFBUZZ=ON -DFT_DISABLE_BROTLI=ON
  build ttf libsdl2-ttf-2*/ -DSDL2TTF_SAMPLES=OFF -DSDL2TTF_HARFBUZZ=OFF -DSDL2TTF_VENDORED=OFF \
    -DBUILD_SHARED_LIBS=ON
}

copy_licences() {
  mkdir -p "$OUT/prefix/share/licenses"
  cp libsdl2-2*/LICENSE.txt "$OUT/prefix/share/licenses/SDL2.txt"
  cp libsdl2-ttf-2*/LICENSE.txt "$OUT/prefix/share/licenses/SDL2_ttf.txt"
  cp freetype-2*/docs/FTL.TXT "$OUT/prefix/share/licenses/FreeType.txt"
  cp /usr/share/doc/libcli11-dev/copyright "$OUT/prefix/share/licenses/CLI11.txt"
}

build_prefix() {
  say "deps: cross-building SDL2, FreeType, SDL2_ttf into $OUT/prefix"
  fetch libsdl2 libsdl2-ttf freetype
  build_sdl2
  build_ttf
  cp -r /usr/include/CLI "$OUT/prefix/include/"
  copy_licences
}

# Reading and decoding of what recorders write. Shared and without GPL parts: so its licence is the LGPL.
# What decoding spends its time in is assembler; the largest files of the rest take two to three times as long
# to compile with -O3.
set_ffmpeg_options() {
  # shellcheck disable=SC2054 # the commas are FFmpeg's
  FFMPEG_OPTIONS=(--optflags=-O2 --enable-shared --disable-static --disable-everything --disable-autodetect
    --enable-w32threads --disable-programs --disable-doc --disable-avdevice --disable-avfilter
    --disable-postproc --disable-network --disable-debug --enable-protocol=file
    --enable-demuxer=mov,matroska,avi,mpegts,mpegps,flv,yuv4mpegpipe,wav
    --enable-demuxer=h264,hevc,m4v,mpegvideo,mjpeg,aac,mp3,amr
    --enable-decoder=h264,hevc,mpeg4,h263,flv,mpeg2video,mpeg1video,mjpeg,rawvideo
    --enable-decoder=aac,aac_latm,mp3,mp2,amrnb,pcm_alaw,pcm_mulaw,adpcm_g726,adpcm_g726le
    --enable-decoder=adpcm_ms,adpcm_ima_wav,adpcm_ima_qt,adpcm_swf
    --enable-decoder=pcm_s16le,pcm_s16be,pcm_u8,pcm_s24le,pcm_s32le,pcm_f32le,pcm_dvd
    --enable-parser=h264,hevc,mpeg4video,h263,mpegvideo,mjpeg,aac,aac_latm,mpegaudio,amr)
}

# What the package says of these libraries: ffmpeg_licence <package and version>, in their source's folder.
ffmpeg_licence() {
  cat <<EOT
The player's avcodec, avformat, avutil, swresample and swscale are FFmpeg's, under the GNU Lesser General
Public License, version 2.1 or later, whose text follows. They are Debian's source package
$1, unchanged, which https://sources.debian.org/src/ffmpeg/ and
https://snapshot.debian.org/ keep, built as shared libraries by

    ./configure --target-os=mingw32 --arch=x86_64
$(printf '      %s\n' "${FFMPEG_OPTIONS[@]}")

and may be replaced by other builds of the same versions.

EOT
  cat COPYING.LGPLv2.1
}

build_player() {
  say "deps: cross-building FFmpeg's libraries into $OUT/player"
  set_ffmpeg_options
  fetch ffmpeg
  cd ffmpeg-*/
  quietly "$WORK/player/configure.log" "configuring FFmpeg" \
    ./configure --prefix=/ --target-os=mingw32 --arch=x86_64 \
    --cross-prefix=x86_64-w64-mingw32- --cc=x86_64-w64-mingw32-gcc-posix \
    --extra-ldflags="-static-libgcc -Wl,--no-insert-timestamp" \
    --extra-libs="-Wl,-Bstatic -lwinpthread -Wl,-Bdynamic" "${FFMPEG_OPTIONS[@]}"
  quietly "$WORK/player/build.log" "building FFmpeg" make -j "$JOBS"
  quietly "$WORK/player/install.log" "installing FFmpeg" make install DESTDIR="$OUT/player"
  mkdir -p "$OUT/player/share/licenses"
  ffmpeg_licence "$(dpkg-parsechangelog -S Source) $(dpkg-parsechangelog -S Version)" \
    > "$OUT/player/share/licenses/FFmpeg.txt"
}

# The file that a folder holds once it is made by its present recipe, which is its functions and the
# toolchain.
mark_of() {
  local recipe=(fetch "build_$1")
  case $1 in
    prefix) recipe+=(build build_sdl2 build_ttf copy_licences) ;;
    player) recipe+=(set_ffmpeg_options ffmpeg_licence) ;;
  esac
  echo "$OUT/$1/.done-$({ declare -f "${recipe[@]}"; cat "$TOOLCHAIN"; } | sha1sum | cut -c1-12)"
}

make_folder() {
  rm -rf "${OUT:?}/$1"
  mkdir -p "$WORK/$1"; cd "$WORK/$1"
  "build_$1"
  touch "$(mark_of "$1")"
  say "deps: $1 done"
}

[ $# -gt 0 ] || set -- prefix player
missing=()
for folder; do
  if [ -f "$(mark_of "$folder")" ]; then say "deps: up to date ($OUT/$folder)"; else missing+=("$folder"); fi
done
[ ${#missing[@]} -gt 0 ] || exit 0

rm -rf "$WORK"
list_sources
set -m  # so that each has a process group that ends with this script
pids=()
trap 'for pid in "${pids[@]}"; do kill -- "-$pid" 2> /dev/null || true; done' EXIT
for folder in "${missing[@]}"; do make_folder "$folder" & pids+=($!); done
for pid in "${pids[@]}"; do wait "$pid"; done
rm -rf "$WORK"
