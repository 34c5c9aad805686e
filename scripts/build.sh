#!/bin/bash
# Builds libnivral.dll with SDL2.dll and SDL2_ttf.dll beside it in build/<preset>/bin.
#   build.sh [preset [options of cmake --build...]]      mingw-release by default
# SETUP=player or SETUP=scenes sets up what those take only, see setup.sh.
. "$(dirname "$0")/common.sh"
PRESET=${1:-mingw-release}
[ $# = 0 ] || shift
"$ROOT/scripts/setup.sh" ${SETUP:+"$SETUP"}
say "build: $PRESET"
cd "$ROOT"
quietly "build/configure-$PRESET.log" "configuring $PRESET" cmake --preset "$PRESET"
cmake --build --preset "$PRESET" -j "$JOBS" "$@"
