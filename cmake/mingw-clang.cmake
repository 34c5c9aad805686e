# The second compiler for Windows code: Clang and lld with the headers and libraries of the mingw-w64 GCC.
include("${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake")
file(GLOB gcc_folder /usr/lib/gcc/x86_64-w64-mingw32/*-posix)
list(GET gcc_folder 0 gcc_folder)
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_FLAGS_INIT
    "-isystem ${gcc_folder}/include/c++ -isystem ${gcc_folder}/include/c++/x86_64-w64-mingw32")
# Clang calls libatomic for atomic structures, which GCC loads and stores itself.
foreach(kind EXE SHARED)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld -B ${gcc_folder} -L ${gcc_folder} -lpthread -latomic")
endforeach()
# CMake's own way needs an option that lld learned later.
set(CMAKE_CXX_LINK_LIBRARY_USING_WHOLE_ARCHIVE
    "LINKER:--whole-archive" "<LINK_ITEM>" "LINKER:--no-whole-archive")
set(CMAKE_CXX_LINK_LIBRARY_USING_WHOLE_ARCHIVE_SUPPORTED TRUE)
