#!/usr/bin/env python3
"""Drives the running window through the accessibility bus alone, as a screen reader would.

Finds the application on the AT-SPI registry, counts its showing interactive elements and how
many carry a name, types a folder into the path field, starts the scan with the path field's
Enter or the toolbar's Scan button, and waits for the table to fill. Then opens the dashboard
and the tour the same way. Fails when a showing interactive element has no name, when the table
exposes fewer rows than the list holds, when the result count is not exposed as text, or when the
dashboard's ring and cards or the tour's page and focus are not exposed.

    atspi_walk.py FOLDER EXPECTED_FILES [--report-only]
"""
import re
import sys
import time

import pyatspi

INTERACTIVE = {
    pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_TOGGLE_BUTTON, pyatspi.ROLE_CHECK_BOX,
    pyatspi.ROLE_RADIO_BUTTON, pyatspi.ROLE_COMBO_BOX, pyatspi.ROLE_ENTRY, pyatspi.ROLE_TEXT,
    pyatspi.ROLE_PASSWORD_TEXT, pyatspi.ROLE_SPIN_BUTTON, pyatspi.ROLE_SLIDER,
    pyatspi.ROLE_MENU, pyatspi.ROLE_MENU_ITEM, pyatspi.ROLE_CHECK_MENU_ITEM,
    pyatspi.ROLE_RADIO_MENU_ITEM, pyatspi.ROLE_PAGE_TAB, pyatspi.ROLE_LINK,
    pyatspi.ROLE_LIST_ITEM, pyatspi.ROLE_TABLE_ROW, pyatspi.ROLE_TABLE_COLUMN_HEADER,
    pyatspi.ROLE_TABLE, pyatspi.ROLE_LIST, pyatspi.ROLE_TREE_ITEM, pyatspi.ROLE_SCROLL_BAR,
}
# A scroll bar is named by what it scrolls in no toolkit; screen readers read its value.
NAME_NOT_NEEDED = {pyatspi.ROLE_SCROLL_BAR}
TEXT_ROLES = {pyatspi.ROLE_LABEL, pyatspi.ROLE_STATIC, pyatspi.ROLE_STATUS_BAR,
              pyatspi.ROLE_HEADING, pyatspi.ROLE_PARAGRAPH}


def log(*args):
    print(*args, flush=True)


def poll(seconds, probe, step=0.2):
    deadline = time.monotonic() + seconds
    while True:
        try:
            value = probe()
        except Exception:  # the tree changes under a walk; try again
            value = None
        if value:
            return value
        if time.monotonic() >= deadline:
            return None
        time.sleep(step)


def find_app():
    desktop = pyatspi.Registry.getDesktop(0)
    for i in range(desktop.childCount):
        app = desktop.getChildAtIndex(i)
        if app is not None and app.name and "ravelinth" in app.name.lower():
            return app
    return None


def walk(node, depth=0, out=None):
    if out is None:
        out = []
    if node is None or depth > 60:
        return out
    try:
        states = node.getState()
        showing = states.contains(pyatspi.STATE_SHOWING)
        out.append((node, node.getRole(), node.name or "", showing, states))
        count = node.childCount
    except Exception:
        return out
    for i in range(count):
        try:
            child = node.getChildAtIndex(i)
        except Exception:
            continue
        walk(child, depth + 1, out)
    return out


def interactive(entry):
    node, role, _, showing, _ = entry
    if showing and role == pyatspi.ROLE_MENU_BAR:
        # The toolkit gives the bar's titles the bar's own role; they are what opens a menu.
        try:
            return node.parent is not None and node.parent.getRole() == pyatspi.ROLE_MENU_BAR
        except Exception:
            return False
    return showing and role in INTERACTIVE


def census(app, label):
    nodes = walk(app)
    shown = [e for e in nodes if interactive(e)]
    unnamed = [e for e in shown if not e[2].strip() and e[1] not in NAME_NOT_NEEDED]
    log(f"{label}: interactive {len(shown)}, named {len(shown) - len(unnamed)}, "
        f"unnamed {len(unnamed)}")
    for node, role, _, _, _ in unnamed:
        parent = node.parent
        log(f"  unnamed {node.getRoleName()}"
            f" in {parent.getRoleName() if parent else '?'} '{parent.name if parent else ''}'")
    return nodes, unnamed


def by_role_and_name(nodes, roles, pattern):
    rx = re.compile(pattern)
    return [e for e in nodes if e[1] in roles and e[3] and rx.search(e[2])]


def press(node):
    action = node.queryAction()
    for i in range(action.nActions):
        if action.getName(i) in ("press", "Press", "click", "activate"):
            return action.doAction(i)
    return action.nActions > 0 and action.doAction(0)


