#include "host/test_plugin/commands.h"

#include <fstream>
#include <limits>
#include <stdexcept>

#include "host/test_plugin/trace.h"
#include "service_exceptions.h"
#include "text.h"

namespace {

using ovra::data_transfer::ServiceObject;
using Parameters = Commands::Parameters;

std::string parameter(const Parameters& parameters, const std::wstring& name) {
  const auto found = parameters.find(name);
  return found == parameters.end() ? std::string() : wideToUtf8(found->second);
}

int number(const Parameters& parameters, const std::wstring& name) {
  return std::stoi(parameter(parameters, name));
}

ServiceObject deep(int depth) {
  ServiceObject value = ServiceObject::array();
  for (int i = 1; i < depth; ++i) {
    ServiceObject outer;
    outer.at(0).swap(value);
    value.swap(outer);
  }
  return value;
}

ServiceObject notFinite() {
  ServiceObject values;
  values.at(0) = ServiceObject::real(std::numeric_limits<double>::quiet_NaN());
  values.at(1) = ServiceObject::real(std::numeric_limits<double>::infinity());
  return values;
}

/// As the plug-in's own validator raises it: a runtime error, not a logic error, with an id.
class RuntimeErrorWithId : public std::runtime_error, public ovra::common::IErrorIdException {
 public:
  using std::runtime_error::runtime_error;

  const char* getErrorId() const override { return kErrorInvalidParameter; }
  const char* getMessage() const override { return what(); }
};

void awaitFifo(const std::string& path) {
  std::ifstream(path).get();
  trace("unblocked");
}

[[noreturn]] void raise(const Parameters& parameters) {
  const std::string kind = parameter(parameters, L"kind");
  const std::string message = parameter(parameters, L"message");
  if (kind == "listener") throw ListenerException(parameter(parameters, L"id"), message);
  if (kind == "with-id") throw RuntimeErrorWithId(message);
  if (kind == "client") throw ovra::common::HttpClientErrorException(number(parameters, L"status"), message);
  if (kind == "out-of-range") throw std::out_of_range(message);
  if (kind == "service-object") ServiceObject(true).asObject();
  if (kind == "latin1") throw std::runtime_error("na\xEFve");
  throw 42;  // NOLINT: no exception of the contract
}

}  // namespace

bool Commands::knows(const std::vector<std::wstring>& segments) const {
  static const std::vector<std::wstring> kNames{L"null",          L"deep",       L"large",
                                                L"not-finite",    L"throw",      L"block",
                                                L"await-blocked", L"await-fifo", L"release"};
  if (segments.empty()) return false;
  for (const std::wstring& name : kNames) {
    if (segments.front() == name) return true;
  }
  return false;
}

ServiceObject Commands::run(const std::vector<std::wstring>& segments, const Parameters& parameters) {
  const std::wstring& name = segments.front();
  if (name == L"deep") return deep(number(parameters, L"depth"));
  if (name == L"large")
    return ServiceObject(std::wstring(static_cast<std::size_t>(number(parameters, L"size")), L'x'));
  if (name == L"not-finite") return notFinite();
  if (name == L"throw") raise(parameters);
  if (name == L"block") block();
  if (name == L"await-blocked") awaitBlocked(number(parameters, L"count"));
  if (name == L"await-fifo") awaitFifo(parameter(parameters, L"path"));
  if (name == L"release") release();
  return {};
}

void Commands::block() {
  std::unique_lock<std::mutex> lock(m_mutex);
  ++m_blocked;
  m_changed.notify_all();
  m_changed.wait(lock, [this] { return m_released; });
}

void Commands::awaitBlocked(int count) {
  std::unique_lock<std::mutex> lock(m_mutex);
  m_changed.wait(lock, [this, count] { return m_blocked >= count; });
}

void Commands::release() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_released = true;
  m_changed.notify_all();
}
