# Folders have the mode of whoever makes the package (umask); in the package everybody may enter them.
file(CHMOD_RECURSE ${CPACK_TEMPORARY_DIRECTORY}
  DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
