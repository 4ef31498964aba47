#ifndef MIRN_TESTS_HOST_TEST_PLUGIN_TEST_PLUGIN_H
#define MIRN_TESTS_HOST_TEST_PLUGIN_TEST_PLUGIN_H

#include "host/test_plugin/commands.h"
#include "plugin_interface.h"

extern const wchar_t* const kTestPluginName;
constexpr PluginVersion kTestPluginVersion{1, 2, 3, 4};

/// Echoes every request, but for the commands under the path "test" (commands.h).
///
/// TEST_PLUGIN_INITIALIZE makes `initialize` fail ("false") or raise ("throw"), TEST_PLUGIN_FINISH makes
/// `finish` raise ("throw"), and TEST_PLUGIN_STATUS is what `getStatus` gives.
class TestPlugin : public ovra::service_plugin_interface {
 public:
  TestPlugin();
  ~TestPlugin() override;

  const std::wstring& getShortName() const override { return m_shortName; }
  const std::wstring& getName() const override { return m_name; }
  const PluginVersion& getVersion() const override { return kTestPluginVersion; }
  const std::wstring& getCode() const override { return m_code; }
  const std::wstring& getApiVersion() const override { return m_apiVersion; }

  bool initialize() override;
  void finish() override;
  std::int32_t getStatus() override;
  std::vector<std::wstring> getHandledPaths() override;
  ovra::data_transfer::ServiceObject handleRequest(std::wstring path, std::int32_t method,
                                                   std::vector<std::wstring> segments,
                                                   std::map<std::wstring, std::wstring> parameters,
                                                   ovra::data_transfer::ServiceObject body) override;

 private:
  const std::wstring m_shortName = L"Test";
  const std::wstring m_name = kTestPluginName;
  const std::wstring m_code = L"test";
  const std::wstring m_apiVersion = L"v7";
  Commands m_commands;
};

#endif
