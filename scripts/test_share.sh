#!/bin/bash
# How much of the repository is tests: the non-blank lines under tests/ against those of src, include,
# examples and bench. Fails above the share that docs/development.md allows.
. "$(dirname "$0")/common.sh"
cd "$ROOT"
ALLOWED=38
lines() {
  git ls-files -z --cached --others --exclude-standard -- "$@" | xargs -0 cat | grep -c '[^[:space:]]'
}
tests=$(lines tests)
code=$(lines src include examples bench)
share=$((1000 * tests / code))
echo "tests $tests lines, code $code lines: $((share / 10)).$((share % 10)) %, allowed $ALLOWED %"
[ $((100 * tests)) -le $((ALLOWED * code)) ]
