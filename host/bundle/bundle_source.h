#ifndef MIRN_HOST_BUNDLE_BUNDLE_SOURCE_H
#define MIRN_HOST_BUNDLE_BUNDLE_SOURCE_H

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "answers/answer_parts.h"
#include "api/endpoint.h"
#include "api/places.h"
#include "bundle/archive.h"
#include "bundle/bundle_subject.h"
#include "bundle/manifest.h"
#include "bundle/mask.h"

namespace host {

/// Makes a bundle, a request at a time. The plug-in's answers are packed and held until all of them are of
/// one position; behind them nothing is held but what is under way.
class BundleSource final : public AnswerSource {
 public:
  /// `call` asked for it, at `madeAtMs` (milliseconds since 1970, UTC).
  BundleSource(std::unique_ptr<Places::Place> place, std::shared_ptr<const BundleSubject> subject,
               std::shared_ptr<const Call> call, std::int64_t madeAtMs, bool isMasked);

  AnswerPart take() override;

 private:
  enum class Stage { kOfPlugin, kOfHost, kDone };

  void step();
  void beginPlugin();
  void endPlugin();
  void endHost();
  void record(const BundledRead& read);
  Answer answerOf(const BundledRead& read) const;
  void learn(const insight::MachineView& machine);
  std::string told(const BundledRead& read, const std::string& body);
  std::string masked(const std::string& name) const;
  boost::json::value maskForm() const;
  boost::json::object form() const;

  const std::unique_ptr<Places::Place> m_place;
  const std::shared_ptr<const BundleSubject> m_subject;
  const std::shared_ptr<const Call> m_call;
  const std::int64_t m_madeAtMs;

  Stage m_stage = Stage::kOfPlugin;
  unsigned m_tries = 0;
  std::optional<ovra::PluginPosition> m_begin;
  std::optional<ovra::PluginPosition> m_end;
  std::unique_ptr<Mask> m_mask;  // null where nothing is masked
  BundledObjects m_objects;
  std::deque<BundledRead> m_reads;  // that are still to be made
  std::unique_ptr<Archive> m_archive;
  FileList m_files;
  std::vector<LeftOut> m_leftOut;
};

}  // namespace host

#endif
