#ifndef MIRN_TESTS_SUPPORT_BY_NAME_H
#define MIRN_TESTS_SUPPORT_BY_NAME_H

#include <gtest/gtest.h>

#include <string>

/// Names each case of a table-driven suite by its row's `name` (letters and digits).
struct ByName {
  template <class Row>
  std::string operator()(const testing::TestParamInfo<Row>& row) const {
    return row.param.name;
  }
};

#endif
