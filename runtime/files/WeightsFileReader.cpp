#include "files/WeightsFileReader.h"

#include "files/InputFile.h"
#include "files/JsonCursor.h"

#include <algorithm>
#include <climits>

namespace runtime {

namespace {

// Vertex counts and indices fit an int, as the scene's components do.
constexpr long long kMaxVertexIndex = INT_MAX - 1;
constexpr long long kMaxInfluenceIndex = SkinWeights::kMaxInfluences - 1;

const char* const kVertexShape = "a vertex is [index, [x, y, z], [[influence, weight], ...]]";
const char* const kPositionShape = "a position is [x, y, z]";
const char* const kPairShape = "a weight is an [influence, weight] pair";

// The members of one object that were read, so that a repeated one is refused.
class Members {
public:
    explicit Members(JsonCursor& cursor) : m_cursor(cursor) {}
    bool first(const std::string& key) {
        if (std::find(m_seen.begin(), m_seen.end(), key) != m_seen.end())
            return m_cursor.failAtValue("\"" + key + "\" appears twice");
        m_seen.push_back(key);
        return true;
    }
    bool has(const char* key) const {
        return std::find(m_seen.begin(), m_seen.end(), key) != m_seen.end();
    }

private:
    JsonCursor& m_cursor;
    std::vector<std::string> m_seen;
};

class WeightsParser {
public:
    WeightsParser(const char* text, std::size_t size) : m_cursor(text, size) {}

    bool parse(WeightsFile& file, std::string& problem) {
        bool parsed = readTop(file);
        problem = m_cursor.ok() ? m_problem : m_cursor.problem();
        return parsed && problem.empty();
    }

private:
    // An element of a list whose shape says how many it has: fails when the list ends first.
    bool element(char close, bool& first, const char* shape) {
        return m_cursor.next(close, first) || (m_cursor.ok() && m_cursor.fail(shape));
    }
    // The end of such a list: fails when another element follows.
    bool end(char close, bool& first, const char* shape) {
        return m_cursor.ok() && (!m_cursor.next(close, first) || m_cursor.fail(shape)) &&
               m_cursor.ok();
    }
    bool problem(const std::string& text) {
        if (m_problem.empty())
            m_problem = text;
        return false;
    }

    // Walks an object: member(key) reads the value of each member; `members` learns the keys,
    // and a key given twice is refused.
    template <typename Member> bool readObject(Members& members, const Member& member) {
        if (!m_cursor.enterObject())
            return false;
        std::string key;
        for (bool first = true; m_cursor.next('}', first);)
            if (!m_cursor.readKey(key) || !members.first(key) || !member(key))
                return false;
        return m_cursor.ok();
    }

    // Walks a list: element() reads each element.
    template <typename Element> bool readList(const Element& element) {
        if (!m_cursor.enterArray())
            return false;
        for (bool first = true; m_cursor.next(']', first);)
            if (!element())
                return false;
        return m_cursor.ok();
    }

    bool readTop(WeightsFile& file) {
        Members members(m_cursor);
        std::size_t clustersAt = 0;
        bool clustersRead = false;
        std::string format;
        long long version = 0;
        const bool read = readObject(members, [&](const std::string& key) {
            if (key == "format")
                return m_cursor.readString(format) && knownFormat(format);
            if (key == "version")
                return m_cursor.readInteger(INT_MIN, INT_MAX, version) && knownVersion(version);
            if (key == "skinClusters" && members.has("format") && members.has("version")) {
                clustersRead = true;
                return readClusters(file);
            }
            // The clusters are read once format and version say how.
            if (key == "skinClusters")
                clustersAt = m_cursor.offset();
            return m_cursor.skipValue();
        });
        if (!read || !m_cursor.atEnd())
            return false;
        if (!members.has("format"))
            return problem("it is not a skin weights file (it has no \"format\")");
        if (!members.has("version"))
            return problem("it has no \"version\"");
        if (!members.has("skinClusters"))
            return problem("it has no \"skinClusters\"");
        if (!clustersRead) {
            m_cursor.seek(clustersAt);
            return readClusters(file);
        }
        return true;
    }

    bool knownFormat(const std::string& format) {
        return format == kWeightsFileFormat ||
               m_cursor.failAtValue("it is not a skin weights file (its format is \"" + format +
                                    "\")");
    }
    bool knownVersion(long long version) {
        return version == kWeightsFileVersion ||
               m_cursor.failAtValue("version " + std::to_string(version) +
                                    " is not known (this host reads version " +
                                    std::to_string(kWeightsFileVersion) + ")");
    }

    bool readClusters(WeightsFile& file) {
        return readList([&] {
            file.clusters.emplace_back();
            return readCluster(file.clusters.back()) &&
                   checkCluster(file.clusters.back(), file.clusters.size() - 1);
        });
    }

