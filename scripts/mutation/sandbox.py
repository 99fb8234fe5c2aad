"""A scratch copy of the tree in which mutants are built and tested."""

import contextlib
import filecmp
import hashlib
import os
import re
import resource
import shutil
import signal
import subprocess
import tempfile
import time

# What is copied; the rest of the tree is not needed for the build.
PARTS = ["CMakeLists.txt", "cmake", "model", "system", "ffmpeg", "platform", "viewmodel", "ui", "app", "benchmarks",
         "packaging", "tests", "translations", "scripts"]
MINIMUM_SECONDS = 60
MINIMUM_CPU_SECONDS = 15
MEMORY_KILOBYTES = 4 << 20
# Of 512 bytes; a test makes a sparse file of 5 GB.
FILE_BLOCKS = 12 << 20

# Runs as pid 1 of its own mount and PID namespaces. Arguments: a folder, the limits, the folders of /tmp that it
# needs, "--" and the command. Only the folder is writable and holds /tmp, no signal gets out, and all processes end
# with it.
JAIL = """
folder=$1 memory=$2 blocks=$3 seconds=$4
shift 4
while [ "$1" != -- ]; do
    mkdir -p "$folder$1" && mount --bind "$1" "$folder$1" || exit 125
    shift
done
shift
mount --rbind "$folder/tmp" /tmp && mount --bind "$folder/home" "$folder/home" || exit 125
mount -o remount,bind,ro / || exit 125
# Soft limits: some tests set their own.
ulimit -c 0; ulimit -S -v $memory; ulimit -S -f $blocks; ulimit -S -t $seconds
cd /tmp || exit 125
if [ "$(id -u)" = 0 ]; then
    "$@"
else
    setpriv --inh-caps=-all --ambient-caps=-all "$@"
fi
exit $?
"""
# The jail's own exit status, and the shell's for a program that it cannot execute.
JAIL_FAILURES = (125, 126, 127)


class Program:
    """A test program, or some suites of one, and what it needs to run."""

    def __init__(self, name, folder, covers, helpers=(), environment=None, needs_display=False,
                 is_slow=False, excluded=(), suites=None):
        self.file = f"tests/{folder}/{name}"
        # The folders whose mutants it is run on, its own first.
        self.covers = covers
        self.name = name if suites is None else f"{name} ({suites})"
        # The folder with the suites, if only those run.
        self.suites = suites
        self.helpers = [f"tests/{folder}/{helper}" for helper in helpers]
        self.environment = environment or {}
        self.needs_display = needs_display
        self.is_slow = is_slow
        # Slow tests.
        self.excluded = excluded

    def arguments(self, tree):
        """Returns the filter of the tests, which are those in the tree."""
        if self.suites is not None:
            return ["--gtest_filter=" + ":".join(f"*{suite}.*" for suite in suites_in(os.path.join(tree, self.suites)))]
        return [f"--gtest_filter=-{':'.join(self.excluded)}"] if self.excluded else []


def suites_in(folder):
    """Returns the names of the test suites in the files directly in the folder."""
    result = set()
    for name in os.listdir(folder):
        if name.endswith((".cpp", ".h")):
            with open(os.path.join(folder, name), encoding="utf-8") as stream:
                result.update(re.findall(r"^(?:TYPED_)?TEST(?:_[FP])?\((\w+),", stream.read(), re.MULTILINE))
    return sorted(result)


# After its own suites a mutant runs those of the whole window, which catch most of the others.
UI_FOLDERS = ["ui", "ui/theme", "ui/controls", "ui/queue", "ui/settings", "ui/accessibility"]


def ui_program(folder):
    """The suites of one folder of tests/ui, which run first for mutants of that folder."""
    return Program("kestrel_ui_test", "ui", [folder, *(other for other in UI_FOLDERS if other != folder)],
                   needs_display=True, suites=f"tests/{folder}")


