# nivral_flags carries the warnings and code-generation options that every target of this project is built
# with.
add_library(nivral_flags INTERFACE)
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Without the first ccache declines whatever uses precompiled headers; with the others what was compiled in
  # one clone serves all.
  set(launcher "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros
               "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" CCACHE_NOHASHDIR=1 "${CCACHE_PROGRAM}")
  set(CMAKE_C_COMPILER_LAUNCHER "${launcher}")
  set(CMAKE_CXX_COMPILER_LAUNCHER "${launcher}")
endif()

if(MSVC)
  target_compile_options(nivral_flags INTERFACE /W4 /utf-8 /permissive- $<$<BOOL:${NIVRAL_WERROR}>:/WX>)
  target_compile_definitions(nivral_flags INTERFACE _CRT_SECURE_NO_WARNINGS)
else()
  target_compile_options(nivral_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wcast-qual -Wformat=2 -Wundef -Wvla -Wimplicit-fallthrough
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Wextra-semi>
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op>
    $<$<BOOL:${NIVRAL_WERROR}>:-Werror>
    -g -gdwarf-4)
  # The same sources give the same bytes in any folder and at any time, also where ccache makes paths
  # relative.
  file(RELATIVE_PATH to_sources "${CMAKE_BINARY_DIR}" "${PROJECT_SOURCE_DIR}")
  string(REGEX REPLACE "/$" "" to_sources "${to_sources}")
  target_compile_options(nivral_flags INTERFACE
    "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=." "-ffile-prefix-map=${to_sources}=.")
endif()

if(WIN32)
  target_compile_definitions(nivral_flags INTERFACE
    WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601 WINVER=0x0601 SDL_MAIN_HANDLED)
endif()
if(MINGW)
  target_compile_options(nivral_flags INTERFACE "-ffile-prefix-map=${nivral_deps}=deps")
  target_link_options(nivral_flags INTERFACE -static -Wl,--no-insert-timestamp)
  string(REPLACE "-O3" "-O2" CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")
  # printf of the C standard (%zu, %lld) instead of the old run-time's.
  target_compile_definitions(nivral_flags INTERFACE __USE_MINGW_ANSI_STDIO=1)
endif()

if(NIVRAL_SANITIZE)
  add_compile_options(-fsanitize=${NIVRAL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${NIVRAL_SANITIZE})
endif()
if(NIVRAL_TRAP)
  add_compile_options(-fsanitize=undefined,float-cast-overflow -fsanitize-undefined-trap-on-error
                      -fstack-protector-strong)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_link_options(-fstack-protector-strong)
endif()
