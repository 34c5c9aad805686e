#!/bin/bash
# Makes the reference of the C interface in build/reference/html from the header. Fails when a declaration, a
# parameter or a result has no description.
. "$(dirname "$0")/common.sh"
cd "$ROOT"
rm -rf build/reference
doxygen
say "reference: build/reference/html/index.html"
