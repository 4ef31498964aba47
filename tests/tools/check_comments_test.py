#!/usr/bin/env python3
"""Shows that tools/check-comments finds what it is there for."""

import unittest

import tool

check_comments = tool.load("check-comments")
FULL = "/// " + "word " * 20 + "end"  # a line with room for no long word


class CheckCommentsTest(unittest.TestCase):
    def faults(self, *lines):
        """What is wrong with a source, as "line: fault"."""
        return [f"{number}: {fault}" for number, fault in check_comments.faults_of("\n".join(lines) + "\n")]

    def test_whole_paragraphs_lists_and_tables_pass(self):
        self.assertEqual([], self.faults(
            FULL, "/// which goes on.", "///", "/// - An item,", FULL.replace("/// ", "/// - "), "///   which goes on.",
            "///", "/// Which are:", "///", "///     a  first;", "///     b  second", "void f();  ///< Of a.",
            "void g();  ///< Of b."))

    def test_a_comment_beyond_the_border_fails(self):
        self.assertEqual([], self.faults("// " + "x" * 107))
        self.assertEqual(["1: wider than 110 columns"], self.faults("// " + "x" * 108))
        self.assertEqual(["1: wider than 110 columns"], self.faults("int i;  ///< " + "x" * 108))

    def test_a_sentence_cut_in_the_middle_fails(self):
        self.assertEqual(["2: ends early: the next line's first word would have fit"],
                         self.faults(FULL, "/// end), an", "/// encoded slash in the path."))

    def test_a_word_on_a_line_of_its_own_fails(self):
        self.assertEqual(["2: one word on a line of its own"], self.faults(FULL, "/// system."))
        self.assertEqual(["2: one word on a line of its own"], self.faults("// " + FULL[4:], "// system."))
        self.assertEqual([], self.faults("/// Alone.", "///", FULL))

    def test_an_item_that_goes_on_below_its_dash_fails(self):
        self.assertEqual(["2: starts in another column than its item"],
                         self.faults(FULL.replace("/// ", "/// - "), "/// value is this."))
        self.assertEqual(["2: starts in another column than its text"],
                         self.faults(FULL, "///         value is this."))

    def test_a_list_that_has_become_a_paragraph_fails(self):
        self.assertEqual(["1: an item of a list in the middle of a line"], self.faults("/// - One. - Two."))
        self.assertEqual([], self.faults("/// One - and only one - of them."))

    def test_an_example_whose_statements_ran_together_fails(self):
        for line in ("///     open(a); close(b);", "///     expect(true) validator.validate(body);"):
            with self.subTest(line):
                self.assertEqual(["1: two statements of an example on one line"], self.faults(line))
        self.assertEqual([], self.faults("///     open(a);  // or not"))

    def test_text_that_stands_right_below_an_example_fails(self):
        self.assertEqual(["2: stands below an example or a table without an empty line between"],
                         self.faults("///     open(a);", "/// Closes itself."))

    def test_a_trailing_comment_that_goes_on_fails(self):
        self.assertEqual(["2: what trails code goes on below it; put it above"],
                         self.faults("int i;  ///< " + "word " * 19, "        ///< word word"))

    def test_another_dialect_of_docstrings_fails(self):
        for line in ("/// @param a  one", "/// @throws Refusal on all", "/// @return one", "/// \\brief One."):
            with self.subTest(line):
                self.assertIn("in a docstring; say it in prose", self.faults(line)[0])
        self.assertEqual(["1: a docstring that does not stand behind ///"], self.faults("/** One. */"))
        self.assertEqual([], self.faults("/// Mail to one@return.example, see `src\\param`."))

    def test_what_stands_in_texts_is_no_comment(self):
        wide = "x" * 120
        self.assertEqual([], self.faults(f'auto a = "// {wide}";', f'auto b = R"(// {wide}', f'"// {wide})";',
                                         f"auto c = 1'000; auto d = '\"'; auto e = \"{wide} // \\\" // \";"))

    def test_orders_to_tools_are_no_prose(self):
        self.assertEqual([], self.faults("// The names are the parser's.", "// NOLINTBEGIN(naming)", "int i;",
                                         "// NOLINTEND(naming)"))


if __name__ == "__main__":
    unittest.main()
