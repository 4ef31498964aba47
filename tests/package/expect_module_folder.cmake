# Installs the module of BUILD and expects these FILES in its folder PREFIX, and no others.
file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --component module --prefix ${PREFIX}
                COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE found RELATIVE ${PREFIX} ${PREFIX}/*)
list(SORT found)
list(SORT FILES)
if(NOT found STREQUAL FILES)
  message(FATAL_ERROR "installed: ${found}, not: ${FILES}")
endif()
