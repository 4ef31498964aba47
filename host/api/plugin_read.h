#ifndef MIRN_HOST_API_PLUGIN_READ_H
#define MIRN_HOST_API_PLUGIN_READ_H

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "answers/content_coding.h"
#include "api/endpoint.h"
#include "api/exchange.h"
#include "revisions/revisions.h"

namespace host {

/// How the reads of one operation are answered.
struct ReadRules {
  std::function<Answer(const Call& call, const std::string& body)> ask;  ///< Calls the plug-in.
  bool isMomentary = false;        ///< The answer may differ while the revision stays: it is not kept.
  Revisions* revisions = nullptr;  ///< Null: the plug-in tells no revision, and nothing is kept or awaited.
};

/// One read on its way: from a kept answer or a call of the plug-in to the form and the status that the
/// client asked for, waiting for a change where the client knows the answer already. Lives on the strand of
/// the exchange.
class PluginRead : public std::enable_shared_from_this<PluginRead> {
 public:
  using Sender = std::shared_ptr<Exchange>;

  /// `rules` outlive the read.
  PluginRead(const ReadRules& rules, std::shared_ptr<const Call> call, std::string body);

  void begin(const Sender& exchange);

 private:
  using Clock = std::chrono::steady_clock;

  bool isShared() const { return m_rules.revisions != nullptr && m_body.empty(); }
  void look(const Sender& exchange);
  void count(std::atomic<std::uint64_t>& counter) const;
  void makeAlone(const Sender& exchange);
  MadeAnswer make() const;
  MadeAnswer makeForm() const;
  MadeAnswer makePlain() const;
  void keep(const MadeAnswer& made, ContentCoding coding) const;
  std::string question(ContentCoding coding) const;
  void conclude(const Sender& exchange, const MadeAnswer& made);
  void concludeGood(const Sender& exchange, const MadeAnswer& made);
  bool mayWait(const Exchange& exchange) const;
  std::chrono::milliseconds timeLeft() const;
  void await(const Sender& exchange, const MadeAnswer& made);
  void tryLater(const Sender& exchange, const MadeAnswer& made);
  void answer(const Sender& exchange, std::shared_ptr<const Answer> answer);
  void refuse(const Sender& exchange, const Refusal& refusal);

  const ReadRules& m_rules;
  const std::shared_ptr<const Call> m_call;
  const std::string m_body;
  ContentCoding m_coding = ContentCoding::kPlain;
  std::string m_question;                      // of the form that is sent
  std::optional<std::chrono::seconds> m_wait;  // that the client is granted
  Clock::time_point m_deadline{};
  std::unique_ptr<RevisionWatch::Place> m_place;  // from the first wait on
  bool m_isAnswered = false;
};

}  // namespace host

#endif
