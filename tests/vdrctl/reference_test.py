"""What vdrctl tells about itself, against the header, the pages and an independent validator.

usage: reference_test.py VDRCTL VDRSIM SOURCE_DIRECTORY
"""
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

import jsonschema

VDRCTL, VDRSIM, SOURCE = sys.argv[1:4]
SOURCE = pathlib.Path(SOURCE)
# Releases free memory and send nothing, and so does the operation on names.
NO_COMMANDS = re.compile(r"VDRZAX_Release|VDRZAXGetUuidOrName$")
# These send what the operator says.
CODE_OF_THE_CALLER = {"VDRZAXIoctl", "VDRZAX_BridgeSetConfig"}

# What the simulated datapath holds while the outputs are looked at, and what is looked at.
PREPARATION = r"""
log-level set 3
instance set edge-1 --second 10 --text 'a\xff'
instance set edge-2
lif set edge-1 uplink --a3 5 --a5 1 --mac 2:0:0:0:0:1
lif address set edge-1 uplink 10.0.0.1/24
lif address6 set edge-1 uplink 2001:db8::1/64
bridge-lif set edge-1 uplink
route set edge-1 10.2.0.0/16 --gateway 10.0.0.2 --interface uplink --flags 1
route6 set edge-1 2001:db8::/32 --gateway fe80::1 --interface uplink
arp set edge-1 uplink 10.0.0.2 2:0:0:0:0:2
proxy-arp set edge-1 uplink 10.0.0.3
neighbour6 set edge-1 uplink fe80::1 2:0:0:0:0:3
policy set 1 --first 2 --second 3
policy-table set 1 'tab\xff'
lif-policy set edge-1 1 10.2.0.0/16 --interface uplink
lif-policy-table set edge-1 uplink 1:2:3,4:5:6
bridge create edge-1 5000
fdb set edge-1 7 0 2:0:0:0:0:a
bridge-endpoint add uplink ep --value1 5000 --tag 3
cluster create edge-1
cluster node add edge-1 n1 2:0:0:0:0:b
bfd-port plumb p1 --mac 2:0:0:0:0:c
transport-node set one
connection plumb c1 --second two
e2i add 7 2:0:0:0:0:d
physical-mac add 2:0:0:0:0:e
multicast local-receiver add edge-1 239.1.2.3 r1
multicast remote-receiver add edge-1 239.1.2.3 5 2:0:0:0:0:f
multicast router add edge-1 10.0.0.9
soft-rss tunables set rss 5
soft-rss table set rss 1,2,3
public-ip add 192.0.2.1 10.0.0.1 2:0:0:0:0:1
public-ip add 192.0.2.1 10.0.0.2 2:0:0:0:0:1
"""
READINGS = """
instance list
instance show edge-1
log-level get
extended-log-level get
stats-level get
tx-dispatch-queue-size get
lif list edge-1
lif show edge-1 uplink
lif stats show edge-1 uplink
lif stats show edge-1 uplink --cached
datapath stats show
control-plane stats show edge-1
lif external-vlan list 1
bridge-lif list edge-1
bridge-lif show edge-1 uplink
control-plane sync-state show edge-1
connection list
connection show c1
connection mac c1
connection deletion-pending
route list edge-1
route selection edge-1
route resolve edge-1 10.2.3.4/32
route6 list edge-1
demux-route list
arp list edge-1
proxy-arp list edge-1
neighbour6 list edge-1
policy list 1
policy count 1
policy-table list
lif-policy list edge-1 1
lif-policy-table show edge-1 uplink
bridge list
bridge show edge-1
bridge network list edge-1
bridge port list edge-1 0
fdb list edge-1 7 0
bridge-endpoint list
bridge-endpoint stats uplink
bridge-endpoint status uplink
cluster list
cluster node list
cluster endpoint list
cluster bfd sessions
bfd-port list
transport-node show
e2i list
e2i show 7
physical-mac list
locale show
fl-table show 0
multicast domain show edge-1
multicast group list edge-1
multicast local-receiver list edge-1 239.1.2.3
multicast remote-receiver list edge-1 239.1.2.3
multicast replication-address show edge-1 239.1.2.3
multicast router show edge-1 239.1.2.3
full-sync save 1
full-sync status
soft-rss stats show rss
soft-rss tunables show rss
soft-rss table show rss
public-ip list
public-ip show 192.0.2.1
command 9 --capacity 4
"""

