"""Removing files from the queue."""

import resource
import signal

from driver import input, tree
from driver.registry import scenario
from driver.tree import Role, State
from driver.waiting import expect, expect_equal, wait_equal, wait_for

FATAL = "Fatal error: Index out of range: the batch went beyond the end of the queue\n"


def start_with_queue(session, *names):
    """Starts the program and queues files of these names, which are never converted."""
    program = session.start()
    program.add_files(*[session.script(name) for name in names])
    program.await_names(list(names))
    return program


def click_remove_button(program, name):
    input.click(program.button(f"Remove {name}"))


def click_row(program, name):
    """Clicks the row beside its remove button, and waits for the focus."""
    input.click(program.row(name).node)
    wait_for(f"focus on {name}", lambda: tree.has_state(program.row(name).node, State.FOCUSED))


class Gate:
    """Scripts for the stand-in, each of which blocks until it is released."""

    def __init__(self, session):
        self.session = session
        session.replace_ffmpeg()

    def _gate_file(self, name):
        return self.session.folder / f"{name}-go"

    def file(self, name, *commands):
        return self.session.script(name, f"convert wait-for {self._gate_file(name)}",
                                   *(commands or ["convert write-output done"]))

    def release(self, name):
        self._gate_file(name).touch()

    def output_names(self):
        return sorted(path.name.removesuffix("_converted.mp3")
                      for path in self.session.output.iterdir())


@scenario()
def removes_rows_by_mouse_key_and_action(session):
    program = start_with_queue(session, "1.opus", "2.opus", "3.opus", "4.opus")
    click_remove_button(program, "2.opus")
    program.await_names(["1.opus", "3.opus", "4.opus"])
    program.await_text("3 audio files · 0 complete")
    program.button("Convert 3 Files")
    expect_equal("positions", [row.position for row in program.rows()], ["1 of 3", "2 of 3", "3 of 3"])
    click_row(program, "3.opus")
    program.key("Delete")
    program.await_names(["1.opus", "4.opus"])
    wait_equal("focus", lambda: tree.name_of(program.focus()), "4.opus, in music, Ready")
    tree.act(program.row("1.opus").node, "Press")
    program.await_names(["4.opus"])
    program.await_text("1 audio file · 0 complete")
    program.button("Convert 1 File")
    program.quit()


@scenario()
def shows_the_drop_zone_again_after_the_last_row(session):
    program = start_with_queue(session, "1.opus", "2.opus")
    click_row(program, "2.opus")
    program.key("Delete", "Delete")
    wait_for("drop zone", lambda: program.find(Role.PANEL, "Drop zone"))
    expect_equal("rows", program.rows(), [])
    program.await_text("Add OPUS, OGG, or OGA files")
    start = program.find(tree.BUTTONS, "Convert 0 Files")
    expect("the start button cannot be pressed", start and not tree.is_enabled(start))
    program.add_files(session.music / "1.opus")
    program.await_names(["1.opus"])
    click_remove_button(program, "1.opus")
    wait_for("drop zone", lambda: program.find(Role.PANEL, "Drop zone"))
    program.quit()


@scenario()
def offers_no_removal_of_a_file_at_work_or_done(session):
    gate = Gate(session)
    program = session.start()
    program.convert(session.output, gate.file("1.opus"), gate.file("2.opus"), gate.file("3.opus"))
    gate.release("1.opus")
    program.await_states(["Complete", "Converting", "Ready"])
    removable = [name for name in ("1.opus", "2.opus", "3.opus")
                 if program.has_button(f"Remove {name}")]
    expect_equal("files with a remove button", removable, ["3.opus"])
    for name in ("1.opus", "2.opus"):
        expect_equal(f"actions of {name}", "Press" in tree.actions(program.row(name).node), False)
        click_row(program, name)
        program.key("Delete")
    # An effect of the key would come before that of the next click.
    program.click("WAV")
    program.await_text("AIFF and WAV preserve uncompressed PCM audio.")
    program.await_names(["1.opus", "2.opus", "3.opus"])
    for name in ("2.opus", "3.opus"):
        gate.release(name)
    program.await_states(["Complete"] * 3)
    program.quit()


@scenario()
def removes_a_waiting_row_from_a_batch_that_is_then_cancelled(session):
    session.replace_ffmpeg()
    started = session.folder / "started"
    first = session.script("1.opus", f"convert touch {started}", "convert block")
    others = [session.script(f"{number}.opus", "convert write-output done") for number in (2, 3)]
    program = session.start()
    program.convert(session.output, first, *others)
    program.await_states(["Converting", "Ready", "Ready"])
    wait_for("the conversion", started.exists)
    click_remove_button(program, "2.opus")
    program.await_names(["1.opus", "3.opus"])
    program.press("Cancel")
    program.await_states(["Cancelled", "Ready"])
    click_remove_button(program, "1.opus")
    program.press("Convert 1 File")
    program.await_states(["Complete"])
    expect_equal("files", [path.name for path in session.output.iterdir()], ["3_converted.mp3"])
    program.quit()


@scenario()
def passes_over_the_file_that_moves_up_when_one_before_it_is_removed(session):
    gate = Gate(session)
    program = session.start()
    program.convert(session.output, gate.file("1.opus", "convert exit 1"), gate.file("2.opus"),
                    gate.file("3.opus"), gate.file("4.opus"))
    gate.release("1.opus")
    program.await_states(["Failed", "Converting", "Ready", "Ready"])
    click_remove_button(program, "1.opus")
    program.await_names(["2.opus", "3.opus", "4.opus"])
    program.add_files(gate.file("5.opus"))
    for name in ("2.opus", "3.opus", "4.opus", "5.opus"):
        gate.release(name)
    program.button("Convert 4 Files")
    program.await_states(["Complete", "Ready", "Complete", "Complete"])
    expect_equal("output names", gate.output_names(), ["2", "4", "5"])
    program.press("Convert 4 Files")
    program.await_states(["Complete"] * 4)
    program.quit()


@scenario()
def halts_when_the_queue_has_become_shorter_than_the_batch_expects(session):
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    gate = Gate(session)
    program = session.start()
    program.convert(session.output, *[gate.file(f"{number}.opus") for number in (1, 2, 3)])
    program.await_states(["Converting", "Ready", "Ready"])
    click_remove_button(program, "2.opus")
    program.await_names(["1.opus", "3.opus"])
    gate.release("1.opus")
    program.await_states(["Complete", "Converting"])
    gate.release("3.opus")
    expect_equal("end", program.await_end(), -signal.SIGABRT)
    session.expected_output = FATAL
    expect_equal("output names", gate.output_names(), ["1", "3"])
