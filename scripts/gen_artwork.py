#!/usr/bin/python3
"""Draws the plug-in's PNG pictures (resource ids 103-126) into resources/png.

Every picture is flat vector artwork drawn at four times its size and scaled down, so edges are
smooth without any font or image file from outside the repository. The output is byte-for-byte
the same on every run (no timestamps, no text chunks), so the checked-in files only change when
a drawing here changes. Run with Debian's python3 and python3-pil:

    /usr/bin/python3 scripts/gen_artwork.py [output-folder]
"""

import math
import os
import sys

try:
    from PIL import Image, ImageDraw
except ImportError:  # pragma: no cover - a clear message beats a traceback here
    sys.exit("gen_artwork: Pillow is missing; install python3-pil (scripts/setup.sh does)")

SS = 4  # supersampling factor

# Palette: a few flat colours shared by every picture.
WHITE = (255, 255, 255)
INK = (55, 71, 79)  # printer bodies, outlines of solid things
INK_LIGHT = (96, 125, 139)
PAPER = (255, 255, 255)
PAPER_EDGE = (120, 144, 156)
LINE = (176, 190, 197)  # printed text lines on paper
BLUE = (30, 136, 229)
BLUE_LIGHT = (187, 222, 251)
RED = (229, 57, 53)
GREEN = (67, 160, 71)
GREEN_LIGHT = (200, 230, 201)
ORANGE = (251, 140, 0)
GREY_LIGHT = (236, 239, 241)
BLACK = (33, 33, 33)


