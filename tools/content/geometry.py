# SPDX-License-Identifier: MIT
"""Decides which map cells a region covers, from the polygons of the Digital Chart of the World.

The polygons of gmt-dcw are stored as 16-bit offsets between a smallest and a largest coordinate
of the region. A longitude of 65535 is no point: it starts the next ring.
"""

import netCDF4
import numpy as np

import grid

RING_MARK = 65535
# Degrees between the points that an edge is followed by. An edge that cuts less than this off
# a cell's corner does not make the cell part of the region.
STEP = 0.02


class Polygons:
    """Gives the cells of a region by its code, "FI" or "AUNSW"."""

    def __init__(self, file):
        self._data = netCDF4.Dataset(file)
        self._data.set_auto_maskandscale(False)

    def has(self, code):
        """Whether there is a polygon for the region."""
        return f"{code}_lon" in self._data.variables

    def cells(self, code):
        """The numbers of all cells that the region's land touches, at least one."""
        starts, ends = self._edges(code)
        return _touched(starts, ends) | _inside(starts, ends)

    def _edges(self, code):
        """All edges of all rings as two arrays of (longitude, latitude) in degrees."""
        longitudes = self._data.variables[f"{code}_lon"]
        latitudes = self._data.variables[f"{code}_lat"]
        marks = np.flatnonzero(longitudes[:] == RING_MARK)
        points = np.column_stack([_degrees(longitudes), _degrees(latitudes)])
        rings = [ring[1:] for ring in np.split(points, marks) if len(ring) > 1]
        starts = np.concatenate(rings)
        # Rings are closed here whether or not the file repeats their first point.
        ends = np.concatenate([np.roll(ring, -1, axis=0) for ring in rings])
        return starts, ends


def _degrees(variable):
    return variable[:] / variable.getncattr("scale") + variable.getncattr("min")


def _numbers(longitudes, latitudes):
    rows = np.floor(latitudes).astype(int) + grid.ROWS // 2
    columns = np.floor(longitudes).astype(int)
    return grid.number(np.clip(rows, 0, grid.ROWS - 1), columns)


def _touched(starts, ends):
    """The cells that the outline runs through."""
    counts = np.ceil(np.abs(ends - starts).max(axis=1) / STEP).astype(int) + 1
    edges = np.repeat(np.arange(len(counts)), counts)
    steps = np.arange(len(edges)) - np.repeat(np.cumsum(counts) - counts, counts)
    share = (steps / counts[edges])[:, None]
    points = starts[edges] + share * (ends - starts)[edges]
    return set(_numbers(points[:, 0], points[:, 1]).tolist())


def _inside(starts, ends):
    """The cells whose centre lies in the region, row by row, by counting crossed edges."""
    cells = set()
    first, last = np.floor(starts[:, 1].min()), np.floor(starts[:, 1].max())
    for row in np.arange(first, last + 1):
        centre = row + 0.5
        crossed = (starts[:, 1] <= centre) != (ends[:, 1] <= centre)
        begin, end = starts[crossed], ends[crossed]
        share = (centre - begin[:, 1]) / (end[:, 1] - begin[:, 1])
        crossings = np.sort(begin[:, 0] + share * (end[:, 0] - begin[:, 0]))
        for west, east in zip(crossings[0::2], crossings[1::2]):
            columns = np.arange(np.ceil(west - 0.5), np.ceil(east - 0.5))
            cells.update(_numbers(columns, np.full(len(columns), row)).tolist())
    return cells
