#include "window/ControlFactory.h"

#include "display/StatusLightControl.h"
#include "display/ValueBarControl.h"
#include "surface/host/Surface.h"
#include "surface/intrinsic/CheckBox.h"
#include "surface/intrinsic/CommandButton.h"
#include "surface/intrinsic/Label.h"
#include "surface/intrinsic/OptionButton.h"
#include "surface/intrinsic/PictureBox.h"
#include "surface/intrinsic/ProgressBar.h"
#include "surface/intrinsic/Shape.h"
#include "surface/intrinsic/TextBox.h"

#include <array>

namespace zan::window {

using binding::Object;
using surface::ControlArray;
using surface::LiveControl;
using surface::Surface;
using values::Name;
using values::RuntimeError;
using values::Variant;

namespace {

const Name FontName("Font");
const Name BackColorName("BackColor");
const Name ForeColorName("ForeColor");
const Name CaptionName("Caption");
const Name TextName("Text");
const Name BorderStyleName("BorderStyle");

/// Twips between a new element and the one above it.
constexpr float ElementGap = 50;

template <class Control>
Ref<LiveControl> makeControl()
{
    return values::make<Control>();
}

struct Creator
{
    QStringView typeKey;
    Ref<LiveControl> (*create)();
};

constexpr std::array<Creator, 10> creators{{
    {u"VB.Label", makeControl<surface::Label>},
    {u"VB.TextBox", makeControl<surface::TextBox>},
    {u"VB.CommandButton", makeControl<surface::CommandButton>},
    {u"VB.Picture", makeControl<surface::PictureBox>},
    {u"VB.CheckBox", makeControl<surface::CheckBox>},
    {u"VB.Shape", makeControl<surface::Shape>},
    {u"MSComctlLib.ProgressBar", makeControl<surface::ProgressBar>},
    {u"VB.OptionButton", makeControl<surface::OptionButton>},
    {u"ZanBenchWindow.StatusLight", makeControl<display::StatusLightControl>},
    {u"ZanBenchWindow.ValueBar", makeControl<display::ValueBarControl>},
}};

/// Outlives every wrapper: a script may hold one when its window is long gone.
const wrappers::PictureLoader& pictureLoader()
{
    static const wrappers::PictureLoader loader = [](const QString& file) {
        return Variant(surface::loadPicture(file));
    };
    return loader;
}

} // namespace

ControlFactory::ControlFactory(Surface& surface)
    : m_surface(surface)
{
    for (const Creator& creator : creators) {
        const ControlType& type = *findControlType(creator.typeKey);
        surface.addArray(type.arrayName.toString(), creator.create, [&type](LiveControl& design) {
            design.move(type.left, type.top, type.width, type.height);
        });
    }
    buildNewControlMenu();
}

void ControlFactory::buildNewControlMenu()
{
    for (const ControlType& type : controlTypes()) {
        if (!type.menuCaption.isEmpty() && m_surface.array(type.arrayName))
            m_menu.push_back({type.menuCaption, type.key});
    }
}

Ref<wrappers::iBenchControl> ControlFactory::CreateControl(const QString& typeKey, bool positionsLocked)
{
    // 2. A key without a row, or whose kind of control is not there, is unknown; nothing has been touched.
    const ControlType* type = findControlType(typeKey);
    ControlArray* array = type ? m_surface.array(type->arrayName) : nullptr;
    if (!array)
        return {};
    // 3. and 4.
    const Ref<LiveControl> live = liveControl(*array);
    style(*live, type->styling, positionsLocked);
    // 1., 5. and 6.
    const auto wrapper = values::make<wrappers::BenchControl>();
    wrapper->setPictureLoader(&pictureLoader());
    wrapper->begin(typeKey, live, (type->styling & OwnSettings) == 0);
    return wrapper;
}

Ref<LiveControl> ControlFactory::liveControl(ControlArray& array)
{
    const Ref<LiveControl> last = array.item(array.uBound());
    if (m_templateInUse.insert(&array).second) {
        // The templates lie in the order of the design; a control lies over those that were placed before it.
        last->zOrder(0);
        return last;
    }
    const Ref<LiveControl> element = array.load(array.uBound() + 1);
    element->move(last->left(), last->top() + last->height() + ElementGap);
    return element;
}

void ControlFactory::style(LiveControl& control, unsigned styling, bool positionsLocked)
{
    if (styling & CopiesFont)
        control.tryPut(FontName, Variant(surface::copyFont(*m_surface.surfaceFont())));
    if (styling & CopiesBackColor)
        control.tryPut(BackColorName, Variant(m_surface.backColor().code));
    if (styling & CopiesForeColor)
        control.tryPut(ForeColorName, Variant(m_surface.foreColor().code));
    if (styling & ShowsBorderWhenUnlocked)
        control.tryPut(BorderStyleName, Variant(std::int16_t(positionsLocked ? 0 : 1)));
    if (styling & ClearsCaption)
        control.tryPut(CaptionName, Variant(QString()));
    if (styling & ClearsText)
        control.tryPut(TextName, Variant(QString()));
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

void ControlFactory::restyleTemplates()
{
    for (const QStringView name : {u"cbCheck", u"Label", u"CommandButton", u"obOption", u"Pic", u"Text"}) {
        const ControlArray* array = m_surface.array(name);
        LiveControl* element = array ? array->find(ControlArray::TemplateIndex) : nullptr;
        if (element)
            style(*element, CopiesFont | CopiesForeColor | CopiesBackColor, true);
        if (array)
            style(array->design(), CopiesFont | CopiesForeColor | CopiesBackColor, true);
    }
}

} // namespace zan::window
