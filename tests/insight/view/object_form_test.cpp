#include "view/object_form.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

namespace insight {
namespace {

TEST(ObjectForm, NamesAnObject) {
  EXPECT_EQ(boost::json::value(formOf(ObjectRef{"volume", L"7", L"D\u00e4t"})),
            boost::json::parse(R"({"type": "volume", "id": "7", "name": "Dät"})"));
  EXPECT_TRUE(formOf(ObjectRef{"service", L"", L"service"}).at("id").is_null());
}

TEST(ObjectForm, TellsTimesToTheMillisecond) {
  EXPECT_EQ(timeForm(0), "1970-01-01T00:00:00.000Z");
  EXPECT_EQ(timeForm(1'700'000'000'123), "2023-11-14T22:13:20.123Z");
}

}  // namespace
}  // namespace insight
