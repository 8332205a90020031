#!/usr/bin/env bash
# Writes the seed corpus of plist_lists_fuzzer into fuzz/corpus/plist_lists/: the factory
# configuration as `pxmenu setup` writes it (XML), the same in binary form, an older
# configuration that the upgrade has to bring up to date, and hand-broken files.
# Usage: fuzz/make-corpus.sh PATH-TO-pxmenu
set -euo pipefail

pxmenu=${1:?usage: $0 PATH-TO-pxmenu}
here=$(cd "$(dirname "$0")" && pwd)
out="$here/corpus/plist_lists"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

mkdir -p "$out"
HOME="$scratch" XDG_CONFIG_HOME="$scratch/config" XDG_DATA_HOME="$scratch/data" \
    "$pxmenu" setup
cp "$scratch/config/pxmenu/group.plist" "$out/factory.xml.plist"

python3 - "$out" <<'EOF'
import plistlib, sys
out = sys.argv[1]
with open(f"{out}/factory.xml.plist", "rb") as f:
    factory_bytes = f.read()
factory = plistlib.loads(factory_bytes)

def write(name, data):
    with open(f"{out}/{name}", "wb") as f:
        f.write(data)

binary = plistlib.dumps(factory, fmt=plistlib.FMT_BINARY)
write("factory.binary.plist", binary)

# An old configuration: the upgrade inserts, replaces and deletes entries.
old = dict(factory)
old["update version"] = "2.0.0"
old["array right menu"] = [e for e in factory["array right menu"]
                           if e.get("key") not in ("Folder Icon", "Cut Paste", "Execute Script")]
old.pop("array folder icon", None)
old["array common path"] = [{"path": "/tmp"}, {"path": "~/../..//x/"}, {"path": ""}]
write("old-version.xml.plist", plistlib.dumps(old))

# Wrong types everywhere a reader might trust the file.
odd = {
    "array right menu": [
        "not a dictionary", 7,
        {"key": 12, "disabled": "YES"},
        {"key": "Cut Paste", "cutPaths": "/tmp/a"},
        {"key": "Cut Paste", "cutPaths": [1, "/tmp/b", {"x": 1}]},
        {"key": "Convert to", "appName": "  "},
        {"key": "Terminal To", "disabledAuth": 1.5},
    ],
    "array new file": {"key": "txt"},
    "array common app": [{"key": ""}, {}],
    "array common path": [{"path": 3}, {"path": "/" * 40}],
    "array folder icon": [{"key": "love", "iconPath": "/nonexistent.png"}],
    "update version": 2.6,
    "common path next menu": "4",
}
write("wrong-types.xml.plist", plistlib.dumps(odd))

# Damaged files: cut short, a broken binary trailer, nesting far beyond any real file.
write("truncated.xml.plist", factory_bytes[:1500])
write("bad-trailer.binary.plist", binary[:-20] + b"\xff" * 20)
deep = b"<plist><dict><key>array right menu</key>" + b"<array>" * 600 + b"</array>" * 600
write("deep.xml.plist", deep + b"</dict></plist>")
# A raw NUL byte inside an XML string once aborted the reader.
write("nul-in-string.xml.plist",
      b"<plist><dict><key>array right menu</key><array><dict><key>key</key>"
      b"<string>Cut\x00 Paste</string></dict></array></dict></plist>")
# A zero character inside a UTF-16 key once aborted the binary reader.
write("zero-in-utf16-key.binary.plist",
      plistlib.dumps({"\x00\u00e9": "x", "array right menu": []}, fmt=plistlib.FMT_BINARY))
EOF
ls -l "$out"
