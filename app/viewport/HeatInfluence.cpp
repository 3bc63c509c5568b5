#include "HeatInfluence.h"

#include "scene/Selection.h"
#include "scene/SelectionItems.h"
#include "tools/ToolContexts.h"

namespace app::viewport {

runtime::NodePtr currentHeatInfluence() {
    const runtime::ToolContexts& tools = runtime::toolContexts();
    if (tools.current() == runtime::ToolContexts::kSkinPaintContext)
        if (runtime::NodePtr painted = tools.skinPaint().liveInfluence())
            return painted;
    for (const runtime::SelectionItem& item : HApiAccess::items(runtime::selection().hilite())) {
        runtime::NodePtr node = runtime::itemNode(item);
        if (node && node->hasFn(HFn::kJoint) && !runtime::itemComponent(item))
            return node;
    }
    return nullptr;
}

} // namespace app::viewport
