#include "HObject.h"

#include "api/HObjectData.h"

HObject::HObject() = default;

const HObject HObject::kNullObj;

bool HObject::isNull() const {
    return !m_data || !m_data->isAlive();
}

HFn::Type HObject::apiType() const {
    return isNull() ? HFn::kInvalid : m_data->apiType();
}

bool HObject::hasFn(HFn::Type type) const {
    return !isNull() && runtime::fnTypeIncludes(m_data->apiType(), type);
}

const char* HObject::apiTypeStr() const {
    return runtime::fnTypeName(apiType());
}

bool HObject::operator==(const HObject& other) const {
    return m_data.get() == other.m_data.get() || (isNull() && other.isNull());
}

bool HObject::operator!=(const HObject& other) const {
    return !(*this == other);
}
