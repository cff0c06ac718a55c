#pragma once
// The camera of the model view: an orthographic projection of model space onto the view's
// pixels. View axes: x to the right, y up, z towards the viewer; depth grows away from the
// viewer. The camera turns about a centre in model space and is moved on screen by a pixel
// offset, so that zooming about the cursor and panning never change the turning centre.
#include "KwiCADExport.h"

#include <array>

struct KwVec3
{
    double x = 0, y = 0, z = 0;
};

class KWICAD_EXPORT KwViewCamera
{
public:
    enum StandardView { Front, Back, Left, Right, Top, Bottom, Isometric };

    KwViewCamera();

    void SetViewport(int width, int height);
    int Width() const { return m_width; }
    int Height() const { return m_height; }

    // Looks from the given side; Isometric looks from (+x, -y, +z) with z up. Keeps the
    // centre, scale and offset.
    void SetStandardView(StandardView view);
    // Looks along -toViewer with the given screen-up direction (made perpendicular).
    void SetOrientation(KwVec3 toViewer, KwVec3 up);
    // Frames a box: its centre on the middle of the view, its projection filling `fill` of the
    // smaller side.
    void Fit(const KwVec3& lo, const KwVec3& hi, double fill = 0.8);

    // Turns the model: a drag of (dx, dy) pixels turns about the view's y and x axes.
    void Rotate(double dx, double dy);
    void Pan(double dx, double dy);
    // The same view on a raster `factor` times finer (for supersampling).
    KwViewCamera Scaled(int factor) const;
    // Scales by `factor` keeping the model point under `screen` where it is.
    void ZoomAbout(double sx, double sy, double factor);

    // Screen position (pixels) and depth of a model point.
    struct Projected
    {
        float x, y, depth;
    };
    Projected Project(double x, double y, double z) const
    {
        const double vx = m_r[0] * (x - m_c.x) + m_r[1] * (y - m_c.y) + m_r[2] * (z - m_c.z);
        const double vy = m_r[3] * (x - m_c.x) + m_r[4] * (y - m_c.y) + m_r[5] * (z - m_c.z);
        const double vz = m_r[6] * (x - m_c.x) + m_r[7] * (y - m_c.y) + m_r[8] * (z - m_c.z);
        return {float(0.5 * m_width + m_offX + m_scale * vx),
                float(0.5 * m_height + m_offY - m_scale * vy), float(-vz)};
    }
    // The model point drawn at a pixel, on the plane through the turning centre.
    KwVec3 Unproject(double sx, double sy) const;
    // A model direction in view axes (x right, y up, z towards the viewer).
    KwVec3 ToView(const KwVec3& d) const;
    // The direction from the model to the viewer.
    KwVec3 ToViewer() const { return {m_r[6], m_r[7], m_r[8]}; }
    KwVec3 Up() const { return {m_r[3], m_r[4], m_r[5]}; }

    double Scale() const { return m_scale; }
    KwVec3 Centre() const { return m_c; }
    double OffsetX() const { return m_offX; }
    double OffsetY() const { return m_offY; }
    // Changes whenever anything that moves a projected point changes.
    unsigned Revision() const { return m_revision; }

private:
    void orthonormalise();

    // Rows: the view's x, y and z axes in model coordinates.
    std::array<double, 9> m_r{};
    KwVec3 m_c;
    double m_scale = 1;
    double m_offX = 0, m_offY = 0;
    int m_width = 1, m_height = 1;
    unsigned m_revision = 0;
};
