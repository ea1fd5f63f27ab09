#!/usr/bin/python3
"""Works the program as a screen reader does, over the accessibility bus.

Opens the screen of a menu entry, prints what a reader would say of each control that can be worked,
presses one of them, and prints the events that follow. Ends with status 1 where a control has no
role, name or action. Needs python3-pyatspi, at-spi2-core, a display and a session bus:

    xvfb-run -a dbus-run-session tools/hear.py PROGRAM "Relay Output Options" "Relay 02, PowerOn"
"""

import os
import subprocess
import sys
import threading
import time

import pyatspi

EVENTS = (
    "object:state-changed:checked",
    "object:state-changed:expanded",
    "object:state-changed:focused",
    "object:property-change:accessible-name",
    "object:property-change:accessible-value",
    "object:property-change:accessible-description",
)


def start(program):
    subprocess.Popen(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"],
                     stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    time.sleep(1)
    return subprocess.Popen([program], env=dict(os.environ, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1"),
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def application():
    for _ in range(40):
        for candidate in pyatspi.Registry.getDesktop(0):
            if candidate and "amberloom" in (candidate.name or ""):
                return candidate
        time.sleep(0.25)
    sys.exit("The program does not show on the accessibility bus.")


def below(node):
    for child in node:
        if child is not None:
            yield child
            yield from below(child)


def actions(node):
    try:
        action = node.queryAction()
        return [action.getName(i) for i in range(action.nActions)]
    except NotImplementedError:
        return []


def press(node):
    names = [name for name in actions(node) if name in ("Press", "Toggle", "ShowMenu")]
    node.queryAction().doAction(actions(node).index(names[0]))


def value(node):
    try:
        return node.queryText().getText(0, -1)
    except NotImplementedError:
        return node.description


def main(program, entry, control):
    child = start(program)
    faults = 0
    try:
        house = application()
        time.sleep(1)
        press(next(n for n in below(house) if n.name == entry))
        time.sleep(1)
        pressed = None
        for node in below(house):
            states = node.getState()
            if not all(states.contains(state) for state in (
                    pyatspi.STATE_SHOWING, pyatspi.STATE_SENSITIVE, pyatspi.STATE_FOCUSABLE)):
                continue
            if node.getRoleName() in ("filler", "panel", "frame", "scroll pane"):
                continue
            print(f"{node.getRoleName()}: {node.name}: {value(node)}")
            if not node.name or not actions(node):
                print("  has no name or no action")
                faults += 1
            if node.name == control or node.name.endswith(control):
                pressed = node
        if pressed is None:
            sys.exit(f"No control is named {control}.")

        def tell(event):
            if event.host_application == house:
                print(f"  {event.type} {event.detail1}: {event.source.name}")

        pyatspi.Registry.registerEventListener(tell, *EVENTS)
        threading.Timer(0.5, press, [pressed]).start()
        threading.Timer(2.5, pyatspi.Registry.stop).start()
        print(f"Pressing {pressed.name}:")
        pyatspi.Registry.start()
    finally:
        child.terminate()
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:4]) if len(sys.argv) == 4 else __doc__)
