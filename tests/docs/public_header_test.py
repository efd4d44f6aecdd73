"""What scripts/public_header.py reads is what the compiler and the record of the types say.

usage: public_header_test.py SOURCE_DIRECTORY
"""
import pathlib
import re
import subprocess
import sys
import unittest

SOURCE = pathlib.Path(sys.argv.pop())
sys.path.insert(0, str(SOURCE / "scripts"))
import public_header

INCLUDE = SOURCE / "include"
HEADERS = public_header.read(INCLUDE)


def compiler(text, *options):
    """What cc prints for a source that includes the umbrella, or what it says against it."""
    ran = subprocess.run(["cc", "-std=c11", "-xc", f"-I{INCLUDE}", *options, "-"], text=True,
                         capture_output=True, input="#include <vdrzax.h>\n" + text, check=False)
    if ran.returncode != 0:
        raise AssertionError(ran.stderr)
    return ran.stdout


def find(kind, name):
    return next(each for header in HEADERS for each in getattr(header, kind) if each.name == name)


class PublicHeader(unittest.TestCase):
    def test_functions_are_those_on_record_with_their_types(self):
        recorded = (SOURCE / "library/abi/libvdrzax.prototypes").read_text().splitlines()
        read = [function.prototype for function in public_header.functions(INCLUDE)]
        self.assertEqual(sorted(read), sorted(recorded))

    def test_marks_of_functions_are_those_in_the_text(self):
        for header in HEADERS:
            text = (INCLUDE / f"vdrzax/{header.family}.h").read_text()
            declared = re.findall(r"^VDRZAX_API .*?;", text, re.MULTILINE | re.DOTALL)
            self.assertEqual(len(declared), len(header.functions))
            for lines, function in zip(declared, header.functions):
                self.assertEqual("VDRZAX_CHECKED" in lines, function.checked, function.name)
                faults = re.findall(r"\d+", lines.partition("VDRZAX_NONNULL")[2])
                self.assertEqual([str(number) for number in function.nonnull], faults)

    def test_a_function_that_frees_or_sends_nothing_is_no_command(self):
        silent = {each.name for each in public_header.functions(INCLUDE) if not each.is_command}
        freeing = {each.name for each in public_header.functions(INCLUDE) if each.releases}
        self.assertEqual(silent - freeing, {"VDRZAXGetUuidOrName"})
        self.assertLess(freeing, silent)

    def test_records_have_the_fields_that_the_compiler_sees(self):
        checks = []
        for record in public_header.records(INCLUDE):
            place = "0"
            for field in record.fields:
                array = f"[{field.length}]" if field.length else ""
                checks.append(f"static_assert(_Generic(&(({record.name}*)0)->{field.name}, "
                              f"{field.type} (*){array}: 1), \"{record.name}.{field.name}\");")
                if record.packed:
                    where = f"offsetof({record.name}, {field.name})"
                    checks.append(f'static_assert({where} == {place}, "{record.name}.{field.name}");')
                    place += f" + sizeof({field.type}) * {field.length or 1}"
            if record.packed:
                checks.append(f'static_assert(sizeof({record.name}) == {place}, "{record.name}");')
        compiler("\n".join(checks), "-fsyntax-only")
        defined = "".join(path.read_text() for path in (INCLUDE / "vdrzax").glob("*.h"))
        self.assertEqual(sorted(re.findall(r"^typedef struct (\w+) \{", defined, re.MULTILINE)),
                         sorted(record.name for record in public_header.records(INCLUDE)))

    def test_records_that_are_not_packed_are_the_headers_of_lists(self):
        loose = {record.name for record in public_header.records(INCLUDE) if not record.packed}
        self.assertEqual(loose, {"RecordList", "VTEPTable"})

    def test_macros_are_those_of_the_preprocessor(self):
        defined = re.findall(r"^#define (VDRZAX_\w+)", compiler("", "-E", "-dM"), re.MULTILINE)
        read = {macro.name for header in HEADERS for macro in header.macros}
        self.assertEqual({name for name in defined if not re.fullmatch(r"VDRZAX_(\w+_)?H", name)}, read)

    def test_numbers_are_known(self):
        self.assertEqual(find("macros", "VDRZAX_NAME_MAX").number, 63)
        self.assertIsNone(find("macros", "VDRZAX_VERSION").number)
        self.assertEqual(find("macros", "VDRZAX_NONNULL").arguments, "(...)")

    def test_comments_keep_their_lines(self):
        self.assertEqual(find("functions", "VDRZAX_BridgeClusterBfdHAProfileSet").comment, (
            "Set the BFD profile for the high availability of a bridge cluster.",
            "",
            "name            Name of the cluster's owner, text of at most 63 characters (a longer one"
            " is cut),",
            "                required; NULL is not tested and faults.",
            "profile         One byte whose meaning is the kernel's.",
            "value1, value2  u32 each, whose meaning is the kernel's.",
            "",
            "Returns 0, or -1 with the errno of the device."))
        self.assertEqual(find("functions", "VDRZAX_ReleaseInstance").comment,
                         ("Free a record of VDRZAX_GetInstance. NULL is ignored.",))
        fields = {field.name: field for field in find("records", "SoftRssStats").fields}
        self.assertEqual(fields["words8"].comment,
                         ("one counter a queue, as in the other three arrays",))
        self.assertEqual(fields["skipped0"].comment, ())

    def test_everything_says_what_it_is(self):
        for header in HEADERS:
            self.assertTrue(header.comment, header.family)
            for each in header.functions + header.macros:
                self.assertTrue(each.comment, each.name)
        self.assertEqual(public_header.umbrella(INCLUDE)[0],
                         "libvdrzax: control of the virtual distributed router in the hypervisor's"
                         " kernel.")


if __name__ == "__main__":
    unittest.main()