class Pic:
    """A canvas in picture pixels; drawing happens on a supersampled image underneath."""

    def __init__(self, width, height):
        self.w, self.h = width, height
        self.img = Image.new("RGB", (width * SS, height * SS), WHITE)
        self.d = ImageDraw.Draw(self.img)

    @staticmethod
    def _p(v):
        return round(v * SS)

    def _box(self, x0, y0, x1, y1):
        return [self._p(x0), self._p(y0), self._p(x1) - 1, self._p(y1) - 1]

    def rect(self, x0, y0, x1, y1, fill=None, outline=None, width=1.0, radius=0.0):
        w = max(1, self._p(width)) if outline else 0
        box = self._box(x0, y0, x1, y1)
        if radius > 0:
            self.d.rounded_rectangle(box, radius=self._p(radius), fill=fill, outline=outline,
                                     width=w)
        else:
            self.d.rectangle(box, fill=fill, outline=outline, width=w)

    def ellipse(self, x0, y0, x1, y1, fill=None, outline=None, width=1.0):
        w = max(1, self._p(width)) if outline else 0
        self.d.ellipse(self._box(x0, y0, x1, y1), fill=fill, outline=outline, width=w)

    def circle(self, cx, cy, r, fill=None, outline=None, width=1.0):
        self.ellipse(cx - r, cy - r, cx + r, cy + r, fill=fill, outline=outline, width=width)

    def line(self, points, fill, width=1.0, round_caps=True):
        pts = [(self._p(x), self._p(y)) for x, y in points]
        w = max(1, self._p(width))
        self.d.line(pts, fill=fill, width=w, joint="curve")
        if round_caps:
            r = w / 2.0
            for x, y in (pts[0], pts[-1]):
                self.d.ellipse([x - r, y - r, x + r - 1, y + r - 1], fill=fill)

    def poly(self, points, fill=None, outline=None):
        self.d.polygon([(self._p(x), self._p(y)) for x, y in points], fill=fill, outline=outline)

    def arc(self, cx, cy, r, start, end, fill, width=1.0, steps=48):
        """An arc as a polyline; angles in degrees, clockwise from 3 o'clock (screen space)."""
        pts = []
        for i in range(steps + 1):
            a = math.radians(start + (end - start) * i / steps)
            pts.append((cx + r * math.cos(a), cy + r * math.sin(a)))
        self.line(pts, fill, width)
        return pts

    def arrow_head(self, tip, direction_deg, size, fill):
        a = math.radians(direction_deg)
        bx, by = tip[0] - size * math.cos(a), tip[1] - size * math.sin(a)
        px, py = -math.sin(a) * size * 0.6, math.cos(a) * size * 0.6
        self.poly([tip, (bx + px, by + py), (bx - px, by - py)], fill=fill)

    def arrow(self, x0, y0, x1, y1, fill, width=1.5, head=3.5):
        ang = math.degrees(math.atan2(y1 - y0, x1 - x0))
        a = math.radians(ang)
        self.line([(x0, y0), (x1 - head * 0.7 * math.cos(a), y1 - head * 0.7 * math.sin(a))],
                  fill, width)
        self.arrow_head((x1, y1), ang, head, fill)

    def dashed(self, x0, y0, x1, y1, fill, width=1.0, dash=2.0, gap=1.5):
        length = math.hypot(x1 - x0, y1 - y0)
        ux, uy = (x1 - x0) / length, (y1 - y0) / length
        t = 0.0
        while t < length:
            e = min(t + dash, length)
            self.line([(x0 + ux * t, y0 + uy * t), (x0 + ux * e, y0 + uy * e)], fill, width,
                      round_caps=False)
            t = e + gap

    def text_lines(self, x0, x1, ys, width=1.2, color=LINE):
        for i, y in enumerate(ys):
            end = x1 - (i % 3) * (x1 - x0) * 0.18
            self.line([(x0, y), (end, y)], color, width, round_caps=False)

    def page(self, x0, y0, x1, y1, fold=0.0):
        """A sheet of paper with an optional folded corner."""
        if fold > 0:
            self.poly([(x0, y0), (x1 - fold, y0), (x1, y0 + fold), (x1, y1), (x0, y1)], fill=PAPER)
            self.line([(x0, y0), (x1 - fold, y0), (x1, y0 + fold), (x1, y1), (x0, y1), (x0, y0)],
                      PAPER_EDGE, 1.0, round_caps=False)
            self.poly([(x1 - fold, y0), (x1 - fold, y0 + fold), (x1, y0 + fold)], fill=GREY_LIGHT)
            self.line([(x1 - fold, y0), (x1 - fold, y0 + fold), (x1, y0 + fold)], PAPER_EDGE, 0.8)
        else:
            self.rect(x0, y0, x1, y1, fill=PAPER, outline=PAPER_EDGE, width=1.0)

    def receipt(self, x0, y0, x1, y1, teeth=True):
        """A receipt strip whose top edge is torn (zig-zag)."""
        pts = [(x0, y1), (x0, y0 + 1.5)]
        if teeth:
            n = 5
            step = (x1 - x0) / n
            for i in range(n):
                pts.append((x0 + step * (i + 0.5), y0))
                pts.append((x0 + step * (i + 1), y0 + 1.5))
        else:
            pts += [(x1, y0 + 1.5)]
        pts.append((x1, y1))
        self.poly(pts, fill=PAPER)
        self.line(pts, PAPER_EDGE, 1.0, round_caps=False)

    def printer(self, x0, y0, x1, y1, slot=True):
        """A receipt printer seen from the front: dark body, lighter top, paper slot, LED."""
        self.rect(x0, y0, x1, y1, fill=INK, radius=(y1 - y0) * 0.18)
        self.rect(x0 + 1.5, y0 + 1.5, x1 - 1.5, y0 + (y1 - y0) * 0.42, fill=INK_LIGHT,
                  radius=(y1 - y0) * 0.1)
        if slot:
            self.rect(x0 + (x1 - x0) * 0.15, y0 + (y1 - y0) * 0.55, x1 - (x1 - x0) * 0.15,
                      y0 + (y1 - y0) * 0.55 + 1.2, fill=BLACK)
        self.circle(x1 - (x1 - x0) * 0.12, y1 - (y1 - y0) * 0.2, max(0.9, (y1 - y0) * 0.06),
                    fill=GREEN)

    def save(self, path):
        out = self.img.resize((self.w, self.h), Image.LANCZOS)
        # Palette images are a fraction of the size of RGB ones and look the same for flat art.
        out = out.quantize(colors=64, method=Image.Quantize.MEDIANCUT, dither=Image.Dither.NONE)
        out.save(path, format="PNG", optimize=True)


# --- The wordmark "KivUI", drawn with strokes so no font is needed ---------------------------

