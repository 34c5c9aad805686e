# What the package holds; scripts/package.sh installs it into a folder and packs that. The component "symbols"
# is an archive of its own.
include(CMakePackageConfigHelpers)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME kit)

install(TARGETS nivral nivral_player RUNTIME DESTINATION bin ARCHIVE DESTINATION lib)
install(DIRECTORY "${PLAYER_DEPS}/bin/" DESTINATION bin FILES_MATCHING PATTERN "*.dll")
install(FILES "$<TARGET_FILE:SDL2::SDL2>" "$<TARGET_FILE:SDL2_ttf::SDL2_ttf>" DESTINATION bin)
install(DIRECTORY include/nivral DESTINATION include)
install(DIRECTORY examples DESTINATION .)
install(DIRECTORY build/reference/html/ DESTINATION reference)
install(FILES CHANGELOG.md LICENSE THIRD-PARTY.md DESTINATION .)
install(FILES cmake/package_readme.md DESTINATION . RENAME README.md)

# Documents for developers of the library stay out.
file(STRINGS cmake/package_content.txt documents REGEX "^docs/")
foreach(document ${documents})
  get_filename_component(folder "${document}" DIRECTORY)
  install(FILES "${document}" DESTINATION "${folder}")
endforeach()

write_basic_package_version_file("${PROJECT_BINARY_DIR}/nivral-config-version.cmake"
                                 COMPATIBILITY SameMinorVersion)
install(FILES cmake/nivral-config.cmake "${PROJECT_BINARY_DIR}/nivral-config-version.cmake"
        DESTINATION lib/cmake/nivral)
configure_file(cmake/nivral.pc.in nivral.pc @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/nivral.pc" DESTINATION lib/pkgconfig)
configure_file(cmake/vcpkg/vcpkg.json.in vcpkg.json @ONLY)
install(FILES cmake/vcpkg/portfile.cmake "${PROJECT_BINARY_DIR}/vcpkg.json" DESTINATION vcpkg/nivral)

if(MINGW)
  target_link_options(nivral_player PRIVATE "$<$<CONFIG:Release>:-s>")
  install(FILES "${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/nivral.lib" DESTINATION lib)
  install(FILES "$<TARGET_FILE:nivral>.debug" DESTINATION bin COMPONENT symbols)
  foreach(library SDL2 SDL2_ttf FreeType CLI11)
    install(FILES "${nivral_deps}/prefix/share/licenses/${library}.txt" DESTINATION licenses)
  endforeach()
  install(FILES "${PLAYER_DEPS}/share/licenses/FFmpeg.txt" DESTINATION licenses)
  # Debian's summaries: of the code by others inside SDL2, and of the run-time linked into every binary.
  install(FILES /usr/share/doc/libsdl2-2.0-0/copyright DESTINATION licenses RENAME SDL2-parts.txt)
  install(FILES /usr/share/doc/mingw-w64-x86-64-dev/copyright DESTINATION licenses RENAME mingw-w64.txt)
endif()
