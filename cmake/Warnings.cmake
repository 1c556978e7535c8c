# Linked by our own targets only; the libraries we use are system headers.
add_library(brenvale-warnings INTERFACE)
target_compile_options(brenvale-warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Wnon-virtual-dtor
  -Wno-missing-field-initializers) # designated initialisers leave the rest at its default on purpose
if(BRENVALE_WARNINGS_AS_ERRORS)
  target_compile_options(brenvale-warnings INTERFACE -Werror)
endif()
