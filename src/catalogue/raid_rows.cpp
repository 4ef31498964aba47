#include "branches.h"
#include "http_method.h"
#include "messages.h"
#include "request_keys.h"
#include "request_words.h"
#include "schema_names.h"
#include "shared_rows.h"

namespace {

constexpr wchar_t kBranch[] = L"raids";

FieldRows rangeAndType() {
  FieldRow range = optionalField(keys::kRange, L"What is told of an engine: itself, its levels, or both.");
  range.words = {request_words::kInfo, request_words::kLevel};
  FieldRow type = levelField();
  type.name = keys::kType;
  type.presence = ovra::request_validator::FieldPresence::kOptional;
  type.help = L"One level only; goes with range=level.";
  type.candidates = {};
  return {range, type};
}

RefusalRows rangeAndTypeRefusals() {
  return {requestRefusal(kMsgInvalidRange), requestRefusal(kMsgInvalidRaidLevel),
          requestRefusal(kMsgLevelNotSupported), requestRefusal(kMsgTypeNeedsLevelRange)};
}

}  // namespace

RouteRows raidRows() {
  return {
      {RouteId::kListRaids,
       L"listRaids",
       {L"raids", L"list"},
       HttpMethod::kGet,
       kBranch,
       L"",
       L"Lists all RAID engines.",
       L"An engine serves one or more controllers. Its levels tell what volumes can be made: disks, strip "
       L"sizes and "
       L"the usual one of those.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kRaid, true},
       withPicture({rangeAndTypeRefusals()}),
       Judgement::kQuery,
       rangeAndType()},
      {RouteId::kGetRaid,
       L"getRaid",
       {L"raids", L"show"},
       HttpMethod::kGet,
       kBranch,
       L"{raidId}",
       L"Tells one RAID engine.",
       L"A list of one engine, with what the list of all tells of it.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kRaid, true},
       withPicture({rangeAndTypeRefusals(), {absentRefusal(kMsgInvalidRaidId)}}),
       Judgement::kQuery,
       rangeAndType()},
      {RouteId::kListRaidControllers,
       L"listRaidControllers",
       {L"raids", L"controllers"},
       HttpMethod::kGet,
       kBranch,
       L"{raidId}/controllers",
       L"Lists the controllers of a RAID engine.",
       L"In the order of their handles.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kController, true},
       withPicture({{absentRefusal(kMsgRaidNotFound)}})},
  };
}
