#include "twin/derived_fields.h"

#include <boost/json/serialize.hpp>
#include <map>
#include <string_view>

#include "engine/work.h"
#include "model/capacity.h"
#include "model/disk_role.h"
#include "model/redundancy.h"
#include "twin/conversions.h"
#include "twin/published_words.h"

namespace simulator {
namespace {

using boost::json::value;

/// A published member, and what the plug-in will tell in its place.
template <class T>
struct DerivedRow {
  std::string_view published;
  value (*tell)(const Machine& machine, const T& object);
};

value sizeText(std::uint64_t size) { return value(std::to_string(size)); }

value idOr(const std::string& id, const value& otherwise) { return id.empty() ? otherwise : value(id); }

const DerivedRow<Volume> kVolumeRows[] = {
    {"state",
     [](const Machine& machine, const Volume& volume) { return value(publishedState(machine, volume)); }},
    {"migrProgress",
     [](const Machine& machine, const Volume& volume) { return value(publishedProgress(machine, volume)); }},
    {"migration", [](const Machine&, const Volume& volume) { return value(isMigrating(volume)); }},
    {"initialized", [](const Machine&, const Volume& volume) { return value(volume.initialized); }},
    {"totalSize", [](const Machine&, const Volume& volume) { return sizeText(volume.size); }},
    {"numDisks", [](const Machine& machine,
                    const Volume& volume) { return value(machine.arrays.at(volume.array).disks.size()); }},
    {"verify.errors",
     [](const Machine& machine, const Volume& volume) { return value(verifyErrorsOf(machine, volume)); }},
    {"verify.badBlocks",
     [](const Machine& machine, const Volume& volume) { return value(verifyBadBlocksOf(machine, volume)); }},
};

const DerivedRow<Array> kArrayRows[] = {
    {"state", [](const Machine& machine,
                 const Array& array) { return value(isBusy(machine, array) ? "STATE_BUSY" : "NORMAL"); }},
    {"totalSize",
     [](const Machine& machine, const Array& array) { return sizeText(totalSize(machine, array)); }},
    {"freeSize",
     [](const Machine& machine, const Array& array) { return sizeText(freeSize(machine, array)); }},
    {"numDisks", [](const Machine&, const Array& array) { return value(array.disks.size()); }},
    {"numVolumes", [](const Machine&, const Array& array) { return value(array.volumes.size()); }},
};

const DerivedRow<EndDevice> kDiskRows[] = {
    {"state", [](const Machine&, const EndDevice& disk) { return value(publishedState(disk)); }},
    {"usage", [](const Machine&, const EndDevice& disk) { return value(toWord(usageOf(disk))); }},
    {"freeSize",
     [](const Machine& machine, const EndDevice& disk) { return sizeText(freeSize(machine, disk)); }},
    {"arrayId",
     [](const Machine& machine, const EndDevice& disk) {
       const Array* const array = machine.arrays.find(disk.array);
       return idOr(array == nullptr ? "" : array->id, nullptr);
     }},
};

template <class T>
std::map<std::string, const T*> indexed(const Table<T>& table) {
  std::map<std::string, const T*> index;
  for (const auto& entry : table) index.emplace(entry.second.id, &entry.second);
  return index;
}

template <class T, class Rows>
void compare(const Machine& machine, const Table<T>& table, const boost::json::array& published,
             const std::string& name, const Rows& rows, std::vector<std::string>& differences) {
  const auto index = indexed(table);
  for (std::size_t i = 0; i < published.size(); ++i) {
    const boost::json::object& object = published[i].get_object();
    const auto found = index.find(std::string(object.at("id").get_string()));
    if (found == index.end()) continue;
    for (const auto& row : rows) {
      const value* const member = memberOf(object, row.published);
      if (member == nullptr) continue;
      const value told = row.tell(machine, *found->second);
      if (told == *member) continue;
      differences.push_back(name + "[" + std::to_string(i) + "]." + std::string(row.published) +
                            ": the twin has " + boost::json::serialize(told) + ", and told was " +
                            boost::json::serialize(*member));
    }
  }
}

boost::json::array disksOf(const boost::json::array& devices) {
  boost::json::array disks;
  for (const auto& each : devices) {
    if (each.get_object().at("deviceType") == value("DISK")) disks.push_back(each);
  }
  return disks;
}

}  // namespace

std::vector<std::string> differencesOf(const Machine& machine, const Answers& answers) {
  std::vector<std::string> differences;
  compare(machine, machine.volumes, answers.volumes, "volumes", kVolumeRows, differences);
  compare(machine, machine.arrays, answers.arrays, "arrays", kArrayRows, differences);
  compare(machine, machine.devices, disksOf(answers.devices), "disks", kDiskRows, differences);
  return differences;
}

}  // namespace simulator
