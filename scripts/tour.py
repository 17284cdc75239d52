"""Walks the running Lullwick window over AT-SPI: selects each tab by its label, presses Analyze
on the Restart tab, and saves a screenshot after each step."""
import subprocess
import sys
import time

import pyatspi

out_dir, grab = sys.argv[1], sys.argv[2]


def find(node, role, name):
    if node is None:
        return None
    if node.getRole() == role and node.name == name:
        return node
    for i in range(node.childCount):
        hit = find(node.getChildAtIndex(i), role, name)
        if hit is not None:
            return hit
    return None


def app():
    deadline = time.time() + 20
    while time.time() < deadline:
        desktop = pyatspi.Registry.getDesktop(0)
        for i in range(desktop.childCount):
            candidate = desktop.getChildAtIndex(i)
            if candidate is not None and candidate.name.lower() == "lullwick":
                return candidate
        time.sleep(0.3)
    sys.exit("the window never showed up on the accessibility bus")


def shot(name):
    time.sleep(1.0)
    subprocess.run([grab, f"{out_dir}/{name}.png"], check=True)


def select_tab(root, label):
    tab = find(root, pyatspi.ROLE_PAGE_TAB, label)
    if tab is None:
        sys.exit(f"no tab labelled {label}")
    # Qt's tab bar offers no selection interface; each tab has a press action instead.
    tab.queryAction().doAction(0)


def press(root, label):
    button = find(root, pyatspi.ROLE_PUSH_BUTTON, label)
    if button is None:
        sys.exit(f"no button labelled {label}")
    button.queryAction().doAction(0)


root = app()
time.sleep(2.0)  # the first reading
shot("window-summary")
select_tab(root, "Restart")
shot("window-restart")
press(root, "Analyze")
time.sleep(2.0)
shot("window-restart-analyzed")
select_tab(root, "Details")
shot("window-details")
