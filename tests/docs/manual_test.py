"""The manual and the HTML reference: complete, true to the headers, and well formed.

usage: manual_test.py SOURCE_DIRECTORY MANUAL_DIRECTORY SHARED_OBJECT VDRCTL VDRSIM
"""
import pathlib
import re
import subprocess
import sys
import unittest

SOURCE, MANUAL = map(pathlib.Path, sys.argv[1:3])
LIBRARY, VDRCTL, VDRSIM = sys.argv[3:6]
del sys.argv[1:]
MAN, HTML = MANUAL / "man", MANUAL / "html"


def said(*command):
    return subprocess.run(command, text=True, capture_output=True, check=True).stdout


def rendered(page):
    """A manual page as it is read, its lines joined."""
    return " ".join(re.sub(".\b", "", said("mandoc", "-Tascii", str(page))).split())


def exported():
    lines = said("nm", "-D", "--defined-only", LIBRARY).splitlines()
    return {line.split()[2].split("@")[0] for line in lines if line.split()[1] != "A"}


def declarations():
    """Name, parameters and comment of each function, read in another way than the manual is made."""
    for path in sorted((SOURCE / "include/vdrzax").glob("*.h")):
        for comment, name, parameters in re.findall(
                r"/\*((?:[^*]|\*(?!/))*)\*/\nVDRZAX_API[^(]*\b(VDRZAX\w+)\(([^)]*)\)", path.read_text()):
            names = [each.split()[-1].lstrip("*") for each in parameters.split(",") if each != "void"]
            yield name, names, " ".join(re.sub(r"^ \*", "", comment, flags=re.MULTILINE).split())


