#include "HFnBase.h"

#include "api/HObjectData.h"

HFnBase::HFnBase() = default;
HFnBase::~HFnBase() = default;

HFn::Type HFnBase::type() const {
    return HFn::kBase;
}

HObject HFnBase::object(HStatus* status) const {
    if (status)
        *status = checkAttached();
    return m_object;
}

HStatus HFnBase::setObject(const HObject& object) {
    return attach(object, type());
}

bool HFnBase::hasObj(HFn::Type type) const {
    return m_object.hasFn(type);
}

HStatus HFnBase::attach(const HObject& object, HFn::Type requiredType) {
    if (!object.isNull() && object.hasFn(requiredType)) {
        m_object = object;
        return HS::kSuccess;
    }
    m_object = HObject();
    return HStatus(HS::kInvalidParameter, std::string("The object is not of kind ") +
                                              runtime::fnTypeName(requiredType) + ".");
}

HStatus HFnBase::checkAttached() const {
    if (m_object.isNull())
        return HStatus(HS::kInvalidParameter, "The function set has no live object.");
    return HS::kSuccess;
}
