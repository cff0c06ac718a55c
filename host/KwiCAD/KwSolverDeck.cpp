#include "KwSolverDeck.h"

#include "CKwAnalysis.h"
#include "CKwConMass.h"
#include "CKwConnector.h"
#include "CKwDynamicsSetup.h"
#include "CKwFEModel.h"
#include "CKwLoad.h"
#include "CKwMaterial.h"
#include "CKwMeshModel.h"
#include "CKwModalSetup.h"
#include "CKwTimeStep.h"
#include "CKwNonlinearSetup.h"
#include "CKwPhysicalProperty.h"
#include "CKwRestraint.h"
#include "CKwSubCase.h"
#include "CKwSurfaceContact.h"
#include "CKwFunction.h"
#include "CKwTable.h"
#include "CKwUIEntity.h"
#include "KwNumbers.h"
#include "KwStressStrain.h"
#include "KW_UOM.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <charconv>
#include <map>
#include <numeric>
#include <set>

namespace {

using NodeSet = std::set<int>;

std::string num(double v)
{
    char buf[32];
    const auto r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::general, 12);
    return std::string(buf, r.ptr);
}

// A number that always shows a decimal point: where an integer would mean a degree of freedom
// (a spring's data line), the solver tells them apart by it.
std::string real(double v)
{
    std::string s = num(v);
    if (s.find('.') == std::string::npos) {
        const std::size_t e = s.find_first_of("eE");
        s.insert(e == std::string::npos ? s.size() : e, ".");
    }
    return s;
}

// Appends numbers without building a string for each: the mesh is most of the deck.
void put(std::string& out, double v)
{
    char buf[32];
    const auto r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::general, 12);
    out.append(buf, r.ptr);
}
void put(std::string& out, int v)
{
    char buf[16];
    const auto r = std::to_chars(buf, buf + sizeof buf, v);
    out.append(buf, r.ptr);
}

bool isSolid(int type) { return CKwMeshModel::IsSolidType(type); }
bool isShell(int type) { return CKwMeshModel::IsShellType(type); }
bool isBeam(int type) { return CKwMeshModel::IsBeamType(type); }
// The nodal shares of weight and pressure the load balance computes are those of linear
// tetrahedra, hexahedra, shells and beams.
bool balanceKnows(int type)
{
    return type == CKwMeshModel::Tet4 || type == CKwMeshModel::Hex8 || type == CKwMeshModel::Tri3
           || type == CKwMeshModel::Quad4 || type == CKwMeshModel::Beam2;
}

// Faces of the solid elements as positions into the element's node list, in the solver's face
// numbering (face n is "Pn" of a distributed load).
const std::vector<std::vector<int>>& solidFaces(int type)
{
    static const std::vector<std::vector<int>> tet{{0, 1, 2}, {0, 3, 1}, {1, 3, 2}, {2, 3, 0}};
    static const std::vector<std::vector<int>> hex{{0, 1, 2, 3}, {4, 7, 6, 5}, {0, 4, 5, 1},
                                                   {1, 5, 6, 2}, {2, 6, 7, 3}, {3, 7, 4, 0}};
    static const std::vector<std::vector<int>> wedge{{0, 1, 2}, {3, 4, 5}, {0, 1, 4, 3},
                                                     {1, 2, 5, 4}, {2, 0, 3, 5}};
    static const std::vector<std::vector<int>> none;
    // Parabolic elements share their corners' faces (corners come first).
    switch (CKwMeshModel::LinearType(type)) {
    case CKwMeshModel::Tet4: return tet;
    case CKwMeshModel::Hex8: return hex;
    case CKwMeshModel::Wedge6: return wedge;
    default: return none;
    }
}

struct Box
{
    double lo[3] = {0, 0, 0}, hi[3] = {0, 0, 0};
    bool valid = false;
};

Box solidBox(const CKwMeshModel& mesh)
{
    Box b;
    bool anySolid = false;
    for (std::size_t e = 0; e < mesh.ElementCount() && !anySolid; ++e)
        anySolid = isSolid(mesh.ElementType(e));
    const auto take = [&](const CKwMeshModel::Node& n) {
        const double p[3] = {n.x, n.y, n.z};
        for (int a = 0; a < 3; ++a) {
            b.lo[a] = b.valid ? std::min(b.lo[a], p[a]) : p[a];
            b.hi[a] = b.valid ? std::max(b.hi[a], p[a]) : p[a];
        }
        b.valid = true;
    };
    for (std::size_t e = 0; e < mesh.ElementCount(); ++e)
        if (!anySolid || isSolid(mesh.ElementType(e)))
            for (int i : mesh.ElementNodes(e))
                take(mesh.Nodes()[std::size_t(i)]);
    return b;
}

// Everything the writer works out before it writes: which elements go out, their families.
struct Plan
{
    const CKwFEModel& model;
    const CKwMeshModel& mesh;
    const CKwAnalysis& analysis;
    KwSolverDeck& deck;
    std::string& out;
    std::vector<char> keep;            // per element index
    std::set<int> shellBeamNodes;      // nodes with rotational freedoms
    const CKwPhysicalProperty* solid = nullptr;
    const CKwPhysicalProperty* shell = nullptr;
    const CKwPhysicalProperty* beam = nullptr;
    int solidMaterial = 0;
    std::set<int> amplitudes;          // time tables used by loads
    std::map<std::size_t, int> beamMiddles; // beam element index -> its generated middle node
    std::vector<char> written;         // per node index: the node goes into the deck
    int nextElement = 0;               // ids for the point and connector elements
    // The node pairs each connector joins, in connector order.
    std::vector<std::vector<std::pair<int, int>>> links;
    // The load balance of the static step being written, or nullptr; per axis a flag per node
    // index for the nodes the step constrains along it.
    KwStepLoadBalance* balance = nullptr;
    int stepSubcase = 0; // the subcase of the step being written
    std::vector<char> fixedAlong[3];

    Plan(const CKwFEModel& m, const CKwMeshModel& me, const CKwAnalysis& a, KwSolverDeck& d,
         std::string& o)
        : model(m), mesh(me), analysis(a), deck(d), out(o)
    {
    }

    void note(const QString& text)
    {
        deck.notes << text;
        out += "** " + text.toStdString() + "\n";
    }
    bool refuse(const QString& why)
    {
        deck.refusal = why;
        return false;
    }
    // A row of the input preview: a quantity with its model value and the deck's text of it.
    void row(int family, int subcaseId, const QString& entity, const std::string& keyword,
             const char* key, const char* quantity, int unitKind, double value)
    {
        deck.rows.push_back({family, subcaseId, entity, keyword, key, quantity, unitKind, value,
                             true, numText(value)});
    }
    // A row whose deck text is not a number of the model (a set name, a count, a list).
    void rowText(int family, int subcaseId, const QString& entity, const std::string& keyword,
                 const char* key, const char* quantity, const std::string& text)
    {
        deck.rows.push_back({family, subcaseId, entity, keyword, key, quantity, -1, 0, false,
                             text});
    }
    static std::string numText(double v);
    // Adds a nodal force of the step being written to its load balance.
    void applied(int nodeIndex, const double* f)
    {
        if (!balance)
            return;
        for (int a = 0; a < 3; ++a) {
            balance->applied[a] += f[a];
            if (fixedAlong[a][std::size_t(nodeIndex)])
                balance->appliedAtSupports[a] += f[a];
        }
    }
};

std::string Plan::numText(double v)
{
    return num(v);
}

std::vector<const CKwRestraint*> restraintsOf(const CKwFEModel& model, int subcaseId)
{
    std::vector<const CKwRestraint*> list;
    for (const CKwRestraint* r : model.m_restraints)
        if (r->m_subcaseIds.isEmpty() || r->m_subcaseIds.contains(subcaseId))
            list.push_back(r);
    return list;
}

std::vector<const CKwLoad*> loadsOf(const CKwFEModel& model, int subcaseId)
{
    std::vector<const CKwLoad*> list;
    for (const CKwLoad* l : model.m_loads)
        if (l->m_subcaseIds.contains(subcaseId))
            list.push_back(l);
    return list;
}

NodeSet entityNodes(const CKwMeshModel& mesh, const QList<CKwUIEntity*>& entities)
{
    NodeSet nodes;
    for (const CKwUIEntity* e : entities)
        if (e)
            for (int id : KwGeometryNodes(mesh, *e))
                nodes.insert(id);
    return nodes;
}

// --- the mesh ---

void choosePieces(Plan& p)
{
    const CKwMeshModel& mesh = p.mesh;
    const std::size_t n = mesh.ElementCount();
    p.keep.assign(n, 1);
    // Elements of a family without a property cannot go to the solver.
    for (std::size_t e = 0; e < n; ++e) {
        const int t = mesh.ElementType(e);
        if ((isShell(t) && !p.shell) || (isBeam(t) && !p.beam))
            p.keep[e] = 0;
    }
    // Pieces (elements joined through nodes) that hold no constrained node float freely.
    NodeSet fixedNodes;
    for (const CKwRestraint* r : p.model.m_restraints)
        if (!r->IsThermal())
            for (int id : entityNodes(mesh, r->m_entities))
                fixedNodes.insert(id);
    if (fixedNodes.empty())
        return;
    std::vector<int> parent(mesh.Nodes().size());
    std::iota(parent.begin(), parent.end(), 0);
    const auto find = [&](int x) {
        while (parent[std::size_t(x)] != x)
            x = parent[std::size_t(x)] = parent[std::size_t(parent[std::size_t(x)])];
        return x;
    };
    for (std::size_t e = 0; e < n; ++e) {
        if (!p.keep[e])
            continue;
        const auto nodes = mesh.ElementNodes(e);
        for (std::size_t i = 1; i < nodes.size(); ++i)
            parent[std::size_t(find(nodes[i]))] = find(nodes[0]);
    }
    // A connector joins the pieces at its two ends, a bonded contact its two sides.
    for (const CKwSurfaceContact* c : p.model.m_surfaceContacts)
        if (c->m_kind == CKwSurfaceContact::Bonded || c->m_kind == CKwSurfaceContact::Welded) {
            const NodeSet one = entityNodes(mesh, c->m_master), two = entityNodes(mesh, c->m_slave);
            if (!one.empty())
                for (int id : two)
                    parent[std::size_t(find(mesh.NodeIndex(id)))] = find(mesh.NodeIndex(*one.begin()));
        }
    for (const auto& pairs : p.links)
        for (const auto& [a, b] : pairs)
            parent[std::size_t(find(mesh.NodeIndex(a)))] = find(mesh.NodeIndex(b));
    std::set<int> fixedRoots;
    for (int id : fixedNodes)
        fixedRoots.insert(find(mesh.NodeIndex(id)));
    int dropped = 0;
    for (std::size_t e = 0; e < n; ++e)
        if (p.keep[e] && !fixedRoots.count(find(mesh.ElementNodes(e)[0]))) {
            p.keep[e] = 0;
            ++dropped;
        }
    if (dropped)
        p.note(QStringLiteral("%1 elements left out: they are joined to no constrained node")
                   .arg(dropped));
}

