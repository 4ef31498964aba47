#include "troff.h"

#include <utility>

namespace {

/// An argument of a macro.
std::string quoted(const std::string& text) { return '"' + escapedForTroff(text) + '"'; }

}  // namespace

std::string escapedForTroff(const std::string& text) {
  std::string escaped;
  bool isLineStart = true;
  for (const char character : text) {
    if (isLineStart && (character == '.' || character == '\'')) escaped += "\\&";
    isLineStart = character == '\n';
    switch (character) {
      case '\\':
        escaped += "\\e";
        break;
      case '-':
        escaped += "\\-";
        break;
      case '"':
        escaped += "\\(dq";
        break;
      case '\'':
        escaped += "\\(aq";
        break;
      case '~':
        escaped += "\\(ti";
        break;
      default:
        escaped += character;
    }
  }
  return escaped;
}

TroffPage::TroffPage(const std::string& name, int section, const std::string& version,
                     const std::string& date) {
  m_text << ".TH " << quoted(name) << ' ' << section << ' ' << date << ' ' << quoted("mirn " + version)
         << '\n';
}

void TroffPage::section(const std::string& heading) {
  m_text << ".SH " << quoted(heading) << '\n';
  m_isBehindHeading = true;
}

void TroffPage::subsection(const std::string& heading) {
  m_text << ".SS " << quoted(heading) << '\n';
  m_isBehindHeading = true;
}

void TroffPage::beginParagraph() {
  if (!std::exchange(m_isBehindHeading, false)) m_text << ".PP\n";
}

void TroffPage::paragraph(const std::string& text) {
  beginParagraph();
  m_text << escapedForTroff(text) << '\n';
}

void TroffPage::item(const std::string& term, const std::string& argument, const std::string& text) {
  m_isBehindHeading = false;
  m_text << ".TP\n\\fB" << escapedForTroff(term) << "\\fR";
  if (!argument.empty()) m_text << " \\fI" << escapedForTroff(argument) << "\\fR";
  m_text << '\n' << escapedForTroff(text) << '\n';
}

void TroffPage::example(const std::string& lines) {
  beginParagraph();
  m_text << ".nf\n.RS\n" << escapedForTroff(lines) << "\n.RE\n.fi\n";
}
