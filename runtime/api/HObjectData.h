// HObjectData: the thing an HObject refers to. Nodes, attribute definitions, components, data
// values and plug-ins of the runtime derive from it; a module that needs an object kind of its
// own (the plug-in loader's kPlugin objects) derives its own type.
//
// HObject shares ownership of its referent, so a handle never dangles. A referent that is gone
// from the scene (a deleted node) stays in memory while handles exist and reports isAlive()
// false; the handle then reads as null. fnTypeIncludes() is the one place that knows the kind
// hierarchy behind HObject::hasFn.
#pragma once

#include "HFn.h"

struct HObjectData {
    virtual ~HObjectData();
    virtual HFn::Type apiType() const = 0;
    virtual bool isAlive() const { return true; }
};

namespace runtime {

// Whether an object of kind `type` also has kind `fn` (a joint has kTransform and kDagNode).
bool fnTypeIncludes(HFn::Type type, HFn::Type fn);
// "kMesh", "kJoint"; "kInvalid" for unknown numbers.
const char* fnTypeName(HFn::Type type);

} // namespace runtime
