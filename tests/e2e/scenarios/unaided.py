"""From launch to converted files without a mouse: by the keyboard alone, and by a screen reader alone."""

from driver import hands, media, tree
from driver.announcements import Announcements
from driver.program import DESTINATION_PANEL, FILES_PANEL
from driver.registry import scenario
from driver.tree import Role, State
from driver.waiting import expect, expect_equal, wait_equal, wait_for


def focused_name(program):
    focus = program.focus()
    return tree.name_of(focus) if focus else None


def tab_to(program, name):
    """Goes on until the control of that name has the focus."""
    for _ in range(30):
        if focused_name(program) == name:
            return
        before = program.focus()
        hands.key("Tab")
        wait_for("focus that moves", lambda: program.focus() != before)
    expect(f'the focus comes to "{name}"', False)


def fill_panel_by_keys(program, panel, path):
    """The field of a panel has the focus when it opens."""
    title, _ = panel
    program.window(title)
    wait_equal("focus", lambda: program.focus().get_role(), Role.TEXT)
    hands.key("ctrl+a")
    hands.type_text(str(path))
    field = program.focus()
    wait_equal("field", lambda: tree.text_of(field), str(path))
    hands.key("Return")
    wait_for(f'end of "{title}"', lambda: program.find_window(title) is None)


@scenario()
def converts_by_keyboard_alone(session):
    tracks = [media.make_track(session.music / f"{number}.opus") for number in (1, 2, 3)]
    program = session.start()
    wait_for("active window", lambda: tree.has_state(program.window(), State.ACTIVE))
    tab_to(program, "AIFF")
    hands.key("space")
    wait_for("bit depth", lambda: tree.is_enabled(program.find(Role.COMBO_BOX)))
    tab_to(program, "24-bit")
    hands.key("Up")
    wait_for("16-bit", lambda: program.find(Role.COMBO_BOX, "16-bit"))
    for track in tracks:
        hands.key("ctrl+o")
        fill_panel_by_keys(program, FILES_PANEL, track)
    program.await_names(["1.opus", "2.opus", "3.opus"])
    tab_to(program, "1.opus, in music, Ready")
    hands.key("Down")
    wait_equal("focus", lambda: focused_name(program), "2.opus, in music, Ready")
    hands.key("Delete")
    program.await_names(["1.opus", "3.opus"])
    wait_equal("focus", lambda: focused_name(program), "3.opus, in music, Ready")
    tab_to(program, "Save to Choose destination…")
    hands.key("Return")
    fill_panel_by_keys(program, DESTINATION_PANEL, session.output)
    tab_to(program, "Convert 2 Files")
    hands.key("Return")
    program.await_states(["Complete", "Complete"])
    for name in ("1", "3"):
        made = session.output / f"{name}_converted.aiff"
        expect_equal("codec", media.describe(made)[0], "pcm_s16be")
    hands.key("ctrl+q")
    expect_equal("status", program.await_end(), 0)


@scenario()
def opens_the_menu_by_keyboard(session):
    program = session.start()
    wait_for("active window", lambda: tree.has_state(program.window(), State.ACTIVE))
    for combination in ("alt+f", "F10"):
        hands.key(combination)
        wait_equal("chosen command", lambda: focused_name(program), "Add Audio…")
        hands.key("Escape")
        wait_for("closed menu", lambda: focused_name(program) != "Add Audio…")
    hands.key("F10")
    wait_equal("chosen command", lambda: focused_name(program), "Add Audio…")
    hands.key("Up", "Return")
    expect_equal("status", program.await_end(), 0)


@scenario()
def converts_by_a_screen_reader_alone(session):
    tracks = [media.make_track(session.music / f"{number}.opus") for number in (1, 2)]
    program = session.start()
    program.press("WAV")
    wait_for("chosen format", lambda: tree.has_state(program.button("WAV"), State.CHECKED))
    program.add_files(*tracks)
    program.await_names(["1.opus", "2.opus"])
    expect_equal("positions", [row.position for row in program.rows()], ["1 of 2", "2 of 2"])
    tree.act(program.row("2.opus").node, "Press")
    program.await_names(["1.opus"])
    program.choose_destination(session.output)
    announcements = Announcements()
    program.press("Convert 1 File")
    program.await_states(["Complete"])
    announcements.await_texts(["Converting", "Conversion finished: 1 complete, 0 failed"])
    expect("a converted file cannot be removed",
           "Press" not in tree.actions(program.row("1.opus").node))
    expect_equal("codec", media.describe(session.output / "1_converted.wav")[0], "pcm_s24le")
    program.quit()


@scenario()
def sets_the_quality_by_a_screen_reader(session):
    program = session.start()
    slider = wait_for("slider", lambda: program.find(Role.SLIDER, "Quality"))
    expect_equal("quality", slider.get_current_value(), 82.0)
    expect_equal("range", (slider.get_minimum_value(), slider.get_maximum_value()), (30.0, 100.0))
    slider.set_current_value(55)
    program.await_text("55%")
    program.quit()
