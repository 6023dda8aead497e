// Resources of the recording graphics service that are looked up by name: the id is the index, a name
// keeps its id for good, and each creation is counted until its release. T has `name` and `refs`.
#pragma once
#include <deque>
#include <set>
#include <string>

namespace testkit {

// The resources, by id and by name.
template <class T> class NamedResources {
public:
    // The resource of that name, made with T's defaults when new.
    int index(const std::string& name) {
        for (std::size_t i = 0; i < m_items.size(); ++i)
            if (m_items[i].name == name) return static_cast<int>(i);
        m_items.emplace_back();
        m_items.back().name = name;
        return static_cast<int>(m_items.size()) - 1;
    }
    // By name (made when new) or by id (null when there is none).
    T& operator[](const std::string& name) { return m_items[index(name)]; }
    T* at(int id) { return id >= 0 && id < static_cast<int>(m_items.size()) ? &m_items[id] : nullptr; }

    void fail(const std::string& name) { m_failing.insert(name); } // acquiring it fails from now on
    int acquire(const char* name) {                                // -1 for null and failing names
        if (!name || m_failing.count(name)) return -1;
        int id = index(name);
        ++m_items[id].refs;
        return id;
    }
    bool release(int id) { // false when it was not held
        T* item = at(id);
        if (!item || item->refs == 0) return false;
        --item->refs;
        return true;
    }
    // Creations not yet released, over all resources.
    int live() const {
        int refs = 0;
        for (const T& item : m_items)
            refs += item.refs;
        return refs;
    }
    int find(const std::string& name) const { // -1 when not held
        for (std::size_t i = 0; i < m_items.size(); ++i)
            if (m_items[i].name == name && m_items[i].refs > 0) return static_cast<int>(i);
        return -1;
    }

private:
    std::deque<T> m_items; // a deque keeps names in place for getSpriteName and getFontName
    std::set<std::string> m_failing;
};

} // namespace testkit
