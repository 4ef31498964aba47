#ifndef MIRN_SESSION_LENT_TEXTS_H
#define MIRN_SESSION_LENT_TEXTS_H

#include <memory>

struct KnownTexts;

/// The texts of the pictures so far, for whoever takes another: taken from their place and put back at the
/// end, without those that this picture did not ask for and no other has. Whoever finds the place empty,
/// since somebody else takes a picture just now, begins with none; nobody waits.
class LentTexts {
 public:
  explicit LentTexts(std::shared_ptr<KnownTexts>& place);
  LentTexts(const LentTexts&) = delete;
  LentTexts& operator=(const LentTexts&) = delete;
  ~LentTexts();

  const std::shared_ptr<KnownTexts>& texts() const { return m_texts; }

 private:
  std::shared_ptr<KnownTexts>& m_place;
  std::shared_ptr<KnownTexts> m_texts;
};

#endif
