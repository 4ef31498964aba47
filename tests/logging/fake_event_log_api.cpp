#include "logging/fake_event_log_api.h"

#include "event_log_api.h"

FakeEventLog fakeEventLog;

namespace {

constexpr std::uint32_t kFileNotFound = 2;

IEventLogApi::Key someKey() { return &fakeEventLog; }
IEventLogApi::Source someSource() { return &fakeEventLog.calls; }

std::wstring withHandle(const wchar_t* call, bool right) { return right ? call : L"wrong handle"; }

class FakeEventLogApi : public IEventLogApi {
 public:
  std::uint32_t createKey(const std::wstring& path, Key& key) override {
    record(L"create " + path);
    if (fakeEventLog.createError == 0) key = someKey();
    return fakeEventLog.createError;
  }

  std::uint32_t setText(Key key, const std::wstring& name, const std::wstring& text,
                        std::uint32_t byteCount) override {
    record(withHandle(L"set ", key == someKey()) + name + L" = " + text + L" of " +
           std::to_wstring(byteCount));
    return name == fakeEventLog.refusedValue ? kFileNotFound : 0;
  }

  std::uint32_t setNumber(Key key, const std::wstring& name, std::uint32_t number) override {
    record(withHandle(L"set ", key == someKey()) + name + L" = " + std::to_wstring(number));
    return name == fakeEventLog.refusedValue ? kFileNotFound : 0;
  }

  void closeKey(Key key) override { record(withHandle(L"close key", key == someKey())); }

  ApplicationPath applicationPath() override {
    record(L"application path");
    return {fakeEventLog.path, fakeEventLog.pathError};
  }

  Source openSource(const std::wstring& name) override {
    record(L"open " + name);
    return fakeEventLog.opens ? someSource() : nullptr;
  }

  bool reportEvent(Source source, std::uint16_t type, std::uint16_t category, std::uint32_t identifier,
                   const std::wstring& text) override {
    record(withHandle(L"report ", source == someSource()) + std::to_wstring(type) + L" " +
           std::to_wstring(category) + L" " + std::to_wstring(identifier) + L" " + text);
    return fakeEventLog.reports;
  }

  bool closeSource(Source source) override {
    record(withHandle(L"close source", source == someSource()));
    return fakeEventLog.closes;
  }

 private:
  static void record(const std::wstring& call) { fakeEventLog.calls.push_back(call); }
};

}  // namespace

std::unique_ptr<IEventLogApi> makeEventLogApi() { return std::make_unique<FakeEventLogApi>(); }
