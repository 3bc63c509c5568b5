#include "document/NativeSceneWriter.h"

#include "document/NativeSceneFormat.h"
#include "files/AtomicFile.h"
#include "scene/MeshData.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"

#include <new>
#include <unordered_map>

namespace runtime {

namespace {

// A value tree as JSON: an array level is an object of its elements by logical index, a
// compound an object of its children by name, a value itself; null where an element exists
// without a value.
NativeJson treeJson(const AttributeDef& def, const ValueTree& tree, bool arrayLevel) {
    if (def.isArray() && arrayLevel) {
        NativeJson elements = NativeJson::object();
        for (size_t i = 0; i < tree.elementCount(); ++i)
            elements[std::to_string(tree.logicalIndexAt(i))] =
                treeJson(def, tree.elementAt(i), false);
        return elements;
    }
    if (def.kind() == AttributeKind::kCompound) {
        NativeJson children = NativeJson::object();
        for (size_t c = 0; c < def.childCount(); ++c)
            if (const ValueTree* child = tree.child(c))
                children[def.child(c)->longName()] = treeJson(*def.child(c), *child, true);
        return children;
    }
    return tree.hasValue() ? valueJson(tree.value()) : NativeJson();
}

NativeJson matrixJson(const Matrix& matrix) {
    double values[16];
    matrix.toColumnMajor(values);
    NativeJson json = NativeJson::array();
    for (double value : values)
        json.push_back(numberJson(value));
    return json;
}

class NativeWriting {
public:
    NativeWriting(const Scene& scene, const std::string& path, ProgressReporter& reporter)
        : m_scene(scene), m_path(path), m_progress(reporter) {}

    FileResult run();

private:
    NativeJson nodeJson(const Node& node);
    NativeJson meshJson(const MeshData& mesh);
    NativeJson skinJson(const Node& cluster);
    std::string connectionsText();

