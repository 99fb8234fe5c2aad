"""Adding files to the queue."""

from driver import media, tree
from driver.program import FILES_PANEL
from driver.registry import scenario
from driver.waiting import expect, expect_equal


@scenario()
def shows_an_empty_window_at_first(session):
    program = session.start()
    for text in ("Conversion Queue", "Add OPUS, OGG, or OGA files", "Drop Opus audio or folders here",
                 "Higher quality creates larger MP3 files.", "FFmpeg ready"):
        program.await_text(text)
    expect_equal("rows", program.rows(), [])
    start = program.find(tree.BUTTONS, "Convert 0 Files")
    expect("the start button is there and cannot be pressed", start and not tree.is_enabled(start))
    expect("nothing to reveal", not program.has_button("Show output folder"))
    program.quit()


@scenario()
def adds_files_by_button_menu_and_shortcut(session):
    tracks = [media.make_track(session.music / f"{number}.opus") for number in (1, 2, 10)]
    program = session.start()
    program.click("Add Audio")
    program.fill_panel(FILES_PANEL, tracks[2])
    program.await_names(["10.opus"])
    program.command("Add Audio…")
    program.fill_panel(FILES_PANEL, tracks[0])
    program.await_names(["10.opus", "1.opus"])
    program.key("ctrl+o")
    program.fill_panel(FILES_PANEL, *tracks)
    program.await_names(["10.opus", "1.opus", "2.opus"])
    expect_equal("first row", program.rows()[0].position, "1 of 3")
    expect_equal("its folder", program.rows()[0].folder, "music")
    program.quit()