void writeNodes(Plan& p)
{
    std::vector<char> used(p.mesh.Nodes().size(), 0);
    for (std::size_t e = 0; e < p.mesh.ElementCount(); ++e)
        if (p.keep[e])
            for (int i : p.mesh.ElementNodes(e))
                used[std::size_t(i)] = 1;
    p.written = used;
    p.out += "*NODE, NSET=NALL\n";
    int lastId = 0;
    for (std::size_t i = 0; i < used.size(); ++i) {
        const auto& n = p.mesh.Nodes()[i];
        lastId = std::max(lastId, n.id);
        if (used[i]) {
            put(p.out, n.id);
            for (double c : {n.x, n.y, n.z}) {
                p.out += ", ";
                put(p.out, c);
            }
            p.out += '\n';
        }
    }
    // Beams go out as quadratic beams (every section shape the solver knows takes them): each
    // gets a middle node numbered after the mesh's own.
    for (std::size_t e = 0; e < p.mesh.ElementCount(); ++e)
        if (p.keep[e] && p.mesh.ElementType(e) == CKwMeshModel::Beam2) {
            const auto en = p.mesh.ElementNodes(e);
            const auto& a = p.mesh.Nodes()[std::size_t(en[0])];
            const auto& b = p.mesh.Nodes()[std::size_t(en[1])];
            p.beamMiddles[e] = ++lastId;
            p.out += std::to_string(lastId) + ", " + num(0.5 * (a.x + b.x)) + ", "
                     + num(0.5 * (a.y + b.y)) + ", " + num(0.5 * (a.z + b.z)) + "\n";
        }
}

void writeElements(Plan& p)
{
    // Hexahedra with incompatible modes bend as they should at a few elements through the
    // thickness; tetrahedra and shells go out as they are.
    struct Family { int type; const char* solverType; const char* set; };
    const Family families[] = {{CKwMeshModel::Hex8, "C3D8I", "ESOLID"},
                               {CKwMeshModel::Tet4, "C3D4", "ESOLID"},
                               {CKwMeshModel::Wedge6, "C3D6", "ESOLID"},
                               {CKwMeshModel::Hex20, "C3D20R", "ESOLID"},
                               {CKwMeshModel::Tet10, "C3D10", "ESOLID"},
                               {CKwMeshModel::Wedge15, "C3D15", "ESOLID"},
                               {CKwMeshModel::Quad4, "S4", "ESHELL"},
                               {CKwMeshModel::Tri3, "S3", "ESHELL"},
                               {CKwMeshModel::Quad8, "S8R", "ESHELL"},
                               {CKwMeshModel::Tri6, "S6", "ESHELL"},
                               {CKwMeshModel::Beam2, "B32R", "EBEAM"},
                               {CKwMeshModel::Beam3, "B32R", "EBEAM"}};
    for (const Family& f : families) {
        bool header = false;
        for (std::size_t e = 0; e < p.mesh.ElementCount(); ++e) {
            if (!p.keep[e] || p.mesh.ElementType(e) != f.type)
                continue;
            if (!header)
                p.out += std::string("*ELEMENT, TYPE=") + f.solverType + ", ELSET=" + f.set + "\n";
            header = true;
            put(p.out, p.mesh.ElementID(e));
            const auto nodes = p.mesh.ElementNodes(e);
            for (std::size_t k = 0; k < nodes.size(); ++k) {
                // A parabolic beam keeps its middle node last; the solver wants it between
                // the ends.
                static constexpr std::size_t beam3[3] = {0, 2, 1};
                const std::size_t at = f.type == CKwMeshModel::Beam3 ? beam3[k] : k;
                const int id = p.mesh.Nodes()[std::size_t(nodes[at])].id;
                // A beam's middle node sits between its two ends in the solver's order.
                if (f.type == CKwMeshModel::Beam2 && k == 1) {
                    p.out += ", ";
                    put(p.out, p.beamMiddles[e]);
                }
                p.out += ", ";
                put(p.out, id);
                if (!isSolid(f.type))
                    p.shellBeamNodes.insert(id);
            }
            p.out += '\n';
        }
    }
    p.out += "*ELSET, ELSET=EALL\n";
    for (const char* set : {"ESOLID", "ESHELL", "EBEAM"})
        if (p.out.find(std::string("ELSET=") + set + "\n") != std::string::npos)
            p.out += std::string(set) + ",\n";
}

// --- point masses and connectors ---

// The node pairs a connector joins: each node of the end with more nodes to the nearest node
// of the other end, so that two facing meshes pair node by node.
std::vector<std::pair<int, int>> connectorPairs(const CKwMeshModel& mesh, const CKwConnector& c)
{
    const NodeSet one = entityNodes(mesh, c.m_end1), two = entityNodes(mesh, c.m_end2);
    std::vector<std::pair<int, int>> pairs;
    if (one.empty() || two.empty())
        return pairs;
    const bool oneLarger = one.size() >= two.size();
    const NodeSet& from = oneLarger ? one : two;
    const NodeSet& to = oneLarger ? two : one;
    for (int a : from) {
        const auto* na = mesh.FindNode(a);
        int best = 0;
        double bestD = -1;
        for (int b : to) {
            const auto* nb = mesh.FindNode(b);
            const double d = (na->x - nb->x) * (na->x - nb->x) + (na->y - nb->y) * (na->y - nb->y)
                             + (na->z - nb->z) * (na->z - nb->z);
            if (bestD < 0 || d < bestD) {
                bestD = d;
                best = b;
            }
        }
        // The node of the larger end comes first: it is the one a rigid tie drives.
        pairs.emplace_back(a, best);
    }
    return pairs;
}

bool isWritten(const Plan& p, int nodeId)
{
    const int i = p.mesh.NodeIndex(nodeId);
    return i >= 0 && std::size_t(i) < p.written.size() && p.written[std::size_t(i)];
}

double distance(const CKwMeshModel& mesh, int a, int b)
{
    const auto *na = mesh.FindNode(a), *nb = mesh.FindNode(b);
    return std::sqrt((na->x - nb->x) * (na->x - nb->x) + (na->y - nb->y) * (na->y - nb->y)
                     + (na->z - nb->z) * (na->z - nb->z));
}

// A point mass goes out as mass elements at the nodes of its picked entities, the mass shared
// equally among them.
bool writeMasses(Plan& p)
{
    for (const CKwConMass* m : p.model.m_conMasses) {
        if (m->m_type != CKwConMass::PointMass) {
            p.note(QStringLiteral("Mass \"%1\" left out: an automatic mass is the body's own, "
                                  "which the mesh already carries").arg(m->GetName()));
            continue;
        }
        if (IsMissingValue(m->m_mass) || !(m->m_mass > 0))
            return p.refuse(QStringLiteral("Mass \"%1\" has no mass.").arg(m->GetName()));
        std::vector<int> nodes;
        for (int id : entityNodes(p.mesh, m->m_entities))
            if (isWritten(p, id))
                nodes.push_back(id);
        if (nodes.empty()) {
            p.note(QStringLiteral("Mass \"%1\" left out: it sits on no node of the solved mesh")
                       .arg(m->GetName()));
            continue;
        }
        const auto nonzero = [](const std::array<double, 3>& v) {
            return std::any_of(v.begin(), v.end(), [](double x) { return x != 0 && !IsMissingValue(x); });
        };
        if (nonzero(m->m_inertia) || nonzero(m->m_offset))
            p.note(QStringLiteral("Mass \"%1\" goes out at its picked nodes without its moments "
                                  "of inertia and offset").arg(m->GetName()));
        const std::string set = "EMASS" + std::to_string(m->GetID());
        p.out += "*ELEMENT, TYPE=MASS, ELSET=" + set + "\n";
        for (int id : nodes)
            p.out += std::to_string(++p.nextElement) + ", " + std::to_string(id) + "\n";
        p.out += "*MASS, ELSET=" + set + "\n" + num(m->m_mass / double(nodes.size())) + "\n";
        p.row(KwDeckRow::Mass, 0, m->GetName(), "*MASS", "QuantityMassPerNode", "Mass per node",
              KwUnitKind::Mass, m->m_mass / double(nodes.size()));
        p.rowText(KwDeckRow::Mass, 0, m->GetName(), "*ELEMENT, TYPE=MASS", "QuantityNodes",
                  "Nodes", std::to_string(nodes.size()));
    }
    return true;
}

double materialModulus(const Plan& p, int materialId)
{
    for (const CKwMaterial* c : p.model.m_materials)
        if (c->GetID() == materialId)
            return c->GetValue(QStringLiteral("EX"));
    return MissingDouble;
}

