#!/bin/bash
# Builds the native benchmarks, runs them in interleaved rounds and writes the results to docs/benchmarks.md.
#   bench.sh [rounds]      9 rounds by default
# A benchmark adds its section with `section`: a title, a sentence, and a command whose output is the section.
. "$(dirname "$0")/common.sh"
ROUNDS=${1:-9}
"$ROOT/scripts/setup.sh"
install_packages libyuv-dev libswscale-dev libavfilter-dev libavutil-dev pkg-config
say "bench: building"
cd "$ROOT"
quietly build/configure-bench.log "configuring" cmake --preset bench
quietly build/build-bench.log "building" cmake --build --preset bench -j "$JOBS"

OUT=$ROOT/docs/benchmarks.md
BIN=$ROOT/build/bench/bin
COMPILER=$(c++ --version | head -1)
PROCESSOR=$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -1)
section() {
  local title=$1 text=$2; shift 2
  say "bench: $title"
  printf '\n## %s\n\n%s\n\n' "$title" "$text" >> "$OUT.new"
  "$@" 2>> build/bench.log | tee -a "$OUT.new"
}
fenced() { printf '```\n'; "$@"; printf '```\n'; }

: > build/bench.log
cat > "$OUT.new" <<EOT
# Benchmarks

Written by \`scripts/bench.sh\` with $ROUNDS rounds on: $PROCESSOR, $(nproc) cores, $COMPILER.
Everything is measured in one process, in rounds that take turns, as the median of processor time on one
thread. Ratios hold better than times: other work on the machine slows both sides alike.
EOT
section "Colour" "Each cell: how many times as fast as the peer we are, and our time per frame. Both sides use all
that the processor has. Luma is noise; chroma changes slowly, as in decoded video. See [colour.md](colour.md)." \
  "$BIN/colour_bench" --benchmark_repetitions="$ROUNDS" --benchmark_enable_random_interleaving=true \
  --benchmark_min_time=0.02
[ -x "$BIN/d3d9_kernels_bench" ] && section "Direct3D 9 upload" "Milliseconds and ratio to the first way." \
  fenced "$BIN/d3d9_kernels_bench"
mv "$OUT.new" "$OUT"
say "bench: wrote docs/benchmarks.md"
