#!/usr/bin/env python3
"""Tests what make_callbacks.py writes, and that it refuses what it has no rule for.

Usage: make_callbacks_test.py MAKE_CALLBACKS
"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

SCRIPT = sys.argv.pop(1) if len(sys.argv) > 1 else sys.exit(__doc__)


def block(key, *lines):
    return f"{key}: {{\n" + "".join(f"{line}\n" for line in lines) + "}\n"


def scalar(name, cpp):
    return block("arg", f'name: "{name}"', "type: TYPE_SCALAR", f'scalar_type: "{cpp}"')


def method(name, *parts):
    return block("api", f'name: "{name}"', "is_inherited: false", *parts)


RECORD = block("arg", 'name: "record"', "type: TYPE_STRUCT", 'predefined_type: "::test::V1_0::RECORD"')
RESULT = block("return_type_hidl", 'name: "answer"', "type: TYPE_SCALAR", 'scalar_type: "int32_t"')
HAND_WRITTEN = (method("queryAndroid", RESULT), method("isMheg5MimeTypeSupported", RESULT),
                method("notifyCiMmiEnquiry", RECORD), method("notifyCiMmiMenu", RECORD))


class MakeCallbacks(unittest.TestCase):
    def run_script(self, *methods):
        """Returns the process, the overrides and the default methods; the latter two empty if it failed."""
        with tempfile.TemporaryDirectory() as name:
            paths = [pathlib.Path(name) / file for file in ("i.vts", "overrides.inc", "defaults.cpp")]
            paths[0].write_text('component_name: "ITest"\n\n' + block("interface", *methods))
            process = subprocess.run([sys.executable, SCRIPT, *paths], capture_output=True, text=True)
            return process, *(path.read_text() if path.exists() else "" for path in paths[1:])

    def assert_refused(self, methods, *words):
        process, overrides, defaults = self.run_script(*methods)
        self.assertEqual(process.returncode, 1)
        self.assertEqual(overrides + defaults, "")
        for word in words:
            self.assertIn(word, process.stderr)

    def test_passes_arguments_on_in_their_order_and_under_their_names(self):
        text = block("arg", 'name: "text"', "type: TYPE_STRING")
        data = block("arg", 'name: "data"', "type: TYPE_VECTOR",
                     block("vector_value", "type: TYPE_SCALAR", 'scalar_type: "uint8_t"'))
        process, overrides, defaults = self.run_script(
            *HAND_WRITTEN, method("notifyTest", scalar("on", "bool_t"), scalar("code", "int16_t"), text, data))
        self.assertEqual(process.returncode, 0, process.stderr)
        parameters = ("(bool on, int16_t code, const ::android::hardware::hidl_string& text, "
                      "const ::android::hardware::hidl_vec<uint8_t>& data)")
        self.assertIn(f"::android::hardware::Return<void> notifyTest{parameters} override {{\n"
                      "    return QORTV_CALLBACK(notifyTest, on, code, text, data);\n}\n", overrides)
        self.assertIn(f"void Listener::notifyTest{parameters} {{\n    onNotification({{\"notifyTest\", "
                      '{{"on", on}, {"code", code}, {"text", text}, {"data", data}}});\n}\n', defaults)

    def test_leaves_out_what_is_written_by_hand(self):
        process, overrides, defaults = self.run_script(*HAND_WRITTEN)
        self.assertEqual(process.returncode, 0, process.stderr)
        self.assertNotIn("queryAndroid", overrides + defaults)
        self.assertNotIn("isMheg5MimeTypeSupported", overrides + defaults)
        self.assertIn("notifyCiMmiMenu(const ::test::V1_0::RECORD& record) override", overrides)
        self.assertNotIn("notifyCiMmi", defaults)

    def test_refuses_an_unknown_type(self):
        numbers = block("arg", 'name: "numbers"', "type: TYPE_VECTOR",
                        block("vector_value", "type: TYPE_SCALAR", 'scalar_type: "uint16_t"'))
        for argument in (scalar("numbers", "double_t"), numbers,
                         block("arg", 'name: "numbers"', "type: TYPE_HANDLE")):
            self.assert_refused([*HAND_WRITTEN, method("notifyTest", argument)], "notifyTest", "'numbers'")

    def test_refuses_a_record_in_a_plain_notification(self):
        self.assert_refused([*HAND_WRITTEN, method("notifyTest", RECORD)], "notifyTest", "record")

    def test_refuses_a_new_question_and_a_missing_method(self):
        self.assert_refused([*HAND_WRITTEN, method("queryTest", RESULT)], "queryTest", "QUESTIONS")
        self.assert_refused(HAND_WRITTEN[1:], "queryAndroid", "QUESTIONS")
        self.assert_refused(HAND_WRITTEN[:3], "notifyCiMmiMenu", "DIALOGUES")


if __name__ == "__main__":
    unittest.main()
