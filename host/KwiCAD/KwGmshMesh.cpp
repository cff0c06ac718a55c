#include "KwGmshMesh.h"

#include "CKwUIEntity.h"
#include "KwMeshTopology.h"

#include <QHash>
#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <cmath>
#include <map>
#include <unordered_map>

namespace {

// --- our middle-node order ---

constexpr std::pair<int, int> kBeam3Edges[] = {{0, 1}};
constexpr std::pair<int, int> kTri6Edges[] = {{0, 1}, {1, 2}, {2, 0}};
constexpr std::pair<int, int> kQuad8Edges[] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}};
constexpr std::pair<int, int> kTet10Edges[] = {{0, 1}, {1, 2}, {2, 0}, {0, 3}, {1, 3}, {2, 3}};
constexpr std::pair<int, int> kPyr13Edges[] = {{0, 1}, {1, 2}, {2, 3}, {3, 0},
                                               {0, 4}, {1, 4}, {2, 4}, {3, 4}};
constexpr std::pair<int, int> kWedge15Edges[] = {{0, 1}, {1, 2}, {2, 0}, {3, 4}, {4, 5},
                                                 {5, 3}, {0, 3}, {1, 4}, {2, 5}};
constexpr std::pair<int, int> kHex20Edges[] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                                               {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};

// --- the mesher's element types ---

// How one of the file's element types becomes ours: its node count in the file, our type, and
// for each of our nodes the position of the file's node that goes there. The file's middle
// nodes run along its own edge lists (the tetrahedron ends 30 32 31, the hexahedron
// 01 03 04 12 15 23 26 37 45 47 56 67, the prism 01 02 03 12 14 25 34 35 45, the pyramid
// 01 03 04 12 14 23 24 34); the orders below put them on our edges. A nine-node quadrilateral
// drops its centre.
struct FileType
{
    int fileType;
    int nodes;
    int ours; // 0: a point (no element of ours)
    std::array<signed char, 20> order;
};
constexpr FileType kFileTypes[] = {
    {15, 1, 0, {0}},
    {1, 2, CKwMeshModel::Beam2, {0, 1}},
    {2, 3, CKwMeshModel::Tri3, {0, 1, 2}},
    {3, 4, CKwMeshModel::Quad4, {0, 1, 2, 3}},
    {4, 4, CKwMeshModel::Tet4, {0, 1, 2, 3}},
    {5, 8, CKwMeshModel::Hex8, {0, 1, 2, 3, 4, 5, 6, 7}},
    {6, 6, CKwMeshModel::Wedge6, {0, 1, 2, 3, 4, 5}},
    {7, 5, CKwMeshModel::Pyr5, {0, 1, 2, 3, 4}},
    {8, 3, CKwMeshModel::Beam3, {0, 1, 2}},
    {9, 6, CKwMeshModel::Tri6, {0, 1, 2, 3, 4, 5}},
    {10, 9, CKwMeshModel::Quad8, {0, 1, 2, 3, 4, 5, 6, 7}},
    {16, 8, CKwMeshModel::Quad8, {0, 1, 2, 3, 4, 5, 6, 7}},
    {11, 10, CKwMeshModel::Tet10, {0, 1, 2, 3, 4, 5, 6, 7, 9, 8}},
    {17, 20, CKwMeshModel::Hex20,
     {0, 1, 2, 3, 4, 5, 6, 7, 8, 11, 13, 9, 16, 18, 19, 17, 10, 12, 14, 15}},
    {18, 15, CKwMeshModel::Wedge15, {0, 1, 2, 3, 4, 5, 6, 9, 7, 12, 14, 13, 8, 10, 11}},
    {19, 13, CKwMeshModel::Pyr13, {0, 1, 2, 3, 4, 5, 8, 10, 6, 7, 9, 11, 12}},
};

const FileType* fileType(long long t)
{
    for (const FileType& f : kFileTypes)
        if (f.fileType == t)
            return &f;
    return nullptr;
}

// --- reading numbers and words with the line they stand on ---

class Lexer
{
public:
    explicit Lexer(std::string_view text) : m_p(text.data()), m_end(text.data() + text.size()) {}

