# What "cmake --install" puts where, and the Debian package of it. Included where all programs are
# known.
include(GNUInstallDirs)

set(PACKWISE_PAGE "https://packwise.example" CACHE STRING
  "The address under which this folder's docs/ can be seen")

get_property(programs GLOBAL PROPERTY PACKWISE_PROGRAMS)
install(TARGETS ${programs})
add_custom_target(packwise_programs DEPENDS ${programs})

set(share ${CMAKE_INSTALL_DATAROOTDIR})
foreach(size 16 24 32 48 64 128 256)
  install(FILES data/icons/packwise-${size}.png
    DESTINATION ${share}/icons/hicolor/${size}x${size}/apps RENAME packwise.png)
endforeach()
install(FILES data/icons/packwise.svg DESTINATION ${share}/icons/hicolor/scalable/apps)

list(TRANSFORM programs PREPEND "<binary>" OUTPUT_VARIABLE BINARIES)
list(TRANSFORM BINARIES APPEND "</binary>")
list(JOIN BINARIES "\n    " BINARIES)
file(STRINGS CHANGELOG.md newest LIMIT_COUNT 1 REGEX "^## \\[[0-9.]+\\] - ")
string(REGEX REPLACE ".* - " "" RELEASE_DATE "${newest}")
configure_file(data/desktop/packwise.metainfo.xml.in packwise.metainfo.xml @ONLY)
install(FILES data/desktop/packwise.desktop DESTINATION ${share}/applications)
install(FILES ${CMAKE_BINARY_DIR}/packwise.metainfo.xml DESTINATION ${share}/metainfo)

foreach(program ${programs})
  install(FILES data/packwise.bash-completion
    DESTINATION ${share}/bash-completion/completions RENAME ${program})
endforeach()

set(docs ${share}/doc/packwise)
install(FILES README.md CHANGELOG.md DESTINATION ${docs})
install(FILES LICENSE DESTINATION ${docs} RENAME copyright)
install(DIRECTORY docs DESTINATION ${docs})
install(DIRECTORY data/ DESTINATION ${docs}/data FILES_MATCHING PATTERN "*.set" PATTERN "README.md"
  PATTERN "man" EXCLUDE PATTERN "icons" EXCLUDE PATTERN "desktop" EXCLUDE PATTERN "debian" EXCLUDE)

# Nobody's address: Debian's packages must have one.
set(contact "the Packwise developers <developers@packwise.invalid>")
# These depend on the prefix, which is known only when it is installed.
install(CODE "set(data ${CMAKE_CURRENT_SOURCE_DIR}/data)
set(made ${CMAKE_BINARY_DIR}/installed)
set(manFolder \"${CMAKE_INSTALL_MANDIR}\")
set(bin \"${CMAKE_INSTALL_BINDIR}\")
set(sysconf \"${CMAKE_INSTALL_SYSCONFDIR}\")
set(contact \"${contact}\")")
install(SCRIPT cmake/InstallScript.cmake)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME packwise)
set(CPACK_PACKAGE_VENDOR "the Packwise developers")
set(CPACK_PACKAGE_CONTACT "${contact}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "host and join live drafts of Magic: the Gathering")
set(CPACK_PACKAGE_DESCRIPTION
"Packwise hosts and joins live drafts of the collectible card game Magic: the
Gathering, for up to eight friends at their own desktops. One copy is the
server, the others join over TCP; the host may play too. It deals packs from
card data files, runs Booster and Rochester drafts of three to six packs,
carries the chat and opens a deck builder when the draft is over.
.
Beside the windows come a host without a window, players for the empty seats
and a program that makes card data.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA
  ${CMAKE_CURRENT_SOURCE_DIR}/data/debian/conffiles
  ${CMAKE_CURRENT_SOURCE_DIR}/data/debian/postinst
  ${CMAKE_CURRENT_SOURCE_DIR}/data/debian/prerm
  ${CMAKE_CURRENT_SOURCE_DIR}/data/debian/postrm)
include(CPack)
