"""Standard input, line by line, and what can go wrong with its ends."""

import contextlib
import os
import select
import subprocess
import time
import unittest

from convert import PROGRAM, ConvertTest, convert, environment


class Conversation:
    """A running `horalo convert` that is spoken to while its input stays open."""

    def __init__(self, *words):
        self.process = subprocess.Popen(
            [PROGRAM, "convert", *words],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            env=environment(),
        )

    def __enter__(self):
        return self

    def __exit__(self, *error):
        self.process.kill()
        self.process.communicate()

    def say(self, data):
        self.process.stdin.write(data)
        self.process.stdin.flush()

    @staticmethod
    def hear(stream, lines=1):
        """What comes next, up to so many line ends."""
        heard = b""
        while heard.count(b"\n") < lines:
            ready, _, _ = select.select([stream], [], [], 20)
            if not ready:
                raise TimeoutError(f"only {heard!r}")
            piece = os.read(stream.fileno(), 65536)
            if not piece:
                raise EOFError(f"only {heard!r}")
            heard += piece
        return heard


class Streams(ConvertTest):
    def test_each_line_is_answered_at_once(self):
        with Conversation("--only", "iso") as talk:
            for day in range(1, 29):
                talk.say(f"2024-02-{day:02}\n".encode())
                heard = talk.hear(talk.process.stdout)
                self.assertEqual(heard.decode(), f"2024-02-{day:02}T00:00:00Z\n")
            talk.say(b"hello\n")
            self.assertEqual(talk.hear(talk.process.stdout), b"\n")
            self.assertEqual(
                talk.hear(talk.process.stderr), b"Could not parse input: hello\n"
            )

    def test_json_and_blocks_are_answered_at_once(self):
        with Conversation("--json") as talk:
            for _ in range(3):
                talk.say(b"0\n")
                self.assertTrue(talk.hear(talk.process.stdout).startswith(b'{"input":"0"'))
        with Conversation() as talk:
            talk.say(b"0\n")
            self.assertTrue(talk.hear(talk.process.stdout, 6).startswith(b"Unix (s)   0\n"))
            talk.say(b"1\n")
            self.assertTrue(talk.hear(talk.process.stdout, 7).startswith(b"\nUnix (s)   1\n"))

    def test_a_line_may_come_in_pieces(self):
        with Conversation("--only", "unix-s") as talk:
            for piece in (b"17", b"04067", b"200\n1", b"\n"):
                talk.say(piece)
            self.assertEqual(talk.hear(talk.process.stdout, 2), b"1704067200\n1\n")

    def test_blocks_are_separated(self):
        done = convert(input=b"hello\n0\nhello\n1\n\n2\nhello\n")
        self.assertEqual(done.returncode, 1)
        blocks = done.stdout.decode().split("\n\n")
        self.assertEqual([block.splitlines()[0] for block in blocks],
                         ["Unix (s)   0", "Unix (s)   1", "Unix (s)   2"])
        self.assertFalse(done.stdout.startswith(b"\n") or done.stdout.endswith(b"\n\n"))
        failure = b"Could not parse input: "
        self.assertEqual(
            done.stderr, failure + b"hello\n" + failure + b"hello\n" + failure + b"\n" + failure + b"hello\n"
        )

    def test_ends_of_lines(self):
        cases = {
            b"": b"",
            b"\n": b"\n",
            b"\n\n": b"\n\n",
            b"0": b"0\n",
            b"0\n": b"0\n",
            b"0\n1": b"0\n1\n",
            b"0\r\n1\r\n": b"0\n1\n",
            b"0\r1\n": b"\n",
            b"0\xe2\x80\xa81\n": b"\n",
            b"0\x0b\n1\x0c": b"0\n1\n",
            b"0\n\n1\n": b"0\n\n1\n",
            b"0\0\n1\n": b"\n1\n",
            b"\0": b"\n",
            b" \n": b"\n",
        }
        for data, out in cases.items():
            with self.subTest(data):
                done = convert("--only", "unix-s", input=data)
                self.assertEqual(done.stdout, out)
                self.assertEqual(done.returncode, 1 if b"\n\n" in b"\n" + out else 0)

    def test_many_lines(self):
        data = "".join(f"{n}\n" for n in range(200000)).encode()
        done = convert("--only", "unix-s", input=data)
        self.expect(done)
        self.assertEqual(done.stdout, data)

    def test_long_lines(self):
        size = 10_000_000
        texts = [
            (b"0" * size, b"0\n"),
            (b"9" * size, b"\n"),
            (b" " * size, b"\n"),
            (b" " * (size // 2) + b"1704067200" + b"\t" * (size // 2), b"1704067200\n"),
            (b"+" * size, b"\n"),
            (b"now" + b" " * size + b"+ 1 x", b"\n"),
            (b"0" + b" " * size + b"+ 1 d", b"86400\n"),
            (b"0." + b"0" * size + b"1", b"0\n"),
            (b"\0" * size, b"\n"),
            (b"\xff" * size, b"\n"),
            (b"\xe2\x80\x83" * (size // 3) + b"7", b"7\n"),
        ]
        for text, out in texts:
            with self.subTest(text[:12]):
                start = time.monotonic()
                done = convert("--only", "unix-s", input=text + b"\n5\n")
                self.assertEqual(done.stdout, out + b"5\n")
                self.assertLess(len(done.stderr), 1000)
                self.assertLess(time.monotonic() - start, 30)
        done = convert("--json", input=b"x" * size + b"\n5\n")
        self.assertEqual(len(done.stdout.splitlines()), 2)

    def test_reader_that_went_away(self):
        for words in (("--only", "unix-s"), ("--json",), ()):
            with self.subTest(words):
                process = subprocess.Popen(
                    [PROGRAM, "convert", *words],
                    stdin=subprocess.PIPE,
                    stdout=subprocess.PIPE,
                    stderr=subprocess.PIPE,
                    env=environment(),
                )
                process.stdin.write(b"0\n")
                process.stdin.flush()
                self.assertTrue(process.stdout.readline())
                process.stdout.close()
                # More than fits a pipe, so that it ends by the writing and not by the input's end.
                try:
                    process.stdin.write(b"0\n" * 5_000_000)
                except BrokenPipeError:
                    pass
                with contextlib.suppress(BrokenPipeError):
                    process.stdin.close()
                self.assertEqual(process.stderr.read(), b"")
                self.assertEqual(process.wait(20), 0)
                process.stderr.close()

    def test_nobody_reads_messages(self):
        read_end, write_end = os.pipe()
        os.close(read_end)
        done = convert("--only", "unix-s", input=b"hello\n0\n", stderr=write_end)
        os.close(write_end)
        self.assertEqual((done.returncode, done.stdout), (1, b"\n0\n"))

    def test_full_disk(self):
        with open("/dev/full", "wb") as full:
            done = convert("0", stdout=full)
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stderr, rb"\Ahoralo convert: cannot write: .+\n\Z")

    def test_input_that_cannot_be_read(self):
        folder = os.open("/", os.O_RDONLY)
        done = convert(stdin=folder)
        os.close(folder)
        self.assertEqual((done.returncode, done.stdout), (1, b""))
        self.assertRegex(done.stderr, rb"\Ahoralo convert: cannot read standard input: .+\n\Z")

    def test_messages_keep_their_place_where_both_go(self):
        done = convert("--only", "unix-s", input=b"0\nhello\n1\n", stderr=subprocess.STDOUT)
        self.assertEqual(done.stdout, b"0\nCould not parse input: hello\n\n1\n")


if __name__ == "__main__":
    unittest.main()
