#include "scene/JointColors.h"

#include "scene/Node.h"
#include "scene/NodeValues.h"

namespace runtime {

namespace {

const HColor kPalette[kObjectColorCount] = {
    {0.26f, 0.48f, 1.00f}, // blue
    {1.00f, 0.30f, 0.25f}, // red
    {0.30f, 0.85f, 0.30f}, // green
    {1.00f, 0.85f, 0.20f}, // yellow
    {0.90f, 0.35f, 0.90f}, // magenta
    {0.25f, 0.90f, 0.90f}, // cyan
    {1.00f, 0.55f, 0.10f}, // orange
    {0.60f, 0.40f, 0.95f}, // violet
};

const HColor kJointColor(0.55f, 0.55f, 0.60f);
const HColor kShapeColor(0.10f, 0.10f, 0.10f);
const HColor kTransformColor(0.70f, 0.70f, 0.70f);

} // namespace

const HColor& objectColor(int index) {
    int count = static_cast<int>(kObjectColorCount);
    return kPalette[((index % count) + count) % count];
}

HColor dormantColor(const Node& node) {
    if (node.hasFn(HFn::kJoint))
        return boolValue(node, "useObjectColor") ? objectColor(intValue(node, "objectColor"))
                                                 : kJointColor;
    return node.hasFn(HFn::kShape) ? kShapeColor : kTransformColor;
}

} // namespace runtime
