"""From launch to converted files without a mouse: by keyboard alone, and by AT-SPI alone."""

from driver import media, tree
from driver.announcements import Announcements
from driver.program import DESTINATION_PANEL, FILES_PANEL
from driver.registry import scenario
from driver.tree import Role, State
from driver.waiting import expect, expect_equal, wait_equal, wait_for


def focused_name(program):
    focus = program.focus()
    return tree.name_of(focus) if focus else None


def tab_to(program, name):
    """Presses Tab until the control of this name has the focus."""
    for _ in range(30):
        if focused_name(program) == name:
            return
        before = program.focus()
        program.key("Tab")
        wait_for("focus that moves", lambda: program.focus() != before)
    expect(f'the focus comes to "{name}"', False)


def fill_panel_by_keys(program, panel, path):
    """Types into the panel's field, which has the initial focus, and confirms."""
    title, _ = panel
    program.window(title)
    wait_equal("focus", lambda: program.focus().get_role(), Role.TEXT)
    program.key("ctrl+a")
    program.type_text(str(path))
    field = program.focus()
    wait_equal("field", lambda: tree.text_of(field), str(path))
    program.key("Return")
    program.await_no_window(title)


@scenario()
def converts_by_keyboard_alone(session):
    tracks = [media.make_track(session.music / f"{number}.opus") for number in (1, 2, 3)]
    program = session.start()
    wait_for("active window", lambda: tree.has_state(program.window(), State.ACTIVE))
    tab_to(program, "AIFF")
    program.key("space")
    wait_for("bit depth", lambda: tree.is_enabled(program.find(Role.COMBO_BOX)))
    tab_to(program, "24-bit")
    program.key("Up")
    wait_for("16-bit", lambda: program.find(Role.COMBO_BOX, "16-bit"))
    for track in tracks:
        program.key("ctrl+o")
        fill_panel_by_keys(program, FILES_PANEL, track)
    program.await_names(["1.opus", "2.opus", "3.opus"])
    tab_to(program, "1.opus, in music, Ready")
    program.key("Down")
    wait_equal("focus", lambda: focused_name(program), "2.opus, in music, Ready")
    program.key("Delete")
    program.await_names(["1.opus", "3.opus"])
    wait_equal("focus", lambda: focused_name(program), "3.opus, in music, Ready")
    tab_to(program, "Save to Choose destination…")
    program.key("Return")
    fill_panel_by_keys(program, DESTINATION_PANEL, session.output)
    tab_to(program, "Convert 2 Files")
    program.key("Return")
    program.await_states(["Complete", "Complete"])
    for name in ("1", "3"):
        made = session.output / f"{name}_converted.aiff"
        expect_equal("codec", media.describe(made)[0], "pcm_s16be")
    program.key("ctrl+q")
    expect_equal("status", program.await_end(), 0)


def close_menu(program):
    """Closes the menu from its first item. Qt 6.11 leaves the focus on the menu bar until a second Escape."""
    program.key("Escape")
    wait_for("closed menu", lambda: focused_name(program) != "Add Audio…")
    if focused_name(program) == "File":
        program.key("Escape")
        wait_for("focus in the window", lambda: focused_name(program) != "File")


@scenario()
def opens_the_menu_by_keyboard(session):
    program = session.start()
    wait_for("active window", lambda: tree.has_state(program.window(), State.ACTIVE))
    for combination in ("alt+f", "F10"):
        program.key(combination)
        wait_equal("chosen command", lambda: focused_name(program), "Add Audio…")
        close_menu(program)
    program.key("F10")
    wait_equal("chosen command", lambda: focused_name(program), "Add Audio…")
    program.key("Up", "Return")
    expect_equal("status", program.await_end(), 0)


@scenario()
def converts_by_a_screen_reader_alone(session):
    tracks = [media.make_track(session.music / f"{number}.opus") for number in (1, 2)]
    program = session.start()
    program.press("WAV")
    program.await_checked("WAV")
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


def query_out_of_range_children(program):
    """Queries out-of-range children of every accessible, as a client with a stale child count does."""
    for window in list(program.windows()):
        for node in [window, *tree.descendants(window, hidden=True)]:
            count = node.get_child_count()
            for index in (count, count + 1, count + 1000):
                child = node.get_child_at_index(index)
                expect(f'"{tree.name_of(node)}" has {count} children, and no {index + 1}', child is None)


@scenario()
def survives_questions_for_what_is_not_there(session):
    program = session.start()
    query_out_of_range_children(program)
    program.press("Add Audio")
    program.window(FILES_PANEL[0])
    query_out_of_range_children(program)
    program.fill_panel(FILES_PANEL, *(session.script(f"{number}.opus") for number in range(20)))
    program.await_text("20 audio files · 0 complete")
    query_out_of_range_children(program)
    program.press("Convert 20 Files")
    alert = program.await_alert("Choose an output folder first.")
    query_out_of_range_children(program)
    tree.act(tree.find(alert, tree.BUTTONS, "OK"), "Press")
    program.await_no_alert()
    program.press("WAV")
    program.open_bit_depth_popup("16-bit")
    query_out_of_range_children(program)
    program.key("Escape")
    # While the popup closes, it still gets the keys.
    wait_for("closed popup", lambda: not program.bit_depth_item("16-bit"))
    program.key("F10")
    wait_equal("chosen command", lambda: focused_name(program), "Add Audio…")
    query_out_of_range_children(program)
    close_menu(program)
    program.quit()


@scenario()
def converts_with_the_settings_at_the_press_of_convert(session):
    """A client that presses without waiting: the second press must not overtake the first."""
    program = session.start()
    program.add_files(media.make_track(session.music / "song.opus"))
    program.choose_destination(session.output)
    convert, wav = program.button("Convert 1 File"), program.button("WAV")
    tree.act(convert, "Press")
    tree.act(wav, "Toggle")
    program.await_states(["Complete"])
    expect_equal("files", [file.name for file in session.output.iterdir()], ["song_converted.mp3"])
    expect("WAV is selected", tree.has_state(program.button("WAV"), State.CHECKED))
    program.quit()
