# What holds for every translation unit of the project.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 99)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

# The waiting writer of this mutex shuts the door on new readers; the default one lets it starve.
add_compile_definitions(BOOST_THREAD_V2_SHARED_MUTEX BOOST_THREAD_VERSION=4
                        BOOST_BIND_GLOBAL_PLACEHOLDERS BOOST_ALLOW_DEPRECATED_HEADERS)

if(NOT WIN32)
  # One code model for libraries and programs, so that they share precompiled headers.
  add_compile_options(-fPIC)
endif()

# Linked to every target of ours; third-party headers come in as system headers and stay out of it.
add_library(mirn_warnings INTERFACE)
target_compile_options(mirn_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Werror
  $<$<COMPILE_LANGUAGE:CXX>:-Wconversion -Wnon-virtual-dtor -Woverloaded-virtual>
  $<$<CXX_COMPILER_ID:Clang>:-Wno-unused-command-line-argument>
  # Neighbours that are compiled as one source are headers in its eyes, whose types are to be seen elsewhere.
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<BOOL:${CMAKE_UNITY_BUILD}>>:-Wno-subobject-linkage>
  # Where it inlines much, g++ 12 takes the other alternatives of a boost::variant for uninitialised reads.
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-maybe-uninitialized>)

if(MIRN_SANITIZE)
  add_compile_options(-fsanitize=${MIRN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${MIRN_SANITIZE})
endif()

# Not where g++ parts cold code from the rest (-O3): lld 14 leaves exceptions that are thrown there without a way to
# their handlers, and the process ends.
find_program(MIRN_LLD ld.lld)
if(MIRN_LLD AND NOT WIN32 AND NOT CMAKE_BUILD_TYPE STREQUAL "Release")
  add_link_options(-fuse-ld=lld)
endif()

find_program(MIRN_CCACHE ccache)
if(MIRN_CCACHE)
  foreach(lang C CXX)
    set(CMAKE_${lang}_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${MIRN_CCACHE})
  endforeach()
  add_compile_options($<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fpch-preprocess>
                      "$<$<COMPILE_LANG_AND_ID:CXX,Clang>:SHELL:-Xclang -fno-pch-timestamp>")
endif()