// Springs go out as axial spring elements between the paired nodes, the stiffness shared among
// the pairs. A rod, cable or bolt carries axial load only in a linear run: it goes out as the
// axial spring of its section, E A / length. A rigid link ties the paired nodes' translations.
bool writeConnectors(Plan& p)
{
    const double pi = 3.14159265358979323846;
    for (std::size_t ci = 0; ci < std::size_t(p.model.m_connectors.size()); ++ci) {
        const CKwConnector& c = *p.model.m_connectors[qsizetype(ci)];
        std::vector<std::pair<int, int>> pairs;
        for (const auto& pr : p.links[ci])
            if (isWritten(p, pr.first) && isWritten(p, pr.second))
                pairs.push_back(pr);
        if (pairs.empty()) {
            p.note(QStringLiteral("Connector \"%1\" left out: an end has no node of the solved "
                                  "mesh").arg(c.GetName()));
            continue;
        }
        const auto refuse = [&](const char* what) {
            return p.refuse(QStringLiteral("Connector \"%1\" has no %2.").arg(c.GetName(), what));
        };
        if (c.m_type == CKwConnector::Rigid) {
            p.out += "** Connector " + std::to_string(c.GetID()) + ": rigid link\n*EQUATION\n";
            p.rowText(KwDeckRow::Connector, 0, c.GetName(), "*EQUATION", "QuantityEquations",
                      "Equations", std::to_string(3 * pairs.size()));
            for (const auto& [a, b] : pairs)
                for (int dof = 1; dof <= 3; ++dof)
                    p.out += "2\n" + std::to_string(a) + ", " + std::to_string(dof) + ", 1., "
                             + std::to_string(b) + ", " + std::to_string(dof) + ", -1.\n";
            continue;
        }
        double ea = 0; // axial stiffness times length, for rods, cables and bolts
        if (c.m_type == CKwConnector::Spring) {
            if (IsMissingValue(c.m_axialStiffness) || !(c.m_axialStiffness > 0))
                return refuse("axial stiffness");
        } else {
            const double e = materialModulus(p, c.m_materialId);
            if (IsMissingValue(e) || !(e > 0))
                return refuse("material with an elastic modulus");
            const double area = c.m_type == CKwConnector::Bolt
                                    ? (IsMissingValue(c.m_diameter) ? MissingDouble
                                                                    : pi * c.m_diameter * c.m_diameter / 4)
                                    : c.m_area;
            if (IsMissingValue(area) || !(area > 0))
                return refuse(c.m_type == CKwConnector::Bolt ? "shank diameter" : "cross-section area");
            ea = e * area;
        }
        if (c.CarriesTensionOnly() || c.m_preload != 0)
            p.note(QStringLiteral("Connector \"%1\" carries tension and compression alike and "
                                  "no preload").arg(c.GetName()));
        int skipped = 0;
        p.rowText(KwDeckRow::Connector, 0, c.GetName(), "*ELEMENT, TYPE=SPRINGA",
                  "QuantityNodePairs", "Node pairs", std::to_string(pairs.size()));
        if (c.m_type == CKwConnector::Spring)
            p.row(KwDeckRow::Connector, 0, c.GetName(), "*SPRING", "QuantityStiffnessPerPair",
                  "Stiffness per pair", KwUnitKind::Stiffness,
                  c.m_axialStiffness / double(pairs.size()));
        else
            p.row(KwDeckRow::Connector, 0, c.GetName(), "*SPRING", "QuantityAxialRigidity",
                  "Axial rigidity E A per pair", KwUnitKind::Force, ea / double(pairs.size()));
        for (const auto& [a, b] : pairs) {
            const double length = distance(p.mesh, a, b);
            if (!(length > 0)) {
                ++skipped; // a spring without length has no direction to act along
                continue;
            }
            const double k = (c.m_type == CKwConnector::Spring ? c.m_axialStiffness : ea / length)
                             / double(pairs.size());
            const int id = ++p.nextElement;
            const std::string set = "ECON" + std::to_string(id);
            p.out += "*ELEMENT, TYPE=SPRINGA, ELSET=" + set + "\n" + std::to_string(id) + ", "
                     + std::to_string(a) + ", " + std::to_string(b) + "\n*SPRING, ELSET=" + set
                     + "\n" + real(k) + "\n";
        }
        if (skipped)
            p.note(QStringLiteral("Connector \"%1\": %2 node pairs without length left out")
                       .arg(c.GetName()).arg(skipped));
    }
    return true;
}

// --- contacts ---

std::vector<char> markNodes(const CKwMeshModel& mesh, const NodeSet& nodes);

// A bonded or welded contact goes out as a tie: the slave side's nodes follow the master side's
// solid element faces, found within the contact's search distance. The solver's contact pairs
// (separating and sliding contact) need an iteration of their own that this run does not set
// up: such contacts are left out and named.
bool writeContacts(Plan& p)
{
    int n = 0;
    for (const CKwSurfaceContact* c : p.model.m_surfaceContacts) {
        const QString& name = c->GetName();
        if (c->m_kind != CKwSurfaceContact::Bonded && c->m_kind != CKwSurfaceContact::Welded) {
            p.note(QStringLiteral("Contact \"%1\" left out: the solver run ties bonded and welded "
                                  "contacts only; separating, sliding and offset contact are not "
                                  "written, and the parts are solved unconnected there")
                       .arg(name));
            p.rowText(KwDeckRow::Contact, 0, name, "", "QuantityLeftOut", "Left out", "-");
            continue;
        }
        const NodeSet master = entityNodes(p.mesh, c->m_master);
        std::vector<int> slave;
        for (int id : entityNodes(p.mesh, c->m_slave))
            if (isWritten(p, id) && !master.count(id))
                slave.push_back(id);
        const std::vector<char> mark = markNodes(p.mesh, master);
        std::string faces;
        int faceCount = 0;
        for (std::size_t e = 0; e < p.mesh.ElementCount(); ++e) {
            if (!p.keep[e] || !isSolid(p.mesh.ElementType(e)))
                continue;
            const auto en = p.mesh.ElementNodes(e);
            const auto& list = solidFaces(p.mesh.ElementType(e));
            for (std::size_t f = 0; f < list.size(); ++f) {
                bool on = true;
                for (int k : list[f])
                    on = on && mark[std::size_t(en[std::size_t(k)])];
                if (on) {
                    faces += std::to_string(p.mesh.ElementID(e)) + ", S" + std::to_string(f + 1)
                             + "\n";
                    ++faceCount;
                }
            }
        }
        if (slave.empty() || faces.empty()) {
            p.note(QStringLiteral("Contact \"%1\" left out: its slave side has no nodes of the "
                                  "solved mesh or its master side no solid element faces")
                       .arg(name));
            p.rowText(KwDeckRow::Contact, 0, name, "", "QuantityLeftOut", "Left out", "-");
            continue;
        }
        ++n;
        const std::string id = std::to_string(n);
        p.out += "** Contact " + std::to_string(c->GetID()) + ": tie\n*SURFACE, NAME=TS" + id
                 + ", TYPE=NODE\n";
        for (int node : slave)
            p.out += std::to_string(node) + "\n";
        p.out += "*SURFACE, NAME=TM" + id + "\n" + faces;
        const double tolerance = IsMissingValue(c->m_searchDistance) || !(c->m_searchDistance > 0)
                                     ? 1e-3 : c->m_searchDistance;
        p.out += "*TIE, NAME=T" + id + ", POSITION TOLERANCE=" + num(tolerance) + "\nTS" + id
                 + ", TM" + id + "\n";
        p.rowText(KwDeckRow::Contact, 0, name, "*TIE", "QuantitySlaveNodes", "Slave nodes",
                  std::to_string(slave.size()));
        p.rowText(KwDeckRow::Contact, 0, name, "*TIE", "QuantityMasterFaces", "Master faces",
                  std::to_string(faceCount));
        p.row(KwDeckRow::Contact, 0, name, "*TIE", "QuantityTolerance", "Position tolerance",
              KwUnitKind::Length, tolerance);
    }
    return true;
}

// --- materials and properties ---

// The plastic part of an isotropic material in a nonlinear run: true stress against plastic
// strain from its stress-strain curve, engineering values converted.
bool writePlastic(Plan& p, const CKwMaterial& m)
{
    const KwMaterialCurve& curve = m.GetCurve(CKwMaterial::StressStrain);
    if (curve.IsEmpty())
        return true;
    const int type = p.analysis.GetAnalysisTypeCode();
    if (type != CKwAnalysis::NonlinearStatic && type != CKwAnalysis::NonlinearTransient) {
        p.note(QStringLiteral("Material \"%1\": its stress-strain curve is left out of a linear "
                              "analysis").arg(m.GetName()));
        return true;
    }
    const KwPlasticCurve c = KwPlasticCurveOf(curve.x, curve.y, m.GetValue(QStringLiteral("EX")),
                                              !m.m_stressStrainTrue);
    switch (c.problem) {
    case KwPlasticCurve::NoProblem:
        break;
    case KwPlasticCurve::NotIncreasing:
        return p.refuse(QStringLiteral("Material \"%1\": the plastic strain of its stress-strain "
                                       "curve does not increase at point %2.")
                            .arg(m.GetName()).arg(c.point + 1));
    case KwPlasticCurve::BelowZero:
        return p.refuse(QStringLiteral("Material \"%1\": point %2 of its stress-strain curve is "
                                       "negative.").arg(m.GetName()).arg(c.point + 1));
    default:
        return p.refuse(QStringLiteral("Material \"%1\": its stress-strain curve needs a yield "
                                       "point and a point beyond it.").arg(m.GetName()));
    }
    p.out += "*PLASTIC\n";
    for (std::size_t i = 0; i < c.stress.size(); ++i) {
        p.out += num(c.stress[i]) + ", " + num(c.plasticStrain[i]) + "\n";
        p.deck.rows.push_back({KwDeckRow::Material, 0, m.GetName(), "*PLASTIC", "QuantityTrueStress",
                               "True stress", KwUnitKind::Stress, c.stress[i], true,
                               num(c.stress[i]) + ", " + num(c.plasticStrain[i])});
    }
    return true;
}

