#include "KwRenderer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

void KwRaster::Resize(int width, int height, bool withColour)
{
    m_w = std::max(1, width);
    m_h = std::max(1, height);
    const std::size_t n = std::size_t(m_w) * std::size_t(m_h);
    m_depth.resize(n);
    // A picture needs no ids; a pick buffer no colour.
    m_ids.assign(withColour ? 0 : n, 0u);
    if (withColour && (m_image.width() != m_w || m_image.height() != m_h))
        m_image = QImage(m_w, m_h, QImage::Format_RGB32);
    if (!withColour)
        m_image = QImage();
    m_writeColour = withColour;
}

void KwRaster::Clear(QRgb top, QRgb bottom)
{
    std::fill(m_depth.begin(), m_depth.end(), std::numeric_limits<float>::infinity());
    std::fill(m_ids.begin(), m_ids.end(), 0u);
    m_writeIds = m_writeIds && !m_ids.empty();
    m_bits = nullptr;
    if (m_image.isNull()) {
        m_writeColour = false;
        return;
    }
    m_bits = reinterpret_cast<QRgb*>(m_image.bits());
    m_stride = int(m_image.bytesPerLine() / 4);
    for (int y = 0; y < m_h; ++y) {
        const float t = m_h > 1 ? float(y) / float(m_h - 1) : 0.f;
        const QRgb c = qRgb(int(qRed(top) + t * (qRed(bottom) - qRed(top))),
                            int(qGreen(top) + t * (qGreen(bottom) - qGreen(top))),
                            int(qBlue(top) + t * (qBlue(bottom) - qBlue(top))));
        auto* line = reinterpret_cast<QRgb*>(m_image.scanLine(y));
        std::fill(line, line + m_w, c);
    }
}

inline void KwRaster::plot(int x, int y, float z, QRgb colour, uint32_t id)
{
    const std::size_t i = std::size_t(y) * std::size_t(m_w) + std::size_t(x);
    if (m_depthTest && z > m_depth[i])
        return;
    if (m_depthWrite)
        m_depth[i] = z;
    if (m_writeIds)
        m_ids[i] = id;
    if (m_writeColour)
        m_bits[std::size_t(y) * std::size_t(m_stride) + std::size_t(x)] = colour;
}

void KwRaster::FillTriangle(const KwRasterVertex& a, const KwRasterVertex& b,
                            const KwRasterVertex& c, uint32_t id)
{
    const float area = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
    if (!(std::fabs(area) > 1e-12f) || !std::isfinite(area))
        return;
    // The box on screen, clamped before it becomes whole pixels.
    auto pixel = [](float v, int limit) {
        return int(std::clamp(v, -1.f, float(limit)));
    };
    const int x0 = std::max(0, pixel(std::floor(std::min({a.x, b.x, c.x})), m_w));
    const int x1 = std::min(m_w - 1, pixel(std::ceil(std::max({a.x, b.x, c.x})), m_w));
    const int y0 = std::max(0, pixel(std::floor(std::min({a.y, b.y, c.y})), m_h));
    const int y1 = std::min(m_h - 1, pixel(std::ceil(std::max({a.y, b.y, c.y})), m_h));
    if (x0 > x1 || y0 > y1)
        return;
    const float inv = 1.f / area;
    // Barycentric weights of a, b and c as linear functions of the pixel centre.
    auto edge = [](const KwRasterVertex& p, const KwRasterVertex& q, float px, float py) {
        return (q.x - p.x) * (py - p.y) - (q.y - p.y) * (px - p.x);
    };
    const float dwa = -(c.y - b.y) * inv, dwb = -(a.y - c.y) * inv, dwc = -(b.y - a.y) * inv;
    const bool table = m_shading == ShadeTable && !m_table.empty();
    const int n = int(m_table.size());
    const float eps = -1e-5f;
    // One colour over the whole triangle (flat light, no table): worked out once.
    const bool flat = !table && a.a[0] == b.a[0] && a.a[0] == c.a[0] && a.a[1] == b.a[1] &&
                      a.a[1] == c.a[1] && a.a[2] == b.a[2] && a.a[2] == c.a[2];
    const QRgb flatColour = qRgb(std::clamp(int(a.a[0]), 0, 255), std::clamp(int(a.a[1]), 0, 255),
                                 std::clamp(int(a.a[2]), 0, 255));
    for (int y = y0; y <= y1; ++y) {
        const float py = float(y) + 0.5f, px = float(x0) + 0.5f;
        float wa = edge(b, c, px, py) * inv;
        float wb = edge(c, a, px, py) * inv;
        float wc = edge(a, b, px, py) * inv;
        // The span of the row inside all three edges, from the weights' slopes.
        float lo = 0, hi = float(x1 - x0);
        bool empty = false;
        for (const auto& [w, dw] : {std::pair{wa, dwa}, std::pair{wb, dwb}, std::pair{wc, dwc}}) {
            if (dw > 0)
                lo = std::max(lo, (eps - w) / dw);
            else if (dw < 0)
                hi = std::min(hi, (eps - w) / dw);
            else if (w < eps)
                empty = true;
        }
        if (empty || lo > hi)
            continue;
        // One pixel of slack either side; the test below decides.
        const int sx0 = x0 + std::max(0, int(std::floor(lo)) - 1);
        const int sx1 = std::min(x1, x0 + int(std::ceil(hi)) + 1);
        wa += dwa * float(sx0 - x0);
        wb += dwb * float(sx0 - x0);
        wc += dwc * float(sx0 - x0);
        for (int x = sx0; x <= sx1; ++x, wa += dwa, wb += dwb, wc += dwc) {
            if (wa < eps || wb < eps || wc < eps)
                continue;
            const float z = wa * a.z + wb * b.z + wc * c.z;
            if (m_clip && wa * a.clip + wb * b.clip + wc * c.clip > 0)
                continue;
            QRgb colour = flatColour;
            if (m_writeColour && !flat) {
                if (table) {
                    const float t = wa * a.a[0] + wb * b.a[0] + wc * c.a[0];
                    const float light = wa * a.a[1] + wb * b.a[1] + wc * c.a[1];
                    const QRgb base = t < 0 ? m_noValue
                                            : m_table[std::size_t(std::clamp(int(t * float(n)), 0, n - 1))];
                    colour = qRgb(std::min(255, int(float(qRed(base)) * light)),
                                  std::min(255, int(float(qGreen(base)) * light)),
                                  std::min(255, int(float(qBlue(base)) * light)));
                } else {
                    colour = qRgb(std::clamp(int(wa * a.a[0] + wb * b.a[0] + wc * c.a[0]), 0, 255),
                                  std::clamp(int(wa * a.a[1] + wb * b.a[1] + wc * c.a[1]), 0, 255),
                                  std::clamp(int(wa * a.a[2] + wb * b.a[2] + wc * c.a[2]), 0, 255));
                }
            }
            plot(x, y, z, colour, id);
        }
    }
}

