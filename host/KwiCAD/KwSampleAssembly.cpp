#include "KwSampleAssembly.h"

#include "CKwConMass.h"
#include "CKwConnector.h"
#include "CKwCoordinateSystem.h"
#include "CKwFEModel.h"
#include "CKwGroup.h"
#include "CKwLoad.h"
#include "CKwMaterialOrient.h"
#include "CKwMeshLocal.h"
#include "CKwMeshModel.h"
#include "CKwNonlinearSetup.h"
#include "CKwAnalysis.h"
#include "CKwSubCase.h"
#include "CKwRestraint.h"
#include "CKwSurfaceContact.h"
#include "CKwUIEntity.h"
#include "KwIdRanges.h"

#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Lengths of the assembly (m).
constexpr double kBaseLength = 0.12, kWidth = 0.06, kBaseThickness = 0.01;
constexpr double kUprightThickness = 0.02, kHeight = 0.08, kFillet = 0.008;
constexpr double kHoleX = 0.085, kHoleY1 = 0.015, kHoleY2 = 0.045, kHoleRadius = 0.004;
constexpr double kBoltX = 0.01, kBoltY = 0.03, kBoltRadius = 0.004, kBoltDepth = 0.02;
constexpr double kHeadRadius = 0.0065, kHeadHeight = 0.0055;
constexpr double kPlate = 0.003, kCoverX = -0.01, kCoverLength = 0.06;

QString num(double v) { return QString::number(v, 'g', 12); }

} // namespace

double KwAssemblyElementSize(const KwMeshSettings& s)
{
    if (s.useLength && std::isfinite(s.elementLength) && s.elementLength > 0)
        return s.elementLength;
    const int level = std::clamp(s.sizeLevel, 1, 10);
    return 0.006 * std::pow(2.0, (level - 5) / 2.0);
}

