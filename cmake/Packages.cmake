# What "cpack" makes, run in the folder of a build: a package of Debian and of the distributions that come from it.
find_program(BRENVALE_DPKG dpkg)
set(CPACK_GENERATOR TGZ)
if(BRENVALE_DPKG)
  set(CPACK_GENERATOR DEB)
endif()
set(CPACK_PACKAGE_NAME brenvale)
set(CPACK_PACKAGE_VENDOR "The Brenvale developers")
set(CPACK_PACKAGE_CONTACT "The Brenvale developers <maintainers@brenvale.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "desktop companion for an Android phone")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/PackageFolders.cmake)

# The package of each release has a version of its own, so that an upgrade of the system brings the one for it; it is
# lower than that of a distribution.
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
if(EXISTS /etc/os-release)
  file(READ /etc/os-release system)
  if(system MATCHES "(^|\n)VERSION_ID=\"?([0-9.]+)")
    set(number ${CMAKE_MATCH_2})
    if(system MATCHES "(^|\n)ID=\"?([a-z]+)")
      string(REGEX REPLACE "^debian$" "deb" name ${CMAKE_MATCH_2})
      string(APPEND CPACK_DEBIAN_PACKAGE_RELEASE "~${name}${number}")
    endif()
  endif()
endif()
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Brenvale connects an Android phone to the desktop. It runs in the background,
listens on the local network, and the phone's app connects to it: no cloud,
no account, no pairing.

Notifications, messages and calls of the phone appear on the desktop and are
answered there, clipboard text and files go both ways, and the phone types,
points, plays and pauses.

Whoever can reach its port counts as the phone: use it in a network whose
members you trust.")

# The libraries are found by what the programs are linked to. What they load when they run is named here: the modules
# of the window, and the plugin that draws its pictures, which newer releases have in a package of its own.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(needed
  qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript
  qml6-module-qtquick qml6-module-qtquick-templates qml6-module-qtquick-window
  "qt6-svg-plugins | libqt6svg6 (<< 6.7.2-5~)")
list(JOIN needed ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
# Without these it runs, but lacks: Wayland, symbols that the desktop's own icons have not, the volume, the bus by which
# programs find each other, notifications, the actions of the entry in the menu.
set(wanted
  qt6-wayland breeze-icon-theme libpulse0 "default-dbus-session-bus | dbus-session-bus" notification-daemon libglib2.0-bin)
list(JOIN wanted ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS xdg-desktop-portal)

# The list of the package's changes, which nothing but the package installs.
install(CODE "set(release ${CPACK_DEBIAN_PACKAGE_RELEASE})" COMPONENT debian EXCLUDE_FROM_ALL)
brenvale_install_configured(data/debian/changelog.Debian.in ${CMAKE_INSTALL_DOCDIR} COMPONENT debian EXCLUDE_FROM_ALL)
set(CPACK_INSTALL_CMAKE_PROJECTS "${CMAKE_BINARY_DIR};brenvale;ALL;/;${CMAKE_BINARY_DIR};brenvale;debian;/")
include(CPack)
