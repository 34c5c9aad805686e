#!/bin/bash
# Builds the package a second time, from a copy of the tree in another folder and without the compiler's
# cache, and compares it byte by byte with the one in build/package, which scripts/package.sh has made of
# the same commit. The libraries of scripts/deps.sh are the same in both.
. "$(dirname "$0")/common.sh"
cd "$ROOT"
COPY=$ROOT/build/another-folder/nivral
export CCACHE_DISABLE=1
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH

rm -rf "${COPY%/*}"; mkdir -p "$COPY"
git ls-files --cached --others --exclude-standard | xargs -d '\n' ls -d 2>/dev/null |
  tar c -T - | tar x -C "$COPY"
git -C "$COPY" init -q
quietly build/reproducible.log "the second build" "$COPY/scripts/package.sh"
diff "$COPY/build/package/SHA256SUMS" build/package/SHA256SUMS ||
  die "the same commit gives other bytes (< second build, > first); the second is in $COPY"
say "reproducible: $(wc -l < build/package/SHA256SUMS) archives are the same bytes from another folder"
rm -rf "${COPY%/*}"
