#include <dlfcn.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <cerrno>
#include <system_error>

#include "logger.h"

namespace {

bool locksFail = false;
int reports = 0;

struct Provider final : ovra::LoggerBaseLogProvider {
  void report(LogLevel, const std::wstring&) override { ++reports; }
};

using Lock = int (*)(pthread_mutex_t*);

}  // namespace

// This takes the place of the system's, which it calls.
extern "C" int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
  if (locksFail) return EINVAL;
  static const auto lock = reinterpret_cast<Lock>(::dlsym(RTLD_NEXT, "pthread_mutex_lock"));
  return lock(mutex);
}

namespace {

TEST(LoggerLock, ThatFailsRaisesTheSystemsOwnErrorAndNothingIsReported) {
  ovra::LogProviders providers;
  providers.emplace(ovra::kConsoleProvider, ovra::makeLogProvider<Provider>());
  ovra::Logger logger(std::move(providers));
  int error = 0;
  locksFail = true;
  try {
    logger.log(LogLevel::kInfo, L"text");
  } catch (const std::system_error& failure) {
    error = failure.code().value();
  } catch (const std::exception&) {
    error = -1;
  }
  locksFail = false;
  EXPECT_EQ(error, EINVAL);
  EXPECT_EQ(reports, 0);

  logger.log(LogLevel::kInfo, L"text");
  EXPECT_EQ(reports, 1) << "once it can be locked";
}

}  // namespace
