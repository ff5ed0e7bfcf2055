#include "zanbench/ErrorBar.h"

#include "surface/forms/BoxText.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QStyle>
#include <QToolButton>

#include <algorithm>

namespace zan::host {

ErrorBar::ErrorBar(QWidget* over)
    : QFrame(over)
    , m_label(new QLabel(this))
{
    setObjectName(QStringLiteral("errorBar"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    QPalette colours = palette();
    colours.setColor(QPalette::Window, QColor(0xfd, 0xec, 0xea));
    colours.setColor(QPalette::WindowText, QColor(0x7a, 0x1c, 0x12));
    setPalette(colours);

    m_label->setObjectName(QStringLiteral("errorText"));
    m_label->setWordWrap(true);
    m_label->setTextFormat(Qt::PlainText); // what a script says is no markup
    m_label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* close = new QToolButton(this);
    close->setAutoRaise(true);
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    close->setToolTip(QStringLiteral("Dismiss"));
    close->setAccessibleName(QStringLiteral("Dismiss the error"));
    connect(close, &QToolButton::clicked, this, &ErrorBar::dismiss);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 4, 4, 4);
    layout->addWidget(m_label, 1);
    layout->addWidget(close);
    hide();
    if (over)
        over->installEventFilter(this);
}

void ErrorBar::place()
{
    if (!parentWidget())
        return;
    const QSize room = parentWidget()->size();
    const int wanted = layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(room.width())
                                                     : layout()->totalSizeHint().height();
    const int height = std::min(wanted, room.height());
    setGeometry(0, room.height() - height, room.width(), height);
    raise();
}

bool ErrorBar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize && !isHidden())
        place();
    return false;
}

QString ErrorBar::numbered(int number, const QString& description)
{
    return QStringLiteral("%1 (run-time error %2)").arg(description).arg(number);
}

void ErrorBar::showError(const QString& text)
{
    m_count = text == m_text ? m_count + 1 : 1;
    m_text = text;
    const QString shown = surface::textForBox(text, this);
    m_label->setText(m_count == 1 ? shown : QStringLiteral("%1 (%2 times)").arg(shown).arg(m_count));
    place();
    show();
}

void ErrorBar::dismiss()
{
    m_text.clear();
    m_count = 0;
    hide();
}

} // namespace zan::host
