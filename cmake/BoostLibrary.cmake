# Asio and Beast, compiled once instead of in every file that includes them.
find_package(Threads REQUIRED)
find_package(Boost 1.81 REQUIRED)
add_library(brenvale-boost STATIC ${CMAKE_CURRENT_LIST_DIR}/BoostSources.cpp)
target_link_libraries(brenvale-boost PUBLIC Boost::headers Threads::Threads)
target_compile_definitions(brenvale-boost PUBLIC
  BOOST_ASIO_SEPARATE_COMPILATION BOOST_BEAST_SEPARATE_COMPILATION
  BOOST_ASIO_NO_DEPRECATED BOOST_ASIO_DISABLE_VISIBILITY)
