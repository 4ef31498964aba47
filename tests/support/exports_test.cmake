# mirn_exports_test(name target --names NAME... --headers HEADER...): the library shows exactly these names.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(MIRN_CHECK_EXPORTS ${CMAKE_CURRENT_LIST_DIR}/check_exports.py)

function(mirn_exports_test name target)
  add_test(NAME ${name} COMMAND ${Python3_EXECUTABLE} -B ${MIRN_CHECK_EXPORTS} $<TARGET_FILE:${target}> ${ARGN}
    --nm ${CMAKE_NM} --objdump ${CMAKE_OBJDUMP})
endfunction()

add_test(NAME exports.check_can_fail COMMAND ${Python3_EXECUTABLE} -B check_exports_test.py
  WORKING_DIRECTORY ${CMAKE_CURRENT_LIST_DIR})
