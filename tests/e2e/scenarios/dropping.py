"""Drags from another program."""

from driver import eyes, hands, media, tree
from driver.drops import DragSource
from driver.registry import scenario
from driver.tree import Role
from driver.waiting import expect, expect_equal, wait_for


def drop_zone(program):
    return wait_for("drop zone", lambda: program.find(Role.PANEL, "Drop zone"))


def outline_is_purple(program):
    """Whether the left side of the drop zone's outline is."""
    x, y, width, height = tree.rectangle(drop_zone(program))
    rows = eyes.pixels((x, y + height // 2 - 20, 40, 40))
    return any(eyes.is_purple(pixel) for row in rows for pixel in row)


@scenario()
def drops_a_file_onto_the_empty_window(session):
    track = media.make_track(session.music / "song.opus")
    program = session.start()
    program.window()
    source = DragSource(session, "files", track)
    expect("the outline is grey at first", not outline_is_purple(program))
    source.drag_to(tree.middle(drop_zone(program)))
    wait_for("purple outline", lambda: outline_is_purple(program))
    hands.move_to(*tree.middle(program.button("MP3")))
    wait_for("grey outline", lambda: not outline_is_purple(program))
    hands.move_to(*tree.middle(drop_zone(program)))
    wait_for("purple outline again", lambda: outline_is_purple(program))
    expect_equal("answer", source.drop(), "copied")
    program.await_names(["song.opus"])
    source.close()
    program.quit()
