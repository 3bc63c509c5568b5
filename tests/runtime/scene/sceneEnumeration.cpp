// A scene written out through the enumeration interface and built back from what was written
// must read the same: this is what the file formats rely on.
#include "scene/MeshData.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"
#include "sceneFixture.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

using fixture::FreshScene;
using runtime::AttributeDef;
using runtime::AttributePtr;
using runtime::NodePtr;
using runtime::Plug;
using runtime::Value;

namespace {

// Everything the file formats write, kept as plain data (node numbers instead of nodes).
struct WrittenPlug {
    size_t node;
    std::string attribute;
    std::vector<int> indices;
};
struct WrittenNode {
    std::string type, name;
    int parent = -1;
    std::vector<AttributePtr> dynamic;
    std::vector<std::pair<WrittenPlug, Value>> values;
    runtime::MeshGeometry mesh;
    std::vector<size_t> influences;
    std::vector<runtime::Matrix> bindPre;
    runtime::Matrix geometryMatrix;
    runtime::SkinWeights weights;
};
struct WrittenScene {
    std::vector<WrittenNode> nodes;
    std::vector<std::pair<WrittenPlug, WrittenPlug>> connections;
};

// A definition rebuilt from what it says about itself, as a reader makes it from text.
AttributePtr copyDefinition(const AttributeDef& def) {
    AttributePtr copy;
    switch (def.kind()) {
    case runtime::AttributeKind::kCompound: {
        copy = AttributeDef::compound(def.longName(), def.shortName());
        for (size_t c = 0; c < def.childCount(); ++c)
            copy->addChild(copyDefinition(*def.child(c)));
        break;
    }
    case runtime::AttributeKind::kNumeric: {
        Value number;
        runtime::convertValue(def.defaultValue(), runtime::ValueType::kDouble, number);
        copy = AttributeDef::numeric(def.longName(), def.shortName(), def.valueType(),
                                     std::get<double>(number));
        break;
    }
    case runtime::AttributeKind::kTyped:
        copy = AttributeDef::typed(def.longName(), def.shortName(), def.valueType(),
                                   def.defaultValue());
        break;
    default:
        copy = AttributeDef::message(def.longName(), def.shortName());
    }
    copy->setArray(def.isArray());
    return copy;
}

WrittenScene write(const runtime::Scene& scene) {
    WrittenScene written;
    std::map<const runtime::Node*, size_t> numbers;
    std::vector<NodePtr> nodes = scene.nodesParentsFirst();
    for (const NodePtr& node : nodes)
        numbers[node.get()] = numbers.size();
    auto plugOf = [&](const Plug& plug) {
        return WrittenPlug{numbers.at(plug.node().get()), plug.attribute()->longName(),
                           plug.indices()};
    };
    for (const NodePtr& node : nodes) {
        WrittenNode out;
        out.type = node->typeName();
        out.name = node->name();
        out.parent = node->parent() ? int(numbers.at(node->parent())) : -1;
        for (const AttributePtr& def : node->dynamicAttributes())
            out.dynamic.push_back(copyDefinition(*def));
        node->forEachStoredValue([&](const Plug& plug, const Value& value) {
            out.values.emplace_back(plugOf(plug), value);
        });
        if (node->mesh())
            out.mesh = node->mesh()->geometry();
        if (const runtime::SkinClusterData* skin = node->skinCluster()) {
            for (unsigned i = 0; i < skin->influenceCount(); ++i) {
                out.influences.push_back(numbers.at(skin->influences()[i].get()));
                out.bindPre.push_back(skin->bindPreMatrix(i));
            }
            out.geometryMatrix = skin->geometryMatrix();
            out.weights = skin->weights();
        }
        written.nodes.push_back(std::move(out));
    }
    for (const runtime::ConnectionPtr& connection : scene.connections())
        written.connections.emplace_back(plugOf(connection->source),
                                         plugOf(connection->destination));
    return written;
}

void read(runtime::Scene& scene, const WrittenScene& written) {
    std::vector<NodePtr> made;
    for (const WrittenNode& in : written.nodes) {
        runtime::Node* parent = in.parent >= 0 ? made[size_t(in.parent)].get() : nullptr;
        HStatus status;
        made.push_back(scene.createNode(in.type, in.name, parent, &status));
        ASSERT_TRUE(status) << status.errorString().asChar();
        ASSERT_EQ(made.back()->name(), in.name);
        for (const AttributePtr& def : in.dynamic)
            ASSERT_TRUE(scene.addAttribute(*made.back(), def));
    }
    auto plugOf = [&](const WrittenPlug& plug) {
        const NodePtr& node = made.at(plug.node);
        return Plug(node, node->findAttribute(plug.attribute), plug.indices);
    };
    for (size_t n = 0; n < written.nodes.size(); ++n) {
        const WrittenNode& in = written.nodes[n];
        for (const auto& value : in.values)
            ASSERT_TRUE(scene.setValue(plugOf(value.first), value.second));
        if (made[n]->mesh()) {
            ASSERT_TRUE(scene.setMeshGeometry(*made[n], in.mesh));
        }
        if (runtime::SkinClusterData* skin = made[n]->skinCluster()) {
            std::vector<NodePtr> influences;
            for (size_t i : in.influences)
                influences.push_back(made[i]);
            ASSERT_TRUE(skin->setInfluences(influences, in.bindPre));
            skin->setGeometryMatrix(in.geometryMatrix);
            skin->weights() = in.weights;
        }
    }
    for (const auto& connection : written.connections)
        ASSERT_TRUE(scene.connect(plugOf(connection.first), plugOf(connection.second)));
}

// A text that differs when anything written differs.
std::string describe(const WrittenScene& written) {
    std::ostringstream text;
    text.precision(17);
    auto plugText = [&](const WrittenPlug& plug) {
        text << plug.node << "." << plug.attribute;
        for (int index : plug.indices)
            text << "[" << index << "]";
    };
    for (const WrittenNode& node : written.nodes) {
        text << node.type << " " << node.name << " under " << node.parent << "\n";
        for (const AttributePtr& def : node.dynamic)
            def->forEachInTree([&](const AttributeDef& each) {
                text << "  attr " << each.longName() << " " << each.shortName() << " "
                     << int(each.kind()) << int(each.valueType()) << each.isArray() << "\n";
            });
        for (const auto& value : node.values) {
            text << "  ";
            plugText(value.first);
            text << " = " << value.second.index() << ":";
            std::visit(
                [&](const auto& v) {
                    using T = std::decay_t<decltype(v)>;
                    if constexpr (std::is_same_v<T, runtime::StringList>) {
                        for (const std::string& s : v)
                            text << s << ",";
                    } else if constexpr (!std::is_same_v<T, std::monostate>) {
                        text << v;
                    }
                },
                value.second);
            text << "\n";
        }
        text << "  points " << node.mesh.points.size() << " polygons "
             << node.mesh.polygonSizes.size();
        for (const HPoint& p : node.mesh.points)
            text << " " << p.x << "," << p.y << "," << p.z;
        for (int v : node.mesh.polygonVertices)
            text << " " << v;
        text << "\n  influences";
        for (size_t i : node.influences)
            text << " " << i;
        for (const runtime::Matrix& m : node.bindPre)
            text << " " << m.m[0][3] << "," << m.m[1][3];
        for (unsigned v = 0; v < node.weights.vertexCount(); ++v)
            for (unsigned e = 0; e < node.weights.entryCount(v); ++e)
                text << " " << v << ":" << node.weights.influences(v)[e] << "="
                     << node.weights.weights(v)[e];
        text << "\n";
    }
    // Connections form a set: their order need not survive.
    std::vector<std::string> connections;
    for (const auto& connection : written.connections) {
        std::ostringstream line;
        for (const WrittenPlug* plug : {&connection.first, &connection.second}) {
            line << plug->node << "." << plug->attribute;
            for (int index : plug->indices)
                line << "[" << index << "]";
            line << " ";
        }
        connections.push_back(line.str());
    }
    std::sort(connections.begin(), connections.end());
    for (const std::string& line : connections)
        text << line << "\n";
    return text.str();
}

} // namespace

