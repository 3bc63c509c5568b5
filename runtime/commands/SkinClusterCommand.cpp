// skinCluster: binds meshes to joints, edits skin clusters, and answers questions about them.
//
//   skinCluster [-n NAME] [-mi N] [-dr R] JOINT... MESH
//       binds MESH (or the selected mesh and joints when nothing is named): every vertex
//       gets weights falling off with its distance to each joint (weight ~ 1 / distance^R,
//       R = 4 by default), its N nearest joints at most (5 by default), normalised. The set
//       and group id are NAME + "Set" and NAME + "GroupId". Gives the cluster's name.
//   skinCluster -e [-nw 0|1|2] [-mi N] [-omi B] [-sw T [-swi N]] CLUSTER
//       sets normalizeWeights, maxInfluences, maintainMaxInfluences; -sw (-smoothWeights)
//       smooths the selected vertices of the cluster's mesh (every vertex when none of them
//       is selected) in up to -swi (-smoothWeightsMaxIterations, 5 by default) passes, taking
//       the average of a vertex's edge neighbours where an influence differs from it by more
//       than T; with -sw, -omi (-obeyMaxInfluences) says whether a smoothed vertex keeps only
//       its maxInfluences largest weights (the cluster's maintainMaxInfluences when it is
//       left out).
//   skinCluster -q -inf|-mi|-nw|-omi CLUSTER
//       the influences (names, in influence order), maxInfluences, normalizeWeights or
//       maintainMaxInfluences.
//
// CLUSTER may also be the skinned mesh. Binding and editing are undone exactly.
#include "api/HApiAccess.h"
#include "commands/CommandSupport.h"
#include "lang/BuiltInCommand.h"
#include "scene/NodeValues.h"
#include "scene/Selection.h"
#include "scene/SelectionItems.h"
#include "scene/SkinBinding.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"
#include "scene/SkinSmoothing.h"

#include <algorithm>
#include <numeric>

namespace {

using runtime::NodePtr;
using runtime::reportFailure;

constexpr unsigned kDefaultSmoothingPasses = 5;

// The cluster attributes that query and edit share: flag, attribute.
const std::pair<const char*, const char*> kSettings[] = {
    {"maxInfluences", "maxInfluences"},
    {"normalizeWeights", "normalizeWeights"},
    {"obeyMaxInfluences", "maintainMaxInfluences"},
};

class SkinClusterCommand : public runtime::SceneEditCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-n", "-name", HSyntax::kString);
        syntax.addFlag("-mi", "-maxInfluences", HSyntax::kLong);
        syntax.addFlag("-dr", "-dropoffRate", HSyntax::kDouble);
        syntax.addFlag("-nw", "-normalizeWeights", HSyntax::kLong);
        syntax.addFlag("-omi", "-obeyMaxInfluences", HSyntax::kBoolean);
        syntax.addFlag("-sw", "-smoothWeights", HSyntax::kDouble);
        syntax.addFlag("-swi", "-smoothWeightsMaxIterations", HSyntax::kLong);
        syntax.addFlag("-inf", "-influence");
        syntax.enableQuery();
        syntax.enableEdit();
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        if (parser.isQuery())
            return query(parser);
        for (const char* flag : {"name", "dropoffRate"})
            if (parser.isEdit() && parser.isFlagSet(flag))
                return reportFailure("skinCluster",
                                     std::string("-") + flag + " is for binding, not for editing.");
        if (parser.isFlagSet("influence"))
            return reportFailure("skinCluster", "-influence can only be queried (-q).");
        for (const char* flag : {"smoothWeights", "smoothWeightsMaxIterations"})
            if (!parser.isEdit() && parser.isFlagSet(flag))
                return reportFailure("skinCluster",
                                     std::string("-") + flag + " needs edit mode (-e).");
        return parser.isEdit() ? edit(parser) : bind(parser);
    }

