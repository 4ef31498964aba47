#include "actions/candidates.h"

#include <algorithm>

#include "actions/look.h"
#include "view/object_path.h"

namespace insight {

namespace {

using ovra::data_transfer::ServiceObject;

constexpr std::uint64_t kMebibyte = std::uint64_t{1} << 20U;

using Ids = std::vector<std::wstring>;

Ids split(const std::wstring& text) {
  Ids parts;
  std::size_t begin = 0;
  while (begin < text.size()) {
    const std::size_t end = std::min(text.find(L',', begin), text.size());
    if (end > begin) parts.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return parts;
}

bool contains(const Ids& ids, const std::wstring& id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

std::wstring givenIn(const CandidateQuestion& question, const std::wstring& name) {
  const auto found = question.given.find(name);
  return found == question.given.end() ? std::wstring() : found->second;
}

/// The id that an argument names, be it the object of the path.
std::wstring idIn(const CandidateQuestion& question, const std::wstring& argument) {
  return argument == question.operation.argument ? question.objectId : givenIn(question, argument);
}

/// Those behind which an object of any type stands.
Ids controllersOf(const MachineView& machine, const std::wstring& id) {
  if (machine.controller(id) != nullptr) return {id};
  if (const DiskView* const disk = machine.disk(id)) return {disk->controllerId};
  const VolumeView* const volume = machine.volume(id);
  const ArrayView* const array = machine.array(volume == nullptr ? id : volume->arrayId);
  return array == nullptr ? Ids() : array->controllerIds;
}

std::vector<Candidate> wordCandidates(const Ids& words) {
  std::vector<Candidate> candidates;
  for (const std::wstring& word : words) candidates.push_back({word, {}, true, {}, {}});
  return candidates;
}

/// Finds the values of one argument.
class Search {
 public:
  Search(const CandidateQuestion& question, const MachineView& machine)
      : m_question(question), m_source(question.field.candidates), m_machine(machine) {}

  std::vector<Candidate> run() const {
    if (m_question.field.type == L"boolean") return wordCandidates({L"true", L"false"});
    if (!m_source) return wordCandidates(m_question.field.words);
    if (m_source->from == L"disk") return disks();
    if (m_source->from == L"disks") return disksNamed(split(givenIn(m_question, m_source->from)));
    if (m_source->from == L"array") return arrays();
    if (m_source->from == L"level") return wordCandidates(levels());
    if (m_source->from == L"strip") return wordCandidates(strips());
    return {};
  }

 private:
  std::vector<Candidate> disks() const {
    const Ids controllers = controllersOf(m_machine, idIn(m_question, m_source->of));
    std::vector<Candidate> candidates;
    for (const DiskView& disk : m_machine.disks) {
      if (!m_source->of.empty() && !contains(controllers, disk.controllerId)) continue;
      if (!m_source->usages.empty() && !contains(m_source->usages, disk.usage)) continue;
      candidates.push_back({disk.id, refOf(disk), true, {}, {}});
    }
    return candidates;
  }

  std::vector<Candidate> disksNamed(const Ids& ids) const {
    std::vector<Candidate> candidates;
    for (const std::wstring& id : ids) {
      if (const DiskView* const disk = m_machine.disk(id))
        candidates.push_back({id, refOf(*disk), true, {}, {}});
    }
    return candidates;
  }

  std::vector<Candidate> arrays() const {
    std::vector<Candidate> candidates;
    for (const ArrayView& array : m_machine.arrays)
      candidates.push_back({array.id, refOf(array), true, {}, {}});
    return candidates;
  }

  /// The engines of the object's controllers; all where no object is meant.
  std::vector<const RaidView*> raids() const {
    Ids ids;
    for (const std::wstring& id : controllersOf(m_machine, m_question.objectId)) {
      if (const ControllerView* const controller = m_machine.controller(id))
        ids.push_back(controller->raidId);
    }
    std::vector<const RaidView*> raids;
    for (const RaidView& raid : m_machine.raids) {
      if (m_question.operation.argument.empty() || contains(ids, raid.id)) raids.push_back(&raid);
    }
    return raids;
  }

  Ids levels() const {
    Ids levels;
    for (const RaidView* const raid : raids()) {
      for (const LevelView& level : raid->levels) {
        if (!contains(levels, level.level)) levels.push_back(level.level);
      }
    }
    return levels;
  }

  /// Of the level that is given, else of the one that the volume has.
  Ids strips() const {
    std::wstring wanted = idIn(m_question, m_source->of);
    const VolumeView* const volume = m_machine.volume(m_question.objectId);
    if (wanted.empty() && volume != nullptr) wanted = volume->level;
    Ids strips;
    for (const RaidView* const raid : raids()) {
      for (const LevelView& level : raid->levels) {
        if (level.level != wanted) continue;
        for (const std::wstring& strip : level.stripSizes) {
          if (!contains(strips, strip)) strips.push_back(strip);
        }
      }
    }
    return strips;
  }

  const CandidateQuestion& m_question;
  const std::optional<CandidateSource>& m_source;
  const MachineView& m_machine;
};

/// A text of a client as the argument takes it.
ServiceObject valueOf(const OperationField& field, const std::wstring& text) {
  ServiceObject value;
  if (field.type == L"boolean") {
    value = text == L"true";
  } else if (field.type == L"list") {
    value = ServiceObject::array();
    std::size_t place = 0;
    for (const std::wstring& part : split(text)) value.at(place++) = part;
  } else {
    value = text;
  }
  return value;
}

/// What is known of the other arguments; a word that the asked one stands under is the one that is meant.
ServiceObject bodyOf(const CandidateQuestion& question) {
  ServiceObject body = ServiceObject::object();
  const OperationField& asked = question.field;
  if (!asked.whenField.empty() && !asked.whenWord.empty()) body.member(asked.whenField) = asked.whenWord;
  for (const auto& [name, text] : question.given) {
    const OperationField* const field = question.operation.field(name);
    if (field != nullptr && name != asked.name) body.member(name) = valueOf(*field, text);
  }
  return body;
}

void readAnswer(const ServiceObject& answer, Candidate& candidate) {
  if (!answer.hasKey(L"refusal")) return;
  const ServiceObject& refusal = answer.member(L"refusal");
  candidate.isAllowed = false;
  candidate.errorId = refusal.member(L"errorId").toString();
  candidate.words = refusal.member(L"message").toString();
}

}  // namespace

std::vector<Candidate> candidatesFor(const CandidateQuestion& question, const MachineView& machine) {
  return Search(question, machine).run();
}

std::optional<SizeBounds> sizeBoundsFor(const CandidateQuestion& question, const MachineView& machine) {
  const auto& source = question.field.candidates;
  if (!source || source->from != L"size") return {};
  const std::wstring id = idIn(question, source->of);
  const VolumeView* const volume = machine.volume(id);
  const ArrayView* const array = machine.array(volume == nullptr ? id : volume->arrayId);
  if (array == nullptr) return {};
  const std::uint64_t present = volume == nullptr ? 0 : volume->totalBytes;
  return SizeBounds{present / kMebibyte + 1, (present + array->freeBytes) / kMebibyte};
}

void judge(std::vector<Candidate>& candidates, const CandidateQuestion& question,
           ovra::rehearsed_plugin_1& plugin) {
  if (candidates.empty()) return;
  std::vector<ServiceObject> values;
  for (const Candidate& each : candidates) values.push_back(valueOf(question.field, each.value));
  const ServiceObject answers = plugin.rehearseEach(question.operation.key, question.operation.method,
                                                    segmentsOn(question.objectId, question.operation), {},
                                                    bodyOf(question), question.field.name, std::move(values));
  auto candidate = candidates.begin();
  for (const auto answer : answers) readAnswer(*answer.value, *candidate++);
}

}  // namespace insight
