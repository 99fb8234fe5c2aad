"""Queues of thousands of files."""

import os

from driver import input, tree
from driver.drops import drop_files
from driver.registry import scenario
from driver.tree import Role
from driver.waiting import expect, expect_equal, wait_equal, wait_for

# Accessible nodes of the window, however long the queue is.
MAX_NODES = 250


def make_files(folder, count, width=100):
    """Creates empty tracks 1.opus, 2.opus, ..., round robin in folders, so that no folder holds a run."""
    folders = [folder / f"{number:03}" for number in range(max(1, count // width))]
    for path in folders:
        path.mkdir(parents=True)
    for number in range(1, count + 1):
        os.mknod(f"{folders[number % len(folders)]}/{number}.opus")
    return folder


def list_of(program):
    return wait_for("list", lambda: program.find(Role.LIST))


def last_row(program):
    return program.rows()[-1]


def expected_rows(first, count, total):
    """`count` rows from number `first` on, as (name, position)."""
    return [(f"{number}.opus", f"{number} of {total}") for number in range(first, first + count)]


def await_first(program, total):
    program.await_rows(lambda count: expected_rows(1, count, total))


def await_last(program, total):
    program.await_rows(lambda count: expected_rows(total + 1 - count, count, total))


@scenario()
def goes_on_with_a_batch_while_thousands_of_files_come(session):
    session.replace_ffmpeg()
    gate = session.folder / "gate"
    sources = [
        session.script("1.opus", f"convert wait-for {gate}", "convert write-output done"),
        session.script("2.opus", "convert write-output done"),
    ]
    album = make_files(session.folder / "album", 5000)
    program = session.start()
    program.add_files(*sources)
    program.choose_destination(session.output)
    program.press("Convert 2 Files")
    program.await_states(["Converting", "Ready"])
    drop_files(session, list_of(program), album)
    for name in ("WAV", "AIFF", "MP3"):
        program.press(name)
        program.await_checked(name)
    program.await_text("5002 audio files · 0 complete")
    expect_equal("first states", program.states()[:3], ["Converting", "Ready", "Ready"])
    gate.touch()
    program.await_text("5002 audio files · 2 complete")
    # Files added during the batch wait for the next one.
    wait_for("end of the batch", lambda: program.has_button("Convert 5002 Files"))
    rows = program.rows()
    expect_equal("first states", [row.state for row in rows[:3]], ["Complete", "Complete", "Ready"])
    expect_equal("first names", [row.name for row in rows[:4]],
                 ["1.opus", "2.opus", "1.opus", "2.opus"])
    input.click(rows[0].node)
    wait_equal("focus", lambda: program.focus().get_description(), "1 of 5002")
    program.key("End")
    wait_equal("last row", lambda: last_row(program).position, "5002 of 5002")
    rows = program.rows()
    expect_equal("last names", [row.name for row in rows],
                 [f"{5001 - len(rows) + index}.opus" for index in range(len(rows))])
    expect_equal("files made", sorted(file.name for file in session.output.iterdir()),
                 ["1_converted.mp3", "2_converted.mp3"])
    program.quit()


@scenario(is_long=True)
def holds_a_hundred_thousand_files(session):
    count = 100_000
    album = make_files(session.folder / "album", count)
    program = session.start()
    zone = wait_for("drop zone", lambda: program.find(Role.PANEL, "Drop zone"))
    drop_files(session, zone, album)
    wait_for("all files", lambda: program.has_text(f"{count} audio files · 0 complete"), 120)
    await_first(program, count)

    nodes = sum(1 for _ in tree.descendants(program.window(), hidden=True))
    expect(f"few nodes, not {nodes}", nodes < MAX_NODES)

    input.click(program.rows()[0].node)
    wait_equal("focus", lambda: program.focus().get_description(), f"1 of {count}")
    program.key("End")
    await_last(program, count)
    expect_equal("focus", program.focus().get_description(), f"{count} of {count}")
    program.key("Home")
    await_first(program, count)
    expect_equal("focus", program.focus().get_description(), f"1 of {count}")

    program.press("WAV")
    program.await_checked("WAV")
    program.key("End", "Delete")
    program.await_text(f"{count - 1} audio files · 0 complete")
    wait_equal("focus", lambda: program.focus().get_description(), f"{count - 1} of {count - 1}")
    await_last(program, count - 1)
    program.quit()
