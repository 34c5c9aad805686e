# The package as an overlay port: vcpkg install nivral --overlay-ports=<package>/vcpkg
# Installs what was built; the same DLL serves debug and release programs.
get_filename_component(kit "${CMAKE_CURRENT_LIST_DIR}/../.." ABSOLUTE)
set(share "${CURRENT_PACKAGES_DIR}/share/nivral")
set(dlls "${kit}/bin/libnivral.dll")
if("bundled-sdl" IN_LIST FEATURES)
  list(APPEND dlls "${kit}/bin/SDL2.dll" "${kit}/bin/SDL2_ttf.dll")
endif()

file(INSTALL "${kit}/include/nivral" DESTINATION "${CURRENT_PACKAGES_DIR}/include")
foreach(configuration "" debug/)
  file(INSTALL ${dlls} DESTINATION "${CURRENT_PACKAGES_DIR}/${configuration}bin")
  file(INSTALL "${kit}/lib/nivral.lib" "${kit}/lib/libnivral.dll.a"
       DESTINATION "${CURRENT_PACKAGES_DIR}/${configuration}lib")
endforeach()
file(INSTALL "${kit}/lib/cmake/nivral/" DESTINATION "${share}")
file(INSTALL "${kit}/licenses" "${kit}/THIRD-PARTY.md" DESTINATION "${share}")
file(INSTALL "${kit}/LICENSE" DESTINATION "${share}" RENAME copyright)
