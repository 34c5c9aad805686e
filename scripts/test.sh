#!/bin/bash
# Everything that must hold before a change goes in, from nothing: sets the machine up, checks format and
# documents, analyses, builds for both systems (with Clang here, with GCC for Windows), and runs all tests. Each
# step's output is kept in build/test/; the steps go on after a failure, and the exit code is 0 only when all of
# them passed.
#   test.sh            all steps: format docs analyse native-clang mingw-release package
#   test.sh <step>...  some of them, or what they cover in another build: native mingw-debug
. "$(dirname "$0")/common.sh"
cd "$ROOT"
LOGS=$ROOT/build/test
BED=$ROOT/build/bed
STEPS=("$@"); [ $# -gt 0 ] || STEPS=(format docs analyse native-clang mingw-release package)
passed=0 failed=0 failures=()
bed=down

build_preset() {
  local preset=$1; shift
  cmake --preset "$preset" && cmake --build --preset "$preset" -j "$JOBS" "$@"
}

# Adds a CTest summary's figures to the totals.
count_tests() {
  local summary
  summary=$(grep -E '% tests passed, [0-9]+ tests failed out of [0-9]+' "$1" | tail -1) || return 0
  local bad all
  bad=$(sed -E 's/.* ([0-9]+) tests failed out of.*/\1/' <<< "$summary")
  all=$(sed -E 's/.* out of ([0-9]+).*/\1/' <<< "$summary")
  passed=$((passed + all - bad)) failed=$((failed + bad))
}

# A bed that was up before stays up.
start_bed() {
  [ $bed = down ] || return 0
  "$ROOT/scripts/bed.sh" up "$BED" | tee "$LOGS/bed.log"
  if grep -q 'already up' "$LOGS/bed.log"; then bed=borrowed; else bed=ours; fi
}

end_bed() {
  [ $bed != ours ] || "$ROOT/scripts/bed.sh" down "$BED" > /dev/null 2>&1 || true
}
trap end_bed EXIT

step_format() { "$ROOT/scripts/format.sh" --check; }
step_docs() { "$ROOT/scripts/check_docs.sh"; }
step_analyse() { "$ROOT/scripts/analyse.sh"; }
step_native() { build_preset native && ctest --preset native -j "$JOBS"; }
step_native-clang() { build_preset native-clang && ctest --preset native-clang -j "$JOBS"; }
step_mingw-release() { build_preset mingw-release && run_windows_tests mingw-release; }
# The tests of portable code once more, as Windows code that traps on undefined behaviour.
step_mingw-debug() {
  build_preset mingw-debug --target nivral nivral_core_tests &&
    run_windows_tests mingw-debug --label-regex core
}
step_package() {
  "$ROOT/scripts/check_csharp.sh" && "$ROOT/scripts/package.sh" &&
    ( . "$BED/env.sh"; "$ROOT/scripts/check_package.sh" )
}

run_windows_tests() {
  local preset=$1; shift
  ( . "$BED/env.sh"; ctest --preset "$preset" -j "$JOBS" --timeout 300 "$@" )
}

run_step() {
  local step=$1 start=$SECONDS log=$LOGS/$1.log
  case $step in mingw-release|mingw-debug|package) start_bed ;; esac
  printf '== %-14s ' "$step"
  if "step_$step" > "$log" 2>&1; then
    echo "passed in $((SECONDS - start)) s"
  else
    echo "FAILED after $((SECONDS - start)) s; the end of ${log#"$ROOT"/}:"
    tail -n 60 "$log"
    failures+=("$step")
  fi
  case $step in native*|mingw*) count_tests "$log" ;; esac
}

for step in "${STEPS[@]}"; do
  declare -F "step_$step" > /dev/null || die "there is no step $step"
done
mkdir -p "$LOGS"
"$ROOT/scripts/setup.sh"
for step in "${STEPS[@]}"; do run_step "$step"; done

say "steps: $((${#STEPS[@]} - ${#failures[@]})) passed, ${#failures[@]} failed${failures:+ (${failures[*]})};" \
  "$SECONDS s in all"
echo "$passed passed, $failed failed"
[ ${#failures[@]} = 0 ]