def main():
    folder, expected = sys.argv[1], int(sys.argv[2])
    report_only = "--report-only" in sys.argv
    failures = []

    app = poll(30, find_app)
    if app is None:
        log("FAIL: the application never appeared on the accessibility bus")
        return 3
    # The first frame's tree: the scanner with its empty state.
    poll(20, lambda: by_role_and_name(walk(app), {pyatspi.ROLE_ENTRY, pyatspi.ROLE_TEXT},
                                      "^Path to scan$"))
    nodes, unnamed = census(app, "before the scan")
    if unnamed:
        failures.append(f"{len(unnamed)} showing interactive elements have no name")

    fields = by_role_and_name(nodes, {pyatspi.ROLE_ENTRY, pyatspi.ROLE_TEXT}, "^Path to scan$")
    if not fields:
        log("FAIL: no path field named 'Path to scan'")
        return 1
    field = fields[0][0]
    typed = False
    try:
        typed = field.queryEditableText().setTextContents(folder)
    except NotImplementedError:
        typed = False
    if not typed:
        # No editable-text interface: give the field the keyboard and type as a user would,
        # after taking out what it holds (Ctrl+A belongs to the file list, not the field).
        field.queryComponent().grabFocus()
        time.sleep(0.3)
        length = field.queryText().characterCount
        pyatspi.Registry.generateKeyboardEvent(0xFF57, None, pyatspi.KEY_SYM)  # End
        for _ in range(length):
            pyatspi.Registry.generateKeyboardEvent(0xFF08, None, pyatspi.KEY_SYM)  # BackSpace
        pyatspi.Registry.generateKeyboardEvent(0, folder, pyatspi.KEY_STRING)
    time.sleep(0.5)
    shown = field.queryText()
    log(f"path field now reads {shown.getText(0, shown.characterCount)!r}")
    time.sleep(0.3)

    scan_buttons = by_role_and_name(walk(app), {pyatspi.ROLE_PUSH_BUTTON}, "^Scan$")
    if not scan_buttons:
        log("FAIL: no button named 'Scan'")
        return 1
    press(scan_buttons[0][0])

    count_rx = re.compile(r"^(\d+) files? • ")
    done_rx = re.compile(r"^Scan complete: ")

    # The status element announces the end; the count beside the list then holds the result.
    def finished():
        nodes = walk(app)
        if not any(e[1] == pyatspi.ROLE_STATUS_BAR and done_rx.search(e[2]) for e in nodes):
            return None
        texts = [e for e in nodes if e[1] in TEXT_ROLES and e[3] and count_rx.search(e[2])]
        return texts or None

    texts = poll(60, finished)
    nodes = walk(app)
    tables = [e for e in nodes if e[1] == pyatspi.ROLE_TABLE and e[3]]
    rows = []
    for table in tables:
        rows += [e for e in walk(table[0]) if e[1] in (pyatspi.ROLE_TABLE_ROW,
                                                      pyatspi.ROLE_LIST_ITEM) and e[3]]
    listed = int(count_rx.search(texts[0][2]).group(1)) if texts else expected
    log(f"after the scan: count text {texts[0][2]!r}" if texts else
        "after the scan: no count text")
    log(f"table rows exposed {len(rows)}, files listed {listed}, expected {expected}")
    for node, _, name, _, _ in rows:
        log(f"  row: {name}")
    if not texts:
        failures.append("no status announced the end of the scan with the count exposed as text")
    if listed != expected:
        failures.append(f"the list holds {listed} files, expected {expected}")
    if len(rows) < listed:
        failures.append(f"the table exposes {len(rows)} rows for {listed} files")

    # The keys move the focus from row to row, so each move is heard.
    if len(rows) >= 2:
        rows[0][0].queryComponent().grabFocus()
        time.sleep(0.3)
        pyatspi.Registry.generateKeyboardEvent(0xFF54, None, pyatspi.KEY_SYM)  # Down
        second = rows[1][2]

        def moved():
            for e in walk(app):
                if e[1] == pyatspi.ROLE_TABLE_ROW and e[2] == second:
                    return e[4].contains(pyatspi.STATE_FOCUSED) and e[4].contains(pyatspi.STATE_SELECTED)
            return False

        if not poll(5, moved):
            failures.append("Down did not move the focus and the selection to the second row")
    _, unnamed = census(app, "after the scan")
    if unnamed:
        failures.append(f"{len(unnamed)} showing interactive elements have no name after the scan")

    # The dashboard, reached by its tab: cards, the ring and the figures.
    tabs = by_role_and_name(walk(app), {pyatspi.ROLE_PAGE_TAB}, "^Dashboard$")
    if tabs:
        press(tabs[0][0])
        ring = poll(10, lambda: by_role_and_name(walk(app), {pyatspi.ROLE_PROGRESS_BAR},
                                                 r"^\d+% used$"))
        if not ring:
            failures.append("the dashboard shows no ring read as '<n>% used'")
        nodes, unnamed = census(app, "dashboard")
        if unnamed:
            failures.append(f"{len(unnamed)} showing interactive elements on the dashboard have no name")
        # The last card may lie below the fold, not showing but there.
        for title in ("Disk Usage", "Scan Summary", "Categories", "Potential Savings"):
            if not any(e[2] == title for e in nodes):
                failures.append(f"the dashboard does not expose '{title}'")
    else:
        failures.append("no page tab named 'Dashboard'")

    # The tour, opened from the header: it takes the focus on its button and names its page.
    helps = by_role_and_name(walk(app), {pyatspi.ROLE_PUSH_BUTTON}, "^Show Tutorial$")
    if helps:
        press(helps[0][0])
        pages = poll(10, lambda: [e for e in walk(app) if e[3] and e[2] == "Page 1 of 5"])
        if not pages:
            failures.append("the tour does not say 'Page 1 of 5'")
        focused = poll(5, lambda: [e for e in walk(app) if e[3] and e[1] == pyatspi.ROLE_PUSH_BUTTON
                                   and e[4].contains(pyatspi.STATE_FOCUSED)])
        if not focused or focused[0][2] != "Next":
            failures.append("the tour opened without the focus on its 'Next' button")
        _, unnamed = census(app, "tutorial")
        if unnamed:
            failures.append(f"{len(unnamed)} showing interactive elements in the tour have no name")
        pyatspi.Registry.generateKeyboardEvent(0xFF1B, None, pyatspi.KEY_SYM)  # Escape
    else:
        failures.append("no button named 'Show Tutorial'")

    for failure in failures:
        log("FAIL: " + failure)
    if failures:
        log("--- the tree as exposed")
        for node, role, name, showing, _ in walk(app):
            if showing:
                log(f"  {node.getRoleName()}: {name!r}")
    if report_only:
        return 0
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