def wordmark(p, x, y, h, color_kiv, color_ui, stroke):
    """Draws "KivUI" with its top-left corner at (x, y) and cap height h; returns the right end."""
    s = stroke
    cap = h
    xh = h * 0.62  # x-height for the lower-case i and v
    base = y + cap

    # K
    p.line([(x + s / 2, y), (x + s / 2, base)], color_kiv, s, round_caps=False)
    p.line([(x + cap * 0.55, y), (x + s, y + cap * 0.55)], color_kiv, s, round_caps=False)
    p.line([(x + s * 1.6, y + cap * 0.45), (x + cap * 0.6, base)], color_kiv, s, round_caps=False)
    x += cap * 0.6 + s * 0.9
    # i
    p.line([(x + s / 2, base - xh), (x + s / 2, base)], color_kiv, s, round_caps=False)
    p.circle(x + s / 2, y + s * 0.55, s * 0.62, fill=color_kiv)
    x += s + s * 0.9
    # v
    p.line([(x + s * 0.4, base - xh), (x + xh * 0.42 + s * 0.2, base - s * 0.35),
            (x + xh * 0.84, base - xh)], color_kiv, s, round_caps=False)
    x += xh * 0.84 + s * 1.4
    # U
    r = cap * 0.27
    p.line([(x + s / 2, y), (x + s / 2, base - r)], color_ui, s, round_caps=False)
    p.line([(x + 2 * r - s / 2, y), (x + 2 * r - s / 2, base - r)], color_ui, s,
           round_caps=False)
    p.arc(x + r, base - r, r - s / 2, 0, 180, color_ui, s)
    x += 2 * r + s * 0.9
    # I
    p.line([(x + s / 2, y), (x + s / 2, base)], color_ui, s, round_caps=False)
    return x + s


# --- The pictures ----------------------------------------------------------------------------

def version_logo():
    p = Pic(160, 48)
    # Receipt coming out of the printer's top slot.
    p.receipt(9, 3, 31, 22)
    p.text_lines(12, 28, [8, 11, 14, 17], 1.0)
    p.printer(4, 19, 36, 44, slot=False)
    p.rect(9, 19, 31, 21, fill=BLACK)
    end = wordmark(p, 46, 12, 24, INK, BLUE, 4.2)
    # A thin accent rule under the name, as on the printer's own label.
    p.line([(46, 41), (end, 41)], BLUE_LIGHT, 1.4)
    return p


def adjust_offset():
    p = Pic(32, 32)
    p.page(4, 3, 26, 29)
    p.rect(7, 6, 17, 14, outline=LINE, width=1.0)  # where the print was
    p.rect(12, 11, 22, 19, fill=BLUE)  # where it goes
    p.arrow(7, 23, 17, 23, RED, 1.3, 3.0)
    p.arrow(28.5, 6, 28.5, 16, RED, 1.3, 3.0)
    return p


def adjust_crop(top):
    p = Pic(32, 32)
    p.page(6, 2, 26, 30)
    if top:
        p.rect(7, 3, 25, 11, fill=GREY_LIGHT)
        p.text_lines(9, 23, [15, 18, 21, 24, 27])
        p.dashed(3, 11, 29, 11, RED, 1.2)
        p.arrow(16, 9.5, 16, 4, RED, 1.2, 2.8)
    else:
        p.rect(7, 21, 25, 29, fill=GREY_LIGHT)
        p.text_lines(9, 23, [5, 8, 11, 14, 17])
        p.dashed(3, 21, 29, 21, RED, 1.2)
        p.arrow(16, 22.5, 16, 28, RED, 1.2, 2.8)
    return p


def adjust_skip_white():
    p = Pic(32, 32)
    p.page(3, 8, 15, 26)
    p.text_lines(5, 13, [12, 15, 18, 21], 1.0)
    p.page(17, 8, 29, 26)  # the blank page that is skipped
    p.arc(16, 10, 7, 200, 340, BLUE, 1.5)
    p.arrow_head((16 + 7 * math.cos(math.radians(340)), 10 + 7 * math.sin(math.radians(340))),
                 70, 3.0, BLUE)
    p.line([(19, 24), (27, 10)], RED, 1.4)
    return p


def adjust_rotation():
    p = Pic(32, 32)
    p.page(9, 6, 23, 26)
    p.rect(11, 19, 21, 24, fill=BLUE)  # the page's header, upside down
    p.text_lines(11, 21, [10, 13, 16], 1.0)
    p.arc(16, 16, 13, 200, 330, RED, 1.5)
    end = (16 + 13 * math.cos(math.radians(330)), 16 + 13 * math.sin(math.radians(330)))
    p.arrow_head(end, 60, 3.2, RED)
    p.arc(16, 16, 13, 20, 150, RED, 1.5)
    end = (16 + 13 * math.cos(math.radians(150)), 16 + 13 * math.sin(math.radians(150)))
    p.arrow_head(end, 240, 3.2, RED)
    return p


def adjust_reduction():
    p = Pic(32, 32)
    p.page(4, 2, 20, 30)
    p.text_lines(6, 18, [6, 9, 12, 15, 18, 21, 24, 27], 1.0)
    p.arrow(26, 3, 26, 13, BLUE, 1.4, 3.0)
    p.arrow(26, 29, 26, 19, BLUE, 1.4, 3.0)
    p.line([(23, 16), (29, 16)], BLUE, 1.2)
    return p