# Each form on a field of each kind that it fits.
NAMES = {"format": 1, "records": {
    "InstanceRecord": {
        "word64": {"name": "address", "form": "ipv4"},
        "word68": {"name": "state", "form": "flags", "flags": {"up": 1, "ready": 2}},
        "byte72": {"name": "active", "form": "boolean"},
        "word399": {"name": "mask", "form": "hex"},
        "words431": {"name": "address6", "form": "ipv6"},
        "bytes523": {"name": "label", "form": "text"}},
    "LifSubEntry": {"words0": {"name": "addresses", "form": "ipv4"}},
    "MRoutingLocalRcvr": {"address": {"name": "receiver", "form": "ipv6"}}}}

MAC = re.compile(r"[0-9a-f]{2}(:[0-9a-f]{2}){5}")
ADDRESS = re.compile(r"\d+(\.\d+){3}|[0-9a-f:]*::[0-9a-f:.]*")
# Longer than any name that the preparation gives.
HEXADECIMAL = re.compile(r"([0-9a-f]{2}){8,}")


def wrong_versions(value):
    """What could stand in the place of a value but for its schema."""
    if isinstance(value, bool):
        yield from (0, "true")
    elif isinstance(value, int):
        yield from (-1, 1.5, 2**64, str(value))
    elif isinstance(value, str):
        yield 7
        if MAC.fullmatch(value):
            yield from ("", value + ":00", value[:-1], value.replace(":", "-"))
        elif ADDRESS.fullmatch(value):
            yield from ("", value + "/8", value + ".")
        elif HEXADECIMAL.fullmatch(value):
            yield from (value[:-1], value[:-1] + "g")
    elif isinstance(value, list):
        yield from ({}, "")
        yield from ([wrong, *value[1:]] for first in value[:1] for wrong in wrong_versions(first))
    else:
        yield from ([], {**value, "x": 0})
        for name, member in value.items():
            if name.endswith("Escaped"):
                yield {**value, name: False}
                continue
            # Statistics of a type without a layout are the type alone.
            if set(value) != {"type", name}:
                yield {other: value[other] for other in value if other != name}
            yield from ({**value, name: wrong} for wrong in wrong_versions(member))
            if isinstance(member, list) and member and not isinstance(member[0], str):
                yield {**value, name: member * 300}
                if not isinstance(member[0], dict):
                    yield {**value, name: member[1:]}


def run(*words, stdin=None):
    return subprocess.run(words, input=stdin, stdout=subprocess.PIPE, check=True, text=True).stdout


def commands():
    return json.loads(run(VDRCTL, "commands", "--json"))


def functions(command):
    value = command["function"]
    return value if isinstance(value, list) else [value] if value else []


def words(command):
    return " ".join(filter(None, [command["object"], command["verb"]]))


