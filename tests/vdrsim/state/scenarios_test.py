"""States in files, as people write them and as vdrsim prints them.

usage: scenarios_test.py VDRSIM VDRCTL SOURCE_DIRECTORY
"""
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

import jsonschema

VDRSIM, VDRCTL, SOURCE = sys.argv[1:4]
EXAMPLES = sorted(pathlib.Path(SOURCE, "examples/scenarios").glob("*.json"))


def execute(*arguments, **more):
    return subprocess.run(arguments, stdout=subprocess.PIPE, stderr=subprocess.PIPE, **more)


def output(*arguments, **more):
    done = execute(*arguments, **more)
    if done.returncode != 0 or done.stderr:
        raise AssertionError(f"{arguments}: status {done.returncode}: {done.stderr.decode()}")
    return done.stdout


def scenario(*options):
    return output(VDRSIM, "scenario", *options)


def listed(state, *words):
    """What vdrctl lists in a run that begins with a state."""
    return json.loads(output(VDRSIM, "run", "--state", "-", "--", VDRCTL, "--json", *words,
                             input=state))


def raw_size(state, *words):
    """How many bytes of a raw reply aren't zero up to its last one that isn't."""
    with tempfile.NamedTemporaryFile() as reply:
        output(VDRSIM, "run", "--state", "-", "--", VDRCTL, *words, "--output", reply.name,
               input=state)
        return len(reply.read().rstrip(b"\0"))


class Examples(unittest.TestCase):
    def test_there_are_three(self):
        self.assertEqual([path.name for path in EXAMPLES],
                         ["bridge-cluster.json", "empty.json", "router.json"])

    def test_each_is_saved_as_it_was_loaded(self):
        for path in EXAMPLES:
            with self.subTest(path.name), tempfile.TemporaryDirectory() as room:
                output(VDRSIM, "run", "--state", str(path), "--save", f"{room}/a", "true")
                output(VDRSIM, "run", "--state", f"{room}/a", "--save", f"{room}/b", "true")
                saved = pathlib.Path(room, "a").read_text()
                self.assertEqual(json.loads(saved), json.loads(path.read_text()))
                self.assertEqual(pathlib.Path(room, "b").read_text(), saved)

    def test_the_empty_host_has_nothing(self):
        empty = EXAMPLES[1].read_bytes()
        for words in [["instance", "list"], ["bridge", "list"], ["cluster", "list"],
                      ["policy-table", "list"]]:
            self.assertEqual(listed(empty, *words), [])

    def test_the_router_has_two_lifs_and_routes(self):
        router = EXAMPLES[2].read_bytes()
        self.assertEqual([lif["name"] for lif in listed(router, "lif", "list", "edge-1")],
                         ["inside", "uplink"])
        self.assertEqual([route["nextHops"][0]["hopName"]
                          for route in listed(router, "route", "list", "edge-1")],
                         ["uplink", "inside"])
        self.assertEqual(len(listed(router, "demux-route", "list")), 2)
        found = listed(router, "route", "resolve", "edge-1", "192.168.1.77/32")
        self.assertEqual(found["nextHops"][0]["hopName"], "inside")

    def test_the_bridge_cluster_watches_its_endpoints(self):
        cluster = EXAMPLES[0].read_bytes()
        self.assertEqual(len(listed(cluster, "cluster", "node", "list")), 2)
        self.assertEqual(len(listed(cluster, "cluster", "endpoint", "list")), 2)
        self.assertEqual(len(listed(cluster, "bridge", "network", "list", "edge-1")), 3)
        self.assertEqual(len(listed(cluster, "fdb", "list", "edge-1", "100", "0")), 1)


class Schema(unittest.TestCase):
    def setUp(self):
        schema = json.loads(output(VDRSIM, "schema", "state"))
        jsonschema.Draft202012Validator.check_schema(schema)
        self.validator = jsonschema.Draft202012Validator(schema)

    def check(self, document):
        self.validator.validate(json.loads(document))

    def test_takes_examples_and_scenarios(self):
        for path in EXAMPLES:
            with self.subTest(path.name):
                self.check(path.read_bytes())
        options = [word for option in options_of_scenarios() for word in (option, "1")]
        self.check(scenario(*options))

    def test_takes_what_is_saved(self):
        script = """set -e
        "$0" instance set edge-1 --second 3 --text a
        "$0" lif set edge-1 lif-1 --a3 4
        "$0" lif address set edge-1 lif-1 10.0.0.1/24
        "$0" soft-rss tunables set rss 7
        """
        with tempfile.TemporaryDirectory() as room:
            output(VDRSIM, "run", "--save", f"{room}/s", "--", "sh", "-c", script, VDRCTL)
            saved = pathlib.Path(room, "s").read_text()
        self.check(saved)
        lif = json.loads(saved)["instances"]["edge-1"]["lifs"]["lif-1"]
        self.assertEqual(lif["addresses"], [{"address": "10.0.0.1", "mask": "255.255.255.0"}])

    def test_refuses_what_vdrsim_refuses(self):
        for members in ['{}', '{"format_version": 2}', '{"format_version": 1, "levell": 1}',
                        '{"format_version": 1, "logLevel": -1}',
                        '{"format_version": 1, "logLevel": 4294967296}',
                        '{"format_version": 1, "instances": {"": {}}}',
                        '{"format_version": 1, "policies": [{}]}',
                        '{"format_version": 1, "bridgeClusters": {"c": {"nodes": {"n": "x"}}}}']:
            with self.subTest(members):
                self.assertFalse(self.validator.is_valid(json.loads(members)))
                done = execute(VDRSIM, "run", "--state", "-", "true", input=members.encode())
                self.assertEqual(done.returncode, 2)


