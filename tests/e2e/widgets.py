#!/usr/bin/python3
"""Reads the program's widgets through the desktop's accessibility bus (AT-SPI), so that an
end-to-end script can check what a label shows and find where to click with xdotool.

  widgets.py text-after CAPTION       the text of the widget that follows the label CAPTION
  widgets.py center ROLE NAME         "x y" of the middle of the first ROLE named NAME
  widgets.py names                    every role and name, one per line (for failure output)

Exits with status 1 when the widget is not there (yet)."""
import sys

import pyatspi

APP_NAME = "VendrakoTimer"


def nodes():
    """Every accessible of the program, depth first, in the order the windows lay them out."""
    desktop = pyatspi.Registry.getDesktop(0)
    stack = [app for app in desktop if app is not None and app.name == APP_NAME]
    stack.reverse()
    while stack:
        node = stack.pop()
        yield node
        children = [child for child in node if child is not None]
        stack.extend(reversed(children))


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


def main(args):
    try:
        if args[:1] == ["text-after"] and len(args) == 2:
            result = text_after(args[1])
        elif args[:1] == ["center"] and len(args) == 3:
            result = center(args[1], args[2])
        elif args == ["names"]:
            result = "\n".join(f"{n.getRoleName()}: {n.name}" for n in nodes())
        else:
            print(__doc__, file=sys.stderr)
            return 2
    except Exception as error:  # the program may be between windows; the caller tries again
        print(f"widgets.py: {error}", file=sys.stderr)
        return 1
    if result is None:
        return 1
    print(result)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