QString KwAssemblyGeometry(const KwMeshSettings& s, const CKwFEModel* controls)
{
    const auto bodyMesh = [&](int body, int fallback) {
        const auto it = s.bodyMesh.find(body);
        return it == s.bodyMesh.end() ? fallback : it->second;
    };
    const bool coverShell = bodyMesh(kKwCoverBody, KwMeshSettings::AsShell) != KwMeshSettings::AsSolid;
    const bool boltBeam = bodyMesh(kKwBoltBody, KwMeshSettings::AsSolid) == KwMeshSettings::AsBeam;
    const double size = KwAssemblyElementSize(s);
    QString g;
    g += QStringLiteral("SetFactory(\"OpenCASCADE\");\n");
    g += QStringLiteral("Mesh.MshFileVersion = 4.1;\nMesh.Binary = 0;\nMesh.SaveAll = 1;\n");
    g += QStringLiteral("Mesh.ElementOrder = %1;\nMesh.SecondOrderIncomplete = 1;\n")
             .arg(s.parabolic ? 2 : 1);
    g += QStringLiteral("Mesh.MeshSizeMax = %1;\nMesh.MeshSizeMin = %2;\n")
             .arg(num(size), num(size / 10));
    g += QStringLiteral("Mesh.MeshSizeFromCurvature = 12;\n");
    // The bracket: base and upright, a fillet filling the inner corner (a block less a
    // cylinder), two bolt holes through the base and the bolt's hole in the upright's top.
    g += QStringLiteral("Box(1) = {0, 0, 0, %1, %2, %3};\n").arg(num(kBaseLength), num(kWidth), num(kBaseThickness));
    g += QStringLiteral("Box(2) = {0, 0, 0, %1, %2, %3};\n").arg(num(kUprightThickness), num(kWidth), num(kHeight));
    g += QStringLiteral("Box(3) = {%1, 0, %2, %3, %4, %3};\n")
             .arg(num(kUprightThickness), num(kBaseThickness), num(kFillet), num(kWidth));
    g += QStringLiteral("Cylinder(4) = {%1, 0, %2, 0, %3, 0, %4};\n")
             .arg(num(kUprightThickness + kFillet), num(kBaseThickness + kFillet), num(kWidth), num(kFillet));
    g += QStringLiteral("BooleanDifference(5) = {Volume{3}; Delete;}{Volume{4}; Delete;};\n");
    g += QStringLiteral("Cylinder(6) = {%1, %2, -0.001, 0, 0, %3, %4};\n")
             .arg(num(kHoleX), num(kHoleY1), num(kBaseThickness + 0.002), num(kHoleRadius));
    g += QStringLiteral("Cylinder(7) = {%1, %2, -0.001, 0, 0, %3, %4};\n")
             .arg(num(kHoleX), num(kHoleY2), num(kBaseThickness + 0.002), num(kHoleRadius));
    g += QStringLiteral("Cylinder(8) = {%1, %2, %3, 0, 0, %4, %5};\n")
             .arg(num(kBoltX), num(kBoltY), num(kHeight - kBoltDepth), num(kBoltDepth + 0.001), num(kBoltRadius));
    g += QStringLiteral("BooleanUnion(9) = {Volume{1}; Delete;}{Volume{2, 5}; Delete;};\n");
    g += QStringLiteral("BooleanDifference(10) = {Volume{9}; Delete;}{Volume{6, 7, 8}; Delete;};\n");
    // The cover: a plate on the upright's top, reaching out to both sides, with the bolt's hole.
    if (coverShell) {
        g += QStringLiteral("Rectangle(20) = {%1, 0, %2, %3, %4};\n")
                 .arg(num(kCoverX), num(kHeight + kPlate / 2), num(kCoverLength), num(kWidth));
        g += QStringLiteral("Disk(21) = {%1, %2, %3, %4};\n")
                 .arg(num(kBoltX), num(kBoltY), num(kHeight + kPlate / 2), num(kBoltRadius));
        g += QStringLiteral("BooleanDifference(22) = {Surface{20}; Delete;}{Surface{21}; Delete;};\n");
        g += QStringLiteral("Recombine Surface{22};\n");
    } else {
        g += QStringLiteral("Box(20) = {%1, 0, %2, %3, %4, %5};\n")
                 .arg(num(kCoverX), num(kHeight), num(kCoverLength), num(kWidth), num(kPlate));
        g += QStringLiteral("Cylinder(21) = {%1, %2, %3, 0, 0, %4, %5};\n")
                 .arg(num(kBoltX), num(kBoltY), num(kHeight - 0.001), num(kPlate + 0.002), num(kBoltRadius));
        g += QStringLiteral("BooleanDifference(22) = {Volume{20}; Delete;}{Volume{21}; Delete;};\n");
    }
    // The bolt: shank and head, or a beam along its axis.
    const double top = kHeight + kPlate;
    if (boltBeam) {
        g += QStringLiteral("Point(40) = {%1, %2, %3};\nPoint(41) = {%1, %2, %4};\nLine(40) = {40, 41};\n")
                 .arg(num(kBoltX), num(kBoltY), num(kHeight - kBoltDepth), num(top + kHeadHeight));
    } else {
        g += QStringLiteral("Cylinder(30) = {%1, %2, %3, 0, 0, %4, %5};\n")
                 .arg(num(kBoltX), num(kBoltY), num(kHeight - kBoltDepth), num(kBoltDepth + kPlate), num(kBoltRadius));
        g += QStringLiteral("Cylinder(31) = {%1, %2, %3, 0, 0, %4, %5};\n")
                 .arg(num(kBoltX), num(kBoltY), num(top), num(kHeadHeight), num(kHeadRadius));
        g += QStringLiteral("BooleanUnion(32) = {Volume{30}; Delete;}{Volume{31}; Delete;};\n");
    }
    g += QStringLiteral("Physical Volume(\"Bracket\", 1) = {10};\n");
    g += coverShell ? QStringLiteral("Physical Surface(\"Cover\", 2) = {22};\n")
                    : QStringLiteral("Physical Volume(\"Cover\", 2) = {22};\n");
    g += boltBeam ? QStringLiteral("Physical Curve(\"Bolt\", 3) = {40};\n")
                  : QStringLiteral("Physical Volume(\"Bolt\", 3) = {32};\n");
    // Local controls on the geometry the last run numbered.
    if (controls) {
        for (const CKwMeshLocal* c : controls->m_meshControls) {
            QStringList faces, edges, vertices;
            for (const CKwUIEntity* e : c->m_entities) {
                if (!e)
                    continue;
                if (e->GetKind() == CKwUIEntity::Face)
                    faces << QString::number(e->GetID());
                else if (e->GetKind() == CKwUIEntity::Edge)
                    edges << QString::number(e->GetID());
                else if (e->GetKind() == CKwUIEntity::Vertex)
                    vertices << QString::number(e->GetID());
            }
            const bool sized = std::isfinite(c->m_elementSize) && c->m_elementSize > 0
                               && c->m_elementSize < 1e3;
            const QString size = num(c->m_elementSize);
            g += QStringLiteral("// %1\n").arg(c->GetName().simplified().remove(QLatin1Char('\n')));
            if (sized && !faces.isEmpty())
                g += QStringLiteral("MeshSize{ PointsOf{ Surface{%1}; } } = %2;\n").arg(faces.join(QLatin1String(", ")), size);
            if (sized && !edges.isEmpty())
                g += QStringLiteral("MeshSize{ PointsOf{ Curve{%1}; } } = %2;\n").arg(edges.join(QLatin1String(", ")), size);
            if (sized && !vertices.isEmpty())
                g += QStringLiteral("MeshSize{ %1 } = %2;\n").arg(vertices.join(QLatin1String(", ")), size);
            if (c->m_elementCount > 0 && c->m_elementCount < 10000 && !edges.isEmpty())
                g += QStringLiteral("Transfinite Curve{%1} = %2;\n").arg(edges.join(QLatin1String(", "))).arg(c->m_elementCount + 1);
        }
    }
    return g;
}

