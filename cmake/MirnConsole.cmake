# The files of the console as one source, built from web/. Without npm it holds a plain page, and the build says so.
function(mirn_console source)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  find_program(MIRN_NPM npm)
  set(folder ${PROJECT_SOURCE_DIR}/web)
  set(output ${CMAKE_CURRENT_BINARY_DIR}/console_files.cpp)
  file(GLOB_RECURSE parts CONFIGURE_DEPENDS ${folder}/src/* ${folder}/static/* ${folder}/plain/*)
  list(FILTER parts EXCLUDE REGEX "/openapi\\.d\\.ts$")
  add_custom_command(OUTPUT ${output} VERBATIM COMMENT "Building the console"
    DEPENDS ${parts} ${folder}/make_console.py ${folder}/package.json ${folder}/package-lock.json ${folder}/tsconfig.json
    COMMAND ${Python3_EXECUTABLE} -B ${folder}/make_console.py ${output} --npm ${MIRN_NPM})
  set(${source} ${output} PARENT_SCOPE)
endfunction()
