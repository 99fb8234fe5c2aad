"""Drag and drop from another program."""

import dataclasses
import functools
import os

from driver import media, screen, tree
from driver.drops import DragSource, drop_files
from driver.registry import scenario
from driver.tree import Role
from driver.waiting import expect, expect_equal, wait_equal, wait_for

# Per side, the pixel lines, counted from the edge, that differ from the background and those that are purple.
GREY_OUTLINE = {"drawn": [20], "purple": []}
PURPLE_OUTLINE = {"drawn": [20, 21], "purple": [20, 21]}
# From the panel's edge to the drop zone's own, left and right.
SIDE_MARGIN = 6


def drop_zone(program):
    return wait_for("drop zone", lambda: program.find(Role.PANEL, "Drop zone"))


def job_list(program):
    return wait_for("list", lambda: program.find(Role.LIST))


def outside(program):
    """A point of the window outside the drop targets."""
    return tree.middle(program.button("MP3"))


def touch(*paths):
    """Creates empty files; only their names matter."""
    for path in paths:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.touch()
    return paths


def sample_rectangles(rectangle):
    """The rectangles in which the outline is sampled, at the middle of each side."""
    x, y, width, height = rectangle
    x, width = x + SIDE_MARGIN, width - 2 * SIDE_MARGIN
    depth, length = 40, 70
    across, down = x + (width - length) // 2, y + (height - length) // 2
    return {
        "left": (x, down, depth, length),
        "right": (x + width - depth, down, depth, length),
        "top": (across, y, length, depth),
        "bottom": (across, y + height - depth, length, depth),
    }


def lines_inward(side, rows):
    """The pixels of a sample as lines along its side, from the edge inward."""
    lines = [list(line) for line in zip(*rows)] if side in ("left", "right") else rows
    return lines[::-1] if side in ("right", "bottom") else lines


def outline_at(side, rectangle):
    lines = lines_inward(side, screen.pixels(rectangle))
    background = lines[0][0]
    purple = [sum(map(screen.is_purple, line)) / len(line) for line in lines]
    return {
        "drawn": [index for index, line in enumerate(lines) if set(line) != {background}],
        # Dashes and gaps have the same length.
        "purple": [index for index, share in enumerate(purple) if 0.35 < share < 0.65],
    }


def outline(program):
    """What the four sides of the outline look like."""
    return {side: outline_at(side, rectangle)
            for side, rectangle in sample_rectangles(tree.rectangle(drop_zone(program))).items()}


def await_outline(program, expected):
    sides = ("left", "right", "top", "bottom")
    wait_equal("outline", lambda: outline(program), dict.fromkeys(sides, expected))


def is_purple_anywhere(program):
    """Whether any pixel of the left side is purple."""
    x, y, _, height = tree.rectangle(drop_zone(program))
    return any(screen.is_purple(pixel) for row in screen.pixels((x, y, 40, height)) for pixel in row)


@dataclasses.dataclass
class DropCase:
    """Drops, and the queue after them. Paths are relative to session.music."""

    # A folder ends with a slash; " -> " precedes the target of a symbolic link.
    files: list
    # The paths of each drop, and the queued names after it.
    drops: list
    # The folder that each row shows at the end.
    folders: list


DROP_CASES = {
    "a-file": DropCase(["song.opus"], [(["song.opus"], ["song.opus"])], ["music"]),
    "a-folder-tree": DropCase(
        ["album/b.opus", "album/A.ogg", "album/notes.txt", "album/.hidden.opus", "album/sub/10.opus",
         "album/sub/deeper/still/2.OGA", "album/.git/1.opus", "album/Songs.musiclibrary/3.opus", "album/opus",
         "album/empty/", "album/sub/link.d -> .."],
        [(["album"], ["2.OGA", "10.opus", "A.ogg", "b.opus"])],
        ["still", "sub", "album", "album"]),
    "files-and-folders-together": DropCase(
        ["album/b.opus", "album/a.opus", "z.opus", "c.oga"],
        [(["z.opus", "album", "c.oga", "album/a.opus"], ["z.opus", "a.opus", "b.opus", "c.oga"])],
        ["music", "album", "album", "music"]),
    "a-file-once-by-whatever-path": DropCase(
        ["a.opus", "b.opus", "sub/"],
        [(["a.opus"], ["a.opus"]), (["sub/../a.opus", "./a.opus", "b.opus"], ["a.opus", "b.opus"])],
        ["music", "music"]),
}


