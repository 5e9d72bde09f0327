# SPDX-License-Identifier: MIT
"""The grid of map cells: one cell is one degree wide and one degree high.

A cell is known by its number, counted from the south-west corner of the world (180 W is column
180 of a row that begins at Greenwich, as in the shore-line data). Its name tells the cell's own
south-west corner ("n60e024"), so that a tile found on a device can be placed without a table.
"""

COLUMNS = 360
ROWS = 180


def number(row, column):
    """The number of a cell; works on whole numbers and on numpy arrays of them."""
    return row * COLUMNS + column % COLUMNS


def corner(cell):
    """The south-west corner of a cell as (latitude, longitude) in degrees, -180 to 179."""
    row, column = divmod(cell, COLUMNS)
    return row - ROWS // 2, column if column < COLUMNS // 2 else column - COLUMNS


def name(cell):
    """The tile's base name. Unique over all cells: content files keep tiles by base name."""
    latitude, longitude = corner(cell)
    vertical = f"{'s' if latitude < 0 else 'n'}{abs(latitude):02d}"
    return vertical + f"{'w' if longitude < 0 else 'e'}{abs(longitude):03d}"


def path(cell):
    """The tile's path below the tile folder, such as "a/3/n60e024.cdt".

    The two folders come from the low byte of the number, which spreads the cells of a region
    evenly and never changes.
    """
    first, second = f"{cell % 256:02x}"
    return f"{first}/{second}/{name(cell)}.cdt"
