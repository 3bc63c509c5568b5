// Feeds component strings ("body.vtx[2:5]") to their parser. A text it accepts must describe a
// valid range of a known kind on a well-formed object name, and writing that range back in its
// plain form must read as the same component.
#include "FuzzHost.h"
#include "scene/ComponentText.h"

#include <string>

namespace {

std::string plainForm(const runtime::ComponentText& component) {
    std::string range =
        component.all ? "*"
                      : std::to_string(component.first) + ":" + std::to_string(component.last);
    return component.object + "." + runtime::componentKindText(component.kind) + "[" + range + "]";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    runtime::ComponentText component;
    const HStatus status = runtime::parseComponentText(text, component);
    if (!status) {
        FUZZ_EXPECT(status.errorString().str() == "Invalid component: " + text);
        return 0;
    }
    FUZZ_EXPECT(runtime::looksLikeComponent(text));
    FUZZ_EXPECT(!component.object.empty());
    FUZZ_EXPECT(component.kind == HFn::kMeshVertComponent ||
                component.kind == HFn::kMeshEdgeComponent ||
                component.kind == HFn::kMeshPolygonComponent);
    FUZZ_EXPECT(component.all || (0 <= component.first && component.first <= component.last));

    runtime::ComponentText again;
    FUZZ_EXPECT(runtime::parseComponentText(plainForm(component), again));
    FUZZ_EXPECT(again.object == component.object && again.kind == component.kind &&
                again.all == component.all && again.first == component.first &&
                again.last == component.last);
    return 0;
}
