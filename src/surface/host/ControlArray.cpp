#include "surface/host/ControlArray.h"

#include "binding/MemberTable.h"
#include "surface/host/LiveControl.h"
#include "surface/host/Surface.h"

namespace zan::surface {

using values::ErrorNumber;

namespace {

// Errors of control arrays; nobody else raises them.
constexpr int NoSuchElement = 340;
constexpr int AlreadyLoaded = 360;
constexpr int MadeAtDesignTime = 362;

/// Walks an array by index, so that elements may come and go meanwhile.
class ElementEnumerator : public binding::Enumerator
{
public:
    explicit ElementEnumerator(ControlArray& array)
        : m_array(&array)
    {}
    std::optional<Variant> next() override
    {
        while (m_next <= m_array->uBound()) {
            if (LiveControl* element = m_array->find(m_next++))
                return Variant(Ref<LiveControl>(element));
        }
        return std::nullopt;
    }

private:
    Ref<ControlArray> m_array;
    std::int32_t m_next = 0;
};

} // namespace

void ControlArray::raiseNoElement(std::int32_t index)
{
    throw values::RuntimeError(NoSuchElement,
                               QStringLiteral("Control array element '%1' doesn't exist").arg(index));
}

ControlArray::ControlArray(Surface& surface, QString name, ControlCreator creator, const DesignSetup& setup)
    : m_surface(&surface)
    , m_name(std::move(name))
    , m_creator(std::move(creator))
    , m_design(m_creator())
{
    if (setup)
        setup(*m_design);
}

ControlArray::~ControlArray() = default;

const binding::MemberTable& ControlArray::members() const
{
    using binding::method;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable("ControlArray", nullptr,
                                    {
                                        readOnly<&ControlArray::item>("Item").asDefault(),
                                        readOnly<&ControlArray::count>("Count"),
                                        readOnly<&ControlArray::lBound>("LBound"),
                                        readOnly<&ControlArray::uBound>("UBound"),
                                        readOnly<&ControlArray::name>("Name"),
                                    });
    });
}

std::unique_ptr<binding::Enumerator> ControlArray::enumerate()
{
    return std::make_unique<ElementEnumerator>(*this);
}

std::int16_t ControlArray::lBound() const noexcept
{
    for (std::int32_t index = 0; index <= m_upper; ++index) {
        if (find(index))
            return std::int16_t(index);
    }
    return 0;
}

LiveControl* ControlArray::find(std::int32_t index) const noexcept
{
    return index >= 0 && std::size_t(index) < m_elements.size() ? m_elements[std::size_t(index)].get() : nullptr;
}

Ref<LiveControl> ControlArray::item(std::int16_t index) const
{
    LiveControl* element = find(index);
    if (!element)
        raiseNoElement(index);
    return Ref<LiveControl>(element);
}

Ref<LiveControl> ControlArray::load(std::int32_t index)
{
    if (!m_surface)
        values::raise(ErrorNumber::ObjectNotSet);
    if (index > MaximumIndex)
        values::raise(ErrorNumber::Overflow);
    if (index < 0)
        raiseNoElement(index);
    if (find(index))
        throw values::RuntimeError(AlreadyLoaded, QStringLiteral("Object already loaded"));
    return place(index);
}

Ref<LiveControl> ControlArray::place(std::int32_t index)
{
    Ref<LiveControl> element = m_creator();
    element->copyDesign(*m_design);
    element->m_index = std::int16_t(index);
    enter(element);
    return element;
}

void ControlArray::restore(const Ref<LiveControl>& element)
{
    if (!m_surface || element->isLoaded())
        values::raise(ErrorNumber::ObjectNotSet);
    if (find(element->index()))
        throw values::RuntimeError(AlreadyLoaded, QStringLiteral("Object already loaded"));
    enter(element);
}

void ControlArray::enter(const Ref<LiveControl>& element)
{
    const std::int32_t index = element->index();
    if (m_elements.size() <= std::size_t(index))
        m_elements.resize(std::size_t(index) + 1);
    m_elements[std::size_t(index)] = element;
    m_upper = std::max(m_upper, index);
    ++m_count;
    element->m_array = this;
    m_surface->controlLoaded(*element);
    if (element->visible())
        element->changed(LiveControl::Presence);
}

void ControlArray::unload(std::int32_t index)
{
    if (!find(index))
        raiseNoElement(index);
    if (index == TemplateIndex)
        throw values::RuntimeError(MadeAtDesignTime,
                                   QStringLiteral("Can't unload controls created at design time"));
    const Ref<ControlArray> alive(this); // letting a control go may run code of its owner
    const Ref<LiveControl> element = std::move(m_elements[std::size_t(index)]);
    m_elements[std::size_t(index)] = {};
    --m_count;
    while (m_upper > 0 && !find(m_upper))
        --m_upper;
    if (m_surface)
        m_surface->controlUnloaded(*element);
    element->m_array = nullptr;
}

void ControlArray::detach()
{
    for (const Ref<LiveControl>& element : m_elements) {
        if (element)
            element->m_array = nullptr;
    }
    m_elements.clear();
    m_upper = 0;
    m_count = 0;
    m_surface = nullptr;
}

} // namespace zan::surface
