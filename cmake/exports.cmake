# orvel_exports(TARGET FILE.def): the module exports what the .def file lists and nothing else. The
# Windows linker reads the file itself; for ELF it is rewritten as a version script.
function(orvel_exports target def)
  get_filename_component(def ${def} ABSOLUTE)
  if(WIN32)
    target_sources(${target} PRIVATE ${def})
    get_target_property(type ${target} TYPE)
    if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND type STREQUAL SHARED_LIBRARY)
      add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${CMAKE_COMMAND} -DMODULE=$<TARGET_FILE:${target}> -DDEF=${def}
                -DLIBRARY=$<TARGET_LINKER_FILE:${target}> -DNM=${CMAKE_NM}
                -DDLLTOOL=${CMAKE_DLLTOOL} -P ${CMAKE_SOURCE_DIR}/cmake/import_library.cmake)
    endif()
    return()
  endif()
  file(STRINGS ${def} lines REGEX "^ +[A-Za-z_]")
  set(names "")
  foreach(line ${lines})
    string(REGEX MATCH "[A-Za-z_0-9]+" name "${line}")
    string(APPEND names "    ${name};\n")
  endforeach()
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
  file(CONFIGURE OUTPUT ${script} CONTENT "{\nglobal:\n${names}local:\n    *;\n};\n" @ONLY)
  target_link_options(${target} PRIVATE -Wl,--version-script=${script})
  if(NOT ORVEL_SANITIZE)  # the sanitizers' own symbols come with the program
    target_link_options(${target} PRIVATE -Wl,--no-undefined)
  endif()
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${script})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${def})
endfunction()