def cash_drawer():
    p = Pic(48, 48)
    p.rect(5, 14, 43, 30, fill=INK, radius=2)  # cabinet
    p.poly([(3, 30), (45, 30), (45, 42), (3, 42)], fill=INK_LIGHT)  # open drawer front
    p.rect(19, 35, 29, 38, fill=GREY_LIGHT, radius=1)  # handle
    # Notes and coins inside the drawer.
    p.rect(8, 24, 22, 31, fill=GREEN, radius=1)
    p.rect(10, 26, 20, 29, outline=GREEN_LIGHT, width=0.8)
    p.circle(30, 27.5, 3.2, fill=ORANGE)
    p.circle(37, 28, 3.2, fill=ORANGE)
    p.circle(33.5, 24.5, 3.2, fill=(255, 183, 77))
    p.arrow(24, 10, 24, 3, INK, 1.5, 3.5)  # the pulse that pops it open
    return p


def buzzer():
    p = Pic(48, 48)
    p.poly([(8, 19), (15, 19), (25, 10), (25, 38), (15, 29), (8, 29)], fill=INK)
    p.arc(26, 24, 7, -45, 45, BLUE, 2.2)
    p.arc(26, 24, 13, -45, 45, BLUE, 2.2)
    p.arc(26, 24, 19, -42, 42, BLUE_LIGHT, 2.2)
    return p


def print_header():
    p = Pic(48, 48)
    p.receipt(12, 3, 36, 26)
    # A grey ramp turned into dots: the conversion to black and white that the page sets.
    for row in range(3):
        for col in range(5):
            r = 0.5 + col * 0.35
            p.circle(15.5 + col * 4.2, 9.5 + row * 4.2, r, fill=BLACK)
    p.printer(4, 22, 44, 44, slot=False)
    p.rect(12, 22, 36, 24, fill=BLACK)
    return p


def cutter():
    p = Pic(48, 48)
    p.rect(15, 2, 33, 46, fill=PAPER, outline=PAPER_EDGE)
    p.text_lines(18, 30, [6, 9, 12], 1.0)
    p.text_lines(18, 30, [33, 36, 39, 42], 1.0)
    p.dashed(8, 24, 44, 24, RED, 1.3, 2.5, 1.5)
    # Scissors cutting along the line, pointing right.
    p.poly([(11, 21.5), (30, 24.6), (11, 24.8)], fill=INK)
    p.poly([(11, 26.5), (30, 23.4), (11, 23.2)], fill=INK_LIGHT)
    p.circle(7.5, 19, 3.6, outline=INK, width=1.8)
    p.circle(7.5, 29, 3.6, outline=INK, width=1.8)
    p.circle(12, 24, 1.2, fill=GREY_LIGHT)
    return p


def black_mark():
    p = Pic(48, 48)
    p.rect(12, 2, 32, 46, fill=PAPER, outline=PAPER_EDGE)
    p.text_lines(15, 29, [6, 9, 12], 1.0)
    p.text_lines(15, 29, [30, 33, 36], 1.0)
    p.rect(12, 18, 20, 24, fill=BLACK)  # the mark on the back edge of the paper
    p.rect(12, 40, 20, 46, fill=BLACK)
    # The sensor that finds it.
    p.poly([(2, 16), (8, 21), (2, 26)], fill=BLUE)
    p.dashed(8, 21, 12, 21, BLUE, 1.0, 1.2, 1.0)
    p.line([(36, 21), (45, 21)], RED, 1.2)
    p.arrow_head((36, 21), 180, 3.0, RED)
    return p


def continuous_loop():
    p = Pic(48, 48)
    p.printer(4, 4, 44, 22)
    # Paper leaving the slot and hanging in a loop below the printer.
    p.arc(24, 27, 13, 180, 360, PAPER_EDGE, 4.4)
    p.arc(24, 27, 13, 180, 360, PAPER, 2.6)
    p.arc(24, 33, 12, 0, 180, PAPER_EDGE, 4.4)
    p.arc(24, 33, 12, 0, 180, PAPER, 2.6)
    p.line([(11, 27), (12, 33)], PAPER_EDGE, 4.4)
    p.line([(11, 27), (12, 33)], PAPER, 2.6)
    p.arrow(37.5, 27, 37.2, 36, BLUE, 1.5, 3.2)
    return p


