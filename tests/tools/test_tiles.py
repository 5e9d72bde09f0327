# SPDX-License-Identifier: MIT
import unittest

import contenttool
import grid
import netCDF4
import numpy as np
import shorelines
import tiles


def line_length(points):
    return np.hypot(*np.diff(points.astype(float), axis=0).T).sum()


class GridTest(unittest.TestCase):
    def test_names_a_cell_by_its_south_west_corner(self):
        helsinki = grid.number(150, 24)
        valparaiso = grid.number(56, 360 - 72)

        self.assertEqual(grid.name(helsinki), "n60e024")
        self.assertEqual(grid.name(valparaiso), "s34w072")
        self.assertEqual(grid.corner(valparaiso), (-34, -72))

    def test_counts_columns_on_over_the_date_line(self):
        self.assertEqual(grid.number(10, 365), grid.number(10, 5))
        self.assertEqual(grid.number(10, -1), grid.number(10, 359))

    def test_gives_every_cell_its_own_name_in_a_hexadecimal_folder(self):
        cells = range(grid.ROWS * grid.COLUMNS)

        self.assertEqual(len({grid.name(cell) for cell in cells}), len(cells))
        for cell in cells:
            self.assertRegex(grid.path(cell), r"^[0-9a-f]/[0-9a-f]/[ns]\d\d[ew]\d{3}\.cdt$")


class ShoreLinesTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = contenttool.shore_lines()
        cls.cells = shorelines.read_cells(cls.folder)

    def test_keeps_the_whole_length_of_all_rivers(self):
        whole = 0.0
        with netCDF4.Dataset(self.folder / "binned_river_h.nc") as data:
            data.set_auto_maskandscale(False)
            longitude, latitude = (
                data[f"Relative_{axis}_from_SW_corner_of_bin"][:].view(np.uint16).astype(float)
                for axis in ("longitude", "latitude")
            )
            starts = data["Id_of_first_point_in_a_segment"][1:]
        steps = np.hypot(np.diff(longitude), np.diff(latitude)) * 2
        steps[starts - 1] = 0  # from one segment's end to the next one's start
        whole = steps.sum()

        cut = sum(
            line_length(points)
            for lines in self.cells.values()
            for kind, _, points in lines
            if kind == shorelines.RIVER
        )

        # Cut points are rounded to a 65535th of a degree.
        self.assertAlmostEqual(cut / whole, 1.0, places=5)

    def test_knows_the_coast_and_the_border_where_finland_meets_sweden(self):
        tornio = self.cells[grid.number(90 + 65, 24)]

        kinds = {kind for kind, _, _ in tornio}

        self.assertEqual(kinds, {shorelines.SHORE, shorelines.RIVER, shorelines.BORDER})

    def test_finds_no_shore_in_the_middle_of_the_ocean(self):
        self.assertNotIn(grid.number(90 - 50, 360 - 130), self.cells)

    def test_continues_a_cut_line_at_the_same_height_in_the_next_cell(self):
        # Columns 24 and 25 share a bin, so that the line between them is a cut of ours.
        row = 90 + 60
        west, east = self.cells[grid.number(row, 24)], self.cells[grid.number(row, 25)]

        leaving = self.heights_at(west, 65535)
        arriving = self.heights_at(east, 0)

        self.assertTrue(leaving)
        self.assertEqual(leaving, arriving)

    def heights_at(self, lines, edge):
        """Kind and height of all line ends at the west (0) or east (65535) side of a cell."""
        ends = [(kind, end) for kind, _, points in lines for end in (points[0], points[-1])]
        return sorted((kind, int(end[1])) for kind, end in ends if end[0] == edge)


class TileFormatTest(unittest.TestCase):
    lines = [
        (1, 1, np.array([[0, 0], [65535, 65535], [3, 4]])),
        (1, 1, np.array([[5, 6], [7, 8]])),
        (2, 4, np.array([[9, 10], [11, 12]])),
    ]

    def test_reads_back_what_was_written(self):
        data = tiles.encode(grid.number(150, 24), self.lines)

        bounds, lines = tiles.decode(data)

        self.assertEqual(bounds, (60, 24, 61, 25))
        self.assertEqual([line[:2] for line in lines], [line[:2] for line in self.lines])
        for read, written in zip(lines, self.lines):
            np.testing.assert_array_equal(read[2], written[2])

    def test_has_the_documented_bytes(self):
        data = tiles.encode(grid.number(56, 288), self.lines[2:])

        self.assertEqual(
            data.hex(" "),
            "56 54 49 4c 01 00 01 00 de ff b8 ff df ff b9 ff"  # header, 34 S 72 W
            " 02 04 00 00 01 00 00 00"  # one line of rivers, level 4
            " 02 00 00 00 09 00 0a 00 0b 00 0c 00",
        )

    def test_writes_a_valid_tile_for_a_cell_without_lines(self):
        bounds, lines = tiles.decode(tiles.encode(0, []))

        self.assertEqual(bounds, (-90, 0, -89, 1))
        self.assertEqual(lines, [])

    def test_refuses_every_tile_that_is_cut_off(self):
        data = tiles.encode(grid.number(150, 24), self.lines)

        for length in range(len(data)):
            with self.assertRaises(ValueError, msg=f"{length} bytes"):
                tiles.decode(data[:length])

    def test_refuses_foreign_and_longer_files(self):
        data = tiles.encode(grid.number(150, 24), self.lines)

        for damaged in (b"PK" + data[2:], data + b"\0", data[:4] + b"\2" + data[5:]):
            with self.assertRaises(ValueError):
                tiles.decode(damaged)

    def test_draws_more_coarsely_between_the_same_ends(self):
        river = np.column_stack([np.arange(20), np.arange(20)])

        ((kind, level, points),) = tiles.coarser([(2, 1, river), (1, 1, river[:5])])

        self.assertEqual((kind, level), (2, 1))
        self.assertEqual(points[:, 0].tolist(), [0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 19])
