#!/bin/bash
# Installs and builds what is missing to build, test and run the library on a Debian machine. Safe to run again.
. "$(dirname "$0")/common.sh"
PACKAGES=(g++ g++-mingw-w64-x86-64-posix cmake ninja-build ccache dpkg-dev ca-certificates git
  googletest libgtest-dev libgmock-dev libbenchmark-dev clang lld llvm libclang-rt-14-dev clang-format clang-tidy cppcheck
  wine wine64 xvfb libgl1 libgl1-mesa-dri libxcomposite1 libxcursor1 libxfixes3 libxi6 libxinerama1 libxrandr2
  libxrender1 libxxf86vm1 pulseaudio pulseaudio-utils fonts-dejavu-core imagemagick ffmpeg libsdl2-2.0-0 python3
  mono-mcs libmono-system-windows-forms4.0-cil doxygen)
missing=()
for package in "${PACKAGES[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
  say "setup: installing ${missing[*]}"
  [ "$(id -u)" = 0 ] || die "run as root to install packages"
  mkdir -p "$ROOT/build"
  { apt-get -q update && DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"; } \
    > "$ROOT/build/apt.log" 2>&1 || { tail -20 "$ROOT/build/apt.log"; die "installing packages failed"; }
else
  say "setup: all packages are installed"
fi
"$ROOT/scripts/deps.sh"