def make_files(folder, files):
    for file in files:
        name, _, target = file.partition(" -> ")
        path = folder / name
        (path if name.endswith("/") else path.parent).mkdir(parents=True, exist_ok=True)
        if target:
            path.symlink_to(target)
        elif not name.endswith("/"):
            path.touch()


def run_drop_case(session, case):
    make_files(session.music, case.files)
    program = session.start()
    place = drop_zone(program)
    for paths, names in case.drops:
        # Not joined by pathlib, which would drop the dots.
        drop_files(session, place, *(f"{session.music}/{path}" for path in paths))
        program.await_names(names)
        place = job_list(program)
    expect_equal("folders", [shown.folder for shown in program.rows()], case.folders)
    expect("the drop zone is gone", program.find(Role.PANEL, "Drop zone") is None)
    count = len(case.folders)
    program.await_text(f"{count} audio file{'s' if count > 1 else ''} · 0 complete")
    program.quit()


for what, case in DROP_CASES.items():
    scenario(name=f"drops-{what}")(functools.partial(run_drop_case, case=case))


@scenario()
def outlines_the_drop_zone_in_purple_while_files_are_over_it(session):
    program = session.start()
    zone = tree.middle(drop_zone(program))
    source = DragSource(session, "files", *touch(session.music / "song.opus"))
    await_outline(program, GREY_OUTLINE)
    source.drag_to(zone)
    await_outline(program, PURPLE_OUTLINE)
    source.move_to(outside(program))
    await_outline(program, GREY_OUTLINE)
    source.move_to(zone)
    await_outline(program, PURPLE_OUTLINE)
    source.move_to(outside(program))
    source.await_answer("declines")
    expect_equal("end of the drag", source.drop(), "refused")
    await_outline(program, GREY_OUTLINE)
    expect("nothing was added", program.has_text("Add OPUS, OGG, or OGA files"))
    source.close()
    program.quit()


@scenario()
def outlines_the_drop_zone_in_grey_after_a_drop_of_nothing_playable(session):
    program = session.start()
    source = DragSource(session, "files", *touch(session.music / "notes.txt"))
    source.drag_to(tree.middle(drop_zone(program)))
    await_outline(program, PURPLE_OUTLINE)
    source.await_answer("takes")
    expect_equal("answer to the drop", source.drop(), "copied")
    await_outline(program, GREY_OUTLINE)
    expect("nothing was added", program.has_text("Add OPUS, OGG, or OGA files"))
    source.close()
    program.quit()


@scenario()
def drops_many_files_in_the_order_of_the_drop(session):
    numbers = [(7 * number) % 60 for number in range(60)]
    files = touch(*(session.music / f"{number}.opus" for number in numbers))
    program = session.start()
    drop_files(session, drop_zone(program), *files)
    program.await_text("60 audio files · 0 complete")
    program.await_rows(lambda count: [(f"{number}.opus", f"{index} of 60")
                                      for index, number in enumerate(numbers[:count], start=1)])
    expect("there are visible rows", len(program.rows()) > 3)
    program.quit()


@scenario()
def declines_a_drag_from_the_trash_over_the_zone_and_over_the_list(session):
    program = session.start()
    trash = DragSource(session, "uris", "trash:///song.opus")
    trash.drag_to(tree.middle(drop_zone(program)))
    trash.await_answer("declines")
    expect_equal("end of the drag", trash.drop(), "refused")
    drop_files(session, drop_zone(program), *touch(session.music / "song.opus"))
    program.await_rows(lambda count: [("song.opus", "1 of 1")])
    for uri in ("trash:///other.opus", "file://other-host/other.opus"):
        trash.close()
        trash = DragSource(session, "uris", uri)
        trash.drag_to(tree.middle(program.rows()[0].node))
        trash.await_answer("declines")
        expect_equal("end of the drag", trash.drop(), "refused")
    program.await_rows(lambda count: [("song.opus", "1 of 1")])
    trash.close()
    program.quit()


@scenario()
def declines_a_drag_without_files(session):
    program = session.start()
    zone = tree.rectangle(drop_zone(program))
    source = DragSource(session, "text", str(*touch(session.music / "song.opus")))
    source.drag_to(tree.middle(drop_zone(program)))
    source.await_answer("declines")
    expect("the outline stays as it is", not is_purple_anywhere(program))
    for share in (0.3, 0.7):
        source.move_to((zone[0] + int(zone[2] * share), zone[1] + int(zone[3] * share)))
        expect("the outline stays as it is", not is_purple_anywhere(program))
    expect_equal("answer to the drop", source.drop(), "refused")
    await_outline(program, GREY_OUTLINE)
    expect("nothing was added", program.has_text("Add OPUS, OGG, or OGA files"))
    source.close()
    program.quit()


