#include "metric_text.h"

#include <gtest/gtest.h>

namespace {

using Type = MetricFamily::Type;

TEST(MetricText, TellsAFamilyAheadOfItsSamples) {
  MetricText text;
  text.begin({"mirn_things", Type::kGauge, "How many there are."});
  text.add({}, 3);
  text.add({{"kind", "disk"}, {"state", "NORMAL"}}, 18446744073709551615U);
  EXPECT_EQ(text.text(),
            "# HELP mirn_things How many there are.\n"
            "# TYPE mirn_things gauge\n"
            "mirn_things 3\n"
            "mirn_things{kind=\"disk\",state=\"NORMAL\"} 18446744073709551615\n");
}

TEST(MetricText, EscapesWhatALabelHolds) {
  MetricText text;
  text.begin({"mirn_info", Type::kGauge, "Facts."});
  text.add({{"name", "a\\b \"c\"\nd"}}, 1);
  text.add({{"name", "Größe"}}, 1);
  text.add({{"name", ""}}, 1);
  EXPECT_EQ(text.text(),
            "# HELP mirn_info Facts.\n# TYPE mirn_info gauge\n"
            "mirn_info{name=\"a\\\\b \\\"c\\\"\\nd\"} 1\n"
            "mirn_info{name=\"Größe\"} 1\n"
            "mirn_info{name=\"\"} 1\n");
}

TEST(MetricText, TellsRealNumbersAsShortAsTheyMeanThemselves) {
  MetricText text;
  text.begin({"mirn_taken_timestamp_seconds", Type::kGauge, "When."});
  text.addReal({}, 1700000000.123);
  text.addReal({}, 1700000000);
  text.addReal({}, 0.1);
  text.addReal({}, 0);
  text.addReal({}, 1e300);
  text.addReal({}, 1e-300);
  for (const char* const number : {"1700000000.123", "1700000000", "0.1", "0", "1e+300", "1e-300"}) {
    EXPECT_NE(text.text().find(' ' + std::string(number) + '\n'), std::string::npos) << number << text.text();
  }
}

TEST(MetricText, CountsWhatIsBelowTheBoundOfABucket) {
  MetricText text;
  text.begin({"mirn_wait_seconds", Type::kHistogram, "How long."});
  text.addHistogram({{"operation", "get"}}, {0.0005, 1}, {2, 0, 3}, 7.25);
  EXPECT_EQ(text.text(),
            "# HELP mirn_wait_seconds How long.\n# TYPE mirn_wait_seconds histogram\n"
            "mirn_wait_seconds_bucket{operation=\"get\",le=\"0.0005\"} 2\n"
            "mirn_wait_seconds_bucket{operation=\"get\",le=\"1\"} 2\n"
            "mirn_wait_seconds_bucket{operation=\"get\",le=\"+Inf\"} 5\n"
            "mirn_wait_seconds_sum{operation=\"get\"} 7.25\n"
            "mirn_wait_seconds_count{operation=\"get\"} 5\n");
}

TEST(MetricText, AHistogramMayHaveNoOtherLabels) {
  MetricText text;
  text.begin({"mirn_wait_seconds", Type::kHistogram, "How long."});
  text.addHistogram({}, {}, {4}, 1);
  EXPECT_NE(text.text().find("mirn_wait_seconds_bucket{le=\"+Inf\"} 4\n"), std::string::npos) << text.text();
}

}  // namespace
