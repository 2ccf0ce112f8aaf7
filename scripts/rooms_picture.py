"""Draws the rooms and their include arrows as an SVG, with one floor for each level."""

import html

WIDTH, BOX, GAP, FLOOR = 560, 30, 10, 84
COLOURS = {"platform/foundation": "#3b6ea5", "platform/uikit": "#5a8f3d",
           "platform/preferences": "#8a6d1d", "settings": "#7a4fa3"}
BUNDLE = "#b3523e"
STYLE = """
  text { font: 13px system-ui, sans-serif; fill: #fff; text-anchor: middle }
  .note { fill: #777; text-anchor: start; font-size: 12px }
  line { stroke: #999; stroke-width: 1; marker-end: url(#head) }
"""


def colour(room):
    return next((COLOURS[top] for top in COLOURS if room.startswith(top)), BUNDLE)


def direct(arrows):
    """The arrows of each room without those that its other arrows imply."""
    return {room: {other for other in others
                   if not any(other in arrows[between] for between in others - {other})}
            for room, others in arrows.items()}


def floors(arrows):
    """The rooms by floor, lowest first; a room is above all rooms that it may include."""
    level = {}

    def of(room):
        if room not in level:
            level[room] = 1 + max((of(other) for other in arrows[room]), default=-1)
        return level[room]

    result = [[] for _ in range(1 + max(of(room) for room in arrows))]
    for room in arrows:
        result[level[room]].append(room)
    return result


def label(room):
    for top in ("platform/", "settings/cli/"):
        room = room.removeprefix(top) if room != "settings/cli" else room
    return room


def places(rows):
    """The middle of each room's box, and its width."""
    result = {}
    for number, row in enumerate(rows):
        widths = [max(96, 16 + 8 * len(label(room))) for room in row]
        x = (WIDTH - sum(widths) - GAP * (len(row) - 1)) / 2
        y = 30 + (len(rows) - 1 - number) * FLOOR * 0.62
        for room, width in zip(row, widths):
            result[room] = (x + width / 2, y, width)
            x += width + GAP
    return result


def draw(arrows):
    """The picture as text. `arrows`: room -> all rooms that it may include."""
    where = places(floors(arrows))
    height = int(max(y for _, y, _ in where.values())) + BOX + 36
    lines = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {height}" role="img">',
             "<title>The rooms, and which may include which</title>", f"<style>{STYLE}</style>",
             '<defs><marker id="head" viewBox="0 0 8 8" refX="7" refY="4" markerWidth="7" '
             'markerHeight="7" orient="auto"><path d="M0 0 8 4 0 8z" fill="#999"/></marker></defs>']
    for room, others in direct(arrows).items():
        x, y, _ = where[room]
        for other in sorted(others):
            to_x, to_y, _ = where[other]
            lines.append(f'<line x1="{x:.0f}" y1="{y + BOX / 2:.0f}" x2="{to_x:.0f}" '
                         f'y2="{to_y - BOX / 2:.0f}"/>')
    for room, (x, y, width) in where.items():
        lines.append(f'<rect x="{x - width / 2:.0f}" y="{y - BOX / 2:.0f}" width="{width:.0f}" '
                     f'height="{BOX}" rx="6" fill="{colour(room)}"/>')
        lines.append(f'<text x="{x:.0f}" y="{y + 5:.0f}">{html.escape(label(room))}</text>')
    lines.append(f'<text class="note" x="10" y="{height - 8}">An arrow leads to what a room may '
                 "include; it may also include all that is below along the arrows.</text>")
    return "\n".join(lines) + "\n</svg>\n"