    // The line of the next word (or, at the end, the line after the last).
    int Line()
    {
        skip();
        return m_line;
    }
    std::size_t Remaining() const { return static_cast<std::size_t>(m_end - m_p); }
    bool AtEnd()
    {
        skip();
        return m_p >= m_end;
    }
    // The line of the word or number read last (or tried).
    int TokenLine() const { return m_token; }
    std::string_view Word()
    {
        skip();
        m_token = m_line;
        const char* s = m_p;
        while (m_p < m_end && !space(*m_p))
            ++m_p;
        return {s, static_cast<std::size_t>(m_p - s)};
    }
    bool Integer(long long& v)
    {
        skip();
        m_token = m_line;
        const auto r = std::from_chars(m_p, m_end, v);
        if (r.ec != std::errc() || (r.ptr < m_end && !space(*r.ptr)))
            return false;
        m_p = r.ptr;
        return true;
    }
    bool Real(double& v)
    {
        skip();
        m_token = m_line;
        const auto r = std::from_chars(m_p, m_end, v);
        if (r.ec != std::errc() || (r.ptr < m_end && !space(*r.ptr)) || !std::isfinite(v))
            return false;
        m_p = r.ptr;
        return true;
    }
    // A name in double quotes on the current line.
    bool Quoted(std::string_view& name)
    {
        skip();
        m_token = m_line;
        if (m_p >= m_end || *m_p != '"')
            return false;
        const char* s = ++m_p;
        while (m_p < m_end && *m_p != '"' && *m_p != '\n')
            ++m_p;
        if (m_p >= m_end || *m_p != '"')
            return false;
        name = {s, static_cast<std::size_t>(m_p - s)};
        ++m_p;
        return true;
    }

private:
    static bool space(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
    void skip()
    {
        while (m_p < m_end && space(*m_p)) {
            if (*m_p == '\n')
                ++m_line;
            ++m_p;
        }
    }
    const char* m_p;
    const char* m_end;
    int m_line = 1;
    int m_token = 1;
};

struct Failure
{
    int line;
    QString why;
};

// One geometry entity of the file while it is read.
struct Entity
{
    int dim = 0;
    int tag = 0;
    double lo[3] = {0, 0, 0}, hi[3] = {0, 0, 0};
    std::vector<int> physicals;
    std::vector<int> bounding; // tags of dimension dim - 1
    std::vector<int> nodes;
    std::vector<int> facets;
    std::vector<int> elements;
    // Boundary faces by their corners (3 or 4 node ids, the fourth 0 for a triangle), for
    // turning them outward once the solids are known.
    std::vector<std::array<int, 4>> faces;
    bool described = false; // listed in $Entities
    int body = 0;
};

class Reader
{
public:
    explicit Reader(std::string_view text, KwGmshMesh& out) : m_lex(text), m_out(out) {}

    void Run()
    {
        bool format = false, nodes = false, elements = false;
        while (!m_lex.AtEnd()) {
            const int line = m_lex.Line();
            const std::string_view w = m_lex.Word();
            if (!format && w != "$MeshFormat")
                fail(line, QStringLiteral("the file does not start with $MeshFormat"));
            if (w == "$MeshFormat") {
                readFormat();
                format = true;
            } else if (w == "$PhysicalNames") {
                readPhysicalNames();
            } else if (w == "$Entities") {
                if (nodes)
                    fail(line, QStringLiteral("$Entities must come before $Nodes"));
                readEntities();
            } else if (w == "$Nodes") {
                if (nodes)
                    fail(line, QStringLiteral("a second $Nodes section"));
                readNodes();
                nodes = true;
            } else if (w == "$Elements") {
                if (!nodes)
                    fail(line, QStringLiteral("$Elements before $Nodes"));
                if (elements)
                    fail(line, QStringLiteral("a second $Elements section"));
                readElements();
                elements = true;
            } else if (w.size() > 1 && w[0] == '$') {
                skipSection(w);
            } else {
                fail(line, QStringLiteral("a section such as $Nodes was expected"));
            }
        }
        if (!format)
            fail(m_lex.Line(), QStringLiteral("the file is empty"));
        if (!nodes || !elements)
            fail(m_lex.Line(), QStringLiteral("the file ends without its %1 section")
                                   .arg(nodes ? QStringLiteral("$Elements")
                                              : QStringLiteral("$Nodes")));
        classify();
    }

private:
    [[noreturn]] void fail(int line, const QString& why) { throw Failure{line, why}; }
    [[noreturn]] void failHere(const QString& why) { fail(m_lex.TokenLine(), why); }
    [[noreturn]] void failAtEnd(const QString& why) { fail(m_lex.Line(), why); }

