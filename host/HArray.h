// HArray: the common body of the host interface's array value types (HIntArray,
// HDoubleArray, HStringArray, HObjectArray, HDagPathArray, HPlugArray).
//
// A plain value holding its elements; copies are independent. Indexing past the end is a
// programming error and asserts. remove() and insert() report an index out of range through
// their status.
#pragma once

#include "HStatus.h"

#include <cassert>
#include <vector>

template <typename T> class HArray {
public:
    HArray() = default;
    HArray(unsigned count, const T& initial = T()) : m_items(count, initial) {}

    unsigned length() const { return static_cast<unsigned>(m_items.size()); }
    const T& operator[](unsigned i) const {
        assert(i < m_items.size());
        return m_items[i];
    }
    T& operator[](unsigned i) {
        assert(i < m_items.size());
        return m_items[i];
    }

    HStatus append(const T& value) {
        m_items.push_back(value);
        return HS::kSuccess;
    }
    HStatus clear() {
        m_items.clear();
        return HS::kSuccess;
    }
    HStatus setLength(unsigned length) {
        m_items.resize(length);
        return HS::kSuccess;
    }
    HStatus remove(unsigned i) {
        if (i >= m_items.size())
            return HS::kInvalidParameter;
        m_items.erase(m_items.begin() + i);
        return HS::kSuccess;
    }
    HStatus insert(const T& value, unsigned i) {
        if (i > m_items.size())
            return HS::kInvalidParameter;
        m_items.insert(m_items.begin() + i, value);
        return HS::kSuccess;
    }
    HStatus set(const T& value, unsigned i) {
        if (i >= m_items.size())
            return HS::kInvalidParameter;
        m_items[i] = value;
        return HS::kSuccess;
    }
    void reserve(unsigned count) { m_items.reserve(count); }

    typename std::vector<T>::const_iterator begin() const { return m_items.begin(); }
    typename std::vector<T>::const_iterator end() const { return m_items.end(); }
    typename std::vector<T>::iterator begin() { return m_items.begin(); }
    typename std::vector<T>::iterator end() { return m_items.end(); }

private:
    std::vector<T> m_items;
};
