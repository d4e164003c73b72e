"""Bundles, keys and a web server for the tests of updates."""
import functools
import http.server
import os
import pathlib
import plistlib
import shutil
import subprocess
import sys
import tarfile
import threading

SOURCES = pathlib.Path(__file__).resolve().parents[2]
RELEASE = SOURCES / "packaging/release"
MAKE_BUNDLE = SOURCES / "packaging/bundle/make_bundle.py"


def run(*command):
    result = subprocess.run([str(word) for word in command], capture_output=True, text=True,
                            check=False)
    if result.returncode:
        raise RuntimeError("%s: %s%s" % (command, result.stdout, result.stderr))
    return result.stdout.strip()


class Server:
    """Serves a folder on this computer."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        self.folder.mkdir(exist_ok=True)
        self.requests = []

        class Handler(http.server.SimpleHTTPRequestHandler):
            def log_message(handler, *arguments):  # pylint: disable=no-self-argument
                self.requests.append(handler.path)

        self.http = http.server.ThreadingHTTPServer(
            ("127.0.0.1", 0), functools.partial(Handler, directory=str(self.folder)))
        self.url = "http://127.0.0.1:%d" % self.http.server_address[1]
        threading.Thread(target=self.http.serve_forever, daemon=True).start()

    def end(self):
        self.http.shutdown()
        self.http.server_close()


class Release:
    """A key, a feed, and bundles made of the programs in the build."""

    def __init__(self, folder, programs, server):
        self.folder = pathlib.Path(folder)
        self.server = server
        self.programs = programs
        self.key = self.folder / "key.pem"
        self.public_key = run(RELEASE, "key", self.key)

    def make_bundle(self, path, version):
        keys = self.folder / "keys.txt"
        keys.write_text(self.public_key + "\n", encoding="utf-8")
        plugins = run("qtpaths6", "--query", "QT_INSTALL_PLUGINS")
        run(sys.executable, "-B", MAKE_BUNDLE, "--output", path, "--version", version,
            "--feed-url", self.server.url + "/feed.xml", "--keys", keys,
            "--resource", SOURCES / "packaging/icons/org.horalo.Horalo.svg",
            "--qt-plugins", plugins, *self.programs)

    def copy_bundle(self, source, path, version):
        """The same bundle under another version."""
        shutil.copytree(source, path)
        info = pathlib.Path(path, "Contents/Info.plist")
        values = plistlib.loads(info.read_bytes())
        values.update(CFBundleShortVersionString=version, CFBundleVersion=version)
        info.write_bytes(plistlib.dumps(values))

    def publish(self, bundle, version):
        """Packs a bundle, quickly rather than well, and puts it into the feed."""
        archive = self.server.folder / ("Horalo-%s.tar.gz" % version)
        with tarfile.open(archive, "w:gz", compresslevel=1) as tar:
            tar.add(bundle, "Horalo.app")
        run(RELEASE, "publish", "--local", "--key", self.key, "--url", self.server.url, archive,
            self.server.folder / "feed.xml")


def version_in(bundle):
    info = pathlib.Path(bundle, "Contents/Info.plist")
    return plistlib.loads(info.read_bytes())["CFBundleVersion"]


def folder_run_by(pid):
    """The bundle that a process runs from, by what the system says now."""
    return os.path.dirname(os.path.dirname(os.path.dirname(os.readlink("/proc/%d/exe" % pid))))


def libraries_outside(pid, bundle):
    """The libraries that a process has loaded from elsewhere than its bundle."""
    with open("/proc/%d/maps" % pid, encoding="utf-8") as file:
        mapped = {line.split(maxsplit=5)[5].strip() for line in file if line.count("/") > 0}
    return sorted(name for name in mapped
                  if ".so" in os.path.basename(name) and not name.startswith(str(bundle) + "/"))
