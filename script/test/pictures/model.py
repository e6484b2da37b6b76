#!/usr/bin/env python3
"""Draws the screens of screens.lua from the machine's rules, independently of the emulator, as PNG files beside it.

Usage: model.py    (writes into its own folder)
"""
import pathlib
import struct
import zlib

WIDTH, HEIGHT = 640, 576
QB = [(0, 0, 0), (0, 0, 128), (0, 128, 0), (0, 128, 128), (128, 0, 0), (128, 0, 128), (128, 128, 0),
      (192, 192, 192), (128, 128, 128), (0, 0, 255), (0, 255, 0), (0, 255, 255), (255, 0, 0), (255, 0, 255),
      (255, 255, 0), (255, 255, 255)]
BANKS = {0x00: 0x10000, 0x10: 0x20000, 0x20: 0x24000, 0x30: 0x28000}
EIGHTY = [(0, 65, 192), (-16, 65, 176), (-32, 65, 160), (-48, 65, 144), (-48, 49, 144), (-64, 49, 128),
          (-80, 49, 112), (-96, 49, 96), (-96, 33, 96), (-112, 33, 80), (-128, 33, 64), (-144, 33, 48),
          (-144, 17, 48), (-32, 17, 32), (-112, 17, 16), (-192, 17, 0)]

memory = bytearray(0x3C001)
for i in range(0x1C000):
    memory[0x10000 + i] = (i * 7 + i // 64 * 13 + (i >> 5) + i // 0x4000) & 0xFF


class Machine:
    def __init__(self):
        self.ports = [0] * 256
        self.border = [(0, 0, 0)] * 288
        self.palette = [[0] * 257 for _ in range(4)]
        self.next_line = 0

    def fill_palette(self, last):
        for line in range(self.next_line, last + 1):
            for entry in range(4):
                self.palette[entry][line] = self.ports[0x60 + entry]
        self.next_line = last

    def out(self, clock, port, value):
        if 0x60 <= port <= 0x6F:
            self.fill_palette(clock // 245)
        if port == 0:
            index = (value >> 1 & 1) + (value >> 3 & 1) * 4 + (value >> 5 & 1) * 2 + (value >> 7 & 1) * 8
            for band in range(clock // 218, 288):
                self.border[band] = QB[index]
        self.ports[port] = value


def palette_colour(c, four):
    m = 2 if c & 0x40 else 1
    if four:
        return (round((c & 4) * m * 28 * 1.135), round((c & 16) * m * 7 * 1.135), round((c & 1) * m * 112 * 1.135))
    return ((c & 4) * m * 31, (c & 16) * m * 7, (c & 1) * m * 127)


def pixels_of_byte(machine, mode, byte, row):
    """Eight (red, green, blue)."""
    entry = [machine.palette[i][row] for i in range(4)]
    if mode == 0:
        return [palette_colour(entry[byte >> bit & 1], False) for bit in range(7, -1, -1)]
    if mode == 1:
        out = []
        for bit in (7, 6, 5, 4):
            out += [palette_colour(entry[(byte >> bit & 1) + (byte >> (bit - 4) & 1) * 2], True)] * 2
        return out
    out = []
    for shift in (1, 0):
        blue, red, green, bright = (byte >> (shift + place) & 1 for place in (0, 2, 4, 6))
        level = 255 if bright else 128
        if (blue, red, green) == (1, 1, 1) and not bright:
            level = 192
        out += [(red * level, green * level, blue * level)] * 4
    return out


def screen(machine, name, mode, dib, regs, writes):
    columns, r2, r5, r6, r7, start = regs
    machine.next_line = 0
    for clock, port, value in writes:
        machine.out(clock, port, value)
    width, height = columns * 8, r6 * 8
    left, top = (83 - r2) * 8, (r5 - r7 * 4) * 2 + 572
    machine.fill_palette(255)
    base = BANKS[machine.ports[0x0F] & 0x30]
    address = base + start * {0: 8, 1: 4}.get(mode, 1)
    if address > base + 16383:
        address -= 16384
    flat = [(0, 0, 0)] * (width * height)
    at = 0
    for row in range(1, height // 2 + 1):
        line = []
        for column in range(1, columns + 1):
            offset = 0
            if dib and columns == 80 and mode >= 2:
                first, switch, second = EIGHTY[(row - 1) % 16]
                offset = second if column >= switch else first
            byte = memory[address + offset] if 0 <= address + offset < len(memory) else 0
            line += pixels_of_byte(machine, mode, byte, min(row, 255))
            address += 1
            if address > base + 16383 and not (dib and columns == 80 and mode >= 2):
                address -= 16384
        copies = [line, line] if dib else [line]
        for copy in copies:
            for pixel in copy:
                if at < len(flat):
                    flat[at] = pixel
                at += 1
        if not dib:
            at += 512  # the gap is that of a 512 pixel picture, whatever the width
    window = [[machine.border[y // 2]] * WIDTH for y in range(HEIGHT)]
    for y in range(height):
        for x in range(width):
            if 0 <= top + y < HEIGHT and 0 <= left + x < WIDTH:
                window[top + y][left + x] = flat[y * width + x]
    write_png(name, window)
    machine.border = [machine.border[287]] * 288


def write_png(name, window):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    raw = b"".join(b"\0" + bytes(v for pixel in row for v in pixel) for row in window)
    header = struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 2, 0, 0, 0)
    png = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b"")
    (pathlib.Path(__file__).parent / (name + ".png")).write_bytes(png)


m = Machine()
m.ports[0x59] = 0xBF
screen(m, "two_colours", 0, False, (64, 75, 2, 60, 66, 5),
       [(0, 6, 0x80), (0, 0, 0x02), (0, 0x60, 0x00), (0, 0x61, 0x55), (12250, 0x60, 0x01), (20000, 0, 0xAA),
        (24500, 0x61, 0x54), (24500, 0x67, 0x11), (40000, 0, 0x28), (49000, 0x60, 0x44)])
screen(m, "four_colours_dib", 1, True, (64, 75, 2, 60, 66, 0x0FFE),
       [(0, 6, 0x81), (0, 0x0F, 0x20), (0, 0x60, 0x41), (0, 0x61, 0x14), (0, 0x62, 0x55), (0, 0x63, 0x05),
        (30000, 0x62, 0x10), (30100, 0, 0x80), (61000, 0x63, 0x40)])
screen(m, "sixteen_colours_narrow", 2, False, (40, 60, 0, 50, 63, 0x3F80),
       [(0, 6, 0x82), (0, 0x0F, 0x10), (62600, 0, 0x0A)])
screen(m, "eighty_columns_dib", 3, True, (80, 83, 0, 60, 65, 0x00C0), [(0, 6, 0x83), (0, 0x0F, 0x00)])
