#pragma once

#include "binding/Object.h"
#include "surface/Forward.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <vector>

namespace zan::surface {

using binding::Object;
using values::Ref;
using values::Variant;

/// Makes one control of the array's type, not yet placed.
using ControlCreator = std::function<Ref<LiveControl>()>;
/// Gives a new array's design values: what the designer of the surface would have set.
using DesignSetup = std::function<void(LiveControl& design)>;

/// The controls of one type on one surface. Element 1, the template, was made with the surface and stays for its
/// life; further elements are loaded and unloaded at will, and leave gaps.
///
/// New elements are copies of the design, not of the template as the user has changed it meanwhile.
class ControlArray : public Object
{
public:
    /// Highest index.
    static constexpr std::int32_t MaximumIndex = 32767;
    static constexpr std::int32_t TemplateIndex = 1;

    ControlArray(Surface& surface, QString name, ControlCreator creator, const DesignSetup& setup);
    ~ControlArray() override;
    const binding::MemberTable& members() const override;
    std::unique_ptr<binding::Enumerator> enumerate() override;

    const QString& name() const noexcept { return m_name; }
    /// Null once the surface has gone.
    Surface* surface() const noexcept { return m_surface; }
    /// The unplaced control that holds the design values; what is set here shows in elements loaded later.
    LiveControl& design() const noexcept { return *m_design; }

    std::int16_t lBound() const noexcept;
    std::int16_t uBound() const noexcept { return std::int16_t(m_upper); }
    std::int16_t count() const noexcept { return std::int16_t(m_count); }
    /// The element of this index. Raises 340 when there is none.
    Ref<LiveControl> item(std::int16_t index) const;
    /// The element of this index, or null.
    LiveControl* find(std::int32_t index) const noexcept;
    /// A new element, invisible until shown. Raises 6 above MaximumIndex, 340 below 0, 360 when it exists.
    Ref<LiveControl> load(std::int32_t index);
    /// Puts an element back that was unloaded from this array, in its former place. Raises 360 when that is taken.
    void restore(const Ref<LiveControl>& element);
    /// Takes an element away. Raises 340 when there is none, 362 for the template.
    void unload(std::int32_t index);
    /// Raises 340, as a control does whose parts are arrays.
    [[noreturn]] static void raiseNoElement(std::int32_t index);

private:
    friend class Surface;
    Ref<LiveControl> place(std::int32_t index);
    void enter(const Ref<LiveControl>& element);
    void detach(); // the surface goes

    Surface* m_surface;
    QString m_name;
    ControlCreator m_creator;
    Ref<LiveControl> m_design;
    std::vector<Ref<LiveControl>> m_elements; // by index; gaps are empty
    std::int32_t m_upper = 0;
    std::int32_t m_count = 0;
};

} // namespace zan::surface
