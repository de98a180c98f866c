# Compiler and linker flags of every target: warnings, sanitizers, static linking on Windows.
# The library, its companion and the layer do without exceptions and RTTI: target orvel-plain.
add_compile_options(-Wall -Wextra -Wshadow)
# This version warns of "text" + string by mistake.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  add_compile_options(-Wno-restrict)
endif()
if(NOT WIN32)
  # A module's .def file alone says what leaves it. Calls inside a module stay inside, and a module
  # that is unloaded is gone.
  add_compile_options(-fno-semantic-interposition $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
  add_link_options(-Wl,-Bsymbolic-functions)
endif()
if(ORVEL_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize=vptr -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  # A function found by name in a module has the type that its caller knows it by.
  add_compile_options($<$<COMPILE_LANG_AND_ID:CXX,Clang>:-fno-sanitize=function>)
  add_link_options(-fsanitize=address,undefined)
endif()
if(WIN32)
  # The exports are undecorated, so references to Name@N have to find Name.
  add_link_options(-static -Wl,--enable-stdcall-fixup)
  add_compile_definitions(_WIN32_WINNT=0x0601 WIN32_LEAN_AND_MEAN NOMINMAX)
  add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Wno-cast-function-type>)
endif()

if(ORVEL_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

add_library(orvel-plain INTERFACE)
target_compile_options(orvel-plain INTERFACE -fno-exceptions -fno-rtti)
