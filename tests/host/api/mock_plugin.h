#ifndef MIRN_TESTS_HOST_API_MOCK_PLUGIN_H
#define MIRN_TESTS_HOST_API_MOCK_PLUGIN_H

#include <gmock/gmock.h>

#include <map>
#include <string>
#include <vector>

#include "plugin_interface.h"

namespace host {

/// A plug-in with the keys "mirn" and "mirn/volumes", and without an optional interface.
class MockPlugin : public ovra::service_plugin_interface {
 public:
  using ServiceObject = ovra::data_transfer::ServiceObject;

  const std::wstring& getShortName() const override { return m_name; }
  const std::wstring& getName() const override { return m_name; }
  const PluginVersion& getVersion() const override { return m_version; }
  const std::wstring& getCode() const override { return m_name; }
  const std::wstring& getApiVersion() const override { return m_apiVersion; }
  std::vector<std::wstring> getHandledPaths() override { return keys; }

  MOCK_METHOD(bool, initialize, (), (override));
  MOCK_METHOD(void, finish, (), (override));
  MOCK_METHOD(std::int32_t, getStatus, (), (override));
  MOCK_METHOD(ServiceObject, handleRequest,
              (std::wstring, std::int32_t, std::vector<std::wstring>, (std::map<std::wstring, std::wstring>),
               ServiceObject),
              (override));

  std::vector<std::wstring> keys{L"mirn", L"mirn/volumes"};

 private:
  const std::wstring m_name = L"mirn";
  const std::wstring m_apiVersion = L"v1";
  const PluginVersion m_version{5, 4, 0, 1465};
};

}  // namespace host

#endif
