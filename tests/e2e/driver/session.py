"""Set-up, final checks and failure report of a scenario."""

import os
import pathlib
import shutil
import subprocess
import tempfile

from driver import processes, screen, tree
from driver.program import Program, environment_with
from driver.waiting import Unmet, expect_equal, wait_for

# Qt's warnings on stderr when an AT-SPI client queries an object that was just destroyed, which no screen
# reader can avoid, or something that Qt does not implement. The last are of Qt 6.8 and 6.11. Qt also warns if
# it queries the owner of the accessibility bus before D-Bus has told it of a new one.
QT_WARNINGS = ("qt.accessibility.atspi: WARNING", "QAccessibleTable::", "QAccessibleTree::",
               "qt.accessibility.atspi: Could not find accessible on path", "QAccessibleList::",
               "qt.accessibility.atspi: AtSpiAdaptor::applicationInterface does not implement",
               "qt.dbus.integration: QDBusConnection: name 'org.a11y.Bus' had owner",
               "qt.qpa.services: Failed to register with host portal")
# Before Qt 6.11, some messages had no category.
QT_CATEGORY = "qt.qpa.services: "
# Qt 6.8's warning in a non-UTF-8 locale.
QT_LOCALE_WARNING = ("Detected locale ", "Qt depends on a UTF-8 locale, ",
                     "If this causes problems, reconfigure your locale.", "for more information.")


class Session:
    """A sandbox of empty folders, with the programs started in it. One per scenario."""

    def __init__(self, options):
        self.options = options
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="kestrel-"))
        self.home = self._make("home")
        self.music = self._make("music")
        self.output = self._make("output")
        self.opt = self._make("opt")
        self.programs = []
        self.helpers = []
        # All that the programs must write to stdout and stderr.
        self.expected_output = ""
        self.log_path().touch()
        # Output lines with these prefixes are ignored.
        self.ignored_prefixes = QT_WARNINGS
        # Saves a picture of the screen to a file.
        self.take_screenshot = screen.take_screenshot
        self._mounts = []
        self._home_before = self._home_tree()

    def _make(self, name):
        folder = self.folder / name
        folder.mkdir()
        return folder

    def say(self, text):
        print(text, flush=True)

    # Before the program starts

    def replace_ffmpeg(self):
        """Installs the stand-in as the first ffmpeg that the program finds; it runs its input file as a script."""
        target = self.ffmpeg_path()
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(self.options.stand_in, target)

    def ffmpeg_path(self):
        """The first candidate for ffmpeg, as a path outside the program's mount namespace."""
        self.cover("/opt", self.opt)
        return self.opt / "homebrew/bin/ffmpeg"

    def hide_ffmpeg(self):
        """Hides the system's ffmpeg from the program."""
        hidden = self.folder / "not-a-program"
        hidden.touch()
        for place in ("/usr/local/bin/ffmpeg", "/usr/bin/ffmpeg"):
            if os.path.exists(place):
                self.cover(place, hidden)
        self.cover("/opt", self.opt)

    def cover(self, path, other):
        mount = ["--cover", str(path), str(other)]
        if mount not in self._mounts:
            self._mounts.append(mount)

    def limit(self, folder, size):
        """Mounts an empty file system of a size such as "1m" over the folder, for the program only."""
        self._mounts.append(["--limit", str(folder), size])

    def forbid_writing(self, folder):
        """Mounts an empty read-only file system over the folder, for the program only; it holds for root too."""
        self._mounts.append(["--read-only", str(folder)])

    def script(self, name, *lines):
        """Writes an input file with a script for the stand-in; returns its path."""
        path = self.music / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("".join(f"{line}\n" for line in lines))
        return path

    # Running

    def start(self, **environment):
        return self._start([self.options.program], environment)

    def start_by_name(self, name, **environment):
        """Starts what PATH has under that name, as menus do."""
        return self._start(["sh", "-c", 'exec "$1"', "sh", name], environment)

    def start_from_shell(self, commands):
        """Starts a shell that runs the commands and then execs the program."""
        return self._start(["sh", "-c", f'{commands}; exec "$@"', "sh", self.options.program], {})

    def start_on_terminal(self, terminal):
        """Starts the program with this file descriptor of a terminal as stdin."""
        return self._start([self.options.program], {}, terminal)

    def _start(self, command, environment, stdin=subprocess.DEVNULL):
        if self._mounts:
            mounts = [argument for mount in self._mounts for argument in mount]
            roots = tempfile.mkdtemp(dir=self.folder, prefix="root-")
            command = [str(self.options.with_mounts), roots, *mounts, "--", *command]
        with open(self.log_path(), "ab") as log:
            program = Program(command, environment_with({"HOME": str(self.home), **environment}), log,
                              stdin)
        self.programs.append(program)
        return program

    def log_path(self):
        return self.folder / "program.log"

    # Ending

    def _home_tree(self):
        return sorted(
            (str(path.relative_to(self.home)), path.lstat().st_size, path.lstat().st_mtime_ns)
            for path in self.home.rglob("*")
        )

    def _logged_output(self):
        lines = self.log_path().read_text(errors="replace").splitlines(keepends=True)
        return "".join(line.removeprefix(QT_CATEGORY) for line in lines if not line.startswith(self.ignored_prefixes))

    def _has_no_children(self):
        processes.reap_zombies(except_for=[helper.process.pid for helper in self.helpers])
        return not processes.children(os.getpid())

    def check(self):
        """Checks what must hold at the end of every scenario."""
        for program in self.programs:
            if program.process.poll() is None:
                raise Unmet("the program still runs")
        wait_for("end of all processes", self._has_no_children)
        expect_equal("output of the program", self._logged_output(), self.expected_output)
        expect_equal("the home folder", self._home_tree(), self._home_before)

    def report(self, name):
        """Saves a screenshot; prints the program's output, the processes and the accessibility tree."""
        pictures = pathlib.Path(self.options.pictures)
        pictures.mkdir(parents=True, exist_ok=True)
        self.take_screenshot(str(pictures / f"{name}.png"))
        print(f"screenshot: {pictures / name}.png")
        if self.log_path().exists():
            print("the program's output:", self.log_path().read_text(errors="replace"), sep="\n")
        for pid in processes.children(os.getpid()):
            print("process:", processes.describe(pid))
        for program in self.programs:
            if program.process.poll() is None:
                for window in program.windows():
                    print(window.get_role_name(), repr(tree.name_of(window)), sep=" ")
                    print(*tree.outline(window), sep="\n")

    def close(self):
        for process in (*self.programs, *self.helpers):
            process.kill()
        for pid in processes.children(os.getpid()):
            try:
                os.kill(pid, 9)
                os.waitpid(pid, 0)
            except (ProcessLookupError, ChildProcessError):
                pass
        shutil.rmtree(self.folder)
