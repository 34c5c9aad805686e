# Cross-compiles to 64-bit Windows with the mingw-w64 GCC (POSIX threads).
# Libraries built by scripts/deps.sh are found through NIVRAL_DEPS.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

if(DEFINED ENV{NIVRAL_DEPS})
  set(nivral_deps "$ENV{NIVRAL_DEPS}")
elseif(DEFINED ENV{NIVRAL_CACHE})
  set(nivral_deps "$ENV{NIVRAL_CACHE}/deps")
else()
  set(nivral_deps "$ENV{HOME}/.cache/nivral/deps")
endif()
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 "${nivral_deps}/prefix")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine64)
