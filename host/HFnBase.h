// HFnBase: the common part of the function sets. A function set is attached to one HObject
// and offers the operations that fit that object's kind; it owns nothing but the handle.
//
// Attaching an object of the wrong kind fails with kInvalidParameter and leaves the function
// set without an object; every later operation then fails the same way.
#pragma once

#include "HFn.h"
#include "HObject.h"
#include "HStatus.h"

class HFnBase {
public:
    HFnBase();
    virtual ~HFnBase();

    // The kind of object this function set works on.
    virtual HFn::Type type() const;
    HObject object(HStatus* status = nullptr) const;
    virtual HStatus setObject(const HObject& object);
    bool hasObj(HFn::Type type) const;

protected:
    // Attaches object when it has the given kind; otherwise detaches and fails.
    HStatus attach(const HObject& object, HFn::Type requiredType);
    // kSuccess when attached to a live object; kInvalidParameter otherwise.
    HStatus checkAttached() const;

    HObject m_object;
};
