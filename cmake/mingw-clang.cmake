# The second compiler for Windows code: Clang with the headers of the mingw-w64 GCC. For its warnings and for
# clang-tidy; its objects do not link with that GCC's run-time, so only the static libraries are built.
include("${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake")
file(GLOB gcc_headers /usr/lib/gcc/x86_64-w64-mingw32/*-posix/include/c++)
list(GET gcc_headers 0 gcc_headers)
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_FLAGS_INIT "-isystem ${gcc_headers} -isystem ${gcc_headers}/x86_64-w64-mingw32")
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
