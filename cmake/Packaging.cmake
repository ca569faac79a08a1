# A Debian package of an installation under /usr: scripts/package configures a build for it and
# runs CPack. Dependencies come from dpkg-shlibdeps; no maintainer scripts are needed.
set(CPACK_GENERATOR "DEB")
set(CPACK_PACKAGE_NAME "ampwell")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "Mossgate <ampwell@mossgate.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "battery indicator drawn by theme scripts, with its settings")
# The summary is the synopsis; these lines, under 80 characters, describe it.
string(JOIN "\n" CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "Ampwell draws the battery with a theme script of the user's choosing."
  "This package holds Ampwell Settings, where the theme, its colours and"
  "options are chosen with live previews and kept as profiles; the ampwell"
  "command for scripts; and ampwell-indicator, which shows the battery in the"
  "desktop's tray.")
set(CPACK_DEBIAN_FILE_NAME "DEB-DEFAULT")
set(CPACK_DEBIAN_PACKAGE_SECTION "utils")
set(CPACK_DEBIAN_PACKAGE_PRIORITY "optional")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The fonts theme scripts ask for by name, and the pages' own.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-liberation, fonts-inter")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "upower, power-profiles-daemon")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The autostart file lives in /etc: a file the administrator may change, kept on upgrades.
set(AMPWELL_CONFFILES "${PROJECT_BINARY_DIR}/packaging/conffiles")
file(WRITE "${AMPWELL_CONFFILES}" "${CMAKE_INSTALL_FULL_SYSCONFDIR}/xdg/autostart/ampwell-indicator.desktop\n")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA "${AMPWELL_CONFFILES}")

# Debian wants the copyright and a compressed changelog with every package.
find_program(AMPWELL_GZIP gzip)
if(AMPWELL_GZIP)
  set(changelog "${PROJECT_BINARY_DIR}/packaging/changelog.gz")
  add_custom_command(OUTPUT "${changelog}"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${PROJECT_BINARY_DIR}/packaging"
    COMMAND "${AMPWELL_GZIP}" -9n -c "${PROJECT_SOURCE_DIR}/desktop/debian/changelog" > "${changelog}"
    DEPENDS "${PROJECT_SOURCE_DIR}/desktop/debian/changelog")
  add_custom_target(ampwell_changelog ALL DEPENDS "${changelog}")
  install(FILES "${changelog}" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/ampwell")
endif()
install(FILES "${PROJECT_SOURCE_DIR}/desktop/debian/copyright" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/ampwell")
include(CPack)
