#include "support/exchange_record.h"

#include <unistd.h>

#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <cstdlib>
#include <fstream>
#include <mutex>

namespace exchange_record {

namespace {

namespace http = boost::beast::http;
using boost::json::object;

/// A larger answer would tell nothing more of its form.
constexpr std::size_t kLargestBody = 256 * 1024;

std::string textOf(boost::beast::string_view text) { return {text.data(), text.size()}; }

/// Null when nobody wants them.
const char* folderOfExchanges() {
  static const char* const folder = std::getenv("MIRN_EXCHANGES");
  return folder;
}

void write(const object& line) {
  if (!isWanted()) return;
  static std::mutex mutex;
  const std::lock_guard<std::mutex> lock(mutex);
  std::ofstream file(std::string(folderOfExchanges()) + '/' + std::to_string(getpid()) + ".jsonl",
                     std::ios::app);
  file << boost::json::serialize(line) << '\n';
}

}  // namespace

bool isWanted() { return folderOfExchanges() != nullptr; }

void addHost(std::uint16_t port, const std::string& module) { write({{"port", port}, {"module", module}}); }

void addRandomClient(std::uint16_t port) { write({{"port", port}, {"atRandom", true}}); }

void add(std::uint16_t port, const http::request<http::string_body>& request,
         const http::response<http::string_body>& response) {
  if (response.body().size() > kLargestBody) return;
  object headers;
  for (const auto& field : response) headers[textOf(field.name_string())] = textOf(field.value());
  write({{"port", port},
         {"method", textOf(request.method_string())},
         {"target", textOf(request.target())},
         {"type", textOf(request[http::field::content_type])},
         {"body", request.body()},
         {"status", response.result_int()},
         {"headers", headers},
         {"answer", response.body()}});
}

}  // namespace exchange_record
