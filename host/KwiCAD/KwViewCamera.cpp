#include "KwViewCamera.h"

#include <algorithm>
#include <cmath>

namespace {

KwVec3 cross(const KwVec3& a, const KwVec3& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double dot(const KwVec3& a, const KwVec3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

KwVec3 normalised(const KwVec3& v)
{
    const double l = std::sqrt(dot(v, v));
    return l > 0 ? KwVec3{v.x / l, v.y / l, v.z / l} : KwVec3{0, 0, 1};
}

} // namespace

KwViewCamera::KwViewCamera() { SetStandardView(Isometric); }

void KwViewCamera::SetViewport(int width, int height)
{
    m_width = std::max(1, width);
    m_height = std::max(1, height);
    ++m_revision;
}

void KwViewCamera::SetOrientation(KwVec3 toViewer, KwVec3 up)
{
    const KwVec3 z = normalised(toViewer);
    KwVec3 x = cross(up, z);
    if (dot(x, x) < 1e-12) // looking along the up direction: keep model x to the right
        x = std::fabs(z.x) < 0.9 ? cross(cross(z, KwVec3{1, 0, 0}), z) : KwVec3{0, 1, 0};
    x = normalised(x);
    const KwVec3 y = cross(z, x);
    m_r = {x.x, x.y, x.z, y.x, y.y, y.z, z.x, z.y, z.z};
    ++m_revision;
}

void KwViewCamera::SetStandardView(StandardView view)
{
    const KwVec3 zUp{0, 0, 1};
    switch (view) {
    case Front: SetOrientation({0, -1, 0}, zUp); break;
    case Back: SetOrientation({0, 1, 0}, zUp); break;
    case Left: SetOrientation({-1, 0, 0}, zUp); break;
    case Right: SetOrientation({1, 0, 0}, zUp); break;
    case Top: SetOrientation({0, 0, 1}, {0, 1, 0}); break;
    case Bottom: SetOrientation({0, 0, -1}, {0, -1, 0}); break;
    case Isometric: SetOrientation({1, -1, 1}, zUp); break;
    }
}

void KwViewCamera::Fit(const KwVec3& lo, const KwVec3& hi, double fill)
{
    m_c = {(lo.x + hi.x) / 2, (lo.y + hi.y) / 2, (lo.z + hi.z) / 2};
    m_offX = m_offY = 0;
    // Extent of the box's projection at unit scale.
    double w = 0, h = 0;
    for (int i = 0; i < 8; ++i) {
        const KwVec3 p{(i & 1 ? hi.x : lo.x) - m_c.x, (i & 2 ? hi.y : lo.y) - m_c.y,
                       (i & 4 ? hi.z : lo.z) - m_c.z};
        w = std::max(w, 2 * std::fabs(m_r[0] * p.x + m_r[1] * p.y + m_r[2] * p.z));
        h = std::max(h, 2 * std::fabs(m_r[3] * p.x + m_r[4] * p.y + m_r[5] * p.z));
    }
    const double sx = w > 0 ? fill * m_width / w : 1e300;
    const double sy = h > 0 ? fill * m_height / h : 1e300;
    m_scale = std::min(sx, sy);
    if (!(m_scale < 1e300)) // a single point: any scale shows it
        m_scale = 1;
    ++m_revision;
}

void KwViewCamera::Rotate(double dx, double dy)
{
    // Turning about the view's own axes: a horizontal drag about the screen's up axis, a
    // vertical one about the screen's right axis; half a degree per pixel.
    const double k = M_PI / 360.0;
    auto turn = [this](const KwVec3& axisModel, double angle) {
        const KwVec3 a = normalised(axisModel);
        const double c = std::cos(angle), s = std::sin(angle);
        for (int row = 0; row < 3; ++row) {
            const KwVec3 v{m_r[std::size_t(3 * row)], m_r[std::size_t(3 * row + 1)],
                           m_r[std::size_t(3 * row + 2)]};
            // Rodrigues: the view axes turn the other way round than the model appears to.
            const KwVec3 axv = cross(a, v);
            const double d = dot(a, v);
            const KwVec3 r{v.x * c - axv.x * s + a.x * d * (1 - c),
                           v.y * c - axv.y * s + a.y * d * (1 - c),
                           v.z * c - axv.z * s + a.z * d * (1 - c)};
            m_r[std::size_t(3 * row)] = r.x;
            m_r[std::size_t(3 * row + 1)] = r.y;
            m_r[std::size_t(3 * row + 2)] = r.z;
        }
    };
    turn({m_r[3], m_r[4], m_r[5]}, dx * k);
    turn({m_r[0], m_r[1], m_r[2]}, dy * k);
    orthonormalise();
    ++m_revision;
}

void KwViewCamera::orthonormalise()
{
    const KwVec3 z = normalised({m_r[6], m_r[7], m_r[8]});
    const KwVec3 x = normalised(cross({m_r[3], m_r[4], m_r[5]}, z));
    const KwVec3 y = cross(z, x);
    m_r = {x.x, x.y, x.z, y.x, y.y, y.z, z.x, z.y, z.z};
}

void KwViewCamera::Pan(double dx, double dy)
{
    m_offX += dx;
    m_offY += dy;
    ++m_revision;
}

void KwViewCamera::ZoomAbout(double sx, double sy, double factor)
{
    if (!(factor > 0) || !std::isfinite(factor))
        return;
    const double next = m_scale * factor;
    if (next < 1e-12 || next > 1e15)
        return;
    // A point at s = c + off + scale*v stays where it is: off' = s - c - factor*(s - c - off).
    const double cx = 0.5 * m_width, cy = 0.5 * m_height;
    m_offX = sx - cx - factor * (sx - cx - m_offX);
    m_offY = sy - cy - factor * (sy - cy - m_offY);
    m_scale = next;
    ++m_revision;
}

KwVec3 KwViewCamera::Unproject(double sx, double sy) const
{
    const double vx = (sx - 0.5 * m_width - m_offX) / m_scale;
    const double vy = -(sy - 0.5 * m_height - m_offY) / m_scale;
    return {m_c.x + m_r[0] * vx + m_r[3] * vy, m_c.y + m_r[1] * vx + m_r[4] * vy,
            m_c.z + m_r[2] * vx + m_r[5] * vy};
}

KwVec3 KwViewCamera::ToView(const KwVec3& d) const
{
    return {m_r[0] * d.x + m_r[1] * d.y + m_r[2] * d.z, m_r[3] * d.x + m_r[4] * d.y + m_r[5] * d.z,
            m_r[6] * d.x + m_r[7] * d.y + m_r[8] * d.z};
}

KwViewCamera KwViewCamera::Scaled(int factor) const
{
    KwViewCamera c = *this;
    c.m_width = m_width * factor;
    c.m_height = m_height * factor;
    c.m_offX = m_offX * factor;
    c.m_offY = m_offY * factor;
    c.m_scale = m_scale * factor;
    ++c.m_revision;
    return c;
}
