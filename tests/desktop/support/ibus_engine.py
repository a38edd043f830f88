#!/usr/bin/python3
"""An input method for tests: letters are composed, and the space puts what they stand for where they were typed. A line
"ready" comes when keys go through it. It ends with its standard input."""
import sys

import gi

gi.require_version("IBus", "1.0")
from gi.repository import GLib, GObject, IBus  # noqa: E402

NAME = "plum-test"
WORDS = {"nihao": "你好"}
OTHER = IBus.ModifierType.RELEASE_MASK | IBus.ModifierType.CONTROL_MASK | IBus.ModifierType.MOD1_MASK


class Composer(IBus.Engine):
    __gtype_name__ = "Composer"
    composed = ""

    def show(self, composed):
        self.composed = composed
        self.update_preedit_text(IBus.Text.new_from_string(composed), len(composed), bool(composed))

    def do_process_key_event(self, key, _code, state):
        if state & OTHER:
            return False
        if IBus.KEY_a <= key <= IBus.KEY_z:
            self.show(self.composed + chr(key))
            return True
        if key == IBus.KEY_space and self.composed:
            word = WORDS.get(self.composed, self.composed)
            self.show("")
            self.commit_text(IBus.Text.new_from_string(word))
            return True
        return False


def announce(bus, result):
    if bus.set_global_engine_async_finish(result):
        print("ready", flush=True)


IBus.init()
bus = IBus.Bus.new()
loop = GLib.MainLoop()
factory = IBus.Factory.new(bus.get_connection())
factory.add_engine(NAME, GObject.type_from_name("Composer"))
component = IBus.Component.new("org.plum_launcher.Test", "Tests", "1", "", "", "", "", "")
component.add_engine(IBus.EngineDesc.new(NAME, NAME, "", "zh", "", "", "", "us"))
bus.register_component(component)
bus.set_global_engine_async(NAME, -1, None, announce)
bus.connect("disconnected", lambda _bus: loop.quit())
GLib.io_add_watch(sys.stdin, GLib.PRIORITY_DEFAULT, GLib.IOCondition.HUP, lambda *_: loop.quit())
loop.run()
