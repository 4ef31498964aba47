#include "schemas.h"

#include <map>

#include "answer_fields.h"
#include "array.h"
#include "controller.h"
#include "enddevice.h"
#include "event_records.h"
#include "list_form.h"
#include "plugin_setting.h"
#include "port.h"
#include "raid.h"
#include "schema_names.h"
#include "version.h"
#include "volume.h"

using ovra::data_transfer::ServiceObject;

namespace {

/// An object with a member for each setting.
ServiceObject configSchema() {
  ServiceObject schema = ServiceObject::object();
  schema.member(L"type") = std::wstring(L"object");
  for (const PluginSetting& setting : pluginSettings()) {
    schema.member(L"properties").member(setting.key) = field::schemaOf<SettingAnswer>();
  }
  schema.member(L"required") =
      listOf(pluginSettings(), [](const PluginSetting& setting) { return std::wstring(setting.key); });
  return schema;
}

}  // namespace

ServiceObject allSchemas() {
  ServiceObject all = ServiceObject::object();
  all.member(schemas::kArray) = Array::schema();
  all.member(schemas::kArrayCacheChange) = field::schemaOf<ArrayCacheAnswer>();
  all.member(schemas::kArrayDisks) = field::schemaOf<ArrayDisksAnswer>();
  all.member(schemas::kConfig) = configSchema();
  all.member(schemas::kController) = Controller::schema();
  all.member(schemas::kControllerSwitch) = field::schemaOf<ControllerSwitchAnswer>();
  all.member(schemas::kDevice) = EndDevice::schema();
  all.member(schemas::kDiskChange) = field::schemaOf<DiskAnswer>();
  all.member(schemas::kEvent) = mirn_events::eventSchema();
  all.member(schemas::kPort) = Port::schema();
  all.member(schemas::kRaid) = Raid::schema();
  all.member(schemas::kState) = field::schemaOf<StateAnswer>();
  all.member(schemas::kVersion) = Version::schema();
  all.member(schemas::kVolume) = Volume::schema();
  all.member(schemas::kVolumeChange) = field::schemaOf<VolumeAnswer>();
  all.member(schemas::kVolumeName) = field::schemaOf<VolumeNameAnswer>();
  all.member(schemas::kVolumeStateChange) = field::schemaOf<VolumeStateAnswer>();
  return all;
}

std::vector<std::wstring> columnsOf(const std::wstring& schema) {
  static const std::map<std::wstring, std::vector<std::wstring>> kColumns = {
      {schemas::kArray, {L"id", L"name", L"state", L"numDisks", L"numVolumes", L"totalSize", L"freeSize"}},
      {schemas::kController, {L"id", L"name", L"type", L"mode", L"version", L"availableDisks"}},
      {schemas::kDevice,
       {L"id", L"serialNumber", L"model", L"type", L"state", L"usage", L"totalSize", L"address"}},
      {schemas::kEvent, {L"creation_time", L"severity", L"event_source_name", L"description"}},
      {schemas::kPort, {L"id", L"address", L"localDeviceType", L"localDeviceId", L"connectedPortId"}},
      {schemas::kRaid, {L"raidId", L"raidEnabled", L"maxDisksPerArray", L"maxVolumesPerArray"}},
      {schemas::kVolume, {L"id", L"name", L"state", L"raidLevel", L"totalSize", L"migrProgress"}},
  };
  const auto found = kColumns.find(schema);
  return found == kColumns.end() ? std::vector<std::wstring>() : found->second;
}