@scenario()
def converts_a_dropped_file_whose_name_is_not_utf8(session):
    folder = os.fsencode(session.music) + b"/old \xe4lbum"
    media.make_track(folder + b"/caf\xe9 100%.opus", seconds=0.2)
    media.make_track(folder + b"/\xff\xfe.opus", seconds=0.2)
    program = session.start()
    drop_files(session, drop_zone(program), folder + b"/caf\xe9 100%.opus", folder)
    # The second comes from the folder alone.
    program.await_names(["caf\ufffd 100%.opus", "\ufffd\ufffd.opus"])
    expect_equal("folder", program.rows()[0].folder, "old \ufffdlbum")
    program.choose_destination(session.output)
    program.press("Convert 2 Files")
    program.await_states(["Complete", "Complete"])
    expect_equal("files made", sorted(os.listdir(os.fsencode(session.output))),
                 [b"caf\xe9 100%_converted.mp3", b"\xff\xfe_converted.mp3"])
    codec, _, seconds = media.describe(os.fsencode(session.output) + b"/caf\xe9 100%_converted.mp3")
    expect_equal("codec", codec, "mp3")
    expect(f"it is as long as the track, not {seconds} s", 0.15 < seconds < 0.4)
    program.quit()


@scenario()
def drops_onto_the_list_without_a_highlight(session):
    first, second, third = touch(*(session.music / f"{name}.opus" for name in "bca"))
    program = session.start()
    drop_files(session, drop_zone(program), first)
    program.await_names(["b.opus"])

    # One of the files is already queued.
    source = DragSource(session, "files", first, second, third)
    x, y, width, height = tree.rectangle(program.find(Role.LIST))
    source.drag_to(outside(program))
    before = screen.pixels((x, y, width, height // 2))
    source.move_to((x + width // 2, y + height - 10))
    source.await_answer("takes")
    expect("the list looks as before", screen.pixels((x, y, width, height // 2)) == before)
    expect_equal("answer to the drop", source.drop(), "copied")
    program.await_names(["b.opus", "c.opus", "a.opus"])
    source.close()
    program.quit()


@scenario()
def follows_a_dropped_link(session):
    track = media.make_track(session.music / "elsewhere/real.bin", seconds=0.2)
    touch(session.music / "album/a.opus")
    drawer = session.music / "drawer"
    drawer.mkdir()
    (drawer / "song.opus").symlink_to(track)
    (drawer / "records").symlink_to(session.music / "album")
    (drawer / "plain").symlink_to(session.music / "album/a.opus")
    (drawer / "gone.opus").symlink_to(session.music / "nothing")
    program = session.start()
    drop_files(session, drop_zone(program),
               *(drawer / name for name in ("song.opus", "records", "plain", "gone.opus")))
    program.await_names(["song.opus", "a.opus", "gone.opus"])
    expect_equal("folders", [row.folder for row in program.rows()], ["drawer", "records", "drawer"])
    program.choose_destination(session.output)
    program.press("Convert 3 Files")
    program.await_states(["Complete", "Failed", "Failed"])
    expect("the song is there", (session.output / "song_converted.mp3").stat().st_size > 0)
    program.quit()


@scenario()
def takes_a_drop_while_a_batch_runs(session):
    session.replace_ffmpeg()
    gate = session.folder / "gate"
    sources = [session.script("1.opus", f"convert wait-for {gate}", "convert write-output 1"),
               session.script("2.opus", "convert write-output 2"),
               session.script("late.opus", "convert write-output late")]
    program = session.start()
    drop_files(session, drop_zone(program), *sources[:2])
    program.await_names(["1.opus", "2.opus"])
    program.choose_destination(session.output)
    program.press("Convert 2 Files")
    program.await_states(["Converting", "Ready"])
    drop_files(session, job_list(program), sources[2], sources[0])
    program.await_states(["Converting", "Ready", "Ready"])
    program.await_text("3 audio files · 0 complete")
    gate.touch()
    program.await_states(["Complete", "Complete", "Ready"])
    program.press("Convert 3 Files")
    program.await_states(["Complete"] * 3)
    expect_equal("files made", sorted(file.name for file in session.output.iterdir()),
                 [f"{name}_converted.mp3" for name in ("1", "2", "late")])
    program.quit()
