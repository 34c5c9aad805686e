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
# A number that is left of an earlier run may be another program's by now.
alive() {
  [ -f "$D/$1.pid" ] && grep -qsxE 'Xvfb|pulseaudio' "/proc/$(cat "$D/$1.pid")/comm"
}

# until_ready <name> <what it is> <command...>: waits for the command to succeed while what was started lives.
# Two minutes, for reading its libraries from a cold disk alone can take many seconds.
until_ready() {
  local name=$1 what=$2; shift 2
  for _ in $(seq 1200); do
    ! "$@" >/dev/null 2>&1 || return 0
    kill -0 "$(cat "$D/$name.pid")" 2>/dev/null || break
    sleep .1
  done
  cat "$D/$name.log" >&2
  die "$what did not start"
}

start_display() {
  rm -f "$D/display"
  ( exec 3>"$D/display" >"$D/xvfb.log" 2>&1 </dev/null
    Xvfb -displayfd 3 -screen 0 "${SCREEN:-2048x1200}x24" +extension GLX -nolisten tcp -fbdir "$D/fb" &
    echo $! >"$D/xvfb.pid" )
  until_ready xvfb "the X server" test -s "$D/display"
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
  until_ready pulse "the sound server" pactl set-default-sink out
  pactl set-default-source mic.monitor
}

# Without a window manager Wine would wait two seconds for one at every new window.
make_prefix() {
  $WINE wineboot -i && $WINE_SERVER -w &&
    $WINE reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /t REG_SZ /d N /f &&
    $WINE reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f &&
    $WINE_SERVER -w && touch "$D/wp/.ready-2"
}
boot_wine() {
  { [ -f "$D/wp/.ready-2" ] || make_prefix; } && $WINE_SERVER -p && $WINE wineboot
}
end_wine() { $WINE_SERVER -k || true; $WINE_SERVER -w || true; } >/dev/null 2>&1

# Wine's services must not inherit this script's output, or whoever reads it waits for them. A program of
# Wine's that fails for once, as on a machine that is short of time, must not end a whole run.
start_wine() {
  for _ in 1 2 3; do
    WINEDEBUG=fixme-all boot_wine >> "$D/wine.log" 2>&1 </dev/null && return
    end_wine
  done
  tail -n 40 "$D/wine.log" >&2
  die "Wine did not start"
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
    end_wine
  fi
  for p in xvfb pulse; do alive $p && kill "$(cat "$D/$p.pid")"; rm -f "$D/$p.pid"; done
  say "bed: down" ;;
prefix)
  eval "$(wine_environment "$D/wp")"
  mkdir -p "$D"; start_wine ;;
*) die "usage: bed.sh up|down|prefix [dir]" ;;
esac
