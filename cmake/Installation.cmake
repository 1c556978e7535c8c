# What a package holds: the program, and how desktops find it.
include(GNUInstallDirs)
install(TARGETS brenvale RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${PROJECT_SOURCE_DIR}/data/org.brenvale.Brenvale.desktop
  DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PROJECT_SOURCE_DIR}/data/icons/org.brenvale.Brenvale.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
configure_file(${PROJECT_SOURCE_DIR}/data/org.brenvale.Brenvale.service.in org.brenvale.Brenvale.service @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/org.brenvale.Brenvale.service
  DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services)
