#!/bin/bash
# Who may include whom in src/: arrows run down only. Each line below is a floor, the lowest first; a folder
# includes itself and the floors below its own, and audio nothing but util.
. "$(dirname "$0")/common.sh"
cd "$ROOT/src"
FLOORS='util
picture audio
colour
backends/yuvdraw
display
backends/sdl2 backends/d3d9 backends/ddraw
api'
wrong=$(git grep --untracked -oE '^#include "[a-z0-9_/]+/' -- '*.h' '*.cpp' | awk -F: -v floors="$FLOORS" '
  BEGIN {
    count = split(floors, line, "\n")
    for (i = 1; i <= count; i++) {
      n = split(line[i], name, " ")
      for (j = 1; j <= n; j++) floor[name[j]] = i
    }
  }
  {
    own = $1; sub("/[^/]*$", "", own)
    other = $2; sub("^#include \"", "", other); sub("/$", "", other)
    if (other == own || other == "nivral") next
    if (!(own in floor) || !(other in floor)) print $1 ": no floor for " own " or " other
    else if (floor[other] >= floor[own] || (other == "audio" && own != "api")) print $1 " includes " other
    else if (own == "audio" && other != "util") print $1 " includes " other
  }' | sort -u)
[ -z "$wrong" ] || { echo "$wrong" >&2; die "an arrow runs up or across"; }
say "layers: arrows run down only"
