#!/usr/bin/python3
"""What a screen reader finds in Drav's windows, read through AT-SPI.

    accessible_names.py PID

Walks the accessible tree of the running program and checks that every
control has a name and a description, that the count field is named by its
caption, and that the caption and the credit line are labels, not fields to
type in. Prints one line per failure; the exit status is their number.
Run with Debian's own python3, which has pyatspi.
"""
import sys

import pyatspi

CAPTION = "Number of Models (2-99):"
SLOGAN = "Akaike weights and evidence ratios from your AIC values \u2014 the Drav project"

# window title, role, name; each must be there once, and focusable or not.
EXPECTED = [
    ("Drav", "text", CAPTION, True),
    ("Drav", "label", CAPTION, False),
    ("Drav", "label", SLOGAN, False),
    # The buttons work by mouse alone and never take the focus.
    ("Drav", "push button", "Load Data", False),
    ("Drav", "push button", "Clear", False),
    ("Drav", "push button", "Information", False),
    ("Drav", "text", "Report", True),
    ("Drav", "image", "Drav", False),
    ("Info", "text", "Help", True),
]

# Roles of the frame and the containers Qt puts around the controls.
CONTAINERS = {"frame", "filler", "panel", "menu bar", "menu", "menu item", "scroll bar",
              "window", "dialog", "unknown"}


def application(pid):
    desktop = pyatspi.Registry.getDesktop(0)
    for app in desktop:
        if app is not None and app.get_process_id() == pid:
            return app
    return None


def controls(node, window, found):
    for child in node:
        if child is None:
            continue
        role = child.getRoleName()
        title = child.name if role == "frame" else window
        if role not in CONTAINERS:
            states = child.getState()
            found.append((title, role, child.name, child.description, states.contains(pyatspi.STATE_FOCUSABLE),
                          states.contains(pyatspi.STATE_SHOWING)))
        controls(child, title, found)
    return found


def main():
    app = application(int(sys.argv[1]))
    if app is None:
        print("FAIL: Drav is not among the accessible applications")
        return 1
    found = controls(app, "", [])
    failures = 0
    for window, role, name, focusable in EXPECTED:
        matches = [f for f in found if f[0] == window and f[1] == role and f[2] == name]
        if len(matches) != 1:
            print(f"FAIL: {len(matches)} controls of role '{role}' named '{name}' in '{window}', not one")
            failures += 1
        elif matches[0][4] != focusable:
            print(f"FAIL: '{name}' in '{window}' is {'' if matches[0][4] else 'not '}focusable")
            failures += 1
    for window, role, name, description, _, showing in found:
        if showing and (not name or not description):
            print(f"FAIL: a {role} in '{window}' has no {'name' if not name else 'description'} ('{name}')")
            failures += 1
    if failures:
        for entry in found:
            print("  found:", entry)
    return failures


if __name__ == "__main__":
    sys.exit(main())
