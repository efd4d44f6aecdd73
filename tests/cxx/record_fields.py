"""Prints a line for each field of each record, with the name that the C++ face has for it.

usage: record_fields.py SOURCE_DIRECTORY

A record that no class of the face shows is an error, but for those that only go to the kernel or hold
lists, and those that tests/cxx/ownership_test.cpp walks.
"""
import pathlib
import re
import sys

source = pathlib.Path(sys.argv[1])
sys.path.insert(0, str(source / "scripts"))
import public_header  # pylint: disable=wrong-import-position

WITHOUT_VIEW = {"IoctlEnvelope", "IoctlParams", "MacValue", "RecordList", "E2ITable", "VTEPTable",
                "SoftRssTunables", "SoftRssIndTable", "VMPublicIPEntry", "VMPublicIPTable"}
VIEW = re.compile(r"class (\w+) : public View<(\w+)>")


def snake(name):
    return re.sub(r"(?<=[a-z0-9])[A-Z]", lambda match: "_" + match.group(), name).lower()


faces = sorted((source / "include/vdrzax/cxx").glob("*.hpp"))
views = {record: view for face in faces for view, record in VIEW.findall(face.read_text())}
for record in public_header.records(source / "include"):
    if record.name in WITHOUT_VIEW:
        continue
    if record.name not in views:
        sys.exit(f"record_fields.py: no class of the face shows {record.name}")
    for field in record.fields:
        if not field.name.startswith("skipped"):
            print(f"EXPECT_FIELD({views[record.name]}, {snake(field.name)}, "
                  f"offsetof({record.name}, {field.name}), sizeof({record.name}::{field.name}))")
