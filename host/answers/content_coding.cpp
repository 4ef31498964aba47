#include "answers/content_coding.h"

#include <boost/beast/core/string.hpp>

#include "answers/field_list.h"

namespace host {

namespace {

using boost::beast::iequals;

constexpr int kWhole = 1000;  // a weight of 1, which has three digits behind its point

/// A weight "q=0.5" in thousandths; nothing when it is none.
std::optional<int> weightIn(std::string_view parameter) {
  if (parameter.size() < 3 || (parameter[0] != 'q' && parameter[0] != 'Q') || parameter[1] != '=') return {};
  const std::string_view number = parameter.substr(2);
  if (number.size() > 5 || (number[0] != '0' && number[0] != '1')) return {};
  if (number.size() > 1 && number[1] != '.') return {};
  int weight = (number[0] - '0') * kWhole;
  int unit = kWhole / 10;
  for (const char digit : number.substr(number.size() > 1 ? 2 : 1)) {
    if (digit < '0' || digit > '9') return {};
    weight += (digit - '0') * unit;
    unit /= 10;
  }
  return weight <= kWhole ? std::optional<int>(weight) : std::nullopt;
}

/// Of the codings that are known here; nothing of one that is not named.
struct Weights {
  std::optional<int> gzip;
  std::optional<int> gzipAlias;
  std::optional<int> identity;
  std::optional<int> any;

  std::optional<int> ofGzip() const {
    if (gzip) return gzip;
    return gzipAlias ? gzipAlias : any;
  }
  std::optional<int> ofIdentity() const { return identity ? identity : any; }

  void take(std::string_view coding, int weight) {
    if (iequals(coding, "gzip")) gzip = weight;
    if (iequals(coding, "x-gzip")) gzipAlias = weight;
    if (iequals(coding, "identity")) identity = weight;
    if (coding == "*") any = weight;
  }
};

/// Nothing when a part of it cannot be understood.
std::optional<Weights> weightsIn(std::string_view field) {
  Weights weights;
  for (const std::string_view element : partsOf(field, ',')) {
    const auto parts = partsOf(element, ';');
    if (parts.empty() || parts.size() > 2) return {};
    const auto weight = parts.size() == 1 ? std::optional<int>(kWhole) : weightIn(parts[1]);
    if (!weight) return {};
    weights.take(parts[0], *weight);
  }
  return weights;
}

}  // namespace

std::optional<ContentCoding> codingFor(const std::optional<std::string>& acceptEncoding) {
  if (!acceptEncoding) return ContentCoding::kPlain;
  const auto weights = weightsIn(*acceptEncoding);
  if (!weights) return ContentCoding::kPlain;
  const int packed = weights->ofGzip().value_or(0);
  const auto plain = weights->ofIdentity();
  if (packed == 0) return plain == 0 ? std::nullopt : std::optional(ContentCoding::kPlain);
  if (!plain) return ContentCoding::kGzipLarge;
  if (*plain == 0) return ContentCoding::kGzipAll;
  return packed >= *plain ? ContentCoding::kGzipLarge : ContentCoding::kPlain;
}

}  // namespace host
