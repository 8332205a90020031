#!/usr/bin/env python3
"""Small PNG helper for the tests.

png_tool.py pixels FILE X Y [X Y...]   prints the RGBA values of pixels of an 8-bit RGBA PNG
png_tool.py solid FILE W H R G B A     writes a W x H PNG of one colour
"""

import struct
import sys
import zlib


def rows(path):
    data = open(path, "rb").read()
    assert data[:8] == b"\x89PNG\r\n\x1a\n", "not a PNG"
    pos, idat, header = 8, b"", None
    while pos < len(data):
        length, kind = struct.unpack(">I4s", data[pos:pos + 8])
        body = data[pos + 8:pos + 8 + length]
        if kind == b"IHDR":
            header = struct.unpack(">IIBBBBB", body)
        elif kind == b"IDAT":
            idat += body
        pos += 12 + length
    width, height, depth, colour, _, _, interlace = header
    assert depth == 8 and colour == 6 and interlace == 0, "only 8-bit RGBA without interlace"
    raw, stride, out, previous = zlib.decompress(idat), width * 4, [], bytearray(width * 4)
    for y in range(height):
        kind, line = raw[y * (stride + 1)], bytearray(raw[y * (stride + 1) + 1:(y + 1) * (stride + 1)])
        for i in range(stride):
            left = line[i - 4] if i >= 4 else 0
            up, corner = previous[i], previous[i - 4] if i >= 4 else 0
            if kind == 1:
                line[i] = (line[i] + left) & 255
            elif kind == 2:
                line[i] = (line[i] + up) & 255
            elif kind == 3:
                line[i] = (line[i] + (left + up) // 2) & 255
            elif kind == 4:
                p = left + up - corner
                pa, pb, pc = abs(p - left), abs(p - up), abs(p - corner)
                line[i] = (line[i] + (left if pa <= pb and pa <= pc else up if pb <= pc else corner)) & 255
        out.append(line)
        previous = line
    return out


def chunk(kind, body):
    return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))


def solid(path, width, height, rgba):
    line = b"\0" + bytes(rgba) * width
    png = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0))
    png += chunk(b"IDAT", zlib.compress(line * height)) + chunk(b"IEND", b"")
    open(path, "wb").write(png)


def main():
    command, path, numbers = sys.argv[1], sys.argv[2], list(map(int, sys.argv[3:]))
    if command == "solid":
        solid(path, numbers[0], numbers[1], numbers[2:6])
        return
    image = rows(path)
    for x, y in zip(numbers[::2], numbers[1::2]):
        print(*image[y][x * 4:x * 4 + 4])


if __name__ == "__main__":
    main()
