#!/bin/bash
# Sets up and builds what is missing, then shows a video file, or without one drawn scenes, through libnivral.
#   demo.sh [file] [options of nivral_player.exe...]       e.g. demo.sh clip.mp4 --backend d3d9 --mirror 1
# Leaves build/demo/screenshot.png and prints a line of figures. The window appears on $DISPLAY where that is
# set, else on a display of its own that nobody sees. It closes at the end of the file.
. "$(dirname "$0")/common.sh"
DEMO=$ROOT/build/demo
BED=$DEMO/bed
EXE=$ROOT/build/mingw-release/bin/nivral_player.exe
FILE=
case ${1:-} in -*|'') ;; *) FILE=$1; shift ;; esac
[ -z "$FILE" ] || [ -r "$FILE" ] || die "$FILE: cannot be read"

# FFmpeg takes as long to build as all else, and is needed where a file is named.
export SETUP=scenes
for word in "$FILE" "$@"; do [ ! -e "${word#--*=}" ] || SETUP=player; done
"$ROOT/scripts/build.sh" mingw-release --target nivral_player
mkdir -p "$DEMO"
ARGS=(--no-settings --screenshot "$(windows_path "$DEMO/screenshot.png")")
if [ -n "$FILE" ]; then
  ARGS+=(--exit "$(windows_path "$FILE")")
else
  ARGS+=(--seconds 10 --monitor --mosaic 8)
fi

if [ -n "${DISPLAY:-}" ]; then
  eval "$(wine_environment "$BED/wp")"
  trap '"$WINE_SERVER" -k >/dev/null 2>&1 || true' EXIT
  "$ROOT/scripts/bed.sh" prefix "$BED"
else
  use_bed "$BED"
  export SDL_RENDER_DRIVER="${SDL_RENDER_DRIVER:-software}"  # nothing in the bed rasterises but the processor
fi
rm -f "$DEMO/screenshot.png"
"$WINE" "$EXE" "${ARGS[@]}" "$@" || die "nivral_player ended with code $?"
[ -s "$DEMO/screenshot.png" ] || die "no screenshot was written"
say "demo: screenshot in $DEMO/screenshot.png"
