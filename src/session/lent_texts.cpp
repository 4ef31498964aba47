#include "lent_texts.h"

#include <utility>

#include "known_texts.h"

LentTexts::LentTexts(std::shared_ptr<KnownTexts>& place)
    : m_place(place), m_texts(std::atomic_exchange(&place, std::shared_ptr<KnownTexts>())) {
  if (!m_texts) m_texts = std::make_shared<KnownTexts>();
}

LentTexts::~LentTexts() {
  m_texts->startOver();
  std::atomic_store(&m_place, std::move(m_texts));
}
