// HApiAccess: the one place that builds the interface's handles from runtime objects and
// opens them again (HObject, HDagPath, HPlug, HSelectionList items). The H classes name it a
// friend; runtime code that hands objects to the interface or takes them from it goes through
// here. Opening a handle to a deleted node gives null, never a dangling object.
#pragma once

#include "HDagPath.h"
#include "HObject.h"
#include "HPlug.h"
#include "HSelectionList.h"
#include "api/HObjectData.h"
#include "scene/AttributeDef.h"
#include "scene/ComponentData.h"
#include "scene/Node.h"
#include "scene/Plug.h"

#include <memory>
#include <vector>

struct HPlugData {
    runtime::Plug plug;
};

struct HApiAccess {
    using SelectionItem = HSelectionList::Item;

    static HObject object(std::shared_ptr<HObjectData> data) {
        HObject result;
        result.m_data = std::move(data);
        return result;
    }
    static const std::shared_ptr<HObjectData>& data(const HObject& object) { return object.m_data; }
    // The referent as T when it is one and alive; null otherwise.
    template <typename T> static std::shared_ptr<T> as(const HObject& object) {
        if (!object.m_data || !object.m_data->isAlive())
            return nullptr;
        return std::dynamic_pointer_cast<T>(object.m_data);
    }
    static runtime::NodePtr node(const HObject& object) { return as<runtime::Node>(object); }

    static HDagPath path(const runtime::NodePtr& node) {
        HDagPath result;
        if (node && node->isDag())
            result.m_node = object(node);
        return result;
    }
    static runtime::NodePtr node(const HDagPath& path) { return node(path.m_node); }

    static HPlug plug(runtime::Plug plug) {
        HPlug result;
        if (plug.node())
            result.m_data = std::make_shared<const HPlugData>(HPlugData{std::move(plug)});
        return result;
    }
    static const runtime::Plug& plug(const HPlug& plug) {
        static const runtime::Plug kNull;
        return plug.m_data ? plug.m_data->plug : kNull;
    }

    static std::vector<SelectionItem>& items(HSelectionList& list) { return list.m_items; }
    static const std::vector<SelectionItem>& items(const HSelectionList& list) {
        return list.m_items;
    }
};
