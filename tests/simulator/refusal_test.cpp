#include "simulator/refusal_rows.h"

namespace {

class RefusedAction : public Workbench, public testing::WithParamInterface<RefusalRow> {};

TEST_P(RefusedAction, SaysWhyAndChangesNothing) {
  GetParam().arrange(*this);
  const std::string before = machine();
  EXPECT_EQ(GetParam().act(*this), GetParam().status);
  EXPECT_EQ(machine(), before);
}

INSTANTIATE_TEST_SUITE_P(Rules, RefusedAction, testing::ValuesIn(allRefusals()),
                         [](const testing::TestParamInfo<RefusalRow>& row) { return row.param.name(); });

}  // namespace
