// skinWeights: skin weights in and out of a pipeline, and the edits a game engine's import
// needs. One action per run, on TARGETs: skin clusters, skinned meshes or their transforms, or
// vertex components (WeightTargets.h; without any, every skin cluster of the scene):
//
//   -ex -export PATH                  writes a weights file (docs/weights-format.md)
//   -im -import PATH [-m -method index|position] [-rm -remap FROM TO]...
//       applies a weights file: by vertex index (the default) or by nearest bind-pose position;
//       influences by short name, FROM in the file standing for TO in the scene
//   -lm -limit N [-pr -prune T]       keeps each vertex's N largest weights, and of those the
//                                     ones of T or more
//   -qz -quantize STEPS               makes every weight a whole step of 1/STEPS, each vertex
//                                     summing to STEPS steps
//   -mr -mirror x|y|z [-dir -direction positive|negative] [-tol -tolerance D]
//       [-sdn -sideNames A B]...      mirrors weights across the plane through the origin, from
//                                     the positive side (the default) to the negative one
//
// Import and the edits write the skin clusters' weights directly, each run one undo step that
// restores them bit for bit. Limit, quantize and mirror leave alone the vertices they cannot
// change without changing a locked weight, and say in one warning how many there were. The
// command gives the number of vertices written (export, import) or changed (the edits). A mesh
// that lies on one side of the mirror plane only (one arm) is left as it is, with a warning.
// Matching a file's skin clusters with the targets: a file of one cluster goes to the one
// target; otherwise each target takes the file's cluster of the same mesh (full path, else
// short name). Bad input is refused before anything changes.
#include "commands/CommandSupport.h"
#include "commands/WeightTargets.h"
#include "document/WeightsExport.h"
#include "document/WeightsImport.h"
#include "files/WeightsFileReader.h"
#include "files/WeightsFileWriter.h"
#include "lang/BuiltInCommand.h"
#include "scene/SkinLinks.h"
#include "scene/SkinWeightMirror.h"
#include "scene/SkinWeightPass.h"
#include "scene/WeightLimiting.h"
#include "scene/WeightQuantizing.h"

#include <climits>

namespace {

using runtime::reportFailure;
using runtime::WeightTarget;

const char* const kCommand = "skinWeights";
const char* const kActions[] = {"export", "import", "limit", "quantize", "mirror"};
// Flags that only mean something with an action: flag, action.
const std::pair<const char*, const char*> kOptions[] = {
    {"method", "import"},    {"remap", "import"},     {"prune", "limit"},
    {"direction", "mirror"}, {"tolerance", "mirror"}, {"sideNames", "mirror"},
};

std::string vertexCount(unsigned count) {
    return std::to_string(count) + (count == 1 ? " vertex" : " vertices");
}

std::string shortName(const std::string& path) {
    const std::size_t bar = path.rfind('|');
    return bar == std::string::npos ? path : path.substr(bar + 1);
}

// The file's cluster for the target's mesh; null when there is none.
const runtime::WeightsFileCluster* fileClusterFor(const runtime::WeightsFile& file,
                                                  const runtime::Node& mesh, bool onlyPair) {
    if (onlyPair)
        return &file.clusters.front();
    const runtime::WeightsFileCluster* byName = nullptr;
    unsigned sameName = 0;
    for (const runtime::WeightsFileCluster& cluster : file.clusters) {
        if (cluster.mesh == mesh.fullPathName())
            return &cluster;
        if (shortName(cluster.mesh) == mesh.name()) {
            byName = &cluster;
            ++sameName;
        }
    }
    return sameName == 1 ? byName : nullptr;
}

class SkinWeightsCommand : public runtime::SceneEditCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-ex", "-export", HSyntax::kString);
        syntax.addFlag("-im", "-import", HSyntax::kString);
        syntax.addFlag("-m", "-method", HSyntax::kString);
        syntax.addFlag("-rm", "-remap", HSyntax::kString, HSyntax::kString);
        syntax.addFlag("-lm", "-limit", HSyntax::kLong);
        syntax.addFlag("-pr", "-prune", HSyntax::kDouble);
        syntax.addFlag("-qz", "-quantize", HSyntax::kLong);
        syntax.addFlag("-mr", "-mirror", HSyntax::kString);
        syntax.addFlag("-dir", "-direction", HSyntax::kString);
        syntax.addFlag("-tol", "-tolerance", HSyntax::kDouble);
        syntax.addFlag("-sdn", "-sideNames", HSyntax::kString, HSyntax::kString);
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        std::string action;
        HStatus status = actionOf(parser, action);
        if (!status)
            return status;
        std::vector<WeightTarget> targets;
        const HStringArray objects = runtime::commandObjects(parser);
        status = runtime::weightTargets(kCommand, objects, targets);
        if (!status)
            return status;
        if (action == "export")
            return exportWeights(parser.flagArgumentString("export", 0).str(), targets);
        if (action == "import")
            return importWeights(parser, targets, objects.length() > 0);
        if (action == "mirror")
            return mirror(parser, targets);
        return edit(parser, action, targets);
    }

