#include "troff.h"

#include <gtest/gtest.h>

namespace {

TEST(Troff, TakesNothingOfPlainTextForItsOwn) {
  EXPECT_EQ(escapedForTroff("a\\b --c ~d \"e\" f'g"), "a\\eb \\-\\-c \\(tid \\(dqe\\(dq f\\(aqg");
  EXPECT_EQ(escapedForTroff(".TH\n.B a.b\n'c"), "\\&.TH\n\\&.B a.b\n\\&\\(aqc");
}

TEST(Troff, WritesAPageFromTopToBottom) {
  TroffPage page("p-q", 8, "1", "2026-01-31");
  page.section("A");
  page.subsection("B c");
  page.paragraph("Text.");
  page.item("--x", "N", "what");
  page.item("y", "", "else");
  page.example("a = b\nc = d");
  EXPECT_EQ(page.text(),
            ".TH \"p\\-q\" 8 2026-01-31 \"mirn 1\"\n.SH \"A\"\n.SS \"B c\"\nText.\n"
            ".TP\n\\fB\\-\\-x\\fR \\fIN\\fR\nwhat\n.TP\n\\fBy\\fR\nelse\n"
            ".PP\n.nf\n.RS\na = b\nc = d\n.RE\n.fi\n");
}

}  // namespace
