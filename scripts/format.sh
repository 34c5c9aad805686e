#!/bin/bash
# Formats the C, C++ and C# code in place; with --check only reports what differs and fails when something
# does.
. "$(dirname "$0")/common.sh"
cd "$ROOT"
case ${1:-} in
'') mode=(-i) ;;
--check) mode=(--dry-run -Werror) ;;
*) die "usage: format.sh [--check]" ;;
esac
git ls-files --cached --others --exclude-standard -z '*.c' '*.cpp' '*.h' '*.hpp' '*.cs' |
  xargs -0 -r ls -d 2>/dev/null | xargs -d '\n' -r clang-format "${mode[@]}"
