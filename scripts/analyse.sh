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

# clang-tidy looks at each unit as if it were compiled, so ccache spares it those that it found nothing in and
# that have not changed since.
run_clang() {
  say "analyse: Clang"
  quietly "$WORK/configure.log" "configuring mingw-clang" cmake --preset mingw-clang
  scripts/analysis_units.py build/mingw-clang "$WORK" "$@" > /dev/null
  sed -i 's|^[^ ]*clang++ |ccache scripts/tidy_compiler.sh |' "$WORK/commands"
  CCACHE_COMPILERCHECK="string:$(clang-tidy --version)" CCACHE_COMMENTS=1 CCACHE_NOHASHDIR=1 \
    CCACHE_BASEDIR=$ROOT CCACHE_EXTRAFILES=$ROOT/.clang-tidy:$ROOT/scripts/tidy_compiler.sh \
    xargs -d '\n' -P "$JOBS" -n 1 bash -c \
    < "$WORK/commands" 2> "$WORK/notes.log" || { cat "$WORK/notes.log"; return 1; }
}

failed=0
[ $# -gt 0 ] || run_cppcheck || failed=1
run_clang "$@" || failed=1
[ $failed = 0 ] || die "the analysis found something"
