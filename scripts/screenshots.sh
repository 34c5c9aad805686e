#!/bin/bash
# Makes the pictures of the documents in docs/images: the player on each backend and on four panes, what the
# mosaic hides, and the diagram of a frame's road. Look at them before committing them.
#   screenshots.sh [clip records]    the clip's frame 60 and its boxes for the backends, else a drawn road
. "$(dirname "$0")/common.sh"
IMAGES=$ROOT/docs/images
BED=$ROOT/build/screenshots
WORK=$BED/pictures
PLAYER=$ROOT/build/mingw-release/bin/nivral_player.exe

keep() {
  convert "$WORK/$1.png" -strip -depth 8 -define png:compression-level=9 "$IMAGES/$1.png"
  say "screenshots: docs/images/$1.png, $(stat -c %s "$IMAGES/$1.png") bytes"
}

shoot() {
  local name=$1; shift
  rm -f "$WORK/$name.png"
  quietly "$WORK/$name.log" "the picture $name" timeout 120 "$WINE" "$PLAYER" --no-settings --no-sound \
    --pause-at 60 --seconds 3 --screenshot "$(windows_path "$WORK/$name.png")" "$@"
}

# Without the strip under the panes.
bare() { mogrify -gravity south -chop 0x44 +repage "$WORK/$1.png"; }

# A drawn face and a number plate, clear and under levels of the mosaic: two rows, one for the backends with
# blocks, one for Direct3D 9.
shoot_mosaics() {
  local clip=$WORK/face.y4m tile tiles=()
  local -A label=([sdl]="SDL2, DirectDraw" [d3d9]="Direct3D 9")
  shoot driver --panes 4 --no-overlays
  # It writes the planes and then answers 1.
  convert -size 400x270 'xc:#303840' \( "$WORK/driver.png" -crop 200x250+865+40 +repage \) \
    -geometry +5+10 -composite -fill '#f4f4f0' -draw 'roundrectangle 222,100 384,140 4,4' -fill '#101060' \
    -font DejaVu-Sans-Bold -pointsize 29 -annotate +231+131 'NV 48 KX' -sampling-factor 4:2:0 -depth 8 \
    "yuv:$WORK/face.yuv" || [ -s "$WORK/face.yuv" ]
  { printf 'YUV4MPEG2 W400 H270 F25:1 Ip A1:1 C420jpeg\n'
    for _ in $(seq 70); do printf 'FRAME\n'; cat "$WORK/face.yuv"; done; } > "$clip"
  shoot clear "$(windows_path "$clip")" --no-overlays; bare clear
  for tile in sdl-1 sdl-4 sdl-7 sdl-13 d3d9-1 d3d9-4 d3d9-16 d3d9-64 d3d9-270; do
    shoot "$tile" "$(windows_path "$clip")" --no-overlays --backend "${tile%-*}" --mosaic "${tile#*-}" \
      --mosaic-area 0.02,0.02,0.98,0.98
    bare "$tile"
    tiles+=(-label "${label[${tile%-*}]}, level ${tile#*-}" "$WORK/$tile.png")
  done
  montage -label clear "$WORK/clear.png" "${tiles[@]}" -tile 5x2 -geometry 200x+3+3 \
    -pointsize 13 -depth 8 +dither -colors 64 "$WORK/mosaic.png"
  keep mosaic
}

install_packages graphviz
"$ROOT/scripts/build.sh" mingw-release --target nivral_player
mkdir -p "$WORK" "$IMAGES"
dot -Tsvg "$ROOT/docs/frame-road.dot" -o "$IMAGES/frame-road.svg"
use_bed "$BED"
MOSAIC=(--mosaic 8 --mosaic-area "0.44,0.46,0.54,0.54")
if [ $# = 2 ]; then
  SCENE=("$(windows_path "$1")" --records "$(windows_path "$2")" --channel Front)
else
  SCENE=(--size 960x540 "${MOSAIC[@]}")
fi
shoot player --panes 4 "${MOSAIC[@]}"; keep player
for backend in sdl:sdl2 d3d9:d3d9 ddraw:ddraw; do
  shoot "${backend#*:}" --backend "${backend%:*}" "${SCENE[@]}"; keep "${backend#*:}"
done
shoot_mosaics
