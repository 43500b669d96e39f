#!/usr/bin/env python3
"""Writes the gallery's index.html: one row per model, one column per page of the sheet.

Each model's folder, written by `run.sh --gallery`, holds `model` (the name), `status` (the
host's exit code), `run.log` (its output) and `shots/` (the host's NN_<title>.png, 00 being
the driver's own page). `print_dialog.png` beside index.html, when there, is Wine's print dialog
with the pages opened from its Properties button (kivprintdlg).
"""

import argparse
import datetime
import html
import os
import re
import sys

DRIVER_COLUMN = "Driver page"
# The plug-in's pages in the order the sheet shows them.
PLUGIN_PAGES = ["Print", "Print adjust", "Cut/Move", "Accessories", "Peripherals",
                "Presentation", "Watermark", "Coupon", "Logos", "Console", "Admin", "Version"]


def file_name_part(title):
    """The <title> part of the file kivhost writes for a page: it cannot hold / or :."""
    name = "".join("_" if c == " " else "-" if ord(c) < 32 or c in '\\/:*?"<>|' else c
                   for c in title)
    return name or "page"


class Model:
    def __init__(self, folder):
        self.folder = os.path.abspath(folder)
        self.name = read_text(os.path.join(folder, "model")).strip() or os.path.basename(folder)
        status = read_text(os.path.join(folder, "status")).strip()
        self.status = int(status) if status.lstrip("-").isdigit() else None
        log = read_text(os.path.join(folder, "run.log")).replace("\r", "")
        found = re.search(r"^capabilities:[ \t]*(.*)$", log, re.M)
        self.capabilities = [w.strip() for w in found.group(1).split(",") if w.strip()] \
            if found else []
        shots = os.path.join(folder, "shots")
        self.shots = sorted(f for f in os.listdir(shots) if f.endswith(".png")) \
            if os.path.isdir(shots) else []


def read_text(path):
    try:
        with open(path, encoding="utf-8", errors="replace") as f:
            return f.read()
    except FileNotFoundError:
        return ""


def columns_of(models):
    """The column titles and, per model, {column: screenshot file}. A page the gallery does
    not know yet gets a column of its own after the known ones, named after its file."""
    by_file_name = {file_name_part(t): t for t in PLUGIN_PAGES}
    extra = []
    cells = []
    for model in models:
        row = {}
        for shot in model.shots:
            found = re.fullmatch(r"(\d+)_(.*)\.png", shot)
            if not found:
                continue
            if int(found.group(1)) == 0:
                column = DRIVER_COLUMN
            else:
                column = by_file_name.get(found.group(2), found.group(2).replace("_", " "))
                if column not in PLUGIN_PAGES and column not in extra:
                    extra.append(column)
            row[column] = shot
        cells.append(row)
    return [DRIVER_COLUMN] + PLUGIN_PAGES + extra, cells


STYLE = """
:root { --thumb: clamp(72px, calc((100vw - 330px) / 13 - 10px), 200px); }
body { font: 14px/1.4 "DejaVu Sans", "Liberation Sans", Arial, sans-serif; margin: 0;
       color: #1d2733; background: #f4f6f8; }
header { padding: 18px 24px 8px; }
h1 { font-size: 22px; margin: 0 0 4px; }
.meta { color: #5b6775; margin: 0 0 10px; }
.legend { display: flex; flex-wrap: wrap; gap: 6px 24px; margin: 0; padding: 0;
          list-style: none; color: #364250; }
.legend .swatch { display: inline-block; width: 14px; height: 14px; vertical-align: -2px;
                  margin-right: 6px; border: 1px solid #b8c2cc; background: #fff; }
.legend .swatch.none { background: repeating-linear-gradient(45deg, #eef1f4 0 4px,
                                                              #e2e7ec 4px 8px); }
.legend .swatch.failed { background: #fde8e6; border-color: #d9534f; }
table { border-collapse: separate; border-spacing: 0; margin: 8px 24px 24px; }
th, td { border-bottom: 1px solid #d5dbe1; padding: 5px; vertical-align: top; }
thead th { position: sticky; top: 0; z-index: 1; background: #2f3e4e; color: #fff;
           font-weight: 600; font-size: 12px; text-align: center; white-space: nowrap; }
thead th:first-child { text-align: left; }
tbody th { text-align: left; font-weight: normal; background: #fff; width: 210px; }
tbody th .name { font-weight: 700; font-size: 15px; }
tbody th .flags { color: #4a5866; font-size: 12px; margin-top: 4px; }
tbody th .flags span { display: inline-block; background: #e3ecf5; border-radius: 3px;
                       padding: 0 5px; margin: 2px 3px 0 0; }
tbody th .pages { color: #7a8794; font-size: 12px; margin-top: 4px; }
tbody tr.failed th { background: #fde8e6; }
tbody th .error { color: #b52b27; font-size: 12px; margin-top: 4px; }
td { background: #fff; text-align: center; }
td.none { background: repeating-linear-gradient(45deg, #f5f7f9 0 6px, #edf0f3 6px 12px); }
td img { display: block; width: var(--thumb); height: calc(var(--thumb) * 0.955);
         object-fit: contain; border: 1px solid #c5ced7; background: #ece9d8; }
td a:hover img { outline: 2px solid #2f7bd1; }
footer { color: #7a8794; font-size: 12px; padding: 0 24px 24px; }
"""


