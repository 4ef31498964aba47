#ifndef MIRN_CONTRACT_HTTP_METHOD_H
#define MIRN_CONTRACT_HTTP_METHOD_H

#include <cstdint>

/// The method codes of `handleRequest`: plain numbers on the boundary, so not a scoped enumeration.
namespace HttpMethod {

constexpr std::int32_t kGet = 1;
constexpr std::int32_t kPost = 2;
constexpr std::int32_t kPut = 3;
constexpr std::int32_t kDelete = 4;

}  // namespace HttpMethod

#endif
