"""Holds the rules of source_rules.py, and shows that each of them can be broken."""

import re
import unittest

from source_rules import ROOT, RULES, places, sources


def with_addition(texts, rule, addition):
    """The sources, with one more line in the first file that the rule speaks of."""
    path = next(path for path in texts if any(path.match(each) for each in rule.files))
    return texts | {path: f"{texts[path]}{addition}\n"}


class SourcesTest(unittest.TestCase):
    def test_rules_hold(self):
        texts = sources()
        for rule in RULES:
            with self.subTest(rule.name):
                found = places(rule, texts)
                self.assertEqual(len(found), rule.times, found)

    def test_every_rule_notices_what_breaks_it(self):
        for rule in RULES:
            with self.subTest(rule.name):
                broken = with_addition(sources(), rule, rule.example)
                self.assertNotEqual(len(places(rule, broken)), rule.times)

    def test_comments_and_texts_break_no_rule(self):
        for rule in RULES:
            with self.subTest(rule.name):
                for harmless in ("// {}", "/* {}\n*/", 'text = "\\"{}";'):
                    texts = with_addition(sources(), rule, harmless.format(rule.example))
                    self.assertEqual(len(places(rule, texts)), rule.times, harmless)

    def test_rules_read_all_that_is_built(self):
        built = re.findall(r"\S+\.(?:cpp|mm)\b", (ROOT / "CMakeLists.txt").read_text())
        self.assertGreater(len(built), 1)
        self.assertEqual(set(built) - {str(path) for path in sources()}, set())


if __name__ == "__main__":
    unittest.main()
