#ifndef MIRN_COMMON_VERSION_H
#define MIRN_COMMON_VERSION_H

#include <string>
#include <utility>

#include "builder.h"
#include "ServiceObject.h"

/// Versions of the plug-in and of the storage library beneath it. Immutable once built.
class Version {
 public:
  class Builder;

  const std::wstring& productVersion() const { return m_productVersion; }
  const std::wstring& pluginVersion() const { return m_pluginVersion; }
  const std::wstring& vexInterfaceVersion() const { return m_vexInterfaceVersion; }
  const std::wstring& vexVersion() const { return m_vexVersion; }
  bool volSetSizeSupport() const { return m_volSetSizeSupport; }
  bool passThroughSupport() const { return m_passThroughSupport; }

  /// The form that clients see: an object.
  ovra::data_transfer::ServiceObject toServiceObject() const;

 private:
  Version() = default;

  std::wstring m_productVersion;
  std::wstring m_pluginVersion;
  std::wstring m_vexInterfaceVersion;
  std::wstring m_vexVersion;
  bool m_volSetSizeSupport = false;
  bool m_passThroughSupport = false;
};

/// A forgotten field is stopped by an assertion.
class Version::Builder : public ModelBuilder<Version::Builder, Version, 6> {
 public:
  Builder() : ModelBuilder(Version()) {}

  Builder& productVersion(std::wstring value) { return set<0>(m_object.m_productVersion, std::move(value)); }
  Builder& pluginVersion(std::wstring value) { return set<1>(m_object.m_pluginVersion, std::move(value)); }
  Builder& vexInterfaceVersion(std::wstring value) {
    return set<2>(m_object.m_vexInterfaceVersion, std::move(value));
  }
  Builder& vexVersion(std::wstring value) { return set<3>(m_object.m_vexVersion, std::move(value)); }
  Builder& volSetSizeSupport(bool value) { return set<4>(m_object.m_volSetSizeSupport, value); }
  Builder& passThroughSupport(bool value) { return set<5>(m_object.m_passThroughSupport, value); }

  Version build() const;
};

#endif
