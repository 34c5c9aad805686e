#!/bin/bash
# Everything that must hold before a change goes in, from nothing: sets the machine up, checks format and
# documents, analyses, builds for both systems (with Clang here, with GCC for Windows), and runs all tests.
# Each step's output is kept in build/test/; the steps go on after a failure, and the exit code is 0 only when
# all of them passed. Steps that use devices take turns, and wait most of their time; the others take turns
# beside them.
#   test.sh            the default steps: format shell layers docs analyse native-clang threads
#                      mingw-release package
#   test.sh <step>...  some of them, what they cover in another build (native mingw-debug mingw-clang msvc),
#                      reproducible, or a long campaign: soak fuzz
. "$(dirname "$0")/common.sh"
cd "$ROOT"
LOGS=$ROOT/build/test
BED=$ROOT/build/bed
DEFAULT_STEPS=(format shell layers docs analyse native-clang threads mingw-release package)
STEPS=("$@"); [ $# -gt 0 ] || STEPS=("${DEFAULT_STEPS[@]}")

build_preset() {
  local preset=$1; shift
  cmake --preset "$preset" && cmake --build --preset "$preset" -j "$JOBS" "$@"
}

step_format() { "$ROOT/scripts/format.sh" --check; }
step_shell() {
  local scripts
  mapfile -t scripts < <(git ls-files '*.sh' .ci/run)
  shellcheck "${scripts[@]}"
}
step_layers() { "$ROOT/scripts/check_layers.sh"; }
# Steps that make build/reference and build/snippets do not meet there.
alone() { flock -o "$LOGS/documents.lock" "$@"; }
step_docs() { alone "$ROOT/scripts/check_docs.sh" && "$ROOT/scripts/test_share.sh"; }
step_analyse() { "$ROOT/scripts/analyse.sh"; }
step_native() { build_preset native && ctest --preset native -j "$JOBS"; }
step_native-clang() { build_preset native-clang && ctest --preset native-clang -j "$JOBS"; }
step_mingw-release() { build_preset mingw-release && run_windows_tests mingw-release; }
# Portable code that threads share, under the thread sanitiser.
step_threads() {
  build_preset native-threads --target nivral_thread_tests && ctest --preset native-threads -j "$JOBS"
}
# The DLL, its tests and the player made by the second compiler.
step_mingw-clang() { build_preset mingw-clang-release && run_windows_tests mingw-clang-release; }
step_msvc() { "$ROOT/scripts/check_msvc.sh"; }
# The tests of portable code once more, as Windows code that traps on undefined behaviour.
step_mingw-debug() {
  build_preset mingw-debug --target nivral nivral_core_tests &&
    run_windows_tests mingw-debug --label-regex core
}
step_package() {
  "$ROOT/scripts/check_csharp.sh" && alone "$ROOT/scripts/package.sh" &&
    alone "$ROOT/scripts/check_package.sh"
}

step_reproducible() { alone "$ROOT/scripts/package.sh" && "$ROOT/scripts/check_reproducible.sh"; }

# run_fuzzer <name>: what it keeps and what it finds stay in build/fuzz for the next run.
run_fuzzer() {
  mkdir -p "build/fuzz/$1"
  "build/native-clang/bin/$1" -max_total_time="${NIVRAL_FUZZ_SECONDS:-600}" -timeout=25 -verbosity=0 \
    -print_final_stats=1 -artifact_prefix="build/fuzz/$1-" "build/fuzz/$1" > "build/fuzz/$1.log" 2>&1 ||
    { tail -n 40 "build/fuzz/$1.log"; return 1; }
  echo "$1: $(sed -n 's/^stat::number_of_executed_units: *//p' "build/fuzz/$1.log") inputs"
}

# Each fuzzer for NIVRAL_FUZZ_SECONDS, ten minutes by default.
step_fuzz() {
  local name failed=0
  build_preset native-clang --target nivral_fuzzers || return
  while read -r name; do
    while [ "$(jobs -rp | wc -l)" -ge "$JOBS" ]; do wait -n || failed=1; done
    run_fuzzer "$name" &
  done < <(find build/native-clang/bin -name '*_fuzz' -printf '%f\n' | sort)
  while [ -n "$(jobs -p)" ]; do wait -n || failed=1; done
  [ $failed = 0 ]
}

# The suites named ...Soak on each backend, with NIVRAL_SOAK_CYCLES times open and close and
# NIVRAL_SOAK_SECONDS of NIVRAL_SOAK_PANES panes, and sound's among its tests.
step_soak() {
  build_preset mingw-release
  export NIVRAL_SOAK_CYCLES=${NIVRAL_SOAK_CYCLES:-1000} NIVRAL_SOAK_SECONDS=${NIVRAL_SOAK_SECONDS:-60}
  export NIVRAL_SOAK_PANES=${NIVRAL_SOAK_PANES:-16}
  run_windows_tests mingw-release --verbose --timeout 14400 --tests-regex '^(soak_|audio_test)'
}

run_windows_tests() {
  local preset=$1; shift
  wait "$second_bed" && export NIVRAL_SECOND_BED=$BED-2
  ctest --preset "$preset" -j "$JOBS" --timeout 600 "$@"
}

# The step's line comes at its end, whole, for others may print between.
run_step() {
  local step=$1 start=$SECONDS log=$LOGS/$1.log
  rm -f "$LOGS/$step.passed"
  if "step_$step" > "$log" 2>&1; then
    touch "$LOGS/$step.passed"
    printf '== %-14s passed in %d s\n' "$step" $((SECONDS - start))
  else
    printf '== %-14s FAILED after %d s; the end of %s:\n%s\n' "$step" $((SECONDS - start)) "${log#"$ROOT"/}" \
      "$(tail -n 60 "$log")"
  fi
}

end_all() {
  kill -- "-$lane" || true
  "$ROOT/scripts/bed.sh" down "$BED-2" || true
  end_bed
} > /dev/null 2>&1

run_steps() {
  local step
  for step; do run_step "$step"; done
}

# Sets passed and failed to the sums of the steps' CTest summaries.
count_tests() {
  local bad all
  passed=0 failed=0
  while read -r bad all; do
    passed=$((passed + all - bad)) failed=$((failed + bad))
  done < <(cd "$LOGS" &&
    sed -nE 's/.*% tests passed, ([0-9]+) tests failed out of ([0-9]+)$/\1 \2/p' "${STEPS[@]/%/.log}")
}

beside=() on_devices=()
for step in "${STEPS[@]}"; do
  declare -F "step_$step" > /dev/null || die "there is no step $step"
  case $step in
    mingw-*|soak|package|reproducible) on_devices+=("$step") ;;
    *) beside+=("$step") ;;
  esac
done
mkdir -p "$LOGS"
"$ROOT/scripts/setup.sh"
if [ ${#on_devices[@]} = 0 ]; then
  run_steps "${beside[@]}"
else
  set -m  # so that it has a process group, which ends with this script
  ( renice -n 5 "$BASHPID" > /dev/null; run_steps "${beside[@]}" ) < /dev/null & lane=$!
  set +m
  use_bed "$BED" end_all
  "$ROOT/scripts/bed.sh" second "$BED-2" > "$LOGS/bed.log" 2>&1 & second_bed=$!
  run_steps "${on_devices[@]}"
  renice -n 0 -g "$lane" > /dev/null 2>&1 || true
  wait
fi

failures=()
for step in "${STEPS[@]}"; do [ -e "$LOGS/$step.passed" ] || failures+=("$step"); done
count_tests
say "steps: $((${#STEPS[@]} - ${#failures[@]})) passed," \
  "${#failures[@]} failed${failures:+ (${failures[*]})};" \
  "$SECONDS s in all"
echo "$passed passed, $failed failed"
[ ${#failures[@]} = 0 ]