class Manual(unittest.TestCase):
    def test_each_exported_name_has_a_page_and_no_other_name_has(self):
        families = {f"vdrzax_{path.stem}" for path in (SOURCE / "include/vdrzax").glob("*.h")}
        self.assertEqual({path.stem for path in (MAN / "man3").iterdir()}, exported() | families)
        self.assertLess(exported() | families, {path.stem for path in HTML.glob("*.html")})

    def test_each_page_tells_every_parameter_and_every_errno(self):
        seen = {name: (parameters, comment) for name, parameters, comment in declarations()}
        self.assertEqual(set(seen), exported())
        for name, (parameters, comment) in seen.items():
            page = rendered(MAN / f"man3/{name}.3")
            listed = page.partition(" PARAMETERS ")[2].partition(" RETURN VALUE ")[0]
            for parameter in parameters:
                self.assertRegex(listed, rf"(^|[ ,]){parameter}[ ,]", name)
            followed = re.findall(r"\b[Aa]s (VDRZAX\w+)|those of (VDRZAX\w+)", comment)
            told = " ".join([comment, *(seen[one or other][1] for one, other in followed)])
            for errno in set(re.findall(r"\bE[A-Z]{3,}\b", told)):
                self.assertIn(errno, page, name)
            if " void " not in page.partition("DESCRIPTION")[0]:
                self.assertIn(" ERRORS ", page, name)
                self.assertRegex(page.partition(" ERRORS ")[2],
                                 r"other (left by open64 or ioctl|the errno of the device)", name)

    def test_each_sentence_of_a_comment_is_on_the_page(self):
        for name, _, comment in declarations():
            page = re.sub(r"\(3\)", "", rendered(MAN / f"man3/{name}.3")).replace(" - ", " ")
            # What is set in by columns stands elsewhere, or in another order.
            for sentence in re.split(r"(?<=[.;:]) ", comment.replace("`", "")):
                words = sentence.replace("said at the top", "said on this page")
                if sentence[:1].isupper() and not re.match(r"[A-Z]\w+ bytes|Returns -1 with$", words):
                    self.assertIn(words.replace("--", "-"), page, name)

    def test_what_a_page_takes_from_another_reads_well(self):
        page = rendered(MAN / "man3/VDRZAX_DelRoute.3")
        self.assertIn("PARAMETERS As VDRZAX_SetRoute(3), but for what is said above: "
                      "routeArg1, routeArg2, routeArg3 u32 each, whose meaning is the kernel's.", page)
        self.assertIn("RETURN VALUE As VDRZAX_SetRoute(3): Returns 0, or -1 with EINVAL", page)
        self.assertIn("ERRORS EINVAL instanceName is NULL; result is then untouched other ", page)
        self.assertIn("SEE ALSO VDRZAX_SetRoute(3), vdrzax_route(3), vdrzax(7)", page)

    def test_errors_that_a_comment_excludes_are_not_listed(self):
        for name in ("VDRZAX_GetVdrDiStats", "VDRZAX_AddPmac", "VDRZAX_AddMRoutingMRouter",
                     "VDRZAX_AddVMPublicIP"):
            self.assertNotIn("EINVAL", rendered(MAN / f"man3/{name}.3").partition(" ERRORS ")[2], name)

    def test_errors_have_the_reason_that_is_the_functions_own(self):
        expected = {"VDRZAX_GetLifStatsCached": "EINVAL instanceName is NULL ENOMEM an allocation "
                                                "failed EBADMSG reply shorter than 852 bytes",
                    "VDRZAX_GetRoutesv6": "ENOMEM the number of routes could not be had",
                    "VDRZAX_GetBridgePorts": "EBADMSG the reply ends inside a record"}
        for name, errors in expected.items():
            self.assertIn(errors, rendered(MAN / f"man3/{name}.3").partition(" ERRORS ")[2], name)

    def test_what_is_referred_to_exists(self):
        pages = {f"{path.stem}({path.suffix[1:]})" for path in MAN.glob("man*/*")}
        for path in MAN.glob("man*/*"):
            if path.stem == "vdrctl": # Its own test compares it.
                continue
            for reference in re.findall(r"\b(?:VDRZAX|vdr)\w+\([137]\)", rendered(path)):
                self.assertIn(reference, pages, path)
        for path in HTML.glob("*.html"):
            for target, place in re.findall(r'href="([^"#]*)(?:#([^"]*))?"', path.read_text()):
                linked = HTML / target if target else path
                self.assertTrue(linked.exists(), f"{path}: {target}")
                if place:
                    self.assertIn(f'id="{place}"', linked.read_text(), f"{path}: {target}#{place}")

    def test_every_page_is_listed_in_the_index(self):
        listed = set(re.findall(r'href="([^"]*)"', (HTML / "index.html").read_text()))
        self.assertEqual(listed - {"index.html", "style.css"},
                         {path.name for path in HTML.glob("*.html")} - {"index.html"})

    def test_the_overview_holds_rules_protocol_and_guarantees(self):
        page = rendered(MAN / "man7/vdrzax.7")
        for name in ("protocol", "guarantees"):
            text = (SOURCE / f"docs/{name}.md").read_text()
            for heading in re.findall(r"^#+ (.*)", text, re.MULTILINE):
                self.assertIn(heading.replace("`", ""), page)
        self.assertIn("VDRZAX_SetCPIp Code: 8; Input: 0 t64 name, 328 u32 address", page)
        self.assertIn("Threads. There is no shared state, no initialisation and no teardown.", page)

    def test_the_page_of_vdrsim_names_each_option_of_each_command_and_holds_its_pages(self):
        page = rendered(MAN / "man1/vdrsim.1")
        for path in SOURCE.glob("docs/vdrsim*.md"):
            self.assertIn(re.match(r"# (.*)", path.read_text())[1].replace("`", ""), page)
        waiting, options = [[]], 0
        for words in waiting:
            told = said(VDRSIM, *words, "--help")
            for option in re.findall(r"^  (?:-\w,)?(--[\w-]+)", told, re.MULTILINE):
                options += 1
                self.assertIn(option, page)
            commands = told.partition("Subcommands:\n")[2]
            for command in re.findall(r"^  (\w[\w-]*)", commands, re.MULTILINE):
                waiting.append([*words, command])
                self.assertIn(f"vdrsim {' '.join(waiting[-1])} ", page)
        self.assertGreater(options, 3)

    def test_the_page_of_memcheck_says_how_it_is_called_and_what_it_does(self):
        page = rendered(MAN / "man1/vdrzax-memcheck.1")
        usage = (SOURCE / "tools/memcheck/vdrzax-memcheck.in").read_text()
        self.assertIn(re.search(r"^# usage: (.*)", usage, re.MULTILINE)[1], page)
        self.assertIn("status 99 when memcheck reports something", page)

    def test_what_vdrctl_says_of_itself_is_installed_as_it_is(self):
        for place, *words in (("man/man1/vdrctl.1", "reference", "man"),
                              ("completions/bash-completion/completions/vdrctl", "completion", "bash"),
                              ("completions/zsh/site-functions/_vdrctl", "completion", "zsh"),
                              ("completions/fish/vendor_completions.d/vdrctl.fish", "completion",
                               "fish")):
            self.assertEqual((MANUAL / place).read_text(), said(VDRCTL, *words))

    def test_no_reader_of_manual_pages_complains(self):
        pages = sorted(map(str, MAN.glob("man*/*")))
        linted = subprocess.run(["mandoc", "-Tlint", "-Wwarning", *pages], text=True,
                                capture_output=True, check=False)
        # Pages have no date, so that the same source gives the same bytes.
        self.assertEqual([line for line in linted.stdout.splitlines() if "missing date" not in line], [])
        formatted = subprocess.run(["groff", "-man", "-ww", "-Kutf8", "-Tutf8", "-Z", *pages], text=True,
                                   capture_output=True, check=True)
        self.assertEqual(formatted.stderr, "")

    def test_the_html_is_valid(self):
        tidied = subprocess.run(["tidy", "-q", "-e", "-utf8", *sorted(map(str, HTML.glob("*.html")))],
                                text=True, capture_output=True, check=False)
        self.assertEqual(tidied.stderr, "")
        self.assertEqual(tidied.returncode, 0)


if __name__ == "__main__":
    unittest.main()