PROGRAMS = [
    Program("model_tests", "model", ["model"]),
    Program("system_tests", "system", ["system", "model"]),
    Program("platform_tests", "platform", ["platform", "system", "model"], ["platform_file_name_order_helper"]),
    Program("platform_desktop_tests", "platform", ["platform", "system", "model"],
            environment={"QT_QPA_PLATFORM": "offscreen"}),
    Program("ffmpeg_tests", "ffmpeg", ["ffmpeg", "system", "model"]),
    Program("viewmodel_tests", "viewmodel", ["viewmodel", "ffmpeg", "platform", "system", "model"]),
    Program("platform_panel_tests", "platform", ["platform", "system", "model"], needs_display=True),
    Program("platform_wayland_tests", "platform", ["platform", "system", "model"], needs_display=True),
    Program("real_ffmpeg_tests", "ffmpeg", ["ffmpeg", "system", "model"], is_slow=True),
    Program("real_batch_tests", "viewmodel", ["viewmodel", "ffmpeg", "platform", "system", "model"], is_slow=True),
    Program("fault_tests", "faults", ["ffmpeg", "system", "viewmodel"], is_slow=True,
            excluded=["SoakTest.*", "*AThousandTimes*", "*FloodTest.*"]),
    *map(ui_program, UI_FOLDERS),
    Program("kestrel_app_test", "app", ["app", *UI_FOLDERS], needs_display=True),
]


class Run:
    """The result of one run of a test program. A status of None is a time-out."""

    def __init__(self, status, output, seconds, cpu_seconds):
        self.status = status
        self.output = output
        self.seconds = seconds
        self.cpu_seconds = cpu_seconds

    @property
    def is_time_out(self):
        # 128 + SIGXCPU is the shell's exit status for a process that the signal killed.
        return self.status in (None, 128 + signal.SIGXCPU)

    def reason(self):
        """Returns the failed test, or another short reason."""
        if self.is_time_out:
            return "time-out"
        failed = re.search(r"\[  FAILED  \] (\S+?)[,\s]", self.output)
        if failed:
            return failed.group(1)
        running = re.findall(r"\[ RUN      \] (\S+)", self.output)
        return f"status {self.status}" + (f" in {running[-1]}" if running else "")


class Verdict:
    def __init__(self, kind, by="", output=""):
        # One of report.KINDS.
        self.kind = kind
        self.by = by
        self.output = output