    const Scene& m_scene;
    std::string m_path;
    Progress m_progress;
    std::vector<std::string> m_warnings;
    std::unordered_map<const Node*, int> m_index;
};

FileResult NativeWriting::run() {
    std::string text;
    try {
        const std::vector<NodePtr> nodes = m_scene.nodesParentsFirst();
        for (const NodePtr& node : nodes)
            m_index.emplace(node.get(), static_cast<int>(m_index.size()));
        m_progress.stage(0.0, 0.7, "Describing the scene");
        // One node per line, so that the file reads (and compares) well in a text editor.
        text = "{\n\"format\": " + NativeJson(kNativeSceneFormat).dump() +
               ",\n\"version\": " + std::to_string(kNativeSceneVersion) + ",\n\"nodes\": [\n";
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            text += nodeJson(*nodes[i]).dump(-1, ' ', false, NativeJson::error_handler_t::replace);
            text += i + 1 < nodes.size() ? ",\n" : "\n";
            if (!m_progress.step(i + 1, nodes.size()))
                return FileResult::cancelled(writeCancelled(m_path));
        }
        text += "],\n\"connections\": [\n" + connectionsText() + "]\n}\n";
    } catch (const std::bad_alloc&) {
        return FileResult::failed(writeFailure(m_path, "there is not enough memory"));
    } catch (const std::length_error&) {
        return FileResult::failed(writeFailure(m_path, "the scene is too large for this format"));
    }
    FileResult result =
        writeFileAtomically(m_path, {{text.data(), text.size()}}, m_progress, 0.7, 1.0);
    if (result.ok())
        result.warnings = std::move(m_warnings);
    return result;
}

NativeJson NativeWriting::nodeJson(const Node& node) {
    NativeJson json = {{"type", node.typeName()}, {"name", node.name()}};
    if (node.parent())
        json["parent"] = m_index.at(node.parent());
    if (!node.dynamicAttributes().empty()) {
        NativeJson definitions = NativeJson::array();
        for (const AttributePtr& attribute : node.dynamicAttributes())
            definitions.push_back(definitionJson(*attribute));
        json["attributes"] = std::move(definitions);
    }
    NativeJson values = NativeJson::object();
    for (const AttributeDef* attribute : node.attributes())
        if (const ValueTree* tree = node.storedValues(attribute))
            values[attribute->longName()] = treeJson(*attribute, *tree, true);
    if (!values.empty())
        json["values"] = std::move(values);
    if (const MeshData* mesh = node.mesh())
        json["mesh"] = meshJson(*mesh);
    if (node.skinCluster())
        json["skin"] = skinJson(node);
    return json;
}

NativeJson NativeWriting::meshJson(const MeshData& mesh) {
    std::vector<double> coordinates;
    coordinates.reserve(mesh.points().size() * 3);
    for (const HPoint& p : mesh.points())
        coordinates.insert(coordinates.end(), {p.x, p.y, p.z});
    return {{"points", packedList(coordinates)},
            {"polygonSizes", packedList(mesh.geometry().polygonSizes)},
            {"polygonVertices", packedList(mesh.geometry().polygonVertices)}};
}

NativeJson NativeWriting::skinJson(const Node& cluster) {
    const SkinClusterData& data = *cluster.skinCluster();
    NativeJson influences = NativeJson::array();
    NativeJson bindPre = NativeJson::array();
    std::vector<int> kept(data.influenceCount(), -1);
    for (unsigned k = 0; k < data.influenceCount(); ++k) {
        auto found = m_index.find(data.influences()[k].get());
        if (found == m_index.end())
            continue;
        kept[k] = static_cast<int>(influences.size());
        influences.push_back(found->second);
        bindPre.push_back(matrixJson(data.bindPreMatrix(k)));
    }
    if (influences.size() < kept.size())
        m_warnings.push_back("\"" + cluster.name() + "\" lost the weights of " +
                             std::to_string(kept.size() - influences.size()) +
                             " deleted influences.");
    const SkinWeights& weights = data.weights();
    std::vector<std::uint16_t> counts;
    std::vector<std::uint16_t> entryInfluences;
    std::vector<double> values;
    counts.reserve(weights.vertexCount());
    entryInfluences.reserve(weights.entryTotal());
    values.reserve(weights.entryTotal());
    for (unsigned v = 0; v < weights.vertexCount(); ++v) {
        std::uint16_t count = 0;
        for (unsigned i = 0; i < weights.entryCount(v); ++i) {
            const int influence = kept[weights.influences(v)[i]];
            if (influence < 0)
                continue;
            entryInfluences.push_back(static_cast<std::uint16_t>(influence));
            values.push_back(weights.weights(v)[i]);
            ++count;
        }
        counts.push_back(count);
    }
    return {{"influences", std::move(influences)},
            {"bindPreMatrices", std::move(bindPre)},
            {"geometryMatrix", matrixJson(data.geometryMatrix())},
            {"weights",
             {{"counts", packedList(counts)},
              {"influences", packedList(entryInfluences)},
              {"values", packedList(values)}}}};
}

std::string NativeWriting::connectionsText() {
    std::vector<std::string> lines;
    for (const ConnectionPtr& connection : m_scene.connections()) {
        auto source = m_index.find(connection->source.node().get());
        auto destination = m_index.find(connection->destination.node().get());
        if (source == m_index.end() || destination == m_index.end())
            continue;
        lines.push_back(
            NativeJson::array({source->second, connection->source.name(false), destination->second,
                               connection->destination.name(false)})
                .dump(-1, ' ', false, NativeJson::error_handler_t::replace));
    }
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i)
        text += lines[i] + (i + 1 < lines.size() ? ",\n" : "\n");
    return text;
}

} // namespace

FileResult writeNativeScene(const Scene& scene, const std::string& path,
                            ProgressReporter& reporter) {
    return NativeWriting(scene, path, reporter).run();
}

} // namespace runtime
