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

# What a server or Wine said before it failed, and whether a full disk was the reason.
give_up() {
  { tail -n 40 "$D/$1.log"; df -h "$D"; } >&2
  die "$2 did not start"
}

# until_ready <name> <command...>: waits for the command to succeed while what was started lives. Its libraries
# alone can take many seconds from a cold disk.
until_ready() {
  local name=$1; shift
  for _ in $(seq 600); do
    ! "$@" >/dev/null 2>&1 || return 0
    kill -0 "$(cat "$D/$name.pid")" 2>/dev/null || break
    sleep .1
  done
  return 1
}

# start_server <name> <what it is> <function> <command...>: the function starts it and keeps its process id,
# the command tells when it is ready. What fails for once must not end a whole run, so there are three tries.
start_server() {
  local name=$1 what=$2 launch=$3; shift 3
  for _ in 1 2 3; do
    "$launch"
    ! until_ready "$name" "$@" || return 0
    end_server "$name"
  done
  give_up "$name" "$what"
}
end_server() { ! alive "$1" || kill "$(cat "$D/$1.pid")"; rm -f "$D/$1.pid"; }

launch_display() {
  rm -f "$D/display"
  ( exec 3>"$D/display" >>"$D/xvfb.log" 2>&1 </dev/null
    Xvfb -displayfd 3 -screen 0 "${SCREEN:-2048x1200}x24" +extension GLX -nolisten tcp -fbdir "$D/fb" &
    echo $! >"$D/xvfb.pid" )
}

write_env() {
  { printf 'export DISPLAY=:%s BED_FB=%q\n' "$(cat "$D/display")" "$D/fb/Xvfb_screen0"
    printf 'export XDG_RUNTIME_DIR=%q PULSE_SERVER=%q\n' "$D/xrt" "unix:$D/xrt/pulse/native"
    wine_environment "$D/wp"; } > "$D/env.sh"
}

start_screen() {
  mkdir -p "$D"/{fb,xrt}; chmod 700 "$D/xrt"
  start_server xvfb "the X server" launch_display test -s "$D/display"
  write_env; . "$D/env.sh"
}

launch_sound() {
  ( unset DISPLAY; exec >>"$D/pulse.log" 2>&1 </dev/null
    pulseaudio -n --daemonize=no --exit-idle-time=-1 --use-pid-file=no --disable-shm=yes \
      -L "module-native-protocol-unix auth-anonymous=1" \
      -L "module-null-sink sink_name=out format=s16le rate=8000 channels=1" \
      -L "module-null-sink sink_name=mic format=s16le rate=8000 channels=1" &
    echo $! >"$D/pulse.pid" )
}
start_sound() {
  start_server pulse "the sound server" launch_sound pactl set-default-sink out
  pactl set-default-source mic.monitor
}

# Windows are not managed: Wine would wait two seconds for a window manager at each. A crash ends a program
# without a dialogue that nobody answers.
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

# Wine's services must not inherit this script's output, or whoever reads it waits for them.
start_wine() {
  for _ in 1 2 3; do
    WINEDEBUG=fixme-all boot_wine >> "$D/wine.log" 2>&1 </dev/null && return
    end_wine
  done
  give_up wine Wine
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
  end_server xvfb; end_server pulse
  say "bed: down" ;;
prefix)
  eval "$(wine_environment "$D/wp")"
  mkdir -p "$D"; start_wine ;;
*) die "usage: bed.sh up|second|down|prefix [dir]" ;;
esac
