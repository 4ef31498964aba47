#ifndef MIRN_TESTS_MODULE_FAULT_BENCH_H
#define MIRN_TESTS_MODULE_FAULT_BENCH_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "module/action_requests.h"
#include "module/served_module.h"
#include "scripted_library/scripted_library.h"
#include "status_text.h"
#include "support/default_settings.h"
#include "support/loaded_module.h"
#include "support/log_lines.h"

/// A loaded module over a tiny machine, whose library fails one call at a time: every call,
/// with every status.
class FaultBench : public testing::Test {
 protected:
  using Lines = std::vector<std::string>;

  static constexpr VEX_STATUS kLastStatus = 47;  ///< The library has none above; it stands for the unknown.

  static inline const std::string kOpenFailed = "Failed to open a session";
  static inline const std::string kReadFailed = "Error occurred while taking a snapshot";

  /// The line that tells of a failed snapshot.
  static std::string warning(const std::string& text) { return "Warning: Ordan (R) Mirn Plug-In: " + text; }

  FaultBench();

  /// A fresh library with the machine whose array has this name. No plug-in may be started.
  void freshMachine(const std::string& arrayName);

  /// The n-th call from now on gets the status, and nothing else goes wrong.
  void fail(unsigned call, VEX_STATUS status);

  /// The plug-in knows the machine whose array has this name. All objects are compared if `whole`, which
  /// takes its time.
  void expectPicture(const ServedModule& served, const std::string& arrayName, bool whole) const;

  /// The names of the operations called since the last time.
  Lines takeOperations();

  /// Another name for the array at each call: it tells one picture from the next.
  std::string nextName() { return "Array " + std::to_string(++m_names); }

  unsigned faults() const { return m_faults; }

  ScriptedLibrary& library = ScriptedLibrary::fresh();
  DefaultSettings settings;
  const LoadedModule module{MIRN_TEST_MODULE};
  LogLines log;

 private:
  // Of the machine whose array has the name kPlaceholder.
  std::string m_picture;
  std::string m_wholePicture;

  unsigned m_names = 0;
  unsigned m_faults = 0;
};

#endif
