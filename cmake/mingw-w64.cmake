# 64-bit Windows with mingw-w64, the variant with POSIX threads. tools/prepare-windows puts the libraries in place.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(triplet x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)

get_filename_component(MIRN_WINDOWS_DEPENDENCIES ${CMAKE_CURRENT_LIST_DIR}/../build/windows-dependencies ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH /usr/${triplet} ${MIRN_WINDOWS_DEPENDENCIES})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

get_filename_component(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/run-under-wine ABSOLUTE)
