"""Screens with less room than the contents of the window need."""

from driver import input, media, tree
from driver.registry import scenario
from driver.tree import Role
from driver.waiting import expect, expect_equal, wait_for

TITLE_BAR = 28


def is_inside(rectangle, outer):
    x, y, width, height = rectangle
    left, top, outer_width, outer_height = outer
    return (left <= x and top <= y and x + width <= left + outer_width and y + height <= top + outer_height)


def await_window(program, size):
    wait_for("window as large as the screen", lambda: tree.rectangle(program.window())[2:] == size)


def expect_focus_visible(program):
    """The focused control lies within the window, wholly."""
    window = tree.rectangle(program.window())
    wait_for("focus in sight", lambda: (focus := program.focus()) and is_inside(tree.rectangle(focus), window))


@scenario(display_size="640x480")
def converts_by_keyboard_on_a_screen_without_room(session):
    program = session.start()
    await_window(program, (640, 480))
    program.add_files(media.make_track(session.music / "song.opus"))
    output = session.folder / "out"
    output.mkdir()
    program.choose_destination(output)
    names = []
    while "Close" not in names:
        program.key("Tab")
        wait_for("next control", lambda: (focus := program.focus()) and tree.name_of(focus) not in names[-1:])
        names.append(tree.name_of(program.focus()))
        expect_focus_visible(program)
        expect(f"the tab order ends, unlike {names}", len(names) < 25)
    expect(f"all controls have had the focus, not {names}",
           {"MP3", "AIFF", "WAV", "Quality", "Folder", "Add Audio", "Convert 1 File"} <= set(names) | {"MP3"})
    while tree.name_of(program.focus()) != "Convert 1 File":
        program.key("shift+Tab")
    program.key("Return")
    program.await_states(["Complete"])
    program.quit()


@scenario(display_size="800x600")
def is_used_by_mouse_on_a_screen_without_room(session):
    program = session.start()
    await_window(program, (800, 600))
    window = tree.rectangle(program.window())
    program.add_files(media.make_track(session.music / "song.opus"))
    for name in ("Minimise", "Maximise", "Close"):
        expect(f"{name} is in the window", is_inside(tree.rectangle(program.button(name)), window))
    start = program.button("Convert 1 File")
    expect("the start button is out of sight", not is_inside(tree.rectangle(start), window))
    input.move_to(window[0] + 100, window[1] + 300)
    # Down, and then to the right.
    input.xdotool("click", "--repeat", "10", "--delay", "5", "5")
    input.xdotool("click", "--repeat", "10", "--delay", "5", "7")
    wait_for("start button in sight", lambda: is_inside(tree.rectangle(start), window))
    program.click("Convert 1 File")
    program.await_alert("Choose an output folder first.")
    input.click(tree.find(program.alert(), tree.BUTTONS, "OK"))
    program.await_no_alert()
    program.click("Close")
    expect_equal("exit status", program.await_end(), 0)


@scenario(display_size="1024x600")
def keeps_its_file_menu_above_what_scrolls(session):
    program = session.start()
    await_window(program, (1024, 600))
    window = tree.rectangle(program.window())
    input.move_to(window[0] + 100, window[1] + 300)
    input.xdotool("click", "--repeat", "10", "--delay", "5", "5")
    title = program.find(Role.LABEL, "OUTPUT FORMAT")
    wait_for("contents below the title bar", lambda: tree.rectangle(title)[1] < window[1] + 120)
    menu = program.find(Role.MENU_ITEM, "File")
    expect("the menu stays in the title bar", tree.rectangle(menu)[1] < window[1] + TITLE_BAR)
    program.quit()
