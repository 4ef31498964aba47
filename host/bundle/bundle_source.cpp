#include "bundle/bundle_source.h"

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/json/parse.hpp>
#include <exception>
#include <utility>

#include "bundle/withheld.h"
#include "system/memory.h"
#include "text.h"
#include "view/machine_view_source.h"
#include "view/object_form.h"

namespace host {

namespace {

using Next = AnswerPart::Next;

constexpr unsigned kMostTries = 3;
constexpr unsigned kMostPages = 10;
constexpr std::size_t kMostActing = 200;
constexpr std::size_t kPartBytes = 65536;
constexpr std::int64_t kMillisecondsPerSecond = 1000;
constexpr unsigned kGood = 200;
constexpr unsigned kFormat = 1;
constexpr char kEvents[] = "listEvents";

/// As a file's name ends.
std::string endingOf(const std::string& mediaType) {
  const std::string type = mediaType.substr(0, mediaType.find(';'));
  if (type == "application/json" || type == "application/problem+json") return ".json";
  return type == "text/plain" ? ".txt" : ".bin";
}

std::string fileName(const BundledRead& read, const Answer& answer) {
  if (answer.body.empty()) return {};
  const std::string ending = endingOf(answer.contentType);
  return boost::algorithm::ends_with(read.file, ending) ? read.file : read.file + ending;
}

/// Of the page behind the one that `answer` is; empty where there is none.
std::string cursorIn(const Answer& answer) {
  if (answer.status != kGood) return {};
  boost::system::error_code error;
  const auto page = boost::json::parse(answer.body.text(), error);
  if (error || !page.is_object()) return {};
  const auto* const next = page.get_object().if_contains("next");
  return next == nullptr || !next->is_string() ? std::string() : std::string(next->get_string());
}

boost::json::value positionForm(const std::optional<ovra::PluginPosition>& position) {
  if (!position) return nullptr;
  return insight::formOf(*position);
}

bool isSamePicture(const std::optional<ovra::PluginPosition>& one,
                   const std::optional<ovra::PluginPosition>& other) {
  if (!one || !other) return true;
  return one->epoch == other->epoch && one->revision == other->revision;
}

boost::json::object pluginForm(const ovra::plugin_interface& plugin) {
  const PluginVersion& version = plugin.getVersion();
  return {{"name", wideToUtf8(plugin.getName())},
          {"code", wideToUtf8(plugin.getCode())},
          {"version", std::to_string(version.major) + '.' + std::to_string(version.minor) + '.' +
                          std::to_string(version.patch) + '.' + std::to_string(version.build)}};
}

}  // namespace

BundleSource::BundleSource(std::unique_ptr<Places::Place> place, std::shared_ptr<const BundleSubject> subject,
                           std::shared_ptr<const Call> call, std::int64_t madeAtMs, bool isMasked)
    : m_place(std::move(place)),
      m_subject(std::move(subject)),
      m_call(std::move(call)),
      m_madeAtMs(madeAtMs),
      m_mask(isMasked ? std::make_unique<Mask>(m_subject->maskKey) : nullptr) {}

AnswerPart BundleSource::take() {
  step();
  AnswerPart part;
  part.next = m_stage == Stage::kDone ? Next::kNone : Next::kAtOnce;
  const bool isFull = m_stage == Stage::kOfHost && m_archive->packedSize() >= kPartBytes;
  if (isFull || m_stage == Stage::kDone) part.bytes = m_archive->take();
  return part;
}

void BundleSource::step() {
  if (m_tries == 0) return beginPlugin();
  if (m_reads.empty()) return m_stage == Stage::kOfPlugin ? endPlugin() : endHost();
  const BundledRead read = std::move(m_reads.front());
  m_reads.pop_front();
  record(read);
}

void BundleSource::beginPlugin() {
  ++m_tries;
  m_archive = std::make_unique<Archive>(m_madeAtMs / kMillisecondsPerSecond);
  m_files = {};
  m_leftOut.clear();
  if (m_subject->watched != nullptr) m_begin = m_subject->watched->position();
  if (m_subject->views) learn(*m_subject->views->view());
  const auto reads = m_subject->operations.readsOfPlugin(m_objects, m_leftOut);
  m_reads.assign(reads.begin(), reads.end());
}

void BundleSource::learn(const insight::MachineView& machine) {
  m_objects = bundledObjectsOf(machine, kMostActing);
  if (m_mask) m_mask->learn(machine);
}

/// A picture that does not stay is told as such, since somebody waits for the bundle.
void BundleSource::endPlugin() {
  if (m_subject->watched != nullptr) m_end = m_subject->watched->position();
  if (!isSamePicture(m_begin, m_end) && m_tries < kMostTries) return beginPlugin();
  m_stage = Stage::kOfHost;
  const auto reads = m_subject->operations.readsOfHost(m_objects, m_leftOut);
  m_reads.assign(reads.begin(), reads.end());
}

void BundleSource::endHost() {
  m_archive->add("manifest.json", manifestText(form(), m_files, m_leftOut));
  m_archive->finish();
  m_stage = Stage::kDone;
  giveMemoryBack();
}

void BundleSource::record(const BundledRead& read) {
  const Answer answer = answerOf(read);
  const std::string name = fileName(read, answer);
  const std::string body = told(read, answer.body.text());
  m_files.add(read, masked(name), masked(targetText(read.target)), answer, body.size());
  if (!name.empty()) m_archive->add(masked(name), body);
  if (body.size() >= kLargeBytes) giveMemoryBack();
  if (read.page == 0 || read.page >= kMostPages) return;
  const std::string cursor = cursorIn(answer);
  if (!cursor.empty()) m_reads.push_front(nextPage(read, cursor));
}

/// The body of an answer as others may see it.
std::string BundleSource::told(const BundledRead& read, const std::string& body) {
  const std::string& operation = read.endpoint->operation;
  std::string text = withoutWithheld(operation, body, m_subject->folders);
  if (!m_mask) return text;
  const bool tellsOfThePast = read.endpoint->document || operation == kEvents;
  tellsOfThePast ? m_mask->learn(text) : m_mask->learnList(text);
  return m_mask->masked(text);
}

std::string BundleSource::masked(const std::string& name) const {
  return m_mask ? m_mask->maskedName(name) : name;
}

/// Whoever may see least is asked for: a bundle goes on to others than the one who made it.
Answer BundleSource::answerOf(const BundledRead& read) const {
  Call call;
  call.target = read.target;
  call.identity = {m_call->identity.name, Role::kObserve};
  call.client = m_call->client;
  try {
    return read.endpoint->handle(call, {});
  } catch (const std::exception& failure) {
    return failureAnswer(failure);
  }
}

boost::json::value BundleSource::maskForm() const {
  if (!m_mask) return nullptr;
  return {{"replaced", {"serialNumber", "id"}}, {"sameUntil", "the host ends"}};
}

boost::json::object BundleSource::form() const {
  return {{"format", kFormat},
          {"madeAt", insight::timeForm(static_cast<std::uint64_t>(m_madeAtMs))},
          {"host", {{"version", m_subject->hostVersion}}},
          {"plugin", pluginForm(m_subject->plugin)},
          {"library", m_subject->library},
          {"position", positionForm(m_begin)},
          {"endPosition", positionForm(m_end)},
          {"moved", !isSamePicture(m_begin, m_end)},
          {"tries", m_tries},
          {"mask", maskForm()},
          {"configuration", m_subject->configuration},
          {"withheld", withheldForm()}};
}

}  // namespace host
