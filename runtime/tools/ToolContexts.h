// ToolContexts: the tool contexts of the running host (what the viewport's mouse does) and
// which one is current, with the settings of the skin paint tool.
//
// Two contexts exist: "selectSuperContext", the selection tool and the default, and
// "pntAttrSkinContext", the skin paint tool. The skin paint context is also known by the name
// of its context command, "pntAttrSkinPaintCtx"; every command that takes a context name
// accepts both. The skin paint tool is ready to paint when it is current and in paint mode
// (skinPaintMode 1).
//
// Switching tools and choosing the painted influence are announced to the display
// (DisplayRefresh::changed), which shows that influence's weights.
//
// Tools are settings of the session, not part of the scene: switching tools and changing the
// paint settings are never recorded for undo, and a new or opened scene keeps them (the painted
// influence then reads as none once its joint is gone).
#pragma once

#include "HStatus.h"
#include "HString.h"
#include "core/HostContext.h"
#include "scene/Node.h"

#include <memory>

namespace runtime {

// What a flood of the skin paint tool does to the painted influence's weight w.
enum class PaintOperation {
    kReplace, // w = opacity
    kAdd,     // w = w + opacity
    kScale,   // w = w * opacity
    kSmooth,  // w = (1 - opacity) * w + opacity * (average of w over the edge neighbours)
};

// "Replace", "Add", "Scale", "Smooth" (exactly so written); false for anything else.
bool paintOperationFromName(const HString& name, PaintOperation& operation);
const char* paintOperationName(PaintOperation operation);

struct SkinPaintSettings {
    PaintOperation operation = PaintOperation::kReplace;
    double opacity = 1.0;
    // 1 paints weights; 0 picks vertices instead.
    int paintMode = 1;
    std::weak_ptr<Node> influence;

    // The painted influence while its node lives; null otherwise.
    NodePtr liveInfluence() const;
};

class ToolContexts : public HostModule {
public:
    static const char* const kSelectContext;
    static const char* const kSkinPaintContext;
    static const char* const kSkinPaintCommand;

    // The context a name stands for, or empty when it names none.
    static HString resolve(const HString& name);
    static bool isSkinPaintContext(const HString& name);
    // kSuccess for a name of the skin paint context; otherwise kInvalidParameter and why.
    static HStatus expectSkinPaintContext(const HString& name);

    const HString& current() const { return m_current; }
    // Fails with kInvalidParameter, changing nothing, for a name that is no context.
    HStatus setCurrent(const HString& name);

    bool skinPaintReady() const;
    SkinPaintSettings& skinPaint() { return m_skinPaint; }
    const SkinPaintSettings& skinPaint() const { return m_skinPaint; }

private:
    HString m_current = kSelectContext;
    SkinPaintSettings m_skinPaint;
};

ToolContexts& toolContexts();

} // namespace runtime
