#!/usr/bin/env python3
"""What dipole.dll offers and what it needs: exports.py OBJDUMP CXXFILT DIPOLE_DLL.

Reads the public operations of the interface's classes from their headers, with a parser of its own, and looks
for each among the library's exports. Nothing else may be exported, and nothing but the system's libraries and
platform.dll may be needed."""

import collections
import re
import subprocess
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent

HEADERS = """
headmodel/Sphere.h headmodel/Sphere9File.h headmodel/Spherezq.h
headmodel/FiduciaryPt.h headmodel/FiduciaryPt02Prcs.h headmodel/FiduciaryPt9File.h headmodel/FiduciaryPtzq.h
headmodel/Fiducial.h headmodel/Fiducial02Prcs.h headmodel/Fiducial03Operator.h headmodel/Fiducial9File.h
headmodel/Fiducialzq.h
record/Dipoles.h record/Dipoles3Display2D.h record/Dipoles4File.h record/Dipoleszq.h
collection/DipoleFace.h collection/DipoleFace1Process.h collection/DipoleFace2On2DView.h
collection/DipoleFace3On3DView.h
import/DipoleFace8Import01_CTF.h import/DipoleFace8Import02_4DMSI.h
file/DipoleFace9File.h
ui/DipoleFacezq.h
""".split()

# Marked for the sake of members that hosts compile themselves; its operations are no part of the interface.
HELPERS = ["collection/DipoleTable.h"]

PLATFORM = "platform.dll"
SYSTEM = {"COMCTL32.dll", "GDI32.dll", "KERNEL32.dll", "USER32.dll", "UxTheme.dll", "msvcrt.dll"}

MARKED_CLASS = re.compile(r"^class AFX_EXT_CLASS (\w+)(?: : public \w+)? \{", re.MULTILINE)

# How the exports spell the types that the headers call by other names.
TYPE_NAMES = {"COLORREF": "unsigned long", "DWORD": "unsigned long", "UINT": "unsigned int"}


def without_comments(text):
    return re.sub(r"//[^\n]*|/\*.*?\*/", " ", text, flags=re.DOTALL)


def statements(body):
    """The declarations of a class body, as (access, text without what stands in braces)."""
    access, text, depth = "private", "", 0
    for character in body:
        if character == "{":
            depth += 1
        elif character == "}":
            depth -= 1
            if depth == 0 and re.search(r"\)(?: const)?(?: noexcept)?(?: override)?\s*$", text):
                yield access, " ".join(text.split())  # a function that is defined here
                text = ""
        elif depth == 0 and character == ";":
            yield access, " ".join(text.split())
            text = ""
        elif depth == 0:
            text += character
            label = re.fullmatch(r"\s*(public|protected|private)\s*:", text)
            if label:
                access, text = label[1], ""


def split_parameters(text):
    parts, depth = [""], 0
    for character in text:
        depth += (character in "(<") - (character in ")>")
        if character == "," and depth == 0:
            parts.append("")
        else:
            parts[-1] += character
    return [part.strip() for part in parts if part.strip()]


def type_of(parameter):
    """A parameter's type in the words of the demangler: `const double* point` is `double const*`."""
    parameter = parameter.split("=")[0].strip()
    callback = re.fullmatch(r"(\w+) \(\*\w*\)\((.*)\)", parameter)
    if callback:
        return f"{callback[1]} (*)({', '.join(map(type_of, split_parameters(callback[2])))})"
    plain = re.fullmatch(r"(const )?((?:unsigned )?[\w:]+)\s*([*&]*)\s*(\w*)", parameter)
    if not plain:
        raise ValueError(f"a parameter that this parser does not know: {parameter}")
    name = TYPE_NAMES.get(plain[2], plain[2])
    return name + (" const" if plain[1] and plain[3] else "") + plain[3]


