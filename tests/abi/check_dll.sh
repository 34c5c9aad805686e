#!/bin/bash
# The DLL from outside: check_dll.sh <dll> <def> <import library>...
# Its exports are exactly the names in the .def, it needs only libraries that are there, and the import
# libraries know every name.
set -euo pipefail
dll=$1 def=$2; shift 2
fail() { echo "check_dll: $*" >&2; exit 1; }
ALLOWED='advapi32|ddraw|dsound|gdi32|kernel32|msvcrt|ole32|sdl2|sdl2_ttf|shell32|user32|winmm'

wanted=$(sed -n 's/^ *\(NIVRAL_[A-Za-z0-9_]*\)$/\1/p' "$def" | sort)
[ "$(wc -l <<< "$wanted")" = 44 ] || fail "the .def does not hold 44 names"
table=$(x86_64-w64-mingw32-objdump -p "$dll")
names=$(sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/p' <<< "$table")
exported=$(sed -n 's/^\t\[ *[0-9]*\] *\(+base\[ *[0-9]*\] *[0-9a-f]* \)\?//p' <<< "$names" | sort)
diff <(echo "$wanted") <(echo "$exported") || fail "exports differ from the .def (< wanted, > found)"

imported=$(sed -n 's/^\tDLL Name: \(.*\)\.dll$/\1/Ip' <<< "$table")
[ -n "$imported" ] || fail "no imports found in $dll"
while read -r name; do
  grep -qixE "$ALLOWED" <<< "$name" || fail "needs $name.dll"
done <<< "$imported"

for library in "$@"; do
  known=$(llvm-nm "$library" 2>/dev/null | sed -n 's/.* __imp_\(NIVRAL_.*\)/\1/p' | sort -u)
  diff <(echo "$wanted") <(echo "$known") || fail "names in $library differ from the .def"
done
echo "44 exports; imports: $(xargs <<< "$imported")"
