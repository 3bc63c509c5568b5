#include "files/GltfBinaryPlan.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace runtime {

namespace {

using Json = nlohmann::ordered_json;

std::size_t alignedTo4(std::size_t offset) {
    return (offset + 3) & ~std::size_t(3);
}

// Calls `visit` with every accessor index the core document (and the one extension that points
// at accessors from nodes) refers to.
template <typename Visit> void forEachAccessorReference(const Json& document, Visit visit) {
    auto values = [&](const Json& object) {
        if (object.is_object())
            for (const Json& value : object)
                if (value.is_number_integer())
                    visit(value.get<int>());
    };
    auto single = [&](const Json& object, const char* key) {
        if (object.is_object() && object.contains(key) && object[key].is_number_integer())
            visit(object[key].get<int>());
    };
    auto list = [&](const char* key) -> const Json& {
        static const Json empty = Json::array();
        return document.contains(key) && document[key].is_array() ? document[key] : empty;
    };
    for (const Json& mesh : list("meshes"))
        for (const Json& primitive : mesh.value("primitives", Json::array())) {
            values(primitive.value("attributes", Json::object()));
            single(primitive, "indices");
            for (const Json& target : primitive.value("targets", Json::array()))
                values(target);
        }
    for (const Json& skin : list("skins"))
        single(skin, "inverseBindMatrices");
    for (const Json& animation : list("animations"))
        for (const Json& sampler : animation.value("samplers", Json::array())) {
            single(sampler, "input");
            single(sampler, "output");
        }
    for (const Json& node : list("nodes")) {
        const Json instancing = node.value("extensions", Json::object())
                                    .value("EXT_mesh_gpu_instancing", Json::object());
        values(instancing.value("attributes", Json::object()));
    }
}

// Every "bufferView" index found anywhere inside extension objects.
template <typename Visit>
void forEachViewInExtensions(const Json& value, bool inside, Visit visit) {
    if (value.is_object()) {
        for (auto it = value.begin(); it != value.end(); ++it) {
            if (inside && it.key() == "bufferView" && it->is_number_integer())
                visit(it->get<int>());
            forEachViewInExtensions(*it, inside || it.key() == "extensions", visit);
        }
    } else if (value.is_array()) {
        for (const Json& item : value)
            forEachViewInExtensions(item, inside, visit);
    }
}

// Keeps only what belongs to the object's owner, not to its data.
void keepOnlyAnnotations(Json& object) {
    Json kept = Json::object();
    for (const char* key : {"name", "extensions", "extras"})
        if (object.contains(key))
            kept[key] = object[key];
    object = std::move(kept);
}

std::vector<int> sparseViews(const Json& accessor) {
    std::vector<int> views;
    if (!accessor.contains("sparse") || !accessor["sparse"].is_object())
        return views;
    for (const char* part : {"indices", "values"}) {
        const Json& sparse = accessor["sparse"];
        if (sparse.contains(part) && sparse[part].contains("bufferView") &&
            sparse[part]["bufferView"].is_number_integer())
            views.push_back(sparse[part]["bufferView"].get<int>());
    }
    return views;
}

int viewOf(const Json& accessor) {
    return accessor.contains("bufferView") && accessor["bufferView"].is_number_integer()
               ? accessor["bufferView"].get<int>()
               : -1;
}

} // namespace

GltfBinaryPlan::GltfBinaryPlan(Json& document,
                               const std::vector<std::vector<unsigned char>>& sourceBuffers)
    : m_document(document), m_sourceBuffers(sourceBuffers) {}

void GltfBinaryPlan::replace(const std::string& site, AccessorData data) {
    m_replacements.push_back({Json::json_pointer(site), std::move(data)});
}

std::vector<unsigned char> GltfBinaryPlan::finish() {
    if (!m_document.contains("accessors"))
        m_document["accessors"] = Json::array();
    if (!m_document.contains("bufferViews"))
        m_document["bufferViews"] = Json::array();
    placeAccessors();
    placeViews();
    return layOut();
}

std::vector<int> GltfBinaryPlan::accessorReferences() const {
    std::vector<int> references(m_document["accessors"].size(), 0);
    forEachAccessorReference(m_document, [&](int index) {
        if (index >= 0 && index < static_cast<int>(references.size()))
            ++references[index];
    });
    return references;
}

