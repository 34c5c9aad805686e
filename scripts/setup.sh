#!/bin/bash
# Installs and builds what is missing to build, test and run the library on a Debian machine. Safe to run
# again.
#   setup.sh [player|scenes]     only what building and running the player takes, or one that shows its drawn
#                                scenes but opens no recordings
. "$(dirname "$0")/common.sh"
BUILDING=(
  g++ g++-mingw-w64-x86-64-posix cmake ninja-build ccache dpkg-dev ca-certificates nasm libcli11-dev googletest
)
RUNNING=(
  llvm wine wine64 xvfb libgl1 libgl1-mesa-dri libxcomposite1 libxcursor1 libxfixes3 libxi6 libxinerama1
  libxrandr2 libxrender1 libxxf86vm1 pulseaudio pulseaudio-utils fonts-dejavu-core
)
CHECKING=(
  git libgtest-dev libgmock-dev libsdl2-2.0-0 ffmpeg imagemagick
  clang lld libclang-rt-14-dev clang-format clang-tidy cppcheck shellcheck python3 doxygen
  mono-mcs libmono-system-windows-forms4.0-cil pkg-config
)
DEPS=(prefix player)
case ${1:-} in
  scenes) CHECKING=() DEPS=(prefix) ;;
  player) CHECKING=() ;;
  '') ;;
  *) die "usage: setup.sh [player|scenes]" ;;
esac

# Compiling needs both cores, unpacking one and the network.
install_packages "${BUILDING[@]}"
"$ROOT/scripts/deps.sh" "${DEPS[@]}" & deps=$!
trap 'kill "$deps" 2> /dev/null || true' EXIT
install_packages "${RUNNING[@]}" "${CHECKING[@]}"
wait "$deps"