class Sandbox:
    def __init__(self, root, folder, processors, display, folders):
        self.root = root
        self.folders = folders
        # Those that cover any of the folders.
        self.programs = [program for program in PROGRAMS if set(program.covers) & set(folders)]
        self.tree = os.path.join(folder, "tree")
        self.build_folder = os.path.join(folder, "build")
        self.processors = processors
        # A lock: one display has one keyboard focus.
        self.display = display
        self.baseline = {}
        self.limits = {}
        # All jobs share one ccache although their folders differ.
        self.environment = dict(os.environ, CCACHE_DIR=os.path.join(os.path.dirname(folder), "ccache"),
                                CCACHE_BASEDIR=folder, CCACHE_NOHASHDIR="1")

    def prepare(self):
        """Updates the copy, builds it and runs every program once. Returns an error message, or None."""
        os.makedirs(self.tree, exist_ok=True)
        for part in PARTS:
            copy_changes(os.path.join(self.root, part), os.path.join(self.tree, part))
        command = ["cmake", "-S", self.tree, "-B", self.build_folder, "-G", "Ninja",
                   "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -w",
                   "-DKESTREL_REGISTER_TESTS=OFF"]
        if shutil.which("ld.lld"):
            command.append("-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld")
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL, env=self.environment)
        status, output = self.build(sorted({program.file for program in self.programs}), os.cpu_count())
        if status != 0:
            return f"the tree does not build:\n{output}"
        for folder in self.folders:
            self.baseline[folder] = self.fingerprint(library(folder))
        for program in self.programs:
            self.baseline[program] = self.fingerprint(program.file, *program.helpers)
            self.limits[program] = (600, 600)
            run = self.run(program)
            if run.status != 0:
                return f"{program.name} does not pass without a mutant:\n{run.output}"
            self.limits[program] = (max(MINIMUM_SECONDS, 10 * run.seconds),
                                    max(MINIMUM_CPU_SECONDS, 10 * run.cpu_seconds))
        return None

    def build(self, targets, processors=None):
        command = ["ninja", "-C", self.build_folder, "-j", str(processors or self.processors), *targets]
        run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                             errors="replace", env=self.environment, check=False)
        return run.returncode, run.stdout

    def fingerprint(self, *files):
        """Returns a hash of the built files."""
        result = hashlib.sha256()
        for file in files:
            with open(os.path.join(self.build_folder, file), "rb") as stream:
                result.update(stream.read())
        return result.digest()

    def judge(self, mutant):
        """Builds the mutant and runs the tests until one catches it."""
        file = os.path.join(self.tree, mutant.path)
        with open(file, encoding="utf-8") as stream:
            original = stream.read()
        with open(file, "w", encoding="utf-8") as stream:
            stream.write(mutant.text)
        try:
            return self._judge(mutant)
        finally:
            with open(file, "w", encoding="utf-8") as stream:
                stream.write(original)

    def _judge(self, mutant):
        folder = os.path.dirname(mutant.path)
        programs = [program for program in self.programs if folder in program.covers]
        for program in sorted(programs, key=lambda program: (program.is_slow, program.covers[0] != folder)):
            status, output = self.build([program.file])
            if status != 0:
                return Verdict("not built", program.name, output)
            if mutant.path.endswith(".cpp") and self.fingerprint(library(folder)) == self.baseline[folder]:
                # The same instructions: an equivalent mutant.
                return Verdict("unchanged")
            if self.fingerprint(program.file, *program.helpers) == self.baseline[program]:
                continue
            run = self.run(program)
            if run.status != 0:
                kind = "timed out" if run.is_time_out else "caught"
                return Verdict(kind, f"{program.name} {run.reason()}", run.output)
        return Verdict("survived")

    def run(self, program):
        with self.display if program.needs_display else contextlib.nullcontext():
            run = self.run_jailed(program)
        if run.status in JAIL_FAILURES:
            raise RuntimeError(f"{program.name} could not be run:\n{run.output}")
        return run

    def tmp_mounts(self):
        """Returns the folders below /tmp that the tests need: the display's, and the copy's if it is there."""
        folders = [os.path.dirname(tempfile.gettempdir()), "/tmp/.X11-unix", os.path.dirname(self.tree)]
        return [folder for folder in folders if folder.startswith("/tmp/") and os.path.isdir(folder)]

    def run_jailed(self, program):
        """Runs the program in the jail, in its own process group, within its limits."""
        seconds, cpu_seconds = self.limits[program]
        folder = tempfile.mkdtemp(prefix="mutant-")
        # Some tests drop privileges.
        os.chmod(folder, 0o711)
        for name, mode in (("tmp", 0o1777), ("home", 0o700)):
            os.mkdir(os.path.join(folder, name))
            os.chmod(os.path.join(folder, name), mode)
        environment = dict(os.environ, TMPDIR="/tmp", HOME=f"{folder}/home",
                           XDG_RUNTIME_DIR=f"{folder}/home", KESTREL_TEST_MEDIA=f"{folder}/home/media",
                           **program.environment)
        users = [] if os.geteuid() == 0 else ["--user", "--map-current-user", "--keep-caps"]
        # The test is killed with this program.
        command = ["setpriv", "--pdeathsig", "KILL", "unshare", *users, "--mount", "--pid", "--fork",
                   "--kill-child", "--mount-proc", "sh", "-c", JAIL, "sh", folder, str(MEMORY_KILOBYTES),
                   str(FILE_BLOCKS), str(int(cpu_seconds)), *self.tmp_mounts(), "--",
                   os.path.join(self.build_folder, program.file), "--gtest_fail_fast",
                   *program.arguments(self.tree)]
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        start = time.monotonic()
        try:
            with tempfile.TemporaryFile() as output:
                process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output,
                                           stderr=subprocess.STDOUT, env=environment, start_new_session=True)
                try:
                    status = process.wait(seconds)
                except subprocess.TimeoutExpired:
                    status = None
                finally:
                    kill_group(process)
                output.seek(0)
                text = output.read(1 << 20).decode(errors="replace")
        finally:
            remove(folder)
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        used = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
        return Run(status, text, time.monotonic() - start, used)


def library(folder):
    return f"{folder}/libkestrel_{folder.replace('/', '_')}.a"


def kill_group(process):
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()


def remove(folder):
    """Removes a folder whatever modes the tests left in it."""
    for path, names, _ in os.walk(folder):
        for name in names:
            if not os.path.islink(os.path.join(path, name)):
                os.chmod(os.path.join(path, name), 0o700)
    shutil.rmtree(folder, ignore_errors=True)


def copy_changes(source, target):
    """Makes the target equal to the source; does not touch equal files, so that they are not rebuilt."""
    if os.path.isfile(source):
        if not os.path.isfile(target) or not filecmp.cmp(source, target, shallow=False):
            shutil.copy(source, target)
        return
    os.makedirs(target, exist_ok=True)
    names = [name for name in os.listdir(source) if name != "__pycache__"]
    for name in os.listdir(target):
        if name not in names:
            path = os.path.join(target, name)
            shutil.rmtree(path) if os.path.isdir(path) else os.remove(path)
    for name in names:
        copy_changes(os.path.join(source, name), os.path.join(target, name))
