"""What gdb asks a pretty-printer for. Nothing that lies in memory may raise anything here."""

import gdb

from velum_gdb.memory import Broken

# What may come of memory that isn't what it should be, or is nested deeper than Python goes.
PROBLEMS = (gdb.error, Broken, RecursionError)


class Printer:
    def __init__(self, text, hint=None):
        self.text, self.hint = text, hint

    def to_string(self):
        return self.text

    def display_hint(self):
        return self.hint


class Parts(Printer):
    """Has names and values behind its text."""

    def __init__(self, text, parts, hint=None):
        super().__init__(text, hint)
        self.parts = parts

    def children(self):
        try:
            yield from self.parts()
        except PROBLEMS as why:
            if self.hint == "map":
                yield "key", "broken"
            yield "broken", complaint(why)


def array(text, elements):
    return Parts(text, lambda: ((f"[{i}]", element) for i, element in enumerate(elements)), "array")


def complaint(why):
    return f"<{why}>"


def plural(count, one, many):
    return f"{count} {one if count == 1 else many}"
