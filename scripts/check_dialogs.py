#!/usr/bin/env python3
"""Checks the dialog templates of resources/KivUI.rc the way a careful reviewer would.

Per dialog it reports: controls that overlap (a group box may contain controls, nothing else may
share space), controls outside the page, the same id twice, more than one access key in a
caption, the same access key twice, buttons and check boxes without an access key, a label in
front of an input without one, and tab stops that jump backwards against reading order. It also
checks that the twelve page templates and the PNG pictures 103-126 are all there. Controls
hidden in the template (NOT WS_VISIBLE) are left out of the overlap test: the page shows them in
place of others. Exit status 0 when nothing is wrong, 1 otherwise.

    scripts/check_dialogs.py [path/to/KivUI.rc]
"""

import os
import re
import sys

EXPECTED_DIALOGS = {9, 107, 108, 109, 110, 111, 112, 113, 114, 115, 116, 117}
EXPECTED_PNGS = set(range(103, 127))
PAGE_SIZE = (252, 218)

TEXT_CONTROLS = {"LTEXT", "RTEXT", "CTEXT", "PUSHBUTTON", "DEFPUSHBUTTON", "AUTOCHECKBOX",
                 "CHECKBOX", "AUTO3STATE", "STATE3", "GROUPBOX", "RADIOBUTTON", "AUTORADIOBUTTON"}
NO_TEXT_CONTROLS = {"EDITTEXT", "COMBOBOX", "LISTBOX"}
BUTTON_KINDS = {"PUSHBUTTON", "DEFPUSHBUTTON", "AUTOCHECKBOX", "CHECKBOX", "AUTO3STATE", "STATE3",
                "RADIOBUTTON", "AUTORADIOBUTTON"}
LABEL_KINDS = {"LTEXT", "RTEXT", "CTEXT"}
INPUT_CLASSES = {"EDITTEXT", "COMBOBOX", "LISTBOX", "msctls_trackbar32", "msctls_updown32"}
# Statement keywords that take focus by default (the resource compiler adds WS_TABSTOP).
DEFAULT_TABSTOP = BUTTON_KINDS | NO_TEXT_CONTROLS
# A closed drop-down list is one text line high, whatever height the template gives its list.
COMBO_CLOSED_HEIGHT = 13


class Control:
    def __init__(self, kind, text, cid, cls, style, x, y, w, h, line):
        self.kind, self.text, self.id, self.cls = kind, text, cid, cls
        self.style, self.line = style, line
        self.x, self.y, self.w, self.h = x, y, w, h

    @property
    def visible(self):
        return "WS_VISIBLE" not in self.style["removed"]

    @property
    def tabstop(self):
        if "WS_TABSTOP" in self.style["removed"]:
            return False
        return "WS_TABSTOP" in self.style["added"] or self.kind in DEFAULT_TABSTOP

    @property
    def is_group(self):
        return self.kind == "GROUPBOX" or (self.cls.lower() == "button"
                                           and "BS_GROUPBOX" in self.style["added"])

    @property
    def is_input(self):
        return self.kind in INPUT_CLASSES or self.cls in INPUT_CLASSES

    def rect(self):
        h = self.h
        if self.kind == "COMBOBOX" or self.cls.lower() == "combobox":
            h = min(h, COMBO_CLOSED_HEIGHT)
        return (self.x, self.y, self.x + self.w, self.y + h)

    def name(self):
        label = ' "%s"' % self.text if self.text else ""
        return "%s %s%s (line %d)" % (self.kind, self.id, label, self.line)


def read_defines(path, table):
    with open(path, encoding="utf-8") as f:
        for line in f:
            m = re.match(r"\s*#define\s+(\w+)\s+(.+?)\s*(//.*)?$", line)
            if m:
                table[m.group(1)] = m.group(2)


def tokenize(text):
    """Splits a statement into strings, numbers, names, commas and operators."""
    tokens = []
    i = 0
    while i < len(text):
        c = text[i]
        if c.isspace():
            i += 1
        elif c == '"':
            j = i + 1
            buf = []
            while j < len(text):
                if text[j] == '"':
                    if j + 1 < len(text) and text[j + 1] == '"':
                        buf.append('"')
                        j += 2
                        continue
                    break
                buf.append(text[j])
                j += 1
            tokens.append(("str", "".join(buf)))
            i = j + 1
        elif c in ",|()":
            tokens.append(("op", c))
            i += 1
        else:
            m = re.match(r"[A-Za-z0-9_x\-+]+", text[i:])
            if not m:
                raise ValueError("unexpected character %r" % c)
            tokens.append(("word", m.group(0)))
            i += len(m.group(0))
    return tokens