class Commands(unittest.TestCase):
    def test_each_function_that_is_a_command_has_a_verb(self):
        declared = set()
        for header in (SOURCE / "include/vdrzax").glob("*.h"):
            declared.update(re.findall(r"^VDRZAX_API .*?\b(VDRZAX\w+)\(", header.read_text(), re.M))
        wanted = {name for name in declared if not NO_COMMANDS.match(name)}
        self.assertGreater(len(wanted), 150)
        self.assertEqual(wanted, {name for command in commands() for name in functions(command)})

    def test_codes_are_those_of_the_protocol_page(self):
        page = (SOURCE / "docs/protocol.md").read_text()
        codes = {name: {int(code) for code in row.split(",")}
                 for name, row in re.findall(r"^\| `(VDRZAX\w+)` \| ([\d, ]+) \|", page, re.M)}
        by_function = {}
        for command in commands():
            for name in functions(command):
                by_function.setdefault(name, set()).update(command["codes"])
        for name, found in by_function.items():
            if name not in CODE_OF_THE_CALLER:
                self.assertEqual(found, codes[name], name)

    def test_rows_have_the_documented_form(self):
        kinds = {"text", "number", "ipv4", "prefix", "ipv6", "prefix6", "mac", "switch", "file",
                 "choice"}
        for command in commands():
            self.assertEqual(list(command), ["object", "verb", "summary", "function", "codes",
                                             "parameters"])
            for parameter in command["parameters"]:
                self.assertEqual(list(parameter), ["name", "kind", "required", "limit", "meaning"])
                self.assertIn(parameter["kind"], kinds)
                self.assertIsInstance(parameter["required"], bool)

    def test_no_two_commands_have_the_same_words(self):
        names = [words(command) for command in commands()]
        self.assertEqual(len(names), len(set(names)))

    def test_each_command_has_help_that_names_its_parameters(self):
        for command in commands():
            text = run(VDRCTL, *words(command).split(), "--help")
            self.assertIn(f"Usage: vdrctl {words(command)}", text)
            for parameter in command["parameters"]:
                self.assertIn(parameter["name"], text)


class Pages(unittest.TestCase):
    def test_the_page_of_commands_is_that_of_the_table(self):
        self.assertEqual((SOURCE / "docs/vdrctl.md").read_text(),
                         run(VDRCTL, "reference", "markdown"),
                         "vdrctl reference markdown > docs/vdrctl.md")

    def test_the_manual_names_each_command(self):
        text = run(VDRCTL, "reference", "man")
        for command in commands():
            self.assertIn("\n.B vdrctl " + words(command).replace("-", "\\-"), text)

    def test_the_manual_has_a_section_for_each_object(self):
        sections = re.findall(r"^\.SS (.*)$", run(VDRCTL, "reference", "man"), re.M)
        objects = dict.fromkeys(command["object"] for command in commands() if command["verb"])
        self.assertEqual([section.replace("\\-", "-") for section in sections], list(objects))

    def test_documents_are_a_line_each(self):
        for line in ("commands --json", "schema", "schema instance show"):
            self.assertRegex(run(VDRCTL, *line.split()), r"^[\[{].*[\]}]\n\Z", line)


class Names(unittest.TestCase):
    EXAMPLE = SOURCE / "examples/names/simulation.json"

    def fields_of_the_simulation(self):
        """The fields that the simulation gives a meaning, by the tables of its page. What records call
        by more than a place needs no name."""
        title = re.compile(r"`([A-Z]\w+)`")
        place = re.compile(r"`([a-z]+[A-Z]?[a-z]*\d+)(?:\[\d+\])?`")
        records = None
        for line in (SOURCE / "docs/vdrsim-datapath.md").read_text().splitlines():
            cells = line.strip("|").split("|") if line.startswith("|") else None
            if cells and records is None:
                records = [title.findall(cell) for cell in cells]
            elif cells:
                yield from ((names[0], field) for names, cell in zip(records, cells) if names
                            for field in place.findall(cell))
            else:
                records = None

    def test_the_example_has_one_for_each_field_of_the_simulation(self):
        records = json.loads(self.EXAMPLE.read_text())["records"]
        fields = {field for field in self.fields_of_the_simulation()
                  if not field[0].startswith(("VDRZAX", "StatsRecord"))}
        self.assertGreater(len(fields), 80)
        for record, field in fields:
            named = {name.split("[")[0] for name in records.get(record, {})}
            self.assertIn(field, named, record)

    def test_the_example_is_one_of_the_tool(self):
        shown = run(VDRCTL, "--names", self.EXAMPLE, "schema", "bridge", "list")
        self.assertIn('"replication-mode"', shown)
        self.assertNotIn('"word80"', shown)


