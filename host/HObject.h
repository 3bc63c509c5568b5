// HObject: a handle to something the host owns: a node, an attribute definition, a component,
// a data value or a plug-in.
//
// Handles are cheap values; copying one never copies what it refers to, so two copies of a
// component handle see the same elements. The host owns the referent. A handle to a node that
// has been deleted reads as null (isNull() is true, apiType() is kInvalid); it never dangles.
#pragma once

#include "HFn.h"

#include <memory>

struct HObjectData;

class HObject {
public:
    HObject();

    bool isNull() const;
    HFn::Type apiType() const;
    bool hasFn(HFn::Type type) const;
    // The kind's name, such as "kMesh"; "kInvalid" for a null handle.
    const char* apiTypeStr() const;

    // True when both handles refer to the same thing (two null handles are equal).
    bool operator==(const HObject& other) const;
    bool operator!=(const HObject& other) const;

    static const HObject kNullObj;

private:
    friend struct HApiAccess;
    std::shared_ptr<HObjectData> m_data;
};
