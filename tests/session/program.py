"""The program under test, started and asked as its users do."""
import json
import os
import plistlib
import shutil

from desktop import owner_of_name
from processes import end, run, start, until

BUS_NAME = "org.horalo.Horalo"


def preferences_file():
    return os.path.join(os.environ["XDG_CONFIG_HOME"], "horalo", "org.horalo.Horalo.plist")


def set_preferences(**values):
    """Writes values beside those that are stored."""
    path = preferences_file()
    os.makedirs(os.path.dirname(path), exist_ok=True)
    stored = all_preferences()
    stored.update(values)
    with open(path + ".new", "wb") as file:
        plistlib.dump(stored, file)
    os.replace(path + ".new", path)


def all_preferences():
    try:
        with open(preferences_file(), "rb") as file:
            return plistlib.load(file)
    except (OSError, plistlib.InvalidFileException):
        return {}


def preference(key):
    return all_preferences().get(key)


def forget_everything():
    for variable in ("XDG_CONFIG_HOME", "XDG_STATE_HOME"):
        shutil.rmtree(os.path.join(os.environ[variable], "horalo"), ignore_errors=True)


class Program:
    """One running program; `zone` and `locale` are its user's."""

    def __init__(self, path, zone="Asia/Tokyo", locale="en_US.UTF-8", log=None, **variables):
        self.path = path
        self.log = log
        self.env = dict(os.environ, TZ=zone, LC_ALL=locale, **variables)
        self.process = None

    def start(self, *words, wait=True):
        self.process = start(self.path, *words, env=self.env, log=self.log)
        if wait:
            # The bus may not have heard yet that the program of the test before has ended.
            ready = until(lambda: self.process.poll() is not None or
                          owner_of_name(BUS_NAME) == self.process.pid, 15)
            if not ready or self.process.poll() is not None:
                raise RuntimeError("the program does not start (%s)" % self.process.poll())
        return self

    def ask(self, *words, seconds=10):
        return run(self.path, *words, env=self.env, seconds=seconds)

    def status(self):
        answer = self.ask("status", "--json").stdout
        return json.loads(answer) if answer else {}

    def is_running(self):
        return self.process is not None and self.process.poll() is None

    def end(self):
        """Ends it politely and gives its status."""
        return end(self.process) if self.process else None
