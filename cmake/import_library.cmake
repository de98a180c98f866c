# Makes the import library of a 32-bit Windows module whose exports are undecorated: callers ask
# for Name@N, so the library has the labels decorated and the names in the module plain. Called
# behind the module's link: cmake -DMODULE=… -DDEF=… -DLIBRARY=… -DNM=… -DDLLTOOL=… -P
# import_library.cmake
get_filename_component(name ${MODULE} NAME)
execute_process(COMMAND ${NM} ${MODULE} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
file(STRINGS ${DEF} lines REGEX "^ +[A-Za-z_]")
set(decorated "LIBRARY ${name}\nEXPORTS\n")
foreach(line ${lines})
  string(STRIP "${line}" export)
  if(NOT symbols MATCHES "[Tt] _(${export}@[0-9]+)\n")
    message(FATAL_ERROR "${export} isn't a WINAPI function of ${name}")
  endif()
  string(APPEND decorated "    ${CMAKE_MATCH_1}\n")
endforeach()
file(WRITE ${LIBRARY}.def "${decorated}")
execute_process(COMMAND ${DLLTOOL} --kill-at -m i386 --as-flags=--32 -d ${LIBRARY}.def -l ${LIBRARY}
                COMMAND_ERROR_IS_FATAL ANY)
