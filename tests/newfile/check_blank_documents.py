#!/usr/bin/env python3
"""Checks the shipped blank documents: check_blank_documents.py FOLDER.

Untitled.xlsx must be a zip holding the parts of a minimal workbook, every XML part well
formed and the relationships pointing at parts that exist; Untitled.rtf must start with
"{\\rtf1" and balance its braces; Untitled.html must parse with its elements closed in order;
Untitled.xml must be well-formed XML. Prints one line per problem and exits 1 when there is one.
"""

import html.parser
import posixpath
import sys
import xml.dom.minidom
import zipfile

REQUIRED = ["[Content_Types].xml", "_rels/.rels", "xl/workbook.xml", "xl/_rels/workbook.xml.rels",
            "xl/worksheets/sheet1.xml"]
VOID = {"meta", "link", "br", "hr", "img", "input"}


def check_xlsx(path, problems):
    with zipfile.ZipFile(path) as archive:
        if archive.testzip() is not None:
            problems.append("xlsx: a damaged entry")
        names = archive.namelist()
        problems += [f"xlsx: missing {part}" for part in REQUIRED if part not in names]
        for name in names:
            if name.endswith(".xml") or name.endswith(".rels"):
                document = xml.dom.minidom.parseString(archive.read(name))
                if name.endswith(".rels"):
                    base = posixpath.dirname(posixpath.dirname(name))
                    for rel in document.getElementsByTagName("Relationship"):
                        target = posixpath.normpath(posixpath.join(base, rel.getAttribute("Target")))
                        if target not in names:
                            problems.append(f"xlsx: {name} points at missing {target}")


class Balance(html.parser.HTMLParser):
    def __init__(self):
        super().__init__()
        self.open = []
        self.seen = []

    def handle_starttag(self, tag, attrs):
        self.seen.append(tag)
        if tag not in VOID:
            self.open.append(tag)

    def handle_endtag(self, tag):
        if not self.open or self.open.pop() != tag:
            raise ValueError(f"unbalanced </{tag}>")


def check_html(path, problems):
    parser = Balance()
    parser.feed(open(path, encoding="utf-8").read())
    parser.close()
    if parser.open or parser.seen[:3] != ["html", "head", "meta"]:
        problems.append(f"html: open {parser.open}, elements {parser.seen}")


def check_rtf(path, problems):
    text = open(path, encoding="ascii").read()
    depth = 0
    for c in text:
        depth += {"{": 1, "}": -1}.get(c, 0)
        if depth < 0:
            break
    if not text.startswith("{\\rtf1") or depth != 0:
        problems.append("rtf: not a balanced {\\rtf1 group")


def main():
    folder = sys.argv[1]
    problems = []
    for name, check in [("xlsx", check_xlsx), ("html", check_html), ("rtf", check_rtf)]:
        try:
            check(f"{folder}/Untitled.{name}", problems)
        except Exception as error:  # a parse failure is the finding
            problems.append(f"{name}: {error}")
    try:
        xml.dom.minidom.parse(f"{folder}/Untitled.xml")
    except Exception as error:
        problems.append(f"xml: {error}")
    if problems:
        print("\n".join(problems))
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