    long long integer(const char* what, long long lo = LLONG_MIN, long long hi = LLONG_MAX)
    {
        long long v = 0;
        if (!m_lex.Integer(v)) {
            if (m_lex.AtEnd())
                failAtEnd(QStringLiteral("the file ends where %1 was expected").arg(QLatin1String(what)));
            failHere(QStringLiteral("%1 was expected").arg(QLatin1String(what)));
        }
        if (v < lo || v > hi)
            failHere(QStringLiteral("%1 %2 is out of range").arg(QLatin1String(what)).arg(v));
        return v;
    }
    double real(const char* what)
    {
        double v = 0;
        if (!m_lex.Real(v)) {
            if (m_lex.AtEnd())
                failAtEnd(QStringLiteral("the file ends where %1 was expected").arg(QLatin1String(what)));
            failHere(QStringLiteral("%1 was expected").arg(QLatin1String(what)));
        }
        return v;
    }
    // A count the rest of the file must be able to hold: every item takes at least
    // `bytesEach` characters, so a count beyond that is a lie and nothing is allocated for it.
    std::size_t count(const char* what, std::size_t bytesEach)
    {
        const long long n = integer(what, 0);
        if (static_cast<unsigned long long>(n) > m_lex.Remaining() / bytesEach)
            failHere(QStringLiteral("%1 %2 is more than the rest of the file holds")
                         .arg(QLatin1String(what))
                         .arg(n));
        return static_cast<std::size_t>(n);
    }
    void expect(std::string_view word)
    {
        if (m_lex.AtEnd())
            failAtEnd(QStringLiteral("the file ends where %1 was expected")
                          .arg(QString::fromLatin1(word.data(), qsizetype(word.size()))));
        const int line = m_lex.Line();
        if (m_lex.Word() != word)
            fail(line, QStringLiteral("%1 was expected")
                           .arg(QString::fromLatin1(word.data(), qsizetype(word.size()))));
    }

    void readFormat()
    {
        const int line = m_lex.Line();
        const std::string_view version = m_lex.Word();
        if (version != "4.1")
            fail(line, QStringLiteral("mesh format %1 is not read (4.1 is)")
                           .arg(QString::fromLatin1(version.data(), qsizetype(version.size()))));
        if (integer("the file type") != 0)
            fail(line, QStringLiteral("binary mesh files are not read"));
        integer("the data size");
        expect("$EndMeshFormat");
    }

    void readPhysicalNames()
    {
        const std::size_t n = count("the number of names", 6);
        for (std::size_t i = 0; i < n; ++i) {
            const int dim = int(integer("a dimension", 0, 3));
            const int tag = int(integer("a physical tag", INT_MIN, INT_MAX));
            std::string_view name;
            if (!m_lex.Quoted(name))
                failHere(QStringLiteral("a name in double quotes was expected"));
            m_names[{dim, tag}] = QString::fromUtf8(name.data(), qsizetype(name.size()));
        }
        expect("$EndPhysicalNames");
    }

    Entity& entity(int dim, int tag)
    {
        const auto [it, added] = m_index.try_emplace({dim, tag}, int(m_entities.size()));
        if (added) {
            m_entities.emplace_back();
            m_entities.back().dim = dim;
            m_entities.back().tag = tag;
        }
        return m_entities[std::size_t(it->second)];
    }

    void readEntities()
    {
        std::size_t counts[4];
        for (std::size_t& c : counts)
            c = count("an entity count", 8);
        for (int dim = 0; dim < 4; ++dim)
            for (std::size_t i = 0; i < counts[dim]; ++i) {
                const int line = m_lex.Line();
                Entity& e = entity(dim, int(integer("an entity tag", 1, INT_MAX)));
                if (e.described)
                    fail(line, QStringLiteral("entity %1 of dimension %2 is listed twice")
                                   .arg(e.tag)
                                   .arg(dim));
                e.described = true;
                for (double& v : e.lo)
                    v = real("a coordinate");
                if (dim == 0)
                    std::copy(std::begin(e.lo), std::end(e.lo), e.hi);
                else
                    for (double& v : e.hi)
                        v = real("a coordinate");
                const std::size_t np = count("a physical count", 2);
                for (std::size_t k = 0; k < np; ++k)
                    e.physicals.push_back(int(integer("a physical tag", INT_MIN, INT_MAX)));
                if (dim == 0)
                    continue;
                const std::size_t nb = count("a bounding count", 2);
                for (std::size_t k = 0; k < nb; ++k) {
                    const long long b = integer("a bounding tag", -INT_MAX, INT_MAX);
                    e.bounding.push_back(int(b < 0 ? -b : b));
                }
            }
        expect("$EndEntities");
    }

