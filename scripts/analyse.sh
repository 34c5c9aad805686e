#!/bin/bash
# Static analysis of src/ with warnings as errors: cppcheck, and Clang as a second compiler for the Windows
# code, with its warnings and the checks of .clang-tidy. analyse.sh [file...] has Clang look at those files
# only.
. "$(dirname "$0")/common.sh"
cd "$ROOT"
WORK=$ROOT/build/analyse

run_cppcheck() {
  say "analyse: cppcheck"
  cppcheck --quiet --error-exitcode=1 --enable=warning,performance,portability --inline-suppr -j "$JOBS" \
    --std=c++20 --language=c++ --library=windows --platform=win64 -I src -I include \
    --suppress=missingIncludeSystem src
}

run_clang() {
  say "analyse: Clang"
  quietly "$WORK/configure.log" "configuring mingw-clang" cmake --preset mingw-clang
  scripts/analysis_units.py build/mingw-clang "$WORK" "$@" > "$WORK/units"
  xargs -d '\n' -P "$JOBS" -n 1 clang-tidy --quiet -p "$WORK" < "$WORK/units" 2> "$WORK/notes.log"
}

failed=0
[ $# -gt 0 ] || run_cppcheck || failed=1
run_clang "$@" || failed=1
[ $failed = 0 ] || die "the analysis found something"
