// skinPercent: reads and writes the weights of some vertices of a skin cluster.
//
//   skinPercent -q -v CLUSTER COMPONENT...             every influence's weight, vertex after
//                                                      vertex, in influence order
//   skinPercent -q -v -t JOINT... CLUSTER COMPONENT... the named influences' weights; one
//                                                      vertex and one joint give a number
//   skinPercent -t JOINT -tv VALUE ... CLUSTER COMPONENT...
//       sets the influences, each -t with its -tv, as a weight write of the host does: with
//       the rest of each vertex normalised around locked influences (-normalize false: the
//       values are stored as given)
//   skinPercent -prw T CLUSTER COMPONENT...   removes unlocked weights below T, normalising
//                                             the rest when the cluster normalises
//   skinPercent -nrm true CLUSTER COMPONENT...   normalises the vertices
//
// COMPONENT is a component string ("body.vtx[3]", "body.vtx[2:5]", edges and faces by their
// vertices) or the mesh itself for all its vertices; without any, the selected ones serve.
// CLUSTER may also be the skinned mesh. Writes are undone exactly.
#include "api/HApiAccess.h"
#include "commands/CommandSupport.h"
#include "lang/BuiltInCommand.h"
#include "scene/ComponentData.h"
#include "scene/NodeValues.h"
#include "scene/Selection.h"
#include "scene/SelectionItems.h"
#include "scene/SkinBinding.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"
#include "scene/SkinWeightAccess.h"
#include "scene/SkinWeightCleanup.h"
#include "scene/VertexWeightRecord.h"

#include <string>
#include <vector>

namespace {

using runtime::NodePtr;
using runtime::reportFailure;

// The vertices of the cluster's mesh that the texts (or, without texts, the selection) name.
HStatus verticesFor(const HStringArray& texts, const runtime::Node& cluster,
                    std::vector<int>& vertices) {
    NodePtr mesh = runtime::skinClusterGeometry(cluster);
    if (!mesh)
        return reportFailure("skinPercent", cluster.name() + " deforms no mesh.");
    runtime::SelectionItems items;
    if (texts.length() == 0)
        items = HApiAccess::items(runtime::selection().active());
    for (const HString& text : texts) {
        HStatus status = runtime::itemsFromText(runtime::scene(), text.str(), false, items);
        if (!status)
            return reportFailure("skinPercent", status);
    }
    for (runtime::SelectionItem& item : items) {
        NodePtr node = runtime::itemNode(item);
        NodePtr shape = node ? runtime::meshShapeOf(*node) : nullptr;
        if (shape != mesh) {
            if (texts.length() == 0)
                continue;
            return reportFailure("skinPercent",
                                 node->name() + " is not deformed by " + cluster.name() + ".");
        }
        if (!runtime::itemComponent(item)) {
            auto every = std::make_shared<runtime::ComponentData>(HFn::kMeshVertComponent);
            for (unsigned v = 0; v < mesh->mesh()->vertexCount(); ++v)
                every->add(static_cast<int>(v));
            item = runtime::itemForComponent(mesh, every);
        }
    }
    for (unsigned vertex : runtime::verticesOn(items, *mesh))
        vertices.push_back(static_cast<int>(vertex));
    if (vertices.empty())
        return reportFailure("skinPercent", "Give the vertices or select them.");
    return HS::kSuccess;
}

class SkinPercentCommand : public runtime::SceneEditCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-v", "-value");
        syntax.addFlag("-t", "-transform", HSyntax::kString);
        syntax.addFlag("-tv", "-transformValue", HSyntax::kDouble);
        syntax.addFlag("-nrm", "-normalize", HSyntax::kBoolean);
        syntax.addFlag("-prw", "-pruneWeights", HSyntax::kDouble);
        syntax.enableQuery();
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        HStringArray objects = runtime::commandObjects(parser);
        if (objects.length() == 0)
            return reportFailure("skinPercent", "Give the skin cluster and the vertices.");
        HStatus status;
        NodePtr cluster = runtime::findSkinClusterFor("skinPercent", objects[0].str(), status);
        if (!cluster)
            return status;
        HStringArray texts;
        for (unsigned i = 1; i < objects.length(); ++i)
            texts.append(objects[i]);
        std::vector<int> vertices;
        status = verticesFor(texts, *cluster, vertices);
        if (!status)
            return status;
        std::vector<unsigned> influences;
        status = namedInfluences(parser, *cluster, influences);
        if (!status)
            return status;
        if (parser.isQuery())
            return query(parser, *cluster, vertices, influences);
        return edit(parser, *cluster, vertices, influences);
    }

