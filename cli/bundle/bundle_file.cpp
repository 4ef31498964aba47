#include "bundle/bundle_file.h"

#include <boost/json/parse.hpp>
#include <fstream>
#include <system_error>

#include "archive.h"
#include "document/schema.h"
#include "exit_status.h"
#include "wire/encoding.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

constexpr std::uintmax_t kMostPacked = std::uintmax_t{64} << 20;
constexpr std::size_t kMostUnpacked = std::size_t{256} << 20;
constexpr char kManifest[] = "manifest.json";
constexpr std::int64_t kFormat = 1;

[[noreturn]] void fail(const std::string& words) { throw Failure(ExitStatus::kUsage, "the bundle " + words); }

std::string packedBytes(const std::filesystem::path& file) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  if (error) fail(file.string() + " cannot be read: " + error.message());
  if (size > kMostPacked) fail(file.string() + " is too large");
  std::string bytes(static_cast<std::size_t>(size), '\0');
  std::ifstream stream(file, std::ios::binary);
  stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!stream) fail(file.string() + " cannot be read");
  return bytes;
}

std::map<std::string, std::string_view> filesIn(std::string_view archive) {
  std::map<std::string, std::string_view> files;
  forEachFile(archive, [&files](const std::string& name, std::string_view bytes) {
    if (!files.emplace(name, bytes).second) throw ArchiveError("has a file twice");
  });
  return files;
}

std::map<std::string, std::string> parametersOf(std::string_view query) {
  std::map<std::string, std::string> parameters;
  while (!query.empty()) {
    const std::string_view pair = query.substr(0, query.find('&'));
    const std::size_t equals = std::min(pair.find('='), pair.size());
    parameters[percentDecoded(pair.substr(0, equals))] =
        percentDecoded(pair.substr(std::min(equals + 1, pair.size())));
    query.remove_prefix(std::min(pair.size() + 1, query.size()));
  }
  return parameters;
}

}  // namespace

std::pair<std::string, std::map<std::string, std::string>> partsOfTarget(std::string_view target) {
  const std::size_t mark = std::min(target.find('?'), target.size());
  return {percentDecoded(target.substr(0, mark)),
          parametersOf(target.substr(std::min(mark + 1, target.size())))};
}

BundleFile::BundleFile(const std::filesystem::path& file) {
  try {
    m_archive = unpackedGzip(packedBytes(file), kMostUnpacked);
    readManifest(filesIn(m_archive));
  } catch (const ArchiveError& error) {
    fail(file.string() + ' ' + error.what());
  }
}

void BundleFile::readManifest(const std::map<std::string, std::string_view>& files) {
  const auto manifest = files.find(kManifest);
  if (manifest == files.end()) fail("has no manifest");
  boost::system::error_code error;
  const json::value told = json::parse({manifest->second.data(), manifest->second.size()}, error);
  if (error || !told.is_object()) fail("has a manifest that is no JSON");
  const json::object& members = told.get_object();
  const json::value* const format = members.if_contains("format");
  if (format == nullptr || *format != kFormat) fail("has another format than this program knows");
  m_madeAt = textOf(members, "madeAt");
  const json::value* const list = members.if_contains("files");
  if (list == nullptr || !list->is_array()) fail("has a manifest without files");
  for (const json::value& each : list->get_array()) {
    if (!each.is_object()) fail("has a manifest that cannot be understood");
    const json::object& entry = each.get_object();
    const json::value* const status = entry.if_contains("status");
    if (status == nullptr || !status->is_int64()) continue;
    const auto found = files.find(textOf(entry, "name"));
    auto [path, parameters] = partsOfTarget(textOf(entry, "target"));
    m_answers.push_back({std::move(path), std::move(parameters), static_cast<unsigned>(status->get_int64()),
                         found == files.end() ? std::string_view() : found->second});
  }
}

}  // namespace mirnctl
