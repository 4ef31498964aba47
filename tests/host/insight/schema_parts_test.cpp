#include "insight/schema_parts.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>
#include <boost/system/system_error.hpp>

namespace host {
namespace {

TEST(RecordSchema, HasEachMemberAndNoOther) {
  EXPECT_EQ(boost::json::parse(recordSchema(R"("b": {"type": "string"}, "a": )" + severitySchema())),
            boost::json::parse(R"({
              "type": "object",
              "properties": {"b": {"type": "string"}, "a": )" +
                               severitySchema() + R"(},
              "required": ["b", "a"],
              "additionalProperties": false
            })"));
}

TEST(RecordSchema, TakesNothingElse) {
  EXPECT_THROW(recordSchema(R"("a": {)"), boost::system::system_error);
  EXPECT_THROW(recordSchema(R"("a")"), boost::system::system_error);
}

}  // namespace
}  // namespace host
