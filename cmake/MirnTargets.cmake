# One helper a kind of target. Each takes SOURCES and DEPENDS; what they share stands in mirn_configure.

# Applies what every target of ours has: warnings, dependencies, precompiled headers, sources that stand alone.
# PCH names the target that carries the precompiled header, or NONE.
function(mirn_configure target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "PCH" "DEPENDS")
  target_link_libraries(${target} PUBLIC ${arg_DEPENDS} PRIVATE $<BUILD_INTERFACE:mirn_warnings>)
  if(arg_PCH AND NOT arg_PCH STREQUAL "NONE")
    target_precompile_headers(${target} REUSE_FROM ${arg_PCH})
    add_dependencies(${target} ${arg_PCH})
  endif()
  mirn_compile_some_alone(${target})
endfunction()

# A layer: a static library whose folder is an include root. What its headers include stands under DEPENDS and is seen by
# those who link it, too; what its sources alone include stands under USES.
function(mirn_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "PCH" "SOURCES;DEPENDS;USES")
  if(NOT arg_PCH)
    set(arg_PCH mirn_pch)
  endif()
  add_library(${name} STATIC ${arg_SOURCES})
  mirn_configure(${name} PCH ${arg_PCH} DEPENDS ${arg_DEPENDS} Boost::headers Threads::Threads)
  target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>)
  target_link_libraries(${name} PRIVATE ${arg_USES})
endfunction()

# Puts resource scripts into a program or module where there is such a thing.
function(mirn_resources target)
  if(WIN32)
    target_sources(${target} PRIVATE ${ARGN})
    set_source_files_properties(${ARGN} PROPERTIES OBJECT_DEPENDS
      "${PROJECT_SOURCE_DIR}/src/contract/version_resource.rc;${PROJECT_SOURCE_DIR}/src/contract/plugin_version.h")
  endif()
endfunction()

# A loadable module that shows the symbols of EXPORTS (a linker version script) and no others. On Windows, where
# nothing is shown that its source does not mark, RESOURCES (a resource script) goes in, too.
function(mirn_module name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "EXPORTS;RESOURCES" "SOURCES;DEPENDS")
  add_library(${name} MODULE ${arg_SOURCES})
  mirn_configure(${name} PCH mirn_pch DEPENDS ${arg_DEPENDS})
  mirn_resources(${name} ${arg_RESOURCES})
  set_target_properties(${name} PROPERTIES PREFIX "" LINK_DEPENDS ${arg_EXPORTS})
  if(NOT WIN32)
    target_link_options(${name} PRIVATE -Wl,--version-script=${arg_EXPORTS} -Wl,--no-undefined-version)
  endif()
endfunction()

# A program; RESOURCES (resource scripts) go in on Windows.
function(mirn_program name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;RESOURCES;DEPENDS")
  add_executable(${name} ${arg_SOURCES})
  mirn_configure(${name} DEPENDS ${arg_DEPENDS} Threads::Threads)
  mirn_resources(${name} ${arg_RESOURCES})
endfunction()

# Where the tests' library named VEXL2 lies, apart from the simulated one.
set(MIRN_SCRIPTED_FOLDER ${CMAKE_BINARY_DIR}/bin/scripted)

# A test program. Every TEST of it becomes a test of ctest, or the whole program does where it runs under an emulator or a
# sanitizer.
# LABELS choose what a sanitizer preset runs ("threads" for the tests that use threads); ENVIRONMENT holds NAME=value pairs.
function(mirn_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "NO_MAIN" "TIMEOUT" "SOURCES;DEPENDS;LABELS;ENVIRONMENT")
  add_executable(${name} ${arg_SOURCES})
  mirn_configure(${name} PCH mirn_test_pch DEPENDS ${arg_DEPENDS} mirn_test_support GTest::gmock Threads::Threads)
  if(NOT arg_NO_MAIN)
    target_link_libraries(${name} PRIVATE GTest::gmock_main)
  endif()
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  if(WIN32 AND "scripted_library" IN_LIST arg_DEPENDS)
    # The loader looks for a library beside the program first, and there is another one of the name.
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${MIRN_SCRIPTED_FOLDER})
  endif()
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 120)
  endif()
  set(properties COST ${arg_TIMEOUT})  # the longest begin first
  # Starting a program costs more there than most tests: all of them in one go, however long that takes.
  if(CMAKE_CROSSCOMPILING OR MIRN_SANITIZE)
    set(is_whole TRUE)
    set(arg_TIMEOUT 1800)
  else()
    set(is_whole FALSE)
  endif()
  list(APPEND properties TIMEOUT ${arg_TIMEOUT})
  if(arg_LABELS)
    list(APPEND properties LABELS "${arg_LABELS}")
  endif()
  if(arg_ENVIRONMENT)
    list(APPEND properties ENVIRONMENT "${arg_ENVIRONMENT}")
  endif()
  if("threads" IN_LIST arg_LABELS)
    add_dependencies(mirn_thread_tests ${name})
  endif()
  if(is_whole)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES ${properties})
    # What fails is not to be sought among thousands that pass.
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT GTEST_BRIEF=1)
    return()
  endif()
  gtest_discover_tests(${name} TEST_PREFIX ${name}. DISCOVERY_TIMEOUT 120 NO_PRETTY_VALUES PROPERTIES ${properties})
endfunction()

# A benchmark program.
function(mirn_benchmark name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;DEPENDS")
  add_executable(${name} ${arg_SOURCES})
  mirn_configure(${name} DEPENDS ${arg_DEPENDS} benchmark::benchmark Threads::Threads)
endfunction()