    bool readCluster(WeightsFileCluster& cluster) {
        m_largestInfluence = -1;
        Members members(m_cursor);
        const bool read = readObject(members, [&](const std::string& key) {
            long long count = 0;
            if (key == "name")
                return m_cursor.readString(cluster.name);
            if (key == "mesh")
                return m_cursor.readString(cluster.mesh);
            if (key == "vertexCount") {
                const bool counted = m_cursor.readInteger(0, kMaxVertexIndex + 1, count);
                cluster.vertexCount = static_cast<unsigned>(count);
                return counted;
            }
            if (key == "influences")
                return readList([&] { return readInfluence(cluster.influences); });
            if (key == "locks") {
                cluster.hasLocks = true;
                return readLocks(cluster.locks);
            }
            if (key == "vertices")
                return readList([&] { return readVertex(cluster); });
            return m_cursor.skipValue();
        });
        if (!read)
            return false;
        for (const char* needed : {"mesh", "vertexCount", "influences", "vertices"})
            if (!members.has(needed))
                return m_cursor.fail(std::string("a skin cluster without \"") + needed + "\"");
        return true;
    }

    bool readInfluence(std::vector<WeightsFileInfluence>& influences) {
        if (influences.size() > static_cast<std::size_t>(kMaxInfluenceIndex))
            return m_cursor.fail("more than " + std::to_string(kMaxInfluenceIndex + 1) +
                                 " influences");
        WeightsFileInfluence& influence = influences.emplace_back();
        Members members(m_cursor);
        const bool read = readObject(members, [&](const std::string& key) {
            return key == "name"                   ? m_cursor.readString(influence.name)
                   : key == "path"                 ? m_cursor.readString(influence.path)
                   : key == "lockInfluenceWeights" ? m_cursor.readBool(influence.locked)
                                                   : m_cursor.skipValue();
        });
        if (read && influence.name.empty())
            return m_cursor.fail("an influence without a \"name\"");
        return read;
    }

    bool readStrings(std::vector<std::string>& strings) {
        return readList([&] { return m_cursor.readString(strings.emplace_back()); });
    }

    bool readLocks(SkinLocks& locks) {
        Members members(m_cursor);
        const bool read = readObject(members, [&](const std::string& key) {
            return key == "lockedJointNames"      ? readStrings(locks.lockedJointNames)
                   : key == "lockedVertexIndices" ? readLockedVertices(locks.lockedVertices)
                   : key == "lockedCellIndices"   ? readList([&] { return readLockedCell(locks); })
                                                  : m_cursor.skipValue();
        });
        std::sort(locks.lockedVertices.begin(), locks.lockedVertices.end());
        locks.lockedVertices.erase(
            std::unique(locks.lockedVertices.begin(), locks.lockedVertices.end()),
            locks.lockedVertices.end());
        return read;
    }

    bool readLockedVertices(std::vector<int>& vertices) {
        return readList([&] {
            long long vertex = 0;
            const bool read = m_cursor.readInteger(0, kMaxVertexIndex, vertex);
            vertices.push_back(static_cast<int>(vertex));
            return read;
        });
    }

    // One entry of "lockedCellIndices"; cells of one vertex given in several entries are
    // joined, in the order given.
    bool readLockedCell(SkinLocks& locks) {
        CellLocks cell;
        long long vertex = 0;
        Members members(m_cursor);
        const bool read = readObject(members, [&](const std::string& key) {
            return key == "vertex"              ? m_cursor.readInteger(0, kMaxVertexIndex, vertex)
                   : key == "lockedLocalJoints" ? readStrings(cell.joints)
                                                : m_cursor.skipValue();
        });
        if (!read)
            return false;
        if (!members.has("vertex"))
            return m_cursor.fail("a cell lock without its \"vertex\"");
        cell.vertex = static_cast<int>(vertex);
        std::vector<CellLocks>& cells = locks.lockedCells;
        auto at = std::lower_bound(
            cells.begin(), cells.end(), cell.vertex,
            [](const CellLocks& entry, int index) { return entry.vertex < index; });
        if (at != cells.end() && at->vertex == cell.vertex)
            at->joints.insert(at->joints.end(), cell.joints.begin(), cell.joints.end());
        else
            cells.insert(at, std::move(cell));
        return true;
    }

    bool readVertex(WeightsFileCluster& cluster) {
        long long index = 0;
        HPoint position;
        bool first = true;
        if (!m_cursor.enterArray() || !element(']', first, kVertexShape) ||
            !m_cursor.readInteger(0, kMaxVertexIndex, index))
            return false;
        if (!cluster.vertices.empty() && index <= static_cast<long long>(cluster.vertices.back()))
            return m_cursor.failAtValue("vertex " + std::to_string(index) + " comes after vertex " +
                                        std::to_string(cluster.vertices.back()) +
                                        "; vertices are listed once each, in ascending order");
        if (!element(']', first, kVertexShape) || !readPosition(position) ||
            !element(']', first, kVertexShape) || !readWeights() || !end(']', first, kVertexShape))
            return false;
        if (m_largestOfVertex > m_largestInfluence) {
            m_largestInfluence = m_largestOfVertex;
            m_largestInfluenceVertex = static_cast<unsigned>(index);
        }
        const unsigned slot = static_cast<unsigned>(cluster.vertices.size());
        cluster.vertices.push_back(static_cast<unsigned>(index));
        cluster.positions.push_back(position);
        cluster.weights.setVertexCount(slot + 1);
        cluster.weights.assign(slot, m_influences.data(), m_weights.data(),
                               static_cast<unsigned>(m_influences.size()));
        return true;
    }

