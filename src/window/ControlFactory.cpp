#include "window/ControlFactory.h"

#include "surface/host/StyledControl.h"
#include "surface/host/Surface.h"

namespace zan::window {

using binding::Object;
using surface::ControlArray;
using surface::LiveControl;
using surface::Surface;
using values::Name;
using values::RuntimeError;
using values::Variant;
using wrappers::ControlType;

namespace {

const Name FontName("Font");
const Name BackColorName("BackColor");
const Name ForeColorName("ForeColor");
const Name CaptionName("Caption");
const Name TextName("Text");
const Name BorderStyleName("BorderStyle");
const Name LoggerName("Logger");

/// Twips between a new element and the one above it.
constexpr float ElementGap = 50;

/// Outlives every wrapper: a script may hold one when its window is long gone.
const wrappers::PictureLoader& pictureLoader()
{
    static const wrappers::PictureLoader loader = [](const QString& file) {
        return Variant(surface::loadPicture(file));
    };
    return loader;
}

} // namespace

ControlFactory::ControlFactory(Surface& surface, wrappers::ControlTypes types, surface::FormsSource forms)
    : m_surface(surface)
    , m_types(types)
    , m_forms(std::move(forms))
{
    for (const ControlType& type : m_types) {
        const surface::ProvidedCreator create = type.creator();
        if (!create)
            continue;
        surface.addArray(type.arrayName.toString(), create, [&type](LiveControl& design) {
            design.move(type.design.left, type.design.top, type.design.width, type.design.height);
        });
    }
    buildNewControlMenu();
}

void ControlFactory::buildNewControlMenu()
{
    for (const ControlType& type : m_types) {
        if (!type.menuCaption.isEmpty() && m_surface.array(type.arrayName))
            m_menu.push_back({type.menuCaption, type.key});
    }
}

Ref<wrappers::iBenchControl> ControlFactory::CreateControl(const QString& typeKey, bool positionsLocked,
                                                           const Ref<site::Logger>& logger)
{
    // A key without a row, or whose kind of control is not there, is unknown; nothing has been touched.
    const ControlType* type = m_types.find(typeKey);
    ControlArray* array = type ? m_surface.array(type->arrayName) : nullptr;
    if (!array)
        return {};
    const Ref<LiveControl> live = liveControl(*type, *array);
    style(*live, *type, positionsLocked);
    if (type->styling & wrappers::TakesLogger)
        live->tryPut(LoggerName, Variant(logger));
    if (live->hosting() == LiveControl::Hosting::Widget) { // painted controls open no forms
        if (auto* asking = dynamic_cast<surface::UsesForms*>(live.get()))
            asking->setForms(m_forms);
    }
    const Ref<wrappers::BenchControl> wrapper = type->wrap ? type->wrap() : values::make<wrappers::BenchControl>();
    wrapper->setPictureLoader(&pictureLoader());
    wrapper->begin(typeKey, live, (type->styling & wrappers::OwnSettings) == 0);
    return wrapper;
}

Ref<LiveControl> ControlFactory::liveControl(const ControlType& type, ControlArray& array)
{
    const Ref<LiveControl> last = array.item(array.uBound());
    if (m_templateInUse.insert(&array).second) {
        // The templates lie in the order of the design; a control lies over those that were placed before it, and
        // the Tab key comes to it after them.
        last->zOrder(0);
        last->tabLast();
        return last;
    }
    if (type.isSingle)
        return last;
    const Ref<LiveControl> element = array.load(array.uBound() + 1);
    element->move(last->left(), last->top() + last->height() + ElementGap);
    return element;
}

void ControlFactory::style(LiveControl& control, const ControlType& type, bool positionsLocked)
{
    static const Variant noText{QString()};
    dress(control, type.styling);
    if ((type.styling & wrappers::ShowsBorderWhenUnlocked) && type.border)
        control.tryPut(BorderStyleName, Variant(positionsLocked ? type.border->locked : type.border->unlocked));
    if (type.styling & wrappers::ClearsCaption)
        control.tryPut(CaptionName, noText);
    if (type.styling & wrappers::ClearsText)
        control.tryPut(TextName, noText);
}

/// Whether the control has a font of its own that is like the surface's already, as that of a copy is.
bool ControlFactory::hasSurfaceFont(LiveControl& control) const
{
    auto* const styled = dynamic_cast<surface::StyledControl*>(&control);
    return styled && styled->font() != m_surface.surfaceFont() &&
           fontsEqual(*styled->font(), *m_surface.surfaceFont());
}

void ControlFactory::dress(LiveControl& control, unsigned styling)
{
    if ((styling & wrappers::CopiesFont) && !hasSurfaceFont(control))
        control.tryPut(FontName, Variant(surface::copyFont(*m_surface.surfaceFont())));
    if (styling & wrappers::CopiesBackColor)
        control.tryPut(BackColorName, Variant(m_surface.backColor().code));
    if (styling & wrappers::CopiesForeColor)
        control.tryPut(ForeColorName, Variant(m_surface.foreColor().code));
}

void ControlFactory::discard(const Ref<Object>& control)
{
    const Ref<LiveControl> live(dynamic_cast<LiveControl*>(control.get()));
    if (!live || !live->isLoaded())
        return;
    try {
        if (live->index() == ControlArray::TemplateIndex)
            live->setVisible(false);
        else
            live->array()->unload(live->index());
    } catch (const RuntimeError&) {
        // What cannot be unloaded stays, without a wrapper.
    }
}

void ControlFactory::restore(const wrappers::PlacedControl& placed)
{
    const Ref<LiveControl> live(dynamic_cast<LiveControl*>(placed.control->Control().get()));
    const wrappers::ControlType* type = m_types.find(placed.control->ControlType());
    ControlArray* array = type ? m_surface.array(type->arrayName) : nullptr;
    if (!live || !array)
        return;
    if (!live->isLoaded())
        array->restore(live);
    live->setVisible(placed.visible);
    m_surface.restack(*live, placed.rank);
}

void ControlFactory::restyleTemplates()
{
    constexpr unsigned Look = wrappers::CopiesFont | wrappers::CopiesForeColor | wrappers::CopiesBackColor;
    for (const ControlType& type : m_types) {
        const ControlArray* array = type.restylesTemplate ? m_surface.array(type.arrayName) : nullptr;
        if (!array)
            continue;
        if (LiveControl* element = array->find(ControlArray::TemplateIndex))
            dress(*element, Look);
        dress(array->design(), Look);
    }
}

} // namespace zan::window
