#pragma once

#include "zanbench/HostDialogs.h"

#include <QPointer>
#include <QWidget>

namespace zan::host {

/// The host's dialogs as real windows.
class MessageDialogs : public HostDialogs
{
public:
    /// The window that the dialogs stand in front of; may be set late and may go.
    void setParent(QWidget* parent) { m_parent = parent; }

    Unsaved askUnsaved(const QString& name) override;
    Conflict askConflict(const QString& text) override;
    Edits askEdits(const QString& text, const QString& detail) override;
    QString chooseScheme(const QString& folder) override;
    QString chooseNew(const QString& folder) override;
    QString chooseTarget(const QString& file) override;
    QString chooseOlderWindow(const QString& folder) override;
    bool askReplace(const QString& text) override;
    void showError(const QString& text) override;
    void showAbout(const QString& text) override;

private:
    QPointer<QWidget> m_parent;
};

} // namespace zan::host
