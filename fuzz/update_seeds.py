"""Seeds for the targets of the updater: small feeds, property lists and archives."""

import base64
import gzip
import io
import lzma
import plistlib
import tarfile

APPCAST = "http://www.andymatuschak.org/xml-namespaces/sparkle"
ITEM = """<item><title>Horalo 2.0</title><sparkle:version>2.0</sparkle:version>
<sparkle:shortVersionString>2.0</sparkle:shortVersionString>
<pubDate>Fri, 05 Jan 2024 10:00:00 +0000</pubDate><link>https://example.org/</link>
<description><![CDATA[New]]></description>%s
<enclosure url="https://example.org/a.tar.xz" length="9" sparkle:os="linux"
 sparkle:edSignature="%s"/></item>"""
MORE = ["", "<sparkle:channel>beta</sparkle:channel>", "<sparkle:criticalUpdate/>",
        '<sparkle:criticalUpdate sparkle:version="1.5"/>',
        "<sparkle:informationalUpdate><sparkle:version>1.3.0</sparkle:version>"
        "<sparkle:belowVersion>1</sparkle:belowVersion></sparkle:informationalUpdate>",
        "<sparkle:phasedRolloutInterval>86400</sparkle:phasedRolloutInterval>",
        "<sparkle:minimumSystemVersion>2.36</sparkle:minimumSystemVersion>",
        "<sparkle:minimumUpdateVersion>1.0b1</sparkle:minimumUpdateVersion>",
        '<sparkle:deltas><enclosure url="x"/></sparkle:deltas>']


def feeds():
    signature = base64.b64encode(bytes(64)).decode()
    for more in MORE:
        feed = ('<?xml version="1.0"?><rss version="2.0" xmlns:sparkle="%s"><channel>'
                "<pubDate>Fri, 05 Jan 2024 10:00:00 +0000</pubDate>%s</channel></rss>\n"
                % (APPCAST, ITEM % (more, signature)))
        yield feed.encode()
        yield ("%s<!-- sparkle-signatures:\nedSignature: %s\nlength: %d\n-->\n"
               % (feed, signature, len(feed))).encode()


def property_lists():
    yield plistlib.dumps({"CFBundleIdentifier": "org.horalo.Horalo", "CFBundleVersion": "2.0",
                          "CFBundleShortVersionString": "2.0", "SUPublicEDKey": ["a", "b"],
                          "SUFeedURL": "https://example.org/"})
    yield plistlib.dumps({"a": True, "b": False, "c": -1, "d": 1.5, "e": b"bytes", "f": [1, "x"],
                          "g": {"h": {}}, "i": 2**64 - 1, "j": float("nan"), "k": float("-inf")})
    yield b"<plist><dict><key>a</key><date>2024-01-01T00:00:00Z</date></dict></plist>"
    yield b"<dict><key>a</key><integer>0x10</integer><key/><real>1e400</real></dict>"


def tar(*entries):
    data = io.BytesIO()
    with tarfile.open(fileobj=data, mode="w", format=tarfile.USTAR_FORMAT) as archive:
        for name, kind, content in entries:
            info = tarfile.TarInfo(name)
            info.type = kind
            if kind in (tarfile.SYMTYPE, tarfile.LNKTYPE):
                info.linkname = content.decode()
                content = b""
            info.size = len(content)
            info.mode = 0o755
            archive.addfile(info, io.BytesIO(content))
    return data.getvalue()


def archives():
    good = [("Horalo.app", tarfile.DIRTYPE, b""),
            ("Horalo.app/Contents/Info.plist", tarfile.REGTYPE, b"<plist/>"),
            ("Horalo.app/Contents/Linux/horalo", tarfile.REGTYPE, b"x")]
    yield tar(*good)
    yield gzip.compress(tar(*good), mtime=0)
    yield lzma.compress(tar(*good))
    for extra in [("Horalo.app/../x", tarfile.REGTYPE, b"x"), ("/x", tarfile.REGTYPE, b"x"),
                  ("Horalo.app/l", tarfile.SYMTYPE, b".."),
                  ("Horalo.app/l", tarfile.LNKTYPE, b"Horalo.app/Contents/Info.plist"),
                  ("Horalo.app/p", tarfile.FIFOTYPE, b""), ("Horalo.app/c", tarfile.CHRTYPE, b"")]:
        yield tar(*good, extra)


SEEDS = {"feed": feeds, "property_list": property_lists, "archive": archives}
