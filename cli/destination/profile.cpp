#include "destination/profile.h"

#include <boost/property_tree/ini_parser.hpp>
#include <fstream>

#include "destination/private_file.h"
#include "exit_status.h"

namespace mirnctl {

namespace fs = std::filesystem;
namespace pt = boost::property_tree;

namespace {

constexpr char kUsualHost[] = "http://127.0.0.1:8080";

[[noreturn]] void refuse(const std::string& text, const std::string& advice = {}) {
  throw Failure(ExitStatus::kUsage, text, advice);
}

std::string firstLine(const fs::path& file) {
  std::ifstream stream(file);
  std::string line;
  if (!std::getline(stream, line)) refuse("the token file " + file.string() + " cannot be read");
  while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.pop_back();
  return line;
}

/// Profiles with their keys; nothing where there is no such file.
pt::ptree profilesIn(const fs::path& file) {
  pt::ptree profiles;
  std::ifstream stream(file);
  if (!stream) return profiles;
  try {
    pt::read_ini(stream, profiles);
  } catch (const pt::ini_parser_error& error) {
    refuse(file.string() + ":" + std::to_string(error.line()) + ": " + error.message());
  }
  return profiles;
}

struct Profile {
  std::string host, tokenFile, caFile;
};

/// Nothing of one that is not there.
Profile profileOf(const Directions& directions, const fs::path& file) {
  const std::string name = directions.profile.empty() ? kUsualProfile : directions.profile;
  const pt::ptree profiles = profilesIn(file);
  const auto section = profiles.find(name);
  if (section == profiles.not_found()) return {};
  Profile profile;
  for (const auto& [key, value] : section->second) {
    if (key == "host") {
      profile.host = value.data();
    } else if (key == "token-file") {
      profile.tokenFile = value.data();
    } else if (key == "ca-file") {
      profile.caFile = value.data();
    } else {
      refuse(file.string() + ": the profile '" + name + "' has a key '" + key + "' that nobody knows",
             "there are host, token-file and ca-file");
    }
  }
  return profile;
}

/// The first text that is not empty.
template <typename... Texts>
std::string firstOf(const Texts&... texts) {
  std::string first;
  ((first = first.empty() ? std::string(texts) : first), ...);
  return first;
}

std::string usualHost(const Surroundings& surroundings) {
  std::error_code ignored;
  const fs::path besideToken = surroundings.state.empty() ? fs::path() : surroundings.state / kSocketFile;
  for (const fs::path& socket : {surroundings.userSocket, besideToken, surroundings.systemSocket}) {
    if (!socket.empty() && fs::is_socket(socket, ignored)) return "unix:" + socket.string();
  }
  return kUsualHost;
}

Destination locate(const Directions& directions, const Surroundings& surroundings, const Profile& profile) {
  const bool isProfileChosen = !directions.profile.empty();
  const std::string fromEnvironment = isProfileChosen ? std::string() : surroundings.host.value_or("");
  const std::string host = firstOf(directions.host, fromEnvironment, profile.host);
  Destination destination = destinationOf(host.empty() ? usualHost(surroundings) : host);
  destination.caFile = firstOf(directions.caFile, profile.caFile);
  return destination;
}

/// A token that is told is needed; the one of a host that this user runs is taken where it is there.
std::string tokenIn(const std::string& told, const Surroundings& surroundings) {
  if (!told.empty()) {
    const fs::path file = fs::u8path(told);
    requirePrivate(file);
    return firstLine(file);
  }
  std::error_code ignored;
  const fs::path usual = surroundings.state / "token";
  return !surroundings.state.empty() && fs::exists(usual, ignored) ? firstLine(usual) : std::string();
}

}  // namespace

Destination destinationWithoutToken(const Directions& directions, const Surroundings& surroundings) {
  Directions known = directions;
  if (profilesIn(surroundings.configuration).count(known.profile) == 0) known.profile.clear();
  return locate(known, surroundings, profileOf(known, surroundings.configuration));
}

Destination destinationOf(const Directions& directions, const Surroundings& surroundings) {
  if (!directions.bundle.empty()) {
    if (!directions.host.empty() || !directions.profile.empty() || !directions.tokenFile.empty())
      refuse("a bundle answers, or a service, not both", "leave out --bundle, or what tells of a service");
    Destination destination;
    destination.bundle = directions.bundle;
    return destination;
  }
  const bool isProfileChosen = !directions.profile.empty();
  if (isProfileChosen && profilesIn(surroundings.configuration).count(directions.profile) == 0) {
    refuse("there is no profile '" + directions.profile + "' in " + surroundings.configuration.string());
  }
  const Profile profile = profileOf(directions, surroundings.configuration);
  Destination destination = locate(directions, surroundings, profile);
  if (!destination.socketPath.empty()) return destination;
  const std::string tokenFromEnvironment =
      isProfileChosen ? std::string() : surroundings.tokenFile.value_or("");
  destination.token =
      tokenIn(firstOf(directions.tokenFile, tokenFromEnvironment, profile.tokenFile), surroundings);
  return destination;
}

std::vector<std::string> profileNames(const Surroundings& surroundings) {
  std::vector<std::string> names;
  for (const auto& section : profilesIn(surroundings.configuration)) names.push_back(section.first);
  return names;
}

}  // namespace mirnctl
