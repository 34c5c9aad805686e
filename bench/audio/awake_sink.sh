#!/bin/bash
# SPDX-License-Identifier: MIT
# Runs a command with a sound sink (8 kHz mono) of its own and that sink's monitor as recording source:
#   awake_sink.sh COMMAND...
# An idle or new null sink loses the beginning of what is played and records late, so silence keeps it awake.
set -euo pipefail
OPTIONS=(--raw --format=s16le --rate=8000 --channels=1 --latency-msec=20)
export PULSE_SINK=nivral$$ PULSE_SOURCE=nivral$$.monitor
MODULE=$(pactl load-module module-null-sink sink_name=$PULSE_SINK format=s16le rate=8000 channels=1)
pacat -d $PULSE_SINK "${OPTIONS[@]}" /dev/zero &
KEEPER=$!
trap 'kill $KEEPER; wait $KEEPER || true; pactl unload-module $MODULE' EXIT
# Two seconds of recorded silence say that the sink has settled on its latency.
timeout 20 parec -d $PULSE_SOURCE "${OPTIONS[@]}" 2>/dev/null | head -c 32000 >/dev/null || true
"$@"