class Schemas(unittest.TestCase):
    OPTIONS = ()

    @classmethod
    def setUpClass(cls):
        cls.schemas = json.loads(run(VDRCTL, "schema", *cls.OPTIONS))["$defs"]
        cls.readings = READINGS.strip().splitlines()
        output = run(VDRSIM, "run", "--", VDRCTL, "--json", "batch", "-", *cls.OPTIONS,
                     stdin=PREPARATION + READINGS)
        cls.documents = [json.loads(line) for line in output.splitlines()]

    def test_each_is_a_schema(self):
        self.assertGreater(len(self.schemas), 50)
        for name, schema in self.schemas.items():
            jsonschema.Draft202012Validator.check_schema(schema)
            self.assertEqual(schema["title"], f"vdrctl {name} --json")

    def test_layouts_have_titles(self):
        for name in ("datapath stats show", "control-plane stats show", "lif stats show"):
            titles = [layout["title"] for layout in self.schemas[name]["anyOf"]]
            self.assertEqual(titles, ["StatsRecord of type 0", "StatsRecord of type 1",
                                      "StatsRecord of type 3", "StatsRecord of other types"])

    def test_one_alone_is_that_of_all(self):
        for name, schema in self.schemas.items():
            alone = json.loads(run(VDRCTL, "schema", *name.split(), *self.OPTIONS))
            self.assertEqual(alone.pop("$schema"), "https://json-schema.org/draft/2020-12/schema")
            self.assertEqual(alone, schema)

    def command_of(self, reading):
        return max((name for name in self.schemas if f"{reading} ".startswith(f"{name} ")), key=len)

    def validator_of(self, reading):
        return jsonschema.Draft202012Validator(self.schemas[self.command_of(reading)],
                                               format_checker=jsonschema.FormatChecker())

    def test_each_has_an_output_that_is_looked_at(self):
        self.assertEqual({self.command_of(reading) for reading in self.readings}, set(self.schemas))

    def test_outputs_are_valid(self):
        self.assertEqual(len(self.documents), len(self.readings))
        for reading, document in zip(self.readings, self.documents):
            # An empty list would be valid whatever its records are.
            self.assertNotEqual(document, [], reading)
            for error in self.validator_of(reading).iter_errors(document):
                self.fail(f"{reading}: {error.message}")

    def test_replies_of_the_kernels_own_layout_have_the_room_of_the_protocol_page(self):
        page = (SOURCE / "docs/protocol.md").read_text()
        rooms = {name: int(room)
                 for name, room in re.findall(r"^\| `(VDRZAX\w+)` .*\| raw (\d+) \|$", page, re.M)}
        rooms = {words(command): rooms[name]
                 for command in commands() for name in functions(command) if name in rooms}
        lengths = {self.command_of(reading): document["length"]
                   for reading, document in zip(self.readings, self.documents) if "length" in document}
        shared = rooms.keys() & lengths.keys()
        self.assertGreater(len(shared), 10)
        for name in shared:
            self.assertEqual(lengths[name], rooms[name], name)

    def test_wrong_outputs_are_noticed(self):
        for reading, document in zip(self.readings, self.documents):
            validator = self.validator_of(reading)
            for wrong in wrong_versions(document):
                self.assertFalse(validator.is_valid(wrong), (reading, wrong))

    def test_numbers_are_as_wide_as_their_fields(self):
        validator = self.validator_of("log-level get")
        self.assertTrue(validator.is_valid({"level": 2**32 - 1}))
        self.assertFalse(validator.is_valid({"level": 2**32}))


class SchemasWithNames(Schemas):
    @classmethod
    def setUpClass(cls):
        with tempfile.NamedTemporaryFile("w", suffix=".json", delete=False) as file:
            json.dump(NAMES, file)
        cls.addClassCleanup(os.unlink, file.name)
        cls.OPTIONS = ("--names", file.name)
        super().setUpClass()

    def test_each_name_is_looked_at(self):
        shown = json.dumps(self.documents)
        for fields in NAMES["records"].values():
            for field in fields.values():
                self.assertIn(f'"{field["name"]}": ', shown)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
