#pragma once

#include "binding/Object.h"

#include <memory>
#include <vector>

namespace zan::test {

/// One object of every class that can be reached by name, each as its owners make it. A new class finds no place in
/// the walk over all classes before it has its specimen here.
class Specimens
{
public:
    Specimens();
    ~Specimens();
    const std::vector<binding::Ref<binding::Object>>& objects() const noexcept { return m_objects; }

private:
    struct Owners; // what the objects stand for, and stand on
    void add(const binding::Ref<binding::Object>& object) { m_objects.push_back(object); }
    void addControls();
    void addPanel();
    void addSite();
    void addStoredScheme();
    void addScriptObjects();

    std::unique_ptr<Owners> m_owners;
    std::vector<binding::Ref<binding::Object>> m_objects;
};

} // namespace zan::test
