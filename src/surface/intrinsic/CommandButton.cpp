#include "surface/intrinsic/CommandButton.h"

#include "binding/MemberTable.h"
#include "surface/host/Picture.h"
#include "surface/host/Surface.h"
#include "surface/text/MnemonicText.h"

#include <QIcon>
#include <QPaintEvent>
#include <QPushButton>
#include <QStyleOptionButton>
#include <QStylePainter>

#include <algorithm>

namespace zan::surface {

namespace {

/// A rectangle that looks like the whole where it is visible, and is no larger than that takes. Edges that are seen
/// stay, and so does the middle, where the caption is, when it can be seen. Of one dimension: [from, to).
struct Extent
{
    int from;
    int to;
};

Extent visibleExtent(Extent whole, Extent seen, int captionLength)
{
    constexpr int Edge = 32; // pixels; wider than any style's edge
    const int room = Edge + captionLength;
    // Both edges out of sight move alike, and leave the middle where it is.
    if (const int spare = std::min(seen.from - room - whole.from, whole.to - seen.to - room); spare > 0)
        whole = {whole.from + spare, whole.to - spare};
    // An edge that leaves the middle out of sight may come nearer as long as it stays there.
    whole.to = std::min(whole.to, 2 * (seen.to + room) - whole.from);
    whole.from = std::max(whole.from, 2 * (seen.from - room) - whole.to);
    return whole;
}

/// The toolkit's styles paint a button as one picture of its size, however little of it is seen.
class BoundedButton : public QPushButton
{
public:
    using QPushButton::QPushButton;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        constexpr int LargestWhole = 4096; // pixels
        constexpr int LongestCaption = 1024;
        if (std::max(width(), height()) <= LargestWhole) {
            QPushButton::paintEvent(event);
            return;
        }
        QStyleOptionButton option;
        initStyleOption(&option);
        const QRect seen = event->rect();
        const QSize caption = fontMetrics().size(Qt::TextShowMnemonic, option.text).expandedTo(iconSize());
        const Extent across =
            visibleExtent({0, width()}, {seen.left(), seen.right() + 1}, std::min(caption.width(), LongestCaption));
        const Extent down = visibleExtent({0, height()}, {seen.top(), seen.bottom() + 1},
                                          std::min(caption.height(), LongestCaption));
        option.rect = QRect(QPoint(across.from, down.from), QPoint(across.to - 1, down.to - 1));
        QStylePainter(this).drawControl(QStyle::CE_PushButton, option);
    }
};

/// The other command buttons of a button's surface.
template <class Call>
void forOtherButtons(CommandButton& button, Call call)
{
    if (!button.isLoaded())
        return;
    for (const Ref<ControlArray>& array : button.surface()->arrays()) {
        if (!dynamic_cast<CommandButton*>(&array->design()))
            continue;
        for (int index = 0; index <= array->uBound(); ++index) {
            if (LiveControl* other = array->find(index); other && other != &button)
                call(static_cast<CommandButton&>(*other));
        }
    }
}

} // namespace

CommandButton::CommandButton()
    : WidgetControl(values::ButtonFace, values::ButtonText)
{}

CommandButton::~CommandButton() = default;

const binding::MemberTable& CommandButton::members() const
{
    using binding::field;
    using C = CommandButton;
    return binding::table([] {
        return binding::MemberTable(
            "CommandButton", &widgetMembers(),
            {
                binding::absent("ForeColor"), // it would show nowhere, and a document would keep it
                binding::property<&C::value, &C::setValue>("Value").asDefault(),
                field<&C::m_caption, &C::look>("Caption"),
                field<&C::m_default, &C::defaultChanged>("Default").notDesign(),
                field<&C::m_cancel, &C::cancelChanged>("Cancel").notDesign(),
                field<&C::m_style, &C::restyle>("Style", 0, binding::oneOf(1)),
                field<&C::m_picture, &C::look>("Picture"),
            });
    });
}

/// Who becomes the default takes it from the others.
void CommandButton::defaultChanged()
{
    changed(Look);
    if (!m_default)
        return;
    forOtherButtons(*this, [](CommandButton& other) {
        if (std::exchange(other.m_default, false))
            other.changed(Look);
    });
}

void CommandButton::cancelChanged()
{
    if (m_cancel)
        forOtherButtons(*this, [](CommandButton& other) { other.m_cancel = false; });
}

void CommandButton::setValue(bool value)
{
    if (value)
        raiseClick();
}

void CommandButton::press()
{
    if (isLoaded() && visible() && enabled())
        raiseClick();
}

QWidget* CommandButton::createWidget(QWidget* parent)
{
    auto* button = new BoundedButton(parent);
    button->setAutoDefault(false);
    QObject::connect(button, &QPushButton::clicked, button, [this] { press(); });
    return button;
}

void CommandButton::syncWidget(QWidget& widget)
{
    auto& button = static_cast<QPushButton&>(widget);
    if (const QString shown = widgetCaption(m_caption); button.text() != shown)
        button.setText(shown);
    button.setDefault(m_default);
    if (m_style == 1 && m_picture) {
        button.setIcon(QIcon(m_picture->pixmap()));
        button.setIconSize(m_picture->image().size().boundedTo(bounds().size()));
    } else if (!button.icon().isNull()) {
        button.setIcon(QIcon());
    }
}

/// COMPAT: a standard button keeps the system's colours whatever BackColor says.
void CommandButton::stylePalette(QPalette& palette) const
{
    if (m_style == 0)
        return;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
        palette.setColor(group, QPalette::Button, values::toQColor(backColor(), palette));
}

const Habits& CommandButton::habits() const noexcept
{
    static constexpr Habits row{.knowsDoubleClick = false, .clicksItself = true};
    return row;
}

/// Enter presses the button that has the keyboard, or else the default one; Esc the cancel button.
bool CommandButton::answerKey(DialogKey key, bool focused)
{
    if (key == DialogKey::Enter ? !focused && !m_default : focused || !m_cancel)
        return false;
    press();
    return true;
}

QString CommandButton::accessibleText() const
{
    return withoutMnemonic(m_caption);
}

} // namespace zan::surface
