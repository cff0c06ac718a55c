#pragma once
// What the model view shows besides the model itself: a result (contour, deformed shape,
// vectors, section plane, animation) and the direction marks of the mesh tools (shell normals,
// beam directions). Whoever drives the display (the plot editor, the reverse-normals dialog)
// fills one of these and hands it to CFMView; the view only draws what it is given.
#include <QColor>
#include <QString>
#include <vector>

struct KwResultDisplay
{
    // Nothing result-related is drawn while this is false.
    bool active = false;
    QString title;           // "Von Mises Stress", shown above the legend
    QString unitLabel;       // typographic unit of the values, "MPa"

    // --- contour ---
    enum ContourKind { ContourNone, ContourBanded, ContourSmooth };
    ContourKind contour = ContourNone;
    // One value per node (index as in CKwMeshModel::Nodes()), in the unit of unitLabel.
    // A NaN leaves the node uncoloured (grey).
    std::vector<float> nodalValues;
    // One value per element (index as in the mesh's element order); used when nodalValues is
    // empty: each element is drawn in its value's colour.
    std::vector<float> elementValues;
    int bands = 9;
    bool fixedRange = false; // automatic range: min and max of the values
    double rangeMin = 0.0;
    double rangeMax = 0.0;
    enum ColorMap { Rainbow, Grayscale, Thermal };
    ColorMap colorMap = Rainbow;
    bool showLegend = true;

    // --- deformed shape ---
    // Three values per node (x, y, z displacement in model units), or empty.
    std::vector<float> displacement;
    double deformScale = 0.0; // 0 draws undeformed
    bool showUndeformedOutline = true;

    // --- vectors ---
    // Three components per node, drawn as arrows from the (deformed) node.
    std::vector<float> vectors;
    double vectorSize = 1.0;   // relative: 1 makes the longest arrow a tenth of the model
    bool vectorsByMagnitude = true;

    // --- section plane ---
    bool sectionOn = false;
    double sectionPoint[3] = {0, 0, 0};
    double sectionNormal[3] = {1, 0, 0};
    bool sectionCap = true;

    // --- visibility ---
    bool showMeshEdges = true;
    bool showLoadsAndConstraints = false;

    // --- animation ---
    // The view steps through frames itself while animating; frameCount frames per cycle.
    bool animate = false;
    int frameCount = 12;
    int framesPerSecond = 10;
    bool loop = true;
};

struct KwDirectionDisplay
{
    // Shell normals: front faces (the side the normal points to) and back faces in their own
    // colours, and the normal of each shell element as a vector.
    bool showNormals = false;
    QColor frontColor = QColor(0x4a, 0x90, 0xd9);
    QColor backColor = QColor(0xd9, 0x7a, 0x4a);
    bool showNormalVectors = true;
    double normalSize = 1.0;  // relative: 1 is a third of the mean element size
    QColor normalColor = QColor(0x1f, 0x3a, 0x93);
    // Beam element directions as arrows from the first to the second node.
    bool showBeamDirections = false;
    double arrowSize = 1.0;
    QColor arrowColor = QColor(0x6c, 0x34, 0x83);
};
