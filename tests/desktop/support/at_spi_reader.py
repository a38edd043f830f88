#!/usr/bin/python3
"""What assistive technology gets of a program: for each line on standard input one line of JSON on standard output, the
nodes that are shown, in their order. The first argument is the name that the program has there. A line "ready" comes
first, when programs can be seen."""
import json
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

STATES = (("focused", Atspi.StateType.FOCUSED), ("selected", Atspi.StateType.SELECTED),
          ("checked", Atspi.StateType.CHECKED), ("enabled", Atspi.StateType.ENABLED))


def wait_for_registry():
    """The first who asks for the registry starts it. Whoever asks meanwhile, a program that wants to be seen too, may get
    no answer, and does not ask again."""
    session = Gio.bus_get_sync(Gio.BusType.SESSION)
    address, = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
                                 Gio.DBusCallFlags.NONE, -1)
    flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    bus = Gio.DBusConnection.new_for_address_sync(address, flags)
    what = GLib.Variant("(ss)", ("org.a11y.atspi.Accessible", "ChildCount"))
    while True:
        try:
            return bus.call_sync("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root",
                                 "org.freedesktop.DBus.Properties", "Get", what, None, Gio.DBusCallFlags.NONE, -1)
        except GLib.Error:  # the registry that was asked has ended before another one
            time.sleep(0.05)


def text_of(node):
    interface = node.get_text_iface()
    return Atspi.Text.get_text(interface, 0, Atspi.Text.get_character_count(interface)) if interface else ""


def actions_of(node):
    interface = node.get_action_iface()
    return [Atspi.Action.get_action_name(interface, i)
            for i in range(Atspi.Action.get_n_actions(interface))] if interface else []


def size_of(node):
    interface = node.get_component_iface()
    size = Atspi.Component.get_size(interface) if interface else Atspi.Point()
    return size.x, size.y


def walk(node, found):
    if not node:  # it has gone since it was counted
        return
    states = node.get_state_set()
    if not states.contains(Atspi.StateType.SHOWING):
        return
    width, height = size_of(node)
    found.append({"role": node.get_role_name(), "name": node.get_name(), "description": node.get_description(),
                  "text": text_of(node), "actions": actions_of(node), "width": width, "height": height,
                  "states": [name for name, state in STATES if states.contains(state)]})
    for index in range(node.get_child_count()):
        walk(node.get_child_at_index(index), found)


def look(name):
    found = []
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()
    for index in range(desktop.get_child_count()):
        program = desktop.get_child_at_index(index)
        if program and program.get_name() == name:
            program.set_cache_mask(Atspi.Cache.NONE)
            for window in range(program.get_child_count()):
                walk(program.get_child_at_index(window), found)
    return found


wait_for_registry()
print("ready", flush=True)
for _ in sys.stdin:
    try:
        nodes = look(sys.argv[1])
    except GLib.Error:  # what is asked about has just gone
        nodes = []
    print(json.dumps(nodes), flush=True)