    void readNodes()
    {
        const std::size_t blocks = count("the number of node blocks", 8);
        const std::size_t total = count("the number of nodes", 8);
        integer("the smallest node tag");
        integer("the largest node tag");
        m_out.mesh.Reserve(total, 0, 0);
        std::size_t seen = 0;
        std::vector<int> tags;
        for (std::size_t b = 0; b < blocks; ++b) {
            const int dim = int(integer("a dimension", 0, 3));
            const int tag = int(integer("an entity tag", INT_MIN, INT_MAX));
            const bool parametric = integer("the parametric flag", 0, 1) == 1;
            const std::size_t n = count("the number of nodes in a block", 8);
            if (n > total - seen)
                failHere(QStringLiteral("the blocks hold more nodes than the %1 announced").arg(total));
            seen += n;
            Entity& e = entity(dim, tag);
            tags.resize(n);
            for (std::size_t i = 0; i < n; ++i)
                tags[i] = int(integer("a node tag", 1, INT_MAX));
            const int extra = parametric ? dim : 0;
            for (std::size_t i = 0; i < n; ++i) {
                const int line = m_lex.Line();
                const double x = real("a coordinate"), y = real("a coordinate"),
                             z = real("a coordinate");
                for (int k = 0; k < extra; ++k)
                    real("a parametric coordinate");
                if (!m_out.mesh.AddNode(tags[i], x, y, z))
                    fail(line, QStringLiteral("node %1 is given twice").arg(tags[i]));
                e.nodes.push_back(tags[i]);
            }
        }
        if (seen != total)
            failHere(QStringLiteral("the blocks hold %1 nodes, not the %2 announced").arg(seen).arg(total));
        expect("$EndNodes");
    }

    // Whether elements on this entity carry load themselves (see the header).
    bool structural(const Entity& e) const
    {
        if (e.dim == 3)
            return true;
        if (e.dim == 0)
            return false;
        for (const Entity& up : m_entities)
            if (up.dim == e.dim + 1
                && std::find(up.bounding.begin(), up.bounding.end(), e.tag) != up.bounding.end())
                return false;
        return true;
    }

    void readElements()
    {
        const std::size_t blocks = count("the number of element blocks", 8);
        const std::size_t total = count("the number of elements", 4);
        integer("the smallest element tag");
        integer("the largest element tag");
        m_out.mesh.Reserve(m_out.mesh.Nodes().size(), total, total * 4);
        std::size_t seen = 0;
        int file[27];
        int ours[20];
        for (std::size_t b = 0; b < blocks; ++b) {
            const int dim = int(integer("a dimension", 0, 3));
            const int tag = int(integer("an entity tag", INT_MIN, INT_MAX));
            const int typeLine = m_lex.Line();
            const long long t = integer("an element type");
            const FileType* ft = fileType(t);
            if (!ft)
                fail(typeLine, QStringLiteral("element type %1 is not read").arg(t));
            const std::size_t n = count("the number of elements in a block", 4);
            if (n > total - seen)
                failHere(QStringLiteral("the blocks hold more elements than the %1 announced").arg(total));
            seen += n;
            Entity& e = entity(dim, tag);
            const bool carries = ft->ours != 0 && structural(e)
                                 && (dim == 3) == CKwMeshModel::IsSolidType(ft->ours)
                                 && (dim == 2) == CKwMeshModel::IsShellType(ft->ours)
                                 && (dim == 1) == CKwMeshModel::IsBeamType(ft->ours);
            const int corners = ft->ours ? CKwMeshModel::CornerCount(ft->ours) : 1;
            for (std::size_t i = 0; i < n; ++i) {
                const int line = m_lex.Line();
                const int id = int(integer("an element tag", 1, INT_MAX));
                for (int k = 0; k < ft->nodes; ++k)
                    file[k] = int(integer("a node tag", 1, INT_MAX));
                // A structural element's nodes are looked up once, when it is taken.
                if (!carries)
                    requireNodes(line, id, file, ft->nodes);
                // A volume's nodes are gathered from its elements once all are read.
                if (dim != 3)
                    e.nodes.insert(e.nodes.end(), file, file + ft->nodes);
                if (ft->ours == 0)
                    continue;
                const int count = CKwMeshModel::NodesPerElement(ft->ours);
                for (int k = 0; k < count; ++k)
                    ours[k] = file[ft->order[std::size_t(k)]];
                if (carries) {
                    // Our elements are numbered 1, 2, 3... in the file's order: the file numbers
                    // its boundary and point elements too, which would leave gaps.
                    const int ourId = int(m_out.mesh.ElementCount()) + 1;
                    if (!m_out.mesh.AddElement(ourId, ft->ours, std::span<const int>(ours, std::size_t(count)))) {
                        requireNodes(line, id, file, ft->nodes);
                        fail(line, QStringLiteral("element %1 cannot be taken").arg(id));
                    }
                    e.elements.push_back(ourId);
                }
                if (dim == 1) {
                    e.facets.insert(e.facets.end(), {ours[0], ours[1]});
                } else if (dim == 2 && corners == 3) {
                    e.facets.insert(e.facets.end(), {ours[0], ours[1], ours[2]});
                    e.faces.push_back({ours[0], ours[1], ours[2], 0});
                } else if (dim == 2 && corners == 4) {
                    e.facets.insert(e.facets.end(), {ours[0], ours[1], ours[2], ours[0], ours[2], ours[3]});
                    e.faces.push_back({ours[0], ours[1], ours[2], ours[3]});
                }
            }
        }
        if (seen != total)
            failHere(QStringLiteral("the blocks hold %1 elements, not the %2 announced").arg(seen).arg(total));
        expect("$EndElements");
    }