def page_to_page():
    p = Pic(48, 48)
    p.rect(4, 8, 36, 20, fill=INK, radius=3)  # presenter bezel
    p.rect(10, 13, 30, 15, fill=BLACK)
    p.rect(12, 14, 28, 36, fill=PAPER, outline=PAPER_EDGE)  # the ticket waiting to be taken
    p.text_lines(14, 26, [22, 25, 28], 1.0)
    # Clock: the presentation time-out.
    p.circle(35, 34, 10, fill=WHITE, outline=BLUE, width=2.2)
    p.line([(35, 34), (35, 27.5)], BLUE, 1.8)
    p.line([(35, 34), (40, 36)], BLUE, 1.8)
    p.circle(35, 34, 1.3, fill=BLUE)
    return p


def watermark():
    p = Pic(48, 48)
    p.page(9, 3, 39, 45, fold=7)
    # The faded mark under the text.
    p.poly([(24, 12), (31, 24), (24, 36), (17, 24)], fill=BLUE_LIGHT)
    p.circle(24, 24, 4, fill=WHITE)
    p.text_lines(13, 35, [15, 19, 23, 27, 31, 35, 39], 1.2, (144, 164, 174))
    return p


def coupon():
    p = Pic(48, 48)
    p.receipt(10, 2, 38, 46)
    p.text_lines(13, 35, [8, 11, 14], 1.0)
    p.dashed(6, 19, 42, 19, RED, 1.2, 2.2, 1.6)
    # The coupon: a tag with a percent sign.
    p.rect(14, 24, 34, 42, fill=ORANGE, radius=2.5)
    p.circle(20, 29.5, 2.2, outline=WHITE, width=1.4)
    p.circle(28, 36.5, 2.2, outline=WHITE, width=1.4)
    p.line([(29, 28), (19, 38)], WHITE, 1.6)
    return p


def logo_slot(at_top):
    p = Pic(48, 48)
    p.receipt(10, 2, 38, 46)
    if at_top:
        p.rect(16, 7, 32, 19, fill=BLUE, radius=2)
        p.poly([(19, 16), (23, 10), (27, 16)], fill=WHITE)
        p.circle(28.5, 11.5, 1.6, fill=WHITE)
        p.text_lines(13, 35, [25, 29, 33, 37, 41], 1.2)
    else:
        p.text_lines(13, 35, [8, 12, 16, 20, 24], 1.2)
        p.rect(16, 29, 32, 41, fill=BLUE, radius=2)
        p.poly([(19, 38), (23, 32), (27, 38)], fill=WHITE)
        p.circle(28.5, 33.5, 1.6, fill=WHITE)
    return p


def console():
    p = Pic(48, 48)
    p.rect(3, 6, 45, 42, fill=INK, radius=3)
    p.rect(3, 6, 45, 12, fill=INK_LIGHT, radius=3)
    p.rect(3, 10, 45, 12, fill=INK_LIGHT)
    for i, c in enumerate((RED, ORANGE, GREEN)):
        p.circle(8 + i * 4, 9, 1.2, fill=c)
    p.line([(9, 19), (15, 24), (9, 29)], GREEN_LIGHT, 2.2)
    p.line([(18, 30), (28, 30)], GREEN_LIGHT, 2.2, round_caps=False)
    p.text_lines(9, 38, [36], 1.2, INK_LIGHT)
    return p


def help_icon():
    p = Pic(16, 16)
    p.circle(8, 8, 7.5, fill=BLUE)
    p.arc(8, 6.2, 2.6, 190, 380, WHITE, 1.7, steps=32)
    p.line([(8 + 2.6 * math.cos(math.radians(20)), 6.2 + 2.6 * math.sin(math.radians(20))),
            (8, 9.1), (8, 10.0)], WHITE, 1.7)
    p.circle(8, 12.4, 1.05, fill=WHITE)
    return p


def admin():
    p = Pic(48, 48)
    # Gear.
    cx, cy = 20, 22
    teeth = []
    for i in range(16):
        a = math.radians(i * 22.5 + 11.25)
        r = 15 if i % 2 == 0 else 11.5
        for da in (-9, 9):
            b = a + math.radians(da)
            teeth.append((cx + r * math.cos(b), cy + r * math.sin(b)))
    p.poly(teeth, fill=INK_LIGHT)
    p.circle(cx, cy, 5, fill=WHITE)
    # Shield: service access.
    p.poly([(34, 24), (44, 27), (43, 37), (34, 45), (25, 37), (24, 27)], fill=BLUE)
    p.line([(29.5, 34), (33, 38), (39, 30)], WHITE, 1.8)
    return p


