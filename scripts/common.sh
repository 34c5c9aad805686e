# Shared by the scripts of this folder: paths and messages. Sourced, not run.
set -euo pipefail
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
NIVRAL_CACHE=${NIVRAL_CACHE:-$HOME/.cache/nivral}
export NIVRAL_CACHE NIVRAL_DEPS=${NIVRAL_DEPS:-$NIVRAL_CACHE/deps}
JOBS=${JOBS:-$(nproc)}
mkdir -p "$ROOT/build"

say() { printf '== %s\n' "$*"; }
die() { printf '%s: error: %s\n' "$(basename "$0")" "$*" >&2; exit 1; }
