#!/bin/bash
# Makes the pictures of the documents in docs/images: the player on each backend and on four panes, and the
# diagram of a frame's road. Look at them before committing them.
. "$(dirname "$0")/common.sh"
IMAGES=$ROOT/docs/images
BED=$ROOT/build/screenshots
WORK=$BED/pictures
PLAYER=$ROOT/build/mingw-release/bin/nivral_player.exe

keep() {
  convert "$WORK/$1.png" -strip -define png:compression-level=9 "$IMAGES/$1.png"
  say "screenshots: docs/images/$1.png, $(stat -c %s "$IMAGES/$1.png") bytes"
}

shoot() {
  local name=$1; shift
  rm -f "$WORK/$name.png"
  quietly "$WORK/$name.log" "the picture $name" timeout 120 "$WINE" "$PLAYER" --no-sound --pause-at 60 \
    --seconds 3 --screenshot "$(windows_path "$WORK/$name.png")" "$@"
  keep "$name"
}

install_packages graphviz
"$ROOT/scripts/build.sh" mingw-release --target nivral_player
mkdir -p "$WORK" "$IMAGES"
dot -Tsvg "$ROOT/docs/frame-road.dot" -o "$IMAGES/frame-road.svg"
trap '"$ROOT/scripts/bed.sh" down "$BED"' EXIT
"$ROOT/scripts/bed.sh" up "$BED"
. "$BED/env.sh"
MOSAIC=(--mosaic 4 --mosaic-area "0.44,0.46,0.54,0.54")
SCENE=(--size 960x540 "${MOSAIC[@]}")
shoot player --panes 4 "${MOSAIC[@]}"
shoot sdl2 --backend sdl "${SCENE[@]}"
shoot d3d9 --backend d3d9 "${SCENE[@]}"
shoot ddraw --backend ddraw "${SCENE[@]}"
