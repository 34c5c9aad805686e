#!/bin/bash
# Builds the benchmarks, runs them in rounds that take turns, and writes their sections of
# docs/benchmarks.md.
#   bench.sh [part]... [rounds=N]    parts: kernels (native), roads (Windows programs in a bed); both by
#                                    default
# Each section begins with what it was measured on. Others stay as they are.
. "$(dirname "$0")/common.sh"
cd "$ROOT"
OUT=$ROOT/docs/benchmarks.md
ROUNDS=9 PARTS=()
for word in "$@"; do
  case $word in
    rounds=*) ROUNDS=${word#rounds=} ;;
    kernels|roads) PARTS+=("$word") ;;
    *) die "usage: bench.sh [kernels] [roads] [rounds=N]" ;;
  esac
done
[ ${#PARTS[@]} -gt 0 ] || PARTS=(kernels roads)
PROCESSOR="$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -1), $(nproc) cores"
version_of() { dpkg-query -W -f='${source:Package} ${Version}' "$1"; }

# section <title> <text> <command...>: the command's output becomes the section of that title.
section() {
  local title=$1 text=$2 new=$ROOT/build/bench-section.md; shift 2
  say "bench: $title"
  { printf '## %s\n\n%s\n\n' "$title" "$text"; "$@" 2>> build/bench.log; } > "$new" ||
    { tail -n 30 "$new" build/bench.log >&2; die "measuring failed"; }
  awk -v new="$new" -v heading="## $title" '
    function insert() { while ((getline line < new) > 0) print line; print ""; done = 1 }
    /^## / { skip = $0 == heading; if (skip) insert() }
    !skip { print }
    END { if (!done) insert() }' "$OUT" | cat -s > "$OUT.new"
  sed -i '${/^$/d}' "$OUT.new"
  mv "$OUT.new" "$OUT"
  cat "$new"
}
fenced() { printf '```\n'; "$@"; printf '```\n'; }

part_kernels() {
  install_packages libyuv-dev libswscale-dev libavfilter-dev libavutil-dev pkg-config
  quietly build/configure-bench.log "configuring" cmake --preset bench
  quietly build/build-bench.log "building" cmake --build --preset bench -j "$JOBS"
  local bin=$ROOT/build/bench/bin
  section "Colour" "On: $PROCESSOR; $(c++ --version | head -1);
$(version_of libyuv0), $(version_of libavfilter8).

Each cell: how many times as fast as the peer we are, and our time per frame, in processor time on one thread,
as medians over rounds in which both take turns of 2 ms. Both sides use all that the processor has. Luma is
noise; chroma changes slowly, as in decoded video. See [colour.md](colour.md)." \
    "$bin/colour_bench" $((ROUNDS * 5))
  section "Direct3D 9 upload" "On: $PROCESSOR. Milliseconds and ratio to the first way." \
    fenced "$bin/d3d9_kernels_bench"
}

# The library's log goes to the standard output too.
roads_table() {
  WINE_D3D_CONFIG=csmt=0 "$WINE" "$ROOT/build/mingw-release/bin/roads_bench.exe" turns="$ROUNDS" < /dev/null |
    tr -d '\r' | grep '^|'
}

part_roads() {
  quietly build/configure-roads.log "configuring" cmake --preset mingw-release -DNIVRAL_BENCH=ON
  quietly build/build-roads.log "building" \
    cmake --build --preset mingw-release -j "$JOBS" --target roads_bench
  use_bed "$ROOT/build/bed"
  section "Roads" "On: $PROCESSOR; $("$WINE" --version), software rasteriser of $(version_of libgl1-mesa-dri).

A round is one 640x360 frame to each pane, drawn into a window of 320x180; the bare programs only upload,
stretch and present, the one for Direct3D by way of pixels of the frame's size, without which Wine shows a
part of the picture only. \"All\" is six texts, twelve boxes with labels, 68 landmarks with a box, a mosaic.
Cells: wall time, and in brackets process time, against the bare programs that took turns in the same process.
DirectDraw draws behind the caller's back, so its rounds come at a fixed rate and only process time tells (in
its bare column too)." \
    roads_table
}

"$ROOT/scripts/setup.sh"
: > build/bench.log
for part in "${PARTS[@]}"; do "part_$part"; done
say "bench: wrote docs/benchmarks.md"
