#!/usr/bin/env python3
"""Draws the plug-in's picture and icon: a string whose pieces are cut out of it.

Writes WrapperPicture.bmp (16x16, 16 colours) and WrapperIcon.ico (32x32, 256 colours)
beside the resource script. The drawings are the text below; run this again after
changing them and commit both files.
"""
import pathlib
import struct

# The 16 colours of the standard palette, as (red, green, blue).
PALETTE = [
    (0, 0, 0), (128, 0, 0), (0, 128, 0), (128, 128, 0), (0, 0, 128), (128, 0, 128), (0, 128, 128),
    (192, 192, 192), (128, 128, 128), (255, 0, 0), (0, 255, 0), (255, 255, 0), (0, 0, 255),
    (255, 0, 255), (0, 255, 255), (255, 255, 255),
]
INK = {"K": 0, "N": 4, "R": 9, "Y": 11, "W": 15, ".": 15}

# The whole string on top, split at its two separators (red); below, its three pieces.
PICTURE = [
    "................",
    "KKKKKKKKKKKKKKKK",
    "KYYYYRYYYYRYYYYK",
    "KYNNYRYNNYRYNNYK",
    "KYYYYRYYYYRYYYYK",
    "KKKKKKKKKKKKKKKK",
    "................",
    ".NNN..NNNN..NNN.",
    "..N....NN....N..",
    "................",
    "KKKKK.KKKK.KKKKK",
    "KYYYK.KYYK.KYYYK",
    "KNNYK.KNNK.KYNNK",
    "KYYYK.KYYK.KYYYK",
    "KKKKK.KKKK.KKKKK",
    "................",
]


def palette_bytes(count):
    colours = PALETTE + [(0, 0, 0)] * (count - len(PALETTE))
    return b"".join(struct.pack("<BBBB", b, g, r, 0) for r, g, b in colours)


def info_header(width, height, bits, image_size, colours):
    return struct.pack("<IiiHHIIiiII", 40, width, height, 1, bits, 0, image_size, 0, 0, colours, 0)


def bitmap_16_colours(rows):
    pixels = b""
    for row in reversed(rows):
        indices = [INK[c] for c in row]
        pixels += bytes((indices[i] << 4) | indices[i + 1] for i in range(0, len(indices), 2))
    header = info_header(16, 16, 4, len(pixels), 16)
    body = header + palette_bytes(16) + pixels
    offset = 14 + len(header) + 16 * 4
    return struct.pack("<2sIHHI", b"BM", 14 + len(body), 0, 0, offset) + body


def icon_256_colours(rows, scale):
    big = ["".join(c * scale for c in row) for row in rows for _ in range(scale)]
    size = len(big)
    xor = b"".join(bytes(0 if c == "." else INK[c] for c in row) for row in reversed(big))
    mask = b""
    for row in reversed(big):
        bits = "".join("1" if c == "." else "0" for c in row)
        mask += int(bits, 2).to_bytes(size // 8, "big")
    image = info_header(size, size * 2, 8, len(xor) + len(mask), 256) + palette_bytes(256) + xor + mask
    directory = struct.pack("<HHH", 0, 1, 1)
    entry = struct.pack("<BBBBHHII", size, size, 0, 0, 1, 8, len(image), 6 + 16)
    return directory + entry + image


def main():
    here = pathlib.Path(__file__).resolve().parent.parent
    (here / "WrapperPicture.bmp").write_bytes(bitmap_16_colours(PICTURE))
    (here / "WrapperIcon.ico").write_bytes(icon_256_colours(PICTURE, 2))


if __name__ == "__main__":
    main()
