"""What Orca says of the window, walked through by keyboard."""

import re

from driver import media, tree
from driver.program import DESTINATION_PANEL
from driver.registry import scenario
from driver.tree import Role, State
from driver.waiting import expect, expect_equal, wait_equal, wait_for

from parts.screen_reader import ScreenReader

# Commands for the stand-in.
DURATION = "probe err Duration: 00:00:10.00, start\\n"
HALF_PROGRESS = "convert out out_time_ms=5000000\\n"
LONG_NAME = "A track whose name is so long that no row of the list has room for all of it, not even in a wide window"


def text_of(utterances):
    return " ".join(utterance.text for utterance in utterances)


def expect_once(text, utterances):
    """Checks that the text is said once, and not in an utterance that is cut short."""
    saying = [utterance for utterance in utterances if text in utterance.text]
    expect(f'"{text}" is said once, not: {show(utterances)}',
           text_of(utterances).count(text) == 1 and not saying[0].is_cut)


def expect_plain(utterances):
    """Checks what holds for whatever is said: no markup, no role of a mere container, nothing twice."""
    said = [utterance.text for utterance in utterances]
    expect(f"there is no markup: {said}", not re.search(r"</?\w+[^>]*>|&\w+;", " ".join(said)))
    expect(f"there is no layered pane: {said}", "layered pane" not in " ".join(said))
    expect(f"nothing is said twice: {said}", len(set(said)) == len(said))


def show(utterances):
    return ", ".join(map(str, utterances)) or "nothing"


class Walk:
    """A program under Orca, walked through by keyboard. Everything said must be plain."""

    def __init__(self, session, **settings):
        self.session = session
        # Qt's warnings when Orca takes long to answer whether it wants a key, and of its own combo boxes.
        session.ignored_prefixes += ("QSpiApplication::keyEventError", "WARNING QAccessibleTable::indexOfChild")
        self.reader = ScreenReader(session, **settings)
        self.program = session.start()
        wait_for("active window", lambda: tree.has_state(self.program.window(), State.ACTIVE))
        self.listen()

    def add(self, *paths):
        self.program.add_files(*paths)
        self.program.await_text(f"{len(paths)} audio file{'s' if len(paths) > 1 else ''} · 0 complete")
        self.listen()

    def listen(self):
        """What is said from here on does not count what was said before."""
        self.reader.said()

    def press(self, *keys):
        """Presses keys one after the other; returns what is said of the last."""
        for key in keys:
            self.program.key(key)
            said = self.reader.said()
        expect_plain(said)
        return said

    def focus(self):
        node = self.program.focus()
        return tree.name_of(node) if node else ""

    def tab_to(self, start):
        """Presses Tab until the name of the focused control starts so; returns what is said of the last Tab."""
        said = []
        for _ in range(30):
            if self.focus().startswith(start):
                return said
            said = self.press("Tab")
        expect(f'the focus comes to "{start}"', False)

    def end(self):
        self.program.quit()
        self.reader.close()


def tracks(session, count):
    """Tracks with short names, of which the first are real."""
    first = media.make_track(session.music / "1.opus", seconds=0.3)
    paths = [first]
    for number in range(2, count + 1):
        paths.append(session.music / f"{number}.opus")
        paths[-1].symlink_to(first)
    return paths


@scenario()
def says_each_control_once(session):
    walk = Walk(session)
    walk.add(*tracks(session, 2), media.make_track(session.music / f"{LONG_NAME}.opus", seconds=0.2))
    wait_equal("focus", walk.focus, "MP3")
    said = {}
    for _ in range(14):
        utterances = walk.press("Tab")
        name = walk.focus()
        said[name] = utterances
        if name == "MP3":
            break
    expect_equal("way of the focus", [name.partition(",")[0] for name in said], [
        "AIFF", "WAV", "Quality", "Folder", "Add Audio", "1.opus", "Save to Choose destination…", "Convert 3 Files",
        "Minimise", "Maximise", "Close", "MP3"])
    for name, utterances in said.items():
        own = [utterance for utterance in utterances if utterance.text.startswith(name.partition(",")[0])]
        expect(f"{name} is said once: {show(utterances)}", len(own) == 1 and not own[0].is_cut)
    # No control has to do with the name of a row that is cut off.
    for name, utterances in said.items():
        expect(f"{name} is said without the names of rows: {show(utterances)}", LONG_NAME not in text_of(utterances))
    walk.end()


@scenario()
def says_rows_with_their_place(session):
    walk = Walk(session)
    walk.add(*tracks(session, 30))
    said = walk.tab_to("1.opus")
    expect_once("1.opus", said)
    expect_once("1 of 30", said)
    for key, number in (("Down", 2), ("Down", 3), ("Up", 2), ("End", 30), ("Up", 29), ("Home", 1)):
        said = walk.press(key)
        expect_once(f"{number}.opus", said)
        expect_once(f"{number} of 30", said)
        rest = text_of(said).replace(f"{number}.opus, in music, Ready", "").replace(f"{number} of 30", "")
        expect(f"{key} says the row alone: {show(said)}", not rest.strip(" .,"))
    # Again from behind.
    walk.press("Tab")
    said = walk.press("shift+Tab")
    expect_once("1.opus", said)
    expect_once("1 of 30", said)
    walk.end()


