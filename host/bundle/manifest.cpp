#include "bundle/manifest.h"

#include <boost/json/array.hpp>
#include <boost/json/serialize.hpp>

namespace host {

namespace {

boost::json::value textOrNull(const std::string& text) {
  if (text.empty()) return nullptr;
  return boost::json::string(text);
}

}  // namespace

void FileList::add(const BundledRead& read, const std::string& name, const std::string& target,
                   const Answer& answer, std::size_t bytes) {
  const boost::json::object form{
      {"name", textOrNull(name)}, {"operation", read.endpoint->operation},       {"target", target},
      {"status", answer.status},  {"mediaType", textOrNull(answer.contentType)}, {"bytes", bytes}};
  m_elements += (m_elements.empty() ? "\n" : ",\n") + boost::json::serialize(form);
}

std::string manifestText(const boost::json::object& form, const FileList& files,
                         const std::vector<LeftOut>& leftOut) {
  boost::json::array omissions;
  for (const LeftOut& each : leftOut) {
    omissions.push_back(boost::json::object{{"operation", each.operation}, {"reason", each.reason}});
  }
  boost::json::object all = form;
  all["leftOut"] = std::move(omissions);
  std::string text = boost::json::serialize(all);
  text.pop_back();
  return text + ",\"files\":[" + files.elements() + "]}\n";
}

}  // namespace host
