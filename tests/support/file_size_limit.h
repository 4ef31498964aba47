#ifndef MIRN_TESTS_SUPPORT_FILE_SIZE_LIMIT_H
#define MIRN_TESTS_SUPPORT_FILE_SIZE_LIMIT_H

#include <sys/resource.h>

#include <csignal>

/// While it lives, no file of this process grows past `bytes`: writing fails as on a full disk.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &m_before);
    const rlimit limit{bytes, m_before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &m_before);
    std::signal(SIGXFSZ, m_handler);
  }

 private:
  void (*m_handler)(int);
  rlimit m_before{};
};

#endif
