# What differs between systems stands in files of its own, name_posix.cpp or name_windows.cpp: MIRN_PLATFORM is the word
# in the names of this system's files.
if(WIN32)
  set(MIRN_PLATFORM windows)
else()
  set(MIRN_PLATFORM posix)
endif()
