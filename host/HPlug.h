// HPlug: one attribute of one node, addressed down to array elements by logical index
// ("skinCluster1.lockedCellIndices[12].lockedLocalJoints[0]").
//
// A cheap value that names a place; it holds no value itself. Array attributes are sparse:
// numElements() and operator[] see only the elements that exist, in logical index order,
// while elementByLogicalIndex() names any element (setting a value creates it; reading a
// missing one gives the attribute's default). A plug of a child attribute whose array
// ancestor has no element chosen yet must be completed with selectAncestorLogicalIndex()
// before its value is read or written. Reads and writes of the wrong value type, on a null
// plug, or on a plug whose node was deleted fail with kInvalidParameter.
#pragma once

#include "HObject.h"
#include "HStatus.h"
#include "HString.h"

#include <memory>

class HIntArray;
class HPlugArray;
struct HPlugData;

class HPlug {
public:
    HPlug();
    // The plug of attribute on node (the top of that attribute's element and child tree).
    HPlug(const HObject& node, const HObject& attribute);

    bool isNull(HStatus* status = nullptr) const;
    HObject node(HStatus* status = nullptr) const;
    HObject attribute(HStatus* status = nullptr) const;
    // "node.attr[3].child" with long attribute names.
    HString name(HStatus* status = nullptr) const;
    // The plug's name without the node, with short (default) or long attribute names.
    HString partialName(bool includeNodeName = false, bool useLongNames = false,
                        HStatus* status = nullptr) const;

    bool isArray(HStatus* status = nullptr) const;
    bool isCompound(HStatus* status = nullptr) const;
    bool isElement(HStatus* status = nullptr) const;
    bool isChild(HStatus* status = nullptr) const;

    // Array plugs: the elements that exist, by physical position (0 .. numElements()-1).
    unsigned numElements(HStatus* status = nullptr) const;
    HPlug operator[](unsigned physicalIndex) const;
    HPlug elementByPhysicalIndex(unsigned physicalIndex, HStatus* status = nullptr) const;
    HPlug elementByLogicalIndex(unsigned logicalIndex, HStatus* status = nullptr) const;
    // Logical indices of the existing elements, ascending.
    unsigned getExistingArrayAttributeIndices(HIntArray& indices, HStatus* status = nullptr) const;
    // Element plugs: their logical index and their array plug.
    unsigned logicalIndex(HStatus* status = nullptr) const;
    HPlug array(HStatus* status = nullptr) const;

    // Compound plugs: children in their fixed order. Child plugs: their compound parent.
    unsigned numChildren(HStatus* status = nullptr) const;
    HPlug child(unsigned index, HStatus* status = nullptr) const;
    HPlug child(const HObject& attribute, HStatus* status = nullptr) const;
    HPlug parent(HStatus* status = nullptr) const;
    // Chooses the element, at logicalIndex, of the ancestor array attribute `attribute`
    // (the nearest array ancestor when attribute is null).
    HStatus selectAncestorLogicalIndex(unsigned logicalIndex,
                                       const HObject& attribute = HObject::kNullObj);

    // The plugs connected to this one: its source when asDst, its destinations when asSrc.
    // Returns whether any was found.
    bool connectedTo(HPlugArray& plugs, bool asDst, bool asSrc, HStatus* status = nullptr) const;
    bool isConnected(HStatus* status = nullptr) const;
    bool isDestination(HStatus* status = nullptr) const;
    bool isSource(HStatus* status = nullptr) const;

    HStatus getValue(int& value) const;
    HStatus getValue(bool& value) const;
    HStatus getValue(double& value) const;
    HStatus getValue(HString& value) const;
    // Typed data (for example string array data, see HFnStringArrayData).
    HStatus getValue(HObject& value) const;
    HStatus setValue(int value);
    HStatus setValue(bool value);
    HStatus setValue(double value);
    HStatus setValue(const HString& value);
    HStatus setValue(const char* value);
    HStatus setValue(const HObject& data);

    HStatus setInt(int value);
    HStatus setBool(bool value);
    HStatus setDouble(double value);
    HStatus setString(const HString& value);
    int asInt(HStatus* status = nullptr) const;
    bool asBool(HStatus* status = nullptr) const;
    double asDouble(HStatus* status = nullptr) const;
    HString asString(HStatus* status = nullptr) const;

    // Two plugs are equal when they name the same place on the same node.
    bool operator==(const HPlug& other) const;
    bool operator!=(const HPlug& other) const;

private:
    friend struct HApiAccess;
    std::shared_ptr<const HPlugData> m_data;
};
