#include "catalogue.h"

#include <boost/regex.hpp>
#include <iterator>

#include "branches.h"
#include "framework_messages.h"
#include "plugin_identity.h"
#include "service_exceptions.h"

namespace {

constexpr wchar_t kIdentifierGroup[] = L"([[:alnum:]]+)";

const boost::wregex& pathArgument() {
  static const boost::wregex pattern(L"\\{([[:alpha:]]+)\\}");
  return pattern;
}

RouteRows joinedRows() {
  RouteRows all;
  for (const auto rows : {serviceRows, raidRows, controllerRows, deviceRows, portRows, arrayRows, volumeRows,
                          diskRows, eventRows}) {
    RouteRows branch = rows();
    all.insert(all.end(), std::make_move_iterator(branch.begin()), std::make_move_iterator(branch.end()));
  }
  return all;
}

std::wstring below(const std::wstring& path, const std::wstring& rest) {
  return rest.empty() ? path : path + L"/" + rest;
}

Catalogue byNumber(const RouteRows& rows) {
  Catalogue sorted{};
  for (const RouteRow& row : rows) sorted.at(static_cast<std::size_t>(row.route)) = &row;
  return sorted;
}

/// By the numbers of the rows.
std::vector<std::wstring> patternsOf(const Catalogue& rows) {
  std::vector<std::wstring> patterns;
  for (const RouteRow* row : rows) {
    patterns.push_back(boost::regex_replace(std::wstring(row->path), pathArgument(),
                                            std::wstring(kIdentifierGroup),
                                            boost::regex_constants::format_literal));
  }
  return patterns;
}

}  // namespace

const Catalogue& catalogue() {
  static const RouteRows rows = joinedRows();
  static const Catalogue sorted = byNumber(rows);
  return sorted;
}

const RouteRow& rowOf(RouteId route) { return *catalogue()[static_cast<std::size_t>(route)]; }

const std::wstring& patternOf(const RouteRow& row) {
  static const std::vector<std::wstring> patterns = patternsOf(catalogue());
  return patterns[static_cast<std::size_t>(row.route)];
}

std::wstring keyOf(const RouteRow& row) { return below(kPluginCode, row.branch); }

std::wstring templateOf(const RouteRow& row) { return below(keyOf(row), row.path); }

std::vector<std::wstring> pathArgumentsOf(const RouteRow& row) {
  const std::wstring path = row.path;
  std::vector<std::wstring> names;
  for (boost::wsregex_iterator found(path.begin(), path.end(), pathArgument()), end; found != end; ++found) {
    names.push_back((*found)[1].str());
  }
  return names;
}

const RefusalRows& refusalsOfAllRoutes() {
  static const RefusalRows rows = {{kErrorOffline, kMsgPluginNotWorking, RefusalKind::kOffline}};
  return rows;
}
