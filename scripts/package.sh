#!/bin/bash
# Makes build/package/libnivral-<version>-win64.zip, all that a client's developer needs, and beside it the
# archive with the DLL's debug symbols. Fails when they do not hold what cmake/package_content.txt says.
. "$(dirname "$0")/common.sh"
cd "$ROOT"
OUT=$ROOT/build/package

# A folder in the list, which ends in "/", stands for every file that the tree has there; the reference is
# made.
listed_files() {
  local entry
  while read -r entry; do
    case $entry in
      reference/) find build/reference/html -type f -printf 'reference/%P\n' ;;
      */) git ls-files --cached --others --exclude-standard "$entry" ;;
      *) echo "$entry" ;;
    esac
  done < cmake/package_content.txt
}

# Without the folder that everything is in.
packed_files() { cmake -E tar tf "$1" | sed -n 's|^[^/]*/\(.*[^/]\)$|\1|p'; }

check_content() {
  diff <(sort) <(packed_files "$1" | sort) || die "$1 does not hold what it should (< missing, > extra)"
}

scripts/setup.sh
scripts/reference.sh
quietly build/configure-package.log "configuring" cmake --preset mingw-release
quietly build/package.log "building" \
  cmake --build --preset mingw-release -j "$JOBS" --target nivral nivral_player
rm -rf "$OUT"
quietly build/cpack.log "packing" cpack --config build/mingw-release/CPackConfig.cmake -B "$OUT"
rm -rf "$OUT/_CPack_Packages"
listed_files | check_content "$OUT"/libnivral-*-win64.zip
echo bin/libnivral.dll.debug | check_content "$OUT"/libnivral-*-win64-symbols.zip
say "package: $(cd "$OUT" && du -h -- *.zip | xargs)"
