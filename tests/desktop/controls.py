#!/usr/bin/python3
"""What a screen reader sees of a running program's window.

Usage: controls.py place|text PROCESS NAME    the middle of the control with that accessible name, or its text; fails if none shows
"""
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

command, process, name = sys.argv[1], int(sys.argv[2]), sys.argv[3]


def below(element, depth=0):
    """The element and what is in it."""
    yield element
    for number in range(element.get_child_count() if depth < 20 else 0):
        child = element.get_child_at_index(number)
        if child:
            yield from below(child, depth + 1)


def found():
    desktop = Atspi.get_desktop(0)
    for number in range(desktop.get_child_count()):
        program = desktop.get_child_at_index(number)
        if not program or program.get_process_id() != process:
            continue
        for each in below(program):
            if each.get_name() == name and each.get_state_set().contains(Atspi.StateType.SHOWING):
                return each
    return None


control = found()
if not control:
    sys.exit(1)
if command == "text":
    print(Atspi.Text.get_text(control, 0, -1))
else:
    frame = Atspi.Component.get_extents(control, Atspi.CoordType.SCREEN)
    print(frame.x + frame.width // 2, frame.y + frame.height // 2)
