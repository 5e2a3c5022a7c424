"""Tests of the Debian package that scripts/package leaves in out/: what is in it, its lint, and that it builds again.

Arguments: names of tests to run. The last line is "package: N passed, N failed, N skipped"; the exit status is 0 only
when tests ran and none failed.
"""

import gzip
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from email.utils import parsedate_to_datetime
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
APPLICATION = "io.github.quintave.quintave"
PAGES = sorted((ROOT / "packaging/man").glob("*.[15]"))
PROGRAMS = ["quintave", "quintave-cli"]
ICON_SIZES = (16, 24, 32, 48, 64, 96, 128, 192, 256)


def run(*command, **options):
    """Runs a program to its end; its output and standard error as one text, and its status."""
    done = subprocess.run([str(word) for word in command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, check=False, **options)
    return done.stdout, done.returncode


def package():
    found = sorted((ROOT / "out").glob("quintave_*.deb"))
    if len(found) != 1:
        raise FileNotFoundError(f"scripts/package leaves one package in out/, here are {found}")
    return found[0]


class PackageTest(unittest.TestCase):
    maxDiff = None

    def assert_silent(self, *command, status=0):
        """The check of this command finds nothing to say."""
        self.assertEqual(run(*command), ("", status))

    def unpacked(self):
        """The files of the package, in a folder of the test's own."""
        folder = tempfile.TemporaryDirectory(prefix="quintave-package-")
        self.addCleanup(folder.cleanup)
        self.assert_silent("dpkg-deb", "-x", package(), folder.name)
        return Path(folder.name)


class Lint(PackageTest):
    def test_the_desktop_entry(self):
        self.assert_silent("desktop-file-validate", ROOT / f"packaging/{APPLICATION}.desktop")

    def test_what_software_centres_show(self):
        page = ROOT / f"packaging/{APPLICATION}.metainfo.xml"
        output, status = run("appstreamcli", "validate", "--pedantic", "--no-net", "--no-color", page)
        self.assertEqual(status, 0, output)
        shown = re.findall(r"/quintave/main/(.*\.png)</image>", page.read_text())
        self.assertGreaterEqual(len(shown), 3)
        for picture in shown:
            self.assertTrue((ROOT / picture).is_file(), picture)

    def test_the_types_of_files(self):
        self.assert_silent("xmllint", "--noout", ROOT / "packaging/quintave-mime.xml")

    def test_the_drawings(self):
        self.assert_silent("xmllint", "--noout", *(ROOT / "packaging/icons").glob("*.svg"))

    def test_the_manual_pages(self):
        for page in PAGES:
            with self.subTest(page.name):
                output, status = run("man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", page)
                self.assertEqual(([line for line in output.splitlines() if "warning" in line], status), ([], 0))
                self.assert_silent("mandoc", "-T", "lint", "-W", "warning", page)

    def test_the_completions(self):
        self.assert_silent("shellcheck", "--shell=bash", *(ROOT / "packaging/completions").iterdir())

    def test_the_package(self):
        output, status = run("lintian", "--allow-root", "-EvIL", "+pedantic", package())
        # The compiler keeps long texts in pieces that overlap: "session wasn was not found" is none of ours.
        said = [line for line in output.splitlines() if "spelling-error-in-binary wasn was" not in line]
        self.assertEqual([line for line in said if re.match(r"[EWIPX]: ", line)], [])
        self.assertEqual(status, 0, output)


class Contents(PackageTest):
    def expected(self):
        names = {f"share/applications/{APPLICATION}.desktop", f"share/metainfo/{APPLICATION}.metainfo.xml",
                 "share/mime/packages/quintave.xml",
                 "share/doc/quintave/copyright", "share/doc/quintave/changelog.gz", "share/doc/quintave/NEWS.gz",
                 "share/icons/hicolor/scalable/apps/quintave.svg"}
        names |= {f"share/icons/hicolor/{size}x{size}/apps/quintave.png" for size in ICON_SIZES}
        names |= {f"share/icons/hicolor/scalable/mimetypes/application-x-quintave-{kind}.svg"
                  for kind in ("report", "template")}
        names |= {f"share/bash-completion/completions/{name}" for name in PROGRAMS}
        names |= {f"bin/{name}" for name in PROGRAMS}
        names |= {f"share/man/man{page.suffix[1:]}/{page.name}.gz" for page in PAGES}
        names |= {f"share/quintave/resources/{path.name}" for path in (ROOT / "resources").iterdir()}
        names |= {f"share/doc/quintave/examples/{path.name}" for path in (ROOT / "docs/examples").iterdir()}
        return names

    def test_are_these_files_with_the_rights_of_the_system(self):
        output, status = run("dpkg", "-c", package())
        self.assertEqual(status, 0, output)
        found = {}
        for line in output.splitlines():
            rights, owner, _, _, _, path = line.split(None, 5)
            self.assertEqual(owner, "root/root", line)
            self.assertIn(rights, ("drwxr-xr-x", "-rwxr-xr-x" if "/bin/" in path else "-rw-r--r--"), line)
            if rights[0] == "-":
                found[path.removeprefix("./usr/")] = rights
        self.assertEqual(set(found), self.expected())

    def test_are_read_as_they_were_written(self):
        usr = self.unpacked() / "usr"
        for page in PAGES:
            self.assertEqual(gzip.decompress((usr / f"share/man/man{page.suffix[1:]}/{page.name}.gz").read_bytes()),
                             page.read_bytes())
        for path in (ROOT / "resources").iterdir():
            self.assertEqual((usr / "share/quintave/resources" / path.name).read_bytes(), path.read_bytes())

    def test_hold_no_path_of_the_machine_they_were_built_on(self):
        usr = self.unpacked() / "usr"
        for path in usr.rglob("*"):
            if path.is_file():
                self.assertNotIn(str(ROOT).encode(), path.read_bytes(), path)

    def test_name_the_type_of_a_file_by_its_first_bytes(self):
        usr = self.unpacked() / "usr"
        output, status = run("update-mime-database", usr / "share/mime",
                             env={**os.environ, "XDG_DATA_DIRS": str(usr / "share")})
        self.assertEqual((output, status), ("", 0))
        magic = (usr / "share/mime/magic").read_bytes()
        for kind, start in (("report", b'0,"QuintaveV2'), ("template", b'"QUINTAVE FIELDS TEMPLATE FILE"')):
            self.assertIn(f"application/x-quintave-{kind}]\n".encode(), magic)
            self.assertIn(start, magic)
        for pattern, kind, folder in (("*.RPX", "report", "docs/examples"), ("*.FTF", "template", "resources")):
            files = [path for path in (ROOT / folder).iterdir() if path.match(pattern) or path.match(pattern.lower())]
            self.assertGreater(len(files), 3)
            start = b'0,"QuintaveV2' if kind == "report" else b'"QUINTAVE FIELDS TEMPLATE FILE"'
            self.assertEqual([path.name for path in files if not path.read_bytes().startswith(start)], [])


class Version(PackageTest):
    def setUp(self):
        self.metainfo = (ROOT / f"packaging/{APPLICATION}.metainfo.xml").read_text()
        self.changelog = (ROOT / "packaging/changelog").read_text()

    def test_is_the_same_everywhere(self):
        version = re.search(r"^project\(quintave VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text(), re.M)[1]
        usr = self.unpacked() / "usr"
        found = {"changes": re.search(r"^## ([\d.]+)", (ROOT / "CHANGELOG.md").read_text(), re.M)[1],
                 "software centres": re.search(r'<release version="([^"]+)"', self.metainfo)[1],
                 "Debian's changes": re.match(r"quintave \(([\d.]+)\) ", self.changelog)[1],
                 "package": run("dpkg-deb", "-f", package(), "Version")[0].strip(),
                 "package's name": package().name.split("_")[1]}
        for name in PROGRAMS:
            output, status = run(usr / "bin" / name, "--version", env={"PATH": "/usr/bin:/bin"})
            found[name] = output.removeprefix(name).strip() if status == 0 else output
        for manual in PAGES:
            found[manual.name] = re.search(r'^\.TH .*"Quintave ([\d.]+)"', manual.read_text(), re.M)[1]
        self.assertEqual(found, dict.fromkeys(found, version))

    def test_has_one_date(self):
        released = re.search(r'<release version="[^"]+" date="([^"]+)"', self.metainfo)[1]
        told = parsedate_to_datetime(re.search(r"^ -- .*>  (.*)$", self.changelog, re.M)[1])
        found = {"Debian's changes": told.date().isoformat()}
        for manual in PAGES:
            found[manual.name] = re.search(r"^\.TH \S+ \S+ (\S+)", manual.read_text(), re.M)[1]
        self.assertEqual(found, dict.fromkeys(found, released))


class Completion(PackageTest):
    def complete(self, name, *words):
        """What bash offers for the last of the words."""
        usr = self.unpacked() / "usr"
        script = ('source "$1"; COMP_WORDS=("${@:3}"); COMP_CWORD=$(($# - 3)); "$2"; '
                  'printf "%s\\n" "${COMPREPLY[@]}"')
        output, status = run("bash", "-c", script, "bash", usr / "share/bash-completion/completions" / name,
                             f"_{name.replace('-', '_')}", name, *words, cwd=self.files(),
                             env={"PATH": f"{usr / 'bin'}:/usr/bin:/bin", "LC_ALL": "C"})
        self.assertEqual(status, 0, output)
        return sorted(output.split("\n")[:-1])

    def files(self):
        folder = tempfile.TemporaryDirectory(prefix="quintave-package-")
        self.addCleanup(folder.cleanup)
        for name in ("a wells.rpx", "wood.RPX", "notes.txt", "SITE.FTF"):
            Path(folder.name, name).touch()
        Path(folder.name, "sub").mkdir()
        return folder.name

    def test_of_the_window_program(self):
        self.assertEqual(self.complete("quintave", "--u"), ["--user-resources"])
        self.assertEqual(self.complete("quintave", ""), ["a wells.rpx", "sub", "wood.RPX"])
        self.assertEqual(self.complete("quintave", "--resources", "s"), ["sub"])

    def test_knows_every_option_of_the_window_program(self):
        output, _ = run(self.unpacked() / "usr/bin/quintave", "--help", env={})
        told = sorted(re.findall(r"^ +(--[a-z-]+)", output, re.M))
        self.assertGreater(len(told), 3)
        self.assertEqual(self.complete("quintave", "--"), told)

    def test_of_the_batch_program(self):
        self.assertEqual(self.complete("quintave-cli", "check"), ["check", "check-template"])
        self.assertIn("--format", self.complete("quintave-cli", "export", "--"))
        for option in ("--format", "-f"):
            self.assertEqual(self.complete("quintave-cli", "export", option, "m"), ["markdown"])
        for option in ("--mode", "-m"):
            self.assertEqual(self.complete("quintave-cli", "print", option, "t"), ["titles"])
        self.assertEqual(self.complete("quintave-cli", "print", ""), ["SITE.FTF", "a wells.rpx", "sub", "wood.RPX"])


class BuiltAgain(PackageTest):
    def test_somewhere_else_it_has_the_same_bytes(self):
        with tempfile.TemporaryDirectory(prefix="quintave-built-again-") as folder:
            source = Path(folder, "elsewhere")
            shutil.copytree(ROOT, source,
                            ignore=lambda path, names: {"build", "out", ".git"} if path == str(ROOT) else ())
            env = {name: value for name, value in os.environ.items() if not name.startswith("CCACHE")}
            output, status = run("scripts/package", cwd=source, env={**env, "CCACHE_DISABLE": "1"})
            self.assertEqual(status, 0, output[-3000:])
            again = next((source / "out").glob("*.deb"))
            self.assertEqual(again.name, package().name)
            self.assertTrue(again.read_bytes() == package().read_bytes(), "the two packages differ")


class Result(unittest.TextTestResult):
    """Counts what passed."""

    passed = 0

    def addSuccess(self, test):
        super().addSuccess(test)
        self.passed += 1


def main(names):
    loader = unittest.TestLoader()
    loader.testNamePatterns = [f"*{name}*" for name in names] or None
    tests = loader.loadTestsFromModule(sys.modules["__main__"])
    result = unittest.TextTestRunner(resultclass=Result, verbosity=2).run(tests)
    failed = len(result.failures) + len(result.errors) + (0 if result.testsRun else 1)
    print(f"package: {result.passed} passed, {failed} failed, {len(result.skipped)} skipped")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