bool writeMaterial(Plan& p, int materialId)
{
    const CKwMaterial* m = nullptr;
    for (const CKwMaterial* c : p.model.m_materials)
        if (c->GetID() == materialId)
            m = c;
    if (!m)
        return p.refuse(QStringLiteral("Material %1 does not exist.").arg(materialId));
    const auto value = [&](const char* key) { return m->GetValue(QString::fromLatin1(key)); };
    const auto missing = [&](const char* what) {
        return p.refuse(QStringLiteral("Material \"%1\" has no %2.").arg(m->GetName(), what));
    };
    p.out += "*MATERIAL, NAME=M" + std::to_string(materialId) + "\n";
    const QString& name = m->GetName();
    p.rowText(KwDeckRow::Material, 0, name, "*MATERIAL", "QuantityName", "Name",
              "M" + std::to_string(materialId));
    switch (m->GetMaterialType()) {
    case CKwMaterial::Isotropic: {
        const double e = value("EX"), nu = value("NUXY");
        if (IsMissingValue(e) || e <= 0)
            return missing("elastic modulus");
        p.out += "*ELASTIC\n" + num(e) + ", " + num(IsMissingValue(nu) ? 0.0 : nu) + "\n";
        p.row(KwDeckRow::Material, 0, name, "*ELASTIC", "QuantityModulus", "Elastic modulus",
              KwUnitKind::Stress, e);
        p.row(KwDeckRow::Material, 0, name, "*ELASTIC", "QuantityPoisson", "Poisson's ratio",
              KwUnitKind::Dimensionless, IsMissingValue(nu) ? 0.0 : nu);
        if (!writePlastic(p, *m))
            return false;
        break;
    }
    case CKwMaterial::Orthotropic3D: {
        const char* keys[] = {"E1", "E2", "E3", "NUXY", "NUXZ", "NUYZ", "G12", "G1Z", "G2Z"};
        std::string line;
        for (int i = 0; i < 9; ++i) {
            if (IsMissingValue(value(keys[i])))
                return missing(keys[i]);
            line += num(value(keys[i])) + (i == 7 ? "\n" : i == 8 ? "" : ", ");
            const bool ratio = keys[i][0] == 'N';
            p.deck.rows.push_back({KwDeckRow::Material, 0, name, "*ELASTIC", "", keys[i],
                                   ratio ? int(KwUnitKind::Dimensionless) : int(KwUnitKind::Stress),
                                   value(keys[i]), true, num(value(keys[i]))});
        }
        p.out += "*ELASTIC, TYPE=ENGINEERING CONSTANTS\n" + line + ", 0\n";
        break;
    }
    case CKwMaterial::Hyperelastic: {
        const double c10 = m->GetExtra(CKwMaterial::A10), c01 = m->GetExtra(CKwMaterial::A01);
        const double d1 = value("D1");
        if (IsMissingValue(c10))
            return missing("first Mooney-Rivlin constant");
        p.out += "*HYPERELASTIC, MOONEY-RIVLIN\n" + num(c10) + ", "
                 + num(IsMissingValue(c01) ? 0.0 : c01) + ", "
                 + num(IsMissingValue(d1) ? 0.0 : d1) + "\n";
        p.row(KwDeckRow::Material, 0, name, "*HYPERELASTIC", "", "C10", KwUnitKind::Stress, c10);
        p.row(KwDeckRow::Material, 0, name, "*HYPERELASTIC", "", "C01", KwUnitKind::Stress,
              IsMissingValue(c01) ? 0.0 : c01);
        p.row(KwDeckRow::Material, 0, name, "*HYPERELASTIC", "", "D1", KwUnitKind::Compliance,
              IsMissingValue(d1) ? 0.0 : d1);
        break;
    }
    default:
        return p.refuse(QStringLiteral("Material \"%1\": the solver run takes isotropic, "
                                       "orthotropic 3D and Mooney-Rivlin materials only.")
                            .arg(m->GetName()));
    }
    const double rho = value("DENS");
    if (!IsMissingValue(rho) && rho > 0) {
        p.out += "*DENSITY\n" + num(rho) + "\n";
        p.row(KwDeckRow::Material, 0, name, "*DENSITY", "QuantityDensity", "Mass density",
              KwUnitKind::Density, rho);
    }
    else if (p.analysis.GetAnalysisTypeCode() != CKwAnalysis::LinearStatic
             && p.analysis.GetAnalysisTypeCode() != CKwAnalysis::NonlinearStatic)
        return missing("mass density");
    return true;
}

bool writeBeamSection(Plan& p)
{
    const CKwPhysicalProperty& b = *p.beam;
    const double* d = b.GetDimensions(1);
    std::string section, dims;
    switch (b.m_sectionShape) {
    case CKwPhysicalProperty::BOX:
        section = "BOX";
        dims = num(d[0]) + ", " + num(d[1]) + ", " + num(d[2]) + ", " + num(d[3]) + ", "
               + num(d[2]) + ", " + num(d[3]);
        break;
    case CKwPhysicalProperty::BAR:
        section = "RECT";
        dims = num(d[0]) + ", " + num(d[1]);
        break;
    case CKwPhysicalProperty::ROD:
        section = "CIRC";
        dims = num(d[0]) + ", " + num(d[0]);
        break;
    case CKwPhysicalProperty::TUBE:
        section = "PIPE";
        dims = num(d[0]) + ", " + num(d[0] - d[1]);
        break;
    default:
        return p.refuse(QStringLiteral("Beam property \"%1\": the solver takes rod, tube, bar "
                                       "and box sections only, not %2.")
                            .arg(b.GetName(), CKwPhysicalProperty::ShapeName(b.m_sectionShape)));
    }
    if (!CKwPhysicalProperty::IsValidShape(b.m_sectionShape, d))
        return p.refuse(QStringLiteral("Beam property \"%1\" has no valid section.")
                            .arg(b.GetName()));
    // The section's first axis: across the beams, upwards unless a beam runs upwards.
    bool vertical = false;
    for (std::size_t e = 0; e < p.mesh.ElementCount(); ++e)
        if (p.keep[e] && isBeam(p.mesh.ElementType(e))) {
            const auto n = p.mesh.ElementNodes(e);
            const auto& a = p.mesh.Nodes()[std::size_t(n[0])];
            const auto& c = p.mesh.Nodes()[std::size_t(n[1])];
            const double dx = c.x - a.x, dy = c.y - a.y, dz = c.z - a.z;
            vertical = vertical || std::abs(dz) > 0.9 * std::sqrt(dx * dx + dy * dy + dz * dz);
        }
    p.rowText(KwDeckRow::Property, 0, b.GetName(), "*BEAM SECTION", "QuantitySection", "Section",
              section + ", M" + std::to_string(b.m_materialId));
    for (int i = 0; i < 4 && d[i] > 0 && !IsMissingValue(d[i]); ++i)
        p.deck.rows.push_back({KwDeckRow::Property, 0, b.GetName(), "*BEAM SECTION",
                               "QuantityDimension", "Dimension", KwUnitKind::Length, d[i], true,
                               num(d[i])});
    p.out += "*BEAM SECTION, ELSET=EBEAM, MATERIAL=M" + std::to_string(b.m_materialId)
             + ", SECTION=" + section + "\n" + dims + "\n" + (vertical ? "1, 0, 0\n" : "0, 0, 1\n");
    return true;
}

bool writeProperties(Plan& p)
{
    std::set<int> materials;
    bool anySolid = false, anyShell = false, anyBeam = false;
    for (std::size_t e = 0; e < p.mesh.ElementCount(); ++e)
        if (p.keep[e]) {
            const int t = p.mesh.ElementType(e);
            anySolid = anySolid || isSolid(t);
            anyShell = anyShell || isShell(t);
            anyBeam = anyBeam || isBeam(t);
        }
    if (!anySolid && !anyShell && !anyBeam)
        return p.refuse(QStringLiteral("The model has no mesh to solve."));
    if (anySolid) {
        p.solidMaterial = p.solid ? p.solid->m_materialId
                                  : (p.model.m_materials.isEmpty()
                                         ? 0 : p.model.m_materials.first()->GetID());
        if (!p.solidMaterial)
            return p.refuse(QStringLiteral("The solid elements have no material."));
        materials.insert(p.solidMaterial);
    }
    if (anyShell)
        materials.insert(p.shell->m_materialId);
    if (anyBeam)
        materials.insert(p.beam->m_materialId);
    for (int id : materials)
        if (!writeMaterial(p, id))
            return false;
    if (anySolid) {
        p.out += "*SOLID SECTION, ELSET=ESOLID, MATERIAL=M" + std::to_string(p.solidMaterial) + "\n";
        p.rowText(KwDeckRow::Property, 0, p.solid ? p.solid->GetName() : QStringLiteral("ESOLID"),
                  "*SOLID SECTION", "QuantityMaterial", "Material",
                  "M" + std::to_string(p.solidMaterial));
    }
    if (anyShell) {
        if (IsMissingValue(p.shell->m_thickness) || p.shell->m_thickness <= 0)
            return p.refuse(QStringLiteral("Shell property \"%1\" has no thickness.")
                                .arg(p.shell->GetName()));
        p.out += "*SHELL SECTION, ELSET=ESHELL, MATERIAL=M" + std::to_string(p.shell->m_materialId)
                 + "\n" + num(p.shell->m_thickness) + "\n";
        p.rowText(KwDeckRow::Property, 0, p.shell->GetName(), "*SHELL SECTION", "QuantityMaterial",
                  "Material", "M" + std::to_string(p.shell->m_materialId));
        p.row(KwDeckRow::Property, 0, p.shell->GetName(), "*SHELL SECTION", "QuantityThickness",
              "Thickness", KwUnitKind::Length, p.shell->m_thickness);
    }
    return !anyBeam || writeBeamSection(p);
}

// --- time tables ---

void writeAmplitudes(Plan& p)
{
    for (int id : p.amplitudes)
        for (const CKwTable* t : p.model.m_tables)
            if (t->GetID() == id && t->GetPointCount() > 0) {
                p.out += "*AMPLITUDE, NAME=A" + std::to_string(id) + "\n";
                for (int i = 0; i < t->GetPointCount(); ++i)
                    p.out += num(t->GetXFunction()->GetValue(i)) + ", "
                             + num(t->GetYFunction()->GetValue(i)) + "\n";
            }
}

