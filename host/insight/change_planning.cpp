#include "insight/change_planning.h"

#include <algorithm>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "actions/operation.h"
#include "answers/json_writer.h"
#include "insight/plan_schemas.h"
#include "jobs/job_statistics.h"
#include "plan/operation_effects.h"
#include "plan/plan.h"
#include "plan/plan_form.h"
#include "service/insight_service.h"
#include "text.h"
#include "view/machine_view_source.h"

namespace host {

namespace {

using ovra::data_transfer::ServiceObject;

/// A machine that changes more often while it is asked is told of as it was; If-Match then refuses.
constexpr int kTries = 3;

/// So many of the jobs of a kind that ended last count.
constexpr std::size_t kCounted = 1000;

/// How such works went. Without a history nobody knows.
std::vector<insight::JobStatistics> statisticsFor(const std::vector<insight::OperationWork>& works,
                                                  insight::History& history) {
  if (works.empty() || !history.isKept()) return {};
  std::vector<insight::Job> ended;
  try {
    for (const insight::OperationWork& work : works) {
      for (const auto& record : history.endedJobs(wideToUtf8(work.kind), kCounted))
        ended.push_back(insight::jobOf(record));
    }
  } catch (const std::runtime_error&) {
    return {};  // it cannot be read now, which health tells
  }
  return insight::statisticsOf(ended);
}

/// A rehearsal, and the machine that it is of.
struct Rehearsed {
  ServiceObject deed;
  std::shared_ptr<const insight::MachineView> machine;
};

class ChangePlanning {
 public:
  ChangePlanning(std::shared_ptr<InsightDesk> desk, std::map<std::wstring, insight::OperationEffects> effects)
      : m_desk(std::move(desk)), m_effects(std::move(effects)) {}

  Answer answer(const AskedChange& change, const ChangePlans::Rehearse& rehearse) const {
    const std::wstring id = utf8ToWide(change.operation);
    const auto operation = std::find_if(m_desk->operations->begin(), m_desk->operations->end(),
                                        [&](const insight::Operation& each) { return each.id == id; });
    const auto effects = m_effects.find(id);
    if (operation == m_desk->operations->end() || effects == m_effects.end()) return valueAnswer(rehearse());
    const Rehearsed rehearsed = rehearsedAtOnePosition(rehearse);
    const insight::RequestArguments arguments(*operation, change.segments, change.body);
    const auto statistics = statisticsFor(effects->second.works, m_desk->service->history());
    const insight::Plan plan = insight::planOf(arguments, effects->second, *rehearsed.machine, statistics);
    boost::json::object form = boost::json::parse(writeJson(rehearsed.deed)).as_object();
    for (auto& member : insight::formOf(plan)) form[member.key()] = std::move(member.value());
    return jsonAnswer(boost::json::serialize(form));
  }

 private:
  Rehearsed rehearsedAtOnePosition(const ChangePlans::Rehearse& rehearse) const {
    Rehearsed rehearsed;
    for (int tries = 0; tries < kTries; ++tries) {
      rehearsed.machine = m_desk->views->view();
      rehearsed.deed = rehearse();
      const ovra::PluginPosition now = m_desk->watched.position();
      const ovra::PluginPosition& seen = rehearsed.machine->position;
      if (now.epoch == seen.epoch && now.structure == seen.structure) break;
    }
    return rehearsed;
  }

  const std::shared_ptr<InsightDesk> m_desk;
  const std::map<std::wstring, insight::OperationEffects> m_effects;
};

}  // namespace

ChangePlans changePlansOf(const std::shared_ptr<InsightDesk>& desk) {
  auto* const described = desk ? dynamic_cast<ovra::described_plugin_1*>(&desk->plugin) : nullptr;
  if (described == nullptr) return {};
  const auto planning =
      std::make_shared<const ChangePlanning>(desk, insight::effectsOf(described->describe()));
  const auto make = [planning](const AskedChange& change, const ChangePlans::Rehearse& rehearse) {
    return planning->answer(change, rehearse);
  };
  return {make, &planSchema()};
}

}  // namespace host