    void requireNodes(int line, int id, const int* nodes, int count)
    {
        for (int k = 0; k < count; ++k)
            if (!m_out.mesh.HasNode(nodes[k]))
                fail(line, QStringLiteral("element %1 names node %2, which the file does not have")
                               .arg(id)
                               .arg(nodes[k]));
    }

    void skipSection(std::string_view name)
    {
        const std::string end = "$End" + std::string(name.substr(1));
        while (!m_lex.AtEnd())
            if (m_lex.Word() == end)
                return;
        failAtEnd(QStringLiteral("the file ends inside %1")
                     .arg(QString::fromLatin1(name.data(), qsizetype(name.size()))));
    }

    static std::array<int, 4> key(std::array<int, 4> corners)
    {
        std::sort(corners.begin(), corners.end());
        return corners;
    }

    // Surface facets on solids run outward, as the faces of the solid element under them do.
    // Only elements with every corner of a face on some boundary surface are looked at, so a
    // large volume mesh costs one pass over its elements and a lookup per face on the skin.
    void orientSkin()
    {
        struct KeyHash
        {
            std::size_t operator()(const std::array<int, 4>& k) const
            {
                std::size_t h = 0;
                for (int v : k)
                    h = h * 1000003u ^ std::size_t(unsigned(v));
                return h;
            }
        };
        const CKwMeshModel& mesh = m_out.mesh;
        struct Owner
        {
            int entity;
            bool taken;
        };
        std::unordered_map<std::array<int, 4>, Owner, KeyHash> owner;
        std::vector<char> onBoundary(mesh.Nodes().size(), 0);
        for (std::size_t i = 0; i < m_entities.size(); ++i)
            if (m_entities[i].dim == 2 && m_entities[i].elements.empty())
                for (const auto& f : m_entities[i].faces) {
                    owner.emplace(key(f), Owner{int(i), false});
                    for (int id : f)
                        if (id)
                            onBoundary[std::size_t(mesh.NodeIndex(id))] = 1;
                }
        if (owner.empty())
            return;
        std::map<int, std::vector<int>> outward;
        for (std::size_t e = 0; e < mesh.ElementCount(); ++e) {
            const auto corners = KwSolidFaceCorners(mesh.ElementType(e));
            const auto conn = mesh.ElementNodes(e);
            for (const std::vector<int>& face : corners) {
                std::array<int, 4> ids = {0, 0, 0, 0};
                bool boundary = true;
                for (std::size_t k = 0; k < face.size() && boundary; ++k) {
                    const int index = conn[std::size_t(face[k])];
                    boundary = onBoundary[std::size_t(index)] != 0;
                    ids[k] = mesh.Nodes()[std::size_t(index)].id;
                }
                if (!boundary)
                    continue;
                const auto it = owner.find(key(ids));
                if (it == owner.end() || it->second.taken)
                    continue;
                it->second.taken = true;
                std::vector<int>& f = outward[it->second.entity];
                f.insert(f.end(), {ids[0], ids[1], ids[2]});
                if (face.size() == 4)
                    f.insert(f.end(), {ids[0], ids[2], ids[3]});
            }
        }
        for (auto& [index, facets] : outward)
            if (facets.size() == m_entities[std::size_t(index)].facets.size())
                m_entities[std::size_t(index)].facets = std::move(facets);
    }

