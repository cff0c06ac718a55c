#pragma once
// The demo host's sample assembly: a bracket with bolt holes and a filleted inner corner, a
// cover plate and a bolt, written as a geometry script for the external mesher (run as a
// separate program, never linked), meshed, and put into a model.
//
// Bodies: 1 "Bracket" (solid), 2 "Cover" (a surface part meshed with shells at the plate's
// mid-surface, or a 3 mm solid plate), 3 "Bolt" (solid, or a beam along its axis). The geometry
// is generated the same way for the same settings, so its face, edge and vertex ids are stable
// from one run to the next and what refers to them stays on its geometry.
#include "KwGmshMesh.h"
#include "KwMeshSettings.h"
#include "KwiCADExport.h"

#include <QString>
#include <QStringList>

class CKwFEModel;

inline constexpr int kKwBracketBody = 1;
inline constexpr int kKwCoverBody = 2;
inline constexpr int kKwBoltBody = 3;

// The element length a run asks for: the typed length, or the level on the fine-to-coarse
// scale (level 5: 6 mm, each level a factor of the square root of two).
KWICAD_EXPORT double KwAssemblyElementSize(const KwMeshSettings& settings);

// The geometry script for the mesher. The model's mesh controls that name the geometry (an
// element size on faces, edges or vertices; an element count on edges) go into the script too.
KWICAD_EXPORT QString KwAssemblyGeometry(const KwMeshSettings& settings,
                                         const CKwFEModel* controls = nullptr);

// The mesher program: the environment variable KW_GMSH when set, else "gmsh" on the path.
KWICAD_EXPORT QString KwMesherProgram();
// Its arguments for meshing a script into a mesh file.
KWICAD_EXPORT QStringList KwMesherArguments(const QString& script, const QString& meshFile);
// The first error line of the mesher's output, without its prefix; empty when none.
KWICAD_EXPORT QString KwMesherError(const QString& output);
// The progress (0..100) that a line of the mesher's output tells, or -1. `phase` carries the
// meshing phase (1, 2, 3 for curves, surfaces, volumes) from line to line; start it at 1.
KWICAD_EXPORT int KwMesherProgress(const QString& line, int& phase);

// Runs the mesher to its end on the assembly and reads the result (no progress, no Cancel):
// for the host's start and for tests. On failure the result carries the reason in `error`.
KWICAD_EXPORT KwGmshMesh KwMeshAssembly(const KwMeshSettings& settings,
                                        const CKwFEModel* controls = nullptr,
                                        const QString& program = QString());

// Puts a mesh that was read into the model: nodes, elements and classification replace the
// old ones; the quality limits, the element groups and the end releases of beams that still
// exist stay; the settings become those of the run. Geometry entities the model lacks are
// added; the ones it has keep their objects, so everything that refers to them stays.
KWICAD_EXPORT void KwPutMesh(CKwFEModel& model, const KwGmshMesh& read,
                             const KwMeshSettings& settings);

// The sample model (materials, properties, analyses, tables...) on the meshed assembly, its
// constraints, loads, masses, connectors, contacts and mesh controls on faces of the assembly.
// Null, with the reason in `why`, when the mesher is missing or fails.
KWICAD_EXPORT CKwFEModel* KwSampleAssembly(QString* why, const QString& program = QString());