def options_of_scenarios():
    text = output(VDRSIM, "scenario", "--help").decode()
    return [line.split()[0] for line in text.splitlines() if line.lstrip().startswith("--")]


def caps_of_scenarios():
    """The options that have a cap, with it, as the help tells."""
    text = output(VDRSIM, "scenario", "--help").decode()
    return re.findall(r"^  (--[\w-]+) N\s.*?, up to (\d+)$", text, re.MULTILINE)


class Scenario(unittest.TestCase):
    def test_is_the_same_each_time(self):
        options = ["--instances", "3", "--lifs", "2", "--routes", "5", "--nodes", "3"]
        self.assertEqual(scenario(*options), scenario(*options))

    def test_is_saved_as_it_was_printed(self):
        options = [word for option in options_of_scenarios() for word in (option, "1")]
        with tempfile.TemporaryDirectory() as room:
            printed = scenario(*options)
            output(VDRSIM, "run", "--state", "-", "--save", f"{room}/s", "true", input=printed)
            self.assertEqual(pathlib.Path(room, "s").read_bytes(), printed)

    def test_goes_into_a_run_and_out_of_it_however_large(self):
        printed = scenario("--public-items", "256", "--public-addresses", "5000")
        self.assertGreater(len(printed), 16 << 20, "there would be room for it at once")
        shown = output(VDRSIM, "run", "--", "sh", "-c",
                       '"$0" ctl state load - && "$0" ctl state show', VDRSIM, input=printed)
        self.assertTrue(shown == printed)

    def test_each_option_adds_something(self):
        for option in options_of_scenarios():
            with self.subTest(option):
                one, two = (scenario(option, number) for number in
                            (("0", "1") if option == "--transport-nodes" else ("1", "2")))
                self.assertGreater(len(two), len(one))

    def test_goes_up_to_every_cap(self):
        for options, words, count in [
                (["--instances", "1001"], ["instance", "list"], 1001),
                (["--lifs", "10000"], ["lif", "list", "edge-1"], 10000),
                (["--bridge-lifs", "10000"], ["bridge-lif", "list", "edge-1"], 10000),
                (["--routes", "20000"], ["route", "list", "edge-1"], 20000),
                (["--lif-policies", "20000"],
                 ["lif-policy", "list", "edge-1", "4", "--lif", "lif-1"], 20000),
                (["--instance-policies", "20000"], ["lif-policy", "list", "edge-1", "1"], 20000),
                (["--bridges", "4096"], ["bridge", "list"], 4096),
                (["--instances", "4", "--bridges", "1024"], ["bridge", "list"], 4096),
                (["--endpoints", "28672"], ["cluster", "endpoint", "list"], 28672),
                (["--bridge-lifs", "7168", "--endpoints", "4"], ["cluster", "endpoint", "list"],
                 28672),
                (["--fdb-entries", "10240"], ["fdb", "list", "edge-1", "1", "0"], 10240),
                (["--groups", "4096"], ["multicast", "group", "list", "edge-1"], 4096),
                (["--local-receivers", "512"],
                 ["multicast", "local-receiver", "list", "edge-1", "239.0.0.1"], 512),
                (["--remote-receivers", "2048"],
                 ["multicast", "remote-receiver", "list", "edge-1", "239.0.0.1"], 2048),
                (["--policies", "1000"], ["policy", "list", "1"], 1000),
                (["--policy-tables", "1000"], ["policy-table", "list"], 1000),
                (["--e2i-entries", "8192"], ["e2i", "list"], 8192),
                (["--clusters", "10", "--nodes", "10"], ["cluster", "node", "list"], 100),
                (["--public-items", "256", "--public-addresses", "100"], ["public-ip", "list"], 100),
                (["--lifs", "3000", "--addresses", "10"], ["demux-route", "list"], 30000)]:
            with self.subTest(options):
                self.assertEqual(len(listed(scenario(*options), *words)), count)

    def test_each_cap_is_that_of_the_simulation(self):
        caps = caps_of_scenarios()
        self.assertEqual(len(caps), len(options_of_scenarios()) - 4)
        for option, cap in caps:
            with self.subTest(option):
                output(VDRSIM, "run", "--state", "-", "true", input=scenario(option, cap))
                done = execute(VDRSIM, "scenario", option, str(int(cap) + 1))
                self.assertEqual((done.returncode, done.stdout), (2, b""))
                self.assertIn(f" more than the {cap} that there can be", done.stderr.decode())

    def test_goes_up_to_the_caps_of_raw_lists(self):
        # The last byte that isn't zero is in the last entry, of that size.
        for options, words, count, size in [
                (["--arps", "8192"], ["arp", "list", "edge-1"], 8192, 936),
                (["--lifs", "4096", "--proxy-arps", "2"], ["proxy-arp", "list", "edge-1"], 8192, 936),
                (["--ipv6-neighbours", "4096", "--ipv6-proxies", "4096"],
                 ["neighbour6", "list", "edge-1"], 8192, 936),
                (["--ipv6-routes", "29999", "--lifs", "1"], ["route6", "list", "edge-1"], 29999, 776),
                (["--connections", "327"], ["connection", "list"], 327, 400),
                (["--bfd-ports", "1524"], ["bfd-port", "list"], 1524, 86)]:
            with self.subTest(options):
                self.assertEqual(-(-raw_size(scenario(*options), *words) // size), count)

    def test_beyond_a_cap_is_told(self):
        for options, complaint in [
                (["--instances", "1002"],
                 "1002 router instances are more than the 1001 that there can be"),
                (["--routes", "20001"],
                 "20001 IPv4 routes of each instance are more than the 20000 that there can be"),
                (["--instances", "2", "--bridges", "2049"],
                 "4098 bridges in all instances are more than the 4096 that there can be"),
                (["--bridge-lifs", "2", "--endpoints", "14337"],
                 "28674 endpoints in all instances are more than the 28672 that there can be"),
                (["--lifs", "2", "--arps", "4097"],
                 "8194 ARP entries in each instance are more than the 8192 that there can be"),
                (["--ipv6-neighbours", "1", "--ipv6-proxies", "8192"],
                 "8193 IPv6 neighbours and proxies in each instance are more than the 8192 that "
                 "there can be"),
                (["--clusters", "2", "--nodes", "51"],
                 "102 nodes in all clusters are more than the 100 that there can be"),
                (["--public-addresses", "8200", "--public-items", "256"],
                 "8544400 bytes of public addresses are more than the 8536064 that there can be"),
                (["--transport-nodes", "2"],
                 "2 transport nodes are more than the 1 that there can be")]:
            with self.subTest(options):
                done = execute(VDRSIM, "scenario", *options)
                self.assertEqual((done.returncode, done.stdout, done.stderr.decode()),
                                 (2, b"", f"vdrsim: {complaint}\n"))

    def test_takes_whole_numbers_alone(self):
        for words in [["--lifs", "x"], ["--lifs", "-1"], ["--lifs", "4294967296"], ["--lifs"],
                      ["--lifts", "1"]]:
            done = execute(VDRSIM, "scenario", *words)
            self.assertEqual((done.returncode, done.stdout), (2, b""), words)

    def test_a_full_output_is_an_error(self):
        with open("/dev/full", "w") as full:
            for words in [["scenario", "--lifs", "1"], ["schema", "state"]]:
                done = subprocess.run([VDRSIM, *words], stdout=full, stderr=subprocess.PIPE)
                self.assertEqual(done.returncode, 2)
                self.assertEqual(done.stderr,
                                 b"vdrsim: standard output: No space left on device\n")

    def test_is_like_what_commands_make(self):
        script = """set -e
        "$0" instance set edge-1 --second 1 --flag 1
        "$0" lif set edge-1 lif-1 --aux-name uplink-1 --a5 1 --mac 02:01:00:00:00:01
        "$0" lif enable edge-1 lif-1
        "$0" lif mtu6 set edge-1 lif-1 1500
        "$0" lif address set edge-1 lif-1 10.0.1.1/24
        "$0" arp set edge-1 lif-1 20.0.0.1 02:02:00:01:00:01
        """
        with tempfile.TemporaryDirectory() as room:
            output(VDRSIM, "run", "--save", f"{room}/s", "--", "sh", "-c", script, VDRCTL)
            made = json.loads(pathlib.Path(room, "s").read_text())
        for owner in [made, made["instances"]["edge-1"],
                      made["instances"]["edge-1"]["lifs"]["lif-1"]]:
            del owner["counters"]
        printed = scenario("--arps", "1", "--addresses", "1")
        self.assertEqual(made, json.loads(printed))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
