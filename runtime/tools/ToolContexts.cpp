#include "tools/ToolContexts.h"

#include "core/DisplayRefresh.h"

namespace runtime {

const char* const ToolContexts::kSelectContext = "selectSuperContext";
const char* const ToolContexts::kSkinPaintContext = "pntAttrSkinContext";
const char* const ToolContexts::kSkinPaintCommand = "pntAttrSkinPaintCtx";

namespace {

const bool registered = registerHostModule(
    kCommandsRank, [](HostContext&) { return std::unique_ptr<HostModule>(new ToolContexts); });

struct NamedOperation {
    PaintOperation operation;
    const char* name;
};

const NamedOperation kOperations[] = {
    {PaintOperation::kReplace, "Replace"},
    {PaintOperation::kAdd, "Add"},
    {PaintOperation::kScale, "Scale"},
    {PaintOperation::kSmooth, "Smooth"},
};

} // namespace

bool paintOperationFromName(const HString& name, PaintOperation& operation) {
    for (const NamedOperation& named : kOperations) {
        if (name == named.name) {
            operation = named.operation;
            return true;
        }
    }
    return false;
}

const char* paintOperationName(PaintOperation operation) {
    for (const NamedOperation& named : kOperations)
        if (named.operation == operation)
            return named.name;
    return "";
}

NodePtr SkinPaintSettings::liveInfluence() const {
    NodePtr node = influence.lock();
    return node && node->isAlive() ? node : nullptr;
}

HString ToolContexts::resolve(const HString& name) {
    if (name == kSelectContext)
        return kSelectContext;
    if (isSkinPaintContext(name))
        return kSkinPaintContext;
    return HString();
}

bool ToolContexts::isSkinPaintContext(const HString& name) {
    return name == kSkinPaintContext || name == kSkinPaintCommand;
}

HStatus ToolContexts::expectSkinPaintContext(const HString& name) {
    if (isSkinPaintContext(name))
        return HS::kSuccess;
    return HStatus(HS::kInvalidParameter,
                   "\"" + name + "\" is not the skin paint context (" + kSkinPaintContext + ").");
}

HStatus ToolContexts::setCurrent(const HString& name) {
    HString context = resolve(name);
    if (context.isEmpty())
        return HStatus(HS::kInvalidParameter, "No tool context named \"" + name + "\".");
    m_current = context;
    host().get<DisplayRefresh>().changed();
    return HS::kSuccess;
}

bool ToolContexts::skinPaintReady() const {
    return m_current == kSkinPaintContext && m_skinPaint.paintMode == 1;
}

ToolContexts& toolContexts() {
    return host().get<ToolContexts>();
}

} // namespace runtime
