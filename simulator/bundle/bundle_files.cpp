#include "bundle/bundle_files.h"

#include <filesystem>
#include <string_view>
#include <vector>

#include "bundle/bundle_folder.h"
#include "bundle/tar.h"
#include "bundle/unpacked.h"
#include "scenario/parse.h"

namespace simulator {
namespace {

constexpr std::string_view kFolder = "api/v1/mirn/";
constexpr std::string_view kEnding = ".json";
constexpr std::string_view kNames[] = {"version", "raids",  "controllers", "enddevices",
                                       "ports",   "arrays", "volumes"};

std::string fileOf(std::string_view name) {
  return std::string(kFolder) + std::string(name) + std::string(kEnding);
}

/// A packed bundle or a folder, which files are taken from by their names.
class Bundle {
 public:
  explicit Bundle(const std::string& path) : m_path(path) {
    m_isFolder = std::filesystem::is_directory(std::filesystem::u8path(path));
    if (!m_isFolder) m_archive = unpacked(readPacked(path));
  }

  void read(BundleFiles& wanted) const {
    m_isFolder ? readFolder(m_path, wanted) : readTar(m_archive, wanted);
  }

 private:
  std::string m_path;
  bool m_isFolder;
  std::string m_archive;
};

boost::json::value parsed(const std::string& file, const std::optional<std::string>& text) {
  if (!text) throw BundleError(file + ": is not in the bundle");
  try {
    return parseJson(*text);
  } catch (const NotJson& error) {
    throw BundleError(file + ": " + error.what());
  }
}

std::vector<std::string> engineIds(const boost::json::value& engines) {
  std::vector<std::string> ids;
  if (!engines.is_array()) return ids;
  for (const auto& each : engines.get_array()) {
    const boost::json::value* const id = each.is_object() ? each.get_object().if_contains("raidId") : nullptr;
    if (id != nullptr && id->is_string()) ids.emplace_back(id->get_string());
  }
  return ids;
}

/// Their lists by the engine's id.
boost::json::object controllersOfEngines(const Bundle& bundle, const boost::json::value& engines) {
  BundleFiles files;
  const auto fileOfEngine = [](const std::string& id) { return fileOf("raids/" + id + "/controllers"); };
  for (const std::string& id : engineIds(engines)) files.emplace(fileOfEngine(id), std::nullopt);
  bundle.read(files);
  boost::json::object lists;
  for (const std::string& id : engineIds(engines))
    lists[id] = parsed(fileOfEngine(id), files.at(fileOfEngine(id)));
  return lists;
}

}  // namespace

boost::json::object answersInBundle(const std::string& path) {
  const Bundle bundle(path);
  BundleFiles files;
  for (const std::string_view name : kNames) files.emplace(fileOf(name), std::nullopt);
  bundle.read(files);
  boost::json::object answers;
  for (const std::string_view name : kNames) {
    const std::string file = fileOf(name);
    answers[name] = parsed(file, files.at(file));
  }
  answers["raidControllers"] = controllersOfEngines(bundle, answers.at("raids"));
  return answers;
}

}  // namespace simulator
