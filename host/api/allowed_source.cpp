#include "api/allowed_source.h"

#include <utility>

namespace host {

namespace {

class AllowedSource final : public AnswerSource {
 public:
  AllowedSource(std::shared_ptr<const Call> call, std::unique_ptr<AnswerSource> source)
      : m_call(std::move(call)), m_source(std::move(source)) {}

  AnswerPart take() override {
    if (!m_call->authenticator->stillHolds(m_call->identity)) {
      throw Refusal(401, "The client is let in no longer");
    }
    return m_source->take();
  }

 private:
  const std::shared_ptr<const Call> m_call;
  const std::unique_ptr<AnswerSource> m_source;
};

}  // namespace

std::unique_ptr<AnswerSource> whileAllowed(std::shared_ptr<const Call> call,
                                           std::unique_ptr<AnswerSource> source) {
  if (call->authenticator == nullptr) return source;
  return std::make_unique<AllowedSource>(std::move(call), std::move(source));
}

}  // namespace host
