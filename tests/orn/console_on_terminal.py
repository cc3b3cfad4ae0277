"""console_on_terminal.py ORN DRAWING: the console at a terminal, as a person uses it.

Tab completes commands, Ctrl-C cancels a prompt and clears the line at the bare one, lines come back
with the arrow keys and are kept for the next time.
"""

import os
import pty
import re
import select
import sys
import tempfile
import time

TIMEOUT = 30.0  # seconds; far more than any answer takes
ESCAPE_SEQUENCES = re.compile(rb"\x1b\[[0-9;?]*[A-Za-z]|\x1b[()][A-Z0-9]|\x1b[=>]|\r|\x08")


class Terminal:
    """The program at a terminal of its own."""

    def __init__(self, program: str, drawing: str, home: str):
        self.seen = b""
        self.pid, self.screen = pty.fork()
        if self.pid == 0:
            os.environ |= {"XDG_STATE_HOME": home, "TERM": "xterm"}
            os.execv(program, [program, drawing])

    def expect(self, text: str) -> None:
        """Waits until the text has been shown after what was last waited for."""
        wanted = text.encode()
        end = time.monotonic() + TIMEOUT
        while True:
            plain = ESCAPE_SEQUENCES.sub(b"", self.seen)
            at = plain.find(wanted)
            if at >= 0:
                self.seen = plain[at + len(wanted):]
                return
            if time.monotonic() > end or not self._read():
                sys.exit(f"not shown: {text!r}; shown instead: {plain.decode(errors='replace')!r}")

    def type(self, keys: str) -> None:
        os.write(self.screen, keys.encode())

    def leave(self) -> int:
        while self._read():
            pass
        return os.waitstatus_to_exitcode(os.waitpid(self.pid, 0)[1])

    def _read(self) -> bool:
        ready, _, _ = select.select([self.screen], [], [], 1.0)
        if not ready:
            return True
        try:
            piece = os.read(self.screen, 4096)
        except OSError:
            return False
        self.seen += piece
        return bool(piece)


def first_time(terminal: Terminal) -> None:
    terminal.expect("Command: ")
    terminal.type("boardar\t\r")
    terminal.expect("BOARDAREA")
    terminal.expect("<all>: ")
    terminal.type("板\x03")  # Ctrl-C at a prompt cancels the command ...
    terminal.expect("*Cancel*")
    terminal.expect("Command: ")
    for line in ("nonsense", ""):
        terminal.type(line + "\x03")  # ... and at the bare prompt it clears the line.
        terminal.expect("*Cancel*")
        terminal.expect("Command: ")
    terminal.type("BOARDSTYLES\r")
    terminal.expect("[")
    terminal.type("s\t\r")  # A keyword of the prompt that waits.
    terminal.expect("Save")
    terminal.expect("File to write: ")
    terminal.type("\x03")
    terminal.expect("Command: ")
    terminal.type("QUIT\r")


def next_time(terminal: Terminal) -> None:
    terminal.expect("Command: ")
    terminal.type("\x1b[A\x1b[A\x1b[A\x1b[A\r")  # Up past QUIT, the keyword and BOARDSTYLES.
    terminal.expect("<all>: ")  # What BOARDAREA asks.
    terminal.type("\r")
    terminal.expect("Command: ")
    terminal.type("\x04")  # The end of input leaves.


def main(program: str, drawing: str) -> None:
    with tempfile.TemporaryDirectory() as home:
        for session in (first_time, next_time):
            terminal = Terminal(program, drawing, home)
            session(terminal)
            status = terminal.leave()
            if status != 0:
                sys.exit(f"{session.__name__}: left with {status}: {terminal.seen.decode()!r}")


main(*sys.argv[1:])