private:
    // The one action given, after checking its flags and their values.
    static HStatus actionOf(const HArgParser& parser, std::string& action) {
        for (const char* flag : kActions) {
            if (!parser.isFlagSet(flag))
                continue;
            if (!action.empty())
                return reportFailure(kCommand,
                                     "Give one of -" + action + " and -" + flag + ", not both.");
            action = flag;
        }
        if (action.empty())
            return reportFailure(kCommand,
                                 "Give one of -export, -import, -limit, -quantize and -mirror.");
        for (const auto& option : kOptions)
            if (parser.isFlagSet(option.first) && action != option.second)
                return reportFailure(kCommand, std::string("-") + option.first + " goes with -" +
                                                   option.second + ".");
        return checkValues(parser);
    }

    static HStatus checkValues(const HArgParser& parser) {
        auto is = [&](const char* flag, std::initializer_list<const char*> words) {
            if (!parser.isFlagSet(flag))
                return true;
            const std::string value = parser.flagArgumentString(flag, 0).str();
            for (const char* word : words)
                if (value == word)
                    return true;
            return false;
        };
        if (!is("method", {"index", "position"}))
            return reportFailure(kCommand, "-method takes index or position.");
        if (!is("mirror", {"x", "y", "z"}))
            return reportFailure(kCommand, "-mirror takes x, y or z.");
        if (!is("direction", {"positive", "negative"}))
            return reportFailure(kCommand, "-direction takes positive or negative.");
        for (const char* flag : {"limit", "quantize"})
            if (parser.isFlagSet(flag) && parser.flagArgumentInt(flag, 0) < 1)
                return reportFailure(kCommand, std::string("-") + flag + " needs 1 or more.");
        for (const char* flag : {"prune", "tolerance"})
            if (parser.isFlagSet(flag) && !(parser.flagArgumentDouble(flag, 0) >= 0.0))
                return reportFailure(kCommand, std::string("-") + flag + " needs 0 or more.");
        for (const char* flag : {"export", "import"})
            if (parser.isFlagSet(flag) && parser.flagArgumentString(flag, 0).length() == 0)
                return reportFailure(kCommand, std::string("-") + flag + " needs a file name.");
        for (unsigned use = 0; use < parser.numberOfFlagUses("sideNames"); ++use)
            if (pairAt(parser, "sideNames", use).first.empty() ||
                pairAt(parser, "sideNames", use).second.empty())
                return reportFailure(kCommand, "-sideNames needs two names that are not empty.");
        return HS::kSuccess;
    }

    // The two names of one use of a flag that takes two (-remap, -sideNames).
    static std::pair<std::string, std::string> pairAt(const HArgParser& parser, const char* flag,
                                                      unsigned use) {
        HArgList values;
        parser.getFlagArgumentList(flag, use, values);
        return {values.asString(0).str(), values.asString(1).str()};
    }

    HStatus exportWeights(const std::string& path, const std::vector<WeightTarget>& targets) {
        runtime::WeightsFile file;
        unsigned written = 0;
        for (const WeightTarget& target : targets) {
            file.clusters.push_back(
                runtime::describeClusterWeights(*target.cluster, target.vertices.get()));
            written += static_cast<unsigned>(file.clusters.back().vertices.size());
        }
        runtime::FileResult result = runtime::writeWeightsFile(file, path);
        if (!result.ok())
            return reportFailure(kCommand, result.message);
        setResult(static_cast<int>(written));
        return HS::kSuccess;
    }

    HStatus importWeights(const HArgParser& parser, const std::vector<WeightTarget>& targets,
                          bool targetsGiven) {
        const std::string path = parser.flagArgumentString("import", 0).str();
        runtime::WeightsFile file;
        runtime::FileResult result = runtime::readWeightsFile(path, file);
        if (!result.ok())
            return reportFailure(kCommand, result.message);
        if (file.clusters.empty())
            return reportFailure(kCommand, "\"" + path + "\" holds no skin clusters.");
        const runtime::VertexMatching matching =
            parser.isFlagSet("method") && parser.flagArgumentString("method", 0) == "position"
                ? runtime::VertexMatching::kPosition
                : runtime::VertexMatching::kIndex;
        std::vector<runtime::InfluenceRemap> remaps;
        for (unsigned use = 0; use < parser.numberOfFlagUses("remap"); ++use) {
            const auto [from, to] = pairAt(parser, "remap", use);
            remaps.push_back({from, to});
        }

        std::vector<runtime::ImportPlan> plans;
        const bool onlyPair = file.clusters.size() == 1 && targets.size() == 1;
        for (const WeightTarget& target : targets) {
            runtime::NodePtr mesh = runtime::skinClusterGeometry(*target.cluster);
            const runtime::WeightsFileCluster* source = fileClusterFor(file, *mesh, onlyPair);
            if (!source && targetsGiven)
                return reportFailure(kCommand,
                                     "\"" + path + "\" has no weights for " + mesh->name() + ".");
            if (!source)
                continue;
            plans.emplace_back();
            HStatus status = runtime::planImport(*source, target.cluster, target.vertices.get(),
                                                 matching, remaps, plans.back());
            if (!status)
                return reportFailure(kCommand, status);
        }
        if (plans.empty())
            return reportFailure(kCommand,
                                 "\"" + path + "\" has weights for none of the scene's meshes.");
        runtime::ImportCounts counts;
        for (const runtime::ImportPlan& plan : plans) {
            HStatus status = runtime::applyImport(m_scene, m_journal, plan, counts);
            if (!status)
                return reportFailure(kCommand, status);
        }
        if (counts.notSummingToOne > 0)
            HGlobal::displayWarning(HString(std::string(kCommand) + ": The weights of " +
                                            vertexCount(counts.notSummingToOne) +
                                            " do not sum to 1."));
        setResult(static_cast<int>(counts.written));
        return HS::kSuccess;
    }

    HStatus edit(const HArgParser& parser, const std::string& action,
                 const std::vector<WeightTarget>& targets) {
        runtime::VertexRule rule;
        if (action == "limit") {
            const unsigned limit = static_cast<unsigned>(parser.flagArgumentInt("limit", 0));
            const double threshold =
                parser.isFlagSet("prune") ? parser.flagArgumentDouble("prune", 0) : 0.0;
            rule = [=](unsigned, runtime::VertexEntries& entries, const std::vector<char>& locks) {
                return runtime::limitWeights(entries, locks, limit, threshold);
            };
        } else {
            const unsigned steps = static_cast<unsigned>(parser.flagArgumentInt("quantize", 0));
            rule = [=](unsigned, runtime::VertexEntries& entries, const std::vector<char>& locks) {
                return runtime::quantizeWeights(entries, locks, steps);
            };
        }
        runtime::RuleCounts counts;
        for (const WeightTarget& target : targets) {
            HStatus status =
                runtime::applyVertexRule(m_scene, *target.cluster, target.vertices.get(),
                                         &m_journal.keepWeights(*target.cluster), rule, counts);
            if (!status) {
                m_journal.undo();
                return reportFailure(kCommand, status);
            }
        }
        return finishEdit(counts, action == "limit"
                                      ? "limiting would change a locked weight or leave no weight"
                                      : "quantizing would change a locked weight, or there is no "
                                        "weight to share the steps by");
    }

    HStatus mirror(const HArgParser& parser, const std::vector<WeightTarget>& targets) {
        runtime::MirrorOptions options;
        options.axis = parser.flagArgumentString("mirror", 0).asChar()[0] - 'x';
        options.fromPositive = !parser.isFlagSet("direction") ||
                               parser.flagArgumentString("direction", 0) == "positive";
        if (parser.isFlagSet("tolerance"))
            options.tolerance = parser.flagArgumentDouble("tolerance", 0);
        if (parser.isFlagSet("sideNames")) {
            options.sides.clear();
            for (unsigned use = 0; use < parser.numberOfFlagUses("sideNames"); ++use) {
                const auto [first, second] = pairAt(parser, "sideNames", use);
                options.sides.push_back({first, second});
            }
        }
        runtime::RuleCounts counts;
        for (const WeightTarget& target : targets) {
            HStatus status =
                runtime::mirrorSkinWeights(m_scene, *target.cluster, target.vertices.get(), options,
                                           &m_journal.keepWeights(*target.cluster), counts);
            if (status.statusCode() == HS::kNotFound) {
                HGlobal::displayWarning(HString(std::string(kCommand) + ": " +
                                                status.errorString().str() +
                                                " Its weights were left as they are."));
            } else if (!status) {
                m_journal.undo();
                return reportFailure(kCommand, status);
            }
        }
        return finishEdit(counts, "mirroring would change a locked weight");
    }

    HStatus finishEdit(const runtime::RuleCounts& counts, const char* why) {
        if (counts.refused > 0)
            HGlobal::displayWarning(HString(
                std::string(kCommand) + ": " + vertexCount(counts.refused) +
                (counts.refused == 1 ? " was" : " were") + " left unchanged: " + why + "."));
        setResult(static_cast<int>(counts.changed));
        return HS::kSuccess;
    }
};

const bool registered = runtime::registerBuiltInCommand(
    "skinWeights", runtime::createCommand<SkinWeightsCommand>, &SkinWeightsCommand::createSyntax);

} // namespace
