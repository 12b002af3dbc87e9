#!/usr/bin/env python3
"""Reads the probe program as a screen reader does, through the accessibility bus (pyatspi).

Run inside a private session bus on a virtual display (run_atspi_walk.sh). Starts the
accessibility bus launcher and registry, then the probe, and checks:
- the tree's name and description, the header sections, each row's name and description in words
  and the names of the button cells; the rows' states (checked, expandable, expanded);
- the search typed through the EditableText interface, and its result list;
- the focus a reader hears after Down in the search line (the list, then its result) and after
  Return (the row last);
- the row buttons: Ctrl+Right moves the focus to "Play", its Press action is invoked and the probe
  reports the click; Escape brings the focus back to the row.
Keys go to the probe on its standard input (it sends them to its focus widget). Prints one line
per check and "WALK PASSED" or "WALK FAILED" at the end.
"""

import argparse
import os
import queue
import subprocess
import sys
import threading
import time

import pyatspi
from gi.repository import GLib

FAILURES = []


def check(condition, what, got=None):
    line = ("ok   " if condition else "FAIL ") + what
    if not condition and got is not None:
        line += " (got: %r)" % (got,)
    print(line, flush=True)
    if not condition:
        FAILURES.append(what)


def pump(seconds):
    """Runs the main loop, so that bus events reach the listeners."""
    context = GLib.MainContext.default()
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        while context.pending():
            context.iteration(False)
        time.sleep(0.02)


def start_buses(launcher):
    processes = [subprocess.Popen([launcher, "--launch-immediately"], stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL)]
    for _ in range(100):
        found = subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus",
                                "/org/a11y/bus", "org.a11y.Bus.GetAddress"],
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        if found.returncode == 0 and "unix:" in found.stdout:
            break
        time.sleep(0.1)
    else:
        raise RuntimeError("the accessibility bus did not come up")
    registry = os.path.join(os.path.dirname(launcher), "at-spi2-registryd")
    if os.path.exists(registry):
        processes.append(subprocess.Popen([registry], stdout=subprocess.DEVNULL,
                                          stderr=subprocess.DEVNULL))
    time.sleep(0.5)
    return processes


class Probe:
    def __init__(self, path):
        self.process = subprocess.Popen([path], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.STDOUT, text=True, bufsize=1)
        self.lines = queue.Queue()
        self.seen = []  # every line so far
        self.mark = 0  # lines before this one belong to earlier steps
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        for line in self.process.stdout:
            self.lines.put(line.rstrip("\n"))

    def wait_for(self, text, seconds=10.0):
        """The first line since the last key that starts with text, pumping the bus meanwhile."""
        end = time.monotonic() + seconds
        while True:
            for line in self.seen[self.mark:]:
                if line.startswith(text):
                    return line
            if time.monotonic() >= end:
                return None
            try:
                line = self.lines.get_nowait()
            except queue.Empty:
                pump(0.05)
                continue
            print("  probe: " + line, flush=True)
            self.seen.append(line)

    def key(self, name):
        self.mark = len(self.seen)
        self.process.stdin.write(name + "\n")
        self.process.stdin.flush()
        return self.wait_for("key: " + name) is not None

    def stop(self):
        try:
            self.process.stdin.write("quit\n")
            self.process.stdin.flush()
            self.process.wait(timeout=5)
        except Exception:
            self.process.kill()


def find_app(name, seconds=20.0):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        desktop = pyatspi.Registry.getDesktop(0)
        for i in range(desktop.childCount):
            app = desktop.getChildAtIndex(i)
            if app is not None and app.name == name:
                return app
        pump(0.2)
    return None


def find(root, predicate):
    return pyatspi.findDescendant(root, predicate)


def described(accessible):
    return "%s %r" % (accessible.getRoleName(), accessible.name)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--probe", required=True)
    parser.add_argument("--launcher", required=True)
    args = parser.parse_args()

    buses = start_buses(args.launcher)
    focus_events = []

    def on_focus(event):
        if event.detail1 == 1 and event.source is not None:
            focus_events.append(event.source)

    pyatspi.Registry.registerEventListener(on_focus, "object:state-changed:focused")
    probe = Probe(args.probe)
    try:
        check(probe.wait_for("ready") is not None, "the probe started")
        app = find_app("wgt-atspi-probe")
        check(app is not None, "the probe is on the accessibility bus")
        if app is None:
            return 1
        walk(app, probe, focus_events)
    finally:
        probe.stop()
        for process in buses:
            process.terminate()
    print("WALK FAILED" if FAILURES else "WALK PASSED", flush=True)
    return 1 if FAILURES else 0


