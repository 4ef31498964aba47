#ifndef MIRN_COMMON_VERSION_H
#define MIRN_COMMON_VERSION_H

#include <string>
#include <utility>

#include "builder.h"
#include "field.h"
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
  /// The schema of that form, as `field::schemaOf` gives it.
  static ovra::data_transfer::ServiceObject schema();

  /// Every field, see field.h.
  template <class Walk>
  static constexpr void fields(Walk& walk);

 private:
  Version() = default;

  std::wstring m_productVersion;
  std::wstring m_pluginVersion;
  std::wstring m_vexInterfaceVersion;
  std::wstring m_vexVersion;
  bool m_volSetSizeSupport = false;
  bool m_passThroughSupport = false;
};

template <class Walk>
constexpr void Version::fields(Walk& walk) {
  using namespace field;
  walk(text<&Version::m_productVersion>(L"productVersion", L"The version of the product."));
  walk(text<&Version::m_pluginVersion>(L"pluginVersion", L"The version of the plug-in."));
  walk(text<&Version::m_vexInterfaceVersion>(L"vexInterfaceVersion",
                                             L"The version of the storage library's interface."));
  walk(text<&Version::m_vexVersion>(L"vexVersion", L"The version of the storage library."));
  walk(flag<&Version::m_volSetSizeSupport>(L"volSetSizeSupport", L"Whether volumes can be resized."));
  walk(flag<&Version::m_passThroughSupport>(L"passThroughSupport",
                                            L"Whether disks outside of arrays are shown."));
}

/// Whether clients see the same, and all links lead to the same objects.
bool sameForm(const Version& one, const Version& other);
/// The same, but for how far work is.
bool sameStructure(const Version& one, const Version& other);

/// A forgotten field is stopped by an assertion.
class Version::Builder : public ModelBuilder<Version::Builder, Version> {
 public:
  Builder() : ModelBuilder(Version()) {}

  Builder& productVersion(std::wstring value) { return set<&Version::m_productVersion>(std::move(value)); }
  Builder& pluginVersion(std::wstring value) { return set<&Version::m_pluginVersion>(std::move(value)); }
  Builder& vexInterfaceVersion(std::wstring value) {
    return set<&Version::m_vexInterfaceVersion>(std::move(value));
  }
  Builder& vexVersion(std::wstring value) { return set<&Version::m_vexVersion>(std::move(value)); }
  Builder& volSetSizeSupport(bool value) { return set<&Version::m_volSetSizeSupport>(value); }
  Builder& passThroughSupport(bool value) { return set<&Version::m_passThroughSupport>(value); }

  Version build() const;
};

#endif
