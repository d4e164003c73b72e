"""One program a session, commands to it, and its end."""
import signal
import time

import accessibility
import case
import program
import screen
from case import SessionTest
from desktop import start_x_server
from processes import end, run, start


class InstanceTest(SessionTest):
    def start_on_another_display(self):
        """Gives an X server of its own and a program there, on the same session bus."""
        server, display = start_x_server("800x600")
        self.addCleanup(end, server)
        other = program.Program(self.program.path, DISPLAY=display)
        other.start(wait=False)
        self.addCleanup(other.end)
        self.eventually(lambda: other.ask("status").returncode == 0)
        return server, other

    def test_a_second_start_shows_the_panel(self):
        begin = time.monotonic()
        second = self.program.ask()
        self.assertEqual(0, second.returncode, second.stderr)
        self.assertLess(time.monotonic() - begin, 1)
        self.wait_for_panel()

    def test_a_second_start_in_the_background_shows_nothing(self):
        self.assertEqual(0, self.program.ask("--background").returncode)
        self.assertFalse(self.program.status()["panel"]["visible"])

    def test_commands(self):
        ask = lambda *words: self.assertEqual(0, self.program.ask(*words).returncode)
        ask("show")
        self.assertIsNotNone(self.panel(), "show returned before the panel was there")
        ask("show")
        self.wait_for_panel()
        ask("hide")
        self.wait_for_no_panel()
        ask("toggle")
        self.wait_for_panel()
        ask("toggle")
        self.wait_for_no_panel()
        ask("settings")
        self.eventually(lambda: screen.window("Horalo Settings"))
        ask("check-updates")
        self.eventually(lambda: screen.window("Horalo Update"))
        labels = self.eventually(
            lambda: [t for t in accessibility.labels() if "Auto-updates" in t])
        self.assertEqual(["Auto-updates only work when running the app bundle, not during "
                          "development."], labels)
        ask("quit")
        self.assertIsNotNone(self.program.process.poll(), "quit returned before the end")
        self.assertEqual(0, self.program.process.poll())

    def test_commands_without_a_program_say_so(self):
        self.program.end()
        for command in ("toggle", "show", "hide", "settings", "check-updates", "quit"):
            answer = self.program.ask(command)
            self.assertEqual(3, answer.returncode, command)
            self.assertEqual(1, len(answer.stderr.splitlines()), answer.stderr)
        answer = self.program.ask("status", "--json")
        self.assertEqual((3, '{"running":false}'),
                         (answer.returncode, answer.stdout.replace(" ", "").strip()))

    def test_the_bus_interface(self):
        call = lambda method, *arguments: run(
            "gdbus", "call", "--session", "-d", "org.horalo.Horalo", "-o", "/org/horalo/Horalo",
            "-m", method, *arguments)
        self.assertIn('"running":true',
                      call("org.horalo.Horalo1.Status").stdout.replace(" ", ""))
        self.assertEqual(0, call("org.freedesktop.Application.Activate", "{}").returncode)
        self.wait_for_panel()
        self.assertEqual(0, call("org.freedesktop.Application.ActivateAction", "hide", "[]",
                                 "{}").returncode)
        self.wait_for_no_panel()

    def test_twelve_starts_at_once_leave_one(self):
        self.program.end()
        starts = [start(self.program.path, "--background", env=self.program.env)
                  for _ in range(12)]
        for process in starts:
            self.addCleanup(end, process)
        self.eventually(lambda: sum(p.poll() is None for p in starts) == 1, seconds=20)
        self.assertEqual([0] * 11, [p.poll() for p in starts if p.poll() is not None])
        self.eventually(lambda: self.program.status().get("running"))

    def test_starts_again_after_being_killed(self):
        self.program.process.kill()
        self.program.process.wait()
        self.start()
        self.open_panel()

    def test_signals_end_it_well(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            begin = time.monotonic()
            self.program.process.send_signal(number)
            self.assertEqual(0, self.program.process.wait(5), number)
            self.assertLess(time.monotonic() - begin, 1)
            self.start()

    def test_a_change_just_before_the_end_is_stored(self):
        self.open_panel()
        accessibility.press(accessibility.find("check box", "UTC"))
        self.program.process.send_signal(signal.SIGTERM)
        self.program.process.wait(5)
        self.assertIs(True, program.preference("isUTC"))

    def test_without_a_display_it_says_so(self):
        self.program.end()
        env = {k: v for k, v in self.program.env.items() if k != "DISPLAY"}
        answer = run(self.program.path, env=env)
        self.assertEqual(1, answer.returncode)
        self.assertEqual(1, len(answer.stderr.splitlines()), answer.stderr)

    def test_without_a_session_bus(self):
        self.program.end()
        self.program.env["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nonexistent"
        self.program.start(wait=False)
        self.addCleanup(self.program.end)
        self.eventually(lambda: self.program.ask("status").returncode == 0)
        self.assertEqual(0, self.program.ask("show").returncode)
        self.eventually(self.panel)

    def test_two_displays_on_one_bus(self):
        _, other = self.start_on_another_display()
        self.assertNotEqual(other.process.pid, self.program.process.pid)
        self.assertEqual(0, other.ask("show").returncode)
        self.assertTrue(other.status()["panel"]["visible"])
        self.assertFalse(self.program.status()["panel"]["visible"])

    def test_the_end_of_the_x_server(self):
        server, other = self.start_on_another_display()
        server.kill()
        server.wait()
        self.assertEqual(1, other.process.wait(5))


if __name__ == "__main__":
    case.main()
