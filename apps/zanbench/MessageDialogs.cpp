#include "zanbench/MessageDialogs.h"

#include "zanbench/Commands.h"

#include "surface/forms/BoxText.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

namespace zan::host {

namespace {

const QString Title = ProgramName;
const QString Filter = QStringLiteral("Schemes (*.scheme *.xml);;All files (*)");

} // namespace

HostDialogs::Unsaved MessageDialogs::askUnsaved(const QString& name)
{
    const QString question = QStringLiteral("Save the changes to %1?").arg(name);
    QMessageBox box(QMessageBox::Question, Title, surface::textForBox(question, m_parent), QMessageBox::NoButton,
                    m_parent);
    box.setTextFormat(Qt::PlainText); // the name of a site is no markup
    box.setInformativeText(QStringLiteral("Changes that are not saved are lost."));
    QPushButton* save = box.addButton(QStringLiteral("&Save"), QMessageBox::AcceptRole);
    const QPushButton* discard = box.addButton(QStringLiteral("&Discard"), QMessageBox::DestructiveRole);
    QPushButton* cancel = box.addButton(QStringLiteral("&Cancel"), QMessageBox::RejectRole);
    box.setDefaultButton(save);
    box.setEscapeButton(cancel);
    box.exec();
    if (box.clickedButton() == save)
        return Unsaved::Save;
    return box.clickedButton() == discard ? Unsaved::Discard : Unsaved::Cancel;
}

HostDialogs::Conflict MessageDialogs::askConflict(const QString& text)
{
    QMessageBox box(QMessageBox::Warning, Title, text, QMessageBox::NoButton, m_parent);
    box.setTextFormat(Qt::PlainText);
    const QPushButton* overwrite = box.addButton(QStringLiteral("&Overwrite"), QMessageBox::DestructiveRole);
    const QPushButton* saveAs = box.addButton(QStringLiteral("&Save as..."), QMessageBox::AcceptRole);
    QPushButton* cancel = box.addButton(QStringLiteral("&Cancel"), QMessageBox::RejectRole);
    box.setDefaultButton(cancel);
    box.setEscapeButton(cancel);
    box.exec();
    if (box.clickedButton() == overwrite)
        return Conflict::Overwrite;
    return box.clickedButton() == saveAs ? Conflict::SaveAs : Conflict::Cancel;
}

HostDialogs::Edits MessageDialogs::askEdits(const QString& text, const QString& detail)
{
    QMessageBox box(QMessageBox::Question, Title, surface::textForBox(text, m_parent), QMessageBox::NoButton,
                    m_parent);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(detail);
    QPushButton* restore = box.addButton(QStringLiteral("&Restore"), QMessageBox::AcceptRole);
    const QPushButton* discard = box.addButton(QStringLiteral("&Discard"), QMessageBox::DestructiveRole);
    QPushButton* later = box.addButton(QStringLiteral("&Not now"), QMessageBox::RejectRole);
    box.setDefaultButton(restore);
    box.setEscapeButton(later); // what closes the box by itself loses nothing
    box.exec();
    if (box.clickedButton() == restore)
        return Edits::Restore;
    return box.clickedButton() == discard ? Edits::Discard : Edits::Later;
}

QString MessageDialogs::chooseScheme(const QString& folder)
{
    return QFileDialog::getOpenFileName(m_parent, QStringLiteral("Open a scheme"), folder, Filter);
}

QString MessageDialogs::chooseNew(const QString& folder)
{
    const QString proposal = folder + QStringLiteral("/site.scheme");
    return QFileDialog::getSaveFileName(m_parent, QStringLiteral("A new scheme"), proposal, Filter);
}

QString MessageDialogs::chooseTarget(const QString& file)
{
    return QFileDialog::getSaveFileName(m_parent, QStringLiteral("Save the scheme as"), file, Filter);
}

QString MessageDialogs::chooseOlderWindow(const QString& folder)
{
    return QFileDialog::getOpenFileName(m_parent, QStringLiteral("Import an older window"), folder,
                                        QStringLiteral("Windows of a terminal (*.kel);;All files (*)"));
}

bool MessageDialogs::askReplace(const QString& text)
{
    QMessageBox box(QMessageBox::Warning, Title, surface::textForBox(text, m_parent), QMessageBox::Cancel,
                    m_parent);
    box.setTextFormat(Qt::PlainText);
    const QPushButton* replace = box.addButton(QStringLiteral("&Replace"), QMessageBox::DestructiveRole);
    box.setDefaultButton(QMessageBox::Cancel);
    box.exec();
    return box.clickedButton() == replace;
}

void MessageDialogs::showError(const QString& text)
{
    // What a scheme or a script has put into the text is no markup.
    QMessageBox box(QMessageBox::Critical, Title, surface::textForBox(text, m_parent), QMessageBox::Ok, m_parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

void MessageDialogs::showAbout(const QString& text)
{
    QMessageBox::about(m_parent, Title, text);
}

} // namespace zan::host
