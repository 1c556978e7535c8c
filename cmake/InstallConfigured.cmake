# Installs `template` as a file of `destination`, without its ending ".in". It is written now, as the prefix is known no
# sooner: "cmake --install --prefix" and the makers of packages have prefixes of their own. @bindir@, @docdir@ and
# @unitdir@ in it become whole paths. Pages of the manual and lists of changes are compressed.
foreach(folder IN ITEMS bindir docdir unitdir)
  cmake_path(ABSOLUTE_PATH ${folder} BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}" NORMALIZE)
endforeach()
string(RANDOM LENGTH 16 run) # others may install from the same build at the same time
set(run "${work_folder}/install-${run}")
cmake_path(GET template STEM LAST_ONLY name)
configure_file("${template}" "${run}/${name}" @ONLY)
if(gzip AND name MATCHES "\\.[1-8]$|^changelog")
  execute_process(COMMAND ${gzip} --best --no-name "${run}/${name}" COMMAND_ERROR_IS_FATAL ANY)
  string(APPEND name ".gz")
endif()
cmake_path(ABSOLUTE_PATH destination BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}" NORMALIZE)
file(INSTALL "${run}/${name}" DESTINATION "${destination}")
file(REMOVE_RECURSE "${run}")
