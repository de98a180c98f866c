# Libraries of other fields, from the system's packages. They are sources or headers alone, so that
# the Windows compiler can use the same files.
find_path(ORVEL_CLI11 CLI/CLI.hpp REQUIRED NO_CMAKE_FIND_ROOT_PATH)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/third_party)
file(CREATE_LINK ${ORVEL_CLI11}/CLI ${CMAKE_BINARY_DIR}/third_party/CLI SYMBOLIC)
add_library(orvel-cli11 INTERFACE)
target_include_directories(orvel-cli11 SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/third_party)

# Zip archives. Where the system has no package of the library for the target, it is built from its
# source package, which scripts/setup has put there.
add_library(orvel-zip INTERFACE)
if(WIN32)
  set(ORVEL_LIBZIP ${CMAKE_SOURCE_DIR}/build/libzip CACHE PATH "Sources of libzip")
  set(ZLIB_INCLUDE_DIR ${ORVEL_MINGW_ROOT}/include)
  set(ZLIB_LIBRARY ${ORVEL_MINGW_ROOT}/lib/libz.a)
  foreach(part BUILD_TOOLS BUILD_REGRESS BUILD_EXAMPLES BUILD_DOC BUILD_SHARED_LIBS LIBZIP_DO_INSTALL
          ENABLE_BZIP2 ENABLE_LZMA ENABLE_COMMONCRYPTO ENABLE_GNUTLS ENABLE_MBEDTLS ENABLE_OPENSSL
          ENABLE_WINDOWS_CRYPTO)
    set(${part} OFF CACHE BOOL "" FORCE)
  endforeach()
  set(CMAKE_POLICY_DEFAULT_CMP0063 NEW)
  add_subdirectory(${ORVEL_LIBZIP} ${CMAKE_BINARY_DIR}/third_party/libzip EXCLUDE_FROM_ALL)
  target_compile_options(zip PRIVATE -w)
  target_link_libraries(orvel-zip INTERFACE zip ${ZLIB_LIBRARY})
  target_include_directories(orvel-zip SYSTEM INTERFACE ${ORVEL_LIBZIP}/lib
                             ${CMAKE_BINARY_DIR}/third_party/libzip ${ZLIB_INCLUDE_DIR})
else()
  find_library(ORVEL_ZIP zip REQUIRED)
  find_path(ORVEL_ZIP_HEADERS zip.h REQUIRED)
  find_package(ZLIB REQUIRED)
  target_link_libraries(orvel-zip INTERFACE ${ORVEL_ZIP} ZLIB::ZLIB)
  target_include_directories(orvel-zip SYSTEM INTERFACE ${ORVEL_ZIP_HEADERS})
endif()

# The packing in them: quicker where the system has ISA-L, for one kind of processor. Sanitizers see
# into the other one alone, which so is tested on this machine as well.
find_library(ORVEL_ISAL isal)
if(ORVEL_ISAL AND NOT WIN32 AND NOT ORVEL_SANITIZE)
  set(ORVEL_DEFLATE deflate_isal.cpp)
  target_link_libraries(orvel-zip INTERFACE ${ORVEL_ISAL})
else()
  set(ORVEL_DEFLATE deflate_zlib.cpp)
endif()

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
