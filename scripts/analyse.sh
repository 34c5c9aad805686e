#!/bin/bash
# Static analysis of src/ with warnings as errors: cppcheck, Clang as a second compiler for the Windows code, and
# clang-tidy with the checks of .clang-tidy. analyse.sh [file...] runs clang-tidy on those files only.
. "$(dirname "$0")/common.sh"
cd "$ROOT"

run_cppcheck() {
  say "analyse: cppcheck"
  cppcheck --quiet --error-exitcode=1 --enable=warning,performance,portability --inline-suppr -j "$JOBS" \
    --std=c++20 --language=c++ --library=windows --platform=win64 -I src -I include \
    --suppress=missingIncludeSystem src
}

run_second_compiler() {
  say "analyse: Clang's warnings on the Windows code"
  cmake --preset mingw-clang > build/configure-mingw-clang.log 2>&1 || { cat build/configure-mingw-clang.log; return 1; }
  cmake --build --preset mingw-clang -j "$JOBS" -- --quiet
}

run_tidy() {
  say "analyse: clang-tidy"
  printf '%s\n' "$@" | xargs -d '\n' -P "$JOBS" -n 2 clang-tidy --quiet -p build/mingw-clang 2> build/tidy-notes.log
}

mkdir -p build
failed=0
if [ $# -gt 0 ]; then
  run_second_compiler && run_tidy "$@" || failed=1
else
  run_cppcheck || failed=1
  mapfile -t sources < <(find src -name '*.cpp' | sort)
  run_second_compiler && run_tidy "${sources[@]}" || failed=1
fi
[ $failed = 0 ] || die "the analysis found something"