// --- constraints ---

void writeRestraints(Plan& p, int subcaseId, bool newSet)
{
    std::string lines;
    for (const CKwRestraint* r : restraintsOf(p.model, subcaseId)) {
        if (r->IsThermal())
            continue;
        if (r->m_type != CKwRestraint::Structural) {
            p.note(QStringLiteral("Constraint \"%1\" left out: the solver run takes fixed "
                                  "degrees of freedom only").arg(r->GetName()));
            continue;
        }
        const NodeSet nodes = entityNodes(p.mesh, r->m_entities);
        std::string dofs;
        for (int dof = 1; dof <= 6; ++dof)
            if (r->m_dof[std::size_t(dof - 1)])
                dofs += (dofs.empty() ? "" : ", ") + std::to_string(dof);
        p.rowText(KwDeckRow::Constraint, subcaseId, r->GetName(), "*BOUNDARY",
                  "QuantityDofs", "Degrees of freedom", dofs);
        p.rowText(KwDeckRow::Constraint, subcaseId, r->GetName(), "*BOUNDARY", "QuantityNodes",
                  "Nodes", std::to_string(nodes.size()));
        for (int id : nodes) {
            const int last = p.shellBeamNodes.count(id) ? 6 : 3;
            for (int dof = 1; dof <= last; ++dof)
                if (r->m_dof[std::size_t(dof - 1)]) {
                    lines += std::to_string(id) + ", " + std::to_string(dof) + ", "
                             + std::to_string(dof) + "\n";
                    // The solver reports only part of the reaction at a held node of a shell
                    // or beam (its expanded element's share): such a step cannot be balanced.
                    if (p.balance && last == 6)
                        p.balance->complete = false;
                    if (p.balance && dof <= 3) {
                        char& fixed = p.fixedAlong[dof - 1][std::size_t(p.mesh.NodeIndex(id))];
                        if (!fixed)
                            p.balance->constrained[dof - 1].push_back(id);
                        fixed = 1;
                    }
                }
        }
    }
    if (!lines.empty() || newSet)
        p.out += std::string("*BOUNDARY") + (newSet ? ", OP=NEW" : "") + "\n" + lines;
}

// --- loads ---

// A flag per node index for the nodes of a set: solid faces are tested against it at the cost
// of a load per corner.
std::vector<char> markNodes(const CKwMeshModel& mesh, const NodeSet& nodes)
{
    std::vector<char> mark(mesh.Nodes().size(), 0);
    for (int id : nodes)
        if (const int i = mesh.NodeIndex(id); i >= 0)
            mark[std::size_t(i)] = 1;
    return mark;
}

// Nodal shares of a load spread over the entities: for each solid face lying in the node set,
// its area split equally among its corners (the consistent load of a linear face); nodes on
// no such face (single nodes, vertices) share equally.
std::map<int, double> nodalShares(const Plan& p, const NodeSet& nodes)
{
    std::map<int, double> share;
    const auto& all = p.mesh.Nodes();
    const std::vector<char> mark = markNodes(p.mesh, nodes);
    for (std::size_t e = 0; e < p.mesh.ElementCount(); ++e) {
        if (!p.keep[e] || !isSolid(p.mesh.ElementType(e)))
            continue;
        const auto en = p.mesh.ElementNodes(e);
        for (const auto& face : solidFaces(p.mesh.ElementType(e))) {
            bool on = true;
            for (int k : face)
                on = on && mark[std::size_t(en[std::size_t(k)])];
            if (!on)
                continue;
            double area = 0;
            const auto& a = all[std::size_t(en[std::size_t(face[0])])];
            for (std::size_t k = 1; k + 1 < face.size(); ++k) {
                const auto& b = all[std::size_t(en[std::size_t(face[k])])];
                const auto& c = all[std::size_t(en[std::size_t(face[k + 1])])];
                const double u[3] = {b.x - a.x, b.y - a.y, b.z - a.z};
                const double v[3] = {c.x - a.x, c.y - a.y, c.z - a.z};
                const double cx = u[1] * v[2] - u[2] * v[1], cy = u[2] * v[0] - u[0] * v[2],
                             cz = u[0] * v[1] - u[1] * v[0];
                area += 0.5 * std::sqrt(cx * cx + cy * cy + cz * cz);
            }
            for (int k : face)
                share[all[std::size_t(en[std::size_t(k)])].id] += area / double(face.size());
        }
    }
    if (share.empty())
        for (int id : nodes)
            share[id] = 1.0;
    double total = 0;
    for (const auto& [id, s] : share)
        total += s;
    for (auto& [id, s] : share)
        s /= total;
    return share;
}

struct StepLoads
{
    std::string cload, dload;
};

std::string amplitudeOf(Plan& p, const CKwLoad& l)
{
    if (!l.m_timeDependent || !l.m_timeTableId
        || p.analysis.GetAnalysisTypeCode() != CKwAnalysis::NonlinearTransient)
        return {};
    p.amplitudes.insert(l.m_timeTableId);
    return ", AMPLITUDE=A" + std::to_string(l.m_timeTableId);
}

void writeForce(Plan& p, const CKwLoad& l, StepLoads& s)
{
    const NodeSet nodes = entityNodes(p.mesh, l.m_entities);
    if (nodes.empty())
        return;
    // A force per entity acts in full on each picked entity.
    const double factor = l.m_distribution == CKwLoad::ForcePerEntity ? l.m_entities.size() : 1;
    std::string lines;
    const auto shares = nodalShares(p, nodes);
    for (const auto& [id, share] : shares) {
        double nodal[3];
        for (int axis = 0; axis < 3; ++axis) {
            const double f = l.GetComponent(axis) * share * factor;
            nodal[axis] = f;
            if (f != 0)
                lines += std::to_string(id) + ", " + std::to_string(axis + 1) + ", " + num(f) + "\n";
        }
        p.applied(p.mesh.NodeIndex(id), nodal);
    }
    static const char* const axes[] = {"QuantityForceX", "Force X", "QuantityForceY", "Force Y",
                                       "QuantityForceZ", "Force Z"};
    for (int axis = 0; axis < 3; ++axis)
        p.row(KwDeckRow::Load, p.stepSubcase, l.GetName(), "*CLOAD", axes[2 * axis],
              axes[2 * axis + 1], KwUnitKind::Force, l.GetComponent(axis) * factor);
    p.rowText(KwDeckRow::Load, p.stepSubcase, l.GetName(), "*CLOAD", "QuantityNodes", "Nodes",
              std::to_string(shares.size()));
    if (!lines.empty())
        s.cload += "*CLOAD" + amplitudeOf(p, l) + "\n" + lines;
}

