#!/bin/bash
# Cross-builds for Windows, from Debian's source packages: into $NIVRAL_DEPS/prefix what the library and its
# tests need, which is SDL2, SDL2_ttf (with FreeType) and GoogleTest; into $NIVRAL_DEPS/player what the player
# needs, which is FFmpeg's libraries and CLI11. Each is made again only when its own recipe changes. Leaves
# the apt configuration untouched.
. "$(dirname "$0")/common.sh"
OUT=$NIVRAL_DEPS
TOOLCHAIN=$ROOT/cmake/mingw-w64.cmake
mkdir -p "$OUT"
exec 9>"$OUT/.lock"; flock 9

# Sources of Debian packages, in the current folder.
fetch() {
  local at=$OUT/work/apt
  mkdir -p "$at"/{parts,lists/partial}
  if [ -f /etc/apt/sources.list.d/debian.sources ]; then
    sed 's/^Types:.*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources > "$at/parts/src.sources"
  else
    grep -hE '^deb .*debian' /etc/apt/sources.list | sed 's/^deb /deb-src /' > "$at/parts/src.list"
  fi
  local apt=(apt-get -q -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$at/parts"
    -o APT::Sandbox::User=root -o Dir::State::Lists="$at/lists"
    -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=)
  quietly "$OUT/work/update.log" "fetching the list of sources" "${apt[@]}" update
  quietly "$OUT/work/fetch.log" "fetching the sources of $*" "${apt[@]}" --only-source source "$@"
}

# Binaries hold no path of this machine and no time, so that each build gives the same bytes.
build() {
  local name=$1 source=$2 no_path="-ffile-prefix-map=$OUT=."; shift 2
  quietly "$OUT/work/$name-configure.log" "configuring $name" \
    cmake -G Ninja -S "$source" -B "$OUT/work/obj-$name" \
    -DCMAKE_TOOLCHAIN_FILE="$TOOLCHAIN" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$OUT/prefix" \
    -DCMAKE_C_FLAGS="$no_path" -DCMAKE_CXX_FLAGS="$no_path" \
    -DCMAKE_SHARED_LINKER_FLAGS=-Wl,--no-insert-timestamp "$@"
  quietly "$OUT/work/$name.log" "building $name" cmake --build "$OUT/work/obj-$name" -j "$JOBS"
  quietly "$OUT/work/$name-install.log" "installing $name" cmake --install "$OUT/work/obj-$name" --strip
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
}

build_prefix() {
  say "deps: cross-building SDL2, FreeType, SDL2_ttf, GoogleTest into $OUT/prefix (2 to 4 minutes)"
  fetch libsdl2 libsdl2-ttf freetype
  build_sdl2
  build_ttf
  build gtest /usr/src/googletest
  copy_licences
}

# Reading and decoding of what recorders write. Shared and without GPL parts: so its licence is the LGPL.
set_ffmpeg_options() {
  # shellcheck disable=SC2054 # the commas are FFmpeg's
  FFMPEG_OPTIONS=(--enable-shared --disable-static --disable-everything --disable-autodetect
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
  say "deps: cross-building FFmpeg's libraries into $OUT/player (2 to 5 minutes)"
  set_ffmpeg_options
  fetch ffmpeg
  cd ffmpeg-*/
  quietly "$OUT/work/configure.log" "configuring FFmpeg" \
    ./configure --prefix=/ --target-os=mingw32 --arch=x86_64 \
    --cross-prefix=x86_64-w64-mingw32- --cc=x86_64-w64-mingw32-gcc-posix \
    --extra-ldflags="-static-libgcc -Wl,--no-insert-timestamp" \
    --extra-libs="-Wl,-Bstatic -lwinpthread -Wl,-Bdynamic" "${FFMPEG_OPTIONS[@]}"
  quietly "$OUT/work/ffmpeg.log" "building FFmpeg" make -j "$JOBS"
  quietly "$OUT/work/install.log" "installing FFmpeg" make install DESTDIR="$OUT/player"
  mkdir -p "$OUT/player/share/licenses"
  ffmpeg_licence "$(dpkg-parsechangelog -S Source) $(dpkg-parsechangelog -S Version)" \
    > "$OUT/player/share/licenses/FFmpeg.txt"
  cp -r /usr/include/CLI "$OUT/player/include/"
  cp /usr/share/doc/libcli11-dev/copyright "$OUT/player/share/licenses/CLI11.txt"
}

# Runs build_<folder> unless the folder bears the mark of its recipe, which is the functions named and the
# toolchain: make_folder <folder> <function>...
make_folder() {
  local folder=$OUT/$1 mark
  mark=$folder/.done-$({ declare -f fetch "build_$1" "${@:2}"; cat "$TOOLCHAIN"; } | sha1sum | cut -c1-12)
  if [ -f "$mark" ]; then say "deps: up to date ($folder)"; return; fi
  rm -rf "$folder" "$OUT/work"
  mkdir -p "$OUT/work"; cd "$OUT/work"
  "build_$1"
  cd "$OUT"; rm -rf "$OUT/work"
  touch "$mark"
}

make_folder prefix build build_sdl2 build_ttf copy_licences
make_folder player set_ffmpeg_options ffmpeg_licence