void GltfBinaryPlan::placeAccessors() {
    Json& accessors = m_document["accessors"];
    std::vector<int> references = accessorReferences();
    std::vector<int> previous;
    for (const Replacement& r : m_replacements) {
        const Json* current = m_document.contains(r.site) ? &m_document[r.site] : nullptr;
        int index = current && current->is_number_integer() ? current->get<int>() : -1;
        if (index >= static_cast<int>(references.size()))
            index = -1;
        if (index >= 0)
            --references[index];
        previous.push_back(index);
    }
    // An accessor nobody else uses goes to the first replacement of it; it frees its views.
    std::vector<bool> rewritten(accessors.size(), false);
    for (std::size_t i = 0; i < m_replacements.size(); ++i) {
        Replacement& r = m_replacements[i];
        const int old = previous[i];
        if (old >= 0 && references[old] == 0 && !rewritten[old]) {
            rewritten[old] = true;
            r.accessor = old;
            for (int view : sparseViews(accessors[old]))
                m_freedViews.push_back(view);
            m_freedViews.push_back(viewOf(accessors[old]));
            keepOnlyAnnotations(accessors[old]);
        } else {
            r.accessor = static_cast<int>(accessors.size());
            accessors.push_back(Json::object());
        }
        m_document[r.site] = r.accessor;
    }
    // A freed view stays in use while anything else still refers to it.
    rewritten.resize(accessors.size(), true);
    std::vector<int> viewUses = viewReferences(rewritten);
    std::set<int> freed;
    for (int view : m_freedViews)
        if (view >= 0 && view < static_cast<int>(viewUses.size()) && viewUses[view] == 0)
            freed.insert(view);
    m_freedViews.assign(freed.begin(), freed.end());
}

std::vector<int> GltfBinaryPlan::viewReferences(const std::vector<bool>& rewritten) const {
    const Json& views = m_document["bufferViews"];
    std::vector<int> uses(views.size(), 0);
    auto use = [&](int view) {
        if (view >= 0 && view < static_cast<int>(uses.size()))
            ++uses[view];
    };
    const Json& accessors = m_document["accessors"];
    for (std::size_t a = 0; a < accessors.size(); ++a) {
        if (rewritten[a])
            continue;
        use(viewOf(accessors[a]));
        for (int view : sparseViews(accessors[a]))
            use(view);
    }
    if (m_document.contains("images"))
        for (const Json& image : m_document["images"])
            use(viewOf(image));
    forEachViewInExtensions(m_document, false, use);
    return uses;
}

void GltfBinaryPlan::placeViews() {
    Json& accessors = m_document["accessors"];
    Json& views = m_document["bufferViews"];
    std::size_t nextFree = 0;
    for (Replacement& r : m_replacements) {
        if (nextFree < m_freedViews.size()) {
            r.view = m_freedViews[nextFree++];
            keepOnlyAnnotations(views[r.view]);
        } else {
            r.view = static_cast<int>(views.size());
            views.push_back(Json::object());
        }
        Json& view = views[r.view];
        view["buffer"] = 0;
        view["byteLength"] = r.data.bytes.size();
        if (r.data.target != 0)
            view["target"] = r.data.target;

        Json& accessor = accessors[r.accessor];
        accessor["bufferView"] = r.view;
        accessor["componentType"] = r.data.componentType;
        accessor["count"] = r.data.count;
        accessor["type"] = r.data.type;
        if (!r.data.min.is_null())
            accessor["min"] = r.data.min;
        if (!r.data.max.is_null())
            accessor["max"] = r.data.max;
    }
}

std::vector<unsigned char> GltfBinaryPlan::layOut() {
    Json& views = m_document["bufferViews"];
    // Where each view's bytes come from: new data, or its range of a source buffer.
    std::vector<const unsigned char*> data(views.size(), nullptr);
    std::vector<std::size_t> lengths(views.size(), 0);
    for (const Replacement& r : m_replacements) {
        data[r.view] = r.data.bytes.data();
        lengths[r.view] = r.data.bytes.size();
    }
    for (std::size_t v = 0; v < views.size(); ++v) {
        if (data[v] != nullptr || lengths[v] != 0)
            continue;
        const Json& view = views[v];
        const std::size_t buffer = view.value("buffer", std::size_t(0));
        const std::size_t offset = view.value("byteOffset", std::size_t(0));
        const std::size_t length = view.value("byteLength", std::size_t(0));
        // The reader checked that every view of a source document fits its buffer.
        if (buffer < m_sourceBuffers.size() && offset + length <= m_sourceBuffers[buffer].size()) {
            data[v] = m_sourceBuffers[buffer].data() + offset;
            lengths[v] = length;
        }
    }
    std::vector<std::size_t> offsets(views.size(), 0);
    std::size_t total = 0;
    for (std::size_t v = 0; v < views.size(); ++v) {
        offsets[v] = alignedTo4(total);
        total = offsets[v] + lengths[v];
    }
    std::vector<unsigned char> bytes(total, 0);
    for (std::size_t v = 0; v < views.size(); ++v) {
        if (lengths[v] != 0)
            std::memcpy(bytes.data() + offsets[v], data[v], lengths[v]);
        views[v]["buffer"] = 0;
        views[v]["byteOffset"] = offsets[v];
        views[v]["byteLength"] = lengths[v];
    }

    Json buffer = Json::object();
    if (m_document.contains("buffers") && !m_document["buffers"].empty() &&
        m_document["buffers"][0].is_object()) {
        buffer = m_document["buffers"][0];
        keepOnlyAnnotations(buffer);
    }
    if (total == 0) {
        m_document.erase("buffers");
        return bytes;
    }
    buffer["byteLength"] = total;
    m_document["buffers"] = Json::array({buffer});
    return bytes;
}

} // namespace runtime