// The consistent nodal forces of a uniform pressure on one face of a solid element (pressure
// pushes against the face's outward normal), as the solver integrates them: corner shares of
// a triangle, 2 x 2 Gauss points on a bilinear quadrilateral.
void balancePressure(Plan& p, std::size_t e, const std::vector<int>& face, double pressure)
{
    const auto en = p.mesh.ElementNodes(e);
    const auto& all = p.mesh.Nodes();
    const auto at = [&](int k) {
        const auto& n = all[std::size_t(en[std::size_t(face[std::size_t(k)])])];
        return std::array<double, 3>{n.x, n.y, n.z};
    };
    double centre[3] = {0, 0, 0}, faceCentre[3] = {0, 0, 0};
    for (int i : en) {
        centre[0] += all[std::size_t(i)].x / double(en.size());
        centre[1] += all[std::size_t(i)].y / double(en.size());
        centre[2] += all[std::size_t(i)].z / double(en.size());
    }
    for (std::size_t k = 0; k < face.size(); ++k)
        for (int a = 0; a < 3; ++a)
            faceCentre[a] += at(int(k))[std::size_t(a)] / double(face.size());
    const auto cross = [](const double* u, const double* v, double* w) {
        w[0] = u[1] * v[2] - u[2] * v[1];
        w[1] = u[2] * v[0] - u[0] * v[2];
        w[2] = u[0] * v[1] - u[1] * v[0];
    };
    std::vector<std::array<double, 3>> f(face.size(), {0, 0, 0});
    double total[3] = {0, 0, 0};
    if (face.size() == 3) {
        const auto a = at(0), b = at(1), c = at(2);
        const double u[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
        const double v[3] = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
        double n[3];
        cross(u, v, n);
        for (int k = 0; k < 3; ++k)
            for (int d = 0; d < 3; ++d)
                f[std::size_t(k)][std::size_t(d)] = n[d] / 6.0;
    } else {
        const double xi[4] = {-1, 1, 1, -1}, eta[4] = {-1, -1, 1, 1};
        const double g = 1.0 / std::sqrt(3.0);
        for (const double gx : {-g, g})
            for (const double gy : {-g, g}) {
                double dx[3] = {0, 0, 0}, dy[3] = {0, 0, 0};
                for (int k = 0; k < 4; ++k) {
                    const auto c = at(k);
                    for (int d = 0; d < 3; ++d) {
                        dx[d] += xi[k] * (1 + gy * eta[k]) / 4 * c[std::size_t(d)];
                        dy[d] += eta[k] * (1 + gx * xi[k]) / 4 * c[std::size_t(d)];
                    }
                }
                double n[3];
                cross(dx, dy, n);
                for (int k = 0; k < 4; ++k) {
                    const double shape = (1 + gx * xi[k]) * (1 + gy * eta[k]) / 4;
                    for (int d = 0; d < 3; ++d)
                        f[std::size_t(k)][std::size_t(d)] += shape * n[d];
                }
            }
    }
    for (const auto& v : f)
        for (int d = 0; d < 3; ++d)
            total[d] += v[std::size_t(d)];
    double outward = 0;
    for (int d = 0; d < 3; ++d)
        outward += total[d] * (faceCentre[d] - centre[d]);
    const double scale = outward >= 0 ? -pressure : pressure;
    for (std::size_t k = 0; k < face.size(); ++k) {
        const double nodal[3] = {f[k][0] * scale, f[k][1] * scale, f[k][2] * scale};
        p.applied(en[std::size_t(face[k])], nodal);
    }
}

void writePressure(Plan& p, const CKwLoad& l, StepLoads& s)
{
    const NodeSet nodes = entityNodes(p.mesh, l.m_entities);
    std::string lines;
    int faceCount = 0;
    const std::vector<char> mark = markNodes(p.mesh, nodes);
    for (std::size_t e = 0; e < p.mesh.ElementCount(); ++e) {
        if (!p.keep[e] || !isSolid(p.mesh.ElementType(e)))
            continue;
        const auto en = p.mesh.ElementNodes(e);
        const auto& faces = solidFaces(p.mesh.ElementType(e));
        for (std::size_t f = 0; f < faces.size(); ++f) {
            bool on = true;
            for (int k : faces[f])
                on = on && mark[std::size_t(en[std::size_t(k)])];
            if (on) {
                lines += std::to_string(p.mesh.ElementID(e)) + ", P" + std::to_string(f + 1)
                         + ", " + num(l.m_magnitude) + "\n";
                ++faceCount;
                if (p.balance && balanceKnows(p.mesh.ElementType(e)))
                    balancePressure(p, e, faces[f], l.m_magnitude);
                else if (p.balance)
                    p.balance->complete = false;
            }
        }
    }
    p.row(KwDeckRow::Load, p.stepSubcase, l.GetName(), "*DLOAD", "QuantityPressure", "Pressure",
          KwUnitKind::Pressure, l.m_magnitude);
    p.rowText(KwDeckRow::Load, p.stepSubcase, l.GetName(), "*DLOAD", "QuantityFaces",
              "Element faces", std::to_string(faceCount));
    if (!lines.empty())
        s.dload += "*DLOAD" + amplitudeOf(p, l) + "\n" + lines;
}

double materialDensity(const Plan& p, int materialId)
{
    for (const CKwMaterial* c : p.model.m_materials)
        if (c->GetID() == materialId)
            return c->GetValue(QStringLiteral("DENS"));
    return MissingDouble;
}

// The cross-section area of the beams' section as the deck writes it; 0 when unknown.
double beamArea(const CKwPhysicalProperty& b)
{
    const double* d = b.GetDimensions(1);
    const double pi = 3.14159265358979323846;
    switch (b.m_sectionShape) {
    case CKwPhysicalProperty::ROD:
        return pi * d[0] * d[0];
    case CKwPhysicalProperty::TUBE:
        return pi * (d[0] * d[0] - d[1] * d[1]);
    case CKwPhysicalProperty::BAR:
        return d[0] * d[1];
    case CKwPhysicalProperty::BOX:
        return d[0] * d[1] - (d[0] - 2 * d[3]) * (d[1] - 2 * d[2]);
    default:
        return 0;
    }
}

// The weight of a shell or beam element on its nodes: a shell's mass (density, thickness, the
// shape functions integrated over its area) and a quadratic beam's (a sixth at each end, two
// thirds at the middle node the deck adds).
void balanceShellOrBeamWeight(Plan& p, std::size_t e, const double* g)
{
    const int type = p.mesh.ElementType(e);
    const CKwPhysicalProperty* prop = type == CKwMeshModel::Beam2 ? p.beam : p.shell;
    if (!prop || (!isShell(type) && type != CKwMeshModel::Beam2)) {
        p.balance->complete = false;
        return;
    }
    const double rho = materialDensity(p, prop->m_materialId);
    if (IsMissingValue(rho))
        return;
    const auto en = p.mesh.ElementNodes(e);
    const auto& all = p.mesh.Nodes();
    std::vector<double> mass(en.size(), 0.0);
    double middle = 0;
    const auto at = [&](std::size_t k) {
        const auto& n = all[std::size_t(en[k])];
        return std::array<double, 3>{n.x, n.y, n.z};
    };
    if (type == CKwMeshModel::Beam2) {
        const auto a = at(0), b = at(1);
        const double length = std::sqrt((b[0] - a[0]) * (b[0] - a[0]) + (b[1] - a[1]) * (b[1] - a[1])
                                        + (b[2] - a[2]) * (b[2] - a[2]));
        const double m = rho * beamArea(*prop) * length;
        mass[0] = mass[1] = m / 6;
        middle = 2 * m / 3;
    } else {
        const double t = prop->m_thickness;
        const auto cross = [](const double* u, const double* v) {
            const double c[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2],
                                 u[0] * v[1] - u[1] * v[0]};
            return std::sqrt(c[0] * c[0] + c[1] * c[1] + c[2] * c[2]);
        };
        if (en.size() == 3) {
            const auto a = at(0), b = at(1), c = at(2);
            const double u[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
            const double v[3] = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
            std::fill(mass.begin(), mass.end(), rho * t * cross(u, v) / 6);
        } else {
            const double xi[4] = {-1, 1, 1, -1}, eta[4] = {-1, -1, 1, 1};
            const double q = 1.0 / std::sqrt(3.0);
            for (const double gx : {-q, q})
                for (const double gy : {-q, q}) {
                    double dx[3] = {0, 0, 0}, dy[3] = {0, 0, 0};
                    for (std::size_t k = 0; k < 4; ++k) {
                        const auto c = at(k);
                        for (int d = 0; d < 3; ++d) {
                            dx[d] += xi[k] * (1 + gy * eta[k]) / 4 * c[std::size_t(d)];
                            dy[d] += eta[k] * (1 + gx * xi[k]) / 4 * c[std::size_t(d)];
                        }
                    }
                    const double area = cross(dx, dy);
                    for (std::size_t k = 0; k < 4; ++k)
                        mass[k] += rho * t * area * (1 + gx * xi[k]) * (1 + gy * eta[k]) / 4;
                }
        }
    }
    for (std::size_t k = 0; k < en.size(); ++k) {
        const double f[3] = {mass[k] * g[0], mass[k] * g[1], mass[k] * g[2]};
        p.applied(en[k], f);
    }
    if (middle > 0) // the added middle node is never constrained
        for (int d = 0; d < 3; ++d)
            p.balance->applied[d] += middle * g[d];
}

// The weight of the solid elements as the solver spreads it on their nodes: a quarter of a
// tetrahedron's to each corner, the shape functions integrated at 2 x 2 x 2 Gauss points on a
// hexahedron.
void balanceGravity(Plan& p, const double* g)
{
    const double rho = materialDensity(p, p.solidMaterial);
    const auto& all = p.mesh.Nodes();
    for (std::size_t e = 0; e < p.mesh.ElementCount(); ++e) {
        if (!p.keep[e])
            continue;
        const int type = p.mesh.ElementType(e);
        if (!balanceKnows(type)) {
            p.balance->complete = false;
            continue;
        }
        if (!isSolid(type)) {
            balanceShellOrBeamWeight(p, e, g);
            continue;
        }
        if (IsMissingValue(rho))
            continue; // no density: the solver applies no weight either
        const auto en = p.mesh.ElementNodes(e);
        std::vector<double> mass(en.size(), 0.0);
        const auto c = [&](std::size_t k, int d) {
            const auto& n = all[std::size_t(en[k])];
            return d == 0 ? n.x : d == 1 ? n.y : n.z;
        };
        if (type == CKwMeshModel::Tet4) {
            double u[3][3];
            for (int k = 0; k < 3; ++k)
                for (int d = 0; d < 3; ++d)
                    u[k][d] = c(std::size_t(k + 1), d) - c(0, d);
            const double volume = std::abs(u[0][0] * (u[1][1] * u[2][2] - u[1][2] * u[2][1])
                                           - u[0][1] * (u[1][0] * u[2][2] - u[1][2] * u[2][0])
                                           + u[0][2] * (u[1][0] * u[2][1] - u[1][1] * u[2][0]))
                                  / 6.0;
            std::fill(mass.begin(), mass.end(), rho * volume / 4.0);
        } else {
            const double xi[8] = {-1, 1, 1, -1, -1, 1, 1, -1};
            const double eta[8] = {-1, -1, 1, 1, -1, -1, 1, 1};
            const double zeta[8] = {-1, -1, -1, -1, 1, 1, 1, 1};
            const double q = 1.0 / std::sqrt(3.0);
            for (const double a : {-q, q})
                for (const double b : {-q, q})
                    for (const double z : {-q, q}) {
                        double j[3][3] = {};
                        for (std::size_t k = 0; k < 8; ++k) {
                            const double dn[3] = {xi[k] * (1 + b * eta[k]) * (1 + z * zeta[k]) / 8,
                                                  eta[k] * (1 + a * xi[k]) * (1 + z * zeta[k]) / 8,
                                                  zeta[k] * (1 + a * xi[k]) * (1 + b * eta[k]) / 8};
                            for (int r = 0; r < 3; ++r)
                                for (int d = 0; d < 3; ++d)
                                    j[r][d] += dn[r] * c(k, d);
                        }
                        const double det = std::abs(
                            j[0][0] * (j[1][1] * j[2][2] - j[1][2] * j[2][1])
                            - j[0][1] * (j[1][0] * j[2][2] - j[1][2] * j[2][0])
                            + j[0][2] * (j[1][0] * j[2][1] - j[1][1] * j[2][0]));
                        for (std::size_t k = 0; k < 8; ++k)
                            mass[k] += rho * det * (1 + a * xi[k]) * (1 + b * eta[k])
                                       * (1 + z * zeta[k]) / 8;
                    }
        }
        for (std::size_t k = 0; k < en.size(); ++k) {
            const double f[3] = {mass[k] * g[0], mass[k] * g[1], mass[k] * g[2]};
            p.applied(en[k], f);
        }
    }
}

void writeGravity(Plan& p, const CKwLoad& l, StepLoads& s)
{
    const double len = std::sqrt(l.m_direction[0] * l.m_direction[0]
                                 + l.m_direction[1] * l.m_direction[1]
                                 + l.m_direction[2] * l.m_direction[2]);
    if (len == 0 || IsMissingValue(l.m_magnitude))
        return;
    const std::string direction = num(l.m_direction[0] / len) + ", "
                                  + num(l.m_direction[1] / len) + ", "
                                  + num(l.m_direction[2] / len);
    s.dload += "*DLOAD" + amplitudeOf(p, l) + "\nEALL, GRAV, " + num(l.m_magnitude) + ", "
               + direction + "\n";
    p.row(KwDeckRow::Load, p.stepSubcase, l.GetName(), "*DLOAD, GRAV", "QuantityAcceleration",
          "Acceleration", KwUnitKind::Acceleration, l.m_magnitude);
    p.rowText(KwDeckRow::Load, p.stepSubcase, l.GetName(), "*DLOAD, GRAV", "QuantityDirection",
              "Direction", direction);
    if (p.balance) {
        const double g[3] = {l.m_magnitude * l.m_direction[0] / len,
                             l.m_magnitude * l.m_direction[1] / len,
                             l.m_magnitude * l.m_direction[2] / len};
        balanceGravity(p, g);
    }
}

StepLoads writeLoads(Plan& p, int subcaseId)
{
    StepLoads s;
    for (const CKwLoad* l : loadsOf(p.model, subcaseId)) {
        if (l->IsThermal())
            continue; // a structural run takes no heat loads
        switch (l->m_type) {
        case CKwLoad::Force:
        case CKwLoad::RemoteForce: // its resultant on the picked entities
            writeForce(p, *l, s);
            break;
        case CKwLoad::Pressure:
            writePressure(p, *l, s);
            break;
        case CKwLoad::Gravity:
            writeGravity(p, *l, s);
            break;
        default:
            p.note(QStringLiteral("Load \"%1\" left out: the solver run takes forces, "
                                  "pressures and gravity").arg(l->GetName()));
        }
    }
    return s;
}

// --- steps ---

double setupReal(const CKwNonlinearSetup* s, int slot, double fallback)
{
    return s && !IsMissingValue(s->m_reals[std::size_t(slot)]) && s->m_reals[std::size_t(slot)] > 0
               ? double(s->m_reals[std::size_t(slot)]) : fallback;
}

// Results are written every n-th increment of a nonlinear or transient step.
int outputEvery(const Plan& p, const CKwSubCase& sub)
{
    if (const CKwTimeStep* t = p.analysis.GetTimeStep(); t && !t->m_intervals.isEmpty())
        return std::max(1, t->m_intervals.first().outputEvery);
    if (const CKwNonlinearSetup* nl = sub.GetNonlinearSetup())
        return std::max(1, nl->m_outputEvery);
    return 1;
}

void writeProcedure(Plan& p, const CKwSubCase& sub)
{
    const CKwNonlinearSetup* nl = sub.GetNonlinearSetup();
    using NL = CKwNonlinearSetup;
    switch (p.analysis.GetAnalysisTypeCode()) {
    case CKwAnalysis::NonlinearStatic: {
        // The load goes on in the setup's equal increments; the solver may cut one back down
        // to the setup's minimum.
        const double inc = nl && nl->m_increments > 0 ? 1.0 / nl->m_increments
                                                       : setupReal(nl, NL::RealInitialIncrement, 0.1);
        const double minInc = std::min(setupReal(nl, NL::RealMinIncrement, 1e-5), inc);
        p.out += "*STEP, NLGEOM, INC=100000\n*STATIC\n" + num(std::min(inc, 1.0)) + ", 1, "
                 + num(minInc) + ", " + num(std::min(inc, 1.0)) + "\n";
        break;
    }
    case CKwAnalysis::NonlinearTransient: {
        // The analysis's time intervals, else the subcase's steps, else a default run; the
        // solver starts with the first increment and may grow it up to the largest one.
        double dt = p.deck.stepPeriod / kKwDefaultTransientSteps, largest = dt;
        if (const CKwTimeStep* t = p.analysis.GetTimeStep(); t && !t->m_intervals.isEmpty()) {
            dt = t->m_intervals.first().increment;
            for (const auto& i : t->m_intervals)
                largest = std::max(largest, i.increment);
            largest = std::max(largest, dt);
        } else if (nl && nl->m_increments > 0 && nl->m_timeIncrement > 0) {
            dt = largest = nl->m_timeIncrement;
        }
        p.out += "*STEP, NLGEOM, INC=100000\n*DYNAMIC\n" + num(dt) + ", " + num(p.deck.stepPeriod)
                 + ", " + num(dt * 1e-3) + ", " + num(largest) + "\n";
        break;
    }
    case CKwAnalysis::Modal: {
        p.out += "*STEP\n*FREQUENCY\n" + std::to_string(p.deck.modes);
        const CKwModalSetup* m = p.analysis.GetModalSetup();
        if (m && m->m_useBand && !IsMissingValue(m->m_lowerFrequency)
            && !IsMissingValue(m->m_upperFrequency) && m->m_upperFrequency > m->m_lowerFrequency)
            p.out += ", " + num(m->m_lowerFrequency) + ", " + num(m->m_upperFrequency);
        p.out += "\n";
        break;
    }
    default:
        p.out += "*STEP\n*STATIC\n";
    }
}

bool hasConstraint(const Plan& p, int subcaseId)
{
    for (const CKwRestraint* r : restraintsOf(p.model, subcaseId))
        if (!r->IsThermal() && !entityNodes(p.mesh, r->m_entities).empty()
            && std::find(r->m_dof.begin(), r->m_dof.end(), true) != r->m_dof.end())
            return true;
    return false;
}

void writeStep(Plan& p, const CKwSubCase& sub, bool first)
{
    p.out += "** Subcase " + std::to_string(sub.GetID()) + ": " + sub.GetName().toStdString()
             + "\n";
    writeProcedure(p, sub);
    p.stepSubcase = sub.GetID();
    // A static step's reactions must balance its loads; a dynamic one's carry inertia too.
    const bool balanced = p.analysis.GetAnalysisTypeCode() == CKwAnalysis::LinearStatic
                          || p.analysis.GetAnalysisTypeCode() == CKwAnalysis::NonlinearStatic;
    if (balanced) {
        p.deck.balances.emplace_back();
        p.balance = &p.deck.balances.back();
        p.balance->subcaseId = sub.GetID();
        for (auto& along : p.fixedAlong)
            along.assign(p.mesh.Nodes().size(), 0);
    }
    writeRestraints(p, sub.GetID(), !first);
    if (!p.deck.modal) {
        const StepLoads loads = writeLoads(p, sub.GetID());
        // Loads of one subcase never carry over into the next.
        if (!first) {
            p.out += "*CLOAD, OP=NEW\n*DLOAD, OP=NEW\n";
        }
        p.out += loads.cload + loads.dload;
        const int every = outputEvery(p, sub);
        const std::string frequency = every > 1 ? ", FREQUENCY=" + std::to_string(every) : "";
        p.out += "*NODE FILE" + frequency + "\nU, RF\n*EL FILE" + frequency + "\nS, E\n";
    } else {
        p.out += "*NODE FILE\nU\n*EL FILE\nS\n";
    }
    p.out += "*END STEP\n";
    p.deck.stepSubcases.push_back(sub.GetID());
    p.balance = nullptr;
}

// --- frequency response ---

// The critical damping ratio a frequency response uses for every mode: from the damping's
// frequency table at the sweep's lower end, else its structural coefficient G (G / 2 at
// resonance). Rayleigh damping goes out as it stands instead (ratio < 0).
double dampingRatio(Plan& p, const CKwDamping* d, double lowest, std::string& rayleigh)
{
    if (!d)
        return 0;
    if (d->m_modal && d->m_modalTableId)
        for (const CKwTable* t : p.model.m_tables)
            if (t->GetID() == d->m_modalTableId && t->GetPointCount() > 0) {
                const int n = t->GetPointCount();
                const auto x = [&](int i) { return t->GetXFunction()->GetValue(i); };
                const auto y = [&](int i) { return t->GetYFunction()->GetValue(i); };
                double ratio = lowest <= x(0) ? y(0) : y(n - 1);
                for (int i = 0; i + 1 < n; ++i)
                    if (lowest >= x(i) && lowest <= x(i + 1) && x(i + 1) > x(i))
                        ratio = y(i) + (y(i + 1) - y(i)) * (lowest - x(i)) / (x(i + 1) - x(i));
                p.note(QStringLiteral("Damping \"%1\": every mode takes the ratio %2 of the "
                                      "table at %3 Hz").arg(d->GetName()).arg(ratio).arg(lowest));
                return ratio;
            }
    if ((d->m_alpha != 0 && !IsMissingValue(d->m_alpha)) || (d->m_beta != 0 && !IsMissingValue(d->m_beta))) {
        rayleigh = ",," + real(IsMissingValue(d->m_alpha) ? 0.0 : d->m_alpha) + ", "
                   + real(IsMissingValue(d->m_beta) ? 0.0 : d->m_beta) + "\n";
        return -1;
    }
    return IsMissingValue(d->m_structuralG) ? 0 : d->m_structuralG / 2;
}

// A frequency response is the modes of the constrained model, then the steady-state response
// to the first subcase's loads (as amplitudes) between the lowest and highest solution
// frequency. The solver places the points itself: the given number in each interval between
// the band's ends and the natural frequencies, the natural frequencies included.
bool writeFrequencyResponse(Plan& p, const CKwSubCase& sub)
{
    const CKwSolutionFrequency* sf = nullptr;
    const CKwDamping* damping = nullptr;
    for (const CKwSolutionFrequency* f : p.model.m_solutionFrequencies)
        if (f->m_analysisId == p.analysis.GetID() && !sf)
            sf = f;
    for (const CKwDamping* d : p.model.m_dampings)
        if (d->m_analysisId == p.analysis.GetID() && !damping)
            damping = d;
    const QList<double> f = sf ? sf->Frequencies() : QList<double>();
    if (f.size() < 2 || !(f.last() > f.first()))
        return p.refuse(QStringLiteral("The frequency response has no band of solution "
                                       "frequencies."));
    std::string rayleigh;
    const double ratio = dampingRatio(p, damping, f.first(), rayleigh);
    if (ratio == 0)
        p.note(QStringLiteral("The frequency response has no damping: its peaks are unbounded"));
    p.out += "** Subcase " + std::to_string(sub.GetID()) + ": " + sub.GetName().toStdString()
             + "\n*STEP\n*FREQUENCY, STORAGE=YES\n" + std::to_string(p.deck.modes) + "\n";
    p.stepSubcase = sub.GetID();
    writeRestraints(p, sub.GetID(), false);
    p.out += "*NODE FILE\nU\n*END STEP\n*STEP\n*STEADY STATE DYNAMICS\n" + real(f.first()) + ", "
             + real(f.last()) + ", " + std::to_string(std::max(2, int(f.size()) - 1)) + ", 1.\n";
    if (ratio < 0)
        p.out += "*MODAL DAMPING, RAYLEIGH\n" + rayleigh;
    else if (ratio > 0)
        p.out += "*MODAL DAMPING\n1, " + std::to_string(p.deck.modes) + ", " + real(ratio) + "\n";
    p.stepSubcase = sub.GetID();
    const StepLoads loads = writeLoads(p, sub.GetID());
    p.out += loads.cload + loads.dload + "*NODE FILE\nU\n*END STEP\n";
    p.deck.stepSubcases = {sub.GetID(), sub.GetID()};
    return true;
}

QString refusalFor(int type)
{
    switch (type) {
    case CKwAnalysis::ResponseSpectrum:
        return QStringLiteral("The solver run cannot do a response spectrum analysis: it has no "
                              "spectrum input and no modal combination.");
    case CKwAnalysis::ExplicitDynamics:
        return QStringLiteral("The solver run cannot do an explicit dynamics analysis: it has no "
                              "explicit time integration.");
    case CKwAnalysis::Fatigue:
        return QStringLiteral("The solver run cannot do a fatigue analysis: it has no fatigue "
                              "life evaluation.");
    case CKwAnalysis::Optimization:
        return QStringLiteral("The solver run cannot do an optimization study: it has no loop "
                              "over design variables.");
    default:
        return QStringLiteral("The solver run cannot do analyses of type %1.").arg(type);
    }
}

} // namespace