def walk(app, probe, focus_events):
    tree = find(app, lambda a: a.getRole() in (pyatspi.ROLE_TREE_TABLE, pyatspi.ROLE_TREE))
    check(tree is not None, "a tree is found")
    if tree is None:
        return
    check(tree.name == "Resource tree", "the tree is named", tree.name)
    check("Ctrl+Right" in tree.description, "the tree's description tells the keys", tree.description)

    headers = [tree.getChildAtIndex(i) for i in range(min(tree.childCount, 2))]
    headers = [h for h in headers if h.getRole() in (pyatspi.ROLE_COLUMN_HEADER,
                                                        pyatspi.ROLE_TABLE_COLUMN_HEADER)]
    print("  header sections listed: %d" % len(headers), flush=True)
    check([h.name for h in headers] in ([], ["Name", "Buttons"]), "the header sections are named",
          [h.name for h in headers])

    table = tree.queryTable()
    rows = {}
    for r in range(table.nRows):
        name_cell = table.getAccessibleAt(r, 0)
        button_cell = table.getAccessibleAt(r, 1)
        rows[name_cell.name] = (name_cell, button_cell)
        states = sorted(pyatspi.stateToString(s) for s in name_cell.getState().getStates())
        print("  row %r: %r | %r | %s" % (name_cell.name, name_cell.description, button_cell.name,
                                         " ".join(states)), flush=True)
    expected = {
        "Site": "Group, 2 of 4 channels on line, partly checked",
        "Hall": "Group, 1 of 3 channels on line, partly checked",
        "Camera 1": "Channel, on line",
        "Camera 2": "Channel, off line",
        "Camera 3": "Channel, no video",
        "Yard": "Group, 1 of 1 channels on line",
        "Camera 4": "Channel, on line",
        "Gate contact": "Alarm input",
    }
    for name, words in expected.items():
        got = rows[name][0].description if name in rows else "<no row>"
        check(got == words, "row %s is described as %r" % (name, words), got)
    check(all(cells[1].name for cells in rows.values()), "no button cell is empty",
          [cells[1].name for cells in rows.values()])
    if "Camera 1" in rows:
        check(rows["Camera 1"][1].name == "Buttons: Play, Record", "a channel's button cell names its buttons",
              rows["Camera 1"][1].name)
        check(rows["Camera 1"][0].getState().contains(pyatspi.STATE_CHECKED), "the checked channel is checked")
    if "Hall" in rows:
        hall = rows["Hall"][0].getState()
        check(hall.contains(pyatspi.STATE_EXPANDABLE) and hall.contains(pyatspi.STATE_EXPANDED),
              "an open group is expandable and expanded")
        print("  part-checked group reports indeterminate: %s" % hall.contains(pyatspi.STATE_INDETERMINATE),
              flush=True)
    if "Camera 2" in rows:
        leaf = rows["Camera 2"][0].getState()
        print("  leaf row reports expanded: %s, expandable: %s" % (leaf.contains(pyatspi.STATE_EXPANDED),
              leaf.contains(pyatspi.STATE_EXPANDABLE)), flush=True)

    line = find(app, lambda a: a.getRole() in (pyatspi.ROLE_ENTRY, pyatspi.ROLE_TEXT) and a.name == "Search")
    check(line is not None, "the search line is found")
    if line is None:
        return
    line.queryEditableText().setTextContents("Camera 2")
    pump(1.0)
    results = find(app, lambda a: a.getRole() == pyatspi.ROLE_LIST and a.name == "Search results")
    check(results is not None and results.getState().contains(pyatspi.STATE_SHOWING),
          "typing through EditableText opens the results")
    if results is None:
        return
    names = [results.getChildAtIndex(i).name for i in range(results.childCount)]
    check(names == ["Camera 2"], "the results list the row", names)

    del focus_events[:]
    check(probe.key("Down"), "Down reaches the search line")
    pump(0.8)
    heard = [described(a) for a in focus_events]
    print("  focus after Down: %s" % heard, flush=True)
    check(heard == ["list 'Search results'", "list item 'Camera 2'"],
          "the list is heard, then its result", heard)

    del focus_events[:]
    check(probe.key("Return"), "Return reaches the result")
    check(probe.wait_for("selected: cam2") is not None, "Return selects the row")
    pump(0.8)
    heard = [described(a) for a in focus_events]
    print("  focus after Return: %s" % heard, flush=True)
    check(bool(heard) and heard[-1].endswith("'Camera 2'") and "tree" not in heard[-1].split(" ")[0],
          "the row is heard last after Return", heard)

    del focus_events[:]
    check(probe.key("Ctrl+Right"), "Ctrl+Right reaches the tree")
    pump(0.8)
    heard = [described(a) for a in focus_events]
    print("  focus after Ctrl+Right: %s" % heard, flush=True)
    button = focus_events[-1] if focus_events else None
    check(button is not None and button.getRole() == pyatspi.ROLE_PUSH_BUTTON and button.name == "Play",
          "Ctrl+Right moves the focus to the row's first button", heard)
    if button is not None:
        check(button.description == "Open the live view", "the button is described by its tool tip",
              button.description)
        action = button.queryAction()
        names = [action.getName(i) for i in range(action.nActions)]
        check("Press" in names, "the button offers Press", names)
        if "Press" in names:
            action.doAction(names.index("Press"))
            check(probe.wait_for("button: play cam2") is not None, "invoking Press clicks the row's button")

    del focus_events[:]
    check(probe.key("Right"), "Right reaches the button")
    pump(0.5)
    heard = [described(a) for a in focus_events]
    check(bool(heard) and heard[-1] == "push button 'Record'", "Right moves to the next button", heard)
    del focus_events[:]
    check(probe.key("Escape"), "Escape reaches the button")
    pump(0.8)
    heard = [described(a) for a in focus_events]
    print("  focus after Escape: %s" % heard, flush=True)
    check(bool(heard) and heard[-1].endswith("'Camera 2'"), "Escape brings the focus back to the row", heard)


if __name__ == "__main__":
    sys.exit(main())
