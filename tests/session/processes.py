"""Programs that a test starts, and their certain end."""
import ctypes
import os
import secrets
import signal
import subprocess
import time

PR_SET_PDEATHSIG = 1
_libc = ctypes.CDLL(None)

# Every program started here, and whatever that starts in turn, carries this in its environment.
MARKER = "HORALO_TEST_%s" % secrets.token_hex(8)


def until(condition, seconds=5.0, step=0.01):
    """Waits until the condition gives something true, and gives that; the last answer at the end.

    What is being waited for may not exist yet, so an error counts as "not yet"."""
    end = time.monotonic() + seconds
    while True:
        try:
            answer = condition()
        except Exception:  # pylint: disable=broad-except
            answer = None
        if answer or time.monotonic() > end:
            return answer
        time.sleep(step)


def _end_with_parent():
    _libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def start(*command, log=None, env=None, **options):
    """Starts a program that ends, at the latest, with this one."""
    env = dict(os.environ if env is None else env)
    env[MARKER] = "1"
    out = open(log, "ab") if log else subprocess.DEVNULL
    try:
        return subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=options.pop("stdout", out),
                                stderr=options.pop("stderr", out), env=env, start_new_session=True,
                                preexec_fn=_end_with_parent, **options)
    finally:
        if log:
            out.close()


def run(*command, seconds=10, env=None, **options):
    """Runs a program to its end and gives its result; status 124 where it does not come in time."""
    env = dict(os.environ if env is None else env)
    env[MARKER] = "1"
    try:
        return subprocess.run(command, capture_output=True, text=True, timeout=seconds, env=env,
                              check=False, **options)
    except subprocess.TimeoutExpired:
        return subprocess.CompletedProcess(command, 124, "", "no end after %s s" % seconds)


def end(process, seconds=20.0):
    """Ends a program politely, else by force; gives its status. How fast it ends is tested elsewhere,
    so the time is that of a busy computer."""
    if process.poll() is None:
        process.send_signal(signal.SIGCONT)
        process.terminate()
        try:
            process.wait(seconds)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()
    return process.returncode


def marked():
    """The programs that carry the marker and still run, without this one."""
    found = []
    mark = MARKER.encode() + b"=1"
    for entry in os.listdir("/proc"):
        if not entry.isdigit() or int(entry) == os.getpid():
            continue
        try:
            with open("/proc/%s/environ" % entry, "rb") as file:
                if mark in file.read().split(b"\0"):
                    found.append(int(entry))
        except OSError:
            pass
    return found


def end_marked():
    """Ends by force what is left of everything that was started."""
    for pid in marked():
        try:
            os.kill(pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
    until(lambda: not marked(), 3)
