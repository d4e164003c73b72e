#!/usr/bin/python3
"""release_test.py: what packaging/release makes is what a bundle accepts, and mistakes are refused."""

import base64
import email.utils
import pathlib
import plistlib
import re
import subprocess
import tarfile
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

RELEASE = pathlib.Path(__file__).resolve().parents[2] / "packaging/release"
APPCAST = "{http://www.andymatuschak.org/xml-namespaces/sparkle}"
COMMENT = re.compile(rb"<!-- sparkle-signatures:\nedSignature: (\S+)\nlength: (\d+)\n-->\n\Z")


class Release(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.key = self.folder / "key.pem"
        self.public = self.run_release("key", self.key).strip()
        self.feed = self.folder / "feed.xml"

    def run_release(self, *words):
        result = subprocess.run([str(RELEASE), *map(str, words)], capture_output=True, text=True,
                                check=False)
        self.assertEqual((0, ""), (result.returncode, result.stderr))
        return result.stdout

    def refuse(self, reason, *words):
        result = subprocess.run([str(RELEASE), *map(str, words)], capture_output=True, text=True,
                                check=False)
        self.assertEqual(1, result.returncode)
        self.assertIn(reason, result.stderr)

    def bundle(self, version="2.0", **values):
        path = self.folder / version / "Horalo.app"
        (path / "Contents/Linux").mkdir(parents=True)
        info = {"CFBundleVersion": version, "CFBundleShortVersionString": version,
                "SUFeedURL": "https://example.org/feed.xml", "SUPublicEDKey": [self.public], **values}
        (path / "Contents/Info.plist").write_bytes(plistlib.dumps(info))
        program = path / "Contents/Linux/horalo"
        program.write_text("#!/bin/sh\n", encoding="utf-8")
        program.chmod(0o700)
        return path

    def archive(self, version="2.0", **values):
        path = self.folder / f"Horalo-{version}.tar.xz"
        self.run_release("archive", self.bundle(version, **values), path)
        return path

    def publish(self, archive, *more):
        return self.run_release("publish", "--key", self.key, "--url", "https://example.org/a", *more,
                                archive, self.feed)

    def verify(self, signature, content):
        public = self.folder / "public.pem"
        subprocess.run(["openssl", "pkey", "-in", self.key, "-pubout", "-out", public], check=True)
        (self.folder / "signature").write_bytes(base64.b64decode(signature, validate=True))
        (self.folder / "content").write_bytes(content)
        subprocess.run(["openssl", "pkeyutl", "-verify", "-rawin", "-pubin", "-inkey", public, "-in",
                        self.folder / "content", "-sigfile", self.folder / "signature"],
                       check=True, capture_output=True)

    def items(self):
        content = self.feed.read_bytes()
        signature, length = COMMENT.search(content).groups()
        self.verify(signature, content[:int(length)])
        self.assertEqual(int(length), COMMENT.search(content).start())
        return ElementTree.fromstring(content[:int(length)]).findall("channel/item")

    def test_a_key_is_for_its_owner_alone_and_is_never_overwritten(self):
        self.assertEqual(0o600, self.key.stat().st_mode & 0o777)
        self.assertEqual(32, len(base64.b64decode(self.public, validate=True)))
        self.refuse("is there already", "key", self.key)

    def test_an_archive_has_one_folder_no_links_and_nobodys_name(self):
        with tarfile.open(self.archive()) as tar:
            entries = tar.getmembers()
        self.assertEqual({"Horalo.app"}, {e.name.split("/")[0] for e in entries})
        self.assertEqual(5, len(entries))
        for entry in entries:
            self.assertTrue(entry.isfile() or entry.isdir())
            self.assertEqual((0, 0, "", "", 0), (entry.uid, entry.gid, entry.uname, entry.gname,
                                                 entry.mtime))
            self.assertIn(entry.mode, (0o644, 0o755))

    def test_an_archive_is_the_same_when_made_again(self):
        bundle = self.bundle()
        for name in ("one", "two"):
            self.run_release("archive", bundle, self.folder / name)
        self.assertEqual((self.folder / "one").read_bytes(), (self.folder / "two").read_bytes())

    def test_an_archive_with_a_link_is_refused(self):
        bundle = self.bundle()
        (bundle / "link").symlink_to("Contents")
        self.refuse("neither a file nor a folder", "archive", bundle, self.folder / "a")

    def test_publishing(self):
        first, second = self.archive("2.0"), self.archive("2.1")
        notes = self.folder / "notes.txt"
        notes.write_text("Now with <b>angles</b> & more", encoding="utf-8")
        self.publish(first)
        self.publish(second, "--notes", notes, "--critical")
        self.publish(second, "--notes", notes, "--critical")
        newest, oldest = self.items()
        self.assertEqual("2.1", newest.findtext(APPCAST + "version"))
        self.assertEqual("2.0", oldest.findtext(APPCAST + "version"))
        self.assertEqual(notes.read_text(encoding="utf-8"), newest.findtext("description"))
        self.assertIsNotNone(newest.find(APPCAST + "criticalUpdate"))
        self.assertIsNone(oldest.find(APPCAST + "criticalUpdate"))
        for item, archive in ((newest, second), (oldest, first)):
            enclosure = item.find("enclosure")
            self.assertEqual(f"https://example.org/a/{archive.name}", enclosure.get("url"))
            self.assertEqual(str(archive.stat().st_size), enclosure.get("length"))
            self.assertEqual("linux", enclosure.get(APPCAST + "os"))
            self.verify(enclosure.get(APPCAST + "edSignature"), archive.read_bytes())

    def test_renewing(self):
        self.publish(self.archive())
        content = self.feed.read_text(encoding="utf-8")
        self.feed.write_text(re.sub(r"(?<=<pubDate>)[^<]*", "Fri, 05 Jan 2024 10:00:00 +0000", content,
                                    count=1), encoding="utf-8")
        self.run_release("renew", "--key", self.key, self.feed)
        self.assertEqual(1, len(self.items()))
        date = ElementTree.fromstring(COMMENT.sub(b"", self.feed.read_bytes())).findtext(
            "channel/pubDate")
        self.assertGreater(email.utils.parsedate_to_datetime(date).year, 2024)

    def test_mistakes(self):
        archive = self.archive()
        self.refuse("over https", "publish", "--key", self.key, "--url", "http://example.org",
                    archive, self.feed)
        other = self.folder / "other.pem"
        self.run_release("key", other)
        self.refuse("does not know this key", "publish", "--key", other, "--url",
                    "https://example.org", archive, self.feed)
        self.refuse("no feed over https", "publish", "--key", self.key, "--url", "https://example.org",
                    self.archive("3.0", SUFeedURL="http://example.org/"), self.feed)
        self.refuse("is missing", "renew", "--key", self.key, self.feed)
        self.assertFalse(self.feed.exists())


if __name__ == "__main__":
    unittest.main()