private:
    static NodePtr clusterOf(const HArgParser& parser, HStatus& status) {
        HStringArray objects = runtime::commandObjects(parser);
        if (objects.length() != 1) {
            status = reportFailure("skinCluster", "Name one skin cluster.");
            return nullptr;
        }
        return runtime::findSkinClusterFor("skinCluster", objects[0].str(), status);
    }

    HStatus query(const HArgParser& parser) {
        HStatus status;
        NodePtr cluster = clusterOf(parser, status);
        if (!cluster)
            return status;
        if (parser.isFlagSet("influence")) {
            HStringArray names;
            for (const NodePtr& influence : cluster->skinCluster()->influences())
                if (influence->isAlive())
                    names.append(HString(m_scene.partialPathName(*influence)));
            setResult(names);
            return HS::kSuccess;
        }
        for (const auto& setting : kSettings) {
            if (parser.isFlagSet(setting.first)) {
                setResult(runtime::intValue(*cluster, setting.second));
                return HS::kSuccess;
            }
        }
        return reportFailure("skinCluster", "Give what to query: -influence, -maxInfluences, "
                                            "-normalizeWeights or -obeyMaxInfluences.");
    }

    HStatus checkSettings(const HArgParser& parser) {
        if (parser.isFlagSet("maxInfluences") && parser.flagArgumentInt("maxInfluences", 0) < 1)
            return reportFailure("skinCluster", "-maxInfluences needs 1 or more.");
        if (parser.isFlagSet("normalizeWeights")) {
            int mode = parser.flagArgumentInt("normalizeWeights", 0);
            if (mode < 0 || mode > 2)
                return reportFailure("skinCluster", "-normalizeWeights takes 0, 1 or 2.");
        }
        if (parser.isFlagSet("smoothWeights") && parser.flagArgumentDouble("smoothWeights", 0) < 0)
            return reportFailure("skinCluster", "-smoothWeights needs 0 or more.");
        if (parser.isFlagSet("smoothWeightsMaxIterations") &&
            parser.flagArgumentInt("smoothWeightsMaxIterations", 0) < 1)
            return reportFailure("skinCluster", "-smoothWeightsMaxIterations needs 1 or more.");
        if (parser.isFlagSet("smoothWeightsMaxIterations") && !parser.isFlagSet("smoothWeights"))
            return reportFailure("skinCluster",
                                 "-smoothWeightsMaxIterations goes with -smoothWeights.");
        if (parser.isFlagSet("dropoffRate") && !(parser.flagArgumentDouble("dropoffRate", 0) > 0))
            return reportFailure("skinCluster", "-dropoffRate needs a number above 0.");
        return HS::kSuccess;
    }

    // Writes the settings given as flags. -omi is one only without -sw; when binding, -mi has
    // already limited the weights and set the cluster's maxInfluences.
    HStatus writeSettings(const HArgParser& parser, runtime::Node& cluster, bool binding) {
        for (const auto& setting : kSettings) {
            std::string flag = setting.first;
            bool notASetting = (flag == "obeyMaxInfluences" && parser.isFlagSet("smoothWeights")) ||
                               (flag == "maxInfluences" && binding);
            if (!parser.isFlagSet(setting.first) || notASetting)
                continue;
            runtime::Value value = parser.flagArgumentInt(setting.first, 0);
            if (flag == "obeyMaxInfluences")
                value = parser.flagArgumentBool(setting.first, 0);
            HStatus status = m_journal.setValue(cluster.plug(setting.second), value);
            if (!status)
                return reportFailure("skinCluster", status);
        }
        return HS::kSuccess;
    }

    HStatus edit(const HArgParser& parser) {
        HStatus status = checkSettings(parser);
        NodePtr cluster = status ? clusterOf(parser, status) : nullptr;
        if (!cluster)
            return status;
        if (parser.numberOfFlagsUsed() == 1)
            return reportFailure("skinCluster", "Give what to edit: -normalizeWeights, "
                                                "-maxInfluences, -obeyMaxInfluences or "
                                                "-smoothWeights.");
        status = writeSettings(parser, *cluster, false);
        if (status && parser.isFlagSet("smoothWeights"))
            status = smooth(parser, *cluster);
        return status;
    }

    HStatus smooth(const HArgParser& parser, runtime::Node& cluster) {
        NodePtr mesh = runtime::skinClusterGeometry(cluster);
        if (!mesh)
            return reportFailure("skinCluster", cluster.name() + " deforms no mesh.");
        runtime::SmoothingOptions options;
        options.threshold = parser.flagArgumentDouble("smoothWeights", 0);
        options.maxPasses =
            parser.isFlagSet("smoothWeightsMaxIterations")
                ? static_cast<unsigned>(parser.flagArgumentInt("smoothWeightsMaxIterations", 0))
                : kDefaultSmoothingPasses;
        options.obeyMaxInfluences = parser.isFlagSet("obeyMaxInfluences")
                                        ? parser.flagArgumentBool("obeyMaxInfluences", 0)
                                        : runtime::boolValue(cluster, "maintainMaxInfluences");
        options.maxInfluences =
            static_cast<unsigned>(std::max(1, runtime::intValue(cluster, "maxInfluences", 5)));
        std::vector<unsigned> vertices =
            runtime::verticesOn(HApiAccess::items(runtime::selection().active()), *mesh);
        if (vertices.empty()) {
            vertices.resize(mesh->mesh()->vertexCount());
            std::iota(vertices.begin(), vertices.end(), 0u);
        }
        HStatus status = runtime::smoothSkinWeights(m_scene, cluster, vertices, options,
                                                    &m_journal.keepWeights(cluster));
        return status ? status : reportFailure("skinCluster", status);
    }

    HStatus bind(const HArgParser& parser) {
        HStatus status = checkSettings(parser);
        if (!status)
            return status;
        std::vector<NodePtr> objects;
        for (const HString& name : runtime::commandObjects(parser)) {
            objects.push_back(runtime::findNodeFor("skinCluster", name.str(), status));
            if (!status)
                return status;
        }
        if (objects.empty())
            for (const runtime::SelectionItem& item :
                 HApiAccess::items(runtime::selection().active()))
                if (!runtime::itemComponent(item))
                    objects.push_back(runtime::itemNode(item));
        std::vector<NodePtr> joints;
        NodePtr geometry;
        for (const NodePtr& object : objects) {
            if (!runtime::meshShapeOf(*object)) {
                joints.push_back(object);
            } else if (geometry) {
                return reportFailure("skinCluster", "Bind one mesh at a time.");
            } else {
                geometry = object;
            }
        }
        if (!geometry)
            return reportFailure("skinCluster", "Give the joints and then the mesh to bind.");

        runtime::BindOptions options;
        if (parser.isFlagSet("name"))
            options.name = parser.flagArgumentString("name", 0).str();
        if (parser.isFlagSet("maxInfluences"))
            options.maxInfluences =
                static_cast<unsigned>(parser.flagArgumentInt("maxInfluences", 0));
        if (parser.isFlagSet("dropoffRate"))
            options.dropoffRate = parser.flagArgumentDouble("dropoffRate", 0);
        // Binding adds object groups to the mesh; undo takes them away again.
        m_journal.keepValues(runtime::meshShapeOf(*geometry)->plug("instObjGroups"));
        NodePtr cluster = runtime::bindSkin(m_scene, joints, *geometry, options, &status);
        if (!cluster)
            return reportFailure("skinCluster", status);
        std::vector<NodePtr> created{cluster};
        if (NodePtr set = runtime::skinClusterSet(*cluster)) {
            created.push_back(set);
            if (NodePtr group = runtime::setGroupId(*set))
                created.push_back(group);
        }
        m_journal.nodesCreated(created);
        status = writeSettings(parser, *cluster, true);
        if (status)
            setResult(HString(cluster->name()));
        return status;
    }
};

const bool registered = runtime::registerBuiltInCommand(
    "skinCluster", runtime::createCommand<SkinClusterCommand>, &SkinClusterCommand::createSyntax);

} // namespace