QString KwMesherProgram()
{
    const QString env = QProcessEnvironment::systemEnvironment().value(QStringLiteral("KW_GMSH"));
    return env.isEmpty() ? QStringLiteral("gmsh") : env;
}

QStringList KwMesherArguments(const QString& script, const QString& meshFile)
{
    return {script, QStringLiteral("-3"), QStringLiteral("-nt"), QStringLiteral("1"),
            QStringLiteral("-o"), meshFile};
}

QString KwMesherError(const QString& output)
{
    static const QRegularExpression error(QStringLiteral("^Error\\s*:\\s*(.*)$"),
                                          QRegularExpression::MultilineOption);
    const QRegularExpressionMatch m = error.match(output);
    return m.hasMatch() ? m.captured(1).trimmed() : QString();
}

int KwMesherProgress(const QString& line, int& current)
{
    // The phases take their share of the run; within one the mesher counts its entities.
    static const QRegularExpression phase(QStringLiteral("Meshing ([123])D"));
    static const QRegularExpression percent(QStringLiteral("\\[\\s*(\\d+)%\\]"));
    const QRegularExpressionMatch p = phase.match(line);
    if (p.hasMatch() && !line.contains(QLatin1Char('['))) {
        current = p.captured(1).toInt();
        return (current - 1) * 30;
    }
    const QRegularExpressionMatch c = percent.match(line);
    if (c.hasMatch())
        return (current - 1) * 30 + std::clamp(c.captured(1).toInt(), 0, 100) * 30 / 100;
    if (line.contains(QLatin1String("Meshing order 2")))
        return 90;
    if (line.contains(QLatin1String("Writing")))
        return 95;
    return -1;
}

KwGmshMesh KwMeshAssembly(const KwMeshSettings& settings, const CKwFEModel* controls,
                          const QString& program)
{
    KwGmshMesh failed;
    QTemporaryDir dir;
    if (!dir.isValid()) {
        failed.error = QStringLiteral("No folder for the mesher's files could be made.");
        return failed;
    }
    const QString script = dir.filePath(QStringLiteral("assembly.geo"));
    const QString meshFile = dir.filePath(QStringLiteral("assembly.msh"));
    QFile geo(script);
    if (!geo.open(QIODevice::WriteOnly) || geo.write(KwAssemblyGeometry(settings, controls).toUtf8()) < 0) {
        failed.error = QStringLiteral("The geometry for the mesher could not be written.");
        return failed;
    }
    geo.close();
    QProcess run;
    run.setProcessChannelMode(QProcess::MergedChannels);
    const QString exe = program.isEmpty() ? KwMesherProgram() : program;
    run.start(exe, KwMesherArguments(script, meshFile));
    if (!run.waitForStarted(10000)) {
        failed.error = QStringLiteral("The mesher (%1) could not be started: %2").arg(exe, run.errorString());
        return failed;
    }
    if (!run.waitForFinished(300000)) {
        run.kill();
        run.waitForFinished(5000);
        failed.error = QStringLiteral("The mesher did not finish within five minutes.");
        return failed;
    }
    const QString output = QString::fromLocal8Bit(run.readAll());
    const QString error = KwMesherError(output);
    if (run.exitStatus() != QProcess::NormalExit || run.exitCode() != 0 || !error.isEmpty()) {
        failed.error = QStringLiteral("The mesher failed: %1")
                           .arg(error.isEmpty() ? QStringLiteral("exit code %1").arg(run.exitCode()) : error);
        return failed;
    }
    QFile file(meshFile);
    if (!file.open(QIODevice::ReadOnly)) {
        failed.error = QStringLiteral("The mesher wrote no mesh file.");
        return failed;
    }
    const QByteArray bytes = file.readAll();
    KwGmshMesh read = KwReadGmshMesh(std::string_view(bytes.constData(), std::size_t(bytes.size())));
    if (read.ok() && read.mesh.ElementCount() == 0)
        read.error = QStringLiteral("The mesher made no elements.");
    if (!read.ok() && !read.error.startsWith(QLatin1String("The mesher")))
        read.error = QStringLiteral("The mesher's file cannot be read: %1").arg(read.error);
    return read;
}

