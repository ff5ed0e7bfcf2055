#include "component/Frame.h"

#include "binding/MemberTable.h"
#include "component/Holder.h"
#include "values/Failure.h"

#include <QPixmap>
#include <QSaveFile>

namespace zan::component {

using values::ErrorNumber;

namespace {

constexpr std::int32_t LargestSide = 8192; // a picture of that size takes 256 MB

std::int32_t checkedSide(std::int32_t side)
{
    if (side < 1 || side > LargestSide)
        values::raise(ErrorNumber::InvalidPropertyValue);
    return side;
}

} // namespace

const binding::MemberTable& Frame::members() const
{
    using F = Frame;
    using binding::method;
    using binding::property;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable("Frame", nullptr,
                                    {
                                        property<&F::Title, &F::setTitle>("Title"),
                                        property<&F::Visible, &F::setVisible>("Visible"),
                                        property<&F::Left, &F::setLeft>("Left"),
                                        property<&F::Top, &F::setTop>("Top"),
                                        property<&F::Width, &F::setWidth>("Width"),
                                        property<&F::Height, &F::setHeight>("Height"),
                                        method<&F::Fit>("Fit"),
                                        readOnly<&F::NativeWindow>("NativeWindow"),
                                        method<&F::SavePicture>("SavePicture"),
                                        property<&F::Unattended, &F::setUnattended>("Unattended"),
                                        method<&F::Answer>("Answer"),
                                        readOnly<&F::BoxCount>("BoxCount"),
                                        readOnly<&F::Box>("Box"),
                                        method<&F::InitProperties>("InitProperties"),
                                        method<&F::ReadProperties>("ReadProperties"),
                                        method<&F::WriteProperties>("WriteProperties"),
                                    });
    });
}

Holder& Frame::holder() const
{
    if (!m_holder || !m_holder->window() || !m_holder->control())
        values::raise(ErrorNumber::ObjectNotSet);
    return *m_holder;
}

FrameWindow& Frame::window() const
{
    return *holder().window();
}

QString Frame::Title() const
{
    return window().windowTitle();
}

void Frame::setTitle(const QString& title)
{
    window().setWindowTitle(title);
}

bool Frame::Visible() const
{
    return window().isVisible();
}

void Frame::setVisible(bool visible)
{
    window().setVisible(visible);
}

std::int32_t Frame::Left() const
{
    return window().x();
}

void Frame::setLeft(std::int32_t left)
{
    window().move(left, Top());
}

std::int32_t Frame::Top() const
{
    return window().y();
}

void Frame::setTop(std::int32_t top)
{
    window().move(Left(), top);
}

std::int32_t Frame::Width() const
{
    return window().width();
}

void Frame::setWidth(std::int32_t width)
{
    window().resize(checkedSide(width), Height());
}

std::int32_t Frame::Height() const
{
    return window().height();
}

void Frame::setHeight(std::int32_t height)
{
    window().resize(Width(), checkedSide(height));
}

void Frame::Fit()
{
    window().resize(window().sizeHint().boundedTo({LargestSide, LargestSide}).expandedTo({1, 1}));
}

double Frame::NativeWindow() const
{
    return double(window().winId());
}

void Frame::SavePicture(const QString& file)
{
    const QPixmap picture = window().grab();
    QSaveFile target(file);
    if (!target.open(QIODevice::WriteOnly) || !picture.save(&target, "PNG") || !target.commit())
        values::raise(ErrorNumber::PathFileAccess, QStringLiteral("%1: %2").arg(file, target.errorString()));
}

bool Frame::Unattended() const
{
    return holder().isUnattended();
}

void Frame::setUnattended(bool unattended)
{
    holder().setUnattended(unattended);
}

void Frame::Answer(const QString& text)
{
    holder().forms().answer(text);
}

std::int32_t Frame::BoxCount() const
{
    return std::int32_t(holder().forms().boxes().size());
}

QString Frame::Box(std::int32_t index) const
{
    if (index < 1 || index > BoxCount())
        values::raise(ErrorNumber::SubscriptOutOfRange);
    return holder().forms().boxes()[std::size_t(index) - 1].text;
}

void Frame::InitProperties()
{
    holder().initProperties();
}

void Frame::ReadProperties(const Ref<Bag>& bag)
{
    holder().readProperties(values::given(bag)->bag());
}

void Frame::WriteProperties(const Ref<Bag>& bag)
{
    holder().writeProperties(values::given(bag)->bag());
}

} // namespace zan::component