    void assignBodies()
    {
        int fallback[4] = {0, 2000, 1000, 0};
        for (int top : {3, 2, 1}) {
            for (Entity& e : m_entities) {
                if (e.dim != top || e.body || (top < 3 && !structural(e)))
                    continue;
                if (top < 3 && e.elements.empty() && !e.described)
                    continue;
                e.body = e.physicals.empty() ? fallback[top] + e.tag : e.physicals.front();
                if (!e.physicals.empty() && !m_bodyNames.contains(e.body))
                    m_bodyNames.insert(e.body, m_names.value({top, e.physicals.front()}));
                spread(e, e.body);
            }
        }
    }
    void spread(const Entity& e, int body)
    {
        for (int b : e.bounding) {
            const auto it = m_index.find({e.dim - 1, b});
            if (it == m_index.end())
                continue;
            Entity& down = m_entities[std::size_t(it->second)];
            if (down.body)
                continue;
            down.body = body;
            spread(down, body);
        }
    }

    // The nodes of each volume: its own node blocks and the nodes of its elements, marked
    // once per node rather than collected per element and sorted.
    void gatherVolumeNodes()
    {
        const CKwMeshModel& mesh = m_out.mesh;
        std::vector<char> mark(mesh.Nodes().size(), 0);
        for (Entity& e : m_entities) {
            if (e.dim != 3 || e.elements.empty())
                continue;
            std::fill(mark.begin(), mark.end(), 0);
            for (int id : e.nodes)
                mark[std::size_t(mesh.NodeIndex(id))] = 1;
            // Our element ids are their positions plus one.
            for (int id : e.elements)
                for (int i : mesh.ElementNodes(std::size_t(id - 1)))
                    mark[std::size_t(i)] = 1;
            e.nodes.clear();
            for (std::size_t i = 0; i < mark.size(); ++i)
                if (mark[i])
                    e.nodes.push_back(mesh.Nodes()[i].id);
        }
    }