private:
    static HStatus namedInfluences(const HArgParser& parser, const runtime::Node& cluster,
                                   std::vector<unsigned>& influences) {
        for (unsigned use = 0; use < parser.numberOfFlagUses("transform"); ++use) {
            HArgList value;
            parser.getFlagArgumentList("transform", use, value);
            HStatus status;
            NodePtr joint = runtime::findNodeFor("skinPercent", value.asString(0).str(), status);
            if (!joint)
                return status;
            int index = cluster.skinCluster()->indexOf(joint.get());
            if (index < 0)
                return reportFailure("skinPercent", joint->name() + " is not an influence of " +
                                                        cluster.name() + ".");
            influences.push_back(static_cast<unsigned>(index));
        }
        return HS::kSuccess;
    }

    HStatus query(const HArgParser& parser, const runtime::Node& cluster,
                  const std::vector<int>& vertices, const std::vector<unsigned>& influences) {
        if (!parser.isFlagSet("value"))
            return reportFailure("skinPercent", "-q needs -v (-value).");
        const runtime::SkinClusterData& data = *cluster.skinCluster();
        HDoubleArray values;
        if (influences.empty()) {
            std::vector<double> dense(vertices.size() * data.influenceCount(), 0.0);
            runtime::readWeights(data, &vertices, dense.data());
            for (double value : dense)
                values.append(value);
        } else {
            for (int vertex : vertices)
                for (unsigned influence : influences)
                    values.append(data.weights().weight(static_cast<unsigned>(vertex), influence));
        }
        if (influences.size() == 1 && vertices.size() == 1)
            setResult(values[0]);
        else
            setResult(values);
        return HS::kSuccess;
    }

    HStatus edit(const HArgParser& parser, runtime::Node& cluster, const std::vector<int>& vertices,
                 const std::vector<unsigned>& influences) {
        bool normalizeGiven = parser.isFlagSet("normalize");
        bool normalize = !normalizeGiven || parser.flagArgumentBool("normalize", 0);
        bool prune = parser.isFlagSet("pruneWeights");
        unsigned valueCount = parser.numberOfFlagUses("transformValue");
        if (valueCount != influences.size())
            return reportFailure("skinPercent", "Give one -tv value for each -t joint.");
        if (prune && parser.flagArgumentDouble("pruneWeights", 0) < 0)
            return reportFailure("skinPercent", "-pruneWeights needs 0 or more.");
        if (influences.empty() && !prune && !normalizeGiven)
            return reportFailure("skinPercent",
                                 "Give -q -v, -t with -tv, -pruneWeights or -normalize.");

        runtime::VertexWeightRecord& record = m_journal.keepWeights(cluster);
        HStatus status;
        if (!influences.empty()) {
            std::vector<double> values;
            for (unsigned use = 0; use < valueCount; ++use) {
                HArgList value;
                parser.getFlagArgumentList("transformValue", use, value);
                values.push_back(value.asDouble(0));
            }
            runtime::SkinWeights& weights = cluster.skinCluster()->weights();
            for (int vertex : vertices)
                record.keep(weights, static_cast<unsigned>(vertex));
            status = runtime::writeWeights(m_scene, cluster, &vertices, influences, values, true,
                                           normalize, true, nullptr);
        }
        if (status && prune)
            status = runtime::pruneVertexWeights(
                m_scene, cluster, &vertices, parser.flagArgumentDouble("pruneWeights", 0),
                normalize && runtime::intValue(cluster, "normalizeWeights", 1) == 1, &record);
        if (status && normalizeGiven && normalize && influences.empty() && !prune)
            status = runtime::normalizeVertexWeights(m_scene, cluster, &vertices, &record);
        return status ? status : reportFailure("skinPercent", status);
    }
};

const bool registered = runtime::registerBuiltInCommand(
    "skinPercent", runtime::createCommand<SkinPercentCommand>, &SkinPercentCommand::createSyntax);

} // namespace
