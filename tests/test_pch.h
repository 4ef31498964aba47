// Precompiled for the test programs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/ptr_container/ptr_deque.hpp>
#include <boost/ptr_container/ptr_map.hpp>
#include <boost/variant.hpp>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>
