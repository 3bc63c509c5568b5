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

namespace {

using runtime::MeshGeometry;

void addSize(HSyntax& syntax, const char* shortName, const char* longName) {
    syntax.addFlag(shortName, longName, HSyntax::kDouble);
}

void addSubdivisions(HSyntax& syntax, const char* axes) {
    for (const char* axis = axes; *axis; ++axis) {
        std::string shortName = std::string("-s") + char(*axis + ('a' - 'A'));
        std::string longName = std::string("-subdivisions") + *axis;
        syntax.addFlag(shortName.c_str(), longName.c_str(), HSyntax::kLong);
    }
}

void read(const HArgParser& parser, const char* flag, double& value) {
    if (parser.isFlagSet(flag))
        value = parser.flagArgumentDouble(flag, 0);
}

void read(const HArgParser& parser, const char* flag, int& value) {
    if (parser.isFlagSet(flag))
        value = parser.flagArgumentInt(flag, 0);
}

struct Plane {
    static constexpr const char* kCommand = "polyPlane";
    static constexpr const char* kStem = "plane";
    static void addFlags(HSyntax& syntax) {
        addSize(syntax, "-w", "-width");
        addSize(syntax, "-h", "-height");
        addSubdivisions(syntax, "XY");
    }
    static HStatus build(const HArgParser& parser, MeshGeometry& geometry) {
        runtime::PlaneParameters p;
        read(parser, "width", p.width);
        read(parser, "height", p.height);
        read(parser, "subdivisionsX", p.subdivisionsX);
        read(parser, "subdivisionsY", p.subdivisionsY);
        return runtime::makePlane(p, geometry);
    }
};

struct Cube {
    static constexpr const char* kCommand = "polyCube";
    static constexpr const char* kStem = "cube";
    static void addFlags(HSyntax& syntax) {
        addSize(syntax, "-w", "-width");
        addSize(syntax, "-h", "-height");
        addSize(syntax, "-d", "-depth");
        addSubdivisions(syntax, "XYZ");
    }
    static HStatus build(const HArgParser& parser, MeshGeometry& geometry) {
        runtime::CubeParameters p;
        read(parser, "width", p.width);
        read(parser, "height", p.height);
        read(parser, "depth", p.depth);
        read(parser, "subdivisionsX", p.subdivisionsX);
        read(parser, "subdivisionsY", p.subdivisionsY);
        read(parser, "subdivisionsZ", p.subdivisionsZ);
        return runtime::makeCube(p, geometry);
    }
};

struct Cylinder {
    static constexpr const char* kCommand = "polyCylinder";
    static constexpr const char* kStem = "cylinder";
    static void addFlags(HSyntax& syntax) {
        addSize(syntax, "-r", "-radius");
        addSize(syntax, "-h", "-height");
        addSubdivisions(syntax, "XY");
    }
    static HStatus build(const HArgParser& parser, MeshGeometry& geometry) {
        runtime::CylinderParameters p;
        read(parser, "radius", p.radius);
        read(parser, "height", p.height);
        read(parser, "subdivisionsX", p.subdivisionsAround);
        read(parser, "subdivisionsY", p.subdivisionsHeight);
        return runtime::makeCylinder(p, geometry);
    }
};

struct Sphere {
    static constexpr const char* kCommand = "polySphere";
    static constexpr const char* kStem = "sphere";
    static void addFlags(HSyntax& syntax) {
        addSize(syntax, "-r", "-radius");
        addSubdivisions(syntax, "XY");
    }
    static HStatus build(const HArgParser& parser, MeshGeometry& geometry) {
        runtime::SphereParameters p;
        read(parser, "radius", p.radius);
        read(parser, "subdivisionsX", p.subdivisionsAround);
        read(parser, "subdivisionsY", p.subdivisionsHeight);
        return runtime::makeSphere(p, geometry);
    }
};

template <typename Shape> class PrimitiveCommand : public runtime::SceneEditCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-n", "-name", HSyntax::kString);
        Shape::addFlags(syntax);
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        if (runtime::commandObjects(parser).length() > 0)
            return runtime::reportFailure(Shape::kCommand, "It takes no objects, only its flags.");
        MeshGeometry geometry;
        HStatus status = Shape::build(parser, geometry);
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
