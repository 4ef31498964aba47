#ifndef MIRN_CATALOGUE_ANSWER_FIELDS_H
#define MIRN_CATALOGUE_ANSWER_FIELDS_H

#include "answer_forms.h"
#include "published_fields.h"

/// The fields of the answers. For sources only.

namespace answer_kinds {

/// One of the words of the service's state.
struct StateWord : field::kinds::Text {
  static void describe(field::kinds::ServiceObject& schema) {
    field::kinds::describeWords(schema, wordsOf<ServiceState>());
  }
};

/// A number with a sign.
struct Signed : field::kinds::ByValue {
  static void put(PublishedForm& form, const wchar_t* key, std::int64_t value) {
    field::kinds::ServiceObject number;
    number = value;
    form.part(key, number);
  }
  static void describe(field::kinds::ServiceObject& schema) { field::kinds::describeAs(schema, L"integer"); }
};

}  // namespace answer_kinds

constexpr wchar_t kMebibytes[] = L"MiB";

template <class Walk>
constexpr void WorkUnderWay::fields(Walk& walk) {
  using namespace field;
  walk(link<&WorkUnderWay::objectId>(keys::kObjectId, L"volume", L"The volume that is worked on."));
  walk(word<&WorkUnderWay::action>(keys::kAction, L"What is being done to it."));
  walk(text<&WorkUnderWay::objectName>(keys::kObjectName, L"The name of the volume."));
  walk(text<&WorkUnderWay::objectType>(keys::kObjectType, L"Always VOLUME."));
}

template <class Walk>
constexpr void StateAnswer::fields(Walk& walk) {
  using namespace field;
  walk(of<answer_kinds::StateWord, &StateAnswer::state>(keys::kState, L"The worst state of all."));
  walk(parts<&StateAnswer::inProgress>(keys::kInProgress, L"The work that is under way."));
}

template <class Walk>
constexpr void SettingAnswer::fields(Walk& walk) {
  using namespace field;
  using answer_kinds::Signed;
  walk(text<&SettingAnswer::description>(keys::kDescription, L"What the setting does."));
  walk(text<&SettingAnswer::type>(keys::kType, L"What the value is."));
  walk(of<Signed, &SettingAnswer::value>(keys::kValue, L"The value when the plug-in started."));
  walk(of<Signed, &SettingAnswer::min>(keys::kMin, L"The least value."));
  walk(of<Signed, &SettingAnswer::max>(keys::kMax, L"The greatest value."));
}

template <class Walk>
constexpr void ArrayCacheAnswer::fields(Walk& walk) {
  using namespace field;
  walk(link<&ArrayCacheAnswer::arrayId>(keys::kArrayId, L"array", L"The array."));
  walk(word<&ArrayCacheAnswer::writeCachePolicy>(keys::kWriteCachePolicy, L"The write cache of its disks."));
}

template <class Walk>
constexpr void ArrayDisksAnswer::fields(Walk& walk) {
  using namespace field;
  walk(link<&ArrayDisksAnswer::arrayId>(keys::kArrayId, L"array", L"The array."));
  walk(links<&ArrayDisksAnswer::disks>(keys::kDisks, L"disk", L"All its disks."));
}

template <class Walk>
constexpr void ControllerSwitchAnswer::fields(Walk& walk) {
  using namespace field;
  walk(link<&ControllerSwitchAnswer::controllerId>(keys::kControllerId, L"controller", L"The controller."));
  walk(word<&ControllerSwitchAnswer::state>(keys::kState, L"How it is switched."));
}

template <class Walk>
constexpr void DiskAnswer::fields(Walk& walk) {
  using namespace field;
  walk(link<&DiskAnswer::diskId>(keys::kDiskId, L"disk", L"The disk."));
  walk(word<&DiskAnswer::usage>(keys::kUsage, L"What it is used for."));
  walk(word<&DiskAnswer::state>(keys::kState, L"How it is."));
}

template <class Walk>
constexpr void VolumeStateAnswer::fields(Walk& walk) {
  using namespace field;
  walk(link<&VolumeStateAnswer::volumeId>(keys::kVolumeId, L"volume", L"The volume."));
  walk(word<&VolumeStateAnswer::state>(keys::kState, L"How it is, or what is being done to it."));
}

template <class Walk>
constexpr void VolumeNameAnswer::fields(Walk& walk) {
  using namespace field;
  walk(link<&VolumeNameAnswer::volumeId>(keys::kVolumeId, L"volume", L"The volume."));
  walk(text<&VolumeNameAnswer::name>(keys::kName, L"Its name."));
}

template <class Walk>
constexpr void VolumeAnswer::fields(Walk& walk) {
  using namespace field;
  walk(link<&VolumeAnswer::volumeId>(keys::kVolumeId, L"volume", L"The volume."));
  walk(field::size<&VolumeAnswer::size>(keys::kSize, L"What it holds.").measuredIn(kMebibytes));
  walk(word<&VolumeAnswer::cachePolicy>(keys::kCachePolicy, L"Its cache policy."));
  walk(word<&VolumeAnswer::raidLevel>(keys::kRaidLevel, L"Its level."));
  walk(word<&VolumeAnswer::stripSize>(keys::kStripSize, L"The piece that lies on one disk."));
  walk(word<&VolumeAnswer::rwhPolicy>(keys::kRwhPolicy, L"What closes its write hole."));
  walk(linkOrNull<&VolumeAnswer::journalingDriveId>(keys::kJournalingDriveId, L"disk",
                                                    L"The disk that holds its journal."));
  walk(links<&VolumeAnswer::disks>(keys::kDisks, L"disk", L"All disks of its array."));
}

#endif
