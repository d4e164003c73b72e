#!/usr/bin/python3
"""make_bundle.py: puts Horalo.app together, a folder that runs from anywhere.

    Contents/Info.plist     what the bundle is, and where and by which keys it is updated
    Contents/Linux/         the programs
    Contents/lib/           every library they need but the C library's, under the names that the
                            loader asks for; no links, so that the archive has none
    Contents/lib/plugins/   the Qt plugins
    Contents/Resources/     the icons, and the licences of what comes along
"""

import argparse
import pathlib
import plistlib
import re
import shutil
import subprocess
import sys

# The C library belongs to the system that the bundle runs on.
SYSTEM = re.compile(r"(ld-linux.*|lib(c|m|dl|rt|pthread|resolv|util|anl|mvec|nss_.*|BrokenLocale|"
                    r"thread_db))\.so\b.*|linux-vdso\.so.*")

PLUGINS = """
iconengines/libqsvgicon.so
imageformats/libqsvg.so
platforminputcontexts/libcomposeplatforminputcontextplugin.so
platforminputcontexts/libibusplatforminputcontextplugin.so
platforms/libqwayland-generic.so
platforms/libqxcb.so
tls/libqopensslbackend.so
wayland-decoration-client/libbradient.so
wayland-shell-integration/libxdg-shell.so
""".split()

# What Qt opens by name rather than needs.
OPENED_BY_NAME = ["libssl.so.3", "libcrypto.so.3", "libXcursor.so.1"]

QT_CONF = "[Paths]\nPrefix = ..\nPlugins = lib/plugins\n"


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def keys_in(path):
    """The public keys in a file, one a line; what follows a number sign is a remark."""
    lines = (line.split("#")[0].strip() for line in path.read_text(encoding="utf-8").splitlines())
    return [line for line in lines if line]


def libraries_of(files):
    """name: path of all libraries that the files need, directly or not, but the system's."""
    found = {}
    for file in files:
        for line in run("ldd", str(file)).splitlines():
            match = re.match(r"\s*(\S+) => (\S+)", line)
            if "not found" in line:
                sys.exit(f"{file} needs a library that is missing: {line.strip()}")
            if match and not SYSTEM.fullmatch(match[1]):
                found[match[1]] = pathlib.Path(match[2]).resolve()
    return found


def library_by_name(name):
    for line in run("/sbin/ldconfig", "-p").splitlines():
        match = re.match(r"\s*(\S+) \(.*x86-64.*\) => (\S+)", line)
        if match and match[1] == name:
            return pathlib.Path(match[2]).resolve()
    sys.exit(f"{name} is missing")


def copy(source, target, mode=0o644):
    target.parent.mkdir(parents=True, exist_ok=True)
    shutil.copyfile(source, target)
    target.chmod(mode)


def copy_licences(files, folder):
    """The copyright file of each Debian package that a file comes from."""
    packages = set()
    for file in files:
        # The system's folders may be links (/lib), under either name.
        for name in (str(file), str(file).replace("/usr/lib/", "/lib/", 1)):
            found = subprocess.run(["dpkg-query", "-S", name], capture_output=True, text=True,
                                   check=False)
            if found.returncode == 0:
                packages.add(found.stdout.split(":")[0])
                break
    for package in sorted(packages):
        source = pathlib.Path("/usr/share/doc", package, "copyright")
        if source.exists():
            copy(source, folder / f"{package}.txt")
    return packages


def write_info(path, options):
    info = {
        "CFBundleIdentifier": "org.horalo.Horalo",
        "CFBundleName": "Horalo",
        "CFBundleExecutable": "horalo",
        "CFBundleShortVersionString": options.version,
        "CFBundleVersion": options.version,
        "SUFeedURL": options.feed_url,
        "SUPublicEDKey": keys_in(options.keys),
        "SURequireSignedFeed": True,
        "SUVerifyUpdateBeforeExtraction": True,
    }
    if not info["SUPublicEDKey"]:
        print(f"No key in {options.keys}: this bundle can be run, but not updated.")
    path.parent.mkdir(parents=True)
    with open(path, "wb") as file:
        plistlib.dump(info, file)
    path.chmod(0o644)


def make(options):
    contents = options.output / "Contents"
    if options.output.exists():
        shutil.rmtree(options.output)
    write_info(contents / "Info.plist", options)

    for program in options.programs:
        target = contents / "Linux" / program.name
        copy(program, target, 0o755)
        run("strip", "--strip-unneeded", str(target))
    (contents / "Linux/qt.conf").write_text(QT_CONF, encoding="utf-8")
    (contents / "Linux/qt.conf").chmod(0o644)

    plugins = [options.qt_plugins / name for name in PLUGINS]
    for name, plugin in zip(PLUGINS, plugins):
        copy(plugin, contents / "lib/plugins" / name)
    named = {name: library_by_name(name) for name in OPENED_BY_NAME}
    libraries = {**libraries_of(options.programs + plugins + list(named.values())), **named}
    for name, library in libraries.items():
        copy(library, contents / "lib" / name)

    for resource in options.resource:
        copy(resource, contents / "Resources" / resource.name)
    packages = copy_licences([*libraries.values(), *plugins], contents / "Resources/licences")
    for folder in [options.output, *(p for p in options.output.rglob("*") if p.is_dir())]:
        folder.chmod(0o755)
    size = sum(p.stat().st_size for p in options.output.rglob("*") if p.is_file())
    print(f"{options.output}: version {options.version}, {len(libraries)} libraries of "
          f"{len(packages)} packages, {size / 1e6:.0f} MB")


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--output", type=pathlib.Path, required=True)
    parser.add_argument("--version", required=True)
    parser.add_argument("--feed-url", required=True)
    parser.add_argument("--keys", type=pathlib.Path, required=True)
    parser.add_argument("--resource", type=pathlib.Path, action="append", required=True)
    parser.add_argument("--qt-plugins", type=pathlib.Path, required=True)
    parser.add_argument("programs", type=pathlib.Path, nargs="+")
    make(parser.parse_args())


if __name__ == "__main__":
    main()
