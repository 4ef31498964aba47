#include "bundle/withheld.h"

#include <gtest/gtest.h>

namespace host {

namespace {

TEST(Withheld, ThePathOfTheLibraryStaysHere) {
  const std::string body = R"({"name":"P","library":{"name":"L","path":"/home/ann/L.so","simulated":true}})";
  EXPECT_EQ(withoutWithheld("getService", body, {}),
            R"({"name":"P","library":{"name":"L","simulated":true}})");
  EXPECT_EQ(withoutWithheld("getHealth", body, {}), body);
}

TEST(Withheld, WhatHasNoSuchMemberStaysAsItIs) {
  for (const std::string body : {R"({ "name" : "P" })", R"({ "library": [] })", "[1, 2]", "{", ""}) {
    EXPECT_EQ(withoutWithheld("getService", body, {}).find("path"), std::string::npos);
  }
  EXPECT_EQ(withoutWithheld("getService", R"({ "name" : "P" })", {}), R"({ "name" : "P" })");
  EXPECT_EQ(withoutWithheld("getService", "{", {}), "{");
}

TEST(Withheld, FoldersOfOursAreNotNamed) {
  EXPECT_EQ(withoutWithheld("getHealth", R"({"text":"cannot open /home/ann/state/history.db"})",
                            {"/home/ann/state", "", "/"}),
            R"({"text":"cannot open .../history.db"})");
  EXPECT_EQ(withoutWithheld("getHealth", R"({"text":"C:\\ann\\history.db"})", {R"(C:\ann)"}),
            R"({"text":"...\\history.db"})");
}

TEST(Withheld, IsToldOf) {
  const auto form = withheldForm();
  ASSERT_EQ(form.size(), 1U);
  EXPECT_EQ(form[0].at("operation").as_string(), "getService");
  EXPECT_EQ(form[0].at("member").as_string(), "library.path");
}

}  // namespace

}  // namespace host
