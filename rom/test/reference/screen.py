"""The screen's 24 rows of text."""

from faults import Unsettled

ROWS = 24


class Screen:
    """A full row goes on in the next one with its next character; a new line directly behind it leaves no row empty."""

    def __init__(self, width):
        self.width = width
        self.clear()

    def clear(self):
        self.rows = [[" "] * self.width for _ in range(ROWS)]
        self.row = self.column = 0

    def newline(self):
        self.column = 0
        self.row += 1
        if self.row == ROWS:
            self.row = ROWS - 1
            self.rows = self.rows[1:] + [[" "] * self.width]

    def write(self, text):
        for character in text:
            if self.column == self.width:
                self.newline()
            self.rows[self.row][self.column] = character
            self.column += 1

    def fresh(self):
        """To the beginning of a row, unless the cursor is there."""
        if self.column:
            self.newline()

    def tab(self, column):
        column %= self.width
        if self.column == self.width and column == 0:
            raise Unsettled("TAB(0) behind a full row")
        if self.column > column:
            self.newline()
        self.column = column

    def comma(self):
        self.write(" " * (16 - self.column % 16))

    def locate(self, row, column):
        self.row, self.column = row, column

    def lines(self):
        return ["".join(row).rstrip() for row in self.rows]