def expand(tokens, macros, depth=0):
    out = []
    for kind, val in tokens:
        if kind == "word" and val in macros and depth < 10:
            out.extend(expand(tokenize(macros[val]), macros, depth + 1))
        else:
            out.append((kind, val))
    return out


def split_args(tokens):
    args, cur = [], []
    for tok in tokens:
        if tok == ("op", ","):
            args.append(cur)
            cur = []
        else:
            cur.append(tok)
    args.append(cur)
    return args


def number(arg, ids):
    words = [v for k, v in arg if k == "word"]
    if len(words) != 1:
        raise ValueError("expected one number, got %r" % (arg,))
    w = words[0]
    if w in ids:
        return int(ids[w], 0)
    return int(w, 0)


def style_of(arg):
    added, removed = set(), set()
    negate = False
    for kind, val in arg:
        if kind != "word":
            continue
        if val == "NOT":
            negate = True
            continue
        (removed if negate else added).add(val)
        negate = False
    return {"added": added, "removed": removed}


def parse_control(stmt, line, macros, ids):
    tokens = expand(tokenize(stmt), macros)
    kind = tokens[0][1]
    args = split_args(tokens[1:])
    if kind == "CONTROL":
        text = args[0][0][1] if args[0] and args[0][0][0] == "str" else ""
        cid = number(args[1], ids)
        cls = args[2][0][1]
        style = style_of(args[3])
        x, y, w, h = (number(a, ids) for a in args[4:8])
        return Control(kind, text, cid, cls, style, x, y, w, h, line)
    if kind in TEXT_CONTROLS:
        text = args[0][0][1]
        cid = number(args[1], ids)
        x, y, w, h = (number(a, ids) for a in args[2:6])
        style = style_of(args[6]) if len(args) > 6 else style_of([])
        return Control(kind, text, cid, "", style, x, y, w, h, line)
    if kind in NO_TEXT_CONTROLS:
        cid = number(args[0], ids)
        x, y, w, h = (number(a, ids) for a in args[1:5])
        style = style_of(args[5]) if len(args) > 5 else style_of([])
        return Control(kind, "", cid, "", style, x, y, w, h, line)
    raise ValueError("unknown control statement %s" % kind)


def parse_rc(path, ids):
    macros = {}
    dialogs, pngs = [], []
    with open(path, encoding="utf-8") as f:
        lines = f.readlines()
    i = 0
    current = None
    while i < len(lines):
        raw = lines[i].rstrip("\n")
        lineno = i + 1
        i += 1
        stripped = raw.strip()
        if not stripped or stripped.startswith("//"):
            continue
        m = re.match(r"#define\s+(\w+)\s+(.+?)\s*(//.*)?$", stripped)
        if m:
            macros[m.group(1)] = m.group(2)
            continue
        if stripped.startswith("#"):
            continue
        m = re.match(r"(\w+)\s+DIALOGEX?\s+(.*)$", stripped)
        if m:
            dims = [number(a, ids) for a in split_args(tokenize(m.group(2)))]
            name = m.group(1)
            current = {"name": name, "id": int(ids.get(name, name), 0), "w": dims[2],
                       "h": dims[3], "caption": None, "controls": [], "line": lineno,
                       "in_body": False}
            dialogs.append(current)
            continue
        m = re.match(r"(\w+)\s+PNG\s+\"([^\"]+)\"", stripped)
        if m:
            pngs.append((int(ids.get(m.group(1), m.group(1)), 0), m.group(2), lineno))
            continue
        if current is None:
            continue
        if not current["in_body"]:
            if stripped.startswith("CAPTION"):
                current["caption"] = tokenize(stripped[len("CAPTION"):])[0][1]
            elif stripped == "BEGIN":
                current["in_body"] = True
            continue
        if stripped == "END":
            current = None
            continue
        # A statement may continue on the next line after a trailing comma or |.
        stmt = stripped
        while re.search(r"[,|]\s*$", stmt) and i < len(lines):
            stmt += " " + lines[i].strip()
            i += 1
        current["controls"].append(parse_control(stmt, lineno, macros, ids))
    return dialogs, pngs


def access_keys(text):
    keys = []
    j = 0
    while j < len(text):
        if text[j] == "&":
            if j + 1 < len(text) and text[j + 1] == "&":
                j += 2
                continue
            if j + 1 < len(text):
                keys.append(text[j + 1].lower())
        j += 1
    return keys


def intersects(a, b):
    return a[0] < b[2] and b[0] < a[2] and a[1] < b[3] and b[1] < a[3]


