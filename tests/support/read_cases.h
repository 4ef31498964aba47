#ifndef MIRN_TESTS_SUPPORT_READ_CASES_H
#define MIRN_TESTS_SUPPORT_READ_CASES_H

#include <functional>
#include <string>
#include <vector>

#include "read_interface.h"

/// Objects that the picture has.
struct ReadIds {
  std::wstring controller;
  std::wstring raid;  ///< With RAID 5.
};

/// One read of what the session's lock guards.
struct ReadCase {
  const char* name;
  std::function<void(IMirnSession&, const ReadIds&)> run;
};

/// All of them, in the order of the interface.
std::vector<ReadCase> readCases();

#endif
