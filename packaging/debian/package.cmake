# The Debian package, made by "cpack" in the build folder; scripts/package does it all.
set(debian "${PROJECT_SOURCE_DIR}/packaging/debian")
tavelo_filled_in("${debian}/changelog.in" changelog.Debian)
tavelo_filled_in("${debian}/copyright.in" copyright)
tavelo_compressed("${CMAKE_CURRENT_BINARY_DIR}/changelog.Debian" changelog.Debian.gz)
tavelo_compressed("${PROJECT_SOURCE_DIR}/CHANGELOG.md" changelog.gz)
foreach(each changelog.Debian.gz changelog.gz copyright)
  install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${each}" DESTINATION "${CMAKE_INSTALL_DOCDIR}")
endforeach()
install(FILES "${debian}/lintian-overrides" DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides" RENAME tavelo)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tavelo)
set(CPACK_PACKAGE_CONTACT "${TAVELO_MAKER_NAME} <${TAVELO_MAKER_ADDRESS}>")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_VERSION "${TAVELO_DEBIAN_VERSION}")
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${TAVELO_SITE_ADDRESS}")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
file(READ "${debian}/description" description)
string(STRIP "${description}" CPACK_DEBIAN_PACKAGE_DESCRIPTION)

# The libraries that the programs name. What they load or speak to at run time:
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "at-spi2-core, ca-certificates, dbus-user-session | dbus-x11, pipewire-pulse | pulseaudio")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "notification-daemon")

# Every file in the package has the time of the source.
set(CPACK_PROJECT_CONFIG_FILE "${CMAKE_CURRENT_BINARY_DIR}/cpack-time.cmake")
file(WRITE "${CPACK_PROJECT_CONFIG_FILE}" "set(ENV{SOURCE_DATE_EPOCH} ${TAVELO_SOURCE_DATE})\n")
include(CPack)
