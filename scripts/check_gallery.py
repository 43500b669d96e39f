#!/usr/bin/env python3
"""Checks the gallery's page generator on model folders laid out as run.sh --gallery writes them."""

import os
import re
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import gallery  # noqa: E402


def make_model(root, slug, name, shots, status="0", log=""):
    folder = os.path.join(root, slug)
    os.makedirs(os.path.join(folder, "shots"))
    for path, text in (("model", name), ("status", status), ("run.log", log)):
        with open(os.path.join(folder, path), "w") as f:
            f.write(text + "\n")
    for shot in shots:
        open(os.path.join(folder, "shots", shot), "wb").close()
    return folder


def rows(page):
    """Per body row, the class of each cell after the model's name ('' for a picture)."""
    body = page.split("<tbody>")[1]
    return [re.findall(r'<td( class="none")?>', row) for row in body.split("</tr>")[:-1]]


class GalleryPage(unittest.TestCase):
    def test_pictures_land_in_their_page_column_and_missing_pages_stay_blank(self):
        with tempfile.TemporaryDirectory() as root:
            full = make_model(root, "A_CUT", "A CUT",
                              ["00_Paper-Quality.png", "01_Print.png", "02_Cut-Move.png",
                               "03_Admin.png"],
                              log="capabilities: cash drawer, cutter\r")
            bare = make_model(root, "B", "B", ["00_Paper-Quality.png", "01_Print.png"],
                              log="capabilities: none")
            page = gallery.render([gallery.Model(full), gallery.Model(bare)], root)
        columns = [gallery.DRIVER_COLUMN] + gallery.PLUGIN_PAGES
        self.assertEqual(columns, re.findall(r"<th>([^<]*)</th>", page)[1:])
        shown = [[cls == "" for cls in row] for row in rows(page)]
        self.assertEqual([c in ("Driver page", "Print", "Cut/Move", "Admin") for c in columns],
                         shown[0])
        self.assertEqual([c in ("Driver page", "Print") for c in columns], shown[1])
        self.assertIn('href="A_CUT/shots/02_Cut-Move.png"', page)
        self.assertIn("<span>cash drawer</span><span>cutter</span>", page)
        self.assertIn("no optional features", page)

    def test_a_failed_run_links_its_log_and_an_unknown_page_gets_its_own_column(self):
        with tempfile.TemporaryDirectory() as root:
            folder = make_model(root, "C", "C", ["00_Paper-Quality.png", "01_New_page.png"],
                                status="3")
            page = gallery.render([gallery.Model(folder)], root)
        self.assertIn('host failed (exit 3): <a href="C/run.log">', page)
        self.assertEqual("New page", re.findall(r"<th>([^<]*)</th>", page)[-1])
        self.assertEqual(len(gallery.PLUGIN_PAGES) + 2, len(rows(page)[0]))


if __name__ == "__main__":
    unittest.main()
