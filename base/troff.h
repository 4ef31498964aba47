#ifndef MIRN_BASE_TROFF_H
#define MIRN_BASE_TROFF_H

#include <sstream>
#include <string>

/// A page of the manual as it is written, from top to bottom. What it is handed is plain text.
class TroffPage {
 public:
  TroffPage(const std::string& name, int section, const std::string& version, const std::string& date);

  void section(const std::string& heading);
  void subsection(const std::string& heading);
  void paragraph(const std::string& text);
  /// What is said of `term`, which stands in bold with `argument` behind it in italics.
  void item(const std::string& term, const std::string& argument, const std::string& text);
  /// Lines that stand as they are.
  void example(const std::string& lines);

  std::string text() const { return m_text.str(); }

 private:
  void beginParagraph();

  std::ostringstream m_text;
  bool m_isBehindHeading = false;  ///< There a paragraph begins by itself.
};

/// `text` so that troff takes none of it for its own.
std::string escapedForTroff(const std::string& text);

#endif