def contains(outer, inner):
    return (outer[0] <= inner[0] and outer[1] <= inner[1] and inner[2] <= outer[2]
            and inner[3] <= outer[3])


def check_dialog(d):
    problems = []
    ctrls = d["controls"]
    title = "%s (%d, \"%s\")" % (d["name"], d["id"], d["caption"])
    if d["caption"] is None:
        problems.append("no CAPTION")
    if (d["w"], d["h"]) != PAGE_SIZE:
        problems.append("size %dx%d is not the property page size %dx%d" %
                        (d["w"], d["h"], PAGE_SIZE[0], PAGE_SIZE[1]))

    seen = {}
    for c in ctrls:
        if c.id != -1 and c.id in seen:
            problems.append("id %d used twice: %s and %s" % (c.id, seen[c.id].name(), c.name()))
        seen.setdefault(c.id, c)
        r = c.rect()
        if r[0] < 0 or r[1] < 0 or r[2] > d["w"] or r[3] > d["h"]:
            problems.append("outside the page: %s" % c.name())

    shown = [c for c in ctrls if c.visible]
    for a_i, a in enumerate(shown):
        for b in shown[a_i + 1:]:
            ra, rb = a.rect(), b.rect()
            if not intersects(ra, rb):
                continue
            if (a.is_group and contains(ra, rb)) or (b.is_group and contains(rb, ra)):
                continue
            problems.append("overlap: %s and %s" % (a.name(), b.name()))

    keys = {}
    for idx, c in enumerate(ctrls):
        if not c.visible or "SS_NOPREFIX" in c.style["added"]:
            continue
        text = c.text
        if c.kind == "CONTROL" and not c.cls.lower() in ("button", "static"):
            continue
        ks = access_keys(text)
        if len(ks) > 1:
            problems.append("more than one access key in %s" % c.name())
        for k in ks:
            if k in keys:
                problems.append("access key '%s' twice: %s and %s" % (k, keys[k].name(), c.name()))
            keys.setdefault(k, c)
        has_letter = any(ch.isalnum() for ch in text)
        if not ks and has_letter and c.kind in BUTTON_KINDS:
            problems.append("no access key: %s" % c.name())
        if not ks and has_letter and c.kind in LABEL_KINDS:
            nxt = ctrls[idx + 1] if idx + 1 < len(ctrls) else None
            if nxt is not None and nxt.is_input:
                problems.append("label of an input without access key: %s" % c.name())

    stops = [c for c in ctrls if c.tabstop and c.visible]
    for a, b in zip(stops, stops[1:]):
        ra, rb = a.rect(), b.rect()
        same_row = ra[1] < rb[3] and rb[1] < ra[3]
        if rb[3] <= ra[1] or (same_row and rb[2] <= ra[0]):
            problems.append("tab order goes back from %s to %s" % (a.name(), b.name()))
    return title, problems


def main(argv):
    here = os.path.dirname(os.path.abspath(__file__))
    rc = argv[1] if len(argv) > 1 else os.path.join(here, "..", "resources", "KivUI.rc")
    rc_dir = os.path.dirname(os.path.abspath(rc))
    ids = {}
    read_defines(os.path.join(rc_dir, "resource.h"), ids)
    try:
        dialogs, pngs = parse_rc(rc, ids)
    except (ValueError, IndexError, OSError) as e:
        print("check_dialogs: cannot parse %s: %s" % (rc, e))
        return 1

    failed = False
    for d in dialogs:
        title, problems = check_dialog(d)
        if problems:
            failed = True
            print("%s:" % title)
            for p in problems:
                print("  " + p)

    found = {d["id"] for d in dialogs}
    if found != EXPECTED_DIALOGS:
        failed = True
        print("dialog ids: missing %s, unexpected %s" %
              (sorted(EXPECTED_DIALOGS - found), sorted(found - EXPECTED_DIALOGS)))
    png_ids = [p[0] for p in pngs]
    if set(png_ids) != EXPECTED_PNGS or len(png_ids) != len(set(png_ids)):
        failed = True
        print("PNG ids: missing %s, unexpected or repeated %s" %
              (sorted(EXPECTED_PNGS - set(png_ids)),
               sorted({i for i in png_ids if i not in EXPECTED_PNGS or png_ids.count(i) > 1})))
    for rid, path, line in pngs:
        full = os.path.join(rc_dir, path)
        if not os.path.isfile(full):
            failed = True
            print("PNG %d (line %d): no file %s" % (rid, line, path))

    total = sum(len(d["controls"]) for d in dialogs)
    print("check_dialogs: %d dialogs, %d controls, %d pictures: %s" %
          (len(dialogs), total, len(pngs), "problems found" if failed else "ok"))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
