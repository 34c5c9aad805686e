#!/bin/bash
# Fails when the DLL moves 256-bit or wider registers to or from the stack with instructions that demand
# alignment: the 64-bit Windows stack is aligned to 16 bytes only, and GCC has been known to forget it.
# check_ymm_stack.sh [dll]
. "$(dirname "$0")/common.sh"
DLL=${1:-$ROOT/build/mingw-release/bin/libnivral.dll}
OBJDUMP=${OBJDUMP:-x86_64-w64-mingw32-objdump}
LISTING=$(mktemp); trap 'rm -f "$LISTING"' EXIT
[ -f "$DLL" ] || die "no such file: $DLL"
"$OBJDUMP" -d --no-show-raw-insn "$DLL" > "$LISTING"
moves() { grep -E "vmov($1)[[:space:]].*(%[yz]mm.*\(%r[sb]p|\(%r[sb]p[^)]*\).*%[yz]mm)" "$LISTING" || true; }
wide=$(grep -cE '%ymm' "$LISTING" || true)
[ "$wide" -gt 0 ] || die "$DLL uses no 256-bit registers: is this the right file?"
aligned=$(moves 'aps|apd|dqa|dqa32|dqa64|ntps|ntpd|ntdq|ntdqa')
[ -z "$aligned" ] || { printf '%s\n' "$aligned"; die "aligned 256-bit stack moves in $DLL"; }
unaligned=$(moves 'ups|upd|dqu|dqu8|dqu32|dqu64' | wc -l)
say "$(basename "$DLL"): $wide lines with 256-bit registers; stack moves: $unaligned unaligned, none aligned"