std::vector<int> KwGeometryNodes(const CKwMeshModel& mesh, const CKwUIEntity& entity)
{
    std::vector<int> ids;
    switch (entity.GetKind()) {
    case CKwUIEntity::Node:
        if (mesh.HasNode(entity.GetID()))
            ids.push_back(entity.GetID());
        return ids;
    case CKwUIEntity::Element: {
        const int e = mesh.ElementIndex(entity.GetID());
        if (e >= 0)
            for (int i : mesh.ElementNodes(std::size_t(e)))
                ids.push_back(mesh.Nodes()[std::size_t(i)].id);
        std::sort(ids.begin(), ids.end());
        return ids;
    }
    default:
        // Geometry: what the mesher classified onto it.
        if (const CKwMeshModel::GeometryMesh* g = mesh.FindGeometryMesh(entity.GetKind(),
                                                                        entity.GetID()))
            return g->nodeIds;
        break;
    }
    const Box b = solidBox(mesh);
    if (!b.valid)
        return ids;
    double size = 0;
    for (int a = 0; a < 3; ++a)
        size = std::max(size, b.hi[a] - b.lo[a]);
    const double tol = 1e-6 * std::max(size, 1e-12);
    const auto inside = [&](const double* pt) {
        for (int a = 0; a < 3; ++a)
            if (pt[a] < b.lo[a] - tol || pt[a] > b.hi[a] + tol)
                return false;
        return true;
    };
    for (const auto& n : mesh.Nodes()) {
        const double pt[3] = {n.x, n.y, n.z};
        bool take = false;
        if (entity.GetKind() == CKwUIEntity::Face && entity.GetID() >= 1 && entity.GetID() <= 6) {
            const int axis = 2 - (entity.GetID() - 1) / 2;
            const bool high = (entity.GetID() - 1) % 2 == 1;
            take = inside(pt) && std::abs(pt[axis] - (high ? b.hi[axis] : b.lo[axis])) <= tol;
        } else if (entity.GetKind() == CKwUIEntity::Vertex && entity.GetID() >= 1
                   && entity.GetID() <= 8) {
            take = true;
            for (int a = 0; a < 3; ++a) {
                const bool high = ((entity.GetID() - 1) >> a) & 1;
                take = take && std::abs(pt[a] - (high ? b.hi[a] : b.lo[a])) <= tol;
            }
        } else if (entity.GetKind() == CKwUIEntity::Body) {
            take = inside(pt);
        }
        if (take)
            ids.push_back(n.id);
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

KwSolverDeck KwWriteSolverDeck(const CKwFEModel& model, const CKwAnalysis& analysis)
{
    KwSolverDeck deck;
    const int type = analysis.GetAnalysisTypeCode();
    if (type != CKwAnalysis::LinearStatic && type != CKwAnalysis::Modal
        && type != CKwAnalysis::NonlinearStatic && type != CKwAnalysis::NonlinearTransient
        && type != CKwAnalysis::FrequencyResponse) {
        deck.refusal = refusalFor(type);
        return deck;
    }
    if (analysis.IsExplicitAnalysis()) {
        deck.refusal = refusalFor(CKwAnalysis::ExplicitDynamics);
        return deck;
    }
    if (!model.m_mesh || model.m_mesh->ElementCount() == 0) {
        deck.refusal = QStringLiteral("The model has no mesh to solve.");
        return deck;
    }
    if (analysis.GetSubCases().isEmpty()) {
        deck.refusal = QStringLiteral("The analysis has no subcase.");
        return deck;
    }
    if (model.m_mesh->CountOfType(CKwMeshModel::Pyr5) + model.m_mesh->CountOfType(CKwMeshModel::Pyr13)
        > 0) {
        deck.refusal = QStringLiteral("The mesh has pyramid elements, which the solver run cannot "
                                      "take: remesh the model without them.");
        return deck;
    }
    std::string out = "** " + analysis.GetName().toStdString() + ", units N, m, kg, s, Pa\n";
    Plan p(model, *model.m_mesh, analysis, deck, out);
    for (const CKwPhysicalProperty* prop : model.m_properties) {
        if (prop->m_idealization == CKwPhysicalProperty::Solid && !p.solid)
            p.solid = prop;
        if (prop->m_idealization == CKwPhysicalProperty::Shell && !p.shell)
            p.shell = prop;
        if (prop->m_idealization == CKwPhysicalProperty::Beam && !p.beam)
            p.beam = prop;
    }
    deck.modal = type == CKwAnalysis::Modal;
    if (deck.modal || type == CKwAnalysis::FrequencyResponse)
        deck.modes = analysis.GetModalSetup() && analysis.GetModalSetup()->m_modeCount > 0
                         ? analysis.GetModalSetup()->m_modeCount : kKwDefaultModes;
    if (type == CKwAnalysis::NonlinearTransient) {
        const CKwTimeStep* t = analysis.GetTimeStep();
        const CKwNonlinearSetup* nl = analysis.GetSubCases().first()->GetNonlinearSetup();
        if (t && t->TotalTime() > 0)
            deck.stepPeriod = t->TotalTime();
        else if (nl && nl->m_increments > 0 && nl->m_timeIncrement > 0)
            deck.stepPeriod = nl->m_increments * nl->m_timeIncrement;
        else
            deck.stepPeriod = kKwDefaultTransientTime;
    }

    for (const CKwConnector* c : model.m_connectors)
        p.links.push_back(connectorPairs(*model.m_mesh, *c));
    for (std::size_t e = 0; e < model.m_mesh->ElementCount(); ++e)
        p.nextElement = std::max(p.nextElement, model.m_mesh->ElementID(e));
    choosePieces(p);
    writeNodes(p);
    writeElements(p);
    if (!writeProperties(p) || !writeMasses(p) || !writeConnectors(p) || !writeContacts(p)) {
        deck.text.clear();
        return deck;
    }
    // Steps go into a buffer first: the time tables their loads use come before them.
    std::string steps;
    std::swap(out, steps);
    const auto& subcases = analysis.GetSubCases();
    // The solver's factorization does not stop at a free body: it would return rubbish.
    // A modal analysis of a free body is sound (its first modes are rigid). A subcase with
    // neither a structural load nor a constraint is a heat-transfer one: it is left out.
    std::vector<const CKwSubCase*> solved;
    for (const CKwSubCase* sub : subcases) {
        if (deck.modal) {
            solved.push_back(sub);
            break;
        }
        const auto loads = loadsOf(model, sub->GetID());
        const bool structural = std::any_of(loads.begin(), loads.end(),
                                            [](const CKwLoad* l) { return !l->IsThermal(); });
        if (sub->m_thermal || (!structural && !hasConstraint(p, sub->GetID()))) {
            p.note(QStringLiteral("Subcase \"%1\" left out: it holds no structural load")
                       .arg(sub->GetName()));
            continue;
        }
        solved.push_back(sub);
    }
    if (solved.empty()) {
        deck.text.clear();
        deck.refusal = QStringLiteral("No subcase of the analysis holds a structural load.");
        return deck;
    }
    if (!deck.modal)
        for (const CKwSubCase* sub : solved)
            if (!hasConstraint(p, sub->GetID())) {
                deck.text.clear();
                deck.refusal = QStringLiteral("Subcase \"%1\" has no constraint: the model can "
                                              "move freely and its stiffness is singular.")
                                   .arg(sub->GetName());
                return deck;
            }
    if (type == CKwAnalysis::FrequencyResponse) {
        if (solved.size() > 1)
            p.note(QStringLiteral("The frequency response takes the loads of its first "
                                  "structural subcase"));
        if (!writeFrequencyResponse(p, *solved.front())) {
            deck.text.clear();
            return deck;
        }
    } else {
        for (std::size_t i = 0; i < solved.size(); ++i)
            writeStep(p, *solved[i], i == 0);
    }
    std::swap(out, steps);
    writeAmplitudes(p);
    out += steps;
    deck.text = std::move(out);
    return deck;
}