    bool readPosition(HPoint& position) {
        bool first = true;
        return m_cursor.enterArray() && element(']', first, kPositionShape) &&
               m_cursor.readNumber(position.x) && element(']', first, kPositionShape) &&
               m_cursor.readNumber(position.y) && element(']', first, kPositionShape) &&
               m_cursor.readNumber(position.z) && end(']', first, kPositionShape);
    }

    // One vertex's weights into m_influences and m_weights, zeros left out.
    bool readWeights() {
        m_influences.clear();
        m_weights.clear();
        m_largestOfVertex = -1;
        ++m_vertexNumber;
        return readList([this] { return readWeight(); });
    }

    bool readWeight() {
        long long influence = 0;
        double weight = 0.0;
        bool first = true;
        if (!m_cursor.enterArray() || !element(']', first, kPairShape) ||
            !m_cursor.readInteger(0, kMaxInfluenceIndex, influence))
            return false;
        if (static_cast<size_t>(influence) >= m_lastVertexOf.size())
            m_lastVertexOf.resize(static_cast<size_t>(influence) + 1, 0);
        if (m_lastVertexOf[static_cast<size_t>(influence)] == m_vertexNumber)
            return m_cursor.failAtValue("influence " + std::to_string(influence) +
                                        " appears twice in one vertex");
        m_lastVertexOf[static_cast<size_t>(influence)] = m_vertexNumber;
        if (!element(']', first, kPairShape) || !m_cursor.readNumber(weight))
            return false;
        if (weight < 0.0)
            return m_cursor.failAtValue("a negative weight");
        if (!end(']', first, kPairShape))
            return false;
        m_largestOfVertex = std::max(m_largestOfVertex, influence);
        if (weight != 0.0) {
            m_influences.push_back(static_cast<SkinWeights::Influence>(influence));
            m_weights.push_back(weight);
        }
        return true;
    }

    // What can be checked only once the whole cluster is read.
    bool checkCluster(const WeightsFileCluster& cluster, std::size_t index) {
        const std::string where = "skin cluster " + std::to_string(index) + ": ";
        if (!cluster.vertices.empty() && cluster.vertices.back() >= cluster.vertexCount)
            return problem(where + "vertex " + std::to_string(cluster.vertices.back()) +
                           " is beyond the mesh's " + std::to_string(cluster.vertexCount) +
                           " vertices");
        const long long influenceCount = static_cast<long long>(cluster.influences.size());
        if (m_largestInfluence >= influenceCount)
            return problem(where + "vertex " + std::to_string(m_largestInfluenceVertex) +
                           " has a weight of influence " + std::to_string(m_largestInfluence) +
                           ", which is out of range (there are " + std::to_string(influenceCount) +
                           " influences)");
        const SkinLocks& locks = cluster.locks;
        int lastLocked = locks.lockedVertices.empty() ? -1 : locks.lockedVertices.back();
        if (!locks.lockedCells.empty())
            lastLocked = std::max(lastLocked, locks.lockedCells.back().vertex);
        if (lastLocked >= 0 && static_cast<unsigned>(lastLocked) >= cluster.vertexCount)
            return problem(where + "locked vertex " + std::to_string(lastLocked) +
                           " is beyond the mesh's " + std::to_string(cluster.vertexCount) +
                           " vertices");
        return true;
    }

    JsonCursor m_cursor;
    std::string m_problem;
    std::vector<SkinWeights::Influence> m_influences;
    std::vector<double> m_weights;
    // For each influence index, the number of the vertex read last that has it, so that one
    // listed twice in a vertex is found at once.
    std::vector<unsigned> m_lastVertexOf;
    unsigned m_vertexNumber = 0;
    long long m_largestOfVertex = -1;
    // The largest influence index of the cluster being read, and the first vertex that has it.
    long long m_largestInfluence = -1;
    unsigned m_largestInfluenceVertex = 0;
};

} // namespace

bool parseWeightsFile(const char* text, std::size_t size, WeightsFile& file, std::string& problem) {
    file = WeightsFile();
    return WeightsParser(text, size).parse(file, problem);
}

FileResult readWeightsFile(const std::string& path, WeightsFile& file) {
    std::vector<unsigned char> bytes;
    std::string problem;
    if (!readWholeFile(path, kMaxWeightsFileBytes, bytes, problem) ||
        !parseWeightsFile(reinterpret_cast<const char*>(bytes.data()), bytes.size(), file, problem))
        return FileResult::failed(readFailure(path, problem));
    return FileResult::done();
}

} // namespace runtime
