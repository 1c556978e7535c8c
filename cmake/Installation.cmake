# What stands on a system where Brenvale is installed: the programs, how desktops find them, and what tells of them.
# Packages are made of the same (Packages.cmake).
include(GNUInstallDirs)
find_program(BRENVALE_GZIP gzip)

# brenvale_install_configured(TEMPLATE DESTINATION [COMPONENT ...]): installs a file that names paths of the installation.
function(brenvale_install_configured template destination)
  install(CODE "set(template \"${PROJECT_SOURCE_DIR}/${template}\")\nset(destination \"${destination}\")" ${ARGN})
  install(SCRIPT ${PROJECT_SOURCE_DIR}/cmake/InstallConfigured.cmake ${ARGN})
endfunction()
install(CODE "
set(bindir \"${CMAKE_INSTALL_BINDIR}\")
set(docdir \"${CMAKE_INSTALL_DOCDIR}\")
set(unitdir \"lib/systemd/user\")
set(version \"${PROJECT_VERSION}\")
set(homepage \"${PROJECT_HOMEPAGE_URL}\")
set(work_folder \"${CMAKE_BINARY_DIR}\")
set(gzip \"${BRENVALE_GZIP}\")" ALL_COMPONENTS)

install(TARGETS brenvale brenvale-phone RUNTIME)
install(FILES data/org.brenvale.Brenvale.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES data/icons/org.brenvale.Brenvale.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES data/icons/org.brenvale.Brenvale-symbolic.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/symbolic/apps)
brenvale_install_configured(data/org.brenvale.Brenvale.service.in ${CMAKE_INSTALL_DATADIR}/dbus-1/services)
brenvale_install_configured(data/org.brenvale.Brenvale.metainfo.xml.in ${CMAKE_INSTALL_DATADIR}/metainfo)
brenvale_install_configured(data/brenvale.service.in lib/systemd/user) # "lib" on all kinds of machine
brenvale_install_configured(data/man/brenvale.1.in ${CMAKE_INSTALL_MANDIR}/man1)
brenvale_install_configured(data/man/brenvale-phone.1.in ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES docs/linux.md docs/protocol.md docs/security.md data/debian/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})

# "Send to Android" in file managers, each by what it reads. Those that read none of these load a library
# (src/platform/linux/filemanagers).
install(FILES data/filemanagers/org.brenvale.Brenvale.nemo_action DESTINATION ${CMAKE_INSTALL_DATADIR}/nemo/actions)
install(FILES data/filemanagers/thunar.desktop
  DESTINATION ${CMAKE_INSTALL_DATADIR}/Thunar/sendto RENAME org.brenvale.Brenvale.desktop)
install(FILES data/filemanagers/dolphin.desktop
  DESTINATION ${CMAKE_INSTALL_DATADIR}/kio/servicemenus RENAME org.brenvale.Brenvale.desktop)