void KwPutMesh(CKwFEModel& model, const KwGmshMesh& read, const KwMeshSettings& settings)
{
    if (!model.m_mesh)
        model.m_mesh = new CKwMeshModel(1, QStringLiteral("Mesh"));
    CKwMeshModel& old = *model.m_mesh;
    CKwMeshModel fresh = read.mesh;
    fresh.SetID(old.GetID());
    fresh.SetName(old.GetName());
    fresh.SetSettings(settings);
    for (int c = 0; c < CKwMeshModel::QualityCheckCount; ++c) {
        const auto check = static_cast<CKwMeshModel::QualityCheck>(c);
        fresh.SetQualityCheck(check, old.GetQualityCheck(check));
        fresh.SetQualityLimit(check, old.GetQualityLimit(check));
    }
    for (const CKwMeshModel::ElementGroup& g : old.Groups())
        fresh.AddElementGroup(g.name, g.elementIds);
    for (const auto& [element, release] : old.EndReleases())
        fresh.SetEndRelease(element, release);
    old = fresh;
    for (const KwGmshEntity& e : read.entities) {
        if (model.FindGeometry(e.kind, e.id))
            continue;
        auto* entity = new CKwUIEntity(static_cast<CKwUIEntity::Kind>(e.kind), e.id, e.Label(), e.body);
        // A face that is flat in no direction, an edge that runs along more than one, curves.
        int flat = 0;
        for (int a = 0; a < 3; ++a)
            flat += e.hi[a] - e.lo[a] < 1e-6;
        entity->SetCurved((e.kind == CKwUIEntity::Face && flat == 0)
                          || (e.kind == CKwUIEntity::Edge && flat < 2));
        model.m_geometry.append(entity);
    }
}

namespace {

// The entity of a body whose box best matches a box given by its centre and extent.
const KwGmshEntity* nearest(const KwGmshMesh& read, int kind, int body,
                            std::array<double, 3> centre, std::array<double, 3> extent)
{
    const KwGmshEntity* best = nullptr;
    double bestScore = 0;
    for (const KwGmshEntity& e : read.entities) {
        if (e.kind != kind || e.body != body)
            continue;
        double score = 0;
        for (int a = 0; a < 3; ++a)
            score += std::abs(0.5 * (e.lo[a] + e.hi[a]) - centre[std::size_t(a)])
                     + std::abs((e.hi[a] - e.lo[a]) - extent[std::size_t(a)]);
        if (!best || score < bestScore) {
            best = &e;
            bestScore = score;
        }
    }
    return best;
}

} // namespace

