#include "HFnStringArrayData.h"

#include "api/HApiAccess.h"
#include "api/StatusReport.h"
#include "api/StringArrayData.h"

using runtime::report;
using runtime::StringArrayData;

HFnStringArrayData::HFnStringArrayData() = default;

HFnStringArrayData::HFnStringArrayData(const HObject& data, HStatus* status) {
    report(status, setObject(data));
}

HFn::Type HFnStringArrayData::type() const {
    return HFn::kStringArrayData;
}

HStatus HFnStringArrayData::setObject(const HObject& data) {
    return attach(data, type());
}

HObject HFnStringArrayData::create(const HStringArray& strings, HStatus* status) {
    HObject object = create(status);
    set(strings);
    return object;
}

HObject HFnStringArrayData::create(HStatus* status) {
    HObject object = HApiAccess::object(std::make_shared<StringArrayData>());
    attach(object, HFn::kStringArrayData);
    report(status, HS::kSuccess);
    return object;
}

HStringArray HFnStringArrayData::array(HStatus* status) const {
    report(status, checkAttached());
    HStringArray result;
    if (std::shared_ptr<StringArrayData> data = HApiAccess::as<StringArrayData>(m_object))
        for (const std::string& text : data->strings)
            result.append(HString(text));
    return result;
}

HStatus HFnStringArrayData::set(const HStringArray& strings) {
    std::shared_ptr<StringArrayData> data = HApiAccess::as<StringArrayData>(m_object);
    if (!data)
        return checkAttached();
    data->strings.clear();
    for (const HString& text : strings)
        data->strings.push_back(text.str());
    return HS::kSuccess;
}

unsigned HFnStringArrayData::length(HStatus* status) const {
    report(status, checkAttached());
    std::shared_ptr<StringArrayData> data = HApiAccess::as<StringArrayData>(m_object);
    return data ? static_cast<unsigned>(data->strings.size()) : 0u;
}
