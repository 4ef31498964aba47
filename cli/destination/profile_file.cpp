#include "destination/profile_file.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <vector>

#include "atomic_file.h"
#include "exit_status.h"
#include "owner_access.h"

namespace mirnctl {

namespace fs = std::filesystem;

namespace {

std::string trimmed(const std::string& text) {
  const std::size_t begin = text.find_first_not_of(" \t\r");
  return begin == std::string::npos ? std::string()
                                    : text.substr(begin, text.find_last_not_of(" \t\r") - begin + 1);
}

std::string keyOf(const std::string& line) {
  const std::size_t equals = line.find('=');
  const std::string key = trimmed(line.substr(0, equals));
  const bool isComment = key.compare(0, 1, ";") == 0 || key.compare(0, 1, "#") == 0;
  return equals == std::string::npos || isComment ? std::string() : key;
}

std::vector<std::string> linesOf(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::string contentOf(const fs::path& file) {
  std::ifstream stream(file);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void makePrivateFolder(const fs::path& folder) {
  if (fs::exists(folder)) return;
  fs::create_directories(folder.parent_path());
  makePrivateDirectory(folder);
}

}  // namespace

std::string withProfile(const std::string& text, const std::string& name,
                        const std::map<std::string, std::string>& values) {
  std::vector<std::string> lines = linesOf(text);
  const std::string heading = '[' + name + ']';
  auto section = std::find_if(lines.begin(), lines.end(),
                              [&heading](const std::string& line) { return trimmed(line) == heading; });
  if (section == lines.end()) {
    if (!lines.empty() && !trimmed(lines.back()).empty()) lines.emplace_back();
    section = lines.insert(lines.end(), heading);
  }
  for (const auto& [key, value] : values) {
    const std::string line = key + " = " + value;
    const auto end = std::find_if(section + 1, lines.end(), [](const std::string& each) {
      return trimmed(each).compare(0, 1, "[") == 0;
    });
    const auto there =
        std::find_if(section + 1, end, [&key = key](const std::string& each) { return keyOf(each) == key; });
    if (there != end) {
      *there = line;
      continue;
    }
    auto last = end;  // behind the last line of the section that says something
    while (trimmed(*(last - 1)).empty()) --last;
    const auto place = section - lines.begin();
    lines.insert(last, line);
    section = lines.begin() + place;
  }
  std::string changed;
  for (const std::string& line : lines) changed += line + '\n';
  return changed;
}

void requireProfileName(const std::string& name) {
  const bool isName =
      !name.empty() && name.front() != '.' && std::all_of(name.begin(), name.end(), [](unsigned char c) {
        return std::isalnum(c) != 0 || c == '-' || c == '_' || c == '.';
      });
  if (!isName) {
    throw Failure(ExitStatus::kUsage, "'" + name + "' cannot be the name of a profile",
                  "letters, digits, '-', '_' and '.' can");
  }
}

void saveProfile(const fs::path& configuration, const std::string& name, const std::string& token,
                 std::map<std::string, std::string> values) {
  requireProfileName(name);
  if (configuration.empty()) throw Failure(ExitStatus::kUsage, "there is no home folder to keep a token in");
  const fs::path tokenFile = configuration.parent_path() / fs::u8path(name + ".token");
  values["token-file"] = tokenFile.string();
  try {
    makePrivateFolder(configuration.parent_path());
    if (fs::exists(tokenFile)) closeToOthers(tokenFile);  // it keeps what access it lets
    replaceFile(tokenFile, token + '\n', Readers::kOwner);
    replaceFile(configuration, withProfile(contentOf(configuration), name, values), Readers::kOwner);
  } catch (const std::exception& failure) {
    throw Failure(ExitStatus::kInternal, "the token cannot be kept in " +
                                             configuration.parent_path().string() + ": " + failure.what());
  }
}

}  // namespace mirnctl
