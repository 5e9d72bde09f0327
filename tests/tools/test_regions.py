# SPDX-License-Identifier: MIT
import unittest

import contenttool
import geometry
import grid
import names
import regions


def cell(latitude, longitude):
    return grid.number(90 + latitude, longitude)


class RegionsTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        chart = contenttool.chart()
        cls.polygons = geometry.Polygons(chart / "dcw-gmt.nc")
        cls.parts = regions.read_world_parts(chart / "dcw-collections.txt")
        known = names.Names(contenttool.lists(), contenttool.locales())
        cls.builder = regions.TreeBuilder(known, cls.polygons, cls.parts)
        cls.world = cls.builder.build(sorted(cls.builder.available()))
        cls.by_id = {
            region.id: region for top in cls.world for region in top.everything()
        }

    def path_to(self, wanted):
        """The ids from the top of the world's tree to a region."""
        def search(region):
            if region.id == wanted:
                return [wanted]
            below = next(filter(None, map(search, region.children)), None)
            return below and [region.id, *below]
        return next(filter(None, map(search, self.world)))

    def test_covers_the_cells_that_the_land_touches(self):
        finland = self.polygons.cells("FI")

        self.assertIn(cell(60, 24), finland)  # Helsinki, on the coast
        self.assertIn(cell(62, 26), finland)  # far from every border
        self.assertNotIn(cell(59, 18), finland)  # Stockholm
        self.assertNotIn(cell(63, 33), finland)  # beyond the eastern border

    def test_covers_land_on_both_sides_of_the_date_line(self):
        russia = self.polygons.cells("RU")

        self.assertIn(cell(66, 179), russia)
        self.assertIn(cell(66, -175), russia)

    def test_gives_the_smallest_country_a_cell(self):
        self.assertEqual(self.polygons.cells("VA"), {cell(41, 12)})

    def test_lets_neighbours_share_the_cells_of_their_border(self):
        self.assertIn(cell(66, 23), self.polygons.cells("FI") & self.polygons.cells("SE"))

    def test_lists_every_country_that_has_a_polygon_once(self):
        listed = [r.id for top in self.world for r in top.everything()]

        self.assertEqual(len(listed), len(set(listed)))
        self.assertEqual(len(self.builder.available()), 249)
        self.assertTrue(self.builder.available() - {"TW"} <= set(listed))

    def test_nests_countries_in_parts_of_the_world_and_subdivisions_in_countries(self):
        self.assertEqual(self.path_to("FI"), ["UN150", "UN154", "FI"])
        self.assertEqual(self.path_to("US-TX"), ["UN019", "UN021", "US", "US-TX"])
        self.assertEqual(self.path_to("AQ"), ["AQ"])

    def test_lists_places_that_are_both_country_and_subdivision_as_countries(self):
        self.assertNotIn("CN-HK", self.by_id)
        self.assertIn(cell(22, 114), self.by_id["HK"].cells)

    def test_keeps_the_number_that_clients_know_for_one_region(self):
        self.assertNotIn("TW", self.by_id)
        self.assertEqual(self.by_id["411"].name, "Taiwan")

    def test_uses_plain_identifiers(self):
        for region in self.by_id.values():
            self.assertRegex(region.id, r"^[A-Z0-9]+(-[A-Z0-9]+)?$")

    def test_gives_a_region_the_cells_of_all_below_it(self):
        for region in self.by_id.values():
            self.assertTrue(region.cells, region.id)
            for child in region.children:
                self.assertTrue(child.cells <= region.cells, child.id)

    def test_leaves_out_parts_of_the_world_that_would_hold_the_same_countries(self):
        (europe,) = self.builder.build(["FI", "SE"])

        self.assertEqual(europe.name, "Europe")
        self.assertEqual([region.id for region in europe.children], ["FI", "SE"])

    def test_orders_regions_by_name_without_regard_to_accents(self):
        (europe,) = self.builder.build(["EE", "AX", "FI"])

        self.assertEqual([region.id for region in europe.children], ["AX", "EE", "FI"])
