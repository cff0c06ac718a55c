#!/usr/bin/env python3
"""Draws the shape pictures of the cross-section dialog (SVG, one per shape) with the meaning of
each dimension marked. Run from the repository root; writes KwMFCUI/resources/sections/."""
import math, os

OUT = "KwMFCUI/resources/sections"
W, H = 200, 150

def rect(x0, y0, x1, y1):
    return [(x0, y0), (x1, y0), (x1, y1), (x0, y1)]

def circle(r, n=48):
    return [(r * math.cos(2 * math.pi * i / n), r * math.sin(2 * math.pi * i / n)) for i in range(n)]

# Each entry: picture id, loops (section coordinates, y up), dimensions:
# (label, (x1, y1), (x2, y2), offset) draws a dimension line parallel to the two points,
# shifted by `offset` (section units) to the left of the direction p1 -> p2.
def shapes():
    s = {}
    s["ROD"] = (331, [circle(10)], [("DIM1", (0, 0), (10, 0), 0)])
    s["TUBE"] = (332, [circle(10), circle(7)], [("DIM1", (0, 0), (0, 10), 0), ("DIM2", (0, 0), (7 * 0.7071, -7 * 0.7071), 0)])
    h, wb, wt, tw, tb, tt = 20, 16, 12, 2.4, 3, 2.6
    I = [(-wb/2, 0), (wb/2, 0), (wb/2, tb), (tw/2, tb), (tw/2, h-tt), (wt/2, h-tt), (wt/2, h), (-wt/2, h), (-wt/2, h-tt), (-tw/2, h-tt), (-tw/2, tb), (-wb/2, tb)]
    s["I"] = (333, [I], [("DIM1", (-wb/2, 0), (-wb/2, h), 4), ("DIM2", (-wb/2, 0), (wb/2, 0), -2.5), ("DIM3", (wt/2, h), (-wt/2, h), -2.5),
                         ("DIM4", (-tw/2, h/2), (tw/2, h/2), 0), ("DIM5", (wb/2, tb), (wb/2, 0), -2.5), ("DIM6", (wt/2, h), (wt/2, h-tt), -5)])
    w, tw, tf, h = 16, 2.4, 3, 20
    I1 = [(-w/2, 0), (w/2, 0), (w/2, tf), (tw/2, tf), (tw/2, h-tf), (w/2, h-tf), (w/2, h), (-w/2, h), (-w/2, h-tf), (-tw/2, h-tf), (-tw/2, tf), (-w/2, tf)]
    s["I1"] = (342, [I1], [("DIM1", (-w/2, h-tf), (-tw/2, h-tf), 0), ("DIM2", (-tw/2, h/2), (tw/2, h/2), 0), ("DIM3", (w/2, tf), (w/2, h-tf), -2.5), ("DIM4", (-w/2, 0), (-w/2, h), 3.5)])
    C = [(0, 0), (14, 0), (14, 3), (2.6, 3), (2.6, 17), (14, 17), (14, 20), (0, 20)]
    s["CHAN"] = (334, [C], [("DIM1", (0, 20), (14, 20), 2.5), ("DIM2", (0, 0), (0, 20), 3), ("DIM3", (0, 10), (2.6, 10), 0), ("DIM4", (14, 3), (14, 0), -2.5)])
    s["CHAN1"] = (340, [C], [("DIM1", (2.6, 17), (14, 17), 0), ("DIM2", (0, 10), (2.6, 10), 0), ("DIM3", (14, 3), (14, 17), -2.5), ("DIM4", (0, 0), (0, 20), 3)])
    U = [(0, 0), (20, 0), (20, 14), (17.4, 14), (17.4, 3), (2.6, 3), (2.6, 14), (0, 14)]
    s["CHAN2"] = (346, [U], [("DIM1", (0, 14), (2.6, 14), 2), ("DIM2", (10, 0), (10, 3), 0), ("DIM3", (20, 0), (20, 14), -2.5), ("DIM4", (0, 0), (20, 0), -2.5)])
    T = [(-1.3, 0), (1.3, 0), (1.3, 17), (10, 17), (10, 20), (-10, 20), (-10, 17), (-1.3, 17)]
    s["T"] = (335, [T], [("DIM1", (-10, 20), (10, 20), -2.5), ("DIM2", (-10, 0), (-10, 20), 0), ("DIM3", (10, 20), (10, 17), -2.5), ("DIM4", (-1.3, 6), (1.3, 6), 0)])
    T1 = [(0, -10), (3, -10), (3, -1.3), (18, -1.3), (18, 1.3), (3, 1.3), (3, 10), (0, 10)]
    s["T1"] = (341, [T1], [("DIM1", (0, -10), (0, 10), 2.5), ("DIM2", (3, 1.3), (18, 1.3), 3), ("DIM3", (0, -10), (3, -10), -2.5), ("DIM4", (14, -1.3), (14, 1.3), 0)])
    T2 = [(x, 20 - y) for (x, y) in reversed(T)]
    s["T2"] = (347, [T2], [("DIM1", (-10, 0), (10, 0), -2.5), ("DIM2", (-10, 0), (-10, 20), 0), ("DIM3", (10, 3), (10, 0), -2.5), ("DIM4", (-1.3, 14), (1.3, 14), 0)])
    v, a, hh, ta = 1.5, 10, 10, 1.5
    X = [(-v, -hh), (v, -hh), (v, -ta), (a, -ta), (a, ta), (v, ta), (v, hh), (-v, hh), (-v, ta), (-a, ta), (-a, -ta), (-v, -ta)]
    s["CROSS"] = (336, [X], [("DIM1", (v, ta), (a, ta), 3), ("DIM2", (-v, hh), (v, hh), -2.5), ("DIM3", (-v, -hh), (-v, hh), 7), ("DIM4", (a, -ta), (a, ta), -2.5)])
    s["BAR"] = (337, [rect(0, 0, 14, 20)], [("DIM1", (0, 0), (14, 0), -2.5), ("DIM2", (14, 0), (14, 20), -2.5)])
    s["BOX"] = (338, [rect(0, 0, 16, 20), rect(2.4, 3, 13.6, 17)], [("DIM1", (0, 0), (16, 0), -2.5), ("DIM2", (16, 0), (16, 20), -2.5), ("DIM3", (8, 20), (8, 17), 0), ("DIM4", (0, 10), (2.4, 10), 0)])
    s["BOX1"] = (344, [rect(0, 0, 16, 20), rect(2, 3.5, 13, 17.4)], [("DIM1", (0, 0), (16, 0), -2.5), ("DIM2", (16, 0), (16, 20), -2.5), ("DIM3", (8, 20), (8, 17.4), 0), ("DIM4", (8, 3.5), (8, 0), 0), ("DIM5", (0, 10), (2, 10), 0), ("DIM6", (13, 7), (16, 7), 0)])
    g, t, hh, tw = 6, 2.5, 10, 1.4
    Hs = [(-g-t, -hh), (-g, -hh), (-g, -tw), (g, -tw), (g, -hh), (g+t, -hh), (g+t, hh), (g, hh), (g, tw), (-g, tw), (-g, hh), (-g-t, hh)]
    s["H"] = (339, [Hs], [("DIM1", (-g, tw), (g, tw), 3), ("DIM2", (-g-t, -hh), (-g, -hh), -2.5), ("DIM3", (g+t, -hh), (g+t, hh), -2.5), ("DIM4", (0, -tw), (0, tw), 0)])
    s["HEXA"] = (343, [[(4, 0), (16, 0), (20, 8), (16, 16), (4, 16), (0, 8)]], [("DIM1", (0, 16), (4, 16), 2.5), ("DIM2", (0, 0), (20, 0), -2.5), ("DIM3", (20, 0), (20, 16), -2.5)])
    Z = [(-8, 0), (2.4, 0), (2.4, 17), (10.4, 17), (10.4, 20), (0, 20), (0, 3), (-8, 3)]
    s["Z"] = (345, [Z], [("DIM1", (2.4, 17), (10.4, 17), 0), ("DIM2", (0, 10), (2.4, 10), 0), ("DIM3", (10.4, 3), (10.4, 17), -2.5), ("DIM4", (-8, 0), (-8, 20), 2.5)])
    t, h, w, b = 1.6, 10, 12, 5
    HAT = [(-w-b, 0), (-w+t, 0), (-w+t, h-t), (w-t, h-t), (w-t, 0), (w+b, 0), (w+b, t), (w, t), (w, h), (-w, h), (-w, t), (-w-b, t)]
    s["HAT"] = (330, [HAT], [("DIM1", (w+b, 0), (w+b, t), -2.5), ("DIM2", (-w-b, 0), (-w-b, h), 2.5), ("DIM3", (-w, h), (w, h), -2.5), ("DIM4", (-w-b, 0), (-w, 0), -2.5)])
    W1, h, c, t, tp = 12, 12, 6, 1.6, 2
    HAT1 = [(-W1, 0), (W1, 0), (W1, tp+t), (c, tp+t), (c, h), (-c, h), (-c, tp+t), (-W1, tp+t)]
    s["HAT1"] = (329, [HAT1, rect(-c+t, tp, c-t, h-t)], [("DIM1", (-W1, 0), (W1, 0), -2.5), ("DIM2", (W1, 0), (W1, h), -2.5), ("DIM3", (-c, h), (c, h), -2.5), ("DIM4", (-c, 8), (-c+t, 8), 0), ("DIM5", (-9, 0), (-9, tp), 0)])
    s["L"] = (348, [[(0, 0), (16, 0), (16, 3), (2.6, 3), (2.6, 20), (0, 20)]], [("DIM1", (0, 0), (16, 0), -2.5), ("DIM2", (0, 0), (0, 20), 2.5), ("DIM3", (16, 0), (16, 3), -2.5), ("DIM4", (0, 20), (2.6, 20), 2.5)])
    return s

