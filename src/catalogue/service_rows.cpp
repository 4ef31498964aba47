#include "branches.h"
#include "http_method.h"
#include "messages.h"
#include "plugin_setting.h"
#include "schema_names.h"
#include "service_exceptions.h"
#include "session_messages.h"
#include "shared_rows.h"
#include "text.h"

using ovra::request_validator::FieldPresence;
using ovra::request_validator::FieldType;

namespace {

constexpr wchar_t kBranch[] = L"";

FieldRows settingFields() {
  FieldRows fields;
  for (const PluginSetting& setting : pluginSettings()) {
    FieldRow field{setting.key, FieldType::kUnsignedInteger, FieldPresence::kOptional, setting.description};
    field.range = {setting.least, setting.most};
    field.unit = setting.unit;
    fields.push_back(field);
  }
  return fields;
}

RefusalRows settingRefusals() {
  RefusalRows refusals = {requestRefusal(kMsgConfigurationEmpty)};
  for (const PluginSetting& setting : pluginSettings()) {
    refusals.push_back(requestRefusal(setting.tooLow));
    refusals.push_back(requestRefusal(setting.tooHigh));
    refusals.push_back({kErrorInternal, setting.notStored, RefusalKind::kFailure});
  }
  return refusals;
}

}  // namespace

RouteRows serviceRows() {
  return {
      {RouteId::kGetState,
       L"getState",
       {L"state", L"show"},
       HttpMethod::kGet,
       kBranch,
       L"state",
       L"Tells the worst state of all, and what is under way.",
       L"The state is FAILED where a volume has failed, WARNING where anything is not as it should be, and "
       L"NORMAL "
       L"otherwise. What is under way are the volumes on which work goes on.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kState},
       withPicture()},
      {RouteId::kGetVersion,
       L"getVersion",
       {L"version", L"show"},
       HttpMethod::kGet,
       kBranch,
       L"version",
       L"Tells versions, and whether a volume's size can be set.",
       L"The versions of the plug-in, of the product and of the storage library under it, and what the "
       L"library can "
       L"do at all.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kVersion},
       withPicture({{{kErrorOperationFailed, utf8ToWide(kMsgNoVersion), RefusalKind::kOffline}}})},
      {RouteId::kRescan,
       L"rescan",
       {L"", L"rescan"},
       HttpMethod::kPost,
       kBranch,
       L"rescan",
       L"Looks for new devices and renews the picture.",
       L"The library looks for devices that have come or gone. The picture of the machine that all reads "
       L"answer from "
       L"is taken anew.",
       Effect::kHarmless,
       Role::kOperate,
       {},
       withPicture(),
       Judgement::kQueryThenNoBody,
       {},
       {},
       {{L"VexRescan"}}},
      {RouteId::kGetConfig,
       L"getConfig",
       {L"config", L"get"},
       HttpMethod::kGet,
       kBranch,
       L"config",
       L"Lists the settings with their bounds.",
       L"Each setting with its value, its least and its greatest one. The values are those that were read "
       L"when the "
       L"plug-in started; a change shows after the next start.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kConfig}},
      {RouteId::kSetConfig,
       L"setConfig",
       {L"config", L"set"},
       HttpMethod::kPut,
       kBranch,
       L"config",
       L"Changes settings.",
       L"One setting at least. All values are judged before the first is stored.",
       Effect::kChanges,
       Role::kAdminister,
       {},
       settingRefusals(),
       Judgement::kBodyWithinHandler,
       {},
       settingFields(),
       {},
       {{Fate::kChanges, L"setting", nullptr, nullptr, L"The settings named are stored in the machine."}}},
  };
}
