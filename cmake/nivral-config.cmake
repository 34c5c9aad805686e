# find_package(nivral CONFIG): the target nivral::nivral, which is the DLL with the import library that suits
# the compiler, and nivral_copy_dlls(target).
if(NOT WIN32 OR NOT CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(nivral_FOUND FALSE)
  set(nivral_NOT_FOUND_MESSAGE "libnivral is a library for 64-bit Windows")
  return()
endif()

# lib/cmake/nivral in the package, share/nivral where vcpkg installed it.
foreach(up ../../.. ../..)
  get_filename_component(nivral_ROOT_DIR "${CMAKE_CURRENT_LIST_DIR}/${up}" ABSOLUTE)
  if(EXISTS "${nivral_ROOT_DIR}/include/nivral/nivral.h")
    break()
  endif()
endforeach()

if(NOT TARGET nivral::nivral)
  add_library(nivral::nivral SHARED IMPORTED)
  set_target_properties(nivral::nivral PROPERTIES
    INTERFACE_INCLUDE_DIRECTORIES "${nivral_ROOT_DIR}/include"
    IMPORTED_LOCATION "${nivral_ROOT_DIR}/bin/libnivral.dll")
  if(MINGW)
    set_property(TARGET nivral::nivral PROPERTY IMPORTED_IMPLIB "${nivral_ROOT_DIR}/lib/libnivral.dll.a")
  else()
    set_property(TARGET nivral::nivral PROPERTY IMPORTED_IMPLIB "${nivral_ROOT_DIR}/lib/nivral.lib")
  endif()
endif()
set(nivral_DLLS "${nivral_ROOT_DIR}/bin/libnivral.dll" "${nivral_ROOT_DIR}/bin/SDL2.dll"
                "${nivral_ROOT_DIR}/bin/SDL2_ttf.dll")

# Puts the three DLLs that a program needs beside the program `target`.
function(nivral_copy_dlls target)
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND "${CMAKE_COMMAND}" -E copy_if_different ${nivral_DLLS} "$<TARGET_FILE_DIR:${target}>" VERBATIM)
endfunction()
