#!/usr/bin/env python3
"""check_blank_documents.py FOLDER: the shipped blank documents are well formed.

The xlsx is a zip with the parts of a minimal workbook, all XML well formed and every
relationship pointing at a part that exists; the rtf is one balanced {\\rtf1 group; the xml
parses. Prints each problem and exits 1 when there is one.
"""

import posixpath, sys, zipfile
import xml.dom.minidom as dom

REQUIRED = {"[Content_Types].xml", "_rels/.rels", "xl/workbook.xml", "xl/_rels/workbook.xml.rels",
            "xl/worksheets/sheet1.xml"}


def check_xlsx(path):
    archive = zipfile.ZipFile(path)
    names = archive.namelist()
    problems = [f"missing {part}" for part in REQUIRED - set(names)]
    for name in (n for n in names if n.endswith((".xml", ".rels"))):
        for rel in dom.parseString(archive.read(name)).getElementsByTagName("Relationship"):
            base = posixpath.dirname(posixpath.dirname(name))
            if posixpath.normpath(posixpath.join(base, rel.getAttribute("Target"))) not in names:
                problems.append(f"{name} points at a missing part")
    return problems


def check_rtf(path):
    text, depth = open(path, encoding="ascii").read(), 0
    for c in text:
        depth += {"{": 1, "}": -1}.get(c, 0)
        if depth < 0:
            break
    return [] if text.startswith("{\\rtf1") and depth == 0 else ["not one balanced {\\rtf1 group"]


def check_xml(path):
    dom.parse(path)
    return []


problems = []
for ext, check in [("xlsx", check_xlsx), ("rtf", check_rtf), ("xml", check_xml)]:
    try:
        problems += [f"{ext}: {p}" for p in check(f"{sys.argv[1]}/Untitled.{ext}")]
    except Exception as error:  # a parse failure is the finding
        problems.append(f"{ext}: {error}")
print("\n".join(problems))
sys.exit(1 if problems else 0)