CKwFEModel* KwSampleAssembly(QString* why, const QString& program)
{
    KwMeshSettings settings;
    const KwGmshMesh read = KwMeshAssembly(settings, nullptr, program);
    if (!read.ok()) {
        if (why)
            *why = read.error;
        return nullptr;
    }
    CKwFEModel* m = CKwFEModel::CreateSampleModel();
    m->SetName(QStringLiteral("Bracket assembly"));
    const QList<CKwUIEntity*> block = m->m_geometry;
    m->m_geometry.clear();
    m->m_mesh->ClearEndReleases();
    KwPutMesh(*m, read, settings);
    const auto at = [&](int kind, int body, std::array<double, 3> centre,
                        std::array<double, 3> extent) -> CKwUIEntity* {
        const KwGmshEntity* e = nearest(read, kind, body, centre, extent);
        return e ? m->FindGeometry(kind, e->id) : nullptr;
    };
    using E = CKwUIEntity;
    const double top = kHeight + kPlate / 2;
    CKwUIEntity* hole1 = at(E::Face, kKwBracketBody, {kHoleX, kHoleY1, kBaseThickness / 2}, {0.008, 0.008, kBaseThickness});
    CKwUIEntity* hole2 = at(E::Face, kKwBracketBody, {kHoleX, kHoleY2, kBaseThickness / 2}, {0.008, 0.008, kBaseThickness});
    CKwUIEntity* cover = at(E::Face, kKwCoverBody, {kCoverX + kCoverLength / 2, kWidth / 2, top}, {kCoverLength, kWidth, 0});
    CKwUIEntity* coverHole = at(E::Edge, kKwCoverBody, {kBoltX, kBoltY, top}, {0.008, 0.008, 0});
    CKwUIEntity* coverEdge = at(E::Edge, kKwCoverBody, {kCoverX, kWidth / 2, top}, {0, kWidth, 0});
    CKwUIEntity* uprightTop = at(E::Face, kKwBracketBody, {kUprightThickness / 2, kWidth / 2, kHeight}, {kUprightThickness, kWidth, 0});
    CKwUIEntity* boltHole = at(E::Edge, kKwBracketBody, {kBoltX, kBoltY, kHeight}, {0.008, 0.008, 0});
    CKwUIEntity* baseTop = at(E::Face, kKwBracketBody, {0.074, kWidth / 2, kBaseThickness}, {0.092, kWidth, 0});
    CKwUIEntity* baseBottom = at(E::Face, kKwBracketBody, {kBaseLength / 2, kWidth / 2, 0}, {kBaseLength, kWidth, 0});
    CKwUIEntity* endFace = at(E::Face, kKwBracketBody, {kBaseLength, kWidth / 2, kBaseThickness / 2}, {0, kWidth, kBaseThickness});
    CKwUIEntity* back = at(E::Face, kKwBracketBody, {kBaseLength / 2, kWidth, kHeight / 2}, {kBaseLength, 0, kHeight});
    CKwUIEntity* backTop = at(E::Vertex, kKwBracketBody, {0, kWidth, kHeight}, {0, 0, 0});
    CKwUIEntity* endCorner = at(E::Vertex, kKwBracketBody, {kBaseLength, 0, kBaseThickness}, {0, 0, 0});

    const auto only = [](CKwUIEntity* e) { return e ? QList<CKwUIEntity*>{e} : QList<CKwUIEntity*>{}; };
    for (CKwRestraint* r : m->m_restraints) {
        r->m_entities = only(hole1) + only(hole2);
        r->SetName(QStringLiteral("Base holes"));
    }
    for (CKwLoad* l : m->m_loads) {
        l->m_locationEntity = nullptr;
        switch (l->GetID()) {
        case 1: l->m_entities = only(cover); l->SetName(QStringLiteral("Cover force")); break;
        case 2: l->m_entities = only(baseTop); break;
        case 3:
            l->m_entities = only(endFace);
            l->m_location = {0.2, kWidth / 2, kBaseThickness / 2};
            break;
        case 4: l->m_entities = only(baseBottom); break;
        case 6: l->m_entities = only(back); l->m_locationEntity = backTop; break;
        default: l->m_entities.clear(); break;
        }
    }
    for (CKwConMass* c : m->m_conMasses)
        c->m_entities = only(endCorner);
    for (CKwConnector* c : m->m_connectors) {
        c->m_end1 = only(coverHole);
        c->m_end2 = only(boltHole);
    }
    for (CKwCoordinateSystem* c : m->m_coordSystems) {
        c->m_pickedPoint = nullptr;
        c->m_origin = {kBoltX, kBoltY, kHeight};
        c->m_zAxis = {0, 0, 1};
        c->m_xAxis = {1, 0, 0};
    }
    m->m_shellFaceIds = cover ? QList<int>{cover->GetID()} : QList<int>{};
    if (m->m_meshControls.size() >= 2) {
        m->m_meshControls[0]->SetName(QStringLiteral("Base hole refinement"));
        m->m_meshControls[0]->m_entities = only(hole1) + only(hole2);
        m->m_meshControls[1]->SetName(QStringLiteral("Cover edge divisions"));
        m->m_meshControls[1]->m_entities = only(coverEdge);
    }
    for (CKwMaterialOrient* o : m->m_materialOrients) {
        o->m_faces = only(cover);
        o->m_edge = coverEdge;
    }
    for (CKwSurfaceContact* c : m->m_surfaceContacts) {
        c->m_master = only(cover);
        c->m_slave = only(uprightTop);
    }
    // Node sets and the termination node follow the new numbering.
    const CKwMeshModel* mesh = m->m_mesh;
    for (CKwGroup* set : m->m_idSets) {
        const KwIdRanges::Parsed list = KwIdRanges::Parse(set->m_idList);
        set->m_ids = KwIdRanges::Resolve(list, [mesh](int id) { return mesh->HasNode(id); }, {}).ids;
    }
    if (const CKwMeshModel::GeometryMesh* g = cover ? mesh->FindGeometryMesh(E::Face, cover->GetID()) : nullptr)
        for (CKwAnalysis* a : m->m_analyses)
            for (CKwSubCase* s : a->GetSubCases())
                if (s->GetNonlinearSetup() && !g->nodeIds.empty())
                    s->GetNonlinearSetup()->m_integers[CKwNonlinearSetup::IntTerminationNode] =
                        g->nodeIds.back();
    qDeleteAll(block);
    return m;
}
