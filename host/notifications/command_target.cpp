#include "notifications/command_target.h"

#include <stdexcept>
#include <utility>

namespace host {

/// Its arguments may hold what is nobody's business.
CommandTarget::CommandTarget(std::vector<std::string> words, std::chrono::milliseconds patience)
    : m_words(std::move(words)), m_patience(patience), m_name("command " + m_words.front()) {
  if (!isProgram(m_words.front())) throw std::runtime_error(m_name + ": this is no program that can be run");
}

}  // namespace host