def operation_of(statement):
    """(name, types, whether const) of a member function's declaration; None of any other declaration."""
    if re.match(r"(enum|struct|class|using|friend|template|typedef)\b", statement):
        return None
    before = statement.split("(")[0]
    is_initialised = "=" in before.replace("operator=", "")
    is_callback = re.match(r"[\w ]+\(\*", statement)
    if before == statement or is_initialised or is_callback or statement.endswith("= delete"):
        return None
    function = re.fullmatch(r"(?:[\w:&*<> ]*?[ &*])?(operator\S+?|~?\w+)\((.*)\)([^()]*)", statement)
    if not function:
        raise ValueError(f"a declaration that this parser does not know: {statement}")
    types = [type_of(part) for part in split_parameters(function[2])]
    return function[1], types, "const" in function[3].split()


def class_of(path):
    """The name and the body of the class that a header marks."""
    text = without_comments((ROOT / path).read_text(encoding="utf-8"))
    found = MARKED_CLASS.search(text)
    if not found:
        raise ValueError(f"{path} marks no class")
    return found[1], text[found.end():text.index("\n};", found.end())]


class Header:
    def __init__(self, path):
        self.name, body = class_of(path)
        self.operations = [operation for access, statement in statements(body)
                           if access == "public" and (operation := operation_of(statement))]

    def exports(self):
        """The names that the library has to export, each with how many kinds of it there are."""
        expected = collections.Counter([f"vtable for {self.name}", f"typeinfo for {self.name}"])
        for name, types, is_const in self.operations:
            kinds = 3 if name.startswith("~") else 2 if name == self.name else 1
            expected[f"{self.name}::{name}({', '.join(types)}){' const' if is_const else ''}"] += kinds
        return expected


def imports_of(dump):
    return set(re.findall(r"^\s*DLL Name: (\S+)$", dump, re.MULTILINE))


def exports_of(dump, cxxfilt):
    table = dump[dump.index("[Ordinal/Name Pointer] Table"):]
    names = re.findall(r"^\s*\[ *\d+\] (?:\+base\[ *\d+\] +\w+ )?(\w+)$", table, re.MULTILINE)
    return subprocess.run([cxxfilt], input="\n".join(names), capture_output=True, text=True,
                          check=True).stdout.splitlines()


class Library(unittest.TestCase):
    OBJDUMP = CXXFILT = DLL = ""

    @classmethod
    def setUpClass(cls):
        cls.dump = subprocess.run([cls.OBJDUMP, "-p", cls.DLL], capture_output=True, text=True,
                                  check=True).stdout
        cls.exports = collections.Counter(exports_of(cls.dump, cls.CXXFILT))
        cls.headers = {path: Header(path) for path in HEADERS}

    def test_every_marked_class_is_listed(self):
        marked = [path.relative_to(ROOT).as_posix()
                  for folder in ("headmodel", "record", "collection", "import", "file", "ui")
                  for path in (ROOT / folder).glob("*.h")
                  if MARKED_CLASS.search(path.read_text(encoding="utf-8"))]
        self.assertEqual(sorted(marked), sorted(HEADERS + HELPERS))

    def test_every_class_declares_how_it_is_made_copied_and_ended(self):
        for path, header in self.headers.items():
            name, copied = header.name, [f"{header.name} const&"]
            for operation in [(name, [], False), (name, copied, False), ("operator=", copied, False),
                              (f"~{name}", [], False)]:
                with self.subTest(header=path, operation=operation):
                    self.assertIn(operation, header.operations)

    def test_every_public_operation_is_exported(self):
        for path, header in self.headers.items():
            for name, count in header.exports().items():
                with self.subTest(header=path, operation=name):
                    self.assertEqual(self.exports[name], count)

    def test_nothing_but_the_marked_classes_is_exported(self):
        classes = [header.name for header in self.headers.values()] + [class_of(path)[0] for path in HELPERS]
        marked = re.compile("(?:(?:vtable|typeinfo|typeinfo name) for )?(?:%s)(?:::.*)?$" % "|".join(classes))
        self.assertEqual([name for name in self.exports if not marked.match(name)], [])

    def test_it_needs_the_platform_and_the_system_only(self):
        self.assertEqual(imports_of(self.dump), SYSTEM | {PLATFORM})


if __name__ == "__main__":
    Library.OBJDUMP, Library.CXXFILT, Library.DLL = sys.argv[1:4]
    unittest.main(argv=sys.argv[:1])
