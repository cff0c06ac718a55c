#pragma once
// A small software rasteriser for the model view: triangles, lines and dots into a colour
// image, a depth buffer and an id buffer. The view draws its picture and its pick buffer with
// the same calls, so what is picked is exactly what is drawn.
#include "KwiCADExport.h"

#include <QImage>
#include <algorithm>
#include <cstdint>
#include <vector>

// A corner in screen space: pixel position, depth (larger is further away), three attributes
// and a clip distance (the pixel is dropped where the interpolated distance is above zero
// while clipping is on).
struct KwRasterVertex
{
    float x = 0, y = 0, z = 0;
    float a[3] = {0, 0, 0};
    float clip = -1;
};

class KWICAD_EXPORT KwRaster
{
public:
    // What a triangle's attributes mean: a colour (0..255 each), or a position in a colour
    // table (a[0] in 0..1, below 0 for "no value") with a light factor in a[1].
    enum Shading { ShadeColour, ShadeTable };

    void Resize(int width, int height, bool withColour = true);
    int Width() const { return m_w; }
    int Height() const { return m_h; }
    // A vertical gradient from `top` to `bottom`, depth at infinity, ids at 0.
    void Clear(QRgb top, QRgb bottom);
    // Ids back to 0, depth and colour kept.
    void ClearIds() { std::fill(m_ids.begin(), m_ids.end(), 0u); }

    void SetShading(Shading s) { m_shading = s; }
    // Colours of the table (ShadeTable), evenly spaced over 0..1; a table of n colours draws
    // n bands.
    void SetColourTable(std::vector<QRgb> table) { m_table = std::move(table); }
    void SetNoValueColour(QRgb c) { m_noValue = c; }
    void SetClipping(bool on) { m_clip = on; }
    // Ids written with each primitive (0 means nothing); colour is not touched while off.
    // Drawing starts with Clear.
    void SetWriteColour(bool on) { m_writeColour = on; }
    void SetWriteIds(bool on) { m_writeIds = on; }
    void SetDepthTest(bool on) { m_depthTest = on; }
    void SetDepthWrite(bool on) { m_depthWrite = on; }

    void FillTriangle(const KwRasterVertex& a, const KwRasterVertex& b, const KwRasterVertex& c,
                      uint32_t id = 0);
    // A line `width` pixels wide in one colour; its depth is pulled towards the viewer by
    // `bias` so that it wins over the surface it lies on.
    void DrawLine(const KwRasterVertex& a, const KwRasterVertex& b, QRgb colour, float width,
                  float bias, uint32_t id = 0);
    // A round dot of the given radius.
    void DrawDot(float x, float y, float z, float radius, QRgb colour, float bias, uint32_t id = 0);

    // Positive when a, b, c run counter-clockwise on screen (y down: the front of an outward
    // face seen from outside).
    static float SignedArea(const KwRasterVertex& a, const KwRasterVertex& b,
                            const KwRasterVertex& c)
    {
        return (b.x - a.x) * (a.y - c.y) - (a.y - b.y) * (c.x - a.x);
    }

    // The picture at half the size, each pixel the mean of four (smooths a picture drawn at
    // twice the size).
    QImage Halved() const;
    QImage& Image() { return m_image; }
    const QImage& Image() const { return m_image; }
    float DepthAt(int x, int y) const { return m_depth[std::size_t(y) * std::size_t(m_w) + std::size_t(x)]; }
    uint32_t IdAt(int x, int y) const { return m_ids[std::size_t(y) * std::size_t(m_w) + std::size_t(x)]; }
    bool Inside(int x, int y) const { return x >= 0 && y >= 0 && x < m_w && y < m_h; }

private:
    void plot(int x, int y, float z, QRgb colour, uint32_t id);

    int m_w = 0, m_h = 0;
    QImage m_image;
    QRgb* m_bits = nullptr; // the image's pixels while drawing (set by Clear)
    int m_stride = 0;
    std::vector<float> m_depth;
    std::vector<uint32_t> m_ids;
    std::vector<QRgb> m_table;
    QRgb m_noValue = qRgb(0xa0, 0xa0, 0xa0);
    Shading m_shading = ShadeColour;
    bool m_clip = false;
    bool m_writeColour = true;
    bool m_writeIds = false;
    bool m_depthTest = true;
    bool m_depthWrite = true;
};