@scenario()
def says_the_formats_as_radio_buttons(session):
    walk = Walk(session)
    wait_equal("focus", walk.focus, "MP3")
    for number, name in ((2, "AIFF"), (3, "WAV")):
        said = walk.press("Tab")
        for text in (name, "not selected radio button", f"{number} of 3"):
            expect_once(text, said)
    said = walk.press("space")
    expect_equal("what is said of the choice", [utterance.text for utterance in said], ["selected"])
    said = walk.press("shift+Tab", "Tab")
    for text in ("WAV", "selected radio button", "3 of 3"):
        expect_once(text, said)
    expect("it is selected now", "not selected" not in text_of(said))
    # They are a group with a name.
    walk.press("Tab")
    expect_once("Output format", walk.press("shift+Tab"))
    walk.end()


@scenario()
def says_the_quality_in_per_cent(session):
    walk = Walk(session)
    said = text_of(walk.tab_to("Quality"))
    expect(f"the slider says its name and value: {said}", re.search(r"Quality slider 82\W*(%|percent|per cent)", said))
    for key, value in (("Up", 83), ("Home", 30), ("End", 100)):
        said = walk.press(key)
        expect(f"{key} says the value alone: {show(said)}",
               re.fullmatch(rf"{value}\W*(%|percent|per cent)?\.?", text_of(said)))
    walk.end()


@scenario()
def says_the_bit_depth(session):
    walk = Walk(session)
    walk.tab_to("WAV")
    walk.press("space")
    said = walk.press("Tab")
    for text in ("Bit depth", "24-bit"):
        expect_once(text, said)
    walk.press("space")
    expect_once("16-bit", walk.press("Up"))
    expect_once("16-bit", walk.press("Return"))
    wait_for("16-bit", lambda: walk.program.find(Role.COMBO_BOX, "16-bit"))
    walk.end()


@scenario()
def says_the_commands_of_the_menu(session):
    walk = Walk(session)
    expect_once("Add Audio…", walk.press("F10"))
    expect_once("Add Folder…", walk.press("Down"))
    expect_once("Quit", walk.press("Down"))
    walk.press("Escape")
    walk.program.quit()
    walk.reader.close()


@scenario()
def says_the_alert_once(session):
    walk = Walk(session)
    walk.add(*tracks(session, 1))
    walk.tab_to("Convert 1 File")
    said = walk.press("Return")
    walk.program.await_alert("Choose an output folder first.")
    for text in ("Choose an output folder first.", "OK"):
        expect_once(text, said)
    said = walk.press("Return")
    walk.program.await_no_alert()
    expect_once("Convert 1 File", said)
    walk.end()


def choose_destination(walk):
    tree.act(walk.program.destination_button(), "Press")
    walk.program.fill_panel(DESTINATION_PANEL, walk.session.output)
    wait_for("active window", lambda: tree.has_state(walk.program.window(), State.ACTIVE))
    walk.listen()


@scenario()
def says_start_and_end_of_a_short_batch_once(session):
    walk = Walk(session)
    silent = session.music / "9.opus"
    silent.write_bytes(b"no sound")
    walk.add(*tracks(session, 2), silent)
    choose_destination(walk)
    walk.tab_to("Convert 3 Files")
    walk.program.key("Return")
    walk.program.await_states(["Complete", "Complete", "Failed"])
    said = walk.reader.said()
    expect_once("Conversion finished: 2 complete, 1 failed", said)
    starts = [utterance for utterance in said if re.search(r"\bConverting\b", utterance.text)]
    expect(f"the start is said once, and to its end: {show(said)}", len(starts) == 1 and not starts[0].is_cut)
    # The row with the failure is read without markup, with its message.
    said = walk.press("shift+Tab", "shift+Tab")
    expect_once(str(session.output), said)
    walk.press("shift+Tab")
    said = walk.press("End")
    expect_once("9.opus, in music, Failed", said)
    walk.end()


@scenario()
def tells_the_progress_bars_apart(session):
    session.replace_ffmpeg()
    gate = session.folder / "gate"
    walk = Walk(session)
    walk.add(session.script("1.opus", DURATION, HALF_PROGRESS, f"convert wait-for {gate}", "convert write-output 1"),
             session.script("2.opus", "convert write-output 2"))
    choose_destination(walk)
    walk.tab_to("Convert 2 Files")
    walk.program.key("Return")
    walk.program.await_states(["Converting", "Ready"])
    bars = [tree.name_of(node) for node in tree.descendants(walk.program.window())
            if node.get_role() == Role.PROGRESS_BAR]
    expect(f"both bars have names, and not the same: {bars}", len(bars) == 2 and all(bars) and bars[0] != bars[1])
    gate.touch()
    walk.program.await_states(["Complete", "Complete"])
    for utterance in walk.reader.said():
        expect(f"a value is said with the name of its bar: {utterance}",
               not re.fullmatch(r"\d+ percent\.?", utterance.text))
    walk.end()
