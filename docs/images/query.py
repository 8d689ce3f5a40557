#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Draws the road of a query for docs/architecture.md.

    query.py >query.svg
"""
from html import escape

WIDTH, HEIGHT = 960, 570

STYLE = """
  svg { color-scheme: light dark; font-family: sans-serif; font-size: 14px; }
  .page { fill: #ffffff; }
  .process { fill: #f3f5f8; stroke: #8792a2; stroke-dasharray: 6 4; }
  .box { fill: #ffffff; stroke: #4a5565; stroke-width: 1.5; }
  .file { fill: #fdf6e3; stroke: #8a6d1f; stroke-width: 1.5; }
  text { fill: #1c2430; }
  .name { font-weight: bold; }
  .small { font-size: 12px; fill: #4a5565; }
  .road { stroke: #0b62a4; stroke-width: 2; fill: none; }
  .head { fill: #0b62a4; }
  .aside { stroke: #8a6d1f; stroke-width: 2; fill: none; stroke-dasharray: 5 4; }
  .aside-head { fill: #8a6d1f; }
  @media (prefers-color-scheme: dark) {
    .page { fill: #0d1117; }
    .process { fill: #161b22; stroke: #7d8590; }
    .box { fill: #21262d; stroke: #9aa4af; }
    .file { fill: #2d2611; stroke: #d4b04a; }
    text { fill: #e6edf3; }
    .small { fill: #b1bac4; }
    .road { stroke: #58a6ff; }
    .head { fill: #58a6ff; }
    .aside { stroke: #d4b04a; }
    .aside-head { fill: #d4b04a; }
  }
"""


def text(x, y, words, kind="", anchor="middle"):
    kind = f' class="{kind}"' if kind else ""
    return f'<text x="{x}" y="{y}" text-anchor="{anchor}"{kind}>{escape(words)}</text>'


def box(x, y, width, height, name, *lines, kind="box"):
    """A box with its name and what is in it."""
    middle = x + width // 2
    top = y + height // 2 - 8 * len(lines) + 5
    drawn = [f'<rect x="{x}" y="{y}" width="{width}" height="{height}" rx="6" class="{kind}"/>',
             text(middle, top, name, "name")]
    return drawn + [text(middle, top + 18 + 16 * i, line, "small") for i, line in enumerate(lines)]


def process(x, name):
    return [f'<rect x="{x}" y="44" width="380" height="386" rx="10" class="process"/>', text(x + 190, 32, name, "name")]


def arrow(*points, kind="road"):
    """A line through points, with a head at its last one."""
    path = "M" + " L".join(f"{x} {y}" for x, y in points)
    (from_x, from_y), (x, y) = points[-2:]
    dx, dy = (x > from_x) - (x < from_x), (y > from_y) - (y < from_y)
    back_x, back_y = x - 10 * dx, y - 10 * dy
    head = f"{x},{y} {back_x - 5 * dy},{back_y - 5 * dx} {back_x + 5 * dy},{back_y + 5 * dx}"
    name = "head" if kind == "road" else "aside-head"
    return [f'<path d="{path}" class="{kind}"/>', f'<polygon points="{head}" class="{name}"/>']


def caller():
    return [*process(20, "the process of a caller"),
            *box(40, 64, 340, 66, "program", "pmctl, an agent, yours", "owns its handle, messages and records"),
            *box(40, 200, 340, 66, "libport_mgr_common", "chooses the service, asks, checks, parses",
                 "no thread, no lock"),
            *box(40, 336, 150, 74, "look-ups", "libutils, libpcm,", "libsdwrap, libpfm_intf"),
            *box(206, 336, 174, 74, "libmts", "a handle is a queue:", "connections, answers kept"),
            *arrow((80, 130), (80, 200)), text(88, 170, "1 pm_get_...", anchor="start"),
            *arrow((210, 200), (210, 130), kind="aside"), text(218, 162, "token, of", "small", "start"),
            text(218, 177, "send-only forms", "small", "start"),
            *arrow((325, 200), (325, 130)), text(333, 170, "8 parse", anchor="start"),
            *arrow((100, 336), (100, 266), kind="aside"), text(108, 306, "owner", "small", "start"),
            *arrow((220, 266), (220, 336)), text(228, 306, "2 send", anchor="start"),
            *arrow((310, 336), (310, 266)), text(318, 306, "7 recv", anchor="start")]


def switch():
    return [*process(560, "the process of the switch, one thread"),
            *box(580, 64, 310, 66, "chassis model", "the chassis file and what clients configured"),
            *box(580, 200, 310, 66, "services", "one for each SAP"),
            *box(580, 336, 310, 74, "libmts", "one event loop over all sockets", "the kernel says who asks"),
            *arrow((640, 336), (640, 266)), text(648, 306, "4 request", anchor="start"),
            *arrow((790, 266), (790, 336)), text(798, 306, "5 reply", anchor="start"),
            *arrow((640, 200), (640, 130)), text(648, 170, "reads, changes", anchor="start"),
            *arrow((790, 130), (790, 200)), text(798, 170, "records", anchor="start")]


def between():
    return [*arrow((380, 356), (580, 356)), text(480, 348, "3 request"),
            *arrow((580, 390), (380, 390)), text(480, 408, "6 answer"),
            text(480, 377, "socket of the SAP", "small"),
            *box(330, 470, 300, 66, "chassis-db", "chassis, modules, members, index map",
                 "a file in the run-time directory", kind="file"),
            *arrow((890, 97), (916, 97), (916, 503), (630, 503), kind="aside"),
            text(773, 493, "publishes", "small"),
            *arrow((330, 503), (115, 503), (115, 410), kind="aside"),
            text(222, 493, "mapped read-only", "small")]


def main():
    drawn = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" width="{WIDTH}" height="{HEIGHT}"'
             ' role="img">', "<title>The road of a query</title>", f"<style>{STYLE}</style>",
             f'<rect width="{WIDTH}" height="{HEIGHT}" class="page"/>', *caller(), *switch(), *between(), "</svg>"]
    print("\n".join(drawn))


main()
