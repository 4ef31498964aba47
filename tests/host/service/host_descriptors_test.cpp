#include <sys/resource.h>

#include <memory>
#include <vector>

#include "host/service/test_host.h"

namespace host {

namespace {

using HostDescriptorsTest = TestHost;

TEST_F(HostDescriptorsTest, RunningOutOfThemIsToldOnceAndSurvived) {
  serve();
  EXPECT_EQ(get("/api/v7/test").result_int(), 200U);
  constexpr rlim_t kFew = 24;
  const rlimit few{kFew, kFew};
  ASSERT_EQ(prlimit(host().processId(), RLIMIT_NOFILE, &few, nullptr), 0);

  std::vector<std::unique_ptr<HttpConnection>> idle;
  for (rlim_t i = 0; i < kFew; ++i) idle.push_back(std::make_unique<HttpConnection>(host().port()));
  EXPECT_EQ(get("/api/v7/test").result_int(), 200U);

  idle.clear();
  EXPECT_EQ(get("/api/v7/test").result_int(), 200U);
  EXPECT_EQ(host().stop(), 0);
  const std::string line = "mirn-host: clients cannot be taken in: ";
  EXPECT_EQ(host().errors().rfind(line), 0U) << "told, and no second time:\n" << host().errors();
}

}  // namespace

}  // namespace host
