#include "insight/insight_witness.h"

#include <algorithm>
#include <boost/json/parse.hpp>
#include <exception>
#include <utility>

#include "actions/operation.h"
#include "service/insight_service.h"
#include "text.h"

namespace host {

namespace {

/// The word by which a body tells that work is to stop.
constexpr char kCancel[] = "CANCEL";

constexpr unsigned kFirstRefusal = 400;

bool tellsToCancel(const std::string& body) {
  boost::system::error_code error;
  const auto document = boost::json::parse(body, error);
  if (error || !document.is_object()) return false;
  const auto& members = document.get_object();
  return std::any_of(members.begin(), members.end(), [](const auto& member) {
    return member.value().is_string() && member.value().get_string() == kCancel;
  });
}

/// What the operation of a record is about, as its path names it.
insight::ObjectRef objectOf(const AuditRecord& record, const std::vector<insight::Operation>& operations) {
  const auto found = std::find_if(operations.begin(), operations.end(), [&](const insight::Operation& each) {
    return wideToUtf8(each.id) == record.operation;
  });
  if (found == operations.end() || found->argument.empty()) return {};
  const auto id = record.objects.find(wideToUtf8(found->argument));
  if (id == record.objects.end()) return {};
  return {wideToUtf8(found->objectType), utf8ToWide(id->second), {}};
}

insight::ClientChange changeOf(const AuditRecord& record, const std::vector<insight::Operation>& operations) {
  insight::ClientChange change;
  change.actor = record.identity;
  change.operation = record.operation;
  change.object = objectOf(record, operations);
  change.details["client"] = record.client;
  boost::json::object objects;
  for (const auto& [name, id] : record.objects) objects[name] = id;
  change.details["objects"] = std::move(objects);
  return change;
}

class InsightWitness : public ChangeWitness {
 public:
  explicit InsightWitness(std::shared_ptr<InsightDesk> desk) : m_desk(std::move(desk)) {}

  std::uint64_t begin(const AuditRecord& record, const std::string& body) override {
    insight::ClientChange change = changeOf(record, *m_desk->operations);
    change.cancels = tellsToCancel(body);
    return m_desk->service->beginChange(change);
  }

  void end(std::uint64_t number, const AuditRecord& record) override {
    const bool isDone = record.status < kFirstRefusal;
    boost::json::object details{{"status", record.status}};
    if (!isDone) details["reason"] = record.reason;
    m_desk->service->endChange(number, changeOf(record, *m_desk->operations), isDone, details);
  }

 private:
  const std::shared_ptr<InsightDesk> m_desk;
};

}  // namespace

std::unique_ptr<ChangeWitness> witnessOf(const std::shared_ptr<InsightDesk>& desk) {
  if (!desk) return {};
  return std::make_unique<InsightWitness>(desk);
}

}  // namespace host
