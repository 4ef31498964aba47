#include "bundle/tar_form.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace host {

namespace {

constexpr std::size_t kBlock = 512;

/// The sum that a header should tell: that of its bytes, those of the sum's field as blanks.
unsigned sumOf(const std::string& header) {
  unsigned sum = 0;
  for (std::size_t i = 0; i < header.size(); ++i) {
    sum += i >= 148 && i < 156 ? ' ' : static_cast<unsigned char>(header[i]);
  }
  return sum;
}

std::string field(const std::string& header, std::size_t begin, std::size_t size) {
  return header.substr(begin, size).c_str();
}

TEST(Tar, AHeaderTellsNameSizeAndTime) {
  const std::string header = tarHeader("api/v1/health.json", 1000, 1'700'000'000);
  ASSERT_EQ(header.size(), kBlock);
  EXPECT_EQ(field(header, 0, 100), "api/v1/health.json");
  EXPECT_EQ(field(header, 100, 8), "0000644");
  EXPECT_EQ(field(header, 124, 12), "00000001750");
  EXPECT_EQ(field(header, 136, 12), "14524770400");
  EXPECT_EQ(field(header, 156, 1), "0");
  EXPECT_EQ(header.substr(257, 8), std::string("ustar\00000", 8));
  EXPECT_EQ(std::stoul(field(header, 148, 8), nullptr, 8), sumOf(header));
}

TEST(Tar, NamesNobody) {
  const std::string header = tarHeader("manifest.json", 0, 0);
  EXPECT_EQ(field(header, 108, 8), "0000000");
  EXPECT_EQ(field(header, 116, 8), "0000000");
  EXPECT_EQ(field(header, 265, 32) + field(header, 297, 32), "");
}

TEST(Tar, ALongNameHasARecordAheadOfTheFile) {
  const std::string name = "api/" + std::string(97, 'n');
  const std::string headers = tarHeader(name, 5, 0);
  ASSERT_EQ(headers.size(), 3 * kBlock);
  EXPECT_EQ(field(headers, 156, 1), "x");
  EXPECT_EQ(std::stoul(field(headers, 124, 12), nullptr, 8), 111U);
  EXPECT_EQ(field(headers, kBlock, kBlock), "111 path=" + name + '\n');
  EXPECT_EQ(field(headers, 2 * kBlock, 100), name.substr(0, 100));
  EXPECT_EQ(tarHeader(std::string(100, 'n'), 5, 0).size(), kBlock);
}

TEST(Tar, ARecordCountsItsOwnDigits) {
  const std::string headers = tarHeader(std::string(990, 'n'), 0, 0);  // 990 and 7 beside, 3 or 4 digits
  EXPECT_EQ(field(headers, kBlock, 12), "1001 path=nn");
}

TEST(Tar, BlocksAreFilledUp) {
  EXPECT_EQ(tarPadding(0).size(), 0U);
  EXPECT_EQ(tarPadding(1), std::string(511, '\0'));
  EXPECT_EQ(tarPadding(511).size(), 1U);
  EXPECT_EQ(tarPadding(512).size(), 0U);
  EXPECT_EQ(tarEnd(), std::string(1024, '\0'));
}

TEST(Tar, WhatItCannotTellIsRefused) {
  EXPECT_THROW(tarHeader("large", std::uint64_t{1} << 33U, 0), std::length_error);
}

}  // namespace

}  // namespace host
