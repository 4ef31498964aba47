#ifndef MIRN_CATALOGUE_ANSWER_FORMS_H
#define MIRN_CATALOGUE_ANSWER_FORMS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "enumerations.h"
#include "request_keys.h"
#include "ServiceObject.h"

/// What routes answer that no object of the model is, as values. Each tells its fields once (field.h): from
/// them come the answer and its schema. A member without a value is not in the answer: it did not change.

struct WorkUnderWay {
  std::wstring objectId;
  VolumeState action = VolumeState::UNKNOWN;
  std::wstring objectName;
  std::wstring objectType;

  template <class Walk>
  static constexpr void fields(Walk& walk);
};

struct StateAnswer {
  std::wstring state;
  std::vector<WorkUnderWay> inProgress;

  template <class Walk>
  static constexpr void fields(Walk& walk);
};

struct SettingAnswer {
  std::wstring description;
  std::wstring type;
  std::int64_t value = 0;
  std::int64_t min = 0;
  std::int64_t max = 0;

  template <class Walk>
  static constexpr void fields(Walk& walk);
};

struct ArrayCacheAnswer {
  std::wstring arrayId;
  std::optional<WriteCacheState> writeCachePolicy;

  template <class Walk>
  static constexpr void fields(Walk& walk);
};

struct ArrayDisksAnswer {
  std::wstring arrayId;
  std::vector<std::wstring> disks;

  template <class Walk>
  static constexpr void fields(Walk& walk);
};

struct ControllerSwitchAnswer {
  std::wstring controllerId;
  std::optional<EnableState> state;

  template <class Walk>
  static constexpr void fields(Walk& walk);
};

struct DiskAnswer {
  std::wstring diskId;
  std::optional<DiskUsage> usage;
  std::optional<DiskState> state;

  template <class Walk>
  static constexpr void fields(Walk& walk);
};

struct VolumeStateAnswer {
  std::wstring volumeId;
  std::optional<VolumeState> state;

  template <class Walk>
  static constexpr void fields(Walk& walk);
};

struct VolumeNameAnswer {
  std::wstring volumeId;
  std::wstring name;

  template <class Walk>
  static constexpr void fields(Walk& walk);
};

struct VolumeAnswer {
  std::wstring volumeId;
  std::optional<std::uint64_t> size;  ///< Mebibytes.
  std::optional<CachePolicy> cachePolicy;
  std::optional<RaidLevel> raidLevel;
  std::optional<StripSize> stripSize;
  std::optional<RwhPolicy> rwhPolicy;
  std::optional<std::wstring> journalingDriveId;  ///< Empty: none any more.
  std::optional<std::vector<std::wstring>> disks;

  template <class Walk>
  static constexpr void fields(Walk& walk);
};

// The answers as clients see them.
ovra::data_transfer::ServiceObject formOf(const StateAnswer& answer);
ovra::data_transfer::ServiceObject formOf(const SettingAnswer& answer);
ovra::data_transfer::ServiceObject formOf(const ArrayCacheAnswer& answer);
ovra::data_transfer::ServiceObject formOf(const ArrayDisksAnswer& answer);
ovra::data_transfer::ServiceObject formOf(const ControllerSwitchAnswer& answer);
ovra::data_transfer::ServiceObject formOf(const DiskAnswer& answer);
ovra::data_transfer::ServiceObject formOf(const VolumeStateAnswer& answer);
ovra::data_transfer::ServiceObject formOf(const VolumeNameAnswer& answer);
ovra::data_transfer::ServiceObject formOf(const VolumeAnswer& answer);

/// `now` where it differs from `before`.
template <class Value>
std::optional<Value> changed(const Value& before, const Value& now) {
  return now == before ? std::nullopt : std::optional<Value>(now);
}

#endif
