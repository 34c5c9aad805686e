# What the package holds, for CPack; scripts/package.sh makes it. The component "symbols" is its own archive.
include(CMakePackageConfigHelpers)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME kit)

install(TARGETS nivral nivral_player RUNTIME DESTINATION bin ARCHIVE DESTINATION lib)
install(FILES "$<TARGET_FILE:SDL2::SDL2>" "$<TARGET_FILE:SDL2_ttf::SDL2_ttf>" DESTINATION bin)
install(DIRECTORY include/nivral DESTINATION include)
install(DIRECTORY docs examples DESTINATION .)
install(DIRECTORY build/reference/html/ DESTINATION reference)
install(FILES LICENSE DESTINATION .)
install(FILES cmake/package_readme.md DESTINATION . RENAME README.md)

write_basic_package_version_file("${PROJECT_BINARY_DIR}/nivral-config-version.cmake"
                                 COMPATIBILITY SameMinorVersion)
install(FILES cmake/nivral-config.cmake "${PROJECT_BINARY_DIR}/nivral-config-version.cmake"
        DESTINATION lib/cmake/nivral)

if(MINGW)
  target_link_options(nivral_player PRIVATE "$<$<CONFIG:Release>:-s>")
  install(FILES "${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/nivral.lib" DESTINATION lib)
  install(FILES "$<TARGET_FILE:nivral>.debug" DESTINATION bin COMPONENT symbols)
  foreach(library SDL2 SDL2_ttf FreeType)
    install(FILES "${nivral_deps}/prefix/share/licenses/${library}.txt" DESTINATION licenses)
  endforeach()
  # Debian's summaries: of the code by others inside SDL2, and of the run-time linked into every binary.
  install(FILES /usr/share/doc/libsdl2-2.0-0/copyright DESTINATION licenses RENAME SDL2-parts.txt)
  install(FILES /usr/share/doc/mingw-w64-x86-64-dev/copyright DESTINATION licenses RENAME mingw-w64.txt)
endif()

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME "libnivral-${PROJECT_VERSION}-win64")
set(CPACK_PACKAGE_VENDOR "The libnivral authors")
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL kit symbols)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_ARCHIVE_KIT_FILE_NAME "${CPACK_PACKAGE_FILE_NAME}")
set(CPACK_ARCHIVE_SYMBOLS_FILE_NAME "${CPACK_PACKAGE_FILE_NAME}-symbols")
include(CPack)