def render(models, index_dir, seconds=None, now=None, print_dialog=None):
    columns, cells = columns_of(models)
    now = now or datetime.datetime.now()
    e = html.escape
    out = ["<!DOCTYPE html>", '<html lang="en"><head><meta charset="utf-8">',
           "<title>KivUI: the pages of every model</title>", f"<style>{STYLE}</style>",
           "</head><body>", "<header>", "<h1>KivUI: the pages of every model</h1>"]
    shots = sum(len(c) for c in cells)
    meta = f"{now:%Y-%m-%d %H:%M} &middot; {len(models)} models &middot; {shots} pages"
    if seconds is not None:
        meta += f" &middot; captured in {seconds} s"
    out.append(f'<p class="meta">{meta}</p>')
    out.append('<ul class="legend">'
               "<li>One row per model, one column per page of its printing preferences, "
               "in the sheet's order; click a picture for full size.</li>"
               '<li><span class="swatch none"></span>the model has no such page</li>'
               '<li><span class="swatch failed"></span>the host failed for this model '
               "(its log is linked)</li>"
               "<li>Beside each name: what the model supports, as its settings record "
               "tells it.</li>"
               "<li>Admin is shown because the sheet was opened in admin mode "
               "(Ctrl+Shift and a click on the Version page's picture).</li></ul>")
    if print_dialog:
        href = e(os.path.relpath(print_dialog, index_dir).replace(os.sep, "/"))
        out.append('<p class="meta">From an application: Wine\'s print dialog, Properties '
                   f'(the same pages through the spooler).<br><a href="{href}">'
                   f'<img src="{href}" alt="print dialog" style="max-width:480px"></a></p>')
    out.append("</header>")
    out.append("<table><thead><tr><th>Model</th>")
    out += [f"<th>{e(c)}</th>" for c in columns]
    out.append("</tr></thead><tbody>")
    for model, row in zip(models, cells):
        base = os.path.relpath(model.folder, index_dir).replace(os.sep, "/")
        failed = model.status != 0
        out.append(f'<tr{" class=failed" if failed else ""}><th>'
                   f'<div class="name">{e(model.name)}</div>')
        if model.capabilities == ["none"]:
            out.append('<div class="flags">no optional features</div>')
        elif model.capabilities:
            out.append('<div class="flags">' +
                       "".join(f"<span>{e(w)}</span>" for w in model.capabilities) + "</div>")
        out.append(f'<div class="pages">{len(row)} pages</div>')
        if failed:
            why = "no exit status" if model.status is None else f"exit {model.status}"
            out.append(f'<div class="error">host failed ({why}): '
                       f'<a href="{e(base)}/run.log">log</a></div>')
        out.append("</th>")
        for column in columns:
            shot = row.get(column)
            if shot is None:
                out.append('<td class="none"></td>')
                continue
            href = e(f"{base}/shots/{shot}")
            alt = e(f"{model.name}: {column}")
            out.append(f'<td><a href="{href}"><img src="{href}" alt="{alt}" title="{alt}" '
                       '></a></td>')
        out.append("</tr>")
    out.append("</tbody></table>")
    out.append("<footer>Written by <code>bash scripts/run.sh --gallery</code> from the host's "
               "screenshots (kivhost under Wine).</footer></body></html>")
    return "\n".join(out) + "\n"


def main(argv):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("index", help="the index.html to write")
    parser.add_argument("folders", nargs="+", help="one folder per model, in row order")
    parser.add_argument("--seconds", type=int, help="how long the capture took")
    args = parser.parse_args(argv)
    models = [Model(folder) for folder in args.folders]
    index_dir = os.path.dirname(os.path.abspath(args.index))
    dialog = os.path.join(index_dir, "print_dialog.png")
    with open(args.index, "w", encoding="utf-8") as f:
        f.write(render(models, index_dir, args.seconds,
                       print_dialog=dialog if os.path.exists(dialog) else None))
    missing = [m.name for m in models if not m.shots]
    print(f"gallery: {args.index} ({len(models)} models"
          + (f"; no pictures for {', '.join(missing)}" if missing else "") + ")")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
