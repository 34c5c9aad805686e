# shellcheck shell=bash
# Shared by the scripts of this folder: paths, messages, packages and Wine. Sourced, not run.
set -euo pipefail
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
NIVRAL_CACHE=${NIVRAL_CACHE:-$HOME/.cache/nivral}
export NIVRAL_CACHE NIVRAL_DEPS=${NIVRAL_DEPS:-$NIVRAL_CACHE/deps}
JOBS=${JOBS:-$(nproc)}
export WINE=/usr/lib/wine/wine64 WINE_SERVER=/usr/lib/wine/wineserver64
mkdir -p "$ROOT/build"

say() { printf '== %s\n' "$*"; }
die() { printf '%s: error: %s\n' "$(basename "$0")" "$*" >&2; exit 1; }

# quietly <log> <what it is> <command...>: the output goes to the log, whose end is shown on failure.
quietly() {
  local log=$1 what=$2; shift 2
  mkdir -p "$(dirname "$log")"
  "$@" > "$log" 2>&1 || { tail -n 30 "$log" >&2; die "$what failed; all of it is in $log"; }
}

is_installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'ok installed'; }

# Debian packages; those that are there cost nothing.
install_packages() {
  local missing=() package
  for package in "$@"; do is_installed "$package" || missing+=("$package"); done
  [ ${#missing[@]} -gt 0 ] || return 0
  say "installing ${missing[*]}"
  [ "$(id -u)" = 0 ] || die "run as root to install packages"
  quietly "$ROOT/build/apt-update.log" "updating the list of packages" apt-get -q update
  quietly "$ROOT/build/apt.log" "installing packages" \
    env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# The environment of Wine, as lines for a shell: wine_environment <prefix>. Without a locale of UTF-8 Wine
# cannot make files whose names are not ASCII.
wine_environment() {
  echo 'export LC_ALL=C.UTF-8'
  printf 'export WINEPREFIX=%q WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="\n' "$1"
}

# use_bed <folder> [function]: a bed for the rest of the script, which its end takes down unless it was up
# before. A function that is to run at the end instead calls end_bed.
use_bed() {
  local state
  OWN_BED=$1 AT_END=${2:-end_bed}
  trap '"$AT_END"' EXIT
  state=$("$ROOT/scripts/bed.sh" up "$1")
  echo "$state"
  . "$1/env.sh"
  ! grep -q 'already up' <<< "$state" || OWN_BED=
}

end_bed() { [ -z "${OWN_BED:-}" ] || "$ROOT/scripts/bed.sh" down "$OWN_BED" > /dev/null 2>&1 || true; }

windows_path() { local path; path=$(realpath -m "$1"); printf 'Z:%s' "${path//\//\\}"; }
