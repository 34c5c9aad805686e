#!/bin/bash
# Sets up and builds what is missing, then shows a video file, or without one drawn scenes, through libnivral.
#   demo.sh [file] [options of nivral_player.exe...]       e.g. demo.sh clip.mp4 --backend d3d9 --mirror 1
# Leaves build/demo/screenshot.png and prints a line of figures. The window appears on $DISPLAY where that is
# set, else on a display of its own that nobody sees. Of a file the first 60 seconds are shown.
. "$(dirname "$0")/common.sh"
DEMO=$ROOT/build/demo
BED=$DEMO/bed
EXE=$ROOT/build/mingw-release/bin/nivral_player.exe
FILE=
case ${1:-} in -*|'') ;; *) FILE=$1; shift ;; esac
[ -z "$FILE" ] || [ -r "$FILE" ] || die "$FILE: cannot be read"

# One conversion per file, size and date; $CLIP.y4m and, where there is sound, $CLIP.wav.
convert() {
  CLIP=$DEMO/$(stat -c '%s %Y' "$1" | cat - <(realpath "$1") | sha1sum | cut -c1-16)
  if [ ! -f "$CLIP.y4m" ]; then
    say "demo: converting $1"
    local ffmpeg=(ffmpeg -nostdin -loglevel error -y -t 60 -i "$1")
    if ffprobe -v error -select_streams a -show_entries stream=index -of csv=p=0 "$1" | grep -q .; then
      "${ffmpeg[@]}" -vn -ac 2 -ar 44100 -c:a pcm_s16le -f wav "$CLIP.part" ||
        die "$1: the sound could not be converted"
      mv "$CLIP.part" "$CLIP.wav"
    fi
    "${ffmpeg[@]}" -an -pix_fmt yuv420p -f yuv4mpegpipe "$CLIP.part" ||
      die "$1: the pictures could not be converted"
    mv "$CLIP.part" "$CLIP.y4m"
  fi
}

"$ROOT/scripts/build.sh" mingw-release --target nivral_player
mkdir -p "$DEMO"
ARGS=(--mosaic 2 --screenshot "$(windows_path "$DEMO/screenshot.png")")
if [ -n "$FILE" ]; then
  convert "$FILE"
  ARGS+=("$(windows_path "$CLIP.y4m")" --channel "$(basename "$FILE")")
  [ ! -f "$CLIP.wav" ] || ARGS+=(--sound "$(windows_path "$CLIP.wav")")
else
  ARGS+=(--seconds 10 --monitor)
fi

if [ -n "${DISPLAY:-}" ]; then
  eval "$(wine_environment "$BED/wp")"
  trap '"$WINE_SERVER" -k >/dev/null 2>&1 || true' EXIT
  "$ROOT/scripts/bed.sh" prefix "$BED"
else
  trap '"$ROOT/scripts/bed.sh" down "$BED"' EXIT
  "$ROOT/scripts/bed.sh" up "$BED"
  . "$BED/env.sh"
fi
rm -f "$DEMO/screenshot.png"
"$WINE" "$EXE" "${ARGS[@]}" "$@" || die "nivral_player ended with code $?"
[ -s "$DEMO/screenshot.png" ] || die "no screenshot was written"
say "demo: screenshot in $DEMO/screenshot.png"