def presenter():
    p = Pic(48, 48)
    p.rect(3, 6, 31, 42, fill=INK, radius=3)  # kiosk front
    p.rect(7, 10, 27, 20, fill=INK_LIGHT, radius=1.5)
    p.rect(7, 27, 27, 31, fill=BLACK)  # bezel slot
    p.circle(9, 36, 1.4, fill=GREEN)
    # Ticket coming out of the bezel towards the user.
    p.poly([(24, 27.5), (42, 22), (45, 29), (27, 31)], fill=PAPER)
    p.line([(24, 27.5), (42, 22), (45, 29), (27, 31)], PAPER_EDGE, 1.0, round_caps=False)
    p.arrow(34, 38, 44, 38, BLUE, 1.6, 3.4)
    return p


def feeder():
    p = Pic(48, 48)
    # Three paper rolls feeding one printer.
    for i, y in enumerate((8, 20, 32)):
        p.circle(9, y, 5.2, fill=GREY_LIGHT, outline=PAPER_EDGE, width=1.0)
        p.circle(9, y, 1.8, fill=INK_LIGHT)
        p.line([(9, y - 5.2), (24, y - 5.2 + i * 0.0)], PAPER_EDGE, 1.0, round_caps=False)
    p.arrow(17, 20, 27, 20, BLUE, 1.6, 3.4)
    p.rect(29, 10, 45, 32, fill=INK, radius=2.5)
    p.rect(31, 12, 43, 19, fill=INK_LIGHT, radius=1)
    p.circle(41, 28, 1.2, fill=GREEN)
    p.rect(32, 36, 43, 42, fill=PAPER, outline=PAPER_EDGE)
    return p


def selector():
    p = Pic(48, 48)
    p.rect(3, 16, 19, 32, fill=INK, radius=2.5)  # printer
    p.rect(15, 22.5, 21, 25.5, fill=PAPER, outline=PAPER_EDGE, width=0.8)
    # The ticket goes out to the customer, or into the store box.
    p.line([(21, 24), (28, 24)], BLUE, 1.6)
    p.arc(28, 14, 10, 90, 0, BLUE, 1.6, steps=24)
    p.arrow_head((38, 10), -90, 3.4, BLUE)
    p.arc(28, 34, 10, 270, 360, BLUE, 1.6, steps=24)
    p.arrow_head((38, 38), 90, 3.4, BLUE)
    p.rect(32, 1, 46, 7, fill=GREEN_LIGHT, outline=GREEN, width=1.0, radius=1)  # out
    p.rect(32, 41, 46, 47, fill=GREY_LIGHT, outline=INK_LIGHT, width=1.0)  # stored
    p.line([(35, 44), (43, 44)], INK_LIGHT, 1.0, round_caps=False)
    return p


PICTURES = [
    (103, "version_logo", version_logo),
    (104, "adjust_offset", adjust_offset),
    (105, "adjust_crop_top", lambda: adjust_crop(True)),
    (106, "adjust_crop_bottom", lambda: adjust_crop(False)),
    (107, "adjust_skip_white", adjust_skip_white),
    (108, "adjust_rotation", adjust_rotation),
    (109, "adjust_reduction", adjust_reduction),
    (110, "cash_drawer", cash_drawer),
    (111, "buzzer", buzzer),
    (112, "print_header", print_header),
    (113, "cutter", cutter),
    (114, "black_mark", black_mark),
    (115, "continuous_loop", continuous_loop),
    (116, "page_to_page", page_to_page),
    (117, "watermark", watermark),
    (118, "coupon", coupon),
    (119, "logo_top", lambda: logo_slot(True)),
    (120, "logo_bottom", lambda: logo_slot(False)),
    (121, "console", console),
    (122, "help", help_icon),
    (123, "admin", admin),
    (124, "presenter", presenter),
    (125, "feeder", feeder),
    (126, "selector", selector),
]


def main(argv):
    here = os.path.dirname(os.path.abspath(__file__))
    out_dir = argv[1] if len(argv) > 1 else os.path.join(here, "..", "resources", "png")
    os.makedirs(out_dir, exist_ok=True)
    for rid, name, draw in PICTURES:
        path = os.path.join(out_dir, "%d_%s.png" % (rid, name))
        draw().save(path)
        print("%s  %5d bytes" % (os.path.relpath(path), os.path.getsize(path)))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