using SceneEnumeration = FreshScene;

TEST_F(SceneEnumeration, WritingAndReadingBackGivesTheSameScene) {
    fixture::SkinnedMeshOptions options;
    options.seed = 11;
    options.vertices = 30;
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh(options);
    options.name = "arm";
    options.shape = fixture::MeshShape::kCylinder;
    fixture::makeSkinnedMesh(options);
    // A node made before its parent and put first among its siblings, duplicate short names,
    // a joint lock, dynamic compound arrays with values.
    NodePtr early = scene().createNode("joint", "early");
    scene().reparent(*early, body.joints[0].get(), 0);
    scene().createNode("mesh", "bodyShape", scene().createNode("transform", "spare").get());
    scene().setValue(body.joints[1]->plug("liw"), true);
    scene().addAttribute(*body.cluster, fixture::cellLockAttribute());
    Plug cell = body.cluster->plug("lockedLocalJoints");
    cell.selectAncestor(4);
    scene().setValue(cell.element(1), std::string("|bodyJoint2"));
    scene().setValue(body.cluster->plug("lockVertex").element(9), true);

    WrittenScene first = write(scene());
    std::string before = describe(first);
    scene().reset();
    read(scene(), first);
    std::string after = describe(write(scene()));
    EXPECT_EQ(after, before);
    EXPECT_NE(before.find("bodyShape"), std::string::npos);
}
