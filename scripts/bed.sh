#!/bin/bash
# The test bed: an X display, a sound server with a null sink ("out") and a null source ("mic"), and a Wine
# prefix.
#   bed.sh up [dir]     starts what is not running and writes dir/env.sh, to be sourced before running Windows
#                       programs
#   bed.sh second dir   another display and Wine prefix, for tests that wait for windows beside those of the bed
#                       whose environment is set
#   bed.sh down [dir]   ends exactly what `up` or `second` started
#   bed.sh prefix [dir] only the Wine prefix dir/wp, on the display that is set
# Beds in different folders are independent of each other. SCREEN=WxH sets the display's size.
. "$(dirname "$0")/common.sh"
D=$(realpath -m "${2:-$ROOT/build/bed}")
alive() { [ -f "$D/$1.pid" ] && kill -0 "$(cat "$D/$1.pid")" 2>/dev/null; }

start_display() {
  rm -f "$D/display"
  ( exec 3>"$D/display" >"$D/xvfb.log" 2>&1 </dev/null
    Xvfb -displayfd 3 -screen 0 "${SCREEN:-2048x1200}x24" +extension GLX -nolisten tcp -fbdir "$D/fb" &
    echo $! >"$D/xvfb.pid" )
  for _ in $(seq 100); do [ -s "$D/display" ] && return; sleep .1; done
  cat "$D/xvfb.log"; die "the X server did not start"
}

write_env() {
  { printf 'export DISPLAY=:%s BED_FB=%q\n' "$(cat "$D/display")" "$D/fb/Xvfb_screen0"
    printf 'export XDG_RUNTIME_DIR=%q PULSE_SERVER=%q\n' "$D/xrt" "unix:$D/xrt/pulse/native"
    wine_environment "$D/wp"; } > "$D/env.sh"
}

start_screen() {
  mkdir -p "$D"/{fb,xrt}; chmod 700 "$D/xrt"
  start_display; write_env; . "$D/env.sh"
}

start_sound() {
  ( unset DISPLAY; exec >"$D/pulse.log" 2>&1 </dev/null
    pulseaudio -n --daemonize=no --exit-idle-time=-1 --use-pid-file=no --disable-shm=yes \
      -L "module-native-protocol-unix auth-anonymous=1" \
      -L "module-null-sink sink_name=out format=s16le rate=8000 channels=1" \
      -L "module-null-sink sink_name=mic format=s16le rate=8000 channels=1" &
    echo $! >"$D/pulse.pid" )
  for _ in $(seq 100); do pactl info >/dev/null 2>&1 && break; sleep .1; done
  pactl set-default-sink out || { cat "$D/pulse.log"; die "the sound server did not start"; }
  pactl set-default-source mic.monitor
}

# Wine's services must not inherit this script's output, or whoever reads it waits for them.
start_wine() {
  ( exec >/dev/null 2>&1 </dev/null
    if [ ! -f "$D/wp/.ready-2" ]; then
      $WINE wineboot -i; $WINE_SERVER -w
      # Without a window manager Wine would wait two seconds for one at every new window.
      $WINE reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /t REG_SZ /d N /f
      $WINE reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f
      $WINE_SERVER -w; touch "$D/wp/.ready-2"
    fi
    $WINE_SERVER -p; $WINE wineboot )
}

case ${1:-} in
up)
  alive xvfb && alive pulse && { say "bed: already up"; exit 0; }
  say "bed: starting display, sound and Wine in $D"
  start_screen; start_sound; start_wine ;;
second)
  alive xvfb || { start_screen; start_wine; } ;;
down)
  if [ -f "$D/env.sh" ]; then
    . "$D/env.sh"
    $WINE_SERVER -k >/dev/null 2>&1 || true; $WINE_SERVER -w || true
  fi
  for p in xvfb pulse; do alive $p && kill "$(cat "$D/$p.pid")"; rm -f "$D/$p.pid"; done
  say "bed: down" ;;
prefix)
  eval "$(wine_environment "$D/wp")"
  mkdir -p "$D"; start_wine ;;
*) die "usage: bed.sh up|down|prefix [dir]" ;;
esac
