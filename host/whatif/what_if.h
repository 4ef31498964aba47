#ifndef MIRN_HOST_WHATIF_WHAT_IF_H
#define MIRN_HOST_WHATIF_WHAT_IF_H

#include <chrono>
#include <mutex>
#include <string>

#include "system/child_process.h"

namespace host {

/// Asks a program of its own process, so that neither its work nor its end is the host's. Safe from any
/// thread: one is asked at a time.
class WhatIf {
 public:
  /// `program` is its path, empty where there is none; it is killed when `patience` is over.
  explicit WhatIf(std::string program, std::chrono::milliseconds patience = std::chrono::seconds(10))
      : m_program(std::move(program)), m_patience(patience) {}

  /// What it answers to the question, both as JSON text. Raises a `Refusal`: 422 where it is not there or has
  /// no answer, 503 while it is asked something else or when its time was over. Raises a `std::runtime_error`
  /// when it fails.
  std::string ask(const std::string& question);

 private:
  const std::string m_program;
  const std::chrono::milliseconds m_patience;
  const ChildRunner m_runner;
  std::mutex m_mutex;
};

}  // namespace host

#endif
