// polyPlane, polyCube, polyCylinder and polySphere: a transform with a mesh shape under it
// (NAME and NAME + "Shape"), centred at the origin, which becomes the selection. The command
// gives the transform's name. Flags, each with its short and long name:
//
//   polyPlane     -w -width, -h -height, -sx -subdivisionsX, -sy -subdivisionsY   (XZ plane)
//   polyCube      -w -width, -h -height, -d -depth, -sx, -sy, -sz -subdivisionsZ
//   polyCylinder  -r -radius, -h -height, -sx (around), -sy (along Y)
//   polySphere    -r -radius, -sx (around), -sy (pole to pole)
//   all           -n -name; without it "plane1", "cube1", ... (the first number unused)
//
// Undone exactly, the selection included.
#include "commands/CommandSupport.h"
#include "lang/BuiltInCommand.h"
#include "scene/MeshPrimitives.h"

#include <vector>

namespace {

using runtime::MeshGeometry;

// One flag of a primitive: a size (double) or a number of subdivisions (int) of its parameters.
struct Field {
    const char* shortName;
    const char* longName;
    double* size;
    int* count;
};

Field size(const char* shortName, const char* longName, double& value) {
    return {shortName, longName, &value, nullptr};
}

Field subdivisions(const char* shortName, const char* longName, int& value) {
    return {shortName, longName, nullptr, &value};
}

struct Plane {
    static constexpr const char* kCommand = "polyPlane";
    static constexpr const char* kStem = "plane";
    using Parameters = runtime::PlaneParameters;
    static std::vector<Field> fields(Parameters& p) {
        return {size("-w", "-width", p.width), size("-h", "-height", p.height),
                subdivisions("-sx", "-subdivisionsX", p.subdivisionsX),
                subdivisions("-sy", "-subdivisionsY", p.subdivisionsY)};
    }
    static HStatus make(const Parameters& p, MeshGeometry& geometry) {
        return runtime::makePlane(p, geometry);
    }
};

struct Cube {
    static constexpr const char* kCommand = "polyCube";
    static constexpr const char* kStem = "cube";
    using Parameters = runtime::CubeParameters;
    static std::vector<Field> fields(Parameters& p) {
        return {size("-w", "-width", p.width),
                size("-h", "-height", p.height),
                size("-d", "-depth", p.depth),
                subdivisions("-sx", "-subdivisionsX", p.subdivisionsX),
                subdivisions("-sy", "-subdivisionsY", p.subdivisionsY),
                subdivisions("-sz", "-subdivisionsZ", p.subdivisionsZ)};
    }
    static HStatus make(const Parameters& p, MeshGeometry& geometry) {
        return runtime::makeCube(p, geometry);
    }
};

struct Cylinder {
    static constexpr const char* kCommand = "polyCylinder";
    static constexpr const char* kStem = "cylinder";
    using Parameters = runtime::CylinderParameters;
    static std::vector<Field> fields(Parameters& p) {
        return {size("-r", "-radius", p.radius), size("-h", "-height", p.height),
                subdivisions("-sx", "-subdivisionsX", p.subdivisionsAround),
                subdivisions("-sy", "-subdivisionsY", p.subdivisionsHeight)};
    }
    static HStatus make(const Parameters& p, MeshGeometry& geometry) {
        return runtime::makeCylinder(p, geometry);
    }
};

struct Sphere {
    static constexpr const char* kCommand = "polySphere";
    static constexpr const char* kStem = "sphere";
    using Parameters = runtime::SphereParameters;
    static std::vector<Field> fields(Parameters& p) {
        return {size("-r", "-radius", p.radius),
                subdivisions("-sx", "-subdivisionsX", p.subdivisionsAround),
                subdivisions("-sy", "-subdivisionsY", p.subdivisionsHeight)};
    }
    static HStatus make(const Parameters& p, MeshGeometry& geometry) {
        return runtime::makeSphere(p, geometry);
    }
};

template <typename Shape> class PrimitiveCommand : public runtime::SceneEditCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-n", "-name", HSyntax::kString);
        typename Shape::Parameters parameters;
        for (const Field& field : Shape::fields(parameters))
            syntax.addFlag(field.shortName, field.longName,
                           field.size ? HSyntax::kDouble : HSyntax::kLong);
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        if (runtime::commandObjects(parser).length() > 0)
            return runtime::reportFailure(Shape::kCommand, "It takes no objects, only its flags.");
        typename Shape::Parameters parameters;
        for (const Field& field : Shape::fields(parameters)) {
            if (!parser.isFlagSet(field.longName))
                continue;
            if (field.size)
                *field.size = parser.flagArgumentDouble(field.longName, 0);
            else
                *field.count = parser.flagArgumentInt(field.longName, 0);
        }
        MeshGeometry geometry;
        HStatus status = Shape::make(parameters, geometry);
        if (!status)
            return runtime::reportFailure(Shape::kCommand, status);
        std::string name = parser.isFlagSet("name") ? parser.flagArgumentString("name", 0).str()
                                                    : runtime::freshName(m_scene, Shape::kStem);
        runtime::NodePtr transform =
            runtime::createMeshObject(m_scene, std::move(geometry), name, &status);
        if (!transform)
            return runtime::reportFailure(Shape::kCommand, status);
        m_journal.nodesCreated({transform});
        m_journal.setSelection(runtime::selectionOf(transform));
        setResult(HString(transform->name()));
        return HS::kSuccess;
    }
};

template <typename Shape> bool registerPrimitive() {
    return runtime::registerBuiltInCommand(Shape::kCommand,
                                           runtime::createCommand<PrimitiveCommand<Shape>>,
                                           &PrimitiveCommand<Shape>::createSyntax);
}

const bool registered = registerPrimitive<Plane>() && registerPrimitive<Cube>() &&
                        registerPrimitive<Cylinder>() && registerPrimitive<Sphere>();

} // namespace
