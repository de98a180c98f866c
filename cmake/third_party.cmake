# Libraries of other fields, from the system's packages. They are sources or headers alone, so that
# the Windows compiler can use the same files.
find_path(ORVEL_CLI11 CLI/CLI.hpp REQUIRED NO_CMAKE_FIND_ROOT_PATH)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/third_party)
file(CREATE_LINK ${ORVEL_CLI11}/CLI ${CMAKE_BINARY_DIR}/third_party/CLI SYMBOLIC)
add_library(orvel-cli11 INTERFACE)
target_include_directories(orvel-cli11 SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/third_party)

# Zip archives: the system's library.
add_library(orvel-zip INTERFACE)
find_library(ORVEL_ZIP zip REQUIRED)
find_path(ORVEL_ZIP_HEADERS zip.h REQUIRED)
target_link_libraries(orvel-zip INTERFACE ${ORVEL_ZIP})
target_include_directories(orvel-zip SYSTEM INTERFACE ${ORVEL_ZIP_HEADERS})

# The tests are left out where GoogleTest's sources are missing; scripts/test installs them.
find_path(ORVEL_GOOGLETEST googletest/src/gtest-all.cc
          PATHS /usr/src PATH_SUFFIXES googletest NO_CMAKE_FIND_ROOT_PATH)
if(ORVEL_GOOGLETEST)
  add_library(orvel-gtest STATIC EXCLUDE_FROM_ALL ${ORVEL_GOOGLETEST}/googletest/src/gtest-all.cc)
  target_include_directories(orvel-gtest SYSTEM PUBLIC ${ORVEL_GOOGLETEST}/googletest/include
                             PRIVATE ${ORVEL_GOOGLETEST}/googletest)
  target_compile_options(orvel-gtest PRIVATE -w)
  find_package(Threads REQUIRED)
  target_link_libraries(orvel-gtest PUBLIC Threads::Threads)
endif()
