#ifndef MIRN_TESTS_SUPPORT_EXPECT_HTTP_ERROR_H
#define MIRN_TESTS_SUPPORT_EXPECT_HTTP_ERROR_H

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "service_exceptions.h"

/// Runs `request` and expects exactly this `HttpClientErrorException`.
template <class Request>
void expectHttpError(std::int32_t status, const std::string& message, Request request) {
  try {
    request();
    ADD_FAILURE() << "no exception";
  } catch (const ovra::common::HttpClientErrorException& error) {
    EXPECT_EQ(error.status, status);
    EXPECT_EQ(error.what(), message);
  }
}

#endif
