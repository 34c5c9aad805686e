#!/bin/bash
# Reads all sources as Clang does for Visual Studio's ABI and extensions, against the headers that are here,
# which are mingw-w64's and GCC's: errors in our files fail. What this cannot see is in docs/development.md.
. "$(dirname "$0")/common.sh"
cd "$ROOT"
WORK=$ROOT/build/msvc
mkdir -p "$WORK"
read -r -a library <<< "$(echo /usr/lib/gcc/x86_64-w64-mingw32/*-posix/include/c++)"
# Of mingw's headers two macros stand in the way.
cat > "$WORK/first.h" <<'EOT'
#include <_mingw.h>
#undef __MINGW_IMPORT
#define __MINGW_IMPORT extern __declspec(dllimport)
#define _Scanf_format_string_impl_
EOT
# GCC's library wants to hear of GCC; our sources ask for _MSC_VER first.
OPTIONS=(--target=x86_64-pc-windows-msvc -fms-compatibility-version=19.37 -fgnuc-version=12.2 -std=gnu++20
  -fsyntax-only -ferror-limit=0 -w -include "$WORK/first.h" -nostdinc++
  -isystem "${library[0]}" -isystem "${library[0]}/x86_64-w64-mingw32"
  -idirafter /usr/x86_64-w64-mingw32/include
  -isystem "$NIVRAL_DEPS/prefix/include" -isystem "$NIVRAL_DEPS/prefix/include/SDL2"
  -isystem "$NIVRAL_DEPS/player/include"
  -I src -I include -I examples
  -DWIN32_LEAN_AND_MEAN -DNOMINMAX -D_WIN32_WINNT=0x0601 -DWINVER=0x0601 -DNIVRAL_STATIC -DSDL_MAIN_HANDLED)
export LC_ALL=C

# Folder by folder where analyse.sh does so, too: most of the time goes into headers.
quietly "$WORK/configure.log" "configuring" cmake --preset mingw-clang
mapfile -t units < <(scripts/analysis_units.py build/mingw-clang "$WORK"; git ls-files "$ROOT/examples/*.cpp")
printf '%s\n' "${units[@]}" |
  xargs -d '\n' -P "$JOBS" -n 1 clang++ "${OPTIONS[@]}" > "$WORK/all.log" 2>&1 || true
if grep -E "^($ROOT/)?(src|include|examples)/[^:]*:[0-9]+:[0-9]+: (fatal )?error:" "$WORK/all.log"; then
  die "Visual Studio's compiler would refuse the lines above"
fi
elsewhere=$(grep -oE '^/[^:]*:[0-9]+:[0-9]+: (fatal )?error:.*' "$WORK/all.log" | sort -u | wc -l)
say "msvc: ${#units[@]} units without an error of their own, $elsewhere in system headers passed over"
