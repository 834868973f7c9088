"""Which changes are made."""

import unittest

from interface_file import interface_changes
from parts import changes, parts
from source import Source


def changed(content, path="file.mm"):
    source = Source(path, content, {"Style": ["plain", "bold"]})
    return {change.content for change in source.changes()}


class SourceTest(unittest.TestCase):
    def test_statements_are_removed_and_swapped(self):
        found = changed("- (void)go {\n    [one a];\n    [two b];\n}\n")
        self.assertIn("- (void)go {\n    \n    [two b];\n}\n", found)
        self.assertIn("- (void)go {\n    [two b];\n    [one a];\n}\n", found)

    def test_properties_of_one_object_are_not_swapped(self):
        found = changed("- (void)go {\n    [one setA:a];\n    [one setB:b];\n}\n")
        self.assertNotIn("- (void)go {\n    [one setB:b];\n    [one setA:a];\n}\n", found)

    def test_messages_are_not_sent(self):
        self.assertIn("int f() { return 0; }", changed("int f() { return [[a b] c]; }"))
        self.assertNotIn("int f() { return [0 c]; }", changed("int f() { return [[a b] c]; }"))

    def test_conditions_and_constants_are_changed(self):
        found = changed("bool f() { return a == 1 && YES; }", "file.cpp")
        for wanted in ("a != 1 && YES", "a == 2 && YES", "a == 1 && !(YES)", "a == 1 && NO"):
            self.assertIn(f"bool f() {{ return {wanted}; }}", found)

    def test_enumerations_and_texts_are_changed(self):
        found = changed('f(Style::bold, "text");', "file.cpp")
        self.assertEqual(found, {'f(Style::plain, "text");', 'f(Style::bold, "text~");'})

    def test_places_of_drawn_things_are_left_alone(self):
        self.assertEqual(changed("g(NSMakeRect(1, 2, 3, 4));"), set())

    def test_macros_are_left_alone(self):
        self.assertEqual(changed("#define GO(a) \\\n    f(1, a)\n"), set())


class PartsTest(unittest.TestCase):
    def test_all_parts_of_the_installer_can_be_changed(self):
        for part, files in parts().items():
            with self.subTest(part):
                self.assertTrue([change for file in files for change in changes(file)])


class InterfaceFileTest(unittest.TestCase):
    CONTENT = '<a id="1" x="1"/><a id="2"/><outlet property="p" destination="1" id="3"/>'

    def test_connections_are_dropped_and_lead_elsewhere(self):
        found = {change.content for change in interface_changes("file.xib", self.CONTENT)}
        self.assertIn('<a id="1" x="1"/><a id="2"/>', found)
        self.assertIn(self.CONTENT.replace('destination="1"', 'destination="2"'), found)

    def test_attributes_that_mean_something_are_changed(self):
        found = {
            change.content for change in interface_changes("file.xib", '<b hidden="YES" x="1"/>')
        }
        self.assertEqual(found, {'<b x="1"/>', '<b hidden="NO" x="1"/>'})


if __name__ == "__main__":
    unittest.main()
