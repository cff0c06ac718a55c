#pragma once
// What a result plot shows, as the plot editor and its pages set it: which result set, which
// result and component, and how the view draws it (contour, deformed shape, bodies, section
// plane, vectors, animation, what else is visible). Values are internal (SI) where they carry
// a unit; the plot turns them into a KwResultDisplay for the view.
#include "KwiCADExport.h"

namespace KwPlotResult {
// The results a plot offers, in the order of the editor's result list.
enum Result : int { Displacement, VonMises, Principal, Components, Strain, Reaction, Count };
// The vectors the vector page offers.
enum Vector : int { VectorDisplacement, VectorReaction, VectorCount };
} // namespace KwPlotResult

struct KwPlotSettings
{
    enum ScaleMode : int { ScaleActual, ScaleAutomatic, ScaleFactor };
    enum Averaging : int { AveragedAtNodes, PerElement };

    int resultSet = 0; // index into the analysis's result sets
    int result = KwPlotResult::VonMises;
    int component = 0; // row of the result's component list

    // contour
    bool contourOn = true;
    int contourStyle = 0; // 0 banded, 1 smooth
    int bands = 9;
    bool autoRange = true;
    double rangeMin = 0.0; // internal unit of the result
    double rangeMax = 0.0;
    int colorMap = 0; // KwResultDisplay::ColorMap
    int averaging = AveragedAtNodes;

    // deformed shape
    bool deformedOn = true;
    int scaleMode = ScaleAutomatic;
    double scaleFactor = 1.0;
    bool undeformedOutline = true;

    // part view: the bodies drawn
    bool showSolids = true;
    bool showMembers = true;

    // section plane: normal along X, Y or Z, through a position given in per cent of the
    // model's extent along that axis
    bool sectionOn = false;
    int sectionAxis = 0;
    int sectionPosition = 50;
    bool sectionCap = true;

    // vectors; the size in tenths (10: the longest arrow a tenth of the model)
    bool vectorsOn = false;
    int vectorResult = KwPlotResult::VectorDisplacement;
    int vectorSize = 10;
    bool vectorsByMagnitude = true;

    // animation
    bool animate = false;
    int frames = 12;
    int framesPerSecond = 10;
    bool loop = true;

    // visibility
    bool meshEdges = true;
    bool loadsAndConstraints = false;
    bool legend = true;

    bool operator==(const KwPlotSettings&) const = default;
};