def svg(loops, dims):
    pts = [p for l in loops for p in l]
    ext = []
    for (_, p1, p2, off) in dims:
        dx, dy = p2[0] - p1[0], p2[1] - p1[1]
        L = math.hypot(dx, dy) or 1
        nx, ny = -dy / L * off, dx / L * off
        ext += [(p1[0] + nx, p1[1] + ny), (p2[0] + nx, p2[1] + ny)]
    allp = pts + ext
    x0, x1 = min(p[0] for p in allp), max(p[0] for p in allp)
    y0, y1 = min(p[1] for p in allp), max(p[1] for p in allp)
    m = 18
    sc = min((W - 2 * m) / (x1 - x0), (H - 2 * m) / (y1 - y0))
    cx, cy = (x0 + x1) / 2, (y0 + y1) / 2
    T = lambda p: (W / 2 + sc * (p[0] - cx), H / 2 - sc * (p[1] - cy))
    path = " ".join("M " + " L ".join("%.2f %.2f" % T(p) for p in l) + " Z" for l in loops)
    out = ['<svg xmlns="http://www.w3.org/2000/svg" width="%d" height="%d" viewBox="0 0 %d %d">' % (W, H, W, H),
           '<defs><marker id="a" viewBox="0 0 10 10" refX="10" refY="5" markerWidth="6" markerHeight="6" orient="auto-start-reverse"><path d="M0 0 L10 5 L0 10 z" fill="#b00000"/></marker></defs>',
           '<rect width="%d" height="%d" fill="white"/>' % (W, H),
           '<path d="%s" fill="#c8d4e6" fill-rule="evenodd" stroke="#1a2a4a" stroke-width="1.2"/>' % path]
    for (label, p1, p2, off) in dims:
        dx, dy = p2[0] - p1[0], p2[1] - p1[1]
        L = math.hypot(dx, dy) or 1
        nx, ny = -dy / L * off, dx / L * off
        a, b = T((p1[0] + nx, p1[1] + ny)), T((p2[0] + nx, p2[1] + ny))
        if off:
            for p, q in ((p1, a), (p2, b)):
                pp = T(p)
                out.append('<line x1="%.2f" y1="%.2f" x2="%.2f" y2="%.2f" stroke="#808080" stroke-width="0.6"/>' % (pp[0], pp[1], q[0], q[1]))
        out.append('<line x1="%.2f" y1="%.2f" x2="%.2f" y2="%.2f" stroke="#b00000" stroke-width="0.9" marker-start="url(#a)" marker-end="url(#a)"/>' % (a[0], a[1], b[0], b[1]))
        mx, my = (a[0] + b[0]) / 2, (a[1] + b[1]) / 2
        # Label beside the line, away from the section's centre.
        vx, vy = mx - W / 2, my - H / 2
        vl = math.hypot(vx, vy) or 1
        tx, ty = mx + 9 * vx / vl, my + 9 * vy / vl + 3
        tx = min(max(tx, 14), W - 14)
        ty = min(max(ty, 9), H - 3)
        out.append('<text x="%.1f" y="%.1f" font-family="DejaVu Sans, Arial, sans-serif" font-size="9" fill="#b00000" text-anchor="middle">%s</text>' % (tx, ty, label))
    out.append("</svg>")
    return "\n".join(out) + "\n"

os.makedirs(OUT, exist_ok=True)
for name, (pid, loops, dims) in shapes().items():
    with open(os.path.join(OUT, "shape-%d.svg" % pid), "w") as f:
        f.write(svg(loops, dims))
print("wrote", len(shapes()), "pictures")
