"""How the program behaves among others: ends, signals, pipes, outputs, many files."""

import errno
import os
import pty
import re
import resource
import shutil
import signal
import subprocess
import tempfile
import time
import unittest

import program

TEMPLATE = program.template('1,-1,"","Citation","",""', '2,60,"TEXT","Title","Mandatory.",""',
                            '2,20,"LIST","Kind","",""', '"Maps"', '"XXX-1XXX"')
REPORT = program.report('1,-1,"Citation",""', '2,1,"Title","Wells"', '2,1,"Kind","Maps"')
WRONG = program.report('1,-1,"Citation",""', '2,1,"Colour","Red"')
COMMANDS = ("check-template", "check", "print", "merge", "export", "diff")


def wait_for(condition, what):
    end = time.monotonic() + 20
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f"not within 20 s: {what}")
        time.sleep(0.02)


class Behaviour(program.CliTest):
    def setUp(self):
        super().setUp()
        self.write("SITE.FTF", TEMPLATE)
        self.write("a.rpx", REPORT)
        self.write("b.rpx", WRONG)

    def test_nothing_of_the_toolkit_is_linked(self):
        needed = subprocess.run(["ldd", program.PATH], capture_output=True, text=True, check=True).stdout
        self.assertIn("libstdc++", needed)
        self.assertEqual(re.findall(r"(?i)libQt\S*|libX\S*|libxcb\S*", needed), [])

    def test_what_an_encoding_does_not_have_is_told(self):
        self.write("names.rpx", '0,"QuintaveV2 UTF-8",""\r\n1,1,"Name","Łukasz é"\r\n'.encode())
        status, out, err = self.run_cli("print", "names.rpx")
        self.assertEqual((status, err), (0, ""))
        self.assertTrue(out.decode().endswith("Name| Łukasz é\r\n"))
        status, out, err = self.run_cli("print", "names.rpx", "--encoding", "windows-1252")
        self.assertEqual((status, err), (1, "quintave-cli: names.rpx: Not all characters are in Windows-1252: the others "
                                            "were printed as '?'.\n"))
        self.assertTrue(out.decode("cp1252").endswith("Name| ?ukasz é\r\n"))
        self.assertIn("utf-8 or windows-1252", self.run_cli("print", "names.rpx", "--encoding", "utf-16")[2])
        self.write("damaged.rpx", b'0,"QuintaveV2 UTF-8",""\r\n1,1,"Name","\xc5\x81\xe9"\r\n')
        told = ("quintave-cli: damaged.rpx:2: This file says that it is UTF-8, and in this line it is not. What is no "
                "UTF-8 was read as Windows-1252.\n")
        for command in (("print", "damaged.rpx"), ("export", "damaged.rpx", "-f", "csv")):
            status, out, err = self.run_cli(*command)
            self.assertEqual((status, err), (0, told))
            self.assertIn("Łé".encode(), out)

    def test_help_of_each_command(self):
        for command in COMMANDS:
            status, out, err = self.run_cli(command, "--help")
            self.assertEqual((status, err), (0, ""))
            self.assertTrue(out.startswith(f"Usage: quintave-cli {command} [OPTION]... ".encode()))
            self.assertIn(b"--version", out)
            self.assertLessEqual(max(map(len, out.decode().splitlines())), 120)
            self.assertEqual(self.run_cli(command, "--version")[0], 0)
        self.assertIn(b"check-template", self.run_cli("--help")[1])

    def test_help_and_version_are_options_like_the_others(self):
        for arguments, same in ((["check", "--hel"], ["check", "--help"]), (["--ver"], ["--version"]),
                                (["print", "a.rpx", "--version"], ["--version"]),
                                (["--help", "check"], ["--help"])):
            self.assertEqual(self.run_cli(*arguments), self.run_cli(*same), arguments)
            self.assertEqual(self.run_cli(*same)[0], 0)
        status, out, _ = self.run_cli("print", "-s", "--version", "a.rpx")
        self.assertEqual(status, 0)
        self.assertIn(b"Title--versionWells", out)
        self.assertEqual(self.run_cli("print", "--", "--help")[0], 3)  # the name of a file

    def test_wrong_usage(self):
        for arguments in ([], ["none"], ["check"], ["check", "a.rpx"], ["print"], ["print", "a.rpx", "b.rpx"],
                          ["print", "a.rpx", "--mode", "most"], ["print", "a.rpx", "--indent", "61"],
                          ["print", "a.rpx", "--indent", "x"], ["print", "--nothing", "a.rpx"], ["diff", "a.rpx"],
                          ["export", "a.rpx"], ["export", "a.rpx", "--format", "yaml"], ["print", "a.rpx", "--mode"],
                          ["merge", "-t", "SITE.FTF", "-o", "o.rpx", "a.rpx"],
                          ["merge", "--add", "-o", "o.rpx", "a.rpx"],
                          ["merge", "-t", "SITE.FTF", "--add", "--overwrite", "-o", "o.rpx", "a.rpx"],
                          ["merge", "-t", "SITE.FTF", "--add", "a.rpx"], ["-x"], ["--", "check"], ["none", "--help"],
                          ["print", "a.rpx", "-o", ""], ["export", "-f", "csv", "a.rpx", "--output="],
                          ["merge", "-t", "SITE.FTF", "--add", "a.rpx", "-o", ""],
                          ["check", "-t", "SITE.FTF", "--require", "", "a.rpx"], ["diff", "-", "-"],
                          ["check", "-t", "-", "-"]):
            with self.subTest(arguments):
                status, out, err = self.run_cli(*arguments)
                self.assertEqual((status, out), (2, b""))
                self.assertRegex(err, r"\Aquintave-cli: .+\nTry 'quintave-cli.* --help' for more information\.\n\Z")
        self.assertFalse((self.folder / "o.rpx").exists())

    def test_options_in_the_ways_of_gnu(self):
        plain = self.run_cli("print", "--mode", "data", "--below", "a.rpx")
        self.assertEqual(plain[0], 0)
        for arguments in (["a.rpx", "--mode=data", "--below"], ["-m", "data", "-b", "a.rpx"], ["-bmdata", "a.rpx"],
                          ["--mode=none", "--mode=data", "--bel", "--", "a.rpx"]):
            self.assertEqual(self.run_cli("print", *arguments), plain, arguments)

    def test_the_worst_status_counts_and_every_file_is_done(self):
        for files, status in ((["a.rpx"], 0), (["b.rpx", "a.rpx"], 1), (["none.rpx", "b.rpx"], 3),
                              (["b.rpx", "none.rpx", "."], 3)):
            found = self.run_cli("check", "-t", "SITE.FTF", *files)
            self.assertEqual(found[0], status, files)
            self.assertEqual(found[1].count(b"b.rpx:3: No matching field title"), files.count("b.rpx"))
            self.assertEqual(found[2].count("Error: 53 - File not found"), files.count("none.rpx"))

    def test_standard_input(self):
        for arguments in (["print"], ["export", "-f", "json"], ["diff", "b.rpx"], ["check", "-t", "SITE.FTF"]):
            self.assertEqual(self.run_cli(*arguments, "-", data=REPORT)[1].replace(b"STANDARD INPUT", b"A.RPX"),
                             self.run_cli(*arguments, "a.rpx")[1])
        self.assertEqual(self.run_cli("check-template", "-", data=TEMPLATE),
                         (0, b"standard input: 2 fields, 0 groups, 1 list\n", ""))
        self.assertEqual(self.run_cli("check-template", "-", data=REPORT)[0], 1)
        self.assertEqual(self.run_cli("check", "-t", "-", "a.rpx", data=TEMPLATE), (0, b"", ""))

    def test_a_template_through_a_pipe(self):
        done = subprocess.run(["bash", "-c", f"'{program.PATH}' check -t <(cat SITE.FTF) a.rpx b.rpx"], cwd=self.folder,
                              env=self.env, capture_output=True, timeout=60)
        self.assertEqual((done.returncode, done.stderr), (1, b""))
        self.assertTrue(done.stdout.startswith(b"b.rpx:3: No matching field title"))

    def test_an_input_is_never_written_over(self):
        os.symlink("a.rpx", self.folder / "link.rpx")
        os.link(self.folder / "a.rpx", self.folder / "hard.rpx")
        for output in ("a.rpx", "./a.rpx", "link.rpx", "hard.rpx"):
            for arguments in (["print", "a.rpx"], ["export", "-f", "csv", "a.rpx"],
                              ["merge", "-t", "SITE.FTF", "--add", "b.rpx", "a.rpx"]):
                status, out, err = self.run_cli(*arguments, "-o", output)
                self.assertEqual((status, out), (3, b""))
                self.assertIn(f"quintave-cli: {output}: Error: 55 - File already open\n", err)
                self.assertEqual((self.folder / "a.rpx").read_bytes(), REPORT)
        self.assertEqual(self.run_cli("merge", "-t", "SITE.FTF", "--add", "a.rpx", "-o", "SITE.FTF")[0], 3)
        self.assertEqual((self.folder / "SITE.FTF").read_bytes(), TEMPLATE)

    def test_an_input_that_comes_through_standard_input_is_no_output_either(self):
        for arguments in ("print - -o a.rpx", "export -f csv - -o a.rpx", "merge -t SITE.FTF --add -o a.rpx -",
                          "print - >>a.rpx", "print b.rpx >>b.rpx", "check -t SITE.FTF b.rpx >>b.rpx",
                          "check-template SITE.FTF >>SITE.FTF", "diff a.rpx b.rpx >>b.rpx"):
            done = subprocess.run(["bash", "-c", f"'{program.PATH}' {arguments} <a.rpx"], cwd=self.folder, env=self.env,
                                  capture_output=True, timeout=60)
            self.assertEqual((done.returncode, done.stdout), (3, b""), arguments)
            self.assertIn(b"Error: 55 - File already open\n", done.stderr)
            self.assertEqual([(self.folder / name).read_bytes() for name in ("a.rpx", "b.rpx", "SITE.FTF")],
                             [REPORT, WRONG, TEMPLATE])

    def test_an_output_takes_its_place_when_it_is_whole(self):
        self.write("out.txt", b"old")
        (self.folder / "out.txt").chmod(0o640)
        self.write("cut.rpx", REPORT + b'2,1,"Title","no end\r\n')
        names = sorted(os.listdir(self.folder))
        for arguments in (["print"], ["export", "-f", "json"]):
            for report in ("cut.rpx", "SITE.FTF"):
                self.assertEqual(self.run_cli(*arguments, report, "-o", "out.txt")[0], 3)
                self.assertEqual((self.folder / "out.txt").read_bytes(), b"old")
                self.assertEqual(sorted(os.listdir(self.folder)), names)
        os.symlink("out.txt", self.folder / "link.txt")
        self.assertEqual(self.run_cli("export", "-f", "csv", "a.rpx", "-o", "link.txt"), (0, b"", ""))
        self.assertTrue((self.folder / "link.txt").is_symlink())
        self.assertTrue((self.folder / "out.txt").read_bytes().startswith(b"section,group"))
        self.assertEqual((self.folder / "out.txt").stat().st_mode & 0o777, 0o640)

    def test_a_value_of_more_lines_than_can_be_counted_is_not_written(self):
        self.write("MEMO.FTF", program.template('1,999,"MEMO","Notes","",""'))
        self.write("long.rpx", program.report('1,1,"Notes","' + 32767 * "x\r\n" + '"'))
        self.write("out.rpx", b"old")
        for output in ("out.rpx", "-"):
            status, out, err = self.run_cli("merge", "-t", "MEMO.FTF", "--add", "long.rpx", "-o", output)
            self.assertEqual((status, out, (self.folder / "out.rpx").read_bytes()), (3, b"", b"old"))
            self.assertIn("Error: 6 - Overflow", err)

    def test_a_new_output_is_as_open_as_the_user_has_it(self):
        for mask, mode in ((0o022, 0o644), (0o077, 0o600)):
            former = os.umask(mask)
            self.addCleanup(os.umask, former)
            self.run_cli("print", "a.rpx", "-o", f"{mode:o}.txt")
            os.umask(former)
            self.assertEqual((self.folder / f"{mode:o}.txt").stat().st_mode & 0o777, mode)

    def test_a_device_keeps_its_place(self):
        plain = self.run_cli("export", "-f", "csv", "a.rpx")
        self.assertEqual(self.run_cli("export", "-f", "csv", "a.rpx", "-o", "/dev/stdout"), plain)
        self.assertEqual(self.run_cli("export", "-f", "csv", "a.rpx", "-o", "/dev/null"), (0, b"", ""))
        self.assertFalse(os.path.isfile("/dev/null"))

    def test_standard_output_by_another_name_keeps_what_others_wrote(self):
        plain = self.run_cli("export", "-f", "csv", "a.rpx")[1]
        merged = ("merge", "-t", "SITE.FTF", "--add", "a.rpx")
        for arguments, whole in ((("export", "-f", "csv", "a.rpx"), plain),
                                 (merged, self.run_cli(*merged, "-o", "-")[1])):
            for name in ("/dev/stdout", "/dev/fd/1", "out.csv"):
                for sign, old in ((">", b""), (">>", b"old\n")):
                    self.write("out.csv", b"old\n")
                    command = f"'{program.PATH}' {' '.join(arguments)} -o {name}"
                    script = f"{{ echo before; {command}; echo after; }} {sign}out.csv"
                    done = subprocess.run(["sh", "-c", script], cwd=self.folder, env=self.env, timeout=60)
                    self.assertEqual(done.returncode, 0)
                    self.assertEqual((self.folder / "out.csv").read_bytes(), old + b"before\n" + whole + b"after\n")

    def test_a_link_that_leads_nowhere_stays_a_link(self):
        plain = self.run_cli("export", "-f", "csv", "a.rpx")[1]
        os.symlink("new.csv", self.folder / "link.csv")
        self.assertEqual(self.run_cli("export", "-f", "csv", "a.rpx", "-o", "link.csv"), (0, b"", ""))
        self.assertTrue((self.folder / "link.csv").is_symlink())
        self.assertEqual((self.folder / "new.csv").read_bytes(), plain)
        with tempfile.TemporaryFile() as deleted:
            os.symlink(f"/proc/{os.getpid()}/fd/{deleted.fileno()}", self.folder / "out.csv")
            self.assertEqual(self.run_cli("export", "-f", "csv", "a.rpx", "-o", "out.csv"), (0, b"", ""))
            self.assertEqual(deleted.read(), plain)
        self.assertTrue((self.folder / "out.csv").is_symlink())

    def test_an_output_that_cannot_be_made(self):
        for output, error in (("none/out.txt", "76 - Path not found"), (".", "75 - Path/File access error"),
                              ("a.rpx/out.txt", "76 - Path not found")):
            self.assertEqual(self.run_cli("print", "a.rpx", "-o", output),
                             (3, b"", f"quintave-cli: {output}: Error: {error}\n"))

    def test_a_full_disk(self):
        for arguments in (["print", "a.rpx"], ["export", "-f", "xml", "a.rpx"], ["diff", "a.rpx", "b.rpx"],
                          ["check", "-t", "SITE.FTF", "b.rpx"], ["--help"]):
            with open("/dev/full", "wb") as full:
                run = self.start(*arguments, stdout=full)
                self.assertIn(b"quintave-cli: ", run.communicate(timeout=60)[1])
                self.assertEqual(run.returncode, 3, arguments)

    def test_a_file_that_may_not_grow(self):
        """The limit stands for a disk that fills up while the output is written."""
        self.write("long.rpx", program.report(*(f'2,1,"Title","{"x" * 70}"' for _ in range(3000))))
        self.write("out.csv", b"old")

        def small_files():
            signal.signal(signal.SIGXFSZ, signal.SIG_DFL)
            resource.setrlimit(resource.RLIMIT_FSIZE, (100_000, 100_000))

        for arguments in (["export", "-f", "csv"], ["print"]):
            run = self.start(*arguments, "long.rpx", "-o", "out.csv", preexec_fn=small_files)
            self.assertEqual(run.communicate(timeout=60), (b"", b"quintave-cli: out.csv: Error: 61 - Disk full\n"))
            self.assertEqual(run.returncode, 3)
            self.assertEqual((self.folder / "out.csv").read_bytes(), b"old")
        wait_for(lambda: not list(self.folder.glob("out.csv.*")), "the end of the half-written output")

    def test_a_pipe_that_closes_early_ends_it_quietly(self):
        self.write("long.rpx", program.report(*(f'2,1,"Title","{"x" * 70}"' for _ in range(9000))))
        for arguments in (["print", "long.rpx"], ["export", "-f", "json", "long.rpx"],
                          ["check", "-t", "SITE.FTF", *["b.rpx"] * 3000]):
            run = self.start(*arguments)
            run.stdout.read(10)
            run.stdout.close()
            self.assertEqual(run.stderr.read(), b"")
            self.assertEqual(run.wait(timeout=60), -signal.SIGPIPE)

    def test_no_work_files_are_made(self):
        self.env["TMPDIR"] = self.env["XDG_RUNTIME_DIR"] = str(self.tmp)
        os.mkfifo(self.folder / "pipe.rpx")
        run = self.start("check", "-t", "SITE.FTF", "a.rpx", "pipe.rpx")
        with open(self.folder / "pipe.rpx", "wb"):  # opens when the template and the first report have been read
            self.assertEqual(os.listdir(self.tmp), [])
        self.assertEqual(run.wait(timeout=60), 1)  # what came through the pipe is no report
        run.communicate()
        self.env["TMPDIR"] = str(self.tmp / "none")
        self.assertEqual(self.run_cli("check", "-t", "SITE.FTF", "a.rpx"), (0, b"", ""))

    def test_no_signal_leaves_half_an_output(self):
        os.mkfifo(self.folder / "pipe.rpx")
        before = sorted(os.listdir(self.folder))
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGKILL):
            run = self.start("merge", "-t", "SITE.FTF", "--add", "-o", "out.rpx", "a.rpx", "pipe.rpx")
            with open(self.folder / "pipe.rpx", "wb"):
                run.send_signal(number)
                self.assertEqual(run.wait(timeout=60), -number)
            run.communicate()
            self.assertEqual(sorted(os.listdir(self.folder)), before)

    def test_closed_standard_files(self):
        script = f"'{program.PATH}' export -f csv a.rpx -o out.csv >&- 2>&-"
        self.assertEqual(subprocess.run(["sh", "-c", script], cwd=self.folder, env=self.env, timeout=60).returncode, 0)
        self.assertEqual((self.folder / "out.csv").read_bytes(), self.run_cli("export", "-f", "csv", "a.rpx")[1])
        script = f"'{program.PATH}' print a.rpx >&-"
        self.assertEqual(subprocess.run(["sh", "-c", script], cwd=self.folder, env=self.env, timeout=60,
                                        stderr=subprocess.DEVNULL).returncode, 3)

    def test_progress_on_a_terminal_alone(self):
        files = ["a.rpx"] * 4000
        self.assertEqual(self.run_cli("check", "-t", "SITE.FTF", *files), (0, b"", ""))
        for command in (["check"], ["merge", "--overwrite", "-o", "out.rpx"]):
            arguments = [*command, "-t", "SITE.FTF", *files]
            self.assertEqual(self.shown_on_a_terminal(arguments, subprocess.PIPE), b"")  # the reader shows its own
            with open(self.folder / "found.txt", "wb") as found:
                self.assertRegex(self.shown_on_a_terminal(arguments, found), rb"\A(\r\d+ of 4000)+\r\x1b\[K\Z")

        printed = self.shown_on_a_terminal(["merge", "--overwrite", "-o", "-", "-t", "SITE.FTF", *files])
        self.assertRegex(printed, rb'\A(\r\d+ of 4000)+\r\x1b\[K0,"QuintaveV2"')

    def shown_on_a_terminal(self, arguments, output=None):
        """What a command on good files writes on the terminal: messages, and without another output its result."""
        own, terminal = pty.openpty()
        run = self.start(*arguments, stdout=output or terminal, stderr=terminal)
        os.close(terminal)
        shown = b""
        try:
            while part := os.read(own, 4096):
                shown += part
        except OSError as error:  # the other side has been closed
            self.assertEqual(error.errno, errno.EIO)
        os.close(own)
        self.assertEqual((run.communicate(timeout=60)[0] or b"", run.returncode), (b"", 0))
        return shown

    def test_a_thousand_reports_in_one_run(self):
        names = []
        for number in range(1000):
            names.append(f"{number}.rpx")
            self.write(names[-1], WRONG if number % 100 == 0 else REPORT)
        status, out, err = self.run_cli("check", "-t", "SITE.FTF", *names)
        self.assertEqual((status, err), (1, ""))
        found = [line.partition(":")[0] for line in out.decode().splitlines()]
        self.assertEqual(found, [f"{number}.rpx" for number in range(0, 1000, 100)])

    def test_one_report_leaves_nothing_to_the_next(self):
        """A field that is empty in the second report is told, though the first one filled it, in either order."""
        self.write("empty.rpx", program.report())
        wanted = b"empty.rpx: The field Citation / Title is empty! Its help line reads: Mandatory.\n"
        for files in (["a.rpx", "empty.rpx"], ["empty.rpx", "a.rpx"], ["a.rpx", "empty.rpx", "a.rpx"]):
            self.assertEqual(self.run_cli("check", "-t", "SITE.FTF", "--require", "mandatory", *files), (1, wanted, ""))

    def test_a_required_word_is_a_whole_word_in_any_letters(self):
        self.write("T.FTF", program.template('1,20,"TEXT","One","Obligé : le titre.",""',
                                             '1,20,"TEXT","Two","Obligée",""', '1,20,"TEXT","Three","Facultatif",""'))
        self.write("empty.rpx", program.report())
        for word in ("obligé", "OBLIGÉ"):
            found = self.run_cli("check", "-t", "T.FTF", "--require", word, "empty.rpx")
            self.assertEqual((found[0], found[1].decode()),
                             (1, "empty.rpx: The field One is empty! Its help line reads: Obligé : le titre.\n"))

    @unittest.skipUnless(os.geteuid() == 0, "only the superuser can become somebody else")
    def test_a_file_that_may_not_be_read(self):
        (self.folder / "b.rpx").chmod(0)
        for folder in (self.folder.parent, self.folder, self.tmp):
            folder.chmod(0o777)
        # Somebody else may not come into the folder that the program was built in.
        copy = shutil.copy(program.PATH, self.folder.parent / "quintave-cli")
        run = self.start("check", "-t", "SITE.FTF", "b.rpx", "a.rpx", user=65534, group=65534, executable=copy)
        self.assertEqual(run.communicate(timeout=60), (b"", b"quintave-cli: b.rpx: Error: 70 - Permission denied\n"))
        self.assertEqual(run.returncode, 3)