    void classify()
    {
        gatherVolumeNodes();
        orientSkin();
        assignBodies();
        struct Body
        {
            KwGmshEntity info;
            CKwMeshModel::GeometryMesh mesh;
            bool boxed = false;
        };
        std::map<int, Body> bodies;
        std::vector<CKwMeshModel::GeometryMesh> classes;
        std::vector<KwGmshEntity> infos;
        auto sortUnique = [](std::vector<int>& v) {
            std::sort(v.begin(), v.end());
            v.erase(std::unique(v.begin(), v.end()), v.end());
        };
        std::vector<const Entity*> order;
        for (const Entity& e : m_entities)
            order.push_back(&e);
        std::sort(order.begin(), order.end(), [](const Entity* a, const Entity* b) {
            return a->dim != b->dim ? a->dim > b->dim : a->tag < b->tag;
        });
        for (const Entity* pe : order) {
            const Entity& e = *pe;
            if (e.nodes.empty() && !e.described)
                continue;
            // An entity no body holds (a stray point) is still pickable, on its own.
            if (e.body == 0) {
                if (e.dim < 3) {
                    CKwMeshModel::GeometryMesh g;
                    g.kind = e.dim;
                    g.id = e.tag;
                    g.body = 0;
                    g.nodeIds = e.nodes;
                    sortUnique(g.nodeIds);
                    classes.push_back(std::move(g));
                    KwGmshEntity info;
                    info.kind = e.dim;
                    info.id = e.tag;
                    std::copy(std::begin(e.lo), std::end(e.lo), info.lo);
                    std::copy(std::begin(e.hi), std::end(e.hi), info.hi);
                    infos.push_back(info);
                }
                continue;
            }
            Body& body = bodies[e.body];
            body.info.kind = CKwUIEntity::Body;
            body.info.id = e.body;
            body.info.body = e.body;
            body.info.bodyName = m_bodyNames.value(e.body);
            body.mesh.kind = CKwUIEntity::Body;
            body.mesh.id = e.body;
            body.mesh.body = e.body;
            for (int a = 0; a < 3; ++a) {
                body.info.lo[a] = body.boxed ? std::min(body.info.lo[a], e.lo[a]) : e.lo[a];
                body.info.hi[a] = body.boxed ? std::max(body.info.hi[a], e.hi[a]) : e.hi[a];
            }
            body.boxed = true;
            if (e.dim == 3 || !e.elements.empty()) {
                body.mesh.nodeIds.insert(body.mesh.nodeIds.end(), e.nodes.begin(), e.nodes.end());
                body.mesh.elementIds.insert(body.mesh.elementIds.end(), e.elements.begin(),
                                            e.elements.end());
            }
            if (e.dim == 2)
                body.mesh.facets.insert(body.mesh.facets.end(), e.facets.begin(), e.facets.end());
            if (e.dim == 3)
                continue;
            CKwMeshModel::GeometryMesh g;
            g.kind = e.dim; // vertex, edge and face share the dimension's number
            g.id = e.tag;
            g.body = e.body;
            g.nodeIds = e.nodes;
            sortUnique(g.nodeIds);
            g.facets = e.facets;
            g.elementIds = e.elements;
            sortUnique(g.elementIds);
            classes.push_back(std::move(g));
            KwGmshEntity info;
            info.kind = e.dim;
            info.id = e.tag;
            info.body = e.body;
            info.bodyName = m_bodyNames.value(e.body);
            std::copy(std::begin(e.lo), std::end(e.lo), info.lo);
            std::copy(std::begin(e.hi), std::end(e.hi), info.hi);
            infos.push_back(info);
        }
        for (auto& [id, body] : bodies) {
            sortUnique(body.mesh.nodeIds);
            sortUnique(body.mesh.elementIds);
            m_out.entities.push_back(body.info);
            classes.push_back(std::move(body.mesh));
        }
        m_out.entities.insert(m_out.entities.end(), infos.begin(), infos.end());
        m_out.mesh.SetGeometryMeshes(std::move(classes));
    }

    Lexer m_lex;
    KwGmshMesh& m_out;
    std::vector<Entity> m_entities;
    std::map<std::pair<int, int>, int> m_index;
    QHash<QPair<int, int>, QString> m_names;
    QHash<int, QString> m_bodyNames;
};

} // namespace

QString KwGmshEntity::Label() const
{
    const QString owner = bodyName.isEmpty() ? QStringLiteral("Body %1").arg(body) : bodyName;
    if (kind == CKwUIEntity::Body)
        return owner;
    const QString name = CKwUIEntity::KindName(static_cast<CKwUIEntity::Kind>(kind));
    if (body == 0)
        return QStringLiteral("%1 %2").arg(name).arg(id);
    return QStringLiteral("%1 %2 (%3)")
        .arg(name)
        .arg(id)
        .arg(owner);
}

KwGmshMesh KwReadGmshMesh(std::string_view text)
{
    KwGmshMesh out;
    out.mesh.SetName(QStringLiteral("Mesh"));
    try {
        Reader(text, out).Run();
    } catch (const Failure& f) {
        out.error = QStringLiteral("Line %1: %2").arg(f.line).arg(f.why);
        out.entities.clear();
        out.mesh.Clear();
    } catch (const std::bad_alloc&) {
        out.error = QStringLiteral("The mesh is too large to read.");
        out.entities.clear();
        out.mesh.Clear();
    }
    return out;
}

std::span<const std::pair<int, int>> KwMidsideEdges(int type)
{
    switch (type) {
    case CKwMeshModel::Beam3: return kBeam3Edges;
    case CKwMeshModel::Tri6: return kTri6Edges;
    case CKwMeshModel::Quad8: return kQuad8Edges;
    case CKwMeshModel::Tet10: return kTet10Edges;
    case CKwMeshModel::Pyr13: return kPyr13Edges;
    case CKwMeshModel::Wedge15: return kWedge15Edges;
    case CKwMeshModel::Hex20: return kHex20Edges;
    default: return {};
    }
}
