"""What each scenario starts with, and how it must leave things."""

import os
import pathlib
import shutil
import subprocess
import tempfile

from driver import screen, processes, tree
from driver.program import Program, environment_with
from driver.waiting import Unmet, expect_equal, wait_for

# What Qt writes to stderr when an AT-SPI client asks for an object that has just gone, which no screen reader
# can avoid, or for what it does not implement. The last are of Qt 6.8 and 6.11. Qt may ask who
# owns the name of the accessibility bus before it is told of a new owner, and says so.
QT_NOTICES = ("qt.accessibility.atspi: WARNING", "QAccessibleTable::", "QAccessibleTree::",
              "qt.accessibility.atspi: Could not find accessible on path", "QAccessibleList::",
              "qt.accessibility.atspi: AtSpiAdaptor::applicationInterface does not implement",
              "qt.dbus.integration: QDBusConnection: name 'org.a11y.Bus' had owner",
              "qt.qpa.services: Failed to register with host portal")
# Before Qt 6.11, some messages had no category.
QT_CATEGORY = "qt.qpa.services: "
# What Qt 6.8 writes where the locale is not a UTF-8 one.
QT_LOCALE_NOTICE = ("Detected locale ", "Qt depends on a UTF-8 locale, ",
                    "If this causes problems, reconfigure your locale.", "for more information.")


class Session:
    """Empty folders, and the programs that are started in them. A scenario gets one of its own."""

    def __init__(self, options):
        self.options = options
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="kestrel-"))
        self.home = self._make("home")
        self.music = self._make("music")
        self.output = self._make("output")
        self.optional = self._make("opt")
        self.programs = []
        self.helpers = []
        # What the program has to say on its standard output and error, all in all.
        self.expected_words = ""
        self.log_path().touch()
        # How the lines of Qt begin that do not count.
        self.ignored_lines = QT_NOTICES
        self._mounts = []
        self._home_before = self._home_tree()

    def _make(self, name):
        folder = self.folder / name
        folder.mkdir()
        return folder

    def say(self, text):
        """Tells whoever looks on what happens now."""
        print(text, flush=True)

    # Before the program starts

    def replace_ffmpeg(self):
        """Puts the stand-in at the first place where the program looks: it does what its input says."""
        target = self.ffmpeg_place()
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(self.options.stand_in, target)

    def ffmpeg_place(self):
        """The first place where the program looks, as this process sees it."""
        self.cover("/opt", self.optional)
        return self.optional / "homebrew/bin/ffmpeg"

    def hide_ffmpeg(self):
        """Leaves the program without the machine's ffmpeg."""
        hidden = self.folder / "not-a-program"
        hidden.touch()
        for place in ("/usr/local/bin/ffmpeg", "/usr/bin/ffmpeg"):
            if os.path.exists(place):
                self.cover(place, hidden)
        self.cover("/opt", self.optional)

    def cover(self, path, other):
        mount = ["--cover", str(path), str(other)]
        if mount not in self._mounts:
            self._mounts.append(mount)

    def limit(self, folder, size):
        """Has a folder hold no more than a size such as "1m", as the program sees it."""
        self._mounts.append(["--limit", str(folder), size])

    def forbid_writing(self, folder):
        """Has a folder be empty and stay so, as the program sees it and whoever its user is."""
        self._mounts.append(["--read-only", str(folder)])

    def script(self, name, *lines):
        """A file for the stand-in, which does what the lines say."""
        path = self.music / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("".join(f"{line}\n" for line in lines))
        return path

    # Running

    def start(self, **environment):
        return self._start([self.options.program], environment)

    def start_by_name(self, name, **environment):
        """Started as menus do it, by whatever is found under that name."""
        return self._start(["sh", "-c", 'exec "$1"', "sh", name], environment)

    def start_from_shell(self, words):
        """Started by a shell that does these words first and becomes the program then."""
        return self._start(["sh", "-c", f'{words}; exec "$@"', "sh", self.options.program], {})

    def start_on_terminal(self, terminal):
        """Started with this descriptor of a terminal as its standard input."""
        return self._start([self.options.program], {}, terminal)

    def _start(self, command, environment, stdin=subprocess.DEVNULL):
        if self._mounts:
            mounts = [word for mount in self._mounts for word in mount]
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

    def _words(self):
        lines = self.log_path().read_text(errors="replace").splitlines(keepends=True)
        return "".join(line.removeprefix(QT_CATEGORY) for line in lines if not line.startswith(self.ignored_lines))

    def _has_no_children(self):
        processes.fetch_dead(but=[helper.process.pid for helper in self.helpers])
        return not processes.children(os.getpid())

    def check(self):
        """What holds at the end of every scenario."""
        for program in self.programs:
            if program.process.poll() is None:
                raise Unmet("the program still runs")
        wait_for("end of all processes", self._has_no_children)
        expect_equal("words of the program", self._words(), self.expected_words)
        expect_equal("the home folder", self._home_tree(), self._home_before)

    def report(self, name):
        """Leaves a picture of the display and tells what the program said."""
        pictures = pathlib.Path(self.options.pictures)
        pictures.mkdir(parents=True, exist_ok=True)
        screen.take_picture(str(pictures / f"{name}.png"))
        print(f"picture: {pictures / name}.png")
        if self.log_path().exists():
            print("the program's words:", self.log_path().read_text(errors="replace"), sep="\n")
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