void KwRaster::DrawLine(const KwRasterVertex& a, const KwRasterVertex& b, QRgb colour,
                        float width, float bias, uint32_t id)
{
    const float dx = b.x - a.x, dy = b.y - a.y;
    if (!std::isfinite(dx) || !std::isfinite(dy) || !std::isfinite(a.x) || !std::isfinite(a.y))
        return;
    // Only the part of the line on the raster (with a margin for its width) is walked.
    const float margin = width + 2;
    float t0 = 0, t1 = 1;
    auto clipTo = [&](float p, float q) { // p t <= q
        if (p == 0)
            return q >= 0;
        const float t = q / p;
        if (p < 0)
            t0 = std::max(t0, t);
        else
            t1 = std::min(t1, t);
        return t0 <= t1;
    };
    if (!clipTo(-dx, a.x + margin) || !clipTo(dx, float(m_w) + margin - a.x) ||
        !clipTo(-dy, a.y + margin) || !clipTo(dy, float(m_h) + margin - a.y))
        return;
    const float length = (t1 - t0) * std::max(std::fabs(dx), std::fabs(dy));
    const int steps = std::max(1, int(std::ceil(std::min(length, 1e6f))));
    const int half = width > 1.5f ? int(width) / 2 : 0;
    const int extent = width > 1.5f ? int(std::lround(std::min(width, 64.f))) : 1;
    for (int i = 0; i <= steps; ++i) {
        const float t = t0 + (t1 - t0) * float(i) / float(steps);
        if (m_clip && a.clip + t * (b.clip - a.clip) > 0)
            continue;
        const int px = int(std::floor(a.x + t * dx));
        const int py = int(std::floor(a.y + t * dy));
        const float z = a.z + t * (b.z - a.z) - bias;
        for (int oy = 0; oy < extent; ++oy)
            for (int ox = 0; ox < extent; ++ox) {
                const int x = px - half + ox, y = py - half + oy;
                if (Inside(x, y))
                    plot(x, y, z, colour, id);
            }
    }
}

void KwRaster::DrawDot(float x, float y, float z, float radius, QRgb colour, float bias,
                       uint32_t id)
{
    if (!std::isfinite(x) || !std::isfinite(y) || !(radius >= 0) || radius > 256 ||
        x < -radius - 1 || y < -radius - 1 || x > float(m_w) + radius || y > float(m_h) + radius)
        return;
    const int r = int(std::ceil(radius));
    const int cx = int(std::floor(x)), cy = int(std::floor(y));
    const float r2 = radius * radius;
    for (int oy = -r; oy <= r; ++oy)
        for (int ox = -r; ox <= r; ++ox)
            if (float(ox * ox + oy * oy) <= r2 && Inside(cx + ox, cy + oy))
                plot(cx + ox, cy + oy, z - bias, colour, id);
}

QImage KwRaster::Halved() const
{
    const int w = m_w / 2, h = m_h / 2;
    QImage out(std::max(1, w), std::max(1, h), QImage::Format_RGB32);
    if (m_image.isNull() || w < 1 || h < 1)
        return out;
    for (int y = 0; y < h; ++y) {
        const auto* a = reinterpret_cast<const QRgb*>(m_image.constScanLine(2 * y));
        const auto* b = reinterpret_cast<const QRgb*>(m_image.constScanLine(2 * y + 1));
        auto* o = reinterpret_cast<QRgb*>(out.scanLine(y));
        for (int x = 0; x < w; ++x) {
            const QRgb p = a[2 * x], q = a[2 * x + 1], r = b[2 * x], t = b[2 * x + 1];
            // Red and blue together, green apart: four pixels summed without overflow.
            const uint32_t rb = (p & 0xff00ffu) + (q & 0xff00ffu) + (r & 0xff00ffu) + (t & 0xff00ffu);
            const uint32_t g = (p & 0xff00u) + (q & 0xff00u) + (r & 0xff00u) + (t & 0xff00u);
            o[x] = 0xff000000u | ((rb >> 2) & 0xff00ffu) | ((g >> 2) & 0xff00u);
        }
    }
    return out;
}
