#include "raids_listener.h"

#include <algorithm>
#include <boost/optional.hpp>

#include "answers.h"
#include "messages.h"
#include "request_words.h"
#include "requests.h"

using namespace std::placeholders;

namespace {

using LevelFilter = boost::optional<RaidLevel>;

RaidRange requestedRange(const RequestParameters& parameters) {
  const auto found = parameters.find(keys::kRange);
  if (found == parameters.end()) return RaidRange::kAll;
  if (found->second == request_words::kInfo) return RaidRange::kInfo;
  if (found->second == request_words::kLevel) return RaidRange::kLevel;
  refuse(kErrorInvalidParameter, kMsgInvalidRange);
}

/// An empty type counts as absent.
LevelFilter requestedLevel(const RequestParameters& parameters, RaidRange range) {
  const auto found = parameters.find(keys::kType);
  if (found == parameters.end() || found->second.empty()) return {};
  const RaidLevel level = raidLevelFromText(found->second);
  requireThat(level != RaidLevel::RAID_INVALID, kErrorInvalidParameter, kMsgLevelNotSupported);
  requireThat(level != RaidLevel::RAID_UNKNOWN, kErrorInvalidParameter, kMsgInvalidRaidLevel);
  requireThat(range == RaidRange::kLevel, kErrorInvalidParameter, kMsgTypeNeedsLevelRange);
  return level;
}

/// All of them without an id.
std::vector<Raid> requestedRaids(IMirnSession& session, const std::wstring& id) {
  if (id.empty()) return session.getRaids();
  return {foundOrRefused(session.findRaid(id), kMsgInvalidRaidId)};
}

bool servesLyx(IMirnSession& session, const Raid& raid) {
  const std::vector<Controller> controllers = session.getControllers();
  return std::any_of(controllers.begin(), controllers.end(), [&](const Controller& controller) {
    return controller.type() == ControllerType::Lyx && controller.raidId() == raid.id();
  });
}

std::vector<RaidLevelSupport> supportedLevels(IMirnSession& session, const Raid& raid,
                                              const LevelFilter& filter) {
  if (filter) {
    const RaidLevelSupport level = session.getRaidLevel(raid.id(), *filter);
    requireThat(level.supported(), kErrorInvalidParameter, kMsgLevelNotSupported);
    return {level};
  }
  std::vector<RaidLevelSupport> levels = session.getRaidLevels(raid.id());
  levels.erase(std::remove_if(levels.begin(), levels.end(),
                              [](const RaidLevelSupport& level) { return !level.supported(); }),
               levels.end());
  return levels;
}

/// What the levels of one engine look like in the answer.
std::vector<RaidLevelSupport> publishedLevels(IMirnSession& session, const Raid& raid,
                                              const LevelFilter& filter) {
  const bool lyxSeen = servesLyx(session, raid);
  std::vector<RaidLevelSupport> levels = supportedLevels(session, raid, filter);
  for (RaidLevelSupport& level : levels) {
    if (lyxSeen && level.raidLevel() == RaidLevel::RAID_5)
      level.setDefaultStripSizes(kRaid5DefaultStripByDisks);
  }
  std::stable_sort(levels.begin(), levels.end(), [](const RaidLevelSupport& a, const RaidLevelSupport& b) {
    return a.raidLevel() < b.raidLevel();
  });
  return levels;
}

ServiceObject getRaids(IMirnSession* session, const RouteMatch& match, const RequestParameters& parameters,
                       const ServiceObject&) {
  std::wstring id = match[1].str();
  if (!id.empty()) id = parseIdentifier(id, kMsgInvalidRaidId);
  const RaidRange range = requestedRange(parameters);
  const LevelFilter filter = requestedLevel(parameters, range);
  std::vector<Raid> raids = requestedRaids(*session, id);
  for (Raid& raid : raids) {
    raid.setRange(range);
    if (range != RaidRange::kInfo) raid.setLevels(publishedLevels(*session, raid, filter));
  }
  return formsOf(raids);
}

ServiceObject getRaidControllers(IMirnSession* session, const RouteMatch& match, const RequestParameters&,
                                 const ServiceObject&) {
  const std::wstring id = parseIdentifier(match[1].str(), kMsgInvalidRaidId);
  foundOrRefused(session->findRaid(id), kMsgRaidNotFound);
  return formsOf(session->getControllers(),
                 [&](const Controller& controller) { return controller.raidId() == id; });
}

}  // namespace

RaidsListener::RaidsListener(IMirnSession* session) : m_session(session) {
  addRoute(RouteId::kListRaids, std::bind(getRaids, m_session, _1, _2, _3));
  addRoute(RouteId::kGetRaid, std::bind(getRaids, m_session, _1, _2, _3));
  addRoute(RouteId::kListRaidControllers, std::bind(getRaidControllers, m_session, _1, _2, _3));
}
