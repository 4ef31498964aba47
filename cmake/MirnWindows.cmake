# What the build for Windows needs beside the rest.
enable_language(RC)

# The system's headers, the same for all: without the macros that break Boost and the standard library.
add_compile_definitions(_WIN32_WINNT=0x0A00 WIN32_LEAN_AND_MEAN NOMINMAX BOOST_ALL_NO_LIB)

# Tests have more sections than the older object format counts.
add_compile_options($<$<COMPILE_LANGUAGE:C,CXX>:-Wa,-mbig-obj>)

# Which library named VEXL2 stands under the layers that call it is settled above them: the linker goes through the
# libraries until nothing is missing, in whatever order they come.
foreach(rule LINK_EXECUTABLE CREATE_SHARED_LIBRARY CREATE_SHARED_MODULE)
  string(REPLACE "<LINK_LIBRARIES>" "-Wl,--start-group <LINK_LIBRARIES> -Wl,--end-group"
         CMAKE_CXX_${rule} "${CMAKE_CXX_${rule}}")
endforeach()

# The compiler's own libraries are DLLs, shared by all images of a process, since exceptions cross their borders.
set(MIRN_RUNTIME_DLLS libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
function(mirn_provide_runtime folder)
  foreach(dll IN LISTS MIRN_RUNTIME_DLLS)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
                    OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    file(COPY ${path} DESTINATION ${folder})
  endforeach()
endfunction()
mirn_provide_runtime(${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
foreach(dll IN LISTS MIRN_RUNTIME_DLLS)
  install(FILES ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${dll} DESTINATION . COMPONENT module)
endforeach()

# The resource script of a message table, made of `source` (.mc), by its path in the variable `result`.
find_program(MIRN_MESSAGE_COMPILER x86_64-w64-mingw32-windmc REQUIRED)
function(mirn_message_table source result)
  get_filename_component(name ${source} NAME_WE)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${name})
  file(MAKE_DIRECTORY ${folder})
  add_custom_command(OUTPUT ${folder}/${name}.rc
    COMMAND ${MIRN_MESSAGE_COMPILER} -r ${folder} -h ${folder} ${CMAKE_CURRENT_SOURCE_DIR}/${source}
    DEPENDS ${source} VERBATIM)
  set_source_files_properties(${folder}/${name}.rc PROPERTIES COMPILE_OPTIONS -I${folder})
  set(${result} ${folder}/${name}.rc PARENT_SCOPE)
endfunction()
