"""A print server of a test's own: a queue whose jobs can be read as they arrived.

    with PrintServer(paper="A4") as server:
        ... a program with server.env in its environment prints ...
        job, = server.jobs(1)
        print(job.text())

Nothing is printed by it, and no other print server is touched: it listens on a socket in its own folder.
"""

import re
import shutil
import subprocess
import tempfile
from pathlib import Path

from display import die_with_parent, wait_until

TOOLS = "/usr/sbin:/usr/bin:/sbin:/bin"

CONFIGURATION = """LogLevel warn
Listen {folder}/socket
DefaultAuthType None
WebInterface No
Browsing Off
PreserveJobFiles Yes
DefaultPaperSize none
<Location />
  Order allow,deny
  Allow all
</Location>
<Location /admin>
  Order allow,deny
  Allow all
</Location>
<Policy default>
  JobPrivateAccess all
  JobPrivateValues none
  SubscriptionPrivateAccess all
  SubscriptionPrivateValues none
  <Limit All>
    Order deny,allow
    Allow all
  </Limit>
</Policy>
"""

FILES = """FileDevice Yes
ServerRoot {folder}/root
RequestRoot {folder}/jobs
TempDir {folder}/tmp
CacheDir {folder}/cache
StateDir {folder}/state
AccessLog {folder}/access.log
ErrorLog {folder}/error.log
PageLog {folder}/page.log
Printcap {folder}/printcap
Sandboxing relaxed
"""

# A model of two paper sizes whose jobs no filter touches: they are kept as the program sent them.
MODEL = """*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*FileVersion: "1.0"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*PCFileName: "PAPER.PPD"
*Manufacturer: "None"
*Product: "(Paper)"
*ModelName: "Paper"
*ShortNickName: "Paper"
*NickName: "Paper"
*PSVersion: "(3010.000) 0"
*LanguageLevel: "3"
*ColorDevice: True
*DefaultColorSpace: RGB
*FileSystem: False
*cupsFilter2: "application/pdf application/pdf 0 -"
*OpenUI *PageSize: PickOne
*DefaultPageSize: {paper}
*PageSize Letter: ""
*PageSize A4: ""
*CloseUI: *PageSize
*OpenUI *PageRegion: PickOne
*DefaultPageRegion: {paper}
*PageRegion Letter: ""
*PageRegion A4: ""
*CloseUI: *PageRegion
*DefaultImageableArea: {paper}
*ImageableArea Letter: "0 0 612 792"
*ImageableArea A4: "0 0 595 842"
*DefaultPaperDimension: {paper}
*PaperDimension Letter: "612 792"
*PaperDimension A4: "595 842"
"""


class PrintServer:
    """paper: the size that the queue proposes to programs. default: whether programs find it as default."""

    def __init__(self, paper="Letter", default=True):
        self.folder = Path(tempfile.mkdtemp(prefix="quintave-printer-", dir="/tmp"))  # a socket's path has to be short
        # Programs read the queue's model, with its paper sizes, from the server's own folder.
        self.env = {"CUPS_SERVER": f"{self.folder}/socket", "CUPS_SERVERROOT": f"{self.folder}/root"}
        self.paper, self.default = paper, default
        self.process = None

    def __enter__(self):
        try:
            for name in ("root", "jobs", "tmp", "cache", "state"):
                (self.folder / name).mkdir()
            (self.folder / "cupsd.conf").write_text(CONFIGURATION.format(folder=self.folder))
            (self.folder / "files.conf").write_text(FILES.format(folder=self.folder))
            self._start()
            self._add_queue()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        self.stop()
        shutil.rmtree(self.folder, ignore_errors=True)

    def _start(self):
        command = ["cupsd", "-f", "-c", self.folder / "cupsd.conf", "-s", self.folder / "files.conf"]
        with open(self.folder / "output.log", "ab") as out:
            self.process = subprocess.Popen([str(word) for word in command], stdin=subprocess.DEVNULL, stdout=out,
                                            stderr=out, env={"PATH": TOOLS}, preexec_fn=die_with_parent)
        if not wait_until(self._runs, 30, 0.05):
            raise RuntimeError(f"cupsd did not start: {self.log()}")

    def stop(self):
        """Ends the server; its jobs can be read still."""
        if self.process and self.process.poll() is None:
            self.process.terminate()
            self.process.wait(20)

    def _runs(self):
        return self.process.poll() is None and "is running" in self._ask("lpstat", "-r", check=False)

    def _ask(self, *command, check=True):
        done = subprocess.run([str(word) for word in command], env={**self.env, "PATH": TOOLS, "LC_ALL": "C"},
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=60)
        if check and done.returncode:
            raise RuntimeError(f"{' '.join(map(str, command))}: {done.stderr}\n{self.log()}")
        return done.stdout

    def _add_queue(self):
        model = self.folder / "model.ppd"
        model.write_text(MODEL.format(paper=self.paper))
        self._ask("lpadmin", "-p", "Paper", "-E", "-v", "file:/dev/null", "-P", model)
        if self.default:
            self._ask("lpadmin", "-d", "Paper")

    def refuse(self):
        """From now on the queue takes no jobs."""
        self._ask("cupsreject", "Paper")

    def accept(self):
        self._ask("cupsaccept", "Paper")

    def log(self):
        """What the server has said, for a failure's report."""
        return "".join(path.read_text(errors="replace")[-3000:] for path in sorted(self.folder.glob("*.log")))

    def jobs(self, count, timeout=30):
        """Waits for so many jobs to have arrived whole, and returns all there are."""
        def done():
            return [line for line in self._ask("lpstat", "-W", "completed", "-o").splitlines() if line.strip()]
        if not wait_until(lambda: len(done()) >= count, timeout, 0.05):
            raise AssertionError(f"{len(done())} jobs of {count} have arrived:\n{self.log()}")
        return [Job(path) for path in sorted((self.folder / "jobs").glob("d*-001"))]


class Job:
    """The document of a print job, read from a PDF file."""

    def __init__(self, path):
        self.path = path
        fields = (line.partition(":") for line in self._read("pdfinfo", path).splitlines())
        self.info = {key: value.strip() for key, _, value in fields}  # such as Title, Pages, Page size
        self.pages = [self._lines(page) for page in self._read("pdftotext", "-layout", path, "-").split("\f")[:-1]]
        self.fonts = {line.split()[0] for line in self._read("pdffonts", path).splitlines()[2:]}
        self.words = list(self._words())

    @staticmethod
    def _read(*command):
        return subprocess.run([str(word) for word in command], capture_output=True, timeout=60,
                              check=True).stdout.decode("utf-8")

    @staticmethod
    def _lines(page):
        """The words of each line that is not empty."""
        return [line.split() for line in page.split("\n") if line.strip()]

    def _words(self):
        """(page, left, top, right, word) of every word, in points from the upper left of the paper."""
        page = 0
        for line in self._read("pdftotext", "-bbox", self.path, "-").splitlines():
            page += line.lstrip().startswith("<page ")
            match = re.match(r'\s*<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" .*>(.*)</word>', line)
            if match:
                yield (page, *(float(number) for number in match.groups()[:3]), match[4])

    def picture(self, path):
        """Paints the pages as PATH-1.png and so on."""
        path.parent.mkdir(parents=True, exist_ok=True)
        self._read("pdftoppm", "-r", "70", "-png", self.path, path)
