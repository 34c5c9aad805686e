#!/bin/bash
# Makes build/package/libnivral-<version>-win64.zip, all that a client's developer needs, beside it the
# archive with the DLL's debug symbols, and SHA256SUMS. Fails when they do not hold what
# cmake/package_content.txt says. The same commit gives the same bytes; see check_reproducible.sh.
. "$(dirname "$0")/common.sh"
cd "$ROOT"
OUT=$ROOT/build/package
BUILD=$ROOT/build/mingw-release
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
export SOURCE_DATE_EPOCH

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

# pack <component> <name>: what is installed of the component has to be what standard input names.
pack() {
  local component=$1 name=$2 stage=$OUT/stage/$2
  quietly "build/install-$component.log" "installing" \
    cmake --install "$BUILD" --component "$component" --prefix "$stage"
  diff <(sort) <(cd "$stage" && find . -type f -printf '%P\n' | sort) ||
    die "$name does not hold what it should (< missing, > extra)"
  scripts/zip_folder.py "$stage" "$OUT/$name.zip"
}

scripts/setup.sh
scripts/reference.sh
quietly build/configure-package.log "configuring" cmake --preset mingw-release
quietly build/package.log "building" \
  cmake --build --preset mingw-release -j "$JOBS" --target nivral nivral_player
rm -rf "$OUT"
mkdir -p "$OUT"
NAME=libnivral-$(sed -n 's/^CMAKE_PROJECT_VERSION:.*=//p' "$BUILD/CMakeCache.txt")-win64
listed_files | pack kit "$NAME"
echo bin/libnivral.dll.debug | pack symbols "$NAME-symbols"
rm -rf "$OUT/stage"
( cd "$OUT" && sha256sum -- *.zip > SHA256SUMS )
say "package: $(cd "$OUT" && du -h -- *.zip | xargs)"
