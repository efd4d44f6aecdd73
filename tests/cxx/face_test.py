"""The C++ face calls each function of the headers in one place, and each of its calls comes in two forms.

usage: face_test.py SOURCE_DIRECTORY
"""
import collections
import pathlib
import re
import sys
import unittest

SOURCE = pathlib.Path(sys.argv.pop())
sys.path.insert(0, str(SOURCE / "scripts"))
import public_header  # pylint: disable=wrong-import-position

INCLUDE = SOURCE / "include"
COMMENT_OR_TEXT = re.compile(r"//[^\n]*|\"[^\"\n]*\"")
TRYING = re.compile(r"\btry_(\w+)\([^;{}]*\) const noexcept \{")
THROWING = re.compile(r"\b(?!try_)(\w+)\([^;{}]*\) const \{\s*return try_(\w+)\(")


def faces():
    return [INCLUDE / "vdrzax.hpp", *sorted((INCLUDE / "vdrzax/cxx").glob("*.hpp"))]


def code(path):
    """Without comments, names in messages and what a directive says."""
    text = re.sub(r"^#.*$", "", path.read_text(), flags=re.MULTILINE)
    return COMMENT_OR_TEXT.sub("", text)


class Face(unittest.TestCase):
    def test_each_function_is_called_in_one_place(self):
        uses = collections.Counter(
            name for path in faces() for name in re.findall(r"\bVDRZAX_?[A-Z]\w*[a-z]\w*\b", code(path)))
        declared = {function.name: 1 for function in public_header.functions(INCLUDE)}
        self.assertGreater(len(declared), 190)
        self.assertEqual(declared, dict(uses))

    def test_each_function_is_called_by_the_name_that_a_failure_says(self):
        for path in faces():
            text = re.sub(r"^\s*//.*$", "", path.read_text(), flags=re.MULTILINE)
            for said, called in re.findall(r"\"(VDRZAX\w+)\",\s*(\w[\w:]*)", text):
                with self.subTest(path=path.name, said=said):
                    self.assertIn(called, (said, said.replace("VDRZAX_", "detail::"), "ENOMEM",
                                           "ENAMETOOLONG", "detail::CodeOf"))

    def test_each_call_throws_or_tries(self):
        for path in faces():
            text = code(path)
            trying = TRYING.findall(text)
            throwing = THROWING.findall(text)
            with self.subTest(path=path.name):
                self.assertEqual(trying, [call for call, _ in throwing])
                self.assertEqual(trying, [called for _, called in throwing])

    def test_the_umbrella_includes_each_family(self):
        text = (INCLUDE / "vdrzax.hpp").read_text()
        for header in public_header.read(INCLUDE):
            self.assertIn(f"#include <vdrzax/cxx/{header.family}.hpp>", text)
            self.assertIn(f"public {header.family.capitalize()}Calls", text)


unittest.main()
