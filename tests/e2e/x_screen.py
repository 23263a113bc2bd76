"""A screen without a monitor, on a display number of its own."""
import os
import subprocess


def start():
    """The Xvfb process and its display, such as ":7"; waits until it answers.

    It never resets: a server that begins anew whenever its last client leaves refuses whoever comes meanwhile.
    """
    reader, writer = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writer), "-screen", "0", "1600x1000x24", "-noreset"],
                              pass_fds=[writer], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.close(writer)
    with os.fdopen(reader) as answer:
        number = answer.readline().strip()
    if not number:
        raise SystemExit("Xvfb did not come up")
    return server, ":" + number
