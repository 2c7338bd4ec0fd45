#!/usr/bin/python3
# Reads the program's widgets through the desktop's accessibility bus (AT-SPI), so that an
# end-to-end script can check what a label shows and find where to click with xdotool.
#
#   widgets.py text-after CAPTION       the text of the widget that follows the label CAPTION
#   widgets.py center ROLE NAME         "x y" of the middle of the first ROLE named NAME
#   widgets.py names                    every role and name, one per line (for failure output)
#
# Exits with status 1 when the widget is not there (yet), 2 on a wrong command line.
import sys

import pyatspi


def nodes():
    """Every accessible of the program, depth first, in the order the windows lay them out."""
    stack = [app for app in reversed(list(pyatspi.Registry.getDesktop(0)))
             if app is not None and app.name == "VendrakoTimer"]
    while stack:
        node = stack.pop()
        yield node
        stack.extend(reversed([child for child in node if child is not None]))


def text_after(caption):
    found = False
    for node in nodes():
        if found:
            return node.name
        found = node.getRoleName() == "label" and node.name == caption
    return None


def center(role, name):
    for node in nodes():
        if node.getRoleName() == role and node.name == name:
            box = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
            if box.width > 0 and box.height > 0:
                return f"{box.x + box.width // 2} {box.y + box.height // 2}"
    return None


def names():
    return "\n".join(f"{node.getRoleName()}: {node.name}" for node in nodes())


# Each command with the number of arguments it takes.
COMMANDS = {"text-after": (text_after, 1), "center": (center, 2), "names": (names, 0)}


def main(args):
    command, count = COMMANDS.get(args[0] if args else "", (None, -1))
    if command is None or len(args) != count + 1:
        print("usage: widgets.py text-after CAPTION | center ROLE NAME | names", file=sys.stderr)
        return 2
    try:
        result = command(*args[1:])
    except Exception as error:  # the program may be between windows; the caller tries again
        print(f"widgets.py: {error}", file=sys.stderr)
        return 1
    if result is None:
        return 1
    print(result)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
