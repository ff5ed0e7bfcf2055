#include "window/frmSet.h"

#include "values/Twips.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace zan::window {

namespace {

constexpr int ClientWidth = 3720; // twips
constexpr int ClientHeight = 945;

} // namespace

frmSet::frmSet(QWidget* owner)
    : QDialog(owner)
    , m_label(new QLabel(tr("Channel"), this))
    , m_value(new QLineEdit(this))
{
    setWindowTitle(tr("Set Channel"));
    setFixedSize(values::twipsToPixels(ClientWidth), values::twipsToPixels(ClientHeight));
    m_label->setObjectName(QStringLiteral("lblChannel"));
    m_label->setTextFormat(Qt::PlainText);
    m_label->setSizePolicy(QSizePolicy::Ignored,
                           QSizePolicy::Preferred); // a long label is cut, the form keeps its size
    m_label->setBuddy(m_value);
    m_value->setObjectName(QStringLiteral("txtValue"));
    auto* ok = new QPushButton(tr("&OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(tr("&Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    cancel->setAutoDefault(false); // Enter is the form's key, also while this button has the keyboard
    auto* layout = new QGridLayout(this);
    layout->addWidget(m_label, 0, 0);
    layout->addWidget(ok, 0, 1);
    layout->addWidget(m_value, 1, 0);
    layout->addWidget(cancel, 1, 1);
    layout->setColumnStretch(0, 1);
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    QObject::connect(ok, &QPushButton::clicked, this, &frmSet::accept);
    QObject::connect(cancel, &QPushButton::clicked, this, &frmSet::reject);
}

void frmSet::setChannelLabel(const QString& label)
{
    m_label->setText(label);
}

void frmSet::setValueText(const QString& text)
{
    m_value->setText(text);
}

QString frmSet::valueText() const
{
    return m_value->text();
}

void frmSet::accept()
{
    m_cancelled = false;
    QDialog::accept();
}

void frmSet::reject()
{
    m_cancelled = true;
    QDialog::reject();
}

/// Enter confirms wherever the keyboard is, on Cancel too.
void frmSet::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        accept();
    else
        QDialog::keyPressEvent(event);
}

void frmSet::showEvent(QShowEvent* event)
{
    m_cancelled = true;
    m_value->selectAll();
    m_value->setFocus();
    QDialog::showEvent(event);
}

} // namespace zan::window
