"""The Python package, without a display."""

import ctypes
import datetime
import decimal
import struct
import tempfile
import threading
import unittest
from pathlib import Path

import zanbench

QUICK = "sim:?seed=7&period=50&connect=1&wave.296=const:1850&wave.298=const:1"
DEMO = "weir.scheme"


def setUpModule():
    zanbench.start(offscreen=True)


class Objects(unittest.TestCase):
    def test_a_property_is_read_and_written_by_name(self):
        light = zanbench.create("StatusLight")
        light["truecaption"] = "Läuft"
        self.assertEqual(light["TrueCaption"], "Läuft")
        light["Value"] = True
        self.assertEqual(light["Caption"], "Läuft")

    def test_values_of_every_kind_come_back(self):
        bag = zanbench.create("PropertyBag")
        moments = [datetime.datetime(2024, 2, 29, 13, 30), datetime.datetime(1890, 5, 4, 6, 0)]
        for value in [True, False, 0, -7, 2**31 - 1, 1.5, "", "a\0b", "\U0001f30a", None,
                      decimal.Decimal("12.3456"), *moments]:
            bag.call("WriteProperty", "x", value)
            self.assertEqual(bag.call("ReadProperty", "x"), value)
        bag.call("WriteProperty", "x", 2**40)
        self.assertEqual(bag.call("ReadProperty", "x"), float(2**40))

    def test_what_cannot_be_passed_is_refused(self):
        bag = zanbench.create("PropertyBag")
        with self.assertRaises(TypeError):
            bag.call("WriteProperty", "x", [1, 2])
        with self.assertRaises(OverflowError):
            bag.call("WriteProperty", "x", decimal.Decimal(10) ** 30)
        with self.assertRaises(zanbench.Error):
            bag.call("WriteProperty", "x", float("nan"))

    def test_an_error_has_number_and_words(self):
        light = zanbench.create("StatusLight")
        with self.assertRaises(zanbench.Error) as caught:
            light["Elephant"]
        self.assertEqual(caught.exception.number, 438)
        with self.assertRaises(zanbench.Error) as caught:
            light["hWnd"] = 1
        self.assertEqual(caught.exception.number, 383)
        with self.assertRaises(zanbench.Error):
            zanbench.create("Elephant")
        with self.assertRaises(zanbench.Error):
            light["Value\0"]

    def test_a_released_object_is_no_object(self):
        light = zanbench.create("StatusLight")
        light.release()
        light.release()
        with self.assertRaises(zanbench.Error) as caught:
            light["Value"]
        self.assertEqual(caught.exception.number, 91)

    def test_another_thread_gets_an_error(self):
        light = zanbench.create("StatusLight")
        numbers = []

        def other():
            try:
                light["Value"]
            except zanbench.Error as error:
                numbers.append(error.number)

        thread = threading.Thread(target=other)
        thread.start()
        thread.join()
        self.assertEqual(numbers, [61005])

    def test_what_a_handler_raises_leaves_the_call(self):
        light = zanbench.create("StatusLight")

        def fail(*_event):
            raise KeyError("from a handler")

        end = light.on_event(fail)
        with self.assertRaises(KeyError):
            light["Value"] = True
        end()
        light["Value"] = False

    def test_events_name_what_has_changed(self):
        bar = zanbench.create("ValueBar")
        heard = []
        bar.on_event(lambda *event: heard.append(event))
        bar["Max"] = 250
        self.assertEqual(heard, [("PropertyChanged", "Max")])

    def test_structures_are_those_of_the_header(self):
        self.assertEqual(ctypes.sizeof(zanbench._library.Variant), 16)
        self.assertEqual(ctypes.sizeof(zanbench._library.Id), 16)


class Sites(unittest.TestCase):
    def setUp(self):
        self.site = zanbench.open(DEMO, QUICK)
        self.addCleanup(self.site.release)

    def test_a_scheme_that_is_none_says_where(self):
        with self.assertRaises(zanbench.Error) as caught:
            zanbench.open("/nowhere/at/all.scheme")
        self.assertIn("/nowhere/at/all.scheme", caught.exception.description)

    def test_windows_are_listed(self):
        self.assertIn("Overview", self.site.windows())
        self.assertTrue(self.site.is_simulated)

    def test_channels_are_read_and_written(self):
        self.assertIsNone(self.site.read("Overview|SETPOINT"))
        self.site.connect()
        self.assertEqual(self.site.state, zanbench.CONNECTED)
        self.assertAlmostEqual(self.site.read("Overview|SETPOINT"), 1.85, places=3)
        self.site.write("Overview|SETPOINT", 2.1)
        zanbench.wait(lambda: abs(self.site.read("Overview|SETPOINT") - 2.1) < 0.001)
        with self.assertRaises(zanbench.Error) as caught:
            self.site.read("Overview|ELEPHANT")
        self.assertEqual(caught.exception.number, 9)
        self.site.disconnect()
        with self.assertRaises(zanbench.Error):
            self.site.write("Overview|SETPOINT", 2.1)

    def test_an_event_is_waited_for(self):
        self.site.connect()
        self.assertEqual(self.site["Logger"].wait_event("NewBenchData"), ())
        with self.assertRaises(zanbench.Timeout):
            self.site["Logger"].wait_event("ProgramComplete", seconds=0.01)

    def test_a_logger_that_cannot_be_made_says_why_it_does_not_connect(self):
        with self.assertRaises(zanbench.Error):
            zanbench.open(DEMO, "elephant:1")

    def test_a_panel_is_shown_and_shot(self):
        self.site.connect()
        panel = self.site.panel("Overview")
        panel.show(title="Weir (simulated)", size=(1000, 640))
        zanbench.process()
        self.assertGreater(len(panel.controls()), 100)
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder, "panel.png")
            panel.shoot(file, size=(800, 500))
            header = file.read_bytes()[:24]
            self.assertEqual(struct.unpack(">II", header[16:24]), (800, 500))
        panel.hide()
        self.assertIsNotNone(panel["Controls"])
        panel.release()


if __name__ == "__main__":
    unittest.main()
