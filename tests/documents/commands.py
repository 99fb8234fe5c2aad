"""Every command that a document tells its reader to type, and what runs it."""

import dataclasses


@dataclasses.dataclass
class Run:
    """Run by the stage for documented commands; `instead` replaces a command that has placeholders, takes hours
    or changes the system. Slow ones run nightly."""

    instead: str = ""
    is_nightly: bool = False


@dataclasses.dataclass
class Stage:
    """A stage of .ci/run with this command line."""

    command: str


@dataclasses.dataclass
class Test:
    """Covered by the tests whose names begin with this."""

    name: str


@dataclasses.dataclass
class ByHand:
    """Not automated, for this reason."""

    reason: str


FRESH = "takes root and a network, to make a system of its own"
INSTALLED = "takes root; scripts/fresh-install does it in a system of its own"

BENCHMARKS = "benchmarks/run --json build/documents/benchmarks.json --runs 1 idle"

MUTANTS = "takes a build of its own for a figure that developers ask for now and then"

FUZZ = (
    "rm -rf build/documents/corpus && cp -a tests/fuzz/corpus build/documents/corpus &&"
    " { scripts/fuzz --seconds 1 uri-lists; status=$?; } &&"
    " rm -rf tests/fuzz/corpus && mv build/documents/corpus tests/fuzz/corpus && exit $status"
)

COMMANDS = {
    # What a user types
    "scripts/run": Run(
        "env --unset=DISPLAY --unset=WAYLAND_DISPLAY scripts/run &&"
        " tests/release/check-hardening build/release/kestrel"
    ),
    "scripts/test": Stage("scripts/test --long"),
    "scripts/package": Test("packaging.build"),
    "scripts/package [FOLDER]": Test("packaging.build"),
    "sudo apt-get install ./build/package/kestrel_0.1.0_amd64.deb": ByHand(INSTALLED),
    "sudo apt-get remove kestrel": ByHand(INSTALLED),
    "cmake --preset release": Run(),
    "cmake --build --preset release": Run(),
    "sudo cmake --install build/release --prefix /usr/local": Run(
        "cmake --install build/release --prefix build/documents/prefix"
    ),
    "kestrel": Test("e2e.starts-from-its-entry-in-the-menu"),
    "man kestrel": Test("packaging.manual"),
    "dpkg-query --show kestrel": ByHand(INSTALLED),
    "ffmpeg -version": Run(),
    "ffmpeg -n -hide_banner -i song.opus -map 0:a:0 -vn -c:a libmp3lame -q:a 2 -id3v2_version 3"
    " -map_metadata 0 song_converted.mp3": Run(
        "rm -f build/documents/song* &&"
        " ffmpeg -v error -f lavfi -i sine=d=1 -c:a libopus build/documents/song.opus &&"
        " ffmpeg -n -hide_banner -i build/documents/song.opus -map 0:a:0 -vn -c:a libmp3lame -q:a 2"
        " -id3v2_version 3 -map_metadata 0 build/documents/song_converted.mp3"
    ),
    # What a developer types
    "scripts/setup": Run(),
    "cmake --preset dev": Run(),
    "cmake --build --preset dev": Run(),
    "cmake --preset dev -B build/debug -D CMAKE_CXX_FLAGS_DEBUG=-g": Run(
        "cmake --preset dev -B build/documents/debug -D CMAKE_CXX_FLAGS_DEBUG=-g"
    ),
    "scripts/setup --desktops": Stage("scripts/test --desktops"),
    "scripts/test --desktops": Stage("scripts/test --desktops"),
    "scripts/with-display tests/desktops/orca_walk.py build/dev/kestrel": Run(
        "scripts/setup --desktops && scripts/with-display tests/desktops/orca_walk.py build/dev/kestrel",
        is_nightly=True,
    ),
    "scripts/test -R FileURL": Run(),
    "scripts/test -L unit": Run(),
    "scripts/test --long": Stage("scripts/test --long"),
    "scripts/test --nightly": Stage("scripts/test --nightly"),
    "scripts/test --long -R e2e.converts": Run(),
    "scripts/test --preset asan": Stage("scripts/test --long --preset asan"),
    "scripts/test --preset tsan": Stage("scripts/test --long --preset tsan"),
    "scripts/test --preset coverage": Stage("scripts/test --preset coverage"),
    "scripts/test --preset fuzz": Stage("scripts/test --preset fuzz"),
    "build/fuzz/tests/fuzz/fuzz-uri-lists build/fuzz/findings/uri-lists-crash-...": Run(
        "build/fuzz/tests/fuzz/fuzz-uri-lists tests/fuzz/corpus/uri-lists/*",
        is_nightly=True,
    ),
    "scripts/fuzz": Run(FUZZ, is_nightly=True),
    "scripts/fuzz [--seconds N] [TARGET...]": Run(FUZZ, is_nightly=True),
    "scripts/format": Run(),
    "scripts/lint": Stage("scripts/lint"),
    "scripts/with-display build/dev/tests/ui/kestrel_ui_test --gtest_filter='ThemeColorTest.*'": Run(),
    "scripts/with-display COMMAND": Run("scripts/with-display true"),
    "scripts/gallery [--pseudo] [FOLDER]": Run("scripts/gallery build/documents/gallery"),
    "scripts/mutate": ByHand(MUTANTS),
    "scripts/mutate --only REGEX": ByHand(MUTANTS),
    "benchmarks/run [--json FILE] [--runs N] [GROUP...]": Run(BENCHMARKS, is_nightly=True),
    "benchmarks/run startup": Run("benchmarks/run --runs 1 startup", is_nightly=True),
    "benchmarks/run": Run(BENCHMARKS, is_nightly=True),
    "scripts/demo": Run(),
    "scripts/memcheck": Stage("scripts/memcheck"),
    "scripts/memcheck [FILTER]": Stage("scripts/memcheck"),
    "scripts/fresh-root --suite trixie": ByHand(FRESH),
    "scripts/fresh-root [--suite SUITE] [COMMAND...]": ByHand(FRESH),
    "scripts/fresh-install": ByHand(FRESH),
    "scripts/fresh-install --suite trixie": ByHand(FRESH),
    "scripts/fresh-install [--suite SUITE] [FOLDER]": ByHand(FRESH),
    "scripts/foreign-architecture [--suite SUITE] ARCH": ByHand(FRESH),
    "translations/update": Test("translations.template-is-current"),
    "cmake --build --preset dev --target translation-template": Run(),
    "translations/update de": Run("trap 'rm translations/kestrel_eo.ts' EXIT; translations/update eo"),
    "LANGUAGE=de build/release/kestrel": Test("TranslationTest"),
    "scripts/gallery --pseudo": Run("scripts/gallery --pseudo build/documents/gallery", is_nightly=True),
    "git grep kestrel.example.org": Run(),
    ".ci/run": ByHand("is what runs the rest"),
    ".ci/run [--nightly]": ByHand("is what runs the rest"),
}
