#include "surface/forms/HostForms.h"

#include "surface/forms/BoxText.h"
#include "surface/text/FontTable.h"

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>

#include <algorithm>
#include <array>
#include <span>

namespace zan::surface {

namespace {

/// A script may run this long before a box says so.
constexpr std::chrono::milliseconds BusyBoxAfter{1000};
constexpr int WidestPrompt = 400; // pixels of an input box's line that is not broken

struct ButtonRow
{
    QMessageBox::StandardButton button;
    HostForms::Answer answer;
};

constexpr std::array okOnly = {ButtonRow{QMessageBox::Ok, HostForms::Ok}};
constexpr std::array okCancel = {ButtonRow{QMessageBox::Ok, HostForms::Ok},
                                 ButtonRow{QMessageBox::Cancel, HostForms::Cancel}};
constexpr std::array abortRetryIgnore = {ButtonRow{QMessageBox::Abort, HostForms::Abort},
                                         ButtonRow{QMessageBox::Retry, HostForms::Retry},
                                         ButtonRow{QMessageBox::Ignore, HostForms::Ignore}};
constexpr std::array yesNoCancel = {ButtonRow{QMessageBox::Yes, HostForms::Yes},
                                    ButtonRow{QMessageBox::No, HostForms::No},
                                    ButtonRow{QMessageBox::Cancel, HostForms::Cancel}};
constexpr std::array yesNo = {ButtonRow{QMessageBox::Yes, HostForms::Yes},
                              ButtonRow{QMessageBox::No, HostForms::No}};
constexpr std::array retryCancel = {ButtonRow{QMessageBox::Retry, HostForms::Retry},
                                    ButtonRow{QMessageBox::Cancel, HostForms::Cancel}};

/// The buttons of a style, in the order in which its default button counts them.
std::span<const ButtonRow> buttonsOf(int style)
{
    switch (style & 15) {
    case HostForms::OkCancel:
        return okCancel;
    case HostForms::AbortRetryIgnore:
        return abortRetryIgnore;
    case HostForms::YesNoCancel:
        return yesNoCancel;
    case HostForms::YesNo:
        return yesNo;
    case HostForms::RetryCancel:
        return retryCancel;
    default:
        return okOnly;
    }
}

QMessageBox::Icon iconOf(int style)
{
    switch (style & 0x70) {
    case HostForms::Critical:
        return QMessageBox::Critical;
    case HostForms::Question:
        return QMessageBox::Question;
    case HostForms::Exclamation:
        return QMessageBox::Warning;
    case HostForms::Information:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

QString titleOr(const QString& title)
{
    return title.isEmpty() ? QCoreApplication::applicationName() : titleForBox(title);
}

} // namespace

QMessageBox* DesktopForms::makeBox(QWidget* owner, const QString& text, int style, const QString& title)
{
    auto* box = new QMessageBox(owner);
    box->setTextFormat(Qt::PlainText);
    box->setText(textForBox(text, owner));
    box->setWindowTitle(titleOr(title));
    box->setIcon(iconOf(style));
    const std::span<const ButtonRow> rows = buttonsOf(style);
    for (const ButtonRow& row : rows)
        box->addButton(row.button);
    const std::size_t defaultPlace = std::size_t(style >> 8 & 3);
    box->setDefaultButton(rows[defaultPlace < rows.size() ? defaultPlace : 0].button);
    return box;
}

int DesktopForms::messageBox(QWidget* owner, const QString& text, int style, const QString& title)
{
    // The owner may be deleted while the box is open and takes the box with it: never on the stack.
    const QPointer<QMessageBox> box = makeBox(owner, text, style, title);
    const int pressed = box->exec();
    delete box.data();
    for (const ButtonRow& row : buttonsOf(style)) {
        if (row.button == pressed)
            return row.answer;
    }
    return Cancel;
}

std::optional<QString> DesktopForms::inputBox(QWidget* owner, const QString& prompt, const QString& title,
                                              const QString& text)
{
    const QPointer<QInputDialog> box = new QInputDialog(owner);
    box->setLabelText(textForBox(prompt, owner)); // makes the label
    for (QLabel* label : box->findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText); // what a script asks is no markup
        label->setWordWrap(label->sizeHint().width() > WidestPrompt);
    }
    box->setWindowTitle(titleOr(title));
    box->setTextValue(text);
    const bool accepted = box->exec() == QDialog::Accepted;
    const std::optional<QString> entered = accepted && box ? std::optional(box->textValue()) : std::nullopt;
    delete box.data();
    return entered;
}

bool HostForms::busy(QWidget*, std::chrono::milliseconds)
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    return true;
}

bool DesktopForms::busy(QWidget* owner, std::chrono::milliseconds elapsed)
{
    if (!m_busyBox && elapsed >= BusyBoxAfter) {
        m_busyBox = new QProgressDialog(QCoreApplication::translate("HostForms", "A script is running."),
                                        QCoreApplication::translate("HostForms", "Stop it"), 0, 0, owner);
        m_busyBox->setWindowTitle(titleOr({}));
        m_busyBox->setWindowModality(Qt::ApplicationModal); // nothing else can be clicked meanwhile
        m_busyBox->setMinimumDuration(0);
        m_busyBox->show();
    }
    QCoreApplication::processEvents();
    return !m_busyBox || !m_busyBox->wasCanceled();
}

void DesktopForms::busyEnded()
{
    delete m_busyBox.data();
}

bool HostForms::progress(QWidget*, const QString&, double)
{
    return true;
}

bool DesktopForms::progress(QWidget* owner, const QString& text, double share)
{
    constexpr int Whole = 1000;
    constexpr int ShownAfter = 500; // milliseconds: what is done sooner needs no box
    if (!m_progressBox) {
        m_progressBox =
            new QProgressDialog(text, QCoreApplication::translate("HostForms", "Cancel"), 0, Whole, owner);
        m_progressBox->setWindowTitle(titleOr({}));
        m_progressBox->setWindowModality(Qt::ApplicationModal); // nothing else can be clicked meanwhile
        m_progressBox->setAutoReset(false);
        m_progressBox->setMinimumDuration(ShownAfter);
    }
    m_progressBox->setValue(int(std::clamp(share, 0.0, 1.0) * Whole));
    QCoreApplication::processEvents();
    return m_progressBox && !m_progressBox->wasCanceled();
}

void DesktopForms::progressEnded()
{
    delete m_progressBox.data();
}

void DesktopForms::popupMenu(QWidget* owner, const std::shared_ptr<PopupMenu>& menu, QPoint place)
{
    std::function<void()> choice;
    const QPointer<QMenu> shown(new QMenu(owner));
    shown->setObjectName(menu->name);
    fillMenu(*shown, menu, [&choice](const MenuItem& item) { choice = item.choose; });
    shown->exec(place);
    if (shown) // it goes with its owner
        shown->deleteLater();
    if (choice)
        choice();
}

void DesktopForms::showModal(QDialog& form)
{
    form.exec();
}

void DesktopForms::showForm(QWidget* owner, ModalForm& form)
{
    if (QDialog* dialog = form.dialog(owner))
        showModal(*dialog);
}

// Pickers ------------------------------------------------------------------------------------------------------

std::optional<FontChoice> DesktopForms::pickFont(QWidget* owner, const QString& title, const FontChoice& font)
{
    QFont shown(FontTable::installedFamily(font.name));
    shown.setPointSizeF(font.size);
    shown.setBold(font.bold);
    shown.setItalic(font.italic);
    shown.setUnderline(font.underline);
    // The owner may be deleted while the picker is open and takes it with it: never on the stack.
    const QPointer<QFontDialog> picker = new QFontDialog(shown, owner);
    picker->setWindowTitle(title);
    picker->setOption(QFontDialog::DontUseNativeDialog); // every platform has the same title and the same choices
    // The picker shows the nearest size and style that the family has; what it shows unasked is nobody's choice.
    const QFont begun = picker->currentFont();
    const bool accepted = picker->exec() == QDialog::Accepted;
    const QFont picked = accepted && picker ? picker->selectedFont() : QFont();
    delete picker.data();
    if (!accepted)
        return std::nullopt;
    FontChoice choice = font;
    if (picked.family() != begun.family())
        choice.name = picked.family();
    if (picked.pointSizeF() != begun.pointSizeF())
        choice.size = picked.pointSizeF();
    if (picked.bold() != begun.bold())
        choice.bold = picked.bold();
    if (picked.italic() != begun.italic())
        choice.italic = picked.italic();
    if (picked.underline() != begun.underline())
        choice.underline = picked.underline();
    return choice;
}

std::optional<values::Colour> DesktopForms::pickColour(QWidget* owner, const QString& title, values::Colour colour)
{
    const QPalette palette = owner ? owner->palette() : QApplication::palette();
    const QPointer<QColorDialog> picker = new QColorDialog(values::toQColor(colour, palette), owner);
    picker->setWindowTitle(title);
    picker->setOption(QColorDialog::DontUseNativeDialog); // the part for custom colours is open in this one
    const bool accepted = picker->exec() == QDialog::Accepted;
    const QColor picked = accepted && picker ? picker->selectedColor() : QColor();
    delete picker.data();
    return picked.isValid() ? std::optional(values::fromQColor(picked)) : std::nullopt;
}

namespace {

/// A classic filter text as the toolkit writes it: "Bitmaps (*.BMP)". The toolkit takes the patterns from brackets, so
/// that a description keeps none of its own.
QStringList nameFilters(const QString& classic)
{
    QStringList filters;
    const QStringList parts = classic.split(QLatin1Char('|'));
    for (qsizetype place = 0; place + 1 < parts.size(); place += 2) {
        const QString description = parts[place].section(QLatin1Char('('), 0, 0).trimmed();
        QStringList patterns = parts[place + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts);
        for (QString& pattern : patterns) {
            if (pattern.startsWith(QLatin1Char('.')))
                pattern.prepend(QLatin1Char('*')); // an extension alone would find nothing but a file of that name
            if (pattern == QLatin1String("*.*"))
                pattern = QStringLiteral("*");
        }
        filters << QStringLiteral("%1 (%2)").arg(description, patterns.join(QLatin1Char(' ')));
    }
    return filters;
}

} // namespace

std::optional<QString> DesktopForms::pickFile(QWidget* owner, const FileRequest& request)
{
    const QPointer<QFileDialog> picker = new QFileDialog(owner, request.title, request.folder);
    const QStringList filters = nameFilters(request.filter);
    picker->setFileMode(QFileDialog::AnyFile); // whether there is such a file is the caller's question
    picker->setNameFilters(filters);
    if (request.filterIndex > 0 && request.filterIndex <= filters.size())
        picker->selectNameFilter(filters[request.filterIndex - 1]);
    if (!request.file.isEmpty())
        picker->selectFile(request.file);
    picker->setDefaultSuffix(request.defaultExtension.section(QLatin1Char('.'), -1));
    picker->setAcceptMode(request.isSaved ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    const bool accepted = picker->exec() == QDialog::Accepted;
    const QStringList picked = accepted && picker ? picker->selectedFiles() : QStringList();
    delete picker.data();
    return picked.isEmpty() ? std::nullopt : std::optional(QDir::toNativeSeparators(picked.front()));
}

} // namespace zan::surface
